#include "admin/pages.h"

#include <QWidget>

QWidget *PaginaDeAspecto(const ContextoDePagina &) { return new QWidget; }
