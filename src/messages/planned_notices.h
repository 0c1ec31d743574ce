// Doses to talk about with clients, and the notes kept on them.
#pragma once

#include "store/session.h"

namespace messages
{

/// The four lists that the board opens; the values are its click codes.
enum class NoticesGroup {
    MissedWithoutService = 18, // from the day of the previous start to yesterday
    MissedWithService = 19,
    TodayWithoutService = 20, // from the day after the previous start to today
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

/// The open doses of a group, ordered by the patient's name; deceased patients are left out.
std::vector<PlannedNotice> noticesOf(Sesion &s, NoticesGroup group);
/// What to write to the owner: the mail text of dose reminders.
QString noticeText(Sesion &s, const PlannedNotice &notice);
/// Stores the note with this key; an empty text removes it.
void saveNote(Sesion &s, const QString &key, const QString &text);

} // namespace messages
