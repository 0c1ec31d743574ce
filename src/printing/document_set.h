// Several documents that go to the printer, or into a file, as one.
#pragma once

#include "printing/document.h"

#include <memory>
#include <vector>

namespace printing
{

/// All stand on the same sheet; each begins on a page of its own.
class DocumentSet : public Documento
{
public:
    void add(std::unique_ptr<Documento> document);
    bool isEmpty() const { return m_documents.empty(); }

    /// That of the first, with how many others there are.
    QString titleOf() const override;
    QPageLayout::Orientation orientationOf() const override;
    int compose(QPaintDevice &device, QSizeF area) override;
    void draw(QPainter &painter, int page) override;

private:
    struct Part {
        std::unique_ptr<Documento> document;
        int pages = 0;
    };
    std::vector<Part> m_documents;
};

} // namespace printing
