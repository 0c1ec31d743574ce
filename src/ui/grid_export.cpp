#include "ui/grid_export.h"

#include "ui/boxes.h"

#include <QDir>
#include <QLocale>
#include <QSaveFile>
#include <QTemporaryDir>
#include <xlsxwriter.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr double pixelsPerCharacter = 7; // of a workbook's column width
constexpr qsizetype longestCell = 32767; // of a workbook

[[noreturn]] void fail(const QString &file, const QString &why)
{
    throw ErrorDeAlmacen(ErrorNum::RutaODisco, QDir::toNativeSeparators(file) + u": "_s + why);
}

/// The former file stays until all of the new one is on the disk.
void replaceFile(const QString &name, const QByteArray &content)
{
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush()
        || !file.commit())
        fail(name, file.errorString());
}

/// A number as a spreadsheet of this locale reads it: without marks between the thousands.
QString plainCell(const ModeloDeGrilla &model, int row, int column)
{
    const Clase clase = model.Columnas()[column].clase;
    QString text = model.TextoDeCelda(row, column);
    if (clase == Clase::Entero || clase == Clase::Numero || clase == Clase::Importe)
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

struct CerrarLibro {
    void operator()(lxw_workbook *book) const { workbook_close(book); }
};

/// One sheet being written.
struct Hoja {
    lxw_worksheet *sheet;
    lxw_format *code, *integer, *amount, *day, *time;

    void text(lxw_row_t row, lxw_col_t col, const QString &t) const
    {
        if (!t.isEmpty())
            worksheet_write_string(sheet, row, col, t.left(longestCell).toUtf8().constData(),
                                   nullptr);
    }

    void cell(lxw_row_t row, lxw_col_t col, const Valor &v, Clase clase, const QString &shown) const
    {
        if (v.EsNulo())
            return;
        switch (clase) {
        case Clase::Texto:
        case Clase::SiNo:
            return text(row, col, shown);
        case Clase::Entero:
            worksheet_write_number(sheet, row, col, v.toDouble(), integer);
            return;
        case Clase::Codigo:
            worksheet_write_number(sheet, row, col, v.toDouble(), code);
            return;
        case Clase::Numero:
            // Through the amount: 12.35 and not the 12.3500003 of a short floating number.
            worksheet_write_number(sheet, row, col, v.toMoneda().ADoble(), nullptr);
            return;
        case Clase::Importe:
            worksheet_write_number(sheet, row, col, v.toMoneda().ADoble(), amount);
            return;
        case Clase::Dia: {
            const QDate d = v.toDate();
            if (d.year() < 1900 || d.year() > 9999) // what workbooks can count
                return text(row, col, shown);
            lxw_datetime when{d.year(), d.month(), d.day(), 0, 0, 0};
            worksheet_write_datetime(sheet, row, col, &when, day);
            return;
        }
        case Clase::Hora:
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

lxw_error writeBook(const ModeloDeGrilla &model, const QList<int> &columns, const QByteArray &file)
{
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    std::unique_ptr<lxw_workbook, CerrarLibro> book(workbook_new_opt(file.constData(), &options));
    if (!book)
        return LXW_ERROR_MEMORY_MALLOC_FAILED;
    const Hoja hoja{workbook_add_worksheet(book.get(), "Kelvara"),
                    format(book.get(), "00000"),
                    format(book.get(), "0"),
                    format(book.get(), "#,##0.00"),
                    format(book.get(), MesPrimero() ? "mm/dd/yyyy" : "dd/mm/yyyy"),
                    format(book.get(), "hh:mm")};
    if (!hoja.sheet)
        return LXW_ERROR_CREATING_TMPFILE;

    lxw_format *bold = workbook_add_format(book.get());
    format_set_bold(bold);
    for (lxw_col_t i = 0; i < columns.size(); ++i)
        worksheet_set_column(hoja.sheet, i, i,
                             model.Columnas()[columns[i]].ancho / pixelsPerCharacter, nullptr);
    for (lxw_col_t i = 0; i < columns.size(); ++i)
        worksheet_write_string(hoja.sheet, 0, i,
                               model.Columnas()[columns[i]].titulo.toUtf8().constData(), bold);
    worksheet_freeze_panes(hoja.sheet, 1, 0);
    for (int row = 0; row < model.Filas(); ++row) {
        const FilaDeGrilla &r = model.Fila(row);
        for (lxw_col_t i = 0; i < columns.size(); ++i) {
            const int c = columns[i];
            const Clase clase = model.Columnas()[c].clase;
            const bool shown = clase == Clase::Texto || clase == Clase::SiNo || clase == Clase::Dia;
            hoja.cell(lxw_row_t(row + 1), i, r.celdas.value(c), clase,
                      shown ? model.TextoDeCelda(row, c) : QString());
        }
    }
    return workbook_close(book.release());
}

} // namespace

void ExportarCsv(const ModeloDeGrilla &modelo, const QList<int> &columnas, const QString &archivo)
{
    const QChar separator = QLocale().decimalPoint() == u"," ? u';' : u',';
    QString text(QChar::ByteOrderMark);
    const auto line = [&](const auto &field) {
        for (qsizetype i = 0; i < columnas.size(); ++i)
            text += (i ? QString(separator) : QString()) + field(columnas[i]);
        text += u"\r\n"_s;
    };
    line([&](int c) { return csvField(modelo.Columnas()[c].titulo, separator, true); });
    for (int row = 0; row < modelo.Filas(); ++row)
        line([&](int c) {
            return csvField(plainCell(modelo, row, c), separator,
                            modelo.Columnas()[c].clase == Clase::Texto);
        });
    replaceFile(archivo, text.toUtf8());
}

void ExportarXlsx(const ModeloDeGrilla &modelo, const QList<int> &columnas, const QString &archivo)
{
    const QTemporaryDir folder;
    if (!folder.isValid())
        fail(archivo, folder.errorString());
    const QString name = folder.filePath(u"grilla.xlsx"_s);
    if (const lxw_error e = writeBook(modelo, columnas, QFile::encodeName(name)); e != LXW_NO_ERROR)
        fail(archivo, QString::fromUtf8(lxw_strerror(e)));
    QFile written(name);
    if (!written.open(QIODevice::ReadOnly))
        fail(archivo, written.errorString());
    replaceFile(archivo, written.readAll());
}
