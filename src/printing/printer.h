// Putting documents on paper, from a window.
#pragma once

#include "printing/document.h"
#include "store/session.h"

#include <functional>
#include <memory>

class QPrinter;

/// The printers that can be chosen.
struct Impresoras {
    QStringList nombres;
    QString habitual; // the system's usual one; "" where it names none

    /// The one to begin with: the usual one, else the first; "" without any.
    QString Primera() const;
};
Impresoras ImpresorasDelSistema();

/// A printer set up for a document: usual sheet, margins, orientation.
/// @param nombre of the system's printer; "" lays out as a printer of 600 dpi would
std::unique_ptr<QPrinter> CrearImpresora(const QString &nombre, const Documento &documento);

/// Draws the document on the printer; one without pages is told instead.
/// @param nombre what the user knows the printer by
/// @throws ErrorDeAlmacen 482 when the printer does not take it or is no longer there
void ImprimirDocumento(Sesion &s, Documento &documento, QPrinter &impresora, const QString &nombre);

/// Asks for a file and saves the document as PDF. What fails is told.
/// @return whether it was saved
bool GuardarPdfPreguntando(Sesion &s, Documento &documento, const QPageSize &tamano);

/// The desk of a machine with somebody before it: straight to the usual printer. Where the system
/// names none the user chooses one, once for the run; where there is no printer he is told so and
/// may save a PDF.
class ImpresionDeEscritorio : public Impresion
{
public:
    explicit ImpresionDeEscritorio(std::function<Impresoras()> listar = ImpresorasDelSistema);
    void Imprimir(Sesion &s, Documento &documento) override;
    void Mostrar(Sesion &s, Documento &documento) override;

private:
    QString Elegir(Sesion &s, const Impresoras &impresoras);
    std::function<Impresoras()> m_listar;
    QString m_elegida;
};
