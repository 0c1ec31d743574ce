#include "agenda/frmturnos.h"

#include "agenda/frmagenda_look.h"
#include "agenda/task_texts.h"
#include "agenda/tasks.h"
#include "contact/contact.h"
#include "store/lookups.h"
#include "texts/agenda.h"
#include "texts/clients.h"
#include "texts/texts.h"
#include "texts/ui.h"
#include "ui/boxes.h"
#include "ui/completion_list.h"
#include "ui/day_box.h"
#include "ui/grid.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QAccessible>
#include <QCheckBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QStyle>

using namespace agenda;
using namespace Qt::StringLiterals;

namespace
{

constexpr QSize BookingSize{900, 520};
constexpr int BoxesWidth = 380;
constexpr int HelpLines = 3;
constexpr int ColumnOfConcept = 0, ColumnOfHour = 1;

} // namespace

frmTurnos::frmTurnos(Sesion &s, QWidget *parent) : ui::FormBase(s, u"frmTurnos"_s, parent)
{
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(s(text::BookingTitle));
    build();
    wire();
}

void frmTurnos::build()
{
    setStyleSheet(agendaStyle());
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

    cmdAgendar = button(u"cmdAgendar"_s, text::BookingBook, u"turnos"_s);
    cmdAgendar->setDefault(true);
    cmdVolver = button(u"cmdVolver"_s, text::AgendaLayoutGoBack, {}, u"Esc"_s);

    auto *halves = new QGridLayout;
    halves->setHorizontalSpacing(ui::space::XL);
    halves->setVerticalSpacing(ui::space::L);
    auto *names = new QVBoxLayout;
    names->setSpacing(2);
    names->addWidget(lblPaciente);
    names->addWidget(lblCliente);
    halves->addLayout(names, 0, 0);
    halves->addLayout(buildBoxes(), 1, 0);
    halves->addLayout(buildList(), 0, 1, 2, 1);
    halves->setColumnMinimumWidth(0, BoxesWidth);
    halves->setColumnStretch(0, 2);
    halves->setColumnStretch(1, 3);
    halves->setRowStretch(1, 1);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(ui::space::S);
    buttons->addStretch();
    buttons->addWidget(cmdVolver);
    buttons->addWidget(cmdAgendar);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(ui::space::XL, ui::space::L, ui::space::XL, ui::space::L);
    all->setSpacing(ui::space::M);
    all->addLayout(halves, 1);
    all->addWidget(Ayu);
    all->addLayout(buttons);
    Ayu->ensurePolished();
    Ayu->setMinimumHeight(HelpLines * Ayu->fontMetrics().lineSpacing());
    rememberSize(BookingSize);
    showTitles(GTurnos);
    rememberColumns(GTurnos->horizontalHeader());
}

QLayout *frmTurnos::buildBoxes()
{
    cmbSel = named(new ui::ListWithCompleted, u"cmbSel"_s, m_s(text::BookingConcept));
    dtpDia = named(new ui::DayBox(m_s, store::Lean::Ahead, ui::DayBox::Need::Required), u"dtpDia"_s,
                   m_s(text::Day));
    txtHora = named(new QLineEdit, u"txtHora"_s, m_s(text::Hour));
    txtAla = named(new QLineEdit, u"txtAla"_s, m_s(text::BookingAlarm));
    txtAla->setPlaceholderText(m_s(text::BookingOptional));
    txtDesc = named(new QLineEdit, u"txtDesc"_s, m_s(text::BookingDescription));
    txtDesc->setMaxLength(std::max(1, m_s.morvane->widthOf("TareasAgenda", "des")));
    chkRec = named(new QCheckBox(m_s(text::RemindByMail)), u"chkRec"_s, m_s(text::RemindByMail));

    auto *boxes = new QGridLayout;
    boxes->setHorizontalSpacing(ui::space::M);
    boxes->setVerticalSpacing(ui::space::M);
    boxes->setColumnStretch(1, 1);
    int row = 0;
    const auto put = [&](int text, QWidget *box) {
        auto *label = new QLabel(m_s(text));
        label->setBuddy(box);
        boxes->addWidget(label, row, 0);
        boxes->addWidget(box, row++, 1);
    };
    put(text::BookingConcept, cmbSel);
    put(text::Day, dtpDia);
    put(text::Hour, txtHora);
    put(text::BookingAlarm, txtAla);
    boxes->addWidget(chkRec, row++, 1);
    put(text::BookingDescription, txtDesc);
    boxes->setRowStretch(row, 1);
    return boxes;
}

QLayout *frmTurnos::buildList()
{
    m_model = new ui::GridModel(m_s,
                                {{m_s(text::TaskColumn), ui::Kind::Text, 220},
                                 {m_s(text::Hour), ui::Kind::Hour, 64},
                                 {m_s(text::Patient), ui::Kind::Text, 120},
                                 {u"id"_s, ui::Kind::Whole, 0, true}},
                                this);
    GTurnos = named(new ui::Grid(m_s, m_model), u"GTurnos"_s, m_s(text::DayAppointments));
    GTurnos->setEmptyText(m_s(text::NoAppointmentsYet));
    GTurnos->setItemDelegateForColumn(
        ColumnOfConcept,
        new PicturePainter(
            [this](const QModelIndex &cell) { return sheetIcon(m_s, cell.data().toString()); },
            true, GTurnos));
    auto *title = new QLabel(m_s(text::DayAppointments));
    title->setProperty("clase", u"suave"_s);
    title->setBuddy(GTurnos);
    auto *column = new QVBoxLayout;
    column->setSpacing(ui::space::XS);
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
    connect(cmbSel, &ui::ListWithCompleted::typed, this, &frmTurnos::complete);
    connect(cmbSel, &ui::ListWithCompleted::chosen, this, &frmTurnos::conceptChosen);
    connect(cmbSel, &ui::ListWithCompleted::emptied, this, &frmTurnos::conceptChosen);
    connect(dtpDia, &ui::DayBox::dayChanged, this, [this] {
        guarded([this] { loadDay(); });
        if (chkRec->isChecked())
            help(hint());
    });
    connect(chkRec, &QCheckBox::toggled, this, [this] { help(hint()); });
    connect(cmdAgendar, &QPushButton::clicked, this, &frmTurnos::book);
    connect(cmdVolver, &QPushButton::clicked, this, &frmTurnos::reject);
}

void frmTurnos::opened(const QVariantMap &parameters)
{
    ida = parameters.value(u"ida"_s, m_s.IdGlobal.idm).toInt();
    const QDate day = parameters.value(u"dia"_s).toDate();
    const QTime hour = parameters.value(u"hora"_s).toTime();
    guarded([&] {
        showPatient();
        loadConcepts();
        const QSignalBlocker silent(dtpDia);
        dtpDia->setDay(day.isValid() ? day : m_s.reloj.hoy);
        loadDay();
    });
    txtHora->setText(longHour(hour.isValid() ? hour : m_s.reloj.hourOf()));
    txtAla->clear();
    txtDesc->clear();
    chkRec->setChecked(false);
    cmbSel->SeleccionarItem(0);
    conceptChosen();
    cmbSel->setFocus();
    m_toBegin = typed();
}

void frmTurnos::reject()
{
    if (typed() == m_toBegin
        || !m_s.dialogos.decide(m_s(text::LeaveUnsavedQuestion), m_s(text::KeepTyping),
                                m_s(text::DiscardTyped)))
        ui::FormBase::reject();
}

/// What would be lost on closing. Hours are normalised, so that other spellings are no change.
QStringList frmTurnos::typed() const
{
    const auto hour = [](const QLineEdit *box) {
        const QTime time = typedHour(box->text());
        return time.isValid() ? time.toString(u"HH:mm") : box->text().trimmed();
    };
    return {cmbSel->currentText().trimmed(),
            dtpDia->day().toString(Qt::ISODate),
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
    lblPaciente->setText(ida > 0 ? name : m_s(text::NoPatientChosen));
    QStringList reach{owner.isEmpty() ? QString() : m_s(text::Client) + u": "_s + owner,
                      TelefonosCliente(m_s, idc)};
    reach.removeAll(QString());
    lblCliente->setText(ida > 0 ? reach.join(u"  ·  "_s) : m_s(text::BookForPatientHint));
}

void frmTurnos::loadConcepts()
{
    m_concepts = appointmentConcepts(m_s);
    QList<store::Option> options;
    for (const AppointmentConcept &c : m_concepts)
        options.append({c.nom, c.ida});
    cmbSel->clear();
    cmbSel->load(options);
}

void frmTurnos::loadDay()
{
    m_appointments = dayAppointments(m_s, dtpDia->day());
    std::vector<ui::GridRow> rows;
    for (const DayTask &t : m_appointments)
        rows.push_back({{t.item, t.hor, t.patient, t.id}});
    m_model->sort(-1, Qt::AscendingOrder); // by hour, whatever column was clicked before
    m_model->set(std::move(rows));
}

void frmTurnos::complete(const QString &text)
{
    for (const AppointmentConcept &c : m_concepts)
        if (c.nom.startsWith(text, Qt::CaseInsensitive)) {
            cmbSel->propose(c.ida, c.nom);
            break;
        }
    conceptChosen();
}

void frmTurnos::conceptChosen()
{
    const int chosen = cmbSel->Id();
    const bool forClient = ida > 0 && chosen != 0 && chosen != TaskKind::UserTask;
    chkRec->setEnabled(forClient);
    if (!forClient)
        chkRec->setChecked(false);
    help(hint());
}

QString frmTurnos::hint() const
{
    if (remindsInVain())
        return m_s(text::ReminderGoesInTheMorning);
    return m_s(cmbSel->Id() != 0 ? text::MoreConceptsHint : text::ChooseConceptFirst);
}

/// Whether a reminder was asked for in vain: those for today have been sent already.
bool frmTurnos::remindsInVain() const
{
    return chkRec->isChecked() && dtpDia->day() == m_s.reloj.hoy;
}

void frmTurnos::hourLeft()
{
    const QTime hour = typedHour(txtHora->text());
    if (!hour.isValid())
        return help(m_s(text::TypeTheTime), true);
    txtHora->setText(longHour(hour));
    help(m_s(text::Day) + u": "_s + QLocale().toString(dtpDia->day(), QLocale::LongFormat)
         + u".  "_s + m_s(text::Hour) + u": "_s + longHour(hour) + u'.'
         + (remindsInVain() ? u'\n' + m_s(text::ReminderGoesInTheMorning) : QString()));
    const int near = nearestRow(m_appointments, hour);
    if (near < 0)
        return GTurnos->Seleccionar(-1);
    // The list may have been sorted by a click on a column title.
    const int row = m_model->rowOf(m_appointments[size_t(near)].id);
    GTurnos->Seleccionar(row);
    GTurnos->scrollTo(m_model->index(rowAbove(row), ColumnOfHour),
                      QAbstractItemView::PositionAtTop);
}

void frmTurnos::help(const QString &text, bool failure)
{
    const QString dress = failure ? u"falla"_s : u"suave"_s;
    if (Ayu->property("clase").toString() != dress) {
        Ayu->setProperty("clase", dress);
        Ayu->style()->unpolish(Ayu);
        Ayu->style()->polish(Ayu);
    }
    Ayu->setText(text);
    Ayu->setAccessibleName(text);
    QAccessibleEvent told(Ayu, QAccessible::Alert);
    QAccessible::updateAccessibility(&told);
}

Appointment frmTurnos::appointment() const
{
    Appointment t;
    t.item = cmbSel->Id();
    t.idm = ida;
    t.dia = dtpDia->day();
    t.hour = typedHour(txtHora->text());
    // The alarm is optional, so an invalid time simply means none.
    t.alarm = typedHour(txtAla->text());
    t.description = txtDesc->text().trimmed();
    t.remind = chkRec->isEnabled() && chkRec->isChecked();
    return t;
}

void frmTurnos::book()
{
    const Appointment t = appointment();
    if (t.item == 0) {
        help(m_s(text::ChooseConceptFirst), true);
        return cmbSel->setFocus();
    }
    if (!dtpDia->commit())
        return dtpDia->setFocus();
    if (!t.hour.isValid()) {
        txtHora->setFocus();
        txtHora->selectAll();
        return help(m_s(text::TypeTheTime), true);
    }
    if (t.dia < m_s.reloj.hoy
        && !m_s.dialogos.Pregunta(m_s(text::BookInThePastQuestion) + u"\n\n"_s
                                  + QLocale().toString(t.dia, QLocale::LongFormat)))
        return dtpDia->setFocus();
    if (guarded([&] { agenda::book(m_s, t); }))
        ui::FormBase::reject();
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
        && ui::isLeft(*static_cast<QFocusEvent *>(event))) {
        if (watched == txtHora)
            hourLeft();
        if (watched == txtAla) {
            const QTime alarm = typedHour(txtAla->text());
            txtAla->setText(alarm.isValid() ? longHour(alarm) : QString());
        }
    }
    return ui::FormBase::eventFilter(watched, event);
}
