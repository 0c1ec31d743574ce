// The demonstration clinic's clients, patients and prepaid members.

#include "startup/demo_data.h"

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr int Clientes = 300;
constexpr int Mascotas = 450;
constexpr int Nuevos = 3;            // clients of yesterday
constexpr int CumplenDestacados = 2; // birthdays of featured clients' patients
constexpr int Cumplen = 4;           // birthdays of today, all of them

/// Letters without accents, for addresses.
QString Llano(const QString &texto)
{
    QString llano;
    for (const QChar c : texto.normalized(QString::NormalizationForm_D).toLower())
        if (c.isLetter() && c.unicode() < 128)
            llano += c;
    return llano;
}

QString Calle(Demo &d)
{
    const QString &calle = d.azar.De(d.palabras[u"calles"_s]);
    const int numero = d.azar.Entre(101, 4990);
    switch (d.s.textos.idioma()) {
    case Idioma::Portugues:
        return u"%1, %2"_s.arg(calle).arg(numero);
    case Idioma::Ingles:
        return u"%1 %2"_s.arg(numero).arg(calle);
    default:
        return u"%1 %2"_s.arg(calle).arg(numero);
    }
}

QString Telefono(Demo &d) { return u"555-01%1"_s.arg(d.azar.Entre(0, 99), 2, 10, QChar(u'0')); }

void InventarListas(Demo &d)
{
    // The usage ranks fall along each list.
    for (const QStringList &r : d.palabras.Campos(u"regiones"_s)) {
        const int id = d.Siguiente(u"contadordep"_s);
        d.clientes.Execute("insert into CLDepartamento (id, nom, ctel, ran) values (?, ?, ?, ?)",
                           id, r[0], r[1], 300 / id);
    }
    for (const QStringList &l : d.palabras.Campos(u"localidades"_s)) {
        const int id = d.Siguiente(u"contadorloc"_s);
        d.clientes.Execute("insert into CLLocalidad (id, nom, cp, dep, ran) values (?, ?, ?, ?, ?)",
                           id, l[0], l[1], l[2].toInt(), 80 / id);
    }
    for (const QStringList &r : d.palabras.Campos(u"razas"_s)) {
        const int id = d.Siguiente(u"contadorraza"_s);
        d.clientes.Execute("insert into MLRazas (id, nom, esp, ran) values (?, ?, ?, ?)", id, r[0],
                           r[1].toInt(), 60 / id);
    }
    for (const QString &m : d.palabras[u"origenes"_s])
        d.clientes.Execute("insert into CLMarketing (id, nom) values (?, ?)",
                           d.Siguiente(u"contadormark"_s), m);
    for (const QString &p : d.palabras[u"pelajes"_s])
        d.clientes.Execute("insert into MLPelajes (id, nom) values (?, ?)",
                           d.Siguiente(u"contadorpelaje"_s), p);
    d.contadores[u"contadorespecie"_s] = 3;
    for (const QString &e : d.palabras[u"especies"_s])
        d.clientes.Execute("insert into MLEspecies (id, nom) values (?, ?)",
                           d.Siguiente(u"contadorespecie"_s), e);
    for (const QString &dominio : {u"example.com"_s, u"example.net"_s, u"example.org"_s})
        d.clientes.Execute("insert into Email (nom) values (?)", dominio);
}

ClienteDemo InventarCliente(Demo &d, int idc)
{
    static constexpr std::array Dominios{"com", "net", "org"};
    Azar &azar = d.azar;
    ClienteDemo c;
    c.idc = idc;
    const QString &nombre = azar.De(d.palabras[u"nombres"_s]);
    const QString &apellido = azar.De(d.palabras[u"apellidos"_s]);
    c.ayn = apellido + u' ' + nombre;
    c.dir = Calle(d);
    c.loc = azar.Entre(1, d.contadores[u"contadorloc"_s]);
    if (azar.Sale(55))
        c.tel2 = Telefono(d);
    if (c.tel2.isEmpty() || azar.Sale(70))
        c.telc2 = Telefono(d);
    const bool nuevo = idc > Clientes - Nuevos;
    if (nuevo || azar.Sale(65))
        c.email = u"%1.%2@example.%3"_s.arg(Llano(nombre), Llano(apellido),
                                            QLatin1StringView(azar.De(Dominios)));
    // Clients come one after the other, so their days of entry rise with their numbers.
    c.feci = nuevo ? d.hoy.addDays(-1) : d.hoy.addDays(-5 - (Clientes - idc) * 4);
    c.fecu = c.feci;
    c.perfil[1] = azar.Sale(25);
    c.perfil[2] = azar.Sale(6);
    c.perfil[3] = !nuevo && azar.Sale(18);
    c.perfil[4] = azar.Sale(6);
    return c;
}

MascotaDemo InventarMascota(Demo &d, int idm, int idc)
{
    Azar &azar = d.azar;
    MascotaDemo m;
    m.idm = idm;
    m.idc = idc;
    m.nom = azar.De(d.palabras[u"mascotas"_s]);
    const int dado = azar.Entre(1, 100);
    m.esp = dado <= 60 ? 1 : dado <= 90 ? 2 : dado <= 93 ? 3 : dado <= 97 ? 4 : 5;
    const QList<QStringList> todas = d.palabras.Campos(u"razas"_s);
    QList<int> razas;
    for (int r = 0; r < todas.size(); ++r)
        if (todas[r][1].toInt() == m.esp)
            razas.append(r + 1);
    m.raz = azar.De(razas);
    m.sex = azar.Entre(0, 3);
    m.ser = azar.Sale(22) ? 1 : 0;
    m.dec = azar.Sale(3);
    m.feci = d.Cliente(idc).feci;
    if (azar.Sale(92)) {
        // Born before it first came; today's birthdays are given out apart.
        const int antes = azar.Sale(30) ? azar.Entre(50, 140) : azar.Entre(200, 3000);
        m.fecn = m.feci.addDays(-antes);
        if (m.fecn.month() == d.hoy.month() && m.fecn.day() == d.hoy.day())
            m.fecn = m.fecn.addDays(-1);
    }
    const bool chica = m.fecn.isValid() && m.fecn.daysTo(d.hoy) < 200;
    const int centesimos = chica ? azar.Entre(20, 55) : azar.Entre(80, 120);
    m.pes = std::round(todas[m.raz - 1][2].toDouble() * centesimos) / 100;
    return m;
}

void RepartirCumpleanos(Demo &d)
{
    int dados = 0;
    for (MascotaDemo &m : d.animales) {
        if (m.dec || m.esp > 2 || m.idm % 37 != 0)
            continue;
        ClienteDemo &c = d.Cliente(m.idc);
        if (dados < CumplenDestacados)
            c.perfil[1] = c.perfil[3] = true, c.perfil[2] = false;
        else
            c.perfil[3] = false;
        // Four or eight years: also a 29 February has been one.
        m.fecn = d.hoy.addYears(dados % 2 ? -8 : -4);
        m.feci = std::max(m.feci, m.fecn.addDays(60));
        if (++dados == Cumplen)
            return;
    }
}

struct SocioDemo {
    int obra;
    int mesesSinPagar; // calendar months since the last payment
};

} // namespace

void InventarGente(Demo &d)
{
    InventarListas(d);
    for (int idc = 1; idc <= Clientes; ++idc)
        d.gente.push_back(InventarCliente(d, idc));
    // One patient for each client, the others to whoever has more than one.
    for (int idm = 1; idm <= Mascotas; ++idm)
        d.animales.push_back(
            InventarMascota(d, idm, idm <= Clientes ? idm : d.azar.Entre(1, Clientes - Nuevos)));
    RepartirCumpleanos(d);
    d.contadores[u"contadorclientes"_s] = Clientes;
    d.contadores[u"contadormascotas"_s] = Mascotas;
}

void InventarSocios(Demo &d)
{
    const int factor = d.s.textos.idioma() == Idioma::Espanol     ? 1200
                       : d.s.textos.idioma() == Idioma::Portugues ? 150
                                                                  : 40;
    std::vector<Moneda> cuotas;
    for (const QStringList &plan : d.palabras.Campos(u"planes"_s)) {
        cuotas.push_back(Moneda::DeEntero(factor * plan[1].toInt() / 100));
        d.os.Execute("insert into Planes (nom, monto) values (?, ?)", plan[0], cuotas.back());
    }
    for (const char *lista : {"cobradores", "promotores"})
        for (const QString &nombre : d.palabras[QLatin1StringView(lista)])
            d.os.Execute("insert into " + std::string(lista)
                             + " (nom, dir, tel, mail, obs) values (?, ?, ?, ?, '')",
                         nombre, Calle(d), Telefono(d), Llano(nombre) + "@example.org"_L1);
    for (const QString &zona : d.palabras[u"zonas"_s])
        d.os.Execute("insert into Zonas (nom) values (?)", zona);

    std::vector<SocioDemo> socios(12, SocioDemo{1, 0});
    socios.insert(socios.end(), {{5, 1}, {5, 1}, {5, 1}, {2, 2}, {2, 3}, {3, 5}, {4, 0}});
    const auto documentos = std::to_array<const char16_t *>({u"DNI", u"CI"});
    const QString tarjeta = d.s.configuracion["EntradaPlastico"].toText();
    int solicitud = 1000;
    int idc = 4;
    for (const SocioDemo &socio : socios) {
        ClienteDemo &c = d.Cliente(idc += 13);
        c.obra = socio.obra;
        const int plan = d.azar.Entre(1, int(cuotas.size()));
        // A request that has run out is older than a year; all others are newer.
        const QDate desde = d.hoy.addDays(socio.obra == 4 ? -380 : -d.azar.Entre(190, 350));
        const QDate mes = QDate(d.hoy.year(), d.hoy.month(), 1).addMonths(-socio.mesesSinPagar);
        const bool conCobrador = d.azar.Sale(60);
        d.os.Execute(
            "insert into Socios (idc, plan, grupo, nrosolicitud, fechasolicitud, fechavsol,"
            " fechabsol, ultimopago, fechanac, tipodoc, nrodoc, calle2, localidad2, zona, tel,"
            " formapago, cobrador, promotor, tarjeta, banco, iva)"
            " values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 1, ?, '', 0)",
            c.idc, plan, u"1"_s, double(++solicitud), desde, desde.addDays(365),
            socio.obra == 3 ? Valor(d.hoy.addDays(-40)) : Valor(), mes,
            d.hoy.addDays(-d.azar.Entre(9000, 24000)), documentos[size_t(d.azar.Entre(0, 1))],
            QString::number(d.azar.Entre(1000000, 9999999)), c.dir,
            d.palabras.Campos(u"localidades"_s)[c.loc - 1][0], d.azar.Entre(1, 3), c.tel2,
            conCobrador ? u"co"_s : u"dt"_s, conCobrador ? Valor(d.azar.Entre(1, 2)) : Valor(),
            conCobrador ? QString() : tarjeta);
        for (int atras = 5; atras >= 0; --atras) {
            const QDate pagado = mes.addMonths(-atras);
            if (pagado < desde.addDays(-31))
                continue;
            const QDate dia = std::min(pagado.addDays(d.azar.Entre(0, 9)), d.hoy);
            d.os.Execute("insert into Pagos (idc, fec, pago, idu) values (?, ?, ?, 1)", c.idc, dia,
                         cuotas[size_t(plan - 1)]);
        }
        for (const MascotaDemo &m : d.animales)
            if (m.idc == c.idc && !m.dec)
                d.os.Execute("insert into MascotasAsociadas (idm, idc, nom) values (?, ?, ?)",
                             m.idm, c.idc, m.nom);
    }
}

void EscribirGente(Demo &d)
{
    const QList<QStringList> localidades = d.palabras.Campos(u"localidades"_s);
    const QList<QStringList> regiones = d.palabras.Campos(u"regiones"_s);
    Azar &azar = d.azar;
    for (const ClienteDemo &c : d.gente) {
        const QStringList &localidad = localidades[c.loc - 1];
        const int dep = localidad[2].toInt();
        d.clientes.Execute(
            "insert into Clientes (idc, ayn, dir, loc, dep, codp2, codt2, tel2, telc2, email, mark,"
            " obs, feci, fecu, deuda, obra, Perfil1, Perfil2, Perfil3, Perfil4, Perfil5)"
            " values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
            c.idc, c.ayn, c.dir, c.loc, dep, localidad[1], regiones[dep - 1][1], c.tel2, c.telc2,
            c.email, azar.Entre(1, d.contadores[u"contadormark"_s]),
            azar.Sale(8) ? azar.De(d.palabras[u"notasdecliente"_s]) : QString(), c.feci, c.fecu,
            c.deuda, c.obra, c.perfil[1], c.perfil[2], c.perfil[3], c.perfil[4], c.perfil[5]);
        // The counters agree with the flags: enough events, the larger part on the flag's side.
        const auto parte = [&](bool sobre) { return sobre ? azar.Entre(7, 15) : azar.Entre(0, 2); };
        d.morvane.Execute(
            "insert into Perfiles (idc, buenascompras, malascompras, deudasdemoradas,"
            " deudasnodemoradas, TurnosCumplidos, TurnosNoCumplidos) values (?, ?, ?, ?, ?, ?, ?)",
            c.idc, parte(c.perfil[1]), azar.Entre(1, 2), parte(c.perfil[2]), azar.Entre(0, 2),
            parte(c.perfil[4]), azar.Entre(0, 2));
    }
    for (const MascotaDemo &m : d.animales)
        d.clientes.Execute(
            "insert into Mascotas (idm, idc, nom, esp, raz, pel, car, Chip, fecn, pes, sex, ped,"
            " rep, dec, ser, obs, feci, fult, int, hos, tarea)"
            " values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
            m.idm, m.idc, m.nom, m.esp, m.raz, azar.Entre(1, d.contadores[u"contadorpelaje"_s]),
            azar.Sale(25) ? azar.De(d.palabras[u"marcas"_s]) : QString(),
            m.esp == 1 && azar.Sale(30) ? u"9850000%1"_s.arg(azar.Entre(10000000, 99999999))
                                        : QString(),
            m.fecn, m.pes, m.sex, azar.Sale(6), m.sex < 2 && azar.Sale(5), m.dec, m.ser,
            azar.Sale(10) ? azar.De(d.palabras[u"notasdemascota"_s]) : QString(), m.feci, m.fult,
            m.internada, m.hospedada ? 1 : 0, m.tarea);
}
