#include "admin/pages.h"

#include <QWidget>

QWidget *PaginaDeMensajes(const ContextoDePagina &) { return new QWidget; }
