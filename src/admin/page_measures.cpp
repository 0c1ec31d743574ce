#include "admin/pages.h"

#include <QWidget>

QWidget *PaginaDeMedidas(const ContextoDePagina &) { return new QWidget; }
