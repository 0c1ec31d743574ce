#include "admin/pages.h"

#include <QWidget>

QWidget *PaginaDeAutomatizacion(const ContextoDePagina &) { return new QWidget; }
