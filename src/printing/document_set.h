// Several documents printed, or saved to a file, as one.
#pragma once

#include "printing/document.h"

#include <memory>
#include <vector>

namespace printing
{

/// All documents use the same paper size, and each starts on a new page.
class DocumentSet : public Documento
{
public:
    /// Appends a document.
    void add(std::unique_ptr<Documento> document);
    /// Whether no document has been added yet.
    bool isEmpty() const { return m_documents.empty(); }

    /// The title of the first document, with the number of the others.
    QString titleOf() const override;
    /// The orientation of the first document, used for all of them.
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
