#include "store/lookups.h"

#include "store/jet/text.h"
#include "texts/texts.h"

#include <QSysInfo>

using namespace store;

namespace
{

// How to find a row of a table: in a session list, or else by a query.
struct Access {
    std::string_view selector;
    std::string_view table;
    Recordset Lists::*list;
    std::string_view key; // criterion for the list, or the query
};

constexpr Access Accesses[] = {
    {"clientes", "clientes", &Lists::clientes, "idc = ?"},
    {"clientes", "mascotas", &Lists::mascotas, "idm = ?"},
    {"clientes", "cllocalidad", &Lists::cllocalidad, "id = ?"},
    {"clientes", "cldepartamento", &Lists::cldepartamento, "id = ?"},
    {"clientes", "mlrazas", &Lists::mlrazas, "id = ?"},
    {"clientes", "mlespecies", &Lists::mlespecies, "id = ?"},
    {"clientes", "clmarketing", nullptr, "select top 1 * from clmarketing where id = ?"},
    {"clientes", "mlpelajes", nullptr, "select top 1 * from mlpelajes where id = ?"},
    {"clientes", "consumo", nullptr, "select top 1 * from consumo where idm = ?"},
    {"finanzas", "proveedores", &Lists::proveedores, "idp = ?"},
    {"finanzas", "flcategorias", &Lists::flcategorias, "idcat = ?"},
    {"finanzas", "articulos", nullptr, "select top 1 * from articulos where ida = ?"},
    {"finanzas", "ctactec", nullptr, "select top 1 * from ctactec where idventa = ?"},
    {"finanzas", "ventas", nullptr, "select top 1 * from ventas where idventa = ?"},
    {"finanzas", "compras", nullptr, "select top 1 * from compras where idcompra = ?"},
    {"morvane", "usuarios", nullptr, "select top 1 nom from usuarios where idu = ?"},
    {"os", "planes", nullptr, "select top 1 * from planes where id = ?"},
    {"os", "promotores", nullptr, "select top 1 * from promotores where id = ?"},
    {"os", "cobradores", nullptr, "select top 1 * from cobradores where id = ?"},
};

bool equalOf(std::string_view lowerCase, std::string_view t)
{
    return lowerCase.size() == t.size()
           && std::equal(t.begin(), t.end(), lowerCase.begin(), [](char a, char b) {
                  return (a >= 'A' && a <= 'Z' ? char(a + 32) : a) == b;
              });
}

Base *databaseOf(Sesion &s, std::string_view selector)
{
    if (equalOf("clientes", selector))
        return s.clientes.get();
    if (equalOf("finanzas", selector))
        return s.finanzas.get();
    if (equalOf("morvane", selector))
        return s.morvane.get();
    return s.os.get();
}

std::string joined(std::initializer_list<std::string_view> parts)
{
    std::string s;
    for (std::string_view p : parts)
        s += p;
    return s;
}

QString pageInLanguage(const Sesion &s, const QString &page)
{
    QString folder;
    if (s.texts.language() != Language::Spanish)
        folder = languageCode(s.texts.language()) + u'/';
    return QStringLiteral("https://kelvara.example/") + folder + page;
}

} // namespace

QString LeerCampo(Sesion &s, std::string_view selector, std::string_view table, int id,
                  std::string_view field)
{
    for (const Access &a : Accesses) {
        if (!equalOf(a.table, table) || !equalOf(a.selector, selector))
            continue;
        if (a.list) {
            const auto value = (s.lists.*a.list).lookUp(a.key, id, field);
            return value ? value->toText() : QString();
        }
        Base *base = databaseOf(s, selector);
        if (!base)
            return {};
        const Recordset r = base->OpenSnapshot(a.key, id);
        return r.EOF_() ? QString() : r[field].toText();
    }
    throw StoreError(ErrorNumber::TableNotFound,
                     QStringLiteral("No look-up for %1 of %2")
                         .arg(QString::fromUtf8(table.data(), qsizetype(table.size())),
                              QString::fromUtf8(selector.data(), qsizetype(selector.size()))));
}

int BuscarIdPorTexto(Sesion &s, std::string_view selector, std::string_view table,
                     std::string_view campoBuscado, const QString &text,
                     std::string_view campoResultado)
{
    Base *base = databaseOf(s, selector);
    if (!base)
        return 0;
    const Recordset r = base->OpenSnapshot(
        joined({"select top 1 * from ", table, " where ", campoBuscado, " like ?"}), text);
    return r.EOF_() ? 0 : r[campoResultado].toInt();
}

bool ExisteNombre(Sesion &s, std::string_view selector, std::string_view table, const QString &text)
{
    Base *base = databaseOf(s, selector);
    return base
           && !base->OpenSnapshot(joined({"select top 1 nom from ", table, " where nom like ?"}),
                                  text)
                   .EOF_();
}

bool BuscarEnLista(Recordset &list, const Value &value, std::string_view field, bool prefix)
{
    if (list.RecordCount() == 0)
        return false;
    if (const auto *text = value.is<QString>())
        list.FindFirst(joined({field, " like ?"}), prefix ? *text + u'*' : *text);
    else if (value.is<qint64>() || value.is<double>() || value.is<Moneda>())
        list.FindFirst(joined({field, " = ?"}), value);
    else
        return false;
    return !list.NoMatch();
}

QString QuitarApostrofes(QString text) { return text.replace(u'\'', u' '); }

void FiltrarApostrofe(Sesion &s, int &key)
{
    if (key != u'\'')
        return;
    key = 0;
    s.dialogos.Mensaje(s(text::ApostropheRefused));
}

void store::logError(Sesion &s, int number, const QString &description, const QString &source)
{
    if (!s.motor) // the store is closed, and the log with it
        return;
    try {
        attempt(s, [&] {
            s.morvane->Execute("insert into errores (num, des, fec, fuente) values (?, ?, ?, ?)",
                               number, s.morvane->trimmed("errores", "des", description),
                               s.reloj.hoy, s.morvane->trimmed("errores", "fuente", source));
        });
    } catch (const StoreError &) {
        // The log may be on the disk that failed.
    }
}

void RegistrarError(Sesion &s, int number, const QString &description, const QString &source)
{
    logError(s, number, description, source);
    s.dialogos.Mensaje(s(text::ErrorWasLogged) + u' '
                       + pageInLanguage(s, QStringLiteral("soporte.php")) + QStringLiteral("\n\n")
                       + QString::number(number) + QStringLiteral(": ") + description);
}

QString SistemaOperativo()
{
    // The list of named versions ends in 2003; every later one is "".
    return {};
}

QString store::helpPage(const Sesion &s)
{
    return pageInLanguage(s, QStringLiteral("aprender.php"));
}

QString store::videosPage(const Sesion &s)
{
    return pageInLanguage(s, QStringLiteral("aprender.php?video=9"));
}
