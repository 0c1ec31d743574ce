// The demonstration clinic's doses, food, consultations, studies, kennels and agenda.

#include "startup/demo_data.h"

#include "agenda/tasks.h"

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace
{

constexpr int Alimento = 1;
constexpr int Vacunas = 3;
constexpr int Antiparasitarios = 4;
constexpr int Anticonceptivos = 5;

void Dosis(Demo &d, int idm, int ida, int cat, int dos, QDate col, QDate rep, int si)
{
    d.clientes.Execute("insert into ArtPlan (idm, ida, dos, col, rep, si, IdCat, Ana)"
                       " values (?, ?, ?, ?, ?, ?, ?, 0)",
                       idm, ida, dos, col, rep, si, cat);
}

/// Doses of one product given every so many days, the next one open on a day.
void Historia(Demo &d, const MascotaDemo &m, int ida, int cat, int cada, int dadas, QDate proxima)
{
    for (int i = dadas; i > 0; --i) {
        const QDate dia = proxima.addDays(-qint64(cada) * i);
        Dosis(d, m.idm, ida, cat, dadas - i + 1, dia, dia, 1);
    }
    Dosis(d, m.idm, ida, cat, dadas + 1, {}, proxima, 0);
}

/// The next patient that nothing has been made of yet: a living grown dog or cat.
MascotaDemo &Apartar(Demo &d, int ser)
{
    const auto libre = [&](const MascotaDemo &m) {
        return !m.apartada && !m.dec && m.esp <= 2 && m.ser == ser && m.fecn.isValid()
               && m.fecn.daysTo(d.hoy) > 850;
    };
    // From a place of its own for each search, so that they are not all neighbours.
    const auto desde = d.animales.begin() + d.azar.Entre(0, int(d.animales.size()) - 1);
    auto i = std::find_if(desde, d.animales.end(), libre);
    if (i == d.animales.end())
        i = std::find_if(d.animales.begin(), d.animales.end(), libre);
    i->apartada = true;
    return *i;
}

/// What the next start finds: for each row how many patients, in whose care, when the dose is due
/// (days from today) and how many older doses of the category are still open.
struct CasoDeDosis {
    int pacientes;
    int ser;
    int vence;
    int atrasadas;
};

constexpr CasoDeDosis Casos[] = {
    {3, 0, -1, 0}, {2, 0, -3, 0},               // missed, the first one
    {3, 0, -2, 1},                              // missed, the second one
    {3, 1, -2, 0},                              // missed, in the clinic's care
    {5, 0, 0, 0},                               // of today
    {2, 0, 0, 1},                               // of today behind a missed one
    {1, 0, 0, 2},                               // ... behind two
    {3, 1, 0, 0},  {1, 1, -1, 0},               // to be given by the clinic
    {2, 0, 1, 0},  {2, 0, 2, 0},  {3, 0, 3, 0}, // to be reminded of
};

void DosisDelTablero(Demo &d)
{
    for (const CasoDeDosis &caso : Casos)
        for (int n = 0; n < caso.pacientes; ++n) {
            const MascotaDemo &m = Apartar(d, caso.ser);
            for (int a = 0; a < caso.atrasadas; ++a)
                Historia(d, m, 1 + a, Vacunas, 365, 1, d.hoy.addDays(-45 - 30 * a));
            Historia(d, m, 4, Vacunas, 365, d.azar.Entre(1, 2), d.hoy.addDays(caso.vence));
            Historia(d, m, 12, Antiparasitarios, 90, 3, d.hoy.addDays(d.azar.Entre(12, 80)));
        }
}

/// A plan as it is attached on a day: a row for each product of the chain, those of days gone by
/// given.
void Plan(Demo &d, const MascotaDemo &m, int idr, QDate desde)
{
    const Recordset r = d.morvane.OpenSnapshot("select * from Regimen where Idr = ?", idr);
    const int cat = r["Tip"].toInt();
    const QStringList cadena = r["Reg"].toText().split(u',', Qt::SkipEmptyParts);
    std::map<int, int> dosis;
    QDate dia = desde;
    for (qsizetype i = 0; i + 1 < cadena.size(); i += 2) {
        const int ida = cadena[i].toInt();
        const bool dada = dia < d.hoy;
        Dosis(d, m.idm, ida, cat, ++dosis[ida], dada ? dia : QDate(), dia, dada ? 3 : 2);
        dia = dia.addDays(cadena[i + 1].toInt());
    }
    d.clientes.Execute("insert into PlanMascota (idm, idplan, idcat) values (?, ?, ?)", m.idm, idr,
                       cat);
}

void DosisDeTodos(Demo &d)
{
    Azar &azar = d.azar;
    for (const MascotaDemo &m : d.animales) {
        if (m.apartada || m.esp > 3)
            continue;
        const qint64 edad = m.fecn.isValid() ? m.fecn.daysTo(d.hoy) : 1500;
        if (m.esp < 3 && edad < 200) {
            Plan(d, m, m.esp == 1 ? 16 : 17, m.fecn.addDays(60));
            Plan(d, m, m.esp == 1 ? 18 : 19, m.fecn.addDays(45));
            continue;
        }
        const int ida = m.esp == 1 ? 2 : m.esp == 2 ? 3 : 9;
        const int anos = int(std::clamp<qint64>(edad / 365, 1, 4));
        if (azar.Sale(10)) // given once, nothing further
            Dosis(d, m.idm, ida, Vacunas, 1, d.hoy.addDays(-azar.Entre(20, 120)), {}, 4);
        else if (azar.Sale(10) && anos > 2) // long overdue
            Historia(d, m, ida, Vacunas, 365, anos - 1, d.hoy.addDays(-azar.Entre(20, 300)));
        else if (edad < 365)
            Historia(d, m, ida, Vacunas, 365, 1, d.hoy.addDays(azar.Entre(230, 350)));
        else
            Historia(d, m, ida, Vacunas, 365, anos, d.hoy.addDays(azar.Entre(15, 350)));
        if (m.esp < 3)
            Historia(d, m, 12, Antiparasitarios, 90, azar.Entre(1, edad > 600 ? 5 : 2),
                     d.hoy.addDays(edad > 600 && azar.Sale(8) ? -azar.Entre(15, 60)
                                                              : azar.Entre(10, 88)));
        if (m.esp < 3 && m.sex == 1 && edad > 400 && azar.Sale(12))
            Historia(d, m, 35, Anticonceptivos, 150, 2, d.hoy.addDays(azar.Entre(10, 140)));
    }
}

void Consumo(Demo &d)
{
    Azar &azar = d.azar;
    const auto anotar = [&](const MascotaDemo &m, double quedan, bool avisado) {
        const int ida = m.esp == 1 ? (m.pes <= 10 ? 23 : 21) : 25;
        const int total = ida == 23 ? 3000 : ida == 21 ? 15000 : 7500;
        const int diario = m.esp == 2 ? 60 : std::max(80, int(m.pes) * 14);
        const int limite = m.esp == 2 ? 300 : m.pes <= 10 ? 600 : m.pes <= 25 ? 1200 : 2000;
        // quedan: days until the level is reached; below 0 it has been
        const int can = quedan < 0 ? limite / 3 : limite + int(quedan * diario);
        d.clientes.Execute(
            "insert into Consumo (idm, IdCat, ida, can, CanTotal, Con, men, FaltaHoy)"
            " values (?, ?, ?, ?, ?, ?, ?, 0)",
            m.idm, Alimento, ida, Moneda::DeEntero(std::min(can, total)), Moneda::DeEntero(total),
            Moneda::DeEntero(diario), avisado);
    };
    for (int i = 0; i < 5; ++i)
        anotar(Apartar(d, 0), 1.5, false);
    for (int i = 0; i < 4; ++i)
        anotar(Apartar(d, 1), 2.5, false);
    for (const MascotaDemo &m : d.animales)
        if (!m.apartada && !m.dec && m.esp <= 2 && azar.Sale(35)) {
            const bool avisado = azar.Sale(6);
            anotar(m, avisado ? -1 : azar.Entre(6, 60), avisado);
        }
}

void Sesiones(Demo &d)
{
    struct Sesion_ {
        QDate fec;
        size_t animal;
    };
    Azar &azar = d.azar;
    std::vector<Sesion_> todas;
    for (size_t i = 0; i < d.animales.size(); ++i) {
        const MascotaDemo &m = d.animales[i];
        const int desdeElAlta = int(m.feci.daysTo(d.hoy));
        for (int n = azar.Entre(0, m.esp <= 3 ? 5 : 1); n > 0 && desdeElAlta > 1; --n)
            todas.push_back({d.hoy.addDays(-azar.Entre(1, std::min(desdeElAlta, 700))), i});
    }
    // A stable order, the same with every library.
    std::ranges::stable_sort(todas, {}, &Sesion_::fec);
    for (const auto &[fec, animal] : todas) {
        MascotaDemo &m = d.animales[animal];
        m.fult = fec;
        ClienteDemo &c = d.Cliente(m.idc);
        c.fecu = std::max(c.fecu, fec);
        d.clientes.Execute("insert into MClinica (idclinica, idm, fec, cli, tmp, pes, idu)"
                           " values (?, ?, ?, ?, ?, ?, 1)",
                           d.Siguiente(u"contadorclinica"_s), m.idm, fec,
                           azar.De(d.palabras[u"consultas"_s]), azar.Entre(380, 394) / 10.0, m.pes);
    }
    for (int i = 0; i < 40; ++i)
        d.clientes.Execute("insert into FichasVisitadas (idm, fec, hor, tip, idu)"
                           " values (?, ?, ?, ?, 1)",
                           azar.De(d.animales).idm, d.hoy.addDays(-5 + i / 8),
                           QTime(9 + i % 8, azar.Entre(0, 59)),
                           i % 4 == 0   ? u"v"_s
                           : i % 4 == 1 ? u"b"_s
                                        : u"f"_s);
}

void Resultados(Demo &d, const char *tabla, int idm, QDate fec, int cuantos)
{
    QStringList columnas{u"idm"_s, u"fec"_s};
    std::vector<Valor> valores{idm, fec};
    for (int i = 1; i <= cuantos; ++i) {
        columnas.append(u"r%1"_s.arg(i));
        valores.push_back(d.azar.Entre(10, 900) / 10.0);
    }
    InsertarFila(d.clientes, QLatin1StringView(tabla), columnas, valores);
}

/// Studies in two generations of columns: a new row has each value behind one blank.
void Textos2(Demo &d, const char *tabla, const QStringList &columnas, const QString &lista, int idm,
             QDate fecha)
{
    QStringList todas{u"idm"_s, u"fecha"_s};
    std::vector<Valor> valores{idm, fecha};
    const QStringList textos = d.palabras.Campos(lista).front();
    for (qsizetype i = 0; i < columnas.size(); ++i) {
        todas.append(columnas[i]);
        valores.push_back(u' ' + textos[i]);
    }
    InsertarFila(d.clientes, QLatin1StringView(tabla), todas, valores);
}

void Estudios(Demo &d)
{
    Azar &azar = d.azar;
    for (const MascotaDemo &m : d.animales) {
        if (m.esp > 2 || m.idm % 11 != 0)
            continue;
        const QDate fec = d.hoy.addDays(-azar.Entre(2, 200));
        const bool perro = m.esp == 1;
        Resultados(d, "MAhemograma", m.idm, fec, perro ? 22 : 21);
        Resultados(d, "MAbio", m.idm, fec, perro ? 25 : 19);
        switch (m.idm / 11 % 5) {
        case 0:
            Textos2(d, "MAuri",
                    {u"Metodo2"_s, u"Color2"_s, u"Aspecto2"_s, u"Densidad2"_s, u"Proteinas2"_s,
                     u"Glucosa2"_s, u"Sangre2"_s},
                    u"orina"_s, m.idm, fec);
            break;
        case 1:
            Textos2(d, "MAcopro", {u"Tecnica2"_s, u"IdentBio2"_s, u"AntipSen2"_s}, u"coprologico"_s,
                    m.idm, fec);
            break;
        case 2:
            Textos2(d, "MAcultivo", {u"TMuetra2"_s, u"TCol2"_s, u"IDentMues2"_s, u"TantSen2"_s},
                    u"cultivo"_s, m.idm, fec);
            break;
        case 3: {
            const QStringList eco = azar.De(d.palabras.Campos(u"ecografias"_s));
            d.clientes.Execute("insert into MEco (ideco, idm, fec, est, [desc])"
                               " values (?, ?, ?, ?, ?)",
                               d.Siguiente(u"contadoreco"_s), m.idm, fec, eco[0], eco[1]);
            break;
        }
        default: {
            const QStringList ray = azar.De(d.palabras.Campos(u"radiografias"_s));
            d.clientes.Execute("insert into MRayos (idray, idm, fec, est, [desc])"
                               " values (?, ?, ?, ?, ?)",
                               d.Siguiente(u"contadorrayosx"_s), m.idm, fec, ray[0], ray[1]);
        }
        }
    }
}

void Caniles(Demo &d)
{
    struct Estadia {
        const char16_t *tip;
        int entra;
        int sale;
    };
    // One guest only, so that the feeding rounds are made; two past their time; a reservation that
    // nobody kept.
    static constexpr Estadia Estadias[] = {{u"h", -4, 3}, {u"h", -9, -1}, {u"h", -12, -3},
                                           {u"r", -2, 4}, {u"r", 1, 6},   {u"r", 5, 12},
                                           {u"r", 9, 15}};
    int canil = 0;
    for (const Estadia &e : Estadias) {
        MascotaDemo &m = Apartar(d, canil % 2);
        m.hospedada = true;
        d.clientes.Execute("insert into MHospedaje (idm, idcanil, fent, fsal, tip)"
                           " values (?, ?, ?, ?, ?)",
                           m.idm, ++canil, d.hoy.addDays(e.entra), d.hoy.addDays(e.sale), e.tip);
    }
    for (int i = 0; i < 2; ++i)
        Apartar(d, 0).internada = true;
}

void Agenda(Demo &d)
{
    static constexpr int Servicios[] = {75, 82, 78, 73, 80, 75, 81, 76, 79, 77};
    Azar &azar = d.azar;
    int cual = 0;
    // Two weeks back to one ahead; of yesterday two stay open.
    for (int dia = -14; dia <= 7; ++dia) {
        const QDate fecha = d.hoy.addDays(dia);
        const int citas = fecha.dayOfWeek() == Qt::Sunday && dia != 0 && dia != -1 ? 0
                          : dia == 0                                               ? 9
                                     : azar.Entre(4, 7);
        for (int i = 0; i < citas; ++i) {
            size_t animal = size_t(azar.Entre(0, int(d.animales.size()) - 1));
            while (d.animales[animal].dec)
                animal = (animal + 1) % d.animales.size();
            MascotaDemo &m = d.animales[animal];
            Tarea t;
            t.tip = Servicios[size_t(cual++ % int(std::size(Servicios)))];
            t.ida = m.idm;
            t.dia = fecha;
            t.hor = QTime(9, 0).addSecs(60 * (i * 65 + 5 * azar.Entre(0, 4)));
            if (dia == 0 && i % 4 == 2)
                t.ala = t.hor.addSecs(-15 * 60);
            t.medio = dia >= 0 && i % 5 == 0 ? 1 : 0;
            t.fcreacion = fecha.addDays(-azar.Entre(dia > 2 ? dia : 4, 12));
            t.des = azar.De(d.palabras[u"turnos"_s]);
            const int id = AgregarTarea(d.s, t);
            const bool hecha = dia < -1 || (dia == -1 && i >= 2) || (dia == 0 && i == 0);
            if (hecha)
                d.morvane.Execute("update TareasAgenda set est = -1, frealizacion = ? where id = ?",
                                  fecha, id);
            else
                m.tarea = true;
        }
    }
    int hora = 13;
    for (const QString &nota : d.palabras[u"pendientes"_s]) {
        Tarea t;
        t.tip = TipoTarea::TareaDeUsuario;
        t.ida = 1;
        t.dia = d.hoy.addDays(hora - 13 > 1 ? 1 : 0);
        t.hor = QTime(hora++, 30);
        t.fcreacion = d.hoy.addDays(-1);
        t.des = nota;
        AgregarTarea(d.s, t);
    }
}

} // namespace

void InventarFichas(Demo &d)
{
    DosisDelTablero(d);
    Consumo(d);
    Caniles(d);
    DosisDeTodos(d);
    Sesiones(d);
    Estudios(d);
    Agenda(d);
}
