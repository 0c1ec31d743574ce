#include "store/lookups.h"

#include "store/jet/text.h"

#include <QSysInfo>

namespace
{

// How a row of a table is reached: on a session list, or by a query of its own.
struct Acceso {
    std::string_view selector;
    std::string_view tabla;
    Recordset Listas::*lista;
    std::string_view clave; // criterion, or the end of the query
};

constexpr Acceso Accesos[] = {
    {"clientes", "clientes", &Listas::clientes, "idc = ?"},
    {"clientes", "mascotas", &Listas::mascotas, "idm = ?"},
    {"clientes", "cllocalidad", &Listas::cllocalidad, "id = ?"},
    {"clientes", "cldepartamento", &Listas::cldepartamento, "id = ?"},
    {"clientes", "mlrazas", &Listas::mlrazas, "id = ?"},
    {"clientes", "mlespecies", &Listas::mlespecies, "id = ?"},
    {"clientes", "clmarketing", nullptr, "select top 1 * from clmarketing where id = ?"},
    {"clientes", "mlpelajes", nullptr, "select top 1 * from mlpelajes where id = ?"},
    {"clientes", "consumo", nullptr, "select top 1 * from consumo where idm = ?"},
    {"finanzas", "proveedores", &Listas::proveedores, "idp = ?"},
    {"finanzas", "flcategorias", &Listas::flcategorias, "idcat = ?"},
    {"finanzas", "articulos", nullptr, "select top 1 * from articulos where ida = ?"},
    {"finanzas", "ctactec", nullptr, "select top 1 * from ctactec where idventa = ?"},
    {"finanzas", "ventas", nullptr, "select top 1 * from ventas where idventa = ?"},
    {"finanzas", "compras", nullptr, "select top 1 * from compras where idcompra = ?"},
    {"morvane", "usuarios", nullptr, "select top 1 nom from usuarios where idu = ?"},
    {"os", "planes", nullptr, "select top 1 * from planes where id = ?"},
    {"os", "promotores", nullptr, "select top 1 * from promotores where id = ?"},
    {"os", "cobradores", nullptr, "select top 1 * from cobradores where id = ?"},
};

bool Igual(std::string_view minusculas, std::string_view t)
{
    return minusculas.size() == t.size()
           && std::equal(t.begin(), t.end(), minusculas.begin(), [](char a, char b) {
                  return (a >= 'A' && a <= 'Z' ? char(a + 32) : a) == b;
              });
}

Base *BaseDe(Sesion &s, std::string_view selector)
{
    if (Igual("clientes", selector))
        return s.clientes.get();
    if (Igual("finanzas", selector))
        return s.finanzas.get();
    if (Igual("morvane", selector))
        return s.morvane.get();
    return s.auxiliar.get();
}

std::string Unir(std::initializer_list<std::string_view> partes)
{
    std::string s;
    for (std::string_view p : partes)
        s += p;
    return s;
}

QString PaginaEnIdioma(const Sesion &s, const QString &pagina)
{
    QString carpeta;
    if (s.textos.idioma() != Idioma::Espanol)
        carpeta = CodigoDeIdioma(s.textos.idioma()) + u'/';
    return QStringLiteral("https://kelvara.example/") + carpeta + pagina;
}

} // namespace

QString LeerCampo(Sesion &s, std::string_view selector, std::string_view tabla, int id,
                  std::string_view campo)
{
    for (const Acceso &a : Accesos) {
        if (!Igual(a.tabla, tabla) || !Igual(a.selector, selector))
            continue;
        if (a.lista) {
            Recordset &lista = s.listas.*a.lista;
            lista.FindFirst(a.clave, id);
            return lista.NoMatch() ? QString() : lista[campo].toText();
        }
        Base *base = BaseDe(s, selector);
        if (!base)
            return {};
        const Recordset r = base->OpenSnapshot(a.clave, id);
        return r.EOF_() ? QString() : r[campo].toText();
    }
    return {};
}

int BuscarIdPorTexto(Sesion &s, std::string_view selector, std::string_view tabla,
                     std::string_view campoBuscado, const QString &texto,
                     std::string_view campoResultado)
{
    Base *base = BaseDe(s, selector);
    if (!base)
        return 0;
    const Recordset r = base->OpenSnapshot(
        Unir({"select top 1 * from ", tabla, " where ", campoBuscado, " like ?"}), texto);
    return r.EOF_() ? 0 : r[campoResultado].toInt();
}

bool ExisteNombre(Sesion &s, std::string_view selector, std::string_view tabla,
                  const QString &texto)
{
    Base *base = BaseDe(s, selector);
    return base
           && !base->OpenSnapshot(Unir({"select top 1 nom from ", tabla, " where nom like ?"}),
                                  texto)
                   .EOF_();
}

bool BuscarEnLista(Recordset &lista, const Valor &valor, std::string_view campo, bool prefijo)
{
    if (lista.RecordCount() == 0)
        return false;
    if (const auto *texto = valor.Es<QString>())
        lista.FindFirst(Unir({campo, " like ?"}), prefijo ? *texto + u'*' : *texto);
    else if (valor.Es<qint64>() || valor.Es<double>() || valor.Es<Moneda>())
        lista.FindFirst(Unir({campo, " = ?"}), valor);
    else
        return false;
    return !lista.NoMatch();
}

QString QuitarApostrofes(QString texto) { return texto.replace(u'\'', u' '); }

void FiltrarApostrofe(Sesion &s, int &tecla)
{
    if (tecla != u'\'')
        return;
    tecla = 0;
    s.dialogos.Mensaje(s(4624));
}

void AnotarError(Sesion &s, int numero, const QString &descripcion, const QString &fuente)
{
    try {
        s.morvane->Execute("insert into errores (num, des, fec, fuente) values (?, ?, ?, ?)",
                           numero, s.morvane->Recortado("errores", "des", descripcion), s.reloj.hoy,
                           s.morvane->Recortado("errores", "fuente", fuente));
    } catch (const ErrorDeAlmacen &) {
        // The log lies on the same disk as what failed; the user is told all the same.
    }
}

void RegistrarError(Sesion &s, int numero, const QString &descripcion, const QString &fuente)
{
    AnotarError(s, numero, descripcion, fuente);
    s.dialogos.Mensaje(s(4604) + u' ' + PaginaEnIdioma(s, QStringLiteral("soporte.php"))
                       + QStringLiteral("\n\n") + QString::number(numero) + QStringLiteral(": ")
                       + descripcion);
}

QString SistemaOperativo()
{
    // The names end with systems of 2003; every later one is "".
    return {};
}

QString PaginaDeAyuda(const Sesion &s) { return PaginaEnIdioma(s, QStringLiteral("aprender.php")); }

QString PaginaDeVideos(const Sesion &s)
{
    return PaginaEnIdioma(s, QStringLiteral("aprender.php?video=9"));
}
