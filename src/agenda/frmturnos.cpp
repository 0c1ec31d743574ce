#include "agenda/frmturnos.h"

#include "agenda/frmagenda_look.h"
#include "agenda/task_texts.h"
#include "agenda/tasks.h"
#include "contact/contact.h"
#include "store/lookups.h"
#include "ui/boxes.h"
#include "ui/completion_list.h"
#include "ui/grid.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QAccessible>
#include <QCheckBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Cliente = 14,
    Dia = 1302,
    Hora = 1303,
    Recordar = 1307,
    MasConceptos = 1308,
    Concepto_ = 9907,
    Titulo = 9935,
    Concepto = 9936,
    Alarma_ = 9937,
    Descripcion = 9938,
    Agendar_ = 9939,
    SinPaciente = 9940,
    ElijaConcepto = 9941,
    EscribaHora = 9942,
    SinTurnos = 9943,
    TurnosDelDia_ = 9944,
    Volver = 9945,
    Paciente = 9946,
    Opcional = 9947,
    ElijaPaciente = 9949,
    SigueEscribiendo = 9515,
    HoyNoSale = 9991,
};

constexpr QSize firstSize{900, 520};
constexpr int boxesWidth = 380;
constexpr int helpLines = 3;
constexpr int columnOfConcept = 0, columnOfHour = 1, columnOfId = 3;

} // namespace

frmTurnos::frmTurnos(Sesion &s, QWidget *parent) : FormBase(s, u"frmTurnos"_s, parent)
{
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(s(Titulo));
    build();
    wire();
}

void frmTurnos::build()
{
    setStyleSheet(EstiloDeAgenda());
    lblPaciente = named(new QLabel, u"lblPaciente"_s, {});
    lblPaciente->setProperty("clase", u"subtitulo"_s);
    lblCliente = named(new QLabel, u"lblCliente"_s, {});
    lblCliente->setProperty("clase", u"suave"_s);
    for (QLabel *label : {lblPaciente, lblCliente}) {
        label->setTextFormat(Qt::PlainText);
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        label->setWordWrap(true);
    }

    Ayu = named(new QLabel, u"Ayu"_s, {});
    Ayu->setTextFormat(Qt::PlainText);
    Ayu->setWordWrap(true);
    Ayu->setAlignment(Qt::AlignLeft | Qt::AlignTop);

    cmdAgendar = button(u"cmdAgendar"_s, Agendar_, u"turnos"_s);
    cmdAgendar->setDefault(true);
    cmdVolver = button(u"cmdVolver"_s, Volver, {}, u"Esc"_s);

    auto *halves = new QGridLayout;
    halves->setHorizontalSpacing(Espacio::XL);
    halves->setVerticalSpacing(Espacio::L);
    auto *names = new QVBoxLayout;
    names->setSpacing(2);
    names->addWidget(lblPaciente);
    names->addWidget(lblCliente);
    halves->addLayout(names, 0, 0);
    halves->addLayout(buildBoxes(), 1, 0);
    halves->addLayout(buildList(), 0, 1, 2, 1);
    halves->setColumnMinimumWidth(0, boxesWidth);
    halves->setColumnStretch(0, 2);
    halves->setColumnStretch(1, 3);
    halves->setRowStretch(1, 1);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(Espacio::S);
    buttons->addStretch();
    buttons->addWidget(cmdVolver);
    buttons->addWidget(cmdAgendar);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(Espacio::XL, Espacio::L, Espacio::XL, Espacio::L);
    all->setSpacing(Espacio::M);
    all->addLayout(halves, 1);
    all->addWidget(Ayu);
    all->addLayout(buttons);
    Ayu->ensurePolished();
    Ayu->setMinimumHeight(helpLines * Ayu->fontMetrics().lineSpacing());
    rememberSize(firstSize);
    MostrarTitulos(GTurnos);
    rememberColumns(GTurnos->horizontalHeader());
}

QLayout *frmTurnos::buildBoxes()
{
    cmbSel = named(new ListaConCompletado, u"cmbSel"_s, m_s(Concepto));
    dtpDia = named(new CajaDeDia, u"dtpDia"_s, m_s(Dia));
    txtHora = named(new QLineEdit, u"txtHora"_s, m_s(Hora));
    txtAla = named(new QLineEdit, u"txtAla"_s, m_s(Alarma_));
    txtAla->setPlaceholderText(m_s(Opcional));
    txtDesc = named(new QLineEdit, u"txtDesc"_s, m_s(Descripcion));
    txtDesc->setMaxLength(std::max(1, m_s.morvane->Ancho("TareasAgenda", "des")));
    chkRec = named(new QCheckBox(m_s(Recordar)), u"chkRec"_s, m_s(Recordar));

    auto *boxes = new QGridLayout;
    boxes->setHorizontalSpacing(Espacio::M);
    boxes->setVerticalSpacing(Espacio::M);
    boxes->setColumnStretch(1, 1);
    int row = 0;
    const auto put = [&](int text, QWidget *box) {
        auto *label = new QLabel(m_s(text));
        label->setBuddy(box);
        boxes->addWidget(label, row, 0);
        boxes->addWidget(box, row++, 1);
    };
    put(Concepto, cmbSel);
    put(Dia, dtpDia);
    put(Hora, txtHora);
    put(Alarma_, txtAla);
    boxes->addWidget(chkRec, row++, 1);
    put(Descripcion, txtDesc);
    boxes->setRowStretch(row, 1);
    return boxes;
}

QLayout *frmTurnos::buildList()
{
    m_modelo = new ModeloDeGrilla(m_s,
                                  {{m_s(Concepto_), Clase::Texto, 220},
                                   {m_s(Hora), Clase::Hora, 64},
                                   {m_s(Paciente), Clase::Texto, 120},
                                   {u"id"_s, Clase::Entero, 0, true}},
                                  this);
    GTurnos = named(new Grilla(m_s, m_modelo), u"GTurnos"_s, m_s(TurnosDelDia_));
    GTurnos->PonerVacio(m_s(SinTurnos));
    GTurnos->setItemDelegateForColumn(
        columnOfConcept,
        new PintorDeDibujo(
            [this](const QModelIndex &cell) { return IconoDeHoja(m_s, cell.data().toString()); },
            true, GTurnos));
    auto *title = new QLabel(m_s(TurnosDelDia_));
    title->setProperty("clase", u"suave"_s);
    title->setBuddy(GTurnos);
    auto *column = new QVBoxLayout;
    column->setSpacing(Espacio::XS);
    column->addWidget(title);
    column->addWidget(GTurnos, 1);
    return column;
}

void frmTurnos::wire()
{
    enterChain({cmbSel, dtpDia, txtHora, txtAla, txtDesc});
    setTabOrder(txtAla, chkRec);
    setTabOrder(chkRec, txtDesc);
    setTabOrder(txtDesc, cmdAgendar);
    setTabOrder(cmdAgendar, cmdVolver);
    setTabOrder(cmdVolver, GTurnos);
    refuseApostrophe({txtDesc});
    for (QWidget *box : {txtHora, txtAla, txtDesc})
        box->installEventFilter(this);
    connect(cmbSel, &ListaConCompletado::tecleado, this, &frmTurnos::complete);
    connect(cmbSel, &ListaConCompletado::elegido, this, &frmTurnos::conceptChosen);
    connect(cmbSel, &ListaConCompletado::vaciado, this, &frmTurnos::conceptChosen);
    connect(dtpDia, &QDateEdit::dateChanged, this, [this] {
        guarded([this] { loadDay(); });
        if (chkRec->isChecked())
            help(hint());
    });
    connect(chkRec, &QCheckBox::toggled, this, [this] { help(hint()); });
    connect(cmdAgendar, &QPushButton::clicked, this, &frmTurnos::book);
    connect(cmdVolver, &QPushButton::clicked, this, &frmTurnos::reject);
}

void frmTurnos::opened(const QVariantMap &parametros)
{
    ida = parametros.value(u"ida"_s, m_s.IdGlobal.idm).toInt();
    const QDate day = parametros.value(u"dia"_s).toDate();
    const QTime hour = parametros.value(u"hora"_s).toTime();
    guarded([&] {
        showPatient();
        loadConcepts();
        const QSignalBlocker silent(dtpDia);
        dtpDia->setDate(day.isValid() ? day : m_s.reloj.hoy);
        loadDay();
    });
    txtHora->setText(HoraLarga(hour.isValid() ? hour : m_s.reloj.Hora()));
    txtAla->clear();
    txtDesc->clear();
    chkRec->setChecked(false);
    cmbSel->SeleccionarItem(0);
    conceptChosen();
    cmbSel->setFocus();
    m_alEmpezar = typed();
}

void frmTurnos::reject()
{
    // Asked so that ENTER, pressed without reading, loses nothing.
    if (typed() == m_alEmpezar || !m_s.dialogos.Pregunta(m_s(SigueEscribiendo)))
        FormBase::reject();
}

/// What can be lost; an hour is the same however it is written.
QStringList frmTurnos::typed() const
{
    const auto hour = [](const QLineEdit *box) {
        const QTime time = HoraEscrita(box->text());
        return time.isValid() ? time.toString(u"HH:mm") : box->text().trimmed();
    };
    return {cmbSel->currentText().trimmed(),
            dtpDia->Dia().toString(Qt::ISODate),
            hour(txtHora),
            hour(txtAla),
            txtDesc->text().trimmed(),
            chkRec->isChecked() ? u"x"_s : QString()};
}

void frmTurnos::showPatient()
{
    const QString name = ida > 0 ? LeerCampo(m_s, "clientes", "mascotas", ida, "nom") : QString();
    const int idc = LeerCampo(m_s, "clientes", "mascotas", ida, "idc").toInt();
    const QString owner = LeerCampo(m_s, "clientes", "clientes", idc, "ayn");
    lblPaciente->setText(ida > 0 ? name : m_s(SinPaciente));
    QStringList reach{owner.isEmpty() ? QString() : m_s(Cliente) + u": "_s + owner,
                      TelefonosCliente(m_s, idc)};
    reach.removeAll(QString());
    lblCliente->setText(ida > 0 ? reach.join(u"  ·  "_s) : m_s(ElijaPaciente));
}

void frmTurnos::loadConcepts()
{
    m_conceptos = ConceptosDeTurno(m_s);
    QList<Opcion> options;
    for (const ConceptoDeTurno &c : m_conceptos)
        options.append({c.nom, c.ida});
    cmbSel->clear();
    cmbSel->Cargar(options);
}

void frmTurnos::loadDay()
{
    m_turnos = TurnosDelDia(m_s, dtpDia->date());
    std::vector<FilaDeGrilla> rows;
    for (const TareaDelDia &t : m_turnos)
        rows.push_back({{t.concepto, t.hor, t.paciente, t.id}});
    m_modelo->sort(-1, Qt::AscendingOrder); // by hour, whatever was clicked before
    m_modelo->Poner(std::move(rows));
}

void frmTurnos::complete(const QString &texto)
{
    for (const ConceptoDeTurno &c : m_conceptos)
        if (c.nom.startsWith(texto, Qt::CaseInsensitive)) {
            cmbSel->Proponer(c.ida, c.nom);
            break;
        }
    conceptChosen();
}

void frmTurnos::conceptChosen()
{
    const int chosen = cmbSel->Id();
    const bool forClient = ida > 0 && chosen != 0 && chosen != TipoTarea::TareaDeUsuario;
    chkRec->setEnabled(forClient);
    if (!forClient)
        chkRec->setChecked(false);
    help(hint());
}

QString frmTurnos::hint() const
{
    if (remindsInVain())
        return m_s(HoyNoSale);
    return m_s(cmbSel->Id() != 0 ? MasConceptos : ElijaConcepto);
}

/// What reminds of today's appointments has run.
bool frmTurnos::remindsInVain() const
{
    return chkRec->isChecked() && dtpDia->date() == m_s.reloj.hoy;
}

void frmTurnos::hourLeft()
{
    const QTime hour = HoraEscrita(txtHora->text());
    if (!hour.isValid())
        return help(m_s(EscribaHora), true);
    txtHora->setText(HoraLarga(hour));
    help(m_s(Dia) + u": "_s + QLocale().toString(dtpDia->date(), QLocale::LongFormat) + u".  "_s
         + m_s(Hora) + u": "_s + HoraLarga(hour) + u'.'
         + (remindsInVain() ? u'\n' + m_s(HoyNoSale) : QString()));
    const int near = FilaCercana(m_turnos, hour);
    if (near < 0)
        return GTurnos->Seleccionar(-1);
    // The list may have been sorted by a click on a title.
    const int row =
        m_modelo->BuscarEnGrilla(m_turnos[size_t(near)].id, columnOfId, 0, m_modelo->Filas() - 1);
    GTurnos->Seleccionar(row);
    GTurnos->scrollTo(m_modelo->index(FilaDeArriba(row), columnOfHour),
                      QAbstractItemView::PositionAtTop);
}

void frmTurnos::help(const QString &texto, bool falla)
{
    const QString dress = falla ? u"falla"_s : u"suave"_s;
    if (Ayu->property("clase").toString() != dress) {
        Ayu->setProperty("clase", dress);
        Ayu->style()->unpolish(Ayu);
        Ayu->style()->polish(Ayu);
    }
    Ayu->setText(texto);
    Ayu->setAccessibleName(texto);
    QAccessibleEvent told(Ayu, QAccessible::Alert);
    QAccessible::updateAccessibility(&told);
}

Turno frmTurnos::turno() const
{
    Turno t;
    t.concepto = cmbSel->Id();
    t.idm = ida;
    t.dia = dtpDia->Dia();
    t.hora = HoraEscrita(txtHora->text());
    // What is no time is no alarm, without a word: it is optional.
    t.alarma = HoraEscrita(txtAla->text());
    t.descripcion = txtDesc->text().trimmed();
    t.recordar = chkRec->isEnabled() && chkRec->isChecked();
    return t;
}

void frmTurnos::book()
{
    const Turno t = turno();
    if (t.concepto == 0) {
        help(m_s(ElijaConcepto), true);
        return cmbSel->setFocus();
    }
    if (!t.hora.isValid()) {
        txtHora->setFocus();
        txtHora->selectAll();
        return help(m_s(EscribaHora), true);
    }
    if (guarded([&] { Agendar(m_s, t); }))
        FormBase::reject();
}

bool frmTurnos::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && watched == txtDesc) {
        const auto &key = *static_cast<QKeyEvent *>(event);
        if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
            book();
            return true;
        }
    }
    if (event->type() == QEvent::FocusOut && isVisible()
        && EsDejada(*static_cast<QFocusEvent *>(event))) {
        if (watched == txtHora)
            hourLeft();
        if (watched == txtAla) {
            const QTime alarm = HoraEscrita(txtAla->text());
            txtAla->setText(alarm.isValid() ? HoraLarga(alarm) : QString());
        }
    }
    return FormBase::eventFilter(watched, event);
}
