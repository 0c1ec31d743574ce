#include "admin/pages.h"

#include <QWidget>

QWidget *PaginaDePerfiles(const ContextoDePagina &) { return new QWidget; }
