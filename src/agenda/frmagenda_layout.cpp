#include "agenda/frmagenda.h"
#include "agenda/frmagenda_look.h"
#include "agenda/hours_view.h"
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

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    AgendaDelDia = 1101,
    TareasDeKelvara_ = 1102,
    Postergar = 1123,
    Realizada_ = 1121,
    Dia = 1302,
    Hora = 1303,
    Titulo = 9906,
    Tarea_ = 9907,
    Detalle = 9908,
    Estado = 9909,
    SinTareas = 9910,
    SinComunicaciones = 9911,
    NuevaTarea = 9912,
    Realizada = 9913,
    Eliminar = 9914,
    ImprimirHoy = 9915,
    Pasar = 9916,
    Calendario = 9917,
    GuardarDia = 9918,
    GuardarTarea = 9919,
    Anterior = 9922,
    Siguiente = 9923,
    Hoy = 9924,
    VerDia = 9925,
    VerSemana = 9926,
    Motivo = 9932,
    ParaQuien = 9933,
    Medio = 9934,
    Volver = 9945,
};

constexpr QSize firstSize{1280, 700};
constexpr QSize smallest{1020, 560};
constexpr int dayBoxWidth = 132;
constexpr int listWidth = 600, hoursWidth = 620;

QLabel *caption(const QString &text, QWidget *buddy)
{
    auto *label = new QLabel(text);
    label->setBuddy(buddy);
    return label;
}

QHBoxLayout *rowOfControls()
{
    auto *row = new QHBoxLayout;
    row->setSpacing(Espacio::S);
    return row;
}

} // namespace

void frmagenda::build()
{
    setWindowTitle(m_s(Titulo));
    setStyleSheet(EstiloDeAgenda());
    Ayu = named(new LineaDeAyuda, u"Ayu"_s, {});
    tabAgenda = named(new QTabBar, u"tabAgenda"_s, m_s(Titulo));
    tabAgenda->setExpanding(false);
    tabAgenda->addTab(m_s(AgendaDelDia));
    tabAgenda->addTab(m_s(TareasDeKelvara_));
    m_vistas = new QStackedWidget;
    m_vistas->addWidget(buildDay());
    m_vistas->addWidget(buildOwnTasks());
    cmdvolver = button(u"cmdvolver"_s, Volver, u"volver"_s, u"Esc"_s);
    cmdvolver->setProperty("clase", u"barra"_s);
    QHBoxLayout *head = rowOfControls();
    head->addWidget(tabAgenda);
    head->addStretch();
    head->addWidget(cmdvolver);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(Espacio::L, Espacio::S, Espacio::L, Espacio::S);
    all->setSpacing(Espacio::S);
    all->addLayout(head);
    all->addWidget(m_vistas, 1);
    all->addWidget(Ayu);

    orderKeys();
    setMinimumSize(smallest);
    rememberSize(firstSize);
    for (Grilla *list : {GAgenda, GKelvara}) {
        MostrarTitulos(list);
        rememberColumns(list->horizontalHeader());
    }
}

QWidget *frmagenda::buildDay()
{
    m_mitades = new QSplitter(Qt::Horizontal);
    m_mitades->setObjectName(u"mitades"_s);
    m_mitades->setChildrenCollapsible(false);
    m_mitades->setHandleWidth(Espacio::M);
    m_mitades->addWidget(buildList());
    m_mitades->addWidget(buildHours());
    m_mitades->setSizes({listWidth, hoursWidth});
    m_mitades->setStretchFactor(1, 1);

    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(0, Espacio::XS, 0, 0);
    column->setSpacing(Espacio::S);
    column->addLayout(buildNavigation());
    column->addWidget(m_mitades, 1);
    column->addLayout(buildActions());
    return page;
}

QLayout *frmagenda::buildNavigation()
{
    dtpAgenda = named(new CajaDeDia, u"dtpAgenda"_s, m_s(Dia));
    dtpAgenda->setFixedWidth(dayBoxWidth);
    cmdAnterior = button(u"cmdAnterior"_s, Anterior, {}, u"Ctrl+PgUp"_s);
    cmdSiguiente = button(u"cmdSiguiente"_s, Siguiente, {}, u"Ctrl+PgDn"_s);
    for (QPushButton *b : {cmdAnterior, cmdSiguiente}) {
        b->setText(b == cmdAnterior ? u"‹"_s : u"›"_s);
        b->setProperty("clase", u"barra"_s);
    }
    cmdHoy = button(u"cmdHoy"_s, Hoy, {}, u"Ctrl+Home"_s);
    lblDia = named(new QLabel, u"lblDia"_s, {});
    lblDia->setProperty("clase", u"subtitulo"_s);
    lblDia->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    cmdDia = button(u"cmdDia"_s, VerDia);
    cmdSemana = button(u"cmdSemana"_s, VerSemana);
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
    row->addSpacing(Espacio::S);
    row->addWidget(lblDia, 1);
    row->addWidget(cmdDia);
    row->addWidget(cmdSemana);
    return row;
}

QWidget *frmagenda::buildList()
{
    m_modelo = new ModeloDeGrilla(m_s,
                                  {{m_s(Tarea_), Clase::Texto, 60},
                                   {m_s(Hora), Clase::Hora, 60},
                                   {m_s(Detalle), Clase::Texto, 320},
                                   {m_s(Estado), Clase::Texto, 70},
                                   {u"id"_s, Clase::Entero, 0, true}},
                                  this);
    GAgenda = named(new Grilla(m_s, m_modelo), u"GAgenda"_s, m_s(AgendaDelDia));
    GAgenda->PermitirVarias();
    GAgenda->PonerVacio(m_s(SinTareas));
    GAgenda->setMinimumWidth(360);

    GAgenda->setItemDelegateForColumn(0, new PintorDeDibujo(
                                             [this](const QModelIndex &cell) {
                                                 const TareaDelDia *t = taskOfRow(cell.row());
                                                 return t ? t->icono : QString();
                                             },
                                             false, GAgenda));
    GAgenda->setItemDelegateForColumn(
        2, new PintorDeTarea(
               m_s, [this](const QModelIndex &cell) { return taskOfRow(cell.row()); }, GAgenda));
    const QString done = m_s(Realizada_);
    const auto state = [done](const QModelIndex &cell) {
        return cell.data().toString() == done ? u"tarearealizada"_s : u"tareanorealizada"_s;
    };
    GAgenda->setItemDelegateForColumn(3, new PintorDeDibujo(state, false, GAgenda));
    QHeaderView *titles = GAgenda->horizontalHeader();
    titles->setStretchLastSection(false);
    titles->setSectionResizeMode(2, QHeaderView::Stretch);
    return GAgenda;
}

QWidget *frmagenda::buildHours()
{
    Horas = new VistaDeHoras(m_s);
    Horas->setObjectName(u"Horas"_s);
    return Horas;
}

QLayout *frmagenda::buildActions()
{
    cmdNuevaTarea = button(u"cmdNuevaTarea"_s, NuevaTarea, u"turnos"_s, u"Ins"_s);
    cmdTareaRealizada = button(u"cmdTareaRealizada"_s, Realizada, u"tarearealizada"_s,
                               QKeySequence(Qt::Key_Space).toString(QKeySequence::NativeText));
    cmdEliminar = button(u"cmdEliminar"_s, Eliminar, {}, u"Del"_s);
    cmdImprimir = button(u"cmdImprimir"_s, ImprimirHoy, u"imprimir"_s, u"Ctrl+P"_s);
    cmdCalendario = button(u"cmdCalendario"_s, Calendario);
    cmdPasarTarea = button(u"cmdPasarTarea"_s, Pasar);
    dtpPasarTarea = named(new CajaDeDia, u"dtpPasarTarea"_s, m_s(Postergar));
    dtpPasarTarea->setFixedWidth(dayBoxWidth);
    m_menu = new QMenu(cmdCalendario);
    QAction *day = m_menu->addAction(m_s(GuardarDia), this, &frmagenda::exportDay);
    QAction *one = m_menu->addAction(m_s(GuardarTarea), this, &frmagenda::exportTask);
    day->setObjectName(u"menuDia"_s);
    one->setObjectName(u"menuTarea"_s);
    cmdCalendario->setMenu(m_menu);
    GAgenda->addActions({day, one});

    QHBoxLayout *row = rowOfControls();
    for (QPushButton *b :
         {cmdNuevaTarea, cmdTareaRealizada, cmdEliminar, cmdImprimir, cmdCalendario})
        row->addWidget(b);
    row->addStretch();
    row->addWidget(caption(m_s(Postergar), dtpPasarTarea));
    row->addWidget(dtpPasarTarea);
    row->addWidget(cmdPasarTarea);
    return row;
}

QWidget *frmagenda::buildOwnTasks()
{
    m_modeloKelvara = new ModeloDeGrilla(m_s,
                                         {{m_s(Motivo), Clase::Texto, 420},
                                          {m_s(ParaQuien), Clase::Texto, 280},
                                          {m_s(Medio), Clase::Texto, 220},
                                          {m_s(Estado), Clase::Texto, 150}},
                                         this);
    GKelvara = named(new Grilla(m_s, m_modeloKelvara), u"GKelvara"_s, m_s(TareasDeKelvara_));
    GKelvara->PonerVacio(m_s(SinComunicaciones));
    GKelvara->PermitirVarias();
    const QString done = m_s(Realizada_);
    GKelvara->setItemDelegateForColumn(3, new PintorDeDibujo(
                                              [done](const QModelIndex &cell) {
                                                  return cell.data().toString() == done
                                                             ? u"tarearealizada"_s
                                                             : u"tareanorealizada"_s;
                                              },
                                              true, GKelvara));
    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(0, Espacio::XS, 0, 0);
    column->addWidget(GKelvara);
    return page;
}

void frmagenda::orderKeys()
{
    const QList<QWidget *> order{
        GAgenda,       Horas,         cmdNuevaTarea, cmdTareaRealizada, cmdEliminar, cmdImprimir,
        cmdCalendario, dtpPasarTarea, cmdPasarTarea, cmdAnterior,       dtpAgenda,   cmdSiguiente,
        cmdHoy,        cmdDia,        cmdSemana,     tabAgenda,         cmdvolver};
    for (int i = 0; i + 1 < order.size(); ++i)
        setTabOrder(order[i], order[i + 1]);
    enterChain({dtpPasarTarea, cmdPasarTarea});
    enterChain({dtpAgenda, GAgenda});
}
