// The small helpers that every screen and rule calls.
#pragma once

#include "store/session.h"

/// Text of one field of one row, "" when the row is not found. Which tables can be reached, and by
/// which key, is fixed per database name ("clientes", "finanzas", "morvane", "os"); for "os" the
/// caller has it open as the scratch database.
QString LeerCampo(Sesion &s, std::string_view selector, std::string_view tabla, int id,
                  std::string_view campo);

/// First row whose field is like the text (`*` works as a wildcard). @return the result field as a
/// whole number, 0 when there is no row
int BuscarIdPorTexto(Sesion &s, std::string_view selector, std::string_view tabla,
                     std::string_view campoBuscado, const QString &texto,
                     std::string_view campoResultado);

/// Whether a row of a name list ("finanzas" or "morvane") has that name.
bool ExisteNombre(Sesion &s, std::string_view selector, std::string_view tabla,
                  const QString &texto);

/// Positions a session list on the first row whose field is the value: a text by LIKE (with
/// @p prefijo also as a beginning), a number by =. Anything else finds nothing.
bool BuscarEnLista(Recordset &lista, const Valor &valor, std::string_view campo,
                   bool prefijo = false);

/// Every apostrophe becomes one blank.
QString QuitarApostrofes(QString texto);

/// Key filter of text boxes: clears an apostrophe (code 39) and says why it cannot be used.
void FiltrarApostrofe(Sesion &s, int &tecla);

/// Appends to the error log alone. @throws nothing: the log may lie on the disk that failed
void AnotarError(Sesion &s, int numero, const QString &descripcion, const QString &fuente);

/// Appends to the error log and tells the user where to ask for help.
void RegistrarError(Sesion &s, int numero, const QString &descripcion, const QString &fuente);

/// Name of the system's version where program folders are not redirected, else "". This platform
/// redirects nothing but has no name in that list.
QString SistemaOperativo();

/// The page of help on the web, for the session's language.
QString PaginaDeAyuda(const Sesion &s);
/// The page with the videos.
QString PaginaDeVideos(const Sesion &s);
