// Putting documents on paper, from a window.
#pragma once

#include "printing/document.h"
#include "store/session.h"

#include <functional>
#include <memory>

class QPrinter;

namespace printing
{

/// The printers that can be chosen.
struct Printers {
    QStringList names;
    QString usual; // the system's usual one; "" where it names none

    /// The one to begin with: the usual one, else the first; "" without any.
    QString firstOne() const;
};
Printers systemPrinters();

/// A printer set up for a document: usual sheet, margins, orientation.
/// @param name of the system's printer; "" lays out as a printer of 600 dpi would
std::unique_ptr<QPrinter> createPrinter(const QString &name, const Documento &document);

/// Draws the document on the printer; one without pages is told instead.
/// @param name what the user knows the printer by
/// @throws StoreError 482 when the printer does not take it or is no longer there
void printDocument(Sesion &s, Documento &document, QPrinter &printer, const QString &name);

/// Asks for a file and saves the document as PDF. What fails is told.
/// @return whether it was saved
bool savePdfAsking(Sesion &s, Documento &document, const QPageSize &size);

/// The desk of a machine with somebody before it: straight to the usual printer. Where the system
/// names none the user chooses one, once for the run; where there is no printer he is told so and
/// may save a PDF.
class DeskPrinting : public store::Printing
{
public:
    explicit DeskPrinting(std::function<Printers()> list = systemPrinters);
    void print(Sesion &s, Documento &document) override;
    void show(Sesion &s, Documento &document) override;

private:
    QString choose(Sesion &s, const Printers &printers);
    std::function<Printers()> m_list;
    QString m_chosen;
};

} // namespace printing
