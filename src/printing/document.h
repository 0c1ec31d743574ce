// What can be printed: pages that draw themselves.
#pragma once

#include <QMarginsF>
#include <QPageLayout>
#include <QString>

#include <optional>

struct Sesion;
class QPagedPaintDevice;
class QPaintDevice;
class QPainter;

/// A document. The same object is previewed, printed and saved.
class Documento
{
public:
    virtual ~Documento() = default;

    /// For windows, print queues and file names.
    virtual QString titleOf() const = 0;
    virtual QPageLayout::Orientation orientationOf() const { return QPageLayout::Portrait; }
    /// Lays the pages out for a device. @param area what can be printed on, in millimetres
    /// @return how many pages; 0 when there is nothing to print
    virtual int compose(QPaintDevice &device, QSizeF area) = 0;
    /// Draws a page, from 0, of the last Componer. The painter stands at the upper left corner of
    /// the area, in device pixels.
    virtual void draw(QPainter &painter, int page) = 0;
};

namespace printing
{

/// Margins of all documents, in millimetres.
inline constexpr QMarginsF MarginsMm{15, 15, 15, 15};

/// The sheet that this country uses: Letter in the Americas where it is customary, A4 elsewhere.
QPageSize usualSize();

/// Hands a document to the session's printing; a failure is told, and nothing else comes of it.
void printOrTell(Sesion &s, Documento &document);

/// Draws all pages on a device that is set up already (printer, PDF writer).
/// @return pages drawn, 0 when there is nothing to print; nullopt when the device does not begin or
/// refuses a page
std::optional<int> drawIn(QPagedPaintDevice &device, Documento &document);

/// Writes the document as PDF, whole or not at all: a former file of that name stays until the new
/// one is complete, and when there is nothing to print.
/// @return pages written
/// @throws StoreError 75 with file and reason when it cannot be written
int savePdf(Documento &document, const QString &file, const QPageSize &size = usualSize());

} // namespace printing
