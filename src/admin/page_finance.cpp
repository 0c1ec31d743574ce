#include "admin/pages.h"

#include <QWidget>

QWidget *PaginaDeFinanzas(const ContextoDePagina &) { return new QWidget; }
