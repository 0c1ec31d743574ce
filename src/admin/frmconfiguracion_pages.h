// The pages of the settings. Each builds one and wires it; whatever changes is written at once.
#pragma once

#include "store/session.h"

#include <QColor>
#include <QIcon>
#include <functional>

class Formularios;
class FormBase;
class LineaDeAyuda;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;
class QWidget;

/// What a page is built with. The form brings what is around it: title, margins, scrolling, and the
/// size of the page, which is as tall as it needs unless something in it wants to grow.
struct ContextoDePagina {
    Sesion &s;
    Formularios &formularios;
    FormBase *form; // the settings form, parent of boxes
    LineaDeAyuda *ayuda;
    /// The form's guard: false when the task failed, the user has been told.
    std::function<bool(const std::function<void()> &)> guarded;
    /// The form's apostrophe filter.
    std::function<void(const QList<QLineEdit *> &)> sinApostrofes;
    /// The form's ENTER chain, for boxes that follow each other.
    std::function<void(const QList<QWidget *> &)> cadenaDeEnter = [](const QList<QWidget *> &) {};
};

/// What pages are laid out with, so that all stand on one grid.
namespace Parte
{
/// The column of a page: sections follow each other from the top.
QVBoxLayout *Columna(QWidget *pagina);
/// A heading, a soft sentence below it where it needs one, and rows to be filled with Fila or as
/// the layout allows. The column keeps it.
QFormLayout *Seccion(QVBoxLayout *columna, const QString &titulo, const QString &nota = {});
/// One row: a caption, which may have a letter behind & that leads to the control, and the control,
/// which takes its accessible name from the caption. Captions are equally wide on all pages.
void Fila(QFormLayout *seccion, const QString &titulo, QWidget *control);
/// Soft text over as many lines as it needs.
QLabel *Nota(const QString &texto);
/// A button as wide as its caption needs.
QPushButton *Boton(const QString &titulo, const QString &nombre);
/// A patch of a colour; the chosen one has a mark.
QIcon Muestra(const QColor &color);
/// Settings hold colours with red in the lowest byte.
QColor ColorDeAjuste(int valor);
int AjusteDeColor(const QColor &color);

inline constexpr int AnchoDeTexto = 360; // of boxes, in device-independent pixels
inline constexpr int AnchoDePalabra = 200;
inline constexpr int AnchoDeCifra = 96;
} // namespace Parte

QWidget *PaginaDeClinica(const ContextoDePagina &c);
QWidget *PaginaDeUsuarios(const ContextoDePagina &c);
QWidget *PaginaDeCorreo(const ContextoDePagina &c);
QWidget *PaginaDeAspecto(const ContextoDePagina &c);
QWidget *PaginaDeHospedaje(const ContextoDePagina &c);
QWidget *PaginaDeFinanzas(const ContextoDePagina &c);
QWidget *PaginaDeRed(const ContextoDePagina &c);

QWidget *PaginaDeAutomatizacion(const ContextoDePagina &c);
QWidget *PaginaDeMedidas(const ContextoDePagina &c);
QWidget *PaginaDePerfiles(const ContextoDePagina &c);
QWidget *PaginaDeAlimento(const ContextoDePagina &c);
QWidget *PaginaDeMensajes(const ContextoDePagina &c);
QWidget *PaginaDeListas(const ContextoDePagina &c);
