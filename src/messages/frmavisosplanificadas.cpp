#include "messages/frmavisosplanificadas.h"

#include "messages/chat_link.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTabBar>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Telefonos = 15,
    Explicacion = 5044,
    PrimerGrupo = 9950, // the four in the order of their codes
    Titulo = 9954,
    Paciente = 9955,
    Propietario = 9956,
    Producto = 9957,
    Vence = 9958,
    Nota = 9959,
    SinDosis = 9960,
    NotaDelAviso = 9961,
    Chat = 9962,
    Ficha = 9963,
    NotaGuardada = 9964,
    SinMovil = 9965,
    Cuenta = 9978,
    Grupo = 9979,
};

constexpr int firstGroup = int(GrupoDeAvisos::PerdidasSinServicio);
constexpr int groups = 4;

// Long enough not to write at each key, short enough to lose nothing.
constexpr int pauseMs = 300;

enum Columna { DePaciente, DePropietario, DeProducto, DeTelefonos, DeVence, DeNota, DeClave };

FilaDeGrilla rowOf(const AvisoPlanificado &a)
{
    FilaDeGrilla row;
    row.celdas = {a.paciente, a.propietario, a.producto, a.telefonos, a.vence, a.nota, a.clave};
    return row;
}

} // namespace

frmAvisosPlanificadas::frmAvisosPlanificadas(Sesion &s, Formularios &formularios,
                                             AbridorDeEnlaces abrir, QWidget *parent)
    : FormBase(s, u"frmAvisosPlanificadas"_s, parent),
      m_forms(formularios),
      m_abrir(std::move(abrir))
{
    setWindowTitle(s(Titulo));
    m_pause.setSingleShot(true);
    m_pause.setInterval(pauseMs);
    build();
    wire();
    rememberSize({1120, 620});
    rememberColumns(grd->horizontalHeader());
}

void frmAvisosPlanificadas::build()
{
    tabGrupo = named(new QTabBar, u"tabGrupo"_s, m_s(Grupo));
    for (int i = 0; i < groups; ++i)
        tabGrupo->addTab(m_s(PrimerGrupo + i));
    tabGrupo->setExpanding(false);
    tabGrupo->setDrawBase(false);

    grd = named(new Grilla(m_s, new ModeloDeGrilla(
                                    m_s,
                                    {{.titulo = m_s(Paciente), .ancho = 120},
                                     {.titulo = m_s(Propietario), .ancho = 180},
                                     {.titulo = m_s(Producto), .ancho = 200},
                                     {.titulo = m_s(Telefonos), .ancho = 190},
                                     {.titulo = m_s(Vence), .clase = Clase::Dia, .ancho = 100},
                                     {.titulo = m_s(Nota), .ancho = 140},
                                     {.oculta = true}},
                                    this)),
                u"Grilla"_s, m_s(Titulo));
    grd->PonerVacio(m_s(SinDosis));

    auto *note = new QWidget;
    note->setLayout(buildNote());
    auto *parts = new QSplitter(Qt::Vertical);
    parts->setChildrenCollapsible(false);
    parts->addWidget(grd);
    parts->addWidget(note);
    parts->setSizes({360, 140});
    parts->setStretchFactor(0, 1);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(Espacio::L, Espacio::L, Espacio::L, Espacio::L);
    all->setSpacing(Espacio::M);
    all->addWidget(tabGrupo);
    all->addWidget(parts, 1);
    all->addLayout(buildButtons());
}

QLayout *frmAvisosPlanificadas::buildNote()
{
    txtNota = named(new QPlainTextEdit, u"txtNota"_s, m_s(NotaDelAviso));
    txtNota->setTabChangesFocus(true);
    auto *title = new QLabel(m_s(NotaDelAviso));
    title->setBuddy(txtNota);
    auto *explanation = named(new QLabel(m_s(Explicacion)), u"lblAyuda"_s, m_s(Explicacion));
    explanation->setProperty("clase", u"suave"_s);
    explanation->setWordWrap(true);
    explanation->setTextFormat(Qt::PlainText);

    auto *place = new QGridLayout;
    place->setContentsMargins(0, Espacio::S, 0, 0);
    place->setHorizontalSpacing(Espacio::L);
    place->setVerticalSpacing(Espacio::XS);
    place->addWidget(title, 0, 0);
    place->addWidget(txtNota, 1, 0);
    place->addWidget(explanation, 1, 1, Qt::AlignTop);
    place->setColumnStretch(0, 3);
    place->setColumnStretch(1, 2);
    return place;
}

QLayout *frmAvisosPlanificadas::buildButtons()
{
    cmdChat = button(u"cmdChat"_s, Chat, u"109"_s);
    cmdFicha = button(u"cmdFicha"_s, Ficha, u"Propietarios"_s);
    Ayu = named(new LineaDeAyuda, u"Ayu"_s, {});
    auto *foot = new QHBoxLayout;
    foot->setSpacing(Espacio::S);
    foot->addWidget(Ayu, 1);
    foot->addWidget(cmdChat);
    foot->addWidget(cmdFicha);
    return foot;
}

void frmAvisosPlanificadas::wire()
{
    connect(tabGrupo, &QTabBar::currentChanged, this, [this] {
        guarded([this] {
            keepNote();
            load();
        });
    });
    connect(grd, &Grilla::filaCambiada, this, &frmAvisosPlanificadas::showNotice);
    connect(grd, &Grilla::filaElegida, this, &frmAvisosPlanificadas::goToClient);
    connect(txtNota, &QPlainTextEdit::textChanged, &m_pause, qOverload<>(&QTimer::start));
    connect(&m_pause, &QTimer::timeout, this, [this] { guarded([this] { keepNote(); }); });
    connect(cmdFicha, &QPushButton::clicked, this, &frmAvisosPlanificadas::goToClient);
    connect(cmdChat, &QPushButton::clicked, this, [this] {
        guarded([this] {
            if (const AvisoPlanificado *a = current())
                AbrirChat(m_s, m_abrir, *Ayu, a->idc, TextoDeAviso(m_s, *a));
        });
    });
}

void frmAvisosPlanificadas::opened(const QVariantMap &parametros)
{
    guarded([this, &parametros] {
        keepNote();
        const int group =
            parametros.value(u"grupo"_s, firstGroup + tabGrupo->currentIndex()).toInt();
        {
            const QSignalBlocker quiet(tabGrupo); // the list is read once, below
            tabGrupo->setCurrentIndex(std::clamp(group - firstGroup, 0, groups - 1));
        }
        load();
    });
    grd->Seleccionar(0);
    grd->setFocus();
}

void frmAvisosPlanificadas::activated()
{
    keepNote();
    load();
}

void frmAvisosPlanificadas::hideEvent(QHideEvent *event)
{
    guarded([this] { keepNote(); });
    FormBase::hideEvent(event);
}

void frmAvisosPlanificadas::load()
{
    const QString before = m_claveEnCaja;
    m_avisos = AvisosDe(m_s, GrupoDeAvisos(firstGroup + tabGrupo->currentIndex()));
    std::vector<FilaDeGrilla> rows;
    rows.reserve(m_avisos.size());
    for (const AvisoPlanificado &a : m_avisos)
        rows.push_back(rowOf(a));
    grd->Modelo()->Poner(std::move(rows));
    const int count = grd->Modelo()->Filas();
    const int again =
        before.isEmpty() ? -1 : grd->Modelo()->BuscarEnGrilla(before, DeClave, 0, count - 1);
    grd->Seleccionar(std::max(again, 0));
    showNotice();
    if (count == 0)
        Ayu->Limpiar();
    else
        Ayu->Decir(m_s(Cuenta).arg(count));
}

AvisoPlanificado *frmAvisosPlanificadas::current()
{
    const int row = grd->FilaActual();
    if (row < 0)
        return nullptr;
    const QString key = grd->Modelo()->Fila(row).celdas.value(DeClave).toText();
    const auto found = std::ranges::find(m_avisos, key, &AvisoPlanificado::clave);
    return found == m_avisos.end() ? nullptr : &*found;
}

void frmAvisosPlanificadas::showNotice()
{
    guarded([this] {
        keepNote();
        const AvisoPlanificado *a = current();
        m_claveEnCaja = a ? a->clave : QString();
        {
            const QSignalBlocker quiet(txtNota);
            txtNota->setPlainText(a ? a->nota : QString());
        }
        txtNota->setEnabled(a);
        cmdFicha->setEnabled(a && m_forms.Existe(u"frmPropietarios"_s));
        const bool chats = a && TieneChat(m_s, a->idc);
        cmdChat->setEnabled(chats);
        cmdChat->setToolTip(a && !chats ? m_s(SinMovil) : QString());
    });
}

void frmAvisosPlanificadas::keepNote()
{
    m_pause.stop();
    // What was only read here must not take the place of what another terminal wrote.
    const auto notice = std::ranges::find(m_avisos, m_claveEnCaja, &AvisoPlanificado::clave);
    if (notice == m_avisos.end() || !txtNota->document()->isModified())
        return;
    const QString text = txtNota->toPlainText();
    GuardarNota(m_s, notice->clave, text);
    txtNota->document()->setModified(false);
    notice->nota = text;
    ModeloDeGrilla *rows = grd->Modelo();
    const int row = rows->BuscarEnGrilla(notice->clave, DeClave, 0, rows->Filas() - 1);
    if (row >= 0)
        rows->Cambiar(row, rowOf(*notice));
    Ayu->Logro(m_s(NotaGuardada));
}

void frmAvisosPlanificadas::goToClient()
{
    guarded([this] {
        keepNote();
        const AvisoPlanificado *a = current();
        if (!a || !cmdFicha->isEnabled())
            return;
        m_s.IdGlobal = {a->idc, a->idm};
        m_forms.Abrir(u"frmPropietarios"_s);
    });
}
