#include "clients/frmtel.h"

#include "store/settings_row.h"
#include "ui/help_line.h"
#include "ui/theme.h"

#include <QComboBox>
#include <QFormLayout>
#include <QPushButton>
#include <QSerialPortInfo>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    TelefonoNoValido = 2268,
    Marcando = 4405,
    Numero = 9514,
    Titulo = 9535,
    Puerto = 9536,
    Llamar = 9537,
    Terminar = 9538,
    ElijaElPuerto = 9539,
    Marcado = 9540,
    NoSePudo = 9541,
    SinRespuesta = 9542,
    Terminada = 9543,
};

// A modem is this machine's, not the clinic's.
const QString portSetting = u"frmTel/puerto"_s;

constexpr int smallestWidth = 400;

} // namespace

frmTel::frmTel(Sesion &s, QWidget *parent) : FormBase(s, u"frmTel"_s, parent)
{
    setWindowTitle(s(Titulo));
    setWindowModality(Qt::ApplicationModal);
    build();
    connect(&m_marcador, &Marcador::marcado, this, [this] { lblEstado->Logro(m_s(Marcado)); });
    connect(&m_marcador, &Marcador::fallado, this, &frmTel::failed);
}

frmTel::~frmTel() { m_marcador.Terminar(); }

void frmTel::build()
{
    cmbNumero = named(new QComboBox, u"cmbNumero"_s, m_s(Numero));
    cmbPuerto = named(new QComboBox, u"cmbPuerto"_s, m_s(Puerto));
    for (QComboBox *list : {cmbNumero, cmbPuerto}) {
        list->setEditable(true);
        list->setInsertPolicy(QComboBox::NoInsert);
        list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }
    cmdLlamar = button(u"cmdLlamar"_s, Llamar);
    cmdLlamar->setDefault(true);
    cmdTerminar = button(u"cmdTerminar"_s, Terminar);
    lblEstado = named(new LineaDeAyuda, u"lblEstado"_s, {});

    auto *boxes = new QFormLayout;
    boxes->setHorizontalSpacing(Espacio::L);
    boxes->setVerticalSpacing(Espacio::M);
    boxes->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    boxes->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    boxes->addRow(m_s(Numero), cmbNumero);
    boxes->addRow(m_s(Puerto), cmbPuerto);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(Espacio::S);
    buttons->addStretch();
    buttons->addWidget(cmdTerminar);
    buttons->addWidget(cmdLlamar);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(Espacio::XL, Espacio::XL, Espacio::XL, Espacio::L);
    all->setSpacing(Espacio::L);
    all->addLayout(boxes);
    all->addWidget(lblEstado);
    all->addLayout(buttons);
    setMinimumWidth(smallestWidth);

    enterChain({cmbNumero, cmbPuerto, cmdLlamar});
    setTabOrder(cmdLlamar, cmdTerminar);
    connect(cmdLlamar, &QPushButton::clicked, this, &frmTel::call);
    connect(cmdTerminar, &QPushButton::clicked, this, &frmTel::hangUp);
}

void frmTel::opened(const QVariantMap &parametros)
{
    cmbNumero->clear();
    cmbNumero->addItems(parametros.value(u"numeros"_s).toStringList());
    listPorts();
    cmdLlamar->setFocus();
    lblEstado->Limpiar();
    // Once it is on the screen: what goes wrong is told there.
    if (!cmbPuerto->currentText().isEmpty()) {
        QTimer::singleShot(0, this, &frmTel::call);
    } else {
        lblEstado->Decir(m_s(ElijaElPuerto));
        cmbPuerto->setFocus();
    }
}

void frmTel::listPorts()
{
    QStringList ports;
    for (const QSerialPortInfo &port : QSerialPortInfo::availablePorts())
        ports << port.portName();
    const QString last = LeerAjusteDeMaquina(m_s, portSetting);
    cmbPuerto->clear();
    cmbPuerto->addItems(ports);
    // Several ports, and none of them ever used: the first is seldom the modem.
    cmbPuerto->setEditText(last.isEmpty() && ports.size() == 1 ? ports.first() : last);
}

void frmTel::call()
{
    const QString number = NumeroParaMarcar(cmbNumero->currentText());
    const QString port = cmbPuerto->currentText().trimmed();
    if (number.isEmpty()) {
        lblEstado->Fallo(m_s(TelefonoNoValido));
        return cmbNumero->setFocus();
    }
    if (port.isEmpty()) {
        lblEstado->Fallo(m_s(ElijaElPuerto));
        return cmbPuerto->setFocus();
    }
    lblEstado->Decir(m_s(Marcando) + number);
    if (!m_marcador.Llamar(port, number))
        return failed(m_marcador.Error());
    guarded([this, &port] { GuardarAjusteDeMaquina(m_s, portSetting, port); });
}

void frmTel::failed(const QString &motivo)
{
    lblEstado->Fallo(m_s(NoSePudo) + u' ' + (motivo.isEmpty() ? m_s(SinRespuesta) : motivo));
}

void frmTel::hangUp()
{
    m_marcador.Terminar();
    lblEstado->Decir(m_s(Terminada));
}

void frmTel::reject()
{
    m_marcador.Terminar();
    FormBase::reject();
}
