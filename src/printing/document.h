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

/// A document that can be previewed, printed and saved.
class Documento
{
public:
    virtual ~Documento() = default;

    /// Title for windows, print queues and file names.
    virtual QString titleOf() const = 0;
    /// Orientation of all its pages.
    virtual QPageLayout::Orientation orientationOf() const { return QPageLayout::Portrait; }
    /// Lays out the pages for a device. @param area the printable area, in millimetres
    /// @return the number of pages; 0 when there is nothing to print
    virtual int compose(QPaintDevice &device, QSizeF area) = 0;
    /// Draws one page, counted from 0, of the last compose. The painter's origin is the upper left
    /// corner of the printable area and its unit the device pixel.
    virtual void draw(QPainter &painter, int page) = 0;
};

namespace printing
{

/// Margins of all documents, in millimetres.
inline constexpr QMarginsF MarginsMm{15, 15, 15, 15};

/// The usual paper size in the locale's territory: Letter where that is customary, else A4.
QPageSize usualSize();

/// Prints a document through the session. A failure is only reported to the user.
void printOrTell(Sesion &s, Documento &document);

/// Draws all pages on a device that has already been set up (printer, PDF writer).
/// @return the number of pages drawn, 0 when there is nothing to print; nullopt when the device
///         cannot start or refuses a page
std::optional<int> drawIn(QPagedPaintDevice &device, Documento &document);

/// Writes the document as a PDF, completely or not at all. An existing file of that name is
/// replaced only once the new one is complete, and kept when there is nothing to print.
/// @return the number of pages written
/// @throws StoreError 75, naming the file and the reason, when it cannot be written
int savePdf(Documento &document, const QString &file, const QPageSize &size = usualSize());

} // namespace printing
