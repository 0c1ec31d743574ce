#include "admin/pages.h"

#include <QWidget>

QWidget *PaginaDeAlimento(const ContextoDePagina &) { return new QWidget; }
