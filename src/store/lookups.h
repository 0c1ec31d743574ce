// Small helpers used by every screen and rule.
#pragma once

#include "store/session.h"

namespace store
{

/// Appends to the error log without telling the user. Store errors are ignored: the log may be on
/// the very disk that failed.
/// @param number      error number, see ErrorNumber
/// @param description cut to the width of its column, like the source
/// @param source      where the error occurred
void logError(Sesion &s, int number, const QString &description, const QString &source);

/// URL of the help page in the session's language.
QString helpPage(const Sesion &s);
/// URL of the page with the videos in the session's language.
QString videosPage(const Sesion &s);

} // namespace store

/// The text of one field of one row, "" when there is no such row. The position of the session's
/// lists does not move.
/// @param selector database: "clientes", "finanzas", "morvane" or "os"
/// @param table    one of a fixed set of tables per database, each with its own key column
/// @param id       value of the key
/// @throws StoreError 3078 for a table outside that set, 3265 for an unknown field
QString LeerCampo(Sesion &s, std::string_view selector, std::string_view table, int id,
                  std::string_view field);

/// Finds the first row whose field matches a LIKE pattern (`*` is a wildcard).
/// @param selector database, as for LeerCampo(); anything else means "os"
/// @param campoBuscado   field compared with @p text
/// @param campoResultado field returned
/// @return the result field as an integer, 0 when no row matches
/// @throws StoreError for an unknown table or field
int BuscarIdPorTexto(Sesion &s, std::string_view selector, std::string_view table,
                     std::string_view campoBuscado, const QString &text,
                     std::string_view campoResultado);

/// Whether a row of a name list has that name. The text is a LIKE pattern, so letter case does not
/// matter. @param selector database, as for BuscarIdPorTexto()
/// @throws StoreError for an unknown table
bool ExisteNombre(Sesion &s, std::string_view selector, std::string_view table,
                  const QString &text);

/// Moves a session list to the first row whose field has the value: text is compared by LIKE, with
/// @p prefix as the beginning of the field, numbers by =. Any other value finds nothing.
/// @return whether a row was found; if not, the position does not move
/// @throws StoreError for an unknown field
bool BuscarEnLista(Recordset &list, const store::Value &value, std::string_view field,
                   bool prefix = false);

/// The text with every apostrophe replaced by a blank.
QString QuitarApostrofes(QString text);

/// Key filter for text boxes: swallows an apostrophe by setting its key code (39) to 0, and tells
/// the user why.
void FiltrarApostrofe(Sesion &s, int &key);

/// Appends to the error log as logError() does, and tells the user where to get help.
void RegistrarError(Sesion &s, int number, const QString &description, const QString &source);

/// Name of the operating system's version if it is one that does not redirect program folders.
/// On purpose: always "" here. This platform redirects nothing, but is not among those versions.
QString SistemaOperativo();
