// The small helpers that every screen and rule calls.
#pragma once

#include "store/session.h"

namespace store
{

/// Appends to the error log alone. @throws nothing: the log may lie on the disk that failed
void logError(Sesion &s, int number, const QString &description, const QString &source);

/// The page of help on the web, for the session's language.
QString helpPage(const Sesion &s);
/// The page with the videos.
QString videosPage(const Sesion &s);

} // namespace store

/// Text of one field of one row, "" when the row is not found. Which tables can be reached, and by
/// which key, is fixed per database name ("clientes", "finanzas", "morvane", "os"); no
/// position of a list is moved.
/// @throws StoreError 3078 for a table that cannot be reached so
QString LeerCampo(Sesion &s, std::string_view selector, std::string_view table, int id,
                  std::string_view field);

/// First row whose field is like the text (`*` works as a wildcard). @return the result field as a
/// whole number, 0 when there is no row
int BuscarIdPorTexto(Sesion &s, std::string_view selector, std::string_view table,
                     std::string_view campoBuscado, const QString &text,
                     std::string_view campoResultado);

/// Whether a row of a name list ("finanzas" or "morvane") has that name.
bool ExisteNombre(Sesion &s, std::string_view selector, std::string_view table,
                  const QString &text);

/// Positions a session list on the first row whose field is the value: a text by LIKE (with
/// @p prefix also as a beginning), a number by =. Anything else finds nothing.
bool BuscarEnLista(Recordset &list, const store::Value &value, std::string_view field,
                   bool prefix = false);

/// Every apostrophe becomes one blank.
QString QuitarApostrofes(QString text);

/// Key filter of text boxes: clears an apostrophe (code 39) and says why it cannot be used.
void FiltrarApostrofe(Sesion &s, int &key);

/// Appends to the error log and tells the user where to ask for help.
void RegistrarError(Sesion &s, int number, const QString &description, const QString &source);

/// Name of the system's version where program folders are not redirected, else "". This platform
/// redirects nothing but has no name in that list.
QString SistemaOperativo();
