// Doses to be talked about with clients, and the notes kept on them.
#pragma once

#include "store/session.h"

namespace messages
{

/// The four lists that the board leads to, by its click codes.
enum class NoticesGroup {
    MissedWithoutService = 18, // from the start before the last one to yesterday
    MissedWithService = 19,
    TodayWithoutService = 20, // from the day after it to today
    TodayWithService = 21,
};

struct PlannedNotice {
    QString key; // of the note
    int idm = 0;
    int idc = 0;
    int ida = 0; // product
    QString patient;
    QString owner;
    QString product;
    QString telephones;
    QDate expires;
    QString note;
};

/// Open doses of a group, by the patient's name; without the deceased.
std::vector<PlannedNotice> noticesOf(Sesion &s, NoticesGroup group);
/// What to write to the owner: the mail text of dose reminders.
QString noticeText(Sesion &s, const PlannedNotice &notice);
/// Keeps a note; an empty one is forgotten.
void saveNote(Sesion &s, const QString &key, const QString &text);

} // namespace messages
