// Measures what the registry and the searches make the user wait for, on the folder given, which
// is not kept as it was. Prints rows of the table of kelvara_bench. Needs a display; offscreen will
// do.

#include "bare_clinic.h"
#include "full_clinic.h"
#include "table.h"

#include "clients/client_forms.h"
#include "clients/client_rows.h"
#include "clients/quick_search.h"
#include "clients/search.h"
#include "ui/form_base.h"
#include "ui/form_registry.h"
#include "ui/theme.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTextStream>
#include <QThread>
#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace
{

const QString Fotograma = u"under 16"_s; // milliseconds, the time of one picture on a screen

struct Medida {
    Sesion &s;
    QString carpeta;
    int corridas;
};

// --- Against the bare engine -----------------------------------------------------------------

// Ours and a statement of the bare engine whose cells are all read, in turns.
void ContraElMotor(const Medida &m, const QString &que, const std::function<void()> &nuestra,
                   const std::string &desnuda, const QString &meta)
{
    BaseDesnuda base(m.carpeta);
    sqlite3_stmt *st = base.Preparar(desnuda);
    const auto correr = [st] {
        while (sqlite3_step(st) == SQLITE_ROW)
            for (int c = 0; c < sqlite3_column_count(st); ++c) {
                sqlite3_column_text(st, c);
                sqlite3_column_bytes(st, c);
            }
        sqlite3_reset(st);
    };
    nuestra();
    correr();
    std::vector<double> nuestras, desnudas, razones;
    for (int i = 0; i < m.corridas; ++i) {
        nuestras.push_back(Milisegundos(nuestra));
        desnudas.push_back(Milisegundos(correr));
        razones.push_back(nuestras.back() / desnudas.back());
    }
    sqlite3_finalize(st);
    Linea(que, Numero(Mediana(nuestras), 1), Numero(Mediana(desnudas), 1), Numero(Mediana(razones)),
          meta);
}

void MedirFilas(const Medida &m)
{
    ContraElMotor(
        m, u"registry: rows of all clients (ms)"_s, [&] { FilasDeClientes(m.s); },
        "SELECT idc, ayn, tel2, deuda, obra, faltadir, faltamail FROM clientes.Clientes ORDER BY "
        "ayn COLLATE NOCASE",
        u"at most 1.5"_s);
    for (const QString &texto : {u"lun"_s, u"a"_s}) {
        const Condiciones c{Condicion{0, texto}, Condicion{}};
        ContraElMotor(
            m, u"search: all patients with \"%1\" (ms)"_s.arg(texto),
            [&] { Buscar(m.s, Busqueda::Mascotas, c); },
            "SELECT m.idm, m.nom, c.ayn, r.nom, e.nom, p.nom, m.car, m.Chip, m.ped, m.rep, m.dec, "
            "c.dir, l.nom, c.tel2, c.telc2, m.obs FROM clientes.Mascotas m LEFT JOIN "
            "clientes.Clientes c ON m.idc = c.idc LEFT JOIN clientes.MLRazas r ON m.raz = r.id "
            "LEFT JOIN clientes.MLEspecies e ON m.esp = e.id LEFT JOIN clientes.MLPelajes p ON "
            "m.pel = p.id LEFT JOIN clientes.CLLocalidad l ON c.loc = l.id WHERE m.nom LIKE '%"
                + texto.toStdString() + "%' ORDER BY m.nom COLLATE NOCASE, c.ayn COLLATE NOCASE",
            u"at most 1.5"_s);
    }
}

// --- Rules while one types -------------------------------------------------------------------

// The slowest of all criteria, with what stands in most rows, in some and in none.
void MedirBusquedas(const Medida &m)
{
    for (const Busqueda busqueda : {Busqueda::Mascotas, Busqueda::Clientes}) {
        QString cual;
        double peor = 0;
        const auto criterios = CriteriosDe(busqueda);
        for (int i = 0; i < int(criterios.size()); ++i) {
            const bool siNo = criterios[size_t(i)].siNo;
            for (const QString &texto :
                 siNo ? QStringList{u"1"_s, u"2"_s}
                      : QStringList{u"a"_s, u"gar"_s, u"lun"_s, u"98100001"_s, u"xyz"_s}) {
                const Condiciones c{Condicion{i, texto}, Condicion{}};
                BuscarAlTeclear(m.s, busqueda, c);
                std::vector<double> ms;
                for (int n = 0; n < m.corridas; ++n)
                    ms.push_back(Milisegundos([&] { BuscarAlTeclear(m.s, busqueda, c); }));
                if (const double una = Mediana(ms); una > peor) {
                    peor = una;
                    cual = m.s(criterios[size_t(i)].nombre) + u" \""_s + texto + u'"';
                }
            }
        }
        Linea(u"search while typing (ms): "_s + cual, Numero(peor, 1), u"-"_s, u"-"_s, Fotograma);
    }
}

void MedirIndice(const Medida &m)
{
    std::vector<double> ms;
    double kilobytes = 0;
    for (int i = 0; i < m.corridas; ++i) {
        IndiceRapido indice;
        ms.push_back(Milisegundos([&] { indice.PonerAlDia(m.s); }));
        kilobytes = double(indice.Bytes()) / 1024;
    }
    Linea(u"quick find: making its index (ms)"_s, Numero(Mediana(ms), 1), u"-"_s, u"-"_s,
          u"under 100"_s);
    Linea(u"quick find: its index (kB)"_s, Numero(kilobytes, 0), u"-"_s, u"-"_s, u"under 5000"_s);
}

// --- Forms -----------------------------------------------------------------------------------

struct Pantalla {
    explicit Pantalla(Sesion &s) { RegistrarFormulariosDeClientes(s, formularios); }

    Formularios formularios;

    FormBase *Abrir(const QString &nombre)
    {
        FormBase *form = formularios.Cargar(nombre);
        if (!form)
            throw std::runtime_error("no form " + nombre.toStdString());
        form->opened({});
        form->show(); // a modal one is not waited for
        return form;
    }
};

// The milliseconds until there is nothing left to do at once.
double HastaElReposo(const std::function<void()> &f)
{
    return Milisegundos([&] {
        f();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    });
}

void MedirApertura(const Medida &m)
{
    std::vector<double> ms;
    for (int i = 0; i < m.corridas; ++i) {
        m.s.IdGlobal = {1 + i * 1000, 0};
        Pantalla pantalla(m.s);
        ms.push_back(HastaElReposo([&] { pantalla.Abrir(u"frmPropietarios"_s); }));
    }
    Linea(u"registry: from the click to its picture (ms)"_s, Numero(Mediana(ms), 0), u"-"_s,
          Numero(*std::ranges::max_element(ms), 0), u"under 150"_s);
}

// What one key made the user wait for.
struct Tecla {
    double alReposo = 0; // from the key until the loop is idle
    double despues = 0;  // the longest wait that a timer of the form causes later
};

std::vector<Tecla> Teclear(QWidget *caja, const QString &texto)
{
    std::vector<Tecla> teclas;
    for (const QChar c : texto) {
        Tecla &tecla = teclas.emplace_back();
        tecla.alReposo = HastaElReposo([&] {
            QKeyEvent baja(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
            QKeyEvent sube(QEvent::KeyRelease, 0, Qt::NoModifier, QString(c));
            QCoreApplication::sendEvent(caja, &baja);
            QCoreApplication::sendEvent(caja, &sube);
        });
        QElapsedTimer reloj;
        reloj.start();
        while (reloj.elapsed() < 180) {
            QThread::msleep(2);
            tecla.despues = std::max(tecla.despues, HastaElReposo([] {}));
        }
    }
    return teclas;
}

template <typename W>
W *Control(QWidget *form, const QString &nombre)
{
    auto *control = form->findChild<W *>(nombre);
    if (!control)
        throw std::runtime_error("no control " + nombre.toStdString());
    return control;
}

// Each key is the median of its runs; then the median and the worst of all keys.
void LineaDeTeclas(const QString &que, const std::vector<std::vector<Tecla>> &corridas)
{
    std::vector<double> alReposo, todo;
    for (size_t k = 0; k < corridas.front().size(); ++k) {
        std::vector<double> una, despues;
        for (const std::vector<Tecla> &corrida : corridas) {
            una.push_back(corrida[k].alReposo);
            despues.push_back(corrida[k].despues);
        }
        alReposo.push_back(Mediana(una));
        todo.push_back(std::max(Mediana(una), Mediana(despues)));
    }
    Linea(u"keys in "_s + que + u" (ms)"_s, Numero(Mediana(alReposo), 1), u"-"_s,
          u"worst "_s + Numero(*std::ranges::max_element(todo), 1), Fotograma);
}

void MedirTeclas(const Medida &m)
{
    Pantalla pantalla(m.s);
    const auto teclas = [&](FormBase *form, const QString &que, QLineEdit *caja,
                            const QStringList &textos) {
        form->activateWindow();
        caja->setFocus();
        QCoreApplication::processEvents();
        std::vector<std::vector<Tecla>> corridas;
        for (int i = 0; i < m.corridas; ++i) {
            std::vector<Tecla> &corrida = corridas.emplace_back();
            for (const QString &texto : textos) {
                std::ranges::move(Teclear(caja, texto), std::back_inserter(corrida));
                caja->clear();
                HastaElReposo([] {});
            }
        }
        LineaDeTeclas(que, corridas);
    };

    m.s.IdGlobal = {1, 0};
    FormBase *registro = pantalla.Abrir(u"frmPropietarios"_s);
    teclas(registro, u"Txtapellidob"_s, Control<QLineEdit>(registro, u"Txtapellidob"_s),
           {u"sergio garcía"_s, u"4512345"_s, u"9999"_s, u"zzz"_s});
    Control<QPushButton>(registro, u"cmdmodificar"_s)->click();
    teclas(registro, u"cmbloc"_s, Control<QComboBox>(registro, u"cmbloc"_s)->lineEdit(),
           {u"barrio 12"_s, u"nuevo"_s});
    Control<QPushButton>(registro, u"cmdmodificar"_s)->click(); // gives it up
    registro->hide();

    FormBase *busqueda = pantalla.Abrir(u"frmBusquedaMascotas"_s);
    teclas(busqueda, u"frmBusquedaMascotas"_s, Control<QLineEdit>(busqueda, u"txtTextoUno"_s),
           {u"luna"_s, u"xyz"_s});
    Control<QComboBox>(busqueda, u"cmbCriterioUno"_s)->setCurrentIndex(6);
    teclas(busqueda, u"the same, by owner"_s, Control<QLineEdit>(busqueda, u"txtTextoUno"_s),
           {u"garcía"_s, u"xyz"_s});
    busqueda->hide();

    FormBase *rapida = pantalla.Abrir(u"frmBusquedaRapida"_s);
    teclas(rapida, u"frmBusquedaRapida"_s, Control<QLineEdit>(rapida, u"txtBuscar"_s),
           {u"gar luna"_s, u"4512345"_s, u"9999"_s, u"ana a"_s});
    rapida->hide();
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() < 4) {
        QTextStream(stderr) << "bench_registry DIR YYYY-MM-DD RUNS\n";
        return 1;
    }
    try {
        AplicarTema(app, 1);
        SesionDeMedida medida(args[1], QDate::fromString(args[2], Qt::ISODate));
        const Medida m{medida.s, args[1], std::max(1, args[3].toInt())};
        MedirFilas(m);
        MedirApertura(m);
        MedirBusquedas(m);
        MedirIndice(m);
        MedirTeclas(m);
    } catch (const std::exception &e) {
        QTextStream(stderr) << e.what() << '\n';
        return 1;
    }
    return 0;
}
