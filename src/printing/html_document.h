// Documents that are text with tables: letters and reports.
#pragma once

#include "printing/document.h"

#include <QImage>
#include <QTextDocument>
#include <memory>

namespace printing
{

/// A page-broken HTML text. Heads of tables (thead) are repeated on each page; a foot shows the
/// title and "page x of y".
class DocumentHtml : public Documento
{
public:
    /// @param pie text of the foot, "%1" the page, "%2" all pages; "" for no foot
    DocumentHtml(QString title, const QString &html, QString pie,
                 QPageLayout::Orientation orientation = QPageLayout::Portrait);

    /// A picture at the top of the first page: over the full width, or as wide as a third of the
    /// page's height allows.
    void setHeader(QImage image);

    QString titleOf() const override { return m_title; }
    QPageLayout::Orientation orientationOf() const override { return m_orientation; }
    int compose(QPaintDevice &device, QSizeF area) override;
    void draw(QPainter &painter, int page) override;

private:
    QString m_title;
    QString m_html;
    QString m_foot;
    QPageLayout::Orientation m_orientation;
    QImage m_header;
    std::unique_ptr<QTextDocument> m_text;
    QSizeF m_page; // of the text, in device pixels
    double m_byMm = 1;
    int m_pages = 0;
};

} // namespace printing
