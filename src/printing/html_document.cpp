#include "printing/html_document.h"

#include "printing/sheet.h"

#include <QAbstractTextDocumentLayout>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QTextTable>
#include <cmath>

using namespace printing;
using namespace Qt::StringLiterals;

namespace
{
constexpr double AltoDelPieMm = 8;
constexpr double TextPoints = 10;
constexpr double FootPoints = 8;

// The resolution in which Qt measures the lengths in a text.
double screenDpi()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? qRound(screen->logicalDotsPerInchY()) : 96;
}

// The upper edge of a row's text.
double above(const QTextTable &table, int row)
{
    const auto *drawn = table.document()->documentLayout();
    return drawn->blockBoundingRect(table.cellAt(row, 0).firstCursorPosition().block()).top();
}

// Lays out the text on pages. Qt would break a table row between its lines; instead, the row above
// one that would be broken is extended to the end of the page. Rows are measured on one endless
// page, so that a long list is laid out twice rather than once for each page.
// @param scale device pixels per screen pixel
void paginate(QTextDocument &text, QSizeF page, double scale)
{
    text.setPageSize({page.width(), 1e7});
    QTextCursor cursor(&text);
    cursor.beginEditBlock();
    double hasRun = 0; // how far everything below has moved down
    for (QTextFrame *frame : text.rootFrame()->childFrames()) {
        auto *table = qobject_cast<QTextTable *>(frame);
        if (!table || table->rows() <= table->format().headerRowCount() + 1)
            continue;
        const int head = table->format().headerRowCount();
        const double headHeight = head > 0 ? above(*table, head) - above(*table, 0) : 0;
        const double bottom = text.documentLayout()->frameBoundingRect(table).bottom();
        std::vector<double> heights;
        heights.reserve(size_t(table->rows()));
        for (int row = 0; row < table->rows(); ++row)
            heights.push_back((row + 1 < table->rows() ? above(*table, row + 1) : bottom)
                              - above(*table, row));
        double y = std::fmod(above(*table, 0) + hasRun, page.height());
        for (int row = 0; row < table->rows(); ++row) {
            const double height = heights[size_t(row)];
            // A row that is too high for any page is left to Qt to break, with the head repeated.
            if (row >= head && height + headHeight > page.height()) {
                const double gap = page.height() - headHeight;
                const double rest = height - (page.height() - y);
                hasRun += headHeight * std::ceil(rest / gap);
                y = headHeight + std::fmod(rest, gap);
                continue;
            }
            if (y + height > page.height() && row > head) {
                for (int column = 0; column < table->columns(); ++column) {
                    QTextTableCell cell = table->cellAt(row - 1, column);
                    QTextTableCellFormat format = cell.format().toTableCellFormat();
                    format.setBottomPadding(format.bottomPadding() + (page.height() - y) / scale);
                    cell.setFormat(format);
                }
                hasRun += page.height() - y + headHeight;
                y = headHeight;
            }
            y += height;
        }
    }
    cursor.endEditBlock();
    text.setPageSize(page);
}

} // namespace

DocumentHtml::DocumentHtml(QString title, const QString &html, QString pie,
                           QPageLayout::Orientation orientation)
    : m_title(std::move(title)), m_html(html), m_foot(std::move(pie)), m_orientation(orientation)
{
}

void DocumentHtml::setHeader(QImage image) { m_header = std::move(image); }

int DocumentHtml::compose(QPaintDevice &device, QSizeF area)
{
    m_byMm = device.logicalDpiX() / 25.4;
    const double pie = m_foot.isEmpty() ? 0 : AltoDelPieMm;
    m_page = QSizeF(area.width(), area.height() - pie) * m_byMm;

    m_text = std::make_unique<QTextDocument>();
    // Sizes in the text refer to the paper, not to the screen.
    m_text->documentLayout()->setPaintDevice(&device);
    m_text->setDefaultFont(documentFont(TextPoints));
    m_text->setDocumentMargin(0);
    QString html = m_html;
    if (!m_header.isNull()) {
        m_text->addResource(QTextDocument::ImageResource, QUrl(u"cabecera"_s), m_header);
        const QSizeF gap = QSizeF(area.width(), area.height() / 3) / 25.4 * screenDpi();
        const QSizeF t = QSizeF(m_header.size()).scaled(gap, Qt::KeepAspectRatio);
        html.prepend(
            u"<p><img src=\"cabecera\" width=\"%1\" height=\"%2\"></p>"_s.arg(t.width()).arg(
                t.height()));
    }
    m_text->setLayoutEnabled(false);
    m_text->setHtml(html);
    m_text->setLayoutEnabled(true);
    paginate(*m_text, m_page, device.logicalDpiY() / screenDpi());
    m_pages = m_text->pageCount();
    return m_pages;
}

void DocumentHtml::draw(QPainter &painter, int page)
{
    painter.save();
    painter.translate(0, -page * m_page.height());
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = QRectF(0, page * m_page.height(), m_page.width(), m_page.height());
    painter.setClipRect(context.clip);
    context.palette.setColor(QPalette::Text, Qt::black);
    m_text->documentLayout()->draw(&painter, context);
    painter.restore();
    if (m_foot.isEmpty())
        return;
    Sheet sheet(painter);
    const QSizeF mm = m_page / m_byMm;
    const QRectF box(0, mm.height() + 2, mm.width(), AltoDelPieMm - 2);
    painter.setPen(QColor(0x55, 0x55, 0x55));
    sheet.Line(box, m_title, FootPoints, Qt::AlignLeft | Qt::AlignBottom);
    sheet.Line(box, m_foot.arg(page + 1).arg(m_pages), FootPoints,
               Qt::AlignRight | Qt::AlignBottom);
}
