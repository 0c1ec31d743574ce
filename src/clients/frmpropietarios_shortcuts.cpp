#include "clients/frmpropietarios_shortcuts.h"

#include "clients/dialling.h"
#include "clients/frmpropietarios_fields.h"
#include "clients/registry.h"
#include "ui/form_registry.h"
#include "ui/help_line.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QDesktopServices>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    ElijaUnRegistro = 38,
    ElijaParaHospedar = 2262,
    SinCorreo = 2263,
    TelefonoNoValido = 2268,
    ElijaParaTurno = 2269,
    Salir = 3704,
    Ficha_ = 9468,
    Vender = 9469,
    Obra = 9470,
    Hospedaje = 9471,
    Turnos = 9472,
    Deuda = 9473,
    Avisos = 9474,
    Correo_ = 9475,
    Llamar = 9476,
    Imprimir = 9477,
    CorreoNoAbre = 9523,
    AccesoRapido = 9532,
};

enum class Necesita { Nada, Cliente, Paciente };

} // namespace

struct BarraDeAccesos::Acceso {
    QPushButton *BarraDeAccesos::*boton;
    QStringView nombre;
    int texto;
    QStringView dibujo;
    QStringView formulario;
    Necesita necesita;
    int sinPaciente = ElijaUnRegistro; // what is said without one
    QStringView tecla = {};            // works in every language
};

const QList<BarraDeAccesos::Acceso> &BarraDeAccesos::accesses()
{
    using B = BarraDeAccesos;
    using enum Necesita;
    static const QList<Acceso> list = {
        {&B::cmdficha, u"cmdficha", Ficha_, u"ficha", u"frmficha", Paciente, ElijaUnRegistro,
         u"Alt+F"},
        {&B::cmdvender, u"cmdvender", Vender, u"vender", u"frmventas", Cliente, ElijaUnRegistro,
         u"Alt+V"},
        {&B::cmdobra, u"cmdobra", Obra, u"obra", u"frmos", Cliente, ElijaUnRegistro, u"Alt+O"},
        {&B::cmdHospedaje, u"cmdHospedaje", Hospedaje, u"hospedar", u"frmHospedaje", Paciente,
         ElijaParaHospedar},
        {&B::cmdTurnos, u"cmdTurnos", Turnos, u"turnos", u"frmTurnos", Paciente, ElijaParaTurno},
        {&B::cmddeuda, u"cmddeuda", Deuda, u"deuda", u"frmCtaCte", Cliente},
        {&B::cmdAvisos, u"cmdAvisos", Avisos, u"avisos", u"frmAvisosPlanificadas", Nada},
        {&B::cmdMail, u"cmdMail", Correo_, u"correo", u"", Cliente},
        {&B::cmdTel, u"cmdTel", Llamar, u"telefono", u"", Cliente},
        {&B::cmdImprimir, u"cmdImprimir", Imprimir, u"imprimir", u"frmlistados", Nada},
    };
    return list;
}

BarraDeAccesos::BarraDeAccesos(Sesion &s, Formularios &formularios, Atar::Guardia guardia,
                               AbrirEnlace abrir, LineaDeAyuda *ayuda, QWidget *parent)
    : QWidget(parent),
      m_s(s),
      m_formularios(formularios),
      m_guardia(std::move(guardia)),
      m_abrir(abrir ? std::move(abrir) : AbrirEnlace(&QDesktopServices::openUrl)),
      m_ayuda(ayuda)
{
    build();
    buildMenu();
}

void BarraDeAccesos::build()
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->setSpacing(0);
    for (const Acceso &access : accesses()) {
        const QString caption = m_s(access.texto);
        auto *b = new QPushButton(Icono(access.dibujo.toString()), {});
        b->setObjectName(access.nombre.toString());
        PonerTitulo(b, caption);
        b->setProperty("clase", u"barra"_s);
        b->setIconSize({20, 20});
        b->setAutoDefault(false);
        const QKeySequence key(access.tecla.toString());
        if (!key.isEmpty()) {
            b->setToolTip(b->accessibleName() + u" ("_s + key.toString(QKeySequence::NativeText)
                          + u')');
            if (QKeySequence::mnemonic(caption) != key)
                connect(new QShortcut(key, this), &QShortcut::activated, b, &QPushButton::click);
        }
        connect(b, &QPushButton::clicked, this, [this, &access] { take(access); });
        this->*access.boton = b;
        row->addWidget(b);
    }
}

void BarraDeAccesos::buildMenu()
{
    m_menu = new QMenu(this);
    m_menu->setObjectName(u"menuRapido"_s);
    m_menu->setAccessibleName(m_s(AccesoRapido));
    m_menu->installEventFilter(this);
    m_titulo = m_menu->addAction(QString());
    m_titulo->setObjectName(u"menuTitulo"_s);
    m_titulo->setEnabled(false);
    m_menu->addSeparator();
    QPushButton *const buttons[] = {cmdficha, cmdvender, cmdobra, nullptr};
    for (size_t i = 0; i < m_entradas.size(); ++i) {
        QPushButton *b = buttons[i];
        const QString number = QString::number(i + 1);
        const QString caption = b ? b->text() : u'&' + m_s(Salir);
        QAction *entry = m_entradas[i] = m_menu->addAction(caption + u'\t' + number);
        entry->setObjectName(u"menu"_s + number);
        if (!b)
            continue;
        entry->setIcon(b->icon());
        connect(entry, &QAction::triggered, b, &QPushButton::click);
        connect(m_menu, &QMenu::aboutToShow, entry,
                [entry, b] { entry->setEnabled(b->isEnabled()); });
    }
}

void BarraDeAccesos::Actualizar(bool libre)
{
    for (const Acceso &access : accesses()) {
        const bool known =
            access.formulario.isEmpty() || m_formularios.Existe(access.formulario.toString());
        // Who has no patient yet is told so; what is not there at all cannot be pressed.
        const bool tells = access.sinPaciente != ElijaUnRegistro && m_s.IdGlobal.idm == 0;
        (this->*access.boton)->setEnabled(libre && (known || tells));
    }
}

void BarraDeAccesos::PonerHospedaje(Estancia estancia)
{
    cmdHospedaje->setProperty("tag", EtiquetaDe(estancia));
    cmdHospedaje->setIcon(Icono(DibujoDe(estancia)));
}

void BarraDeAccesos::take(const Acceso &acceso)
{
    if (acceso.necesita != Necesita::Nada && m_s.IdGlobal.idc == 0)
        return m_s.dialogos.Mensaje(m_s(acceso.sinPaciente));
    if (acceso.necesita == Necesita::Paciente && m_s.IdGlobal.idm == 0)
        return m_s.dialogos.Mensaje(m_s(acceso.sinPaciente));
    if (acceso.boton == &BarraDeAccesos::cmdTel)
        return Telefono();
    m_guardia([this, &acceso] {
        if (acceso.boton == &BarraDeAccesos::cmdMail)
            Correo(savedMail());
        else
            m_formularios.Abrir(acceso.formulario.toString());
    });
}

QString BarraDeAccesos::savedMail()
{
    const auto client = LeerCliente(m_s, m_s.IdGlobal.idc);
    return client ? client->email : QString();
}

void BarraDeAccesos::Correo(const QString &direcciones)
{
    const QString plain = direcciones.simplified().remove(u' ');
    if (plain.isEmpty())
        return m_s.dialogos.Mensaje(m_s(SinCorreo));
    QUrl link;
    link.setScheme(u"mailto"_s);
    link.setPath(plain);
    if (!m_abrir(link))
        m_ayuda->Fallo(m_s(CorreoNoAbre));
}

void BarraDeAccesos::Telefono()
{
    m_guardia([this] {
        QStringList numbers;
        if (const auto client = LeerCliente(m_s, m_s.IdGlobal.idc))
            for (const QString &phone : (client->tel2 + u',' + client->telc2).split(u','))
                if (const QString number = NumeroParaMarcar(phone); !number.isEmpty())
                    numbers << number;
        if (numbers.isEmpty())
            return m_s.dialogos.Mensaje(m_s(TelefonoNoValido));
        m_formularios.Abrir(u"frmTel"_s, {{u"numeros"_s, numbers}});
    });
}

void BarraDeAccesos::AbrirMenu(const QPoint &lugar, const QString &cliente)
{
    // An & of the name is no ALT key.
    m_titulo->setText(QString(cliente).replace(u'&', u"&&"_s));
    m_menu->popup(lugar);
    for (QAction *entry : m_entradas)
        if (entry->isEnabled())
            return m_menu->setActiveAction(entry);
}

bool BarraDeAccesos::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_menu && event->type() == QEvent::KeyPress) {
        const int digit = static_cast<QKeyEvent *>(event)->key() - Qt::Key_1;
        if (digit >= 0 && size_t(digit) < m_entradas.size()) {
            QAction *entry = m_entradas[size_t(digit)];
            if (entry->isEnabled()) {
                m_menu->close();
                entry->trigger();
            }
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
