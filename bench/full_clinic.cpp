#include "full_clinic.h"

#include "clinical/food.h"
#include "startup/first_run.h"
#include "startup/new_folder.h"
#include "store/data_folder.h"
#include "store/opening.h"

#include <QFile>
#include <algorithm>
#include <random>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace
{

const QStringList &Animales()
{
    static const QStringList nombres =
        u"Luna Max Nala Rocco Simba Lola Milo Coco Kira Toby Mora Bruno Olivia Thor Frida Rex "
        "Greta Duke Maya Otto Canela Jack Nina Zeus Pelusa Rocky Mia Tango Uma Firulais Cleo Ringo"_s
            .split(u' ');
    return nombres;
}

const QStringList &NombresDePila()
{
    static const QStringList nombres =
        u"Ana Bruno Carla Diego Elena Facundo Gabriela Hugo Inés Jorge Karina Luis Marta Nicolás "
        "Olga Pablo Rosa Sergio Teresa Víctor Ángela Óscar"_s.split(u' ');
    return nombres;
}

const QStringList &Apellidos()
{
    static const QStringList apellidos =
        u"Acosta Álvarez Benítez Cabrera Castro Díaz Escobar Fernández García Herrera Ibáñez "
        "Juárez López Medina Núñez Ortiz Pereyra Quiroga Ríos Sosa Torres Urquiza Vega Zárate"_s
            .split(u' ');
    return apellidos;
}

constexpr int Localidades = 60, Departamentos = 8, Razas = 80, Pelajes = 15, Medios = 6;

// What a patient is given round after round, each product with its category and interval in days.
struct ProductoDePlan {
    int ida;
    int idcat;
    int intervalo;
};
constexpr ProductoDePlan Planes[] = {{4, 3, 365}, {1, 3, 365},  {12, 4, 90}, {19, 4, 90},
                                     {8, 3, 365}, {20, 4, 60},  {7, 3, 180}, {13, 4, 120},
                                     {5, 3, 365}, {18, 4, 150}, {35, 5, 180}};
// Services that are booked, and the part of the day in which they are.
constexpr int Servicios[] = {71, 72, 73, 75, 75, 75, 76, 78, 79, 80, 82, 83, 86, 87};
constexpr int PrimeraMediaHora = 17, MediasHoras = 24; // 08:30 to 20:00

class Constructor
{
public:
    Constructor(Sesion &sesion, const PlanDeClinica &elPlan)
        : s(sesion),
          plan(elPlan),
          m_azar(elPlan.semilla),
          m_nombres(elPlan.nombres.isEmpty() ? Animales() : elPlan.nombres)
    {
    }

    void Llenar()
    {
        Lote lote(s);
        ListasCortas();
        Clientes();
        Pacientes();
        Dosis();
        Consumos();
        Deudas();
        Tareas();
        Ventas();
        Caniles();
        Visitas();
        Existencias();
        Ajustes();
        lote.Confirmar();
    }

private:
    int Entre(int desde, int hasta) // both ends included
    {
        return desde + int(m_azar() % quint64(hasta - desde + 1));
    }
    bool Cada100(int veces) { return Entre(0, 99) < veces; }
    template <typename T>
    const T &Uno(const QList<T> &lista)
    {
        return lista[Entre(0, int(lista.size()) - 1)];
    }
    template <typename T, size_t N>
    const T &Uno(const T (&lista)[N])
    {
        return lista[Entre(0, int(N) - 1)];
    }
    QDate Dia(int desde, int hasta) { return plan.hoy.addDays(Entre(desde, hasta)); }
    QString Persona() { return Uno(NombresDePila()) + u' ' + Uno(Apellidos()); }

    void ListasCortas()
    {
        const auto llenar = [this](const char *sql, const QString &nombre, int cuantos) {
            for (int id = 1; id <= cuantos; ++id)
                s.clientes->Execute(sql, id, nombre.arg(id));
        };
        llenar("insert into MLRazas (id, nom, esp) values (?, ?, 1)", u"Raza %1"_s, Razas);
        llenar("insert into MLPelajes (id, nom) values (?, ?)", u"Pelaje %1"_s, Pelajes);
        llenar("insert into CLMarketing (id, nom) values (?, ?)", u"Medio %1"_s, Medios);
        llenar("insert into CLDepartamento (id, nom) values (?, ?)", u"Distrito %1"_s,
               Departamentos);
        for (int id = 1; id <= Localidades; ++id)
            s.clientes->Execute("insert into CLLocalidad (id, nom, cp, dep) values (?, ?, ?, ?)",
                                id, u"Barrio %1"_s.arg(id), QString::number(1000 + id),
                                1 + id % Departamentos);
        s.finanzas->Execute("update FLCategorias set suministro = 'c', uni = 'g', idserv = 71 "
                            "where idcat = 11");
        s.clientes->Execute("update MLEspecies set ali = ? where id = 2", 300);
        s.clientes->Execute("update MLEspecies set ali = ? where id = 3", 20000);
    }

    void Clientes()
    {
        for (int idc = 1; idc <= plan.clientes; ++idc) {
            const int loc = Entre(1, Localidades);
            const QString nombre = Persona();
            // Entered day by day over ten years, the last one today.
            const QDate alta =
                plan.hoy.addDays(-qint64(plan.clientes - idc) * 3650 / plan.clientes);
            s.clientes->Execute(
                "insert into Clientes (idc, ayn, dir, loc, dep, codp2, tel2, telc2, email, mark, "
                "feci, fecu, Perfil1, Perfil2, Perfil3, iva) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
                "?, ?, ?, ?, ?, 1)",
                idc, nombre, u"Calle %1 nº %2"_s.arg(Entre(1, 90)).arg(Entre(1, 4000)), loc,
                1 + loc % Departamentos, Cada100(90) ? QString::number(1000 + loc) : QString(),
                Cada100(70) ? u"4%1"_s.arg(Entre(100000, 999999)) : QString(),
                Cada100(80) ? u"15 %1"_s.arg(Entre(1000000, 9999999)) : QString(),
                Cada100(60) ? u"cliente%1@correo.example"_s.arg(idc) : QString(), Entre(1, Medios),
                alta, std::min(plan.hoy.addDays(-1), alta.addDays(Entre(0, 900))), Cada100(30),
                Cada100(10), Cada100(25));
            if (Cada100(75))
                s.morvane->Execute(
                    "insert into Perfiles (idc, buenascompras, malascompras, deudasdemoradas, "
                    "deudasnodemoradas, TurnosCumplidos, TurnosNoCumplidos) values (?, ?, ?, ?, ?, "
                    "?, ?)",
                    idc, Entre(0, 40), Entre(0, 20), Entre(0, 3), Entre(0, 5), Entre(0, 30),
                    Entre(0, 5));
        }
    }

    void Pacientes()
    {
        for (int idm = 1; idm <= plan.pacientes; ++idm) {
            const int especie = Cada100(60) ? 1 : Cada100(90) ? 2 : 3;
            const QDate alta =
                plan.hoy.addDays(-qint64(plan.pacientes - idm) * 3650 / plan.pacientes);
            const double peso = especie == 1   ? Entre(20, 450) / 10.0
                                : especie == 2 ? Entre(20, 80) / 10.0
                                               : Entre(300, 550);
            m_nivel.push_back(UmbralAlimento(s, especie, peso, CategoriaAlimento));
            s.clientes->Execute(
                "insert into Mascotas (idm, idc, nom, esp, raz, pel, car, Chip, fecn, pes, sex, "
                "dec, ser, feci, fult, int) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
                "?)",
                idm, Cada100(80) ? std::min(idm, plan.clientes) : Entre(1, plan.clientes),
                Uno(m_nombres).left(50), especie, Entre(1, Razas), Entre(1, Pelajes),
                Cada100(20) ? u"mancha en el lomo"_s : QString(),
                Cada100(40) ? u"9810000%1"_s.arg(idm, 8, 10, QChar(u'0')) : QString(),
                Cada100(90) ? Valor(alta.addDays(-Entre(30, 1500))) : Valor(), peso, Entre(0, 3),
                Cada100(8), Cada100(15) ? 1 : 0, alta, alta.addDays(Entre(0, 700)),
                Entre(0, 2999) == 0);
        }
    }

    // Rows lie in the order in which they were entered, as years of work leave them, and not
    // patient by patient.
    void Dosis()
    {
        struct Fila {
            QDate alta;
            int idm, ida, dos;
            Valor dada;
            QDate vence;
            int si, idcat;
        };
        std::vector<Fila> filas;
        filas.reserve(size_t(plan.dosis));
        for (const ProductoDePlan &p : Planes) {
            for (int idm = 1; idm <= plan.pacientes && int(filas.size()) < plan.dosis; ++idm) {
                if (Cada100(10))
                    continue;
                const int cuantas = std::min(Entre(2, 4), plan.dosis - int(filas.size()));
                const bool dePlan = Cada100(30);
                const QDate ultima = Dia(-20, 199);
                for (int dos = 1; dos <= cuantas; ++dos) {
                    const QDate vence = ultima.addDays(-qint64(cuantas - dos) * p.intervalo);
                    const bool abierta = dos == cuantas ? Cada100(92) : Cada100(4);
                    const QDate dada = vence.addDays(Entre(-5, 3));
                    filas.push_back({vence.addDays(-p.intervalo), idm, p.ida, dos,
                                     abierta ? Valor() : Valor(std::min(dada, plan.hoy)), vence,
                                     (abierta ? 0 : 1) + (dePlan ? 2 : 0), p.idcat});
                }
            }
        }
        std::ranges::stable_sort(filas, {}, &Fila::alta);
        for (const Fila &f : filas)
            s.clientes->Execute("insert into ArtPlan (idm, ida, dos, col, rep, si, IdCat, Ana) "
                                "values (?, ?, ?, ?, ?, ?, ?, ?)",
                                f.idm, f.ida, f.dos, f.dada, f.vence, f.si, f.idcat,
                                f.vence < plan.hoy.addDays(Anticipacion));
    }

    // Food that lasts ten to sixty days from the purchase on, some of it gone.
    void Consumos()
    {
        std::vector<std::pair<int, int>> filas; // patient, category
        for (int i = 0; i < plan.consumos; ++i)
            filas.emplace_back(1 + i % plan.pacientes, i < plan.pacientes ? 1 : 11);
        std::shuffle(filas.begin(), filas.end(), m_azar);
        for (const auto &[idm, idcat] : filas) {
            const Moneda diario = Moneda::DeDiezmilesimos(qint64(Entre(300, 6000)) * 1000);
            const int dura = Entre(10, 60), quedan = Cada100(20) ? 0 : Entre(0, dura);
            // Whoever runs low has been told on the day before.
            const double nivel = idcat == 1 ? m_nivel[size_t(idm)] : 0;
            s.clientes->Execute("insert into Consumo (idm, IdCat, ida, can, CanTotal, Con, men) "
                                "values (?, ?, ?, ?, ?, ?, ?)",
                                idm, idcat, Entre(21, 34), diario * quedan, diario * dura, diario,
                                (diario * quedan).ADoble() <= nivel);
        }
    }

    void Deudas()
    {
        for (int i = 1; i <= plan.deudasAbiertas * 4; ++i) {
            const bool abierta = i % 4 == 0;
            const int dias = Entre(0, 120);
            const Moneda total = Moneda::DeEntero(Entre(5, 400));
            // The step that the reminders of the days before have brought it to.
            const int paso = dias <= Plazo        ? 0
                             : dias <= Plazo + 10 ? 1
                             : dias <= Plazo + 20 ? 2
                             : dias <= Plazo + 21 ? 3
                                                  : 4;
            s.finanzas->Execute("insert into CtaCteC (idVenta, idc, fecUltPago, total, saldo, "
                                "Cancelado, men) values (?, ?, ?, ?, ?, ?, ?)",
                                i, Entre(1, plan.clientes), plan.hoy.addDays(-dias), total,
                                abierta ? total : Moneda(), !abierta, abierta ? paso : 0);
        }
    }

    void Tareas()
    {
        struct Fila {
            QDate alta;
            int tip, ida;
            Valor dia, hor, ala;
            bool est;
            int medio;
            Valor enviada, hecha;
        };
        std::vector<Fila> filas;
        filas.reserve(size_t(plan.tareas));
        std::vector<char> pendiente(size_t(plan.pacientes) + 1);
        for (int i = 0; i < plan.tareas; ++i) {
            const int idm = Entre(1, plan.pacientes);
            if (Cada100(40)) { // what the system sent by itself
                const QDate alta = Dia(-700, -1);
                filas.push_back({alta,
                                 Cada100(70) ? -42 : -46,
                                 idm,
                                 {},
                                 {},
                                 {},
                                 true,
                                 Entre(1, 3),
                                 alta,
                                 alta});
                continue;
            }
            const QDate dia = Dia(-700, 30);
            const int media = PrimeraMediaHora + Entre(0, MediasHoras - 1);
            const QTime hor(media / 2, media % 2 * 30);
            const bool hecha = dia < plan.hoy && Cada100(95);
            filas.push_back({std::min(dia, plan.hoy).addDays(-Entre(1, 14)),
                             Uno(Servicios),
                             idm,
                             dia,
                             hor,
                             Cada100(10) ? Valor(hor.addSecs(-900)) : Valor(),
                             hecha,
                             0,
                             {},
                             hecha ? Valor(dia) : Valor()});
            if (!hecha)
                pendiente[size_t(idm)] = 1;
        }
        std::ranges::stable_sort(filas, {}, &Fila::alta);
        int id = 0;
        for (const Fila &f : filas)
            s.morvane->Execute(
                "insert into TareasAgenda (id, tip, ida, dia, hor, ala, est, medio, fcreacion, "
                "fmedio, frealizacion, artaux, des) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0, ?)",
                ++id, f.tip, f.ida, f.dia, f.hor, f.ala, f.est, f.medio, f.alta, f.enviada, f.hecha,
                f.tip > 0 ? u"Turno"_s : u"2"_s);
        for (int idm = 1; idm <= plan.pacientes; ++idm)
            // Some flags are out of date: their tasks were closed since.
            if (pendiente[size_t(idm)] || Entre(0, 99) == 0)
                s.clientes->Execute("update Mascotas set tarea = -1 where idm = ?", idm);
    }

    void Ventas()
    {
        int lineas = 0, idventa = 0;
        while (lineas < plan.lineasDeVenta) {
            ++idventa;
            const int cuantas = std::min(Entre(1, 4), plan.lineasDeVenta - lineas);
            // Five years, in the order of entry.
            const QDate fec = plan.hoy.addDays(
                -1 - qint64(plan.lineasDeVenta - lineas) * 1825 / std::max(1, plan.lineasDeVenta));
            Moneda total;
            for (int i = 0; i < cuantas; ++i) {
                const Moneda precio = Moneda::DeEntero(Entre(2, 90));
                const int can = Entre(1, 3);
                total = total + precio * can;
                s.finanzas->Execute("insert into VentasDetalle (idventa, ida, can, uni, pu, sub) "
                                    "values (?, ?, ?, 'u', ?, ?)",
                                    idventa, Entre(1, 60), can, precio, precio * can);
            }
            s.finanzas->Execute(
                "insert into Ventas (idventa, tfac, idv, idvSerie, idc, idm, fec, hor, tot, idu, "
                "tip, recargo) values (?, '3', ?, 1, ?, 0, ?, ?, ?, 1, 1, 0)",
                idventa, idventa, Cada100(60) ? Entre(1, plan.clientes) : 0, fec,
                QTime(Entre(9, 19), Entre(0, 59)), total);
            lineas += cuantas;
        }
        m_ventas = idventa;
    }

    void Caniles()
    {
        int canil = 0;
        const auto alojar = [&](int entrada, int salida, QString clase) {
            const int idm = std::min(plan.pacientes, 100 * ++canil);
            s.clientes->Execute(
                "insert into MHospedaje (idm, idcanil, fent, fsal, tip) values (?, ?, ?, ?, ?)",
                idm, canil, plan.hoy.addDays(entrada), plan.hoy.addDays(salida), clase);
            s.clientes->Execute("update Mascotas set hos = 1 where idm = ?", idm);
        };
        alojar(-3, 4, u"h"_s);
        alojar(-8, -1, u"h"_s); // should have gone home
        alojar(-2, 3, u"r"_s);  // never came
        alojar(2, 9, u"r"_s);
    }

    void Visitas()
    {
        for (int dia = -45; dia < 0; ++dia)
            for (int i = 0; i < 100; ++i)
                s.clientes->Execute("insert into FichasVisitadas (idm, fec, hor, tip, idu) values "
                                    "(?, ?, ?, 'f', 1)",
                                    Entre(1, plan.pacientes), plan.hoy.addDays(dia),
                                    QTime(9 + i / 15, i % 60));
    }

    void Existencias()
    {
        s.finanzas->Execute("update Articulos set can = 20, min = 5, p1 = 15 where idcat <> 2");
        s.finanzas->Execute("update Articulos set can = 2 where ida = 4");
        for (int ida = 1; ida <= 20; ++ida)
            s.finanzas->Execute("insert into ArtVenc (ida, can, ven) values (?, 10, ?)", ida,
                                Dia(20, 600));
    }

    // Everything is switched on, so that a morning has all of the work that there can be.
    void Ajustes()
    {
        s.morvane->Execute(
            "update Configuracion set PrimeraVez = 0, FechaPrimerInicio = ?, FechaUltimoInicio = "
            "?, FechaInicioAnterior = ?, FechaUltimoInicioMes = ?, contadorclientes = ?, "
            "contadormascotas = ?, contadorTareas = ?, idventa = ?, contadorventa = ?",
            plan.hoy.addDays(-3650), plan.hoy.addDays(-1), plan.hoy.addDays(-2), plan.hoy,
            plan.clientes, plan.pacientes, plan.tareas, m_ventas, m_ventas);
        s.morvane->Execute(
            "update Configuracion set contadorraza = ?, contadorpelaje = ?, contadordep = ?, "
            "contadorloc = ?, contadormark = ?",
            Razas, Pelajes, Departamentos, Localidades, Medios);
        s.morvane->Execute(
            "update Configuracion set medidasalimento = 1, alimentomail = -1, LVMascotas = -1, "
            "MedidasRevac = 3, tiempovencimiento = ?, MedidasRevacDescont = 1, MedidasCumple = 3, "
            "diasdeudores = ?, MedidasDeudores = 1, AutNuevoCliente = 1, RecibirNotificaciones = "
            "0, horaracion1 = ?, horaracion2 = ?",
            Anticipacion, Plazo, QTime(8, 0), QTime(18, 0));
    }

    static constexpr int Anticipacion = 3; // days ahead of a dose at which its reminder goes
    static constexpr int Plazo = 30;       // days without a payment that make a debtor

    Sesion &s;
    const PlanDeClinica &plan;
    std::mt19937_64 m_azar;
    const QStringList &m_nombres;
    int m_ventas = 0;
    std::vector<double> m_nivel{0}; // stock of food that is low, by patient
};

// One record of a CSV file; a cell in quotes may hold the separator and doubled quotes.
QStringList Celdas(const QString &linea)
{
    QStringList celdas(QString{});
    bool citada = false;
    for (const QChar c : linea) {
        if (c == u'"')
            citada = !citada;
        else if (c == u',' && !citada)
            celdas.append(QString());
        else
            celdas.back().append(c);
    }
    return celdas;
}

} // namespace

void CrearClinicaLlena(const QString &carpeta, const PlanDeClinica &plan)
{
    CrearCarpeta(carpeta, Idioma::Espanol);
    SesionDeMedida medida(carpeta, plan.hoy);
    RegistrarPrimeraVez(medida.s, {.clinica = u"Clínica llena"_s,
                                   .direccion = u"Calle Mayor 1"_s,
                                   .telefonos = u"4000000"_s,
                                   .usuario = u"Ana"_s,
                                   .contrasena = {},
                                   .contrasena2 = {}});
    SembrarPrimeraVez(medida.s);
    Constructor(medida.s, plan).Llenar();
}

QStringList LeerNombres(const QString &archivo, const QString &columna)
{
    QFile f(archivo);
    if (!f.open(QIODevice::ReadOnly))
        throw std::runtime_error(u"%1: %2"_s.arg(archivo, f.errorString()).toStdString());
    QString texto = QString::fromUtf8(f.readAll());
    if (texto.startsWith(QChar::ByteOrderMark))
        texto.remove(0, 1);
    QStringList lineas = texto.split(u'\n', Qt::SkipEmptyParts);
    const QStringList titulos = lineas.isEmpty() ? QStringList() : Celdas(lineas.takeFirst());

    qsizetype n = columna.toInt() - 1;
    for (qsizetype i = 0; n < 0 && i < titulos.size(); ++i) {
        const QString titulo = titulos[i].trimmed();
        const bool es = columna.isEmpty() ? titulo.contains("name"_L1, Qt::CaseInsensitive)
                                                || titulo.contains("nombre"_L1, Qt::CaseInsensitive)
                                          : titulo.compare(columna, Qt::CaseInsensitive) == 0;
        if (es)
            n = i;
    }
    if (n < 0 || n >= titulos.size())
        throw std::runtime_error(u"%1: no column of names"_s.arg(archivo).toStdString());

    QStringList nombres;
    for (const QString &linea : std::as_const(lineas)) {
        const QString nombre = Celdas(linea).value(n).trimmed();
        if (!nombre.isEmpty())
            nombres.append(QString(nombre).replace(u'\'', u' '));
    }
    if (nombres.isEmpty())
        throw std::runtime_error(u"%1: no names"_s.arg(archivo).toStdString());
    return nombres;
}

SesionDeMedida::SesionDeMedida(const QString &carpeta, QDate hoy)
    : s(dialogos, impresion, Idioma::Espanol)
{
    s.reloj.hoy = hoy;
    s.reloj.ahora = [hoy] { return QDateTime(hoy, QTime(9, 0)); };
    FijarCarpetaDeDatos(s, carpeta);
    if (const auto falla = AbrirAlmacen(s))
        throw std::runtime_error(falla->texto.toStdString());
    LeerClinica(s);
}
