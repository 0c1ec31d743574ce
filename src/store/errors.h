// Errors of the store. They carry the error numbers that the rest of the system knows, whichever
// engine is in use.
#pragma once

#include <QString>
#include <stdexcept>

namespace store
{

/// Error numbers that some code reacts to; any other number is only shown.
namespace ErrorNumber
{
inline constexpr int Overflow = 6;    // beyond the range of a column, or a counter used up
inline constexpr int OutOfMemory = 7; // also a query with more rows than its RowLimit
inline constexpr int FileName = 52;
inline constexpr int FileNotFound = 53;
inline constexpr int FullDisk = 61;
inline constexpr int ReadOnly = 70;
inline constexpr int PathOrDisk = 75;
inline constexpr int NotInCollection = 3265; // no column or table of that name
inline constexpr int Key = 3022;             // a duplicate in a unique index
inline constexpr int DatabaseNotFound = 3024;
inline constexpr int NoCurrentRecord = 3021;
inline constexpr int Parameters =
    3061; // an unknown column in a statement, or the wrong number of values
inline constexpr int NullNotTaken = 3314; // a column declared NOT NULL was left empty
inline constexpr int Syntax = 3075;
inline constexpr int TableNotFound = 3078;
inline constexpr int Locked = 3260; // another terminal held the lock for too long
inline constexpr int DatabaseDamaged = 3343;
inline constexpr int ColumnExists = 3380;
inline constexpr int TableExists = 3010;
inline constexpr int TextTooLong = 3163;
inline constexpr int Conflict = 3197; // another terminal has changed the row being written
inline constexpr int TypeMismatch = 3421;
inline constexpr int Internals = 3000;
inline constexpr int Printer = 482; // the printer rejected the document
inline constexpr int Mail = 32002;  // the mail server rejected the account or a message
} // namespace ErrorNumber

/// What the store throws. The description can be shown to the user as it is; the statement never
/// contains the values bound to it.
class StoreError : public std::runtime_error
{
public:
    /// @param number one of ErrorNumber
    StoreError(int number, const QString &description, const QString &statement = {});

    int number;
    QString description;
    QString statement;

    /// Whether the cause is not the data but the disk, the memory or another terminal's lock, so
    /// that a long run should stop at once.
    bool isMediumFailure() const;
};

/// Unwinds a batch that must be run again from its start. Not an error: only runBatch() catches it.
struct BatchMustRepeat {
};

} // namespace store
