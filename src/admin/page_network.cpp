#include "admin/pages.h"

#include <QWidget>

QWidget *PaginaDeRed(const ContextoDePagina &) { return new QWidget; }
