#include "admin/pages.h"

#include <QWidget>

QWidget *PaginaDeUsuarios(const ContextoDePagina &) { return new QWidget; }
