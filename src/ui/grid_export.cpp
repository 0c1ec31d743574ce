#include "ui/grid_export.h"

#include "ui/boxes.h"

#include <QDir>
#include <QLocale>
#include <QSaveFile>
#include <QTemporaryDir>
#include <xlsxwriter.h>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

constexpr double PixelsPerCharacter = 7; // width of one character in a workbook's column
constexpr qsizetype LongestCell = 32767; // limit of the workbook format

[[noreturn]] void fail(const QString &file, const QString &why)
{
    throw store::StoreError(store::ErrorNumber::PathOrDisk,
                            QDir::toNativeSeparators(file) + u": "_s + why);
}

/// Keeps the old file until all of the new one is on disk.
void replaceFile(const QString &name, const QByteArray &content)
{
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush()
        || !file.commit())
        fail(name, file.errorString());
}

/// A number as a spreadsheet of this locale reads it: no thousands separators.
QString plainCell(const GridModel &model, int row, int column)
{
    const Kind kind = model.allColumns()[column].kind;
    QString text = model.cellText(row, column);
    if (kind == Kind::Whole || kind == Kind::Number || kind == Kind::Amount)
        text.remove(QLocale().groupSeparator());
    return text;
}

QString csvField(QString text, QChar separator, bool guard)
{
    if (guard && !text.isEmpty() && u"=+-@\t\r"_s.contains(text.front()))
        text.prepend(u'\'');
    const bool quote = text.contains(separator) || text.contains(u'"') || text.contains(u'\n')
                       || text.contains(u'\r') || text != text.trimmed();
    return quote ? u'"' + text.replace(u'"', u"\"\""_s) + u'"' : text;
}

struct CloseBook {
    void operator()(lxw_workbook *book) const { workbook_close(book); }
};

/// A worksheet being written.
struct Sheet {
    lxw_worksheet *sheet;
    lxw_format *code, *integer, *amount, *day, *time;

    void text(lxw_row_t row, lxw_col_t col, const QString &t) const
    {
        if (!t.isEmpty())
            worksheet_write_string(sheet, row, col, t.left(LongestCell).toUtf8().constData(),
                                   nullptr);
    }

    void cell(lxw_row_t row, lxw_col_t col, const store::Value &v, Kind kind,
              const QString &shown) const
    {
        if (v.isNull())
            return;
        switch (kind) {
        case Kind::Text:
        case Kind::YesNo:
            return text(row, col, shown);
        case Kind::Whole:
            worksheet_write_number(sheet, row, col, v.toDouble(), integer);
            return;
        case Kind::Code:
            worksheet_write_number(sheet, row, col, v.toDouble(), code);
            return;
        case Kind::Number:
            // By way of Moneda: 12.35, not the 12.3500003 of a single-precision number.
            worksheet_write_number(sheet, row, col, v.toMoneda().toDouble(), nullptr);
            return;
        case Kind::Amount:
            worksheet_write_number(sheet, row, col, v.toMoneda().toDouble(), amount);
            return;
        case Kind::Day: {
            const QDate d = v.toDate();
            if (d.year() < 1900 || d.year() > 9999) // what workbooks can count
                return text(row, col, shown);
            lxw_datetime when{d.year(), d.month(), d.day(), 0, 0, 0};
            worksheet_write_datetime(sheet, row, col, &when, day);
            return;
        }
        case Kind::Hour:
            if (const QTime t = v.toTime(); t.isValid())
                worksheet_write_number(sheet, row, col, t.msecsSinceStartOfDay() / 86'400'000.0,
                                       time);
            return;
        }
    }
};

lxw_format *format(lxw_workbook *book, const char *pattern)
{
    lxw_format *f = workbook_add_format(book);
    format_set_num_format(f, pattern);
    return f;
}

lxw_error writeBook(const GridModel &model, const QList<int> &columns, const QByteArray &file)
{
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    std::unique_ptr<lxw_workbook, CloseBook> book(workbook_new_opt(file.constData(), &options));
    if (!book)
        return LXW_ERROR_MEMORY_MALLOC_FAILED;
    const Sheet sheet{workbook_add_worksheet(book.get(), "Kelvara"),
                      format(book.get(), "00000"),
                      format(book.get(), "0"),
                      format(book.get(), "#,##0.00"),
                      format(book.get(), store::isMonthFirst() ? "mm/dd/yyyy" : "dd/mm/yyyy"),
                      format(book.get(), "hh:mm")};
    if (!sheet.sheet)
        return LXW_ERROR_CREATING_TMPFILE;

    const auto count = lxw_col_t(columns.size());
    lxw_format *bold = workbook_add_format(book.get());
    format_set_bold(bold);
    for (lxw_col_t i = 0; i < count; ++i)
        worksheet_set_column(sheet.sheet, i, i,
                             model.allColumns()[columns[i]].width / PixelsPerCharacter, nullptr);
    for (lxw_col_t i = 0; i < count; ++i)
        worksheet_write_string(sheet.sheet, 0, i,
                               model.allColumns()[columns[i]].title.toUtf8().constData(), bold);
    worksheet_freeze_panes(sheet.sheet, 1, 0);
    for (int row = 0; row < model.allRows(); ++row) {
        const GridRow &r = model.Row(row);
        for (lxw_col_t i = 0; i < count; ++i) {
            const int c = columns[i];
            const Kind kind = model.allColumns()[c].kind;
            const bool shown = kind == Kind::Text || kind == Kind::YesNo || kind == Kind::Day;
            sheet.cell(lxw_row_t(row + 1), i, r.cells.value(c), kind,
                       shown ? model.cellText(row, c) : QString());
        }
    }
    return workbook_close(book.release());
}

} // namespace

void ui::exportCsv(const GridModel &model, const QList<int> &columns, const QString &file)
{
    const QChar separator = QLocale().decimalPoint() == u"," ? u';' : u',';
    QString text(QChar::ByteOrderMark);
    const auto line = [&](const auto &field) {
        for (qsizetype i = 0; i < columns.size(); ++i)
            text += (i ? QString(separator) : QString()) + field(columns[i]);
        text += u"\r\n"_s;
    };
    line([&](int c) { return csvField(model.allColumns()[c].title, separator, true); });
    for (int row = 0; row < model.allRows(); ++row)
        line([&](int c) {
            return csvField(plainCell(model, row, c), separator,
                            model.allColumns()[c].kind == Kind::Text);
        });
    replaceFile(file, text.toUtf8());
}

void ui::exportXlsx(const GridModel &model, const QList<int> &columns, const QString &file)
{
    const QTemporaryDir folder;
    if (!folder.isValid())
        fail(file, folder.errorString());
    const QString name = folder.filePath(u"grilla.xlsx"_s);
    if (const lxw_error e = writeBook(model, columns, QFile::encodeName(name)); e != LXW_NO_ERROR)
        fail(file, QString::fromUtf8(lxw_strerror(e)));
    QFile written(name);
    if (!written.open(QIODevice::ReadOnly))
        fail(file, written.errorString());
    replaceFile(file, written.readAll());
}
