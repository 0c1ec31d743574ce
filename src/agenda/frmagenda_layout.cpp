#include "agenda/frmagenda.h"
#include "agenda/frmagenda_look.h"
#include "agenda/hours_view.h"
#include "texts/agenda.h"
#include "texts/texts.h"
#include "ui/day_box.h"
#include "ui/grid.h"
#include "ui/help_line.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QButtonGroup>
#include <QHeaderView>
#include <QMenu>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabBar>

using namespace agenda;
using namespace Qt::StringLiterals;

namespace
{

constexpr QSize FirstSize{1280, 700};
constexpr int DayBoxWidth = 172;
constexpr int ListWidth = 600, HoursWidth = 620;

QLabel *caption(const QString &text, QWidget *buddy)
{
    auto *label = new QLabel(text);
    label->setBuddy(buddy);
    return label;
}

QHBoxLayout *rowOfControls()
{
    auto *row = new QHBoxLayout;
    row->setSpacing(ui::space::S);
    return row;
}

} // namespace

void frmagenda::build()
{
    setWindowTitle(m_s(text::Agenda));
    setStyleSheet(agendaStyle());
    Ayu = named(new ui::HelpLine, u"Ayu"_s, {});
    tabAgenda = named(new QTabBar, u"tabAgenda"_s, m_s(text::Agenda));
    tabAgenda->setExpanding(false);
    tabAgenda->addTab(m_s(text::DayAgenda));
    tabAgenda->addTab(m_s(text::TasksOfKelvara));
    m_views = new QStackedWidget;
    m_views->addWidget(buildDay());
    m_views->addWidget(buildOwnTasks());
    cmdvolver = button(u"cmdvolver"_s, text::AgendaLayoutGoBack, u"volver"_s, u"Esc"_s);
    cmdvolver->setProperty("clase", u"barra"_s);
    QHBoxLayout *head = rowOfControls();
    head->addWidget(tabAgenda);
    head->addStretch();
    head->addWidget(cmdvolver);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(ui::space::L, ui::space::S, ui::space::L, ui::space::S);
    all->setSpacing(ui::space::S);
    all->addLayout(head);
    all->addWidget(m_views, 1);
    all->addWidget(Ayu);

    orderKeys();
    rememberSize(FirstSize);
    for (ui::Grid *list : {GAgenda, GKelvara}) {
        showTitles(list);
        rememberColumns(list->horizontalHeader());
    }
}

QWidget *frmagenda::buildDay()
{
    m_halves = new QSplitter(Qt::Horizontal);
    m_halves->setObjectName(u"mitades"_s);
    m_halves->setChildrenCollapsible(false);
    m_halves->setHandleWidth(ui::space::M);
    m_halves->addWidget(buildList());
    m_halves->addWidget(buildHours());
    m_halves->setSizes({ListWidth, HoursWidth});
    m_halves->setStretchFactor(1, 1);

    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(0, ui::space::XS, 0, 0);
    column->setSpacing(ui::space::S);
    column->addLayout(buildNavigation());
    column->addWidget(m_halves, 1);
    column->addLayout(buildActions());
    return page;
}

QLayout *frmagenda::buildNavigation()
{
    dtpAgenda = named(new ui::DayBox(m_s, store::Lean::Ahead, ui::DayBox::Need::Required),
                      u"dtpAgenda"_s, m_s(text::Day));
    dtpAgenda->setFixedWidth(DayBoxWidth);
    cmdAnterior = button(u"cmdAnterior"_s, text::AgendaLayoutPrevious, {}, u"Ctrl+PgUp"_s);
    cmdSiguiente = button(u"cmdSiguiente"_s, text::AgendaLayoutNext, {}, u"Ctrl+PgDn"_s);
    for (QPushButton *b : {cmdAnterior, cmdSiguiente}) {
        b->setText(b == cmdAnterior ? u"‹"_s : u"›"_s);
        b->setProperty("clase", u"barra"_s);
    }
    cmdHoy = button(u"cmdHoy"_s, text::AgendaLayoutToday, {}, u"Ctrl+Home"_s);
    lblDia = named(new QLabel, u"lblDia"_s, {});
    lblDia->setProperty("clase", u"subtitulo"_s);
    lblDia->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    cmdDia = button(u"cmdDia"_s, text::DayViewButton);
    cmdSemana = button(u"cmdSemana"_s, text::WeekViewButton);
    auto *choice = new QButtonGroup(this);
    for (QPushButton *b : {cmdDia, cmdSemana}) {
        b->setCheckable(true);
        choice->addButton(b);
    }
    cmdDia->setChecked(true);

    QHBoxLayout *row = rowOfControls();
    row->addWidget(cmdAnterior);
    row->addWidget(dtpAgenda);
    row->addWidget(cmdSiguiente);
    row->addWidget(cmdHoy);
    row->addSpacing(ui::space::S);
    row->addWidget(lblDia, 1);
    row->addWidget(cmdDia);
    row->addWidget(cmdSemana);
    return row;
}

QWidget *frmagenda::buildList()
{
    m_model = new ui::GridModel(m_s,
                                {{m_s(text::TaskColumn), ui::Kind::Text, 60},
                                 {m_s(text::Hour), ui::Kind::Hour, 60},
                                 {m_s(text::AgendaLayoutDetail), ui::Kind::Text, 320},
                                 {m_s(text::AgendaLayoutState), ui::Kind::Text, 70},
                                 {u"id"_s, ui::Kind::Whole, 0, true}},
                                this);
    GAgenda = named(new ui::Grid(m_s, m_model), u"GAgenda"_s, m_s(text::DayAgenda));
    GAgenda->allowSeveral();
    GAgenda->setEmptyText(m_s(text::NothingOnThisDay));
    GAgenda->setMinimumWidth(360);

    GAgenda->setItemDelegateForColumn(0, new PicturePainter(
                                             [this](const QModelIndex &cell) {
                                                 const DayTask *t = taskOfRow(cell.row());
                                                 return t ? t->icon : QString();
                                             },
                                             false, GAgenda));
    GAgenda->setItemDelegateForColumn(
        2, new TaskPainter(
               m_s, [this](const QModelIndex &cell) { return taskOfRow(cell.row()); }, GAgenda));
    const QString done = m_s(text::Accomplished);
    const auto state = [done](const QModelIndex &cell) {
        return cell.data().toString() == done ? u"tarearealizada"_s : u"tareanorealizada"_s;
    };
    GAgenda->setItemDelegateForColumn(3, new PicturePainter(state, false, GAgenda));
    QHeaderView *titles = GAgenda->horizontalHeader();
    titles->setStretchLastSection(false);
    titles->setSectionResizeMode(2, QHeaderView::Stretch);
    return GAgenda;
}

QWidget *frmagenda::buildHours()
{
    hoursOf = new HoursView(m_s);
    hoursOf->setObjectName(u"Horas"_s);
    return hoursOf;
}

QLayout *frmagenda::buildActions()
{
    cmdNuevaTarea = button(u"cmdNuevaTarea"_s, text::NewTask, u"turnos"_s, u"Ins"_s);
    cmdTareaRealizada = button(u"cmdTareaRealizada"_s, text::DoneButton, u"tarearealizada"_s,
                               QKeySequence(Qt::Key_Space).toString(QKeySequence::NativeText));
    cmdEliminar = button(u"cmdEliminar"_s, text::AgendaLayoutRemove, {}, u"Del"_s);
    cmdImprimir = button(u"cmdImprimir"_s, text::PrintTodayButton, u"imprimir"_s, u"Ctrl+P"_s);
    cmdCalendario = button(u"cmdCalendario"_s, text::CalendarFileButton);
    cmdPasarTarea = button(u"cmdPasarTarea"_s, text::DelayButton);
    dtpPasarTarea = named(new ui::DayBox(m_s, store::Lean::Ahead, ui::DayBox::Need::Required),
                          u"dtpPasarTarea"_s, m_s(text::DelayTask));
    dtpPasarTarea->setFixedWidth(DayBoxWidth);
    m_menu = new QMenu(cmdCalendario);
    QAction *day = m_menu->addAction(m_s(text::SaveDay), this, &frmagenda::exportDay);
    QAction *one = m_menu->addAction(m_s(text::SaveTask), this, &frmagenda::exportTask);
    day->setObjectName(u"menuDia"_s);
    one->setObjectName(u"menuTarea"_s);
    cmdCalendario->setMenu(m_menu);
    GAgenda->addActions({day, one});

    QHBoxLayout *row = rowOfControls();
    for (QPushButton *b :
         {cmdNuevaTarea, cmdTareaRealizada, cmdEliminar, cmdImprimir, cmdCalendario})
        row->addWidget(b);
    row->addStretch();
    row->addWidget(caption(m_s(text::DelayTask), dtpPasarTarea));
    row->addWidget(dtpPasarTarea);
    row->addWidget(cmdPasarTarea);
    return row;
}

QWidget *frmagenda::buildOwnTasks()
{
    m_modelKelvara = new ui::GridModel(m_s,
                                       {{m_s(text::AgendaLayoutReason), ui::Kind::Text, 420},
                                        {m_s(text::ForWhom), ui::Kind::Text, 280},
                                        {m_s(text::ContactBy), ui::Kind::Text, 220},
                                        {m_s(text::AgendaLayoutState), ui::Kind::Text, 150}},
                                       this);
    GKelvara = named(new ui::Grid(m_s, m_modelKelvara), u"GKelvara"_s, m_s(text::TasksOfKelvara));
    GKelvara->setEmptyText(m_s(text::NoCommunicationsToday));
    GKelvara->allowSeveral();
    const QString done = m_s(text::Accomplished);
    GKelvara->setItemDelegateForColumn(3, new PicturePainter(
                                              [done](const QModelIndex &cell) {
                                                  return cell.data().toString() == done
                                                             ? u"tarearealizada"_s
                                                             : u"tareanorealizada"_s;
                                              },
                                              true, GKelvara));
    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(0, ui::space::XS, 0, 0);
    column->addWidget(GKelvara);
    return page;
}

void frmagenda::orderKeys()
{
    const QList<QWidget *> order{
        GAgenda,       hoursOf,       cmdNuevaTarea, cmdTareaRealizada, cmdEliminar, cmdImprimir,
        cmdCalendario, dtpPasarTarea, cmdPasarTarea, cmdAnterior,       dtpAgenda,   cmdSiguiente,
        cmdHoy,        cmdDia,        cmdSemana,     tabAgenda,         cmdvolver};
    for (int i = 0; i + 1 < order.size(); ++i)
        setTabOrder(order[i], order[i + 1]);
    enterChain({dtpPasarTarea, cmdPasarTarea});
    enterChain({dtpAgenda, GAgenda});
}
