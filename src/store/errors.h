// Failures of the store. They carry the error numbers that the rest of the system knows, whatever
// the engine says.
#pragma once

#include <QString>
#include <stdexcept>

namespace store
{

/// Error numbers with a reaction of their own; any other number is shown as it is.
namespace ErrorNumber
{
inline constexpr int Overflow = 6;    // beyond the range of a column or the end of a counter
inline constexpr int OutOfMemory = 7; // also a query with more rows than were wanted
inline constexpr int FileName = 52;
inline constexpr int FileNotFound = 53;
inline constexpr int FullDisk = 61;
inline constexpr int ReadOnly = 70;
inline constexpr int PathOrDisk = 75;
inline constexpr int NotInCollection = 3265; // a column or table that the file lacks, asked by name
inline constexpr int Key = 3022;             // a duplicate where the file allows none
inline constexpr int DatabaseNotFound = 3024;
inline constexpr int NoCurrentRecord = 3021;
inline constexpr int Parameters =
    3061; // a name in a statement that is no column, or a value too few
inline constexpr int NullNotTaken = 3314; // a column declared NOT NULL was left empty
inline constexpr int Syntax = 3075;
inline constexpr int TableNotFound = 3078;
inline constexpr int Locked = 3260; // another terminal held the file for too long
inline constexpr int DatabaseDamaged = 3343;
inline constexpr int ColumnExists = 3380;
inline constexpr int TableExists = 3010;
inline constexpr int TextTooLong = 3163;
inline constexpr int Conflict = 3197; // another terminal has changed what is being written
inline constexpr int TypeMismatch = 3421;
inline constexpr int Internals = 3000;
inline constexpr int Printer = 482; // the printer does not take the document
inline constexpr int Mail = 32002;  // the mail server does not take the account or a message
} // namespace ErrorNumber

/// What the store throws. The description can be shown to a user as it is; the statement never
/// holds the values that were bound to it.
class StoreError : public std::runtime_error
{
public:
    StoreError(int number, const QString &description, const QString &statement = {});

    int number;
    QString description;
    QString statement;

    /// The disk, not the data: nothing more can be written, so a long run should stop at once.
    bool isMediumFailure() const;
};

/// Goes through a batch that must be run again from its start, see runBatch(). No failure: nobody
/// but runBatch catches it.
struct BatchMustRepeat {
};

} // namespace store
