#include "agenda/frmagenda.h"

#include "agenda/calendar_file.h"
#include "agenda/day_sheet.h"
#include "agenda/frmagenda_look.h"
#include "agenda/hours_layout.h"
#include "agenda/hours_view.h"
#include "agenda/task_texts.h"
#include "agenda/tasks.h"
#include "store/lookups.h"
#include "texts/agenda.h"
#include "texts/texts.h"
#include "ui/day_box.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"

#include <QMenu>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>
#include <algorithm>

using namespace agenda;
using namespace Qt::StringLiterals;

namespace
{

constexpr int DayMode = 1, OwnMode = 2;
constexpr int Quarter = 15;
constexpr int IdColumn = 4;
constexpr int LettersOfFile = 60; // of a file name, since a user's note may be too long for one

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

frmagenda::frmagenda(Sesion &s, ui::FormRegistry &forms, QWidget *parent)
    : ui::FormBase(s, u"frmagenda"_s, parent), m_forms(forms), m_day(s.reloj.hoy)
{
    setWindowFlags(Qt::Window);
    build();
    wire();
}

void frmagenda::wire()
{
    connect(dtpAgenda, &ui::DayBox::dayChanged, this, &frmagenda::showDay);
    connect(cmdAnterior, &QPushButton::clicked, this,
            [this] { showDay(m_day.addDays(cmdSemana->isChecked() ? -7 : -1)); });
    connect(cmdSiguiente, &QPushButton::clicked, this,
            [this] { showDay(m_day.addDays(cmdSemana->isChecked() ? 7 : 1)); });
    connect(cmdHoy, &QPushButton::clicked, this, [this] { showDay(m_s.reloj.hoy); });
    for (QPushButton *b : {cmdDia, cmdSemana})
        connect(b, &QPushButton::clicked, this, [this] { guarded([this] { reload(); }); });

    connect(GAgenda, &ui::Grid::changedRow, this, &frmagenda::rowChanged);
    connect(GAgenda, &ui::Grid::chosenRow, this, [this](int row) { openPatient(idOfRow(row)); });
    connect(hoursOf, &HoursView::chosenTask, this, &frmagenda::taskChosen);
    connect(hoursOf, &HoursView::chosenDay, this, &frmagenda::showDay);
    connect(hoursOf, &HoursView::requestedDay, this, &frmagenda::showDay);
    connect(hoursOf, &HoursView::takenTask, this, &frmagenda::openPatient);
    connect(hoursOf, &HoursView::freeHourTaken, this, &frmagenda::newTask);
    connect(hoursOf, &HoursView::movedTask, this, [this](int id, QDate dia, QTime hour) {
        move({{id, dia, hour}});
    });

    connect(cmdNuevaTarea, &QPushButton::clicked, this, [this] { newTask(); });
    connect(cmdTareaRealizada, &QPushButton::clicked, this, &frmagenda::toggleDone);
    connect(cmdEliminar, &QPushButton::clicked, this, &frmagenda::remove);
    connect(cmdPasarTarea, &QPushButton::clicked, this, &frmagenda::delay);
    // On purpose: today's sheet whatever day is shown, because that is the one on the wall.
    connect(cmdImprimir, &QPushButton::clicked, this,
            [this] { guarded([this] { showAgendaDay(m_s, true, m_s.reloj.hoy, {}); }); });
    connect(cmdvolver, &QPushButton::clicked, this, &frmagenda::reject);
    connect(tabAgenda, &QTabBar::currentChanged, this, [this](int view) {
        m_vistas->setCurrentIndex(view);
        guarded([this] { reload(); });
        Ayu->tell(view == 0 ? m_s(text::AgendaHint) : QString());
    });
    connect(m_model, &QAbstractItemModel::layoutChanged, this, &frmagenda::sizeRows);
    for (QWidget *place : std::initializer_list<QWidget *>{GAgenda, hoursOf})
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
        hoursOf->hasFocus() ? newTask(hoursOf->cursorDay(), hoursOf->cursorHour()) : newTask();
    });
    on(Qt::Key_F5, [this] { guarded([this] { reload(); }); });
}

void frmagenda::opened(const QVariantMap &parameters)
{
    const QDate day = parameters.value(u"dia"_s).toDate();
    m_day = day.isValid() ? day : m_s.reloj.hoy;
    m_before = {};
    dtpPasarTarea->setDay(m_s.reloj.hoy.addDays(1));
    tabAgenda->setCurrentIndex(parameters.value(u"modo"_s, DayMode).toInt() == OwnMode);
    guarded([this] { reload(); });
    if (tabAgenda->currentIndex() == 0) {
        GAgenda->setFocus();
        GAgenda->Seleccionar(rowToBeginWith());
        Ayu->tell(m_s(text::AgendaHint));
    } else {
        GKelvara->setFocus();
    }
}

void frmagenda::activated()
{
    if (m_s.morvane->version("TareasAgenda") != m_version)
        reload();
}

void frmagenda::showDay(QDate dia)
{
    if (!dia.isValid() || dia == m_day)
        return;
    goTo(dia, {current()});
}

void frmagenda::goTo(QDate dia, const QList<int> &selection)
{
    m_day = dia;
    guarded([&] {
        if (m_days.contains(dia) && m_version == m_s.morvane->version("TareasAgenda"))
            show(selection);
        else
            reload(selection);
    });
}

/// Reads the days again. @param selection as for show; the present selection if empty
void frmagenda::reload(const QList<int> &selection)
{
    const qint64 version = m_s.morvane->version("TareasAgenda");
    const QList<QDate> days = cmdSemana->isChecked() ? weekOf(m_day) : QList<QDate>{m_day};
    std::vector<DayTask> tasks;
    for (const QDate day : days)
        std::ranges::move(dayTasks(m_s, day, m_register), std::back_inserter(tasks));
    m_version = version;
    m_days = days;
    m_tasks = std::move(tasks);
    hoursOf->show(m_days, m_tasks);
    show(selection.isEmpty() ? QList{current()} : selection);
    if (tabAgenda->currentIndex() == OwnMode - 1)
        showOwnTasks();
}

/// Lists the day. @param selection tasks to select; the last one becomes the current one
void frmagenda::show(const QList<int> &selection)
{
    m_busy = true;
    {
        const QSignalBlocker silent(dtpAgenda);
        dtpAgenda->setDay(m_day);
    }
    lblDia->setText(QLocale().toString(m_day, QLocale::LongFormat));
    const int before = GAgenda->currentRow();
    std::vector<ui::GridRow> rows;
    for (const DayTask &t : m_tasks)
        if (t.dia == m_day)
            rows.push_back({{t.item, t.hor, t.detail,
                             m_s(t.est ? text::Accomplished : text::NotAccomplished), t.id}});
    m_model->set(std::move(rows));
    sizeRows();
    // The task's new row, else the row where the cursor was.
    const int row = rowOf(selection.last());
    GAgenda->Seleccionar(row >= 0 ? row : std::min(before, m_model->allRows() - 1));
    for (const int id : selection)
        if (const int also = rowOf(id); also >= 0)
            GAgenda->selectionModel()->select(
                m_model->index(also, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    m_busy = false;
    hoursOf->goTo(m_day);
    hoursOf->choose(current());
    arrange();
}

void frmagenda::sizeRows()
{
    for (int row = 0; row < m_model->allRows(); ++row)
        if (const DayTask *t = taskOfRow(row))
            GAgenda->setRowHeight(row, TaskPainter::heightOf(GAgenda->fontMetrics(), *t));
}

/// The row to start on: today the next task, on any other day the first.
int frmagenda::rowToBeginWith() const
{
    for (int row = 0; m_day == m_s.reloj.hoy && row < m_model->allRows(); ++row)
        if (const DayTask *t = taskOfRow(row); t && !t->est && t->hor >= m_s.reloj.hourOf())
            return row;
    return 0;
}

void frmagenda::showOwnTasks()
{
    std::vector<ui::GridRow> rows;
    for (const KelvaraTask &t : kelvaraTasks(m_s))
        rows.push_back({{t.reason, t.addressee, t.medio,
                         m_s(t.done ? text::Accomplished : text::NotAccomplished)}});
    m_modelKelvara->set(std::move(rows));
}

void frmagenda::arrange()
{
    const bool some = current() != 0;
    for (QPushButton *b : {cmdTareaRealizada, cmdEliminar, cmdPasarTarea})
        b->setEnabled(some);
    cmdNuevaTarea->setEnabled(m_forms.exists(u"frmTurnos"_s));
    if (auto *day = m_menu->findChild<QAction *>(u"menuDia"_s))
        day->setEnabled(m_model->allRows() > 0);
    if (auto *one = m_menu->findChild<QAction *>(u"menuTarea"_s))
        one->setEnabled(some);
}

const DayTask *frmagenda::task(int id) const
{
    const auto t = std::ranges::find(m_tasks, id, &DayTask::id);
    return t == m_tasks.end() ? nullptr : &*t;
}

int frmagenda::idOfRow(int row) const { return m_model->Row(row).cells.value(IdColumn).toInt(); }

const DayTask *frmagenda::taskOfRow(int row) const { return task(idOfRow(row)); }

int frmagenda::rowOf(int id) const
{
    for (int row = 0; id != 0 && row < m_model->allRows(); ++row)
        if (idOfRow(row) == id)
            return row;
    return -1;
}

/// The id of the task that keys and buttons act on; 0 for none.
int frmagenda::current() const { return idOfRow(GAgenda->currentRow()); }

/// The ids of the selected tasks, in the order in which they were selected.
QList<int> frmagenda::selectedIds() const
{
    QList<int> ids;
    for (const int row : inItsDirection(GAgenda->selectedRows(), GAgenda->currentRow()))
        ids << idOfRow(row);
    return ids;
}

void frmagenda::rowChanged(int row)
{
    if (m_busy)
        return;
    const DayTask *t = taskOfRow(row);
    hoursOf->choose(t ? t->id : 0);
    tell(t);
    arrange();
}

void frmagenda::taskChosen(int id)
{
    if (m_busy)
        return;
    if (const DayTask *t = task(id); t && t->dia != m_day) {
        goTo(QDate(t->dia), {id}); // a copy, because goTo may replace the tasks
    } else {
        m_busy = true;
        GAgenda->Seleccionar(rowOf(id));
        m_busy = false;
    }
    tell(task(id));
    arrange();
}

/// Shows the full text of a task at the bottom, since it may be cut elsewhere.
void frmagenda::tell(const DayTask *task)
{
    if (!task)
        return Ayu->tell(m_s(text::AgendaHint));
    QString text = task->item + u'\n' + task->detail;
    Ayu->tell(text.replace(u"\n"_s, u"  ·  "_s));
}

bool frmagenda::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && (watched == GAgenda || watched == hoursOf)
        && agendaKey(*static_cast<QKeyEvent *>(event)))
        return true;
    return ui::FormBase::eventFilter(watched, event);
}

bool frmagenda::agendaKey(const QKeyEvent &key)
{
    const auto modifiers = key.modifiers() & ~Qt::KeypadModifier;
    if (modifiers == Qt::AltModifier)
        return moveKey(key);
    if (modifiers != Qt::NoModifier)
        return false;
    switch (key.key()) {
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

/// Moves all selected tasks by a day or a quarter of an hour.
bool frmagenda::moveKey(const QKeyEvent &key)
{
    const bool days = key.key() == Qt::Key_Left || key.key() == Qt::Key_Right;
    if (!days && key.key() != Qt::Key_Up && key.key() != Qt::Key_Down)
        return false;
    const int step = key.key() == Qt::Key_Left || key.key() == Qt::Key_Up ? -1 : 1;
    std::vector<Target> goals;
    bool some = false;
    for (const int id : selectedIds()) {
        const DayTask *t = task(id);
        if (!t)
            continue;
        Target goal{id, t->dia.addDays(days ? step : 0), {}};
        if (!days && t->hor.isValid()) {
            const int minute = dayMinute(t->hor) + step * Quarter;
            if (minute < 0 || minute >= agenda::DayMinutes)
                return true; // one would leave the day: none moves, so that all keep their distance
            goal.hour = {minute / 60, minute % 60};
        }
        some = some || days || goal.hour.isValid();
        goals.push_back(goal);
    }
    if (some)
        move(goals);
    return true;
}

void frmagenda::move(const std::vector<Target> &targets)
{
    guarded([&] {
        const std::vector<Spot> before = moveTasks(m_s, targets);
        if (before.empty()) {
            if (!m_s.user.isCommon())
                Ayu->faultOf(m_s(text::TaskIsGone));
            return reload();
        }
        m_before = before;
        m_day = targets.back().dia; // show the day they moved to
        tellMoved(before, u".  "_s + m_s(text::UndoHint));
    });
}

void frmagenda::takeBack()
{
    if (m_before.empty())
        return;
    const std::vector<Spot> before = std::exchange(m_before, {});
    guarded([&] {
        if (!giveBackTasks(m_s, before)) {
            if (!m_s.user.isCommon())
                Ayu->faultOf(m_s(text::TaskIsGone));
            return reload();
        }
        m_day = before.back().dia;
        tellMoved(before, {});
    });
}

/// Selects the moved tasks and says where the last of them is now.
void frmagenda::tellMoved(const std::vector<Spot> &before, const QString &mas)
{
    QList<int> ids;
    for (const Spot &spot : before)
        ids << spot.id;
    reload(ids);
    const DayTask *t = task(ids.last());
    if (!t)
        return;
    Ayu->success(movement(*t, ids.size()) + placeOf(t->dia, t->hor) + mas);
}

/// The start of that message, such as "Moved: Toby, A check (+2) → ".
QString frmagenda::movement(const DayTask &last, qsizetype count) const
{
    const QString others = count > 1 ? u" (+%1)"_s.arg(count - 1) : QString();
    return m_s(text::AgendaMoved) + u' ' + taskSubject(last) + others + u" → "_s;
}

void frmagenda::delay()
{
    if (!dtpPasarTarea->commit())
        return dtpPasarTarea->setFocus();
    const int row = GAgenda->selectedRows().value(0);
    const QDate day = dtpPasarTarea->day();
    guarded([&] {
        const auto before = passTasks(m_s, selectedIds(), day);
        if (!before)
            return;
        const DayTask *t = before->empty() ? nullptr : task(before->back().id);
        const QString told = t ? movement(*t, qsizetype(before->size())) : QString();
        leaveList(row);
        m_before = *before;
        if (before->empty())
            Ayu->faultOf(m_s(text::TaskIsGone));
        else if (!told.isEmpty())
            Ayu->success(told + placeOf(day, {}) + u".  "_s + m_s(text::UndoHint));
    });
}

void frmagenda::remove()
{
    const int row = GAgenda->selectedRows().value(0);
    guarded([&] {
        if (deleteTasks(m_s, selectedIds()))
            leaveList(row);
    });
}

/// After rows have gone, selects the one that followed them. @param row the first that has gone
void frmagenda::leaveList(int row)
{
    m_before = {};
    reload();
    GAgenda->Seleccionar(std::min(row, m_model->allRows() - 1));
    GAgenda->setFocus();
    tell(taskOfRow(GAgenda->currentRow()));
}

void frmagenda::toggleDone()
{
    const int id = current();
    if (id == 0)
        return;
    guarded([&] {
        agenda::toggleDone(m_s, id);
        reload();
        if (!task(id))
            Ayu->faultOf(m_s(text::TaskIsGone));
    });
}

void frmagenda::newTask(QDate dia, QTime hour)
{
    if (!dia.isValid())
        dia = std::max(m_day, m_s.reloj.hoy); // nothing is booked on a past day
    QVariantMap parameters{{u"ida"_s, m_s.IdGlobal.idm}, {u"dia"_s, dia}};
    if (hour.isValid())
        parameters.insert(u"hora"_s, hour);
    guarded([&] {
        m_forms.open(u"frmTurnos"_s, parameters);
        const auto known = [this](const DayTask &t) { return t.id; };
        QList<int> before;
        std::ranges::transform(m_tasks, std::back_inserter(before), known);
        reload();
        for (const DayTask &t : m_tasks)
            if (!before.contains(t.id) && t.dia == m_day)
                GAgenda->Seleccionar(rowOf(t.id));
    });
}

/// Opens the patient's record, which is what users want next when a task is due.
void frmagenda::openPatient(int id)
{
    const DayTask *t = task(id);
    if (!t || taskSubject(t->tip) != Subject::Patient || t->patient.isEmpty()
        || !m_forms.exists(u"frmPropietarios"_s))
        return;
    guarded([&] {
        const int idc = LeerCampo(m_s, "clientes", "mascotas", t->ida, "idc").toInt();
        m_s.IdGlobal = {idc, t->ida};
        m_forms.open(u"frmPropietarios"_s);
    });
}

void frmagenda::exportDay()
{
    std::vector<DayTask> tasks;
    std::ranges::copy_if(m_tasks, std::back_inserter(tasks),
                         [this](const DayTask &t) { return t.dia == m_day; });
    saveCalendar(text::SaveDay, tasks, m_s(text::Agenda));
}

void frmagenda::exportTask()
{
    if (const DayTask *t = task(current()))
        saveCalendar(text::SaveTask, {*t}, taskSubject(*t));
}

void frmagenda::saveCalendar(int title, const std::vector<DayTask> &tasks, const QString &name)
{
    QString offered;
    for (const QChar c : name.left(LettersOfFile))
        offered += c.isLetterOrNumber() || c == u'-' ? c : QChar(u' ');
    auto file = m_s.dialogos.saveFile(
        m_s(title), offered.simplified() + u' ' + m_day.toString(Qt::ISODate) + u".ics"_s,
        m_s(text::CalendarFilter));
    if (!file)
        return;
    if (!file->endsWith(u".ics"_s, Qt::CaseInsensitive))
        *file += u".ics"_s;
    if (guarded([&] { agenda::saveCalendar(m_s, tasks, *file); }))
        Ayu->success(m_s(text::CalendarSaved) + u' ' + *file);
}
