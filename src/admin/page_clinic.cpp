#include "admin/pages.h"

#include <QWidget>

QWidget *PaginaDeClinica(const ContextoDePagina &) { return new QWidget; }
