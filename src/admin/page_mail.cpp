#include "admin/pages.h"

#include <QWidget>

QWidget *PaginaDeCorreo(const ContextoDePagina &) { return new QWidget; }
