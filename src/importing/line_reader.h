// What one line of a file tells, by itself: words taken for what they mean, texts as their columns
// take them. Whether its owner and its animal are known already is the plan's question.
#pragma once

#include "clients/registry.h"
#include "importing/import.h"

#include <array>

namespace importing
{

/// An animal as a line tells of it. Species, breed and coat are names; the record holds none of
/// the three.
struct ReadPatient {
    clients::PatientRecord record; // without a name where no column holds one
    QString species;
    QString breed;
    QString coat;
    QString number; // in the other program
    bool withSex = false;
};

/// One line. A line that is refused holds neither.
struct ReadLine {
    QString refused; // why, for the user; "" when it is taken
    std::optional<clients::ClientRecord> client;
    QString clientNumber; // in the other program
    std::optional<ReadPatient> patient;
    QStringList notices;                   // what was changed or left out, for the user
    QString writtenClient, writtenPatient; // the names as they stand in the file
};

/// Reads the lines of one file by what its columns hold.
class LineReader
{
public:
    /// @param o must outlive the reader; its order of dates is day and month until setOrder
    LineReader(Sesion &s, const ImportOptions &o);

    void setOrder(DateOrder order) { m_order = order; }
    /// Whether some column holds the datum.
    bool has(Datum d) const { return m_column[size_t(d)] >= 0; }
    /// The column that holds it, -1 for none.
    int columnOf(Datum d) const { return m_column[size_t(d)]; }
    /// The client of animals whose line names no owner, as its column takes it; what had to be
    /// changed for that is added to @p notices.
    QString defaultOwner(QStringList &notices);
    /// Never throws: what cannot be read is refused or left out, with a notice.
    ReadLine read(const QStringList &fields);
    /// Whether a weight, or the title of a column of weights, is in another unit than the clinic's.
    bool isOtherUnit(const QString &text) const;
    /// The unit that the clinic weighs in, "kg" or "lb".
    QString ownUnit() const;

private:
    QString field(Datum d) const;
    void warn(int text, const QString &value);
    QString clean(const QString &text, std::string_view table, std::string_view column);
    QString allThatFit(const QString &text, std::string_view column);
    bool yesNo(Datum d);
    bool readClient(ReadLine &line);
    bool readPatient(ReadLine &line);
    void readBody(ReadPatient &m);

    Sesion &m_s;
    std::array<int, DatumCount> m_column{};
    DateOrder m_order = DateOrder::DayMonth;
    QString m_owner;
    const QStringList *m_fields = nullptr; // of the line at hand
    QStringList m_notices;
};

} // namespace importing
