// Printing documents on behalf of a user at the screen.
#pragma once

#include "printing/document.h"
#include "store/session.h"

#include <functional>
#include <memory>

class QPrinter;

namespace printing
{

/// The printers to choose from.
struct Printers {
    QStringList names;
    QString usual; // the system's default printer; "" when there is none

    /// The printer to preselect: the default one, else the first; "" when there is none.
    QString firstOne() const;
};
/// The printers that the system knows.
Printers systemPrinters();

/// Sets up a printer for a document: usual paper size, margins, orientation.
/// @param name of the system's printer; with "" the layout is that of a 600 dpi printer
std::unique_ptr<QPrinter> createPrinter(const QString &name, const Documento &document);

/// Prints the document. If it has no pages, the user is told so instead.
/// @param name the name by which the user knows the printer
/// @throws StoreError 482 when the printer refuses the document or no longer exists
void printDocument(Sesion &s, Documento &document, QPrinter &printer, const QString &name);

/// Asks for a file name and saves the document as a PDF. Failures are reported to the user.
/// @return whether it was saved
bool savePdfAsking(Sesion &s, Documento &document, const QPageSize &size);

/// Printing with a user at the screen: straight to the default printer. When the system has no
/// default, the user chooses a printer once per run; when there is no printer at all, the user is
/// told so and may save a PDF instead.
class DeskPrinting : public store::Printing
{
public:
    /// @param list gives the printers; called for each document, since printers come and go
    explicit DeskPrinting(std::function<Printers()> list = systemPrinters);
    /// Prints the document. @throws StoreError 482 as printDocument does
    void print(Sesion &s, Documento &document) override;
    /// Opens the document in the preview.
    void show(Sesion &s, Documento &document) override;

private:
    QString choose(Sesion &s, const Printers &printers);
    std::function<Printers()> m_list;
    QString m_chosen;
};

} // namespace printing
