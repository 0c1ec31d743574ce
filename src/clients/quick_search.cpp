#include "clients/quick_search.h"

#include "store/jet/text.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

namespace
{

// How well a word is met.
enum Grado : quint8 { Comienza, Contiene, Nada };

bool EsDigito(char c) { return c >= '0' && c <= '9'; }
bool EsLetra(char c) { return c < 0 || EsDigito(c) || (c >= 'a' && c <= 'z'); }

// The digits alone; numbers that commas part stay parted, by a blank each.
std::string Digitos(std::string_view texto)
{
    std::string digitos;
    for (const char c : texto) {
        if (EsDigito(c))
            digitos += c;
        else if ((c == ',' || c == ';' || c == '/') && !digitos.empty() && digitos.back() != ' ')
            digitos += ' ';
    }
    return digitos;
}

// One word of what is looked for.
struct Palabra {
    std::string letras;
    std::string digitos; // empty for what is no number
    int id = 0;          // 0 for what is no id
};

std::vector<Palabra> PalabrasDe(const QString &texto)
{
    std::vector<Palabra> palabras;
    const QStringList partes = texto.split(u' ', Qt::SkipEmptyParts);
    for (const QString &parte : partes) {
        Palabra p;
        p.letras = jet::Llano(parte.toStdString());
        // As telephones are written: 099-123, (02) 4812.
        if (p.letras.find_first_not_of("0123456789-.()+/") == std::string::npos)
            for (const char c : p.letras)
                if (EsDigito(c))
                    p.digitos += c;
        if (p.digitos.size() == p.letras.size() && p.digitos.size() < 5)
            p.id = parte.toInt();
        if (!p.letras.empty())
            palabras.push_back(std::move(p));
    }
    return palabras;
}

// At the beginning of a word of the text, inside of one, or nowhere.
Grado GradoEn(std::string_view texto, std::string_view buscado)
{
    Grado grado = Nada;
    for (size_t i = texto.find(buscado); i != texto.npos; i = texto.find(buscado, i + 1)) {
        if (i == 0 || !EsLetra(texto[i - 1]))
            return Comienza;
        grado = Contiene;
    }
    return grado;
}

Grado GradoDeDigitos(std::string_view texto, const Palabra &p)
{
    return p.digitos.empty() ? Nada : GradoEn(texto, p.digitos);
}

// What is shown of an owner; without id when it is gone.
HalladoRapido Dueno(Sesion &s, int idc)
{
    HalladoRapido h;
    const Recordset c =
        s.clientes->OpenSnapshot("select ayn, tel2, telc2 from clientes where idc = ?", idc);
    if (c.EOF_())
        return h;
    h.idc = idc;
    h.propietario = c[0].toText();
    h.telefonos = c[1].toText();
    if (const QString celular = c[2].toText(); !celular.isEmpty())
        h.telefonos += (h.telefonos.isEmpty() ? QString() : QStringLiteral(" / ")) + celular;
    return h;
}

} // namespace

struct IndiceRapido::Acierto {
    int grado = 0; // words that only stand inside of others
    const Cliente *cliente = nullptr;
    const Mascota *mascota = nullptr; // nullptr for an owner without animals

    bool Dec() const { return mascota && mascota->dec; }
};

IndiceRapido::Trozo IndiceRapido::Guardar(const std::string &texto)
{
    const auto largo = std::min<size_t>(texto.size(), std::numeric_limits<quint16>::max());
    const Trozo t{quint32(m_texto.size()), quint16(largo)};
    m_texto.append(texto, 0, largo);
    return t;
}

void IndiceRapido::PonerAlDia(Sesion &s)
{
    const qint64 version = s.clientes->Version("clientes") + s.clientes->Version("mascotas");
    if (version == m_version)
        return;
    m_version = -1;
    m_texto.clear();
    m_clientes.clear();
    m_mascotas.clear();

    const auto texto = [](const Recordset &r, int columna) {
        return r[columna].toText().toStdString();
    };
    std::unordered_map<int, quint32> lugares;
    Recordset r = s.clientes->OpenSnapshot("select idc, ayn, tel2, telc2 from clientes");
    m_clientes.reserve(size_t(r.RecordCount()));
    for (; !r.EOF_(); r.MoveNext()) {
        Cliente &c = m_clientes.emplace_back();
        c.idc = r[0].toInt();
        c.nombre = Guardar(jet::Llano(texto(r, 1)));
        c.telefonos = Guardar(Digitos(texto(r, 2) + ',' + texto(r, 3)));
        lugares.emplace(c.idc, quint32(m_clientes.size() - 1));
    }

    std::vector<std::pair<quint32, Mascota>> mascotas; // with the place of the owner
    r = s.clientes->OpenSnapshot("select idm, idc, nom, chip, dec from mascotas");
    mascotas.reserve(size_t(r.RecordCount()));
    for (; !r.EOF_(); r.MoveNext()) {
        const auto lugar = lugares.find(r[1].toInt());
        if (lugar == lugares.end())
            continue; // without an owner there is nothing to go to
        Mascota m;
        m.idm = r[0].toInt();
        m.nombre = Guardar(jet::Llano(texto(r, 2)));
        m.chip = Guardar(jet::Llano(texto(r, 3)));
        m.dec = r[4].toBool();
        mascotas.emplace_back(lugar->second, m);
    }
    std::ranges::stable_sort(mascotas, {}, &std::pair<quint32, Mascota>::first);
    m_mascotas.reserve(mascotas.size());
    for (const auto &[lugar, mascota] : mascotas) {
        Cliente &c = m_clientes[lugar];
        if (c.fin == 0)
            c.primera = quint32(m_mascotas.size());
        m_mascotas.push_back(mascota);
        c.fin = quint32(m_mascotas.size());
    }
    m_texto.shrink_to_fit();
    m_version = version;
}

std::vector<IndiceRapido::Acierto> IndiceRapido::Aciertos(const QString &texto) const
{
    const std::vector<Palabra> palabras = PalabrasDe(texto);
    std::vector<Acierto> aciertos;
    if (palabras.empty())
        return aciertos;
    std::vector<Grado> delDueno(palabras.size());
    const auto probar = [&](const Cliente &c, const Mascota *m) {
        int grado = 0;
        for (size_t i = 0; i < palabras.size(); ++i) {
            const Palabra &p = palabras[i];
            Grado g = delDueno[i];
            if (m && g != Comienza) {
                if (p.id == m->idm && p.id > 0)
                    g = Comienza;
                else
                    g = std::min({g, GradoEn(Texto(m->nombre), p.letras),
                                  GradoEn(Texto(m->chip), p.letras),
                                  GradoDeDigitos(Texto(m->chip), p)});
            }
            if (g == Nada)
                return;
            grado += g;
        }
        aciertos.push_back({grado, &c, m});
    };
    for (const Cliente &c : m_clientes) {
        for (size_t i = 0; i < palabras.size(); ++i) {
            const Palabra &p = palabras[i];
            delDueno[i] = p.id == c.idc && p.id > 0
                              ? Comienza
                              : std::min(GradoEn(Texto(c.nombre), p.letras),
                                         GradoDeDigitos(Texto(c.telefonos), p));
        }
        for (quint32 m = c.primera; m < c.fin; ++m)
            probar(c, &m_mascotas[m]);
        if (c.primera == c.fin)
            probar(c, nullptr);
    }
    return aciertos;
}

RespuestaRapida IndiceRapido::Buscar(Sesion &s, const QString &texto, int cuantos) const
{
    std::vector<Acierto> aciertos = Aciertos(texto);
    RespuestaRapida respuesta;
    respuesta.total = int(aciertos.size());
    const auto antes = [this](const Acierto &a, const Acierto &b) {
        if (a.grado != b.grado)
            return a.grado < b.grado;
        if (a.Dec() != b.Dec())
            return b.Dec();
        if (a.cliente != b.cliente) {
            const int nombres = Texto(a.cliente->nombre).compare(Texto(b.cliente->nombre));
            return nombres != 0 ? nombres < 0 : a.cliente->idc < b.cliente->idc;
        }
        // Both have an animal: an owner without one stands there once.
        const int nombres = Texto(a.mascota->nombre).compare(Texto(b.mascota->nombre));
        return nombres != 0 ? nombres < 0 : a.mascota->idm < b.mascota->idm;
    };
    const auto fin = aciertos.begin() + std::min<ptrdiff_t>(cuantos, respuesta.total);
    std::partial_sort(aciertos.begin(), fin, aciertos.end(), antes);

    // Owners in the order of their best animal, with all their animals below.
    std::unordered_map<const Cliente *, int> orden;
    for (auto a = aciertos.begin(); a != fin; ++a)
        orden.emplace(a->cliente, int(orden.size()));
    std::stable_sort(aciertos.begin(), fin, [&orden](const Acierto &a, const Acierto &b) {
        return orden.at(a.cliente) < orden.at(b.cliente);
    });

    const Cliente *leido = nullptr;
    HalladoRapido dueno;
    for (auto a = aciertos.begin(); a != fin; ++a) {
        if (a->cliente != leido)
            dueno = Dueno(s, a->cliente->idc);
        leido = a->cliente;
        if (dueno.idc == 0)
            continue; // deleted since the index was made
        HalladoRapido &h = respuesta.filas.emplace_back(dueno);
        if (a->mascota) {
            h.idm = a->mascota->idm;
            h.mascota = s.clientes->Leer("select nom from mascotas where idm = ?", h.idm).toText();
            h.dec = a->mascota->dec;
        }
    }
    return respuesta;
}

size_t IndiceRapido::Bytes() const
{
    return m_texto.capacity() + m_clientes.capacity() * sizeof(Cliente)
           + m_mascotas.capacity() * sizeof(Mascota);
}
