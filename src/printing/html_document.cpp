#include "printing/html_document.h"

#include "printing/sheet.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace
{
constexpr double AltoDelPieMm = 8;
constexpr double PuntosDelTexto = 10;
constexpr double PuntosDelPie = 8;
} // namespace

DocumentoHtml::DocumentoHtml(QString titulo, const QString &html, QString pie,
                             QPageLayout::Orientation orientacion)
    : m_titulo(std::move(titulo)), m_html(html), m_pie(std::move(pie)), m_orientacion(orientacion)
{
}

void DocumentoHtml::PonerCabecera(QImage imagen) { m_cabecera = std::move(imagen); }

int DocumentoHtml::Componer(QPaintDevice &dispositivo, QSizeF area)
{
    m_porMm = dispositivo.logicalDpiX() / 25.4;
    const double pie = m_pie.isEmpty() ? 0 : AltoDelPieMm;
    m_pagina = QSizeF(area.width(), area.height() - pie) * m_porMm;

    m_texto = std::make_unique<QTextDocument>();
    // Sizes in the text are those of a sheet, not of a screen.
    m_texto->documentLayout()->setPaintDevice(&dispositivo);
    m_texto->setDefaultFont(LetraDeDocumento(PuntosDelTexto));
    m_texto->setDocumentMargin(0);
    QString html = m_html;
    if (!m_cabecera.isNull()) {
        m_texto->addResource(QTextDocument::ImageResource, QUrl(u"cabecera"_s), m_cabecera);
        // Pictures in a text are measured as on a screen of 96 dpi.
        const double ancho = area.width() / 25.4 * 96;
        const double alto = qMin(ancho * m_cabecera.height() / qMax(1, m_cabecera.width()),
                                 area.height() / 25.4 * 96 / 3);
        html.prepend(
            u"<p><img src=\"cabecera\" width=\"%1\" height=\"%2\"></p>"_s.arg(ancho, 0, 'f', 0)
                .arg(alto, 0, 'f', 0));
    }
    m_texto->setHtml(html);
    m_texto->setPageSize(m_pagina);
    m_paginas = m_texto->pageCount();
    return m_paginas;
}

void DocumentoHtml::Dibujar(QPainter &pintor, int pagina)
{
    pintor.save();
    pintor.translate(0, -pagina * m_pagina.height());
    QAbstractTextDocumentLayout::PaintContext contexto;
    contexto.clip = QRectF(0, pagina * m_pagina.height(), m_pagina.width(), m_pagina.height());
    pintor.setClipRect(contexto.clip);
    contexto.palette.setColor(QPalette::Text, Qt::black);
    m_texto->documentLayout()->draw(&pintor, contexto);
    pintor.restore();
    if (m_pie.isEmpty())
        return;
    Hoja hoja(pintor);
    const QSizeF mm = m_pagina / m_porMm;
    const QRectF caja(0, mm.height() + 2, mm.width(), AltoDelPieMm - 2);
    pintor.setPen(QColor(0x55, 0x55, 0x55));
    hoja.Linea(caja, m_titulo, PuntosDelPie, Qt::AlignLeft | Qt::AlignBottom);
    hoja.Linea(caja, m_pie.arg(pagina + 1).arg(m_paginas), PuntosDelPie,
               Qt::AlignRight | Qt::AlignBottom);
}

QString DocumentoHtml::ComoTexto() const
{
    QTextDocument d;
    d.setHtml(m_html);
    return d.toPlainText();
}
