#include "printing/html_document.h"

#include "printing/sheet.h"

#include <QAbstractTextDocumentLayout>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QTextTable>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
constexpr double AltoDelPieMm = 8;
constexpr double PuntosDelTexto = 10;
constexpr double PuntosDelPie = 8;

// What the toolkit takes a length in a text to be measured in: dots of a screen.
double DpiDePantalla()
{
    const QScreen *pantalla = QGuiApplication::primaryScreen();
    return pantalla ? qRound(pantalla->logicalDotsPerInchY()) : 96;
}

// Upper edge of a row's text.
double Arriba(const QTextTable &tabla, int fila)
{
    const auto *trazado = tabla.document()->documentLayout();
    return trazado->blockBoundingRect(tabla.cellAt(fila, 0).firstCursorPosition().block()).top();
}

// Lays the text out on pages. The toolkit breaks a row between its lines; here the row above one
// that would be broken grows down to the end of the page instead. Rows are measured on one endless
// page, so that a long list is laid out twice and not once for each page.
// @param escala device pixels of a screen's dot
void Paginar(QTextDocument &texto, QSizeF pagina, double escala)
{
    texto.setPageSize({pagina.width(), 1e7});
    QTextCursor cursor(&texto);
    cursor.beginEditBlock();
    double corrido = 0; // what stands below has moved down by so much
    for (QTextFrame *marco : texto.rootFrame()->childFrames()) {
        auto *tabla = qobject_cast<QTextTable *>(marco);
        if (!tabla || tabla->rows() <= tabla->format().headerRowCount() + 1)
            continue;
        const int cabeza = tabla->format().headerRowCount();
        const double altoDeCabeza = cabeza > 0 ? Arriba(*tabla, cabeza) - Arriba(*tabla, 0) : 0;
        const double fin = texto.documentLayout()->frameBoundingRect(tabla).bottom();
        std::vector<double> altos;
        for (int fila = 0; fila < tabla->rows(); ++fila)
            altos.push_back((fila + 1 < tabla->rows() ? Arriba(*tabla, fila + 1) : fin)
                            - Arriba(*tabla, fila));
        double y = std::fmod(Arriba(*tabla, 0) + corrido, pagina.height());
        for (int fila = 0; fila < tabla->rows(); ++fila) {
            const double alto = altos[size_t(fila)];
            // What no page holds is broken by the toolkit after all, under a head on each page.
            if (fila >= cabeza && alto + altoDeCabeza > pagina.height()) {
                const double hueco = pagina.height() - altoDeCabeza;
                const double resto = alto - (pagina.height() - y);
                corrido += altoDeCabeza * std::ceil(resto / hueco);
                y = altoDeCabeza + std::fmod(resto, hueco);
                continue;
            }
            if (y + alto > pagina.height() && fila > cabeza) {
                for (int columna = 0; columna < tabla->columns(); ++columna) {
                    QTextTableCell celda = tabla->cellAt(fila - 1, columna);
                    QTextTableCellFormat formato = celda.format().toTableCellFormat();
                    formato.setBottomPadding(formato.bottomPadding()
                                             + (pagina.height() - y) / escala);
                    celda.setFormat(formato);
                }
                corrido += pagina.height() - y + altoDeCabeza;
                y = altoDeCabeza;
            }
            y += alto;
        }
    }
    cursor.endEditBlock();
    texto.setPageSize(pagina);
}

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
        const QSizeF hueco = QSizeF(area.width(), area.height() / 3) / 25.4 * DpiDePantalla();
        const QSizeF t = QSizeF(m_cabecera.size()).scaled(hueco, Qt::KeepAspectRatio);
        html.prepend(
            u"<p><img src=\"cabecera\" width=\"%1\" height=\"%2\"></p>"_s.arg(t.width()).arg(
                t.height()));
    }
    m_texto->setLayoutEnabled(false);
    m_texto->setHtml(html);
    m_texto->setLayoutEnabled(true);
    Paginar(*m_texto, m_pagina, dispositivo.logicalDpiY() / DpiDePantalla());
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
