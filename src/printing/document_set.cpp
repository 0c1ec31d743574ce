#include "printing/document_set.h"

#include <QPaintDevice>
#include <QSizeF>

using namespace printing;
using namespace Qt::StringLiterals;

void DocumentSet::add(std::unique_ptr<Documento> document)
{
    m_documents.push_back({.document = std::move(document)});
}

QString DocumentSet::titleOf() const
{
    if (m_documents.empty())
        return {};
    const QString first = m_documents.front().document->titleOf();
    return m_documents.size() == 1 ? first : first + u" (+%1)"_s.arg(m_documents.size() - 1);
}

QPageLayout::Orientation DocumentSet::orientationOf() const
{
    return m_documents.empty() ? Documento::orientationOf()
                               : m_documents.front().document->orientationOf();
}

int DocumentSet::compose(QPaintDevice &device, QSizeF area)
{
    int all = 0;
    for (Part &p : m_documents)
        all += p.pages = p.document->compose(device, area);
    return all;
}

void DocumentSet::draw(QPainter &painter, int page)
{
    for (Part &p : m_documents) {
        if (page < p.pages)
            return p.document->draw(painter, page);
        page -= p.pages;
    }
}
