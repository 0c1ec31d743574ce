#include "admin/frmconfiguracion_pages.h"
#include "messages/mail.h"
#include "messages/mail_account.h"
#include "ui/boxes.h"
#include "ui/calm_list.h"
#include "ui/form_base.h"
#include "ui/form_registry.h"
#include "ui/help_line.h"

#include <QFormLayout>
#include <QGuiApplication>
#include <QPushButton>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    ValorNoValido = 31,
    Cuenta = 9585,
    Servidor = 9589,
    NotaDeServidor,
    NombreDelServidor,
    Puerto,
    Cifrado_,
    SinCifrado,
    CuentaEnLaVeterinaria = 9728,
    VerCuenta,
    NoSePudoEnviar = 9985,
    Probar,
    Aceptada,
};

class Correo : public QWidget
{
public:
    explicit Correo(const ContextoDePagina &c) : m_c(c)
    {
        QVBoxLayout *column = Parte::Columna(this);
        addServer(column);
        addWayToAccount(column);
        showServer();
    }

private:
    void addServer(QVBoxLayout *column)
    {
        QFormLayout *rows = Parte::Seccion(column, m_c.s(Servidor), m_c.s(NotaDeServidor));
        txtServidorMail = new QLineEdit;
        txtServidorMail->setObjectName(u"txtServidorMail"_s);
        txtServidorMail->setMinimumWidth(Parte::AnchoDeTexto);
        txtServidorMail->setPlaceholderText(u"smtp.example.com"_s);
        cmbCifrado = new ListaCalma;
        cmbCifrado->setObjectName(u"cmbCifrado"_s);
        cmbCifrado->addItem(u"STARTTLS"_s, int(Cifrado::StartTls));
        cmbCifrado->addItem(u"TLS"_s, int(Cifrado::Tls));
        cmbCifrado->addItem(m_c.s(SinCifrado), int(Cifrado::Ninguno));
        txtPuertoMail = new CajaDeEntero(5);
        txtPuertoMail->setObjectName(u"txtPuertoMail"_s);
        txtPuertoMail->setFixedWidth(Parte::AnchoDeCifra);
        Parte::Fila(rows, m_c.s(NombreDelServidor), txtServidorMail);
        Parte::Fila(rows, m_c.s(Cifrado_), cmbCifrado);
        Parte::Fila(rows, m_c.s(Puerto), txtPuertoMail);
        QPushButton *test = Parte::Boton(m_c.s(Probar), u"cmdProbarMail"_s);
        rows->addRow(QString(), test);
        connect(test, &QPushButton::clicked, this,
                [this] { m_c.guarded([this] { testServer(); }); });
        m_c.sinApostrofes({txtServidorMail});
        m_c.cadenaDeEnter({txtServidorMail, cmbCifrado, txtPuertoMail});

        connect(txtServidorMail, &QLineEdit::editingFinished, this, [this] {
            store([this](CuentaDeCorreo &account) { account.servidor = txtServidorMail->text(); });
        });
        connect(txtPuertoMail, &QLineEdit::editingFinished, this, [this] { storePort(); });
        connect(cmbCifrado, &QComboBox::activated, this, [this] {
            store([this](CuentaDeCorreo &account) {
                const bool usual = account.puerto == PuertoHabitual(account.cifrado);
                account.cifrado = Cifrado(cmbCifrado->currentData().toInt());
                if (usual)
                    account.puerto = PuertoHabitual(account.cifrado);
            });
        });
    }

    // Name and password stand with the clinic's data, because all terminals share them.
    void addWayToAccount(QVBoxLayout *column)
    {
        QFormLayout *rows = Parte::Seccion(column, m_c.s(Cuenta), m_c.s(CuentaEnLaVeterinaria));
        QPushButton *show = Parte::Boton(m_c.s(VerCuenta), u"cmdVerCuenta"_s);
        rows->addRow(show);
        connect(show, &QPushButton::clicked, this, [this] {
            m_c.guarded([this] {
                m_c.formularios.Abrir(u"frmConfiguracion"_s, {{u"pagina"_s, u"clinica"_s}});
            });
        });
    }

    // Signs on and off again: better now than with the mails of tomorrow.
    void testServer()
    {
        QString reason;
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        const auto back = qScopeGuard([] { QGuiApplication::restoreOverrideCursor(); });
        auto session = AbrirSesionCorreo(m_c.s, &reason, [] {
            QGuiApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        });
        const bool works = session != nullptr;
        CerrarSesionCorreo(session);
        if (works)
            m_c.ayuda->Logro(m_c.s(Aceptada));
        else if (!reason.isEmpty()) // else it has been told what is missing
            m_c.ayuda->Fallo(m_c.s(NoSePudoEnviar).arg(reason));
    }

    void showServer()
    {
        const CuentaDeCorreo account = LeerCuentaDeCorreo(m_c.s);
        txtServidorMail->setText(account.servidor);
        txtPuertoMail->PonerEntero(account.puerto);
        cmbCifrado->setCurrentIndex(cmbCifrado->findData(int(account.cifrado)));
    }

    void storePort()
    {
        const std::optional<int> port = txtPuertoMail->Entero();
        if (port && !EsPuerto(*port)) {
            m_c.ayuda->Fallo(m_c.s(ValorNoValido));
            return showServer();
        }
        store([port](CuentaDeCorreo &account) {
            account.puerto = port.value_or(PuertoHabitual(account.cifrado));
        });
    }

    void store(const std::function<void(CuentaDeCorreo &)> &change)
    {
        m_c.guarded([&] {
            CuentaDeCorreo account = LeerCuentaDeCorreo(m_c.s);
            change(account);
            GuardarServidorDeCorreo(m_c.s, account);
        });
        showServer();
    }

    ContextoDePagina m_c;
    QLineEdit *txtServidorMail = nullptr;
    ListaCalma *cmbCifrado = nullptr;
    CajaDeEntero *txtPuertoMail = nullptr;
};

} // namespace

QWidget *PaginaDeCorreo(const ContextoDePagina &c) { return new Correo(c); }
