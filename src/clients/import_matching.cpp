#include "clients/import_matching.h"

#include <QRegularExpression>

namespace
{

constexpr int Clases = 3; // telephone, mail, street

QString Plegado(const QString &t) { return t.simplified().toCaseFolded(); }

QString Telefono(const QString &t)
{
    QString cifras;
    for (const QChar c : t)
        if (c.isDigit())
            cifras += c;
    return cifras.size() >= 5 ? cifras : Plegado(t);
}

QString Clave(const SenasDeCliente &c, const QString &resto) { return c.nombre + u'\n' + resto; }

QString ClaveDeClases(const SenasDeCliente &c, int clases)
{
    return Clave(c, QString(QChar(u'0' + clases)));
}

void Sacar(QHash<QString, std::set<int>> &mapa, const QString &clave, int quien)
{
    const auto i = mapa.find(clave);
    if (i == mapa.end())
        return;
    i->erase(quien);
    if (i->empty())
        mapa.erase(i);
}

} // namespace

SenasDeCliente SenasDe(const FichaDeCliente &ficha)
{
    static const QRegularExpression partes(QStringLiteral("[,;/]"));
    SenasDeCliente c;
    c.nombre = Plegado(ficha.ayn);
    const auto agregar = [&c](int clase, QChar letra, const QString &valor) {
        if (valor.isEmpty())
            return;
        c.senas << letra + valor;
        c.clases |= 1 << clase;
    };
    for (const QString &t : (ficha.tel2 + u',' + ficha.telc2).split(partes))
        agregar(0, u't', Telefono(t));
    for (const QString &t : ficha.email.split(partes))
        agregar(1, u'e', Plegado(t));
    agregar(2, u'd', Plegado(ficha.dir));
    return c;
}

void DirectorioDeClientes::Agregar(int quien, const SenasDeCliente &c)
{
    for (const QString &sena : c.senas)
        m_porSena[Clave(c, sena)].insert(quien);
    m_porClases[ClaveDeClases(c, c.clases)].insert(quien);
}

void DirectorioDeClientes::Quitar(int quien, const SenasDeCliente &c)
{
    for (const QString &sena : c.senas)
        Sacar(m_porSena, Clave(c, sena), quien);
    Sacar(m_porClases, ClaveDeClases(c, c.clases), quien);
}

int DirectorioDeClientes::ConSenaComun(const SenasDeCliente &c) const
{
    int primero = -1;
    for (const QString &sena : c.senas)
        if (const auto i = m_porSena.find(Clave(c, sena)); i != m_porSena.end())
            primero = primero < 0 ? *i->begin() : std::min(primero, *i->begin());
    return primero;
}

int DirectorioDeClientes::Indistinto(const SenasDeCliente &c) const
{
    int primero = -1;
    for (int clases = 0; clases < 1 << Clases; ++clases) {
        if (clases & c.clases)
            continue;
        if (const auto i = m_porClases.find(ClaveDeClases(c, clases)); i != m_porClases.end())
            primero = primero < 0 ? *i->begin() : std::min(primero, *i->begin());
    }
    return primero;
}
