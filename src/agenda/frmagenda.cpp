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
constexpr int LettersOfFile = 60; // of a file name, since a user's note may be too long for one

QString placeOf(QDate day, QTime hour)
{
    const QString date = QLocale().toString(day, QLocale::LongFormat);
    return hour.isValid() ? date + u", "_s + hour.toString(u"HH:mm") : date;
}

} // namespace

frmagenda::frmagenda(Sesion &s, ui::FormRegistry &forms, QWidget *parent)
    : ui::FormBase(s, u"frmagenda"_s, parent), m_forms(forms), m_open(s)
{
    setWindowFlags(Qt::Window);
    build();
    wire();
}

void frmagenda::wire()
{
    connect(dtpAgenda, &ui::DayBox::dayChanged, this, &frmagenda::showDay);
    connect(cmdAnterior, &QPushButton::clicked, this,
            [this] { showDay(m_open.day().addDays(cmdSemana->isChecked() ? -7 : -1)); });
    connect(cmdSiguiente, &QPushButton::clicked, this,
            [this] { showDay(m_open.day().addDays(cmdSemana->isChecked() ? 7 : 1)); });
    connect(cmdHoy, &QPushButton::clicked, this, [this] { showDay(m_s.reloj.hoy); });
    for (QPushButton *b : {cmdDia, cmdSemana})
        connect(b, &QPushButton::clicked, this, [this] { guarded([this] { reload(); }); });

    connect(GAgenda, &ui::Grid::changedRow, this, &frmagenda::rowChanged);
    connect(GAgenda, &ui::Grid::chosenRow, this,
            [this](int row) { openPatient(m_model->idOf(row)); });
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
        m_views->setCurrentIndex(view);
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
    guarded([&] { m_open.goTo(day.isValid() ? day : m_s.reloj.hoy); });
    m_open.forgetMoves();
    dtpPasarTarea->setDay(m_s.reloj.hoy.addDays(1));
    tabAgenda->setCurrentIndex(parameters.value(u"modo"_s, DayMode).toInt() == OwnMode);
    guarded([this] { reload(); });
    if (tabAgenda->currentIndex() == 0) {
        GAgenda->setFocus();
        GAgenda->IrA(m_open.firstInView());
        Ayu->tell(m_s(text::AgendaHint));
    } else {
        GKelvara->setFocus();
    }
}

void frmagenda::activated()
{
    if (m_open.isStale())
        reload();
}

void frmagenda::showDay(QDate dia)
{
    if (!dia.isValid() || dia == m_open.day())
        return;
    goTo(dia, {GAgenda->IdActual()});
}

void frmagenda::goTo(QDate dia, const QList<int> &selection)
{
    guarded([&] {
        if (m_open.goTo(dia))
            show(selection);
        else
            reload(selection);
    });
}

/// Reads the days again. @param selection as for show; the present selection if empty
void frmagenda::reload(const QList<int> &selection)
{
    m_open.read(cmdSemana->isChecked());
    hoursOf->show(m_open.days(), m_open.tasks());
    show(selection.isEmpty() ? QList{GAgenda->IdActual()} : selection);
    if (tabAgenda->currentIndex() == OwnMode - 1)
        showOwnTasks();
}

/// Lists the day. @param selection tasks to select; the last one becomes the current one
void frmagenda::show(const QList<int> &selection)
{
    const QDate day = m_open.day();
    m_busy = true;
    {
        const QSignalBlocker silent(dtpAgenda);
        dtpAgenda->setDay(day);
    }
    lblDia->setText(QLocale().toString(day, QLocale::LongFormat));
    const int before = GAgenda->currentRow();
    std::vector<ui::GridRow> rows;
    for (const DayTask &t : m_open.tasks())
        if (t.dia == day)
            rows.push_back({{t.item, t.hor, t.detail,
                             m_s(t.est ? text::Accomplished : text::NotAccomplished), t.id}});
    m_model->set(std::move(rows));
    sizeRows();
    // The task's new row, else the row where the cursor was.
    if (!GAgenda->IrA(selection.last()))
        GAgenda->Seleccionar(std::min(before, m_model->allRows() - 1));
    for (const int id : selection)
        if (const int also = m_model->rowOf(id); also >= 0)
            GAgenda->selectionModel()->select(
                m_model->index(also, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    m_busy = false;
    hoursOf->goTo(day);
    hoursOf->choose(GAgenda->IdActual());
    arrange();
}

void frmagenda::sizeRows()
{
    for (int row = 0; row < m_model->allRows(); ++row)
        if (const DayTask *t = taskOfRow(row))
            GAgenda->setRowHeight(row, TaskPainter::heightOf(GAgenda->fontMetrics(), *t));
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
    const bool some = GAgenda->IdActual() != 0;
    for (QPushButton *b : {cmdTareaRealizada, cmdEliminar, cmdPasarTarea})
        b->setEnabled(some);
    cmdNuevaTarea->setEnabled(m_forms.exists(u"frmTurnos"_s));
    if (auto *day = m_menu->findChild<QAction *>(u"menuDia"_s))
        day->setEnabled(m_model->allRows() > 0);
    if (auto *one = m_menu->findChild<QAction *>(u"menuTarea"_s))
        one->setEnabled(some);
}

const DayTask *frmagenda::taskOfRow(int row) const { return m_open.task(m_model->idOf(row)); }

/// The ids of the selected tasks, in the order in which they were selected.
QList<int> frmagenda::selectedIds() const
{
    QList<int> ids;
    for (const int row : inItsDirection(GAgenda->selectedRows(), GAgenda->currentRow()))
        ids << m_model->idOf(row);
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
    if (const DayTask *t = m_open.task(id); t && t->dia != m_open.day()) {
        goTo(QDate(t->dia), {id}); // a copy, because goTo may replace the tasks
    } else {
        m_busy = true;
        GAgenda->Seleccionar(m_model->rowOf(id));
        m_busy = false;
    }
    tell(m_open.task(id));
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
    if (const auto targets = m_open.shifted(selectedIds(), days ? step : 0, days ? 0 : step);
        !targets.empty())
        move(targets);
    return true;
}

void frmagenda::move(const std::vector<Target> &targets)
{
    guarded([&] { tellMoved(m_open.move(targets), u".  "_s + m_s(text::UndoHint)); });
}

void frmagenda::takeBack()
{
    if (m_open.canTakeBack())
        guarded([&] { tellMoved(m_open.takeBack(), {}); });
}

/// Selects the moved tasks and says where the last of them is now. Without any, they are gone or
/// the user may not move them.
void frmagenda::tellMoved(const QList<int> &ids, const QString &more)
{
    if (ids.isEmpty()) {
        if (!m_s.user.isCommon())
            Ayu->faultOf(m_s(text::TaskIsGone));
        return reload();
    }
    reload(ids);
    if (const DayTask *t = m_open.task(ids.last()))
        Ayu->success(movement(*t, ids.size()) + placeOf(t->dia, t->hor) + more);
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
        const auto moved = m_open.pass(selectedIds(), day);
        if (!moved)
            return;
        const DayTask *t = moved->isEmpty() ? nullptr : m_open.task(moved->last());
        const QString told = t ? movement(*t, moved->size()) : QString();
        leaveList(row);
        if (moved->isEmpty())
            Ayu->faultOf(m_s(text::TaskIsGone));
        else if (!told.isEmpty())
            Ayu->success(told + placeOf(day, {}) + u".  "_s + m_s(text::UndoHint));
    });
}

void frmagenda::remove()
{
    const int row = GAgenda->selectedRows().value(0);
    guarded([&] {
        if (deleteTasks(m_s, selectedIds())) {
            m_open.forgetMoves();
            leaveList(row);
        }
    });
}

/// After rows have gone, selects the one that followed them. @param row the first that has gone
void frmagenda::leaveList(int row)
{
    reload();
    GAgenda->Seleccionar(std::min(row, m_model->allRows() - 1));
    GAgenda->setFocus();
    tell(taskOfRow(GAgenda->currentRow()));
}

void frmagenda::toggleDone()
{
    const int id = GAgenda->IdActual();
    if (id == 0)
        return;
    guarded([&] {
        agenda::toggleDone(m_s, id);
        reload();
        if (!m_open.task(id))
            Ayu->faultOf(m_s(text::TaskIsGone));
    });
}

void frmagenda::newTask(QDate dia, QTime hour)
{
    if (!dia.isValid())
        dia = std::max(m_open.day(), m_s.reloj.hoy); // nothing is booked on a past day
    QVariantMap parameters{{u"ida"_s, m_s.IdGlobal.idm}, {u"dia"_s, dia}};
    if (hour.isValid())
        parameters.insert(u"hora"_s, hour);
    guarded([&] {
        m_forms.open(u"frmTurnos"_s, parameters);
        const std::vector<DayTask> before = m_open.tasks();
        reload();
        for (const int id : m_open.addedSince(before))
            GAgenda->IrA(id);
    });
}

/// Opens the patient's record, which is what users want next when a task is due.
void frmagenda::openPatient(int id)
{
    const DayTask *t = m_open.task(id);
    if (!t || taskSubject(t->tip) != Subject::Patient || t->patient.isEmpty()
        || !m_forms.exists(u"frmPropietarios"_s))
        return;
    guarded([&] {
        const int idc = LeerCampo(m_s, "clientes", "mascotas", t->ida, "idc").toInt();
        m_s.IdGlobal = {idc, t->ida};
        m_forms.open(u"frmPropietarios"_s);
    });
}

void frmagenda::exportDay() { saveCalendar(text::SaveDay, m_open.tasksOfDay(), m_s(text::Agenda)); }

void frmagenda::exportTask()
{
    if (const DayTask *t = m_open.task(GAgenda->IdActual()))
        saveCalendar(text::SaveTask, {*t}, taskSubject(*t));
}

void frmagenda::saveCalendar(int title, const std::vector<DayTask> &tasks, const QString &name)
{
    QString offered;
    for (const QChar c : name.left(LettersOfFile))
        offered += c.isLetterOrNumber() || c == u'-' ? c : QChar(u' ');
    auto file = m_s.dialogos.saveFile(
        m_s(title), offered.simplified() + u' ' + m_open.day().toString(Qt::ISODate) + u".ics"_s,
        m_s(text::CalendarFilter));
    if (!file)
        return;
    if (!file->endsWith(u".ics"_s, Qt::CaseInsensitive))
        *file += u".ics"_s;
    if (guarded([&] { agenda::saveCalendar(m_s, tasks, *file); }))
        Ayu->success(m_s(text::CalendarSaved) + u' ' + *file);
}
