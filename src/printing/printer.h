// Putting documents on paper, from a window.
#pragma once

#include "printing/document.h"
#include "store/session.h"

#include <memory>

class QPrinter;

/// A printer set up for a document: usual sheet, margins, orientation.
/// @param nombre of the system's printer; "" draws as a printer of 600 dpi would
std::unique_ptr<QPrinter> CrearImpresora(const QString &nombre, const Documento &documento);

/// Draws the document on the printer. @throws ErrorDeAlmacen 482 when it does not take it
void ImprimirDocumento(Sesion &s, Documento &documento, QPrinter &impresora);

/// Asks for a file and saves the document as PDF. @return whether it was saved
/// @throws ErrorDeAlmacen 75
bool GuardarPdfPreguntando(Sesion &s, Documento &documento, const QPageSize &tamano);

/// The desk of a machine with somebody before it: straight to the usual printer; without one the
/// user is told so and may save a PDF.
class ImpresionDeEscritorio : public Impresion
{
public:
    bool Disponible() const override { return true; }
    void Imprimir(Sesion &s, Documento &documento) override;
    void Mostrar(Sesion &s, Documento &documento) override;
};
