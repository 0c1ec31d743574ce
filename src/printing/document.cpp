#include "printing/document.h"

#include "store/session.h"

#include <QFile>
#include <QLocale>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

using namespace printing;
using namespace Qt::StringLiterals;

QPageSize printing::usualSize()
{
    // The territories for which the Unicode locale data name Letter as the usual size.
    static constexpr QLocale::Territory withLetter[] = {
        QLocale::UnitedStates, QLocale::Canada,           QLocale::Mexico,
        QLocale::Colombia,     QLocale::Venezuela,        QLocale::Chile,
        QLocale::CostaRica,    QLocale::ElSalvador,       QLocale::Guatemala,
        QLocale::Nicaragua,    QLocale::Panama,           QLocale::PuertoRico,
        QLocale::Philippines,  QLocale::DominicanRepublic};
    const auto country = QLocale().territory();
    const bool letter =
        std::find(std::begin(withLetter), std::end(withLetter), country) != std::end(withLetter);
    return QPageSize(letter ? QPageSize::Letter : QPageSize::A4);
}

void printing::printOrTell(Sesion &s, Documento &document)
{
    try {
        s.impresion.print(s, document);
    } catch (const store::StoreError &e) {
        s.dialogos.Mensaje(e.description);
    }
}

std::optional<int> printing::drawIn(QPagedPaintDevice &device, Documento &document)
{
    const QSizeF area = device.pageLayout().paintRect(QPageLayout::Millimeter).size();
    const int pages = document.compose(device, area);
    QPainter painter;
    for (int p = 0; p < pages; ++p) {
        if (p == 0 ? !painter.begin(&device) : !device.newPage())
            return std::nullopt;
        painter.save();
        document.draw(painter, p);
        painter.restore();
    }
    return pages;
}

int printing::savePdf(Documento &document, const QString &file, const QPageSize &size)
{
    QSaveFile target(file);
    const auto failure = [&] {
        throw store::StoreError(store::ErrorNumber::PathOrDisk,
                                file + u": "_s + target.errorString());
    };
    if (!target.open(QIODevice::WriteOnly))
        failure();
    std::optional<int> pages;
    {
        QPdfWriter pdf(&target);
        pdf.setResolution(600);
        pdf.setTitle(document.titleOf());
        pdf.setCreator(u"Kelvara"_s);
        pdf.setPageLayout(
            QPageLayout(size, document.orientationOf(), MarginsMm, QPageLayout::Millimeter));
        pages = drawIn(pdf, document);
    }
    if (pages == 0)
        return 0;
    // commit() alone does not report data that could not be flushed.
    if (!pages || !target.flush() || !target.commit())
        failure();
    return *pages;
}
