// Documents made of text and tables: letters and reports.
#pragma once

#include "printing/document.h"

#include <QImage>
#include <QTextDocument>
#include <memory>

namespace printing
{

/// An HTML text divided into pages. Table heads (thead) are repeated on each page; a footer shows
/// the title and "page x of y".
class DocumentHtml : public Documento
{
public:
    /// @param pie text of the footer, with "%1" for the page and "%2" for the number of pages; ""
    ///        for no footer
    DocumentHtml(QString title, const QString &html, QString pie,
                 QPageLayout::Orientation orientation = QPageLayout::Portrait);

    /// Sets a picture for the top of the first page. It takes the full width, or less so as not to
    /// be higher than a third of the page.
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
