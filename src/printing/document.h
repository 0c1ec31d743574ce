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
    virtual QString Titulo() const = 0;
    virtual QPageLayout::Orientation Orientacion() const { return QPageLayout::Portrait; }
    /// Lays the pages out for a device. @param area what can be printed on, in millimetres
    /// @return how many pages; 0 when there is nothing to print
    virtual int Componer(QPaintDevice &dispositivo, QSizeF area) = 0;
    /// Draws a page, from 0, of the last Componer. The painter stands at the upper left corner of
    /// the area, in device pixels.
    virtual void Dibujar(QPainter &pintor, int pagina) = 0;
};

/// Margins of all documents, in millimetres.
inline constexpr QMarginsF MargenesMm{15, 15, 15, 15};

/// The sheet that this country uses: Letter in the Americas where it is customary, A4 elsewhere.
QPageSize TamanoHabitual();

/// Hands a document to the session's printing; a failure is told, and nothing else comes of it.
void ImprimirODecir(Sesion &s, Documento &documento);

/// Draws all pages on a device that is set up already (printer, PDF writer).
/// @return pages drawn, 0 when there is nothing to print; nullopt when the device does not begin or
/// refuses a page
std::optional<int> DibujarEn(QPagedPaintDevice &dispositivo, Documento &documento);

/// Writes the document as PDF, whole or not at all: a former file of that name stays until the new
/// one is complete, and when there is nothing to print.
/// @return pages written
/// @throws ErrorDeAlmacen 75 with file and reason when it cannot be written
int GuardarPdf(Documento &documento, const QString &archivo,
               const QPageSize &tamano = TamanoHabitual());
