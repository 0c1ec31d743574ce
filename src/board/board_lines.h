// The lines of the daily board: writing and reading them.
#pragma once

#include "store/session.h"

namespace board
{

/// The picture at the start of a line: numbers of files in resources/pictures.
namespace picture
{
inline constexpr int None = 0;
inline constexpr int DosesToday = 102;
inline constexpr int DosesLate = 103;
inline constexpr int DosesWithService = 104;
inline constexpr int News = 106;
inline constexpr int Food = 107;
inline constexpr int Boarding = 108;
inline constexpr int Messages = 109;
inline constexpr int Debts = 110;
inline constexpr int Stock = 113;
inline constexpr int Tasks = 115;
inline constexpr int MailProblem = 116; // written once; its picture identifies it
} // namespace picture

/// What a line opens: the codes of its icons, or of its text if it has none. Those of lists are the
/// numbers of quick listings.
namespace click
{
inline constexpr int None = 0;
inline constexpr int ListFoodShort = 1; // patients without service; "Served": with it
inline constexpr int ListFoodShortServed = 2;
inline constexpr int ListDosesToday = 3;
inline constexpr int ListDosesTodayServed = 4;
inline constexpr int Outbox = 5;
inline constexpr int ListDosesMissed = 6;
inline constexpr int ListDosesMissedServed = 7;
inline constexpr int Agenda = 8;
inline constexpr int ListGuests = 9;
inline constexpr int AutomaticTasks = 10;
inline constexpr int Settings = 11;
inline constexpr int ListBirthdays = 12;
inline constexpr int ListReminders = 13;
inline constexpr int ListDosesDiscontinued = 14;
inline constexpr int ListDebtors = 15;
inline constexpr int ListBelowMinimum = 17;
inline constexpr int CallMissed = 18; // telephone rounds
inline constexpr int CallMissedServed = 19;
inline constexpr int CallToday = 20;
inline constexpr int CallTodayServed = 21;
inline constexpr int ListExpired = 31;
inline constexpr int AgendaOfYesterday = 32;
inline constexpr int Analysis = 33;
inline constexpr int VideoPage = 34;
inline constexpr int FolderInText = 37;
inline constexpr int HelpPage = 38;
} // namespace click

/// One line of the board.
struct BoardLine {
    QString message;
    int dibujo = 0;  // picture number, 0 for none
    int codigo1 = 0; // click codes of the two icons, 0 for none
    int codigo2 = 0;
};

/// All lines in the order in which they were written.
/// @throws StoreError
QList<BoardLine> readBoard(Sesion &s);

} // namespace board

/// Adds a line to the board; nothing else writes to it. Text longer than the column is cut.
/// @param dibujo picture number, see board::picture
/// @param codigo1, codigo2 codes of the two icons, see board::click
/// @throws StoreError
void AgregarPizarra(Sesion &s, const QString &message, int dibujo, int codigo1 = board::click::None,
                    int codigo2 = board::click::None);
