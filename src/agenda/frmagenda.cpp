#include "agenda/frmagenda.h"

#include "agenda/calendar_file.h"
#include "agenda/day_sheet.h"
#include "agenda/frmagenda_look.h"
#include "agenda/hours_layout.h"
#include "agenda/hours_view.h"
#include "agenda/task_texts.h"
#include "store/lookups.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"

#include <QMenu>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Realizada = 1121,
    NoRealizada = 1122,
    Titulo = 9906,
    GuardarDia = 9918,
    GuardarTarea = 9919,
    FiltroDeCalendario = 9920,
    SeGuardo = 9921,
    Consejo = 9928,
    SeMovio = 9929,
    SeDeshace = 9930,
    YaNoExiste = 9948,
};

constexpr int dayMode = 1, ownMode = 2;
constexpr int quarter = 15;
constexpr int minutesOfDay = 24 * 60;
constexpr int idColumn = 4;
constexpr int lettersOfFile = 60; // a user's note may be too long for the name of one

QList<QDate> weekOf(QDate day)
{
    const int back = (day.dayOfWeek() - QLocale().firstDayOfWeek() + 7) % 7;
    QList<QDate> days;
    for (int i = 0; i < 7; ++i)
        days << day.addDays(i - back);
    return days;
}

QString placeOf(QDate day, QTime hour)
{
    const QString date = QLocale().toString(day, QLocale::LongFormat);
    return hour.isValid() ? date + u", "_s + hour.toString(u"HH:mm") : date;
}

} // namespace

frmagenda::frmagenda(Sesion &s, Formularios &formularios, QWidget *parent)
    : FormBase(s, u"frmagenda"_s, parent), m_formularios(formularios), m_dia(s.reloj.hoy)
{
    setWindowFlags(Qt::Window);
    build();
    wire();
}

void frmagenda::wire()
{
    connect(dtpAgenda, &QDateEdit::dateChanged, this, &frmagenda::showDay);
    connect(cmdAnterior, &QPushButton::clicked, this,
            [this] { showDay(m_dia.addDays(cmdSemana->isChecked() ? -7 : -1)); });
    connect(cmdSiguiente, &QPushButton::clicked, this,
            [this] { showDay(m_dia.addDays(cmdSemana->isChecked() ? 7 : 1)); });
    connect(cmdHoy, &QPushButton::clicked, this, [this] { showDay(m_s.reloj.hoy); });
    for (QPushButton *b : {cmdDia, cmdSemana})
        connect(b, &QPushButton::clicked, this, [this] { guarded([this] { reload(); }); });

    connect(GAgenda, &Grilla::filaCambiada, this, &frmagenda::rowChanged);
    connect(GAgenda, &Grilla::filaElegida, this, [this](int fila) { openPatient(idOfRow(fila)); });
    connect(Horas, &VistaDeHoras::tareaElegida, this, &frmagenda::taskChosen);
    connect(Horas, &VistaDeHoras::diaElegido, this, &frmagenda::showDay);
    connect(Horas, &VistaDeHoras::diaPedido, this, &frmagenda::showDay);
    connect(Horas, &VistaDeHoras::tareaTomada, this, &frmagenda::openPatient);
    connect(Horas, &VistaDeHoras::horaLibreTomada, this, &frmagenda::newTask);
    connect(Horas, &VistaDeHoras::tareaMovida, this, [this](int id, QDate dia, QTime hora) {
        move({{id, dia, hora}});
    });

    connect(cmdNuevaTarea, &QPushButton::clicked, this, [this] { newTask(); });
    connect(cmdTareaRealizada, &QPushButton::clicked, this, &frmagenda::toggleDone);
    connect(cmdEliminar, &QPushButton::clicked, this, &frmagenda::remove);
    connect(cmdPasarTarea, &QPushButton::clicked, this, &frmagenda::delay);
    // Today's sheet whatever day is shown, on purpose: it is the one that hangs on the wall.
    connect(cmdImprimir, &QPushButton::clicked, this,
            [this] { guarded([this] { MostrarAgendaDia(m_s, true, m_s.reloj.hoy, {}); }); });
    connect(cmdvolver, &QPushButton::clicked, this, &frmagenda::reject);
    connect(tabAgenda, &QTabBar::currentChanged, this, [this](int view) {
        m_vistas->setCurrentIndex(view);
        guarded([this] { reload(); });
        Ayu->Decir(view == 0 ? m_s(Consejo) : QString());
    });
    connect(m_modelo, &QAbstractItemModel::layoutChanged, this, &frmagenda::sizeRows);
    for (QWidget *place : std::initializer_list<QWidget *>{GAgenda, Horas})
        place->installEventFilter(this);
    wireShortcuts();
}

void frmagenda::wireShortcuts()
{
    const auto on = [this](const QKeySequence &keys, auto what) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, what);
    };
    on(Qt::CTRL | Qt::Key_PageUp, [this] { cmdAnterior->click(); });
    on(Qt::CTRL | Qt::Key_PageDown, [this] { cmdSiguiente->click(); });
    on(Qt::CTRL | Qt::Key_Home, [this] { cmdHoy->click(); });
    on(Qt::CTRL | Qt::Key_Tab,
       [this] { tabAgenda->setCurrentIndex(1 - tabAgenda->currentIndex()); });
    on(Qt::CTRL | Qt::Key_P, [this] { cmdImprimir->click(); });
    on(Qt::CTRL | Qt::Key_Z, [this] { takeBack(); });
    on(Qt::Key_Insert, [this] {
        Horas->hasFocus() ? newTask(Horas->DiaDelCursor(), Horas->HoraDelCursor()) : newTask();
    });
    on(Qt::Key_F5, [this] { guarded([this] { reload(); }); });
}

void frmagenda::opened(const QVariantMap &parametros)
{
    const QDate day = parametros.value(u"dia"_s).toDate();
    m_dia = day.isValid() ? day : m_s.reloj.hoy;
    m_antes = {};
    dtpPasarTarea->setDate(m_s.reloj.hoy.addDays(1));
    tabAgenda->setCurrentIndex(parametros.value(u"modo"_s, dayMode).toInt() == ownMode);
    guarded([this] { reload(); });
    if (tabAgenda->currentIndex() == 0) {
        GAgenda->setFocus();
        GAgenda->Seleccionar(rowToBeginWith());
        Ayu->Decir(m_s(Consejo));
    } else {
        GKelvara->setFocus();
    }
}

void frmagenda::activated()
{
    if (m_s.morvane->Version("TareasAgenda") != m_version)
        reload();
}

void frmagenda::showDay(QDate dia)
{
    if (!dia.isValid() || dia == m_dia)
        return;
    goTo(dia, {current()});
}

void frmagenda::goTo(QDate dia, const QList<int> &seleccion)
{
    m_dia = dia;
    guarded([&] {
        if (m_dias.contains(dia) && m_version == m_s.morvane->Version("TareasAgenda"))
            show(seleccion);
        else
            reload(seleccion);
    });
}

/// Reads the days anew. @param seleccion as of show; what is selected without it
void frmagenda::reload(const QList<int> &seleccion)
{
    const qint64 version = m_s.morvane->Version("TareasAgenda");
    const QList<QDate> days = cmdSemana->isChecked() ? weekOf(m_dia) : QList<QDate>{m_dia};
    std::vector<TareaDelDia> tasks;
    for (const QDate day : days)
        std::ranges::move(TareasDelDia(m_s, day, m_fichero), std::back_inserter(tasks));
    m_version = version;
    m_dias = days;
    m_tareas = std::move(tasks);
    Horas->Mostrar(m_dias, m_tareas);
    show(seleccion.isEmpty() ? QList{current()} : seleccion);
    if (tabAgenda->currentIndex() == ownMode - 1)
        showOwnTasks();
}

/// Lists the day. @param seleccion tasks to select, the last of them as the current one
void frmagenda::show(const QList<int> &seleccion)
{
    m_ocupado = true;
    {
        const QSignalBlocker silent(dtpAgenda);
        dtpAgenda->setDate(m_dia);
    }
    lblDia->setText(QLocale().toString(m_dia, QLocale::LongFormat));
    const int before = GAgenda->FilaActual();
    std::vector<FilaDeGrilla> rows;
    for (const TareaDelDia &t : m_tareas)
        if (t.dia == m_dia)
            rows.push_back(
                {{t.concepto, t.hor, t.detalle, m_s(t.est ? Realizada : NoRealizada), t.id}});
    m_modelo->Poner(std::move(rows));
    sizeRows();
    // Where the task stands now, else where the cursor was.
    const int row = rowOf(seleccion.last());
    GAgenda->Seleccionar(row >= 0 ? row : std::min(before, m_modelo->Filas() - 1));
    for (const int id : seleccion)
        if (const int also = rowOf(id); also >= 0)
            GAgenda->selectionModel()->select(
                m_modelo->index(also, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    m_ocupado = false;
    Horas->IrA(m_dia);
    Horas->Elegir(current());
    arrange();
}

void frmagenda::sizeRows()
{
    for (int row = 0; row < m_modelo->Filas(); ++row)
        if (const TareaDelDia *t = taskOfRow(row))
            GAgenda->setRowHeight(row, PintorDeTarea::Alto(GAgenda->fontMetrics(), *t));
}

/// Today what comes next, on any other day the first.
int frmagenda::rowToBeginWith() const
{
    for (int row = 0; m_dia == m_s.reloj.hoy && row < m_modelo->Filas(); ++row)
        if (const TareaDelDia *t = taskOfRow(row); t && !t->est && t->hor >= m_s.reloj.Hora())
            return row;
    return 0;
}

void frmagenda::showOwnTasks()
{
    std::vector<FilaDeGrilla> rows;
    for (const TareaDeKelvara &t : TareasDeKelvara(m_s))
        rows.push_back(
            {{t.motivo, t.destinatario, t.medio, m_s(t.realizada ? Realizada : NoRealizada)}});
    m_modeloKelvara->Poner(std::move(rows));
}

void frmagenda::arrange()
{
    const bool some = current() != 0;
    for (QPushButton *b : {cmdTareaRealizada, cmdEliminar, cmdPasarTarea})
        b->setEnabled(some);
    cmdNuevaTarea->setEnabled(m_formularios.Existe(u"frmTurnos"_s));
    if (auto *day = m_menu->findChild<QAction *>(u"menuDia"_s))
        day->setEnabled(m_modelo->Filas() > 0);
    if (auto *one = m_menu->findChild<QAction *>(u"menuTarea"_s))
        one->setEnabled(some);
}

const TareaDelDia *frmagenda::task(int id) const
{
    const auto t = std::ranges::find(m_tareas, id, &TareaDelDia::id);
    return t == m_tareas.end() ? nullptr : &*t;
}

int frmagenda::idOfRow(int fila) const
{
    return m_modelo->Fila(fila).celdas.value(idColumn).toInt();
}

const TareaDelDia *frmagenda::taskOfRow(int fila) const { return task(idOfRow(fila)); }

int frmagenda::rowOf(int id) const
{
    for (int row = 0; id != 0 && row < m_modelo->Filas(); ++row)
        if (idOfRow(row) == id)
            return row;
    return -1;
}

/// The task that keys and buttons act on; 0 for none.
int frmagenda::current() const { return idOfRow(GAgenda->FilaActual()); }

/// The selected tasks in the direction of the selection.
QList<int> frmagenda::selectedIds() const
{
    QList<int> ids;
    for (const int row : EnSuSentido(GAgenda->FilasSeleccionadas(), GAgenda->FilaActual()))
        ids << idOfRow(row);
    return ids;
}

void frmagenda::rowChanged(int fila)
{
    if (m_ocupado)
        return;
    const TareaDelDia *t = taskOfRow(fila);
    Horas->Elegir(t ? t->id : 0);
    tell(t);
    arrange();
}

void frmagenda::taskChosen(int id)
{
    if (m_ocupado)
        return;
    if (const TareaDelDia *t = task(id); t && t->dia != m_dia) {
        goTo(QDate(t->dia), {id}); // a copy: the tasks may be read anew
    } else {
        m_ocupado = true;
        GAgenda->Seleccionar(rowOf(id));
        m_ocupado = false;
    }
    tell(task(id));
    arrange();
}

/// The whole of a task at the foot, whatever is cut where it stands.
void frmagenda::tell(const TareaDelDia *tarea)
{
    if (!tarea)
        return Ayu->Decir(m_s(Consejo));
    QString text = tarea->concepto + u'\n' + tarea->detalle;
    Ayu->Decir(text.replace(u"\n"_s, u"  ·  "_s));
}

bool frmagenda::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && (watched == GAgenda || watched == Horas)
        && agendaKey(*static_cast<QKeyEvent *>(event)))
        return true;
    return FormBase::eventFilter(watched, event);
}

bool frmagenda::agendaKey(const QKeyEvent &tecla)
{
    const auto modifiers = tecla.modifiers() & ~Qt::KeypadModifier;
    if (modifiers == Qt::AltModifier)
        return moveKey(tecla);
    if (modifiers != Qt::NoModifier)
        return false;
    switch (tecla.key()) {
    case Qt::Key_Space:
        cmdTareaRealizada->click();
        return true;
    case Qt::Key_Delete:
        cmdEliminar->click();
        return true;
    default:
        return false;
    }
}

/// Moves all that is selected, by a day or a quarter of an hour.
bool frmagenda::moveKey(const QKeyEvent &tecla)
{
    const bool days = tecla.key() == Qt::Key_Left || tecla.key() == Qt::Key_Right;
    if (!days && tecla.key() != Qt::Key_Up && tecla.key() != Qt::Key_Down)
        return false;
    const int step = tecla.key() == Qt::Key_Left || tecla.key() == Qt::Key_Up ? -1 : 1;
    std::vector<Destino> goals;
    bool some = false;
    for (const int id : selectedIds()) {
        const TareaDelDia *t = task(id);
        if (!t)
            continue;
        Destino goal{id, t->dia.addDays(days ? step : 0), {}};
        if (!days && t->hor.isValid()) {
            const int minute = MinutoDelDia(t->hor) + step * quarter;
            if (minute < 0 || minute >= minutesOfDay)
                return true; // all keep their distance
            goal.hora = {minute / 60, minute % 60};
        }
        some = some || days || goal.hora.isValid();
        goals.push_back(goal);
    }
    if (some)
        move(goals);
    return true;
}

void frmagenda::move(const std::vector<Destino> &destinos)
{
    guarded([&] {
        const std::vector<Sitio> before = MoverTareas(m_s, destinos);
        if (before.empty()) {
            if (!m_s.usuario.EsComun())
                Ayu->Fallo(m_s(YaNoExiste));
            return reload();
        }
        m_antes = before;
        m_dia = destinos.back().dia; // the eye follows
        tellMoved(before, u".  "_s + m_s(SeDeshace));
    });
}

void frmagenda::takeBack()
{
    if (m_antes.empty())
        return;
    const std::vector<Sitio> before = std::exchange(m_antes, {});
    guarded([&] {
        if (!DevolverTareas(m_s, before)) {
            if (!m_s.usuario.EsComun())
                Ayu->Fallo(m_s(YaNoExiste));
            return reload();
        }
        m_dia = before.back().dia;
        tellMoved(before, {});
    });
}

/// Selects what was moved, and says where the last of it stands now.
void frmagenda::tellMoved(const std::vector<Sitio> &antes, const QString &mas)
{
    QList<int> ids;
    for (const Sitio &sitio : antes)
        ids << sitio.id;
    reload(ids);
    const TareaDelDia *t = task(ids.last());
    if (!t)
        return;
    Ayu->Logro(movement(*t, ids.size()) + placeOf(t->dia, t->hor) + mas);
}

/// "Moved: Toby, A check (+2) → "
QString frmagenda::movement(const TareaDelDia &ultima, qsizetype cuantas) const
{
    const QString others = cuantas > 1 ? u" (+%1)"_s.arg(cuantas - 1) : QString();
    return m_s(SeMovio) + u' ' + AsuntoDeTarea(ultima) + others + u" → "_s;
}

void frmagenda::delay()
{
    const int row = GAgenda->FilasSeleccionadas().value(0);
    const QDate day = dtpPasarTarea->Dia();
    guarded([&] {
        const auto before = PasarTareas(m_s, selectedIds(), day);
        if (!before)
            return;
        const TareaDelDia *t = before->empty() ? nullptr : task(before->back().id);
        const QString told = t ? movement(*t, qsizetype(before->size())) : QString();
        leaveList(row);
        m_antes = *before;
        if (before->empty())
            Ayu->Fallo(m_s(YaNoExiste));
        else if (!told.isEmpty())
            Ayu->Logro(told + placeOf(day, {}) + u".  "_s + m_s(SeDeshace));
    });
}

void frmagenda::remove()
{
    const int row = GAgenda->FilasSeleccionadas().value(0);
    guarded([&] {
        if (EliminarTareas(m_s, selectedIds()))
            leaveList(row);
    });
}

/// Rows have gone: the next one takes the place of the first.
void frmagenda::leaveList(int fila)
{
    m_antes = {};
    reload();
    GAgenda->Seleccionar(std::min(fila, m_modelo->Filas() - 1));
    GAgenda->setFocus();
    tell(taskOfRow(GAgenda->FilaActual()));
}

void frmagenda::toggleDone()
{
    const int id = current();
    if (id == 0)
        return;
    guarded([&] {
        AlternarRealizada(m_s, id);
        reload();
        if (!task(id))
            Ayu->Fallo(m_s(YaNoExiste));
    });
}

void frmagenda::newTask(QDate dia, QTime hora)
{
    if (!dia.isValid())
        dia = std::max(m_dia, m_s.reloj.hoy); // nothing is planned for a day that is over
    QVariantMap parameters{{u"ida"_s, m_s.IdGlobal.idm}, {u"dia"_s, dia}};
    if (hora.isValid())
        parameters.insert(u"hora"_s, hora);
    guarded([&] {
        m_formularios.Abrir(u"frmTurnos"_s, parameters);
        const auto known = [this](const TareaDelDia &t) { return t.id; };
        QList<int> before;
        std::ranges::transform(m_tareas, std::back_inserter(before), known);
        reload();
        for (const TareaDelDia &t : m_tareas)
            if (!before.contains(t.id) && t.dia == m_dia)
                GAgenda->Seleccionar(rowOf(t.id));
    });
}

/// To the record's owner: what one wants next of a task that is due.
void frmagenda::openPatient(int id)
{
    const TareaDelDia *t = task(id);
    if (!t || SujetoDeTarea(t->tip) != Sujeto::Paciente || t->paciente.isEmpty()
        || !m_formularios.Existe(u"frmPropietarios"_s))
        return;
    guarded([&] {
        const int idc = LeerCampo(m_s, "clientes", "mascotas", t->ida, "idc").toInt();
        m_s.IdGlobal = {idc, t->ida};
        m_formularios.Abrir(u"frmPropietarios"_s);
    });
}

void frmagenda::exportDay()
{
    std::vector<TareaDelDia> tasks;
    std::ranges::copy_if(m_tareas, std::back_inserter(tasks),
                         [this](const TareaDelDia &t) { return t.dia == m_dia; });
    saveCalendar(GuardarDia, tasks, m_s(Titulo));
}

void frmagenda::exportTask()
{
    if (const TareaDelDia *t = task(current()))
        saveCalendar(GuardarTarea, {*t}, AsuntoDeTarea(*t));
}

void frmagenda::saveCalendar(int titulo, const std::vector<TareaDelDia> &tareas,
                             const QString &nombre)
{
    QString offered;
    for (const QChar c : nombre.left(lettersOfFile))
        offered += c.isLetterOrNumber() || c == u'-' ? c : QChar(u' ');
    auto file = m_s.dialogos.GuardarArchivo(
        m_s(titulo), offered.simplified() + u' ' + m_dia.toString(Qt::ISODate) + u".ics"_s,
        m_s(FiltroDeCalendario));
    if (!file)
        return;
    if (!file->endsWith(u".ics"_s, Qt::CaseInsensitive))
        *file += u".ics"_s;
    if (guarded([&] { GuardarCalendario(m_s, tareas, *file); }))
        Ayu->Logro(m_s(SeGuardo) + u' ' + *file);
}
