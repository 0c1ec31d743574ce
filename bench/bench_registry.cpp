// Measures how long the registry and the searches keep the user waiting, on the given folder, which
// is modified. Prints rows of the table of kelvara_bench. Needs a display; the offscreen platform
// will do.

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

const QString Frame = u"under 16"_s; // milliseconds, one frame of a screen

struct Measure {
    Sesion &s;
    QString folder;
    int runs;
};

// --- Against the bare engine -----------------------------------------------------------------

// Times ours against a statement of the bare engine that reads every cell, in alternation.
void againstEngine(const Measure &m, const QString &what, const std::function<void()> &our,
                   const std::string &bare, const QString &goal)
{
    BareBase base(m.folder);
    sqlite3_stmt *st = base.prepare(bare);
    const auto run = [st] {
        while (sqlite3_step(st) == SQLITE_ROW)
            for (int c = 0; c < sqlite3_column_count(st); ++c) {
                sqlite3_column_text(st, c);
                sqlite3_column_bytes(st, c);
            }
        sqlite3_reset(st);
    };
    our();
    run();
    std::vector<double> ourTimes, bareTimes, ratios;
    for (int i = 0; i < m.runs; ++i) {
        ourTimes.push_back(milliseconds(our));
        bareTimes.push_back(milliseconds(run));
        ratios.push_back(ourTimes.back() / bareTimes.back());
    }
    sqlite3_finalize(st);
    line(what, numberOf(median(ourTimes), 1), numberOf(median(bareTimes), 1),
         numberOf(median(ratios)), goal);
}

void measureRows(const Measure &m)
{
    againstEngine(
        m, u"registry: rows of all clients (ms)"_s, [&] { clients::clientsRows(m.s); },
        "SELECT idc, ayn, tel2, deuda, obra, faltadir, faltamail FROM clientes.Clientes ORDER BY "
        "ayn COLLATE NOCASE",
        u"at most 1.5"_s);
    for (const QString &text : {u"lun"_s, u"a"_s}) {
        const clients::Conditions c{clients::Condition{0, text}, clients::Condition{}};
        againstEngine(
            m, u"search: all patients with \"%1\" (ms)"_s.arg(text),
            [&] { clients::find(m.s, clients::Search::Patients, c); },
            "SELECT m.idm, m.nom, c.ayn, r.nom, e.nom, p.nom, m.car, m.Chip, m.ped, m.rep, m.dec, "
            "c.dir, l.nom, c.tel2, c.telc2, m.obs FROM clientes.Mascotas m LEFT JOIN "
            "clientes.Clientes c ON m.idc = c.idc LEFT JOIN clientes.MLRazas r ON m.raz = r.id "
            "LEFT JOIN clientes.MLEspecies e ON m.esp = e.id LEFT JOIN clientes.MLPelajes p ON "
            "m.pel = p.id LEFT JOIN clientes.CLLocalidad l ON c.loc = l.id WHERE m.nom LIKE '%"
                + text.toStdString() + "%' ORDER BY m.nom COLLATE NOCASE, c.ayn COLLATE NOCASE",
            u"at most 1.5"_s);
    }
}

// --- Rules while typing ----------------------------------------------------------------------

// The slowest criterion, with texts found in most rows, in some and in none.
void measureSearches(const Measure &m)
{
    for (const clients::Search search : {clients::Search::Patients, clients::Search::Clientes}) {
        QString which;
        double worst = 0;
        const auto criteria = clients::criteriaOf(search);
        for (int i = 0; i < int(criteria.size()); ++i) {
            const bool siNo = criteria[size_t(i)].siNo;
            for (const QString &text :
                 siNo ? QStringList{u"1"_s, u"2"_s}
                      : QStringList{u"a"_s, u"gar"_s, u"lun"_s, u"98100001"_s, u"xyz"_s}) {
                const clients::Conditions c{clients::Condition{i, text}, clients::Condition{}};
                clients::findWhileTyping(m.s, search, c);
                std::vector<double> ms;
                for (int n = 0; n < m.runs; ++n)
                    ms.push_back(milliseconds([&] { clients::findWhileTyping(m.s, search, c); }));
                if (const double one = median(ms); one > worst) {
                    worst = one;
                    which = m.s(criteria[size_t(i)].name) + u" \""_s + text + u'"';
                }
            }
        }
        line(u"search while typing (ms): "_s + which, numberOf(worst, 1), u"-"_s, u"-"_s, Frame);
    }
}

void measureIndex(const Measure &m)
{
    std::vector<double> ms;
    double kilobytes = 0;
    for (int i = 0; i < m.runs; ++i) {
        clients::QuickIndex index;
        ms.push_back(milliseconds([&] { index.bringUpToDate(m.s); }));
        kilobytes = double(index.bytes()) / 1024;
    }
    line(u"quick find: making its index (ms)"_s, numberOf(median(ms), 1), u"-"_s, u"-"_s,
         u"under 100"_s);
    line(u"quick find: its index (kB)"_s, numberOf(kilobytes, 0), u"-"_s, u"-"_s, u"under 5000"_s);
}

// --- Forms -----------------------------------------------------------------------------------

struct Screen {
    explicit Screen(Sesion &s) { clients::registerClientForms(s, forms); }

    ui::FormRegistry forms;

    ui::FormBase *open(const QString &name)
    {
        ui::FormBase *form = forms.load(name);
        if (!form)
            throw std::runtime_error("no form " + name.toStdString());
        form->opened({});
        form->show(); // a modal one is not waited for
        return form;
    }
};

// Milliseconds until the event loop is idle.
double untilRest(const std::function<void()> &f)
{
    return milliseconds([&] {
        f();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    });
}

void measureOpening(const Measure &m)
{
    std::vector<double> ms;
    for (int i = 0; i < m.runs; ++i) {
        m.s.IdGlobal = {1 + i * 1000, 0};
        Screen screen(m.s);
        ms.push_back(untilRest([&] { screen.open(u"frmPropietarios"_s); }));
    }
    line(u"registry: from the click to its picture (ms)"_s, numberOf(median(ms), 0), u"-"_s,
         numberOf(*std::ranges::max_element(ms), 0), u"under 150"_s);
}

// How long one key kept the user waiting.
struct Key {
    double toRest = 0; // from the press until the event loop is idle
    double after = 0;  // longest delay caused later by a timer of the form
};

std::vector<Key> type(QWidget *box, const QString &text)
{
    std::vector<Key> keys;
    for (const QChar c : text) {
        Key &key = keys.emplace_back();
        key.toRest = untilRest([&] {
            QKeyEvent low(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
            QKeyEvent raises(QEvent::KeyRelease, 0, Qt::NoModifier, QString(c));
            QCoreApplication::sendEvent(box, &low);
            QCoreApplication::sendEvent(box, &raises);
        });
        QElapsedTimer reloj;
        reloj.start();
        while (reloj.elapsed() < 180) {
            QThread::msleep(2);
            key.after = std::max(key.after, untilRest([] {}));
        }
    }
    return keys;
}

template <typename W>
W *control(QWidget *form, const QString &name)
{
    auto *control = form->findChild<W *>(name);
    if (!control)
        throw std::runtime_error("no control " + name.toStdString());
    return control;
}

// Takes the median of each key's runs and prints the median and the maximum over all keys.
void keysLine(const QString &what, const std::vector<std::vector<Key>> &runs)
{
    std::vector<double> toRest, all;
    for (size_t k = 0; k < runs.front().size(); ++k) {
        std::vector<double> one, after;
        for (const std::vector<Key> &run : runs) {
            one.push_back(run[k].toRest);
            after.push_back(run[k].after);
        }
        toRest.push_back(median(one));
        all.push_back(std::max(median(one), median(after)));
    }
    line(u"keys in "_s + what + u" (ms)"_s, numberOf(median(toRest), 1), u"-"_s,
         u"worst "_s + numberOf(*std::ranges::max_element(all), 1), Frame);
}

void measureKeys(const Measure &m)
{
    Screen screen(m.s);
    const auto keys = [&](ui::FormBase *form, const QString &what, QLineEdit *box,
                          const QStringList &texts) {
        form->activateWindow();
        box->setFocus();
        QCoreApplication::processEvents();
        std::vector<std::vector<Key>> runs;
        for (int i = 0; i < m.runs; ++i) {
            std::vector<Key> &run = runs.emplace_back();
            for (const QString &text : texts) {
                std::ranges::move(type(box, text), std::back_inserter(run));
                box->clear();
                untilRest([] {});
            }
        }
        keysLine(what, runs);
    };

    m.s.IdGlobal = {1, 0};
    ui::FormBase *registry = screen.open(u"frmPropietarios"_s);
    keys(registry, u"Txtapellidob"_s, control<QLineEdit>(registry, u"Txtapellidob"_s),
         {u"sergio garcía"_s, u"4512345"_s, u"9999"_s, u"zzz"_s});
    control<QPushButton>(registry, u"cmdmodificar"_s)->click();
    keys(registry, u"cmbloc"_s, control<QComboBox>(registry, u"cmbloc"_s)->lineEdit(),
         {u"barrio 12"_s, u"nuevo"_s});
    control<QPushButton>(registry, u"cmdmodificar"_s)->click(); // gives it up
    registry->hide();

    ui::FormBase *search = screen.open(u"frmBusquedaMascotas"_s);
    keys(search, u"frmBusquedaMascotas"_s, control<QLineEdit>(search, u"txtTextoUno"_s),
         {u"luna"_s, u"xyz"_s});
    control<QComboBox>(search, u"cmbCriterioUno"_s)->setCurrentIndex(6);
    keys(search, u"the same, by owner"_s, control<QLineEdit>(search, u"txtTextoUno"_s),
         {u"garcía"_s, u"xyz"_s});
    search->hide();

    ui::FormBase *quick = screen.open(u"frmBusquedaRapida"_s);
    keys(quick, u"frmBusquedaRapida"_s, control<QLineEdit>(quick, u"txtBuscar"_s),
         {u"gar luna"_s, u"4512345"_s, u"9999"_s, u"ana a"_s});
    quick->hide();
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
        ui::applyTheme(app, 1);
        MeasureSession measure(args[1], QDate::fromString(args[2], Qt::ISODate));
        const Measure m{measure.s, args[1], std::max(1, args[3].toInt())};
        measureRows(m);
        measureOpening(m);
        measureSearches(m);
        measureIndex(m);
        measureKeys(m);
    } catch (const std::exception &e) {
        QTextStream(stderr) << e.what() << '\n';
        return 1;
    }
    return 0;
}
