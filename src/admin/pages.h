// The pages of the settings. Each builds one and wires it; whatever changes is written at once.
#pragma once

#include "store/session.h"

#include <functional>

class Formularios;
class FormBase;
class LineaDeAyuda;
class QLineEdit;
class QWidget;

/// What a page is built with.
struct ContextoDePagina {
    Sesion &s;
    Formularios &formularios;
    FormBase *form; // the settings form, parent of boxes
    LineaDeAyuda *ayuda;
    /// The form's guard: false when the task failed, the user has been told.
    std::function<bool(const std::function<void()> &)> guarded;
    /// The form's apostrophe filter.
    std::function<void(const QList<QLineEdit *> &)> sinApostrofes;
};

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
