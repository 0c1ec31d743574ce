// Report runs: a definition from the folder reportes over a scratch table.
#pragma once

#include "printing/html_document.h"
#include "store/session.h"

/// What stands in the head of a definition.
struct CabezaDeInforme {
    QString titulo;
    QString consulta; // over the scratch database
    QString grupo;    // column that parts the rows; "" for none
    QStringList sumas;
    bool apaisado = false;
};

/// Parts a definition in its head and its body. @throws ErrorDeAlmacen 3075 with the line that
/// cannot be read
CabezaDeInforme LeerCabeza(const QString &definicion, QString *cuerpo);

/// The definition `nombre` + language code: the clinic's own in the folder reportes of its data, or
/// the one that the program brings. @throws ErrorDeAlmacen 3024 when there is neither
QString LeerDefinicion(Sesion &s, const QString &nombre);

/// Fills a definition with the rows of the scratch database as it stands. The scratch database
/// must be closed before; it is opened and closed here.
/// @throws ErrorDeAlmacen
std::unique_ptr<DocumentoHtml> CorrerInforme(Sesion &s, const QString &nombre);
