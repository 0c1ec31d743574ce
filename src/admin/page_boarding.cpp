#include "admin/pages.h"

#include <QWidget>

QWidget *PaginaDeHospedaje(const ContextoDePagina &) { return new QWidget; }
