#include "printing/printer.h"

#include "printing/frmvistaprevia.h"
#include "texts/printing.h"
#include "texts/texts.h"
#include "texts/ui.h"

#include <QPrinter>
#include <QPrinterInfo>
#include <QRegularExpression>

using namespace printing;
using namespace Qt::StringLiterals;

namespace
{
} // namespace

QString Printers::firstOne() const { return names.contains(usual) ? usual : names.value(0); }

Printers printing::systemPrinters()
{
    return {QPrinterInfo::availablePrinterNames(), QPrinterInfo::defaultPrinterName()};
}

std::unique_ptr<QPrinter> printing::createPrinter(const QString &name, const Documento &document)
{
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    if (!name.isEmpty())
        printer->setPrinterName(name);
    else
        printer->setResolution(600);
    printer->setPageLayout(
        QPageLayout(usualSize(), document.orientationOf(), MarginsMm, QPageLayout::Millimeter));
    printer->setDocName(document.titleOf());
    return printer;
}

void printing::printDocument(Sesion &s, Documento &document, QPrinter &printer, const QString &name)
{
    const auto pages = drawIn(printer, document);
    if (!pages || printer.printerState() == QPrinter::Error)
        throw store::StoreError(store::ErrorNumber::Printer, s(text::PrinterRefuses) + u' ' + name);
    if (pages == 0)
        s.dialogos.Mensaje(s(text::NoData));
}

bool printing::savePdfAsking(Sesion &s, Documento &document, const QPageSize &size)
{
    static const QRegularExpression notFits(uR"([/\\:*?"<>|\x00-\x1f])"_s);
    QString name = document.titleOf();
    name.replace(notFits, u"-"_s);
    auto file =
        s.dialogos.saveFile(ui::spoken(s(text::SaveAsPdf)), name + u".pdf"_s, s(text::PdfFilter));
    if (!file)
        return false;
    if (!file->endsWith(u".pdf"_s, Qt::CaseInsensitive))
        *file += u".pdf"_s;
    try {
        if (savePdf(document, *file, size) > 0)
            return true;
        s.dialogos.Mensaje(s(text::NoData));
    } catch (const store::StoreError &e) {
        s.dialogos.Mensaje(s(text::FileNotSaved) + u'\n' + e.description);
    }
    return false;
}

DeskPrinting::DeskPrinting(std::function<Printers()> list) : m_list(std::move(list)) {}

// @return the name of the printer to use; "" when the user cancels
QString DeskPrinting::choose(Sesion &s, const Printers &printers)
{
    const QStringList &names = printers.names;
    if (names.size() == 1 || names.contains(printers.usual))
        return printers.firstOne();
    if (names.contains(m_chosen))
        return m_chosen;
    QList<store::Option> options;
    for (int i = 0; i < names.size(); ++i)
        options << store::Option{names[i], i};
    const QString title = ui::spoken(s(text::PreviewPrinter));
    const auto chosen = s.dialogos.Seleccionar(title, {title}, options, false);
    if (!chosen || chosen->isEmpty())
        return {};
    return m_chosen = names.value(chosen->first().value);
}

void DeskPrinting::print(Sesion &s, Documento &document)
{
    const Printers printers = m_list();
    if (printers.names.isEmpty()) {
        if (s.dialogos.Pregunta(s(text::NoPrinterSaveQuestion)))
            savePdfAsking(s, document, usualSize());
        return;
    }
    const QString name = choose(s, printers);
    if (!name.isEmpty())
        printDocument(s, document, *createPrinter(name, document), name);
}

void DeskPrinting::show(Sesion &s, Documento &document)
{
    frmVistaPrevia view(s, document, m_list());
    view.exec();
}
