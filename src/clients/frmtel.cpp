#include "clients/frmtel.h"

#include "store/settings_row.h"
#include "texts/clients.h"
#include "texts/texts.h"
#include "ui/help_line.h"
#include "ui/theme.h"

#include <QComboBox>
#include <QFormLayout>
#include <QPushButton>
#include <QSerialPortInfo>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

// The modem belongs to this machine, not to the clinic.
const QString portSetting = u"frmTel/puerto"_s;

constexpr int SmallestWidth = 400;

} // namespace

frmTel::frmTel(Sesion &s, QWidget *parent) : ui::FormBase(s, u"frmTel"_s, parent)
{
    setWindowTitle(s(text::CallTitle));
    setWindowModality(Qt::ApplicationModal);
    build();
    connect(&m_dialler, &Dialler::marked, this,
            [this] { lblEstado->success(m_s(text::CallDialled)); });
    connect(&m_dialler, &Dialler::failed, this, &frmTel::failed);
}

frmTel::~frmTel() { m_dialler.finish(); }

void frmTel::build()
{
    cmbNumero = named(new QComboBox, u"cmbNumero"_s, m_s(text::RegistryClientNumber));
    cmbPuerto = named(new QComboBox, u"cmbPuerto"_s, m_s(text::CallPort));
    for (QComboBox *list : {cmbNumero, cmbPuerto}) {
        list->setEditable(true);
        list->setInsertPolicy(QComboBox::NoInsert);
        list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }
    cmdLlamar = button(u"cmdLlamar"_s, text::CallButton);
    cmdLlamar->setDefault(true);
    cmdTerminar = button(u"cmdTerminar"_s, text::HangUpButton);
    lblEstado = named(new ui::HelpLine, u"lblEstado"_s, {});

    auto *boxes = new QFormLayout;
    boxes->setHorizontalSpacing(ui::space::L);
    boxes->setVerticalSpacing(ui::space::M);
    boxes->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    boxes->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    boxes->addRow(m_s(text::RegistryClientNumber), cmbNumero);
    boxes->addRow(m_s(text::CallPort), cmbPuerto);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(ui::space::S);
    buttons->addStretch();
    buttons->addWidget(cmdTerminar);
    buttons->addWidget(cmdLlamar);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(ui::space::XL, ui::space::XL, ui::space::XL, ui::space::L);
    all->setSpacing(ui::space::L);
    all->addLayout(boxes);
    all->addWidget(lblEstado);
    all->addLayout(buttons);
    setMinimumWidth(SmallestWidth);

    enterChain({cmbNumero, cmbPuerto, cmdLlamar});
    setTabOrder(cmdLlamar, cmdTerminar);
    connect(cmdLlamar, &QPushButton::clicked, this, &frmTel::call);
    connect(cmdTerminar, &QPushButton::clicked, this, &frmTel::hangUp);
}

void frmTel::opened(const QVariantMap &parameters)
{
    cmbNumero->clear();
    cmbNumero->addItems(parameters.value(u"numeros"_s).toStringList());
    listPorts();
    cmdLlamar->setFocus();
    lblEstado->clean();
    // Queued, so that an error is shown once the form is on screen.
    if (!cmbPuerto->currentText().isEmpty()) {
        QTimer::singleShot(0, this, &frmTel::call);
    } else {
        lblEstado->tell(m_s(text::CallHint));
        cmbPuerto->setFocus();
    }
}

void frmTel::listPorts()
{
    QStringList ports;
    for (const QSerialPortInfo &port : QSerialPortInfo::availablePorts())
        ports << port.portName();
    const QString last = store::readMachineSetting(m_s, portSetting);
    cmbPuerto->clear();
    cmbPuerto->addItems(ports);
    // With several ports and none used before, none is proposed: the first is rarely the modem.
    cmbPuerto->setEditText(last.isEmpty() && ports.size() == 1 ? ports.first() : last);
}

void frmTel::call()
{
    const QString number = NumberToDial(cmbNumero->currentText());
    const QString port = cmbPuerto->currentText().trimmed();
    if (number.isEmpty()) {
        lblEstado->faultOf(m_s(text::InvalidPhone));
        return cmbNumero->setFocus();
    }
    if (port.isEmpty()) {
        lblEstado->faultOf(m_s(text::CallHint));
        return cmbPuerto->setFocus();
    }
    lblEstado->tell(m_s(text::DiallingTitle) + number);
    if (!m_dialler.call(port, number))
        return failed(m_dialler.error());
    guarded([this, &port] { store::saveMachineSetting(m_s, portSetting, port); });
}

void frmTel::failed(const QString &reason)
{
    lblEstado->faultOf(m_s(text::CallFailed) + u' '
                       + (reason.isEmpty() ? m_s(text::ModemDoesNotAnswer) : reason));
}

void frmTel::hangUp()
{
    m_dialler.finish();
    lblEstado->tell(m_s(text::CallEnded));
}

void frmTel::reject()
{
    m_dialler.finish();
    ui::FormBase::reject();
}
