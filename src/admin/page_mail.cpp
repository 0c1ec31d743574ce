#include "admin/pages.h"
#include "messages/mail_account.h"
#include "ui/boxes.h"
#include "ui/form_base.h"

#include <QComboBox>
#include <QFormLayout>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Usuario_ = 33,
    Cuenta = 9585,
    NotaDeCuenta,
    ModificarCuenta,
    SinCuenta,
    Servidor,
    NotaDeServidor,
    NombreDelServidor,
    Puerto,
    Cifrado_,
    SinCifrado,
};

class Correo : public QWidget
{
public:
    explicit Correo(const ContextoDePagina &c) : m_c(c)
    {
        QVBoxLayout *column = Parte::Columna(this);
        addAccount(column);
        addServer(column);
        showAccount();
        showServer();
    }

private:
    void addAccount(QVBoxLayout *column)
    {
        QFormLayout *rows = Parte::Seccion(column, m_c.s(Cuenta), m_c.s(NotaDeCuenta));
        lblUsuarioMail = named(new QLabel, u"lblUsuarioMail"_s, {});
        lblUsuarioMail->setTextFormat(Qt::PlainText);
        lblUsuarioMail->setWordWrap(true);
        cmdModMail = Parte::Boton(m_c.s(ModificarCuenta), u"cmdModMail"_s);
        rows->addRow(lblUsuarioMail);
        rows->addRow(cmdModMail);
        connect(cmdModMail, &QPushButton::clicked, this, [this] {
            m_c.guarded([this] {
                if (ModificarCuentaDeCorreo(m_c.s))
                    showAccount();
            });
        });
    }

    void addServer(QVBoxLayout *column)
    {
        QFormLayout *rows = Parte::Seccion(column, m_c.s(Servidor), m_c.s(NotaDeServidor));
        txtServidorMail = new QLineEdit;
        txtServidorMail->setObjectName(u"txtServidorMail"_s);
        txtServidorMail->setMinimumWidth(Parte::AnchoDeTexto);
        txtServidorMail->setPlaceholderText(u"smtp.example.com"_s);
        cmbCifrado = new QComboBox;
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
        m_c.sinApostrofes({txtServidorMail});
        m_c.cadenaDeEnter({txtServidorMail, cmbCifrado, txtPuertoMail});

        connect(txtServidorMail, &QLineEdit::editingFinished, this, [this] { store(); });
        connect(txtPuertoMail, &QLineEdit::editingFinished, this, [this] { store(); });
        connect(cmbCifrado, &QComboBox::activated, this, [this] {
            const Cifrado before = LeerCuentaDeCorreo(m_c.s).cifrado;
            if (txtPuertoMail->Entero().value_or(0) == PuertoHabitual(before))
                txtPuertoMail->PonerEntero(PuertoHabitual(chosen()));
            store();
        });
    }

    void showAccount()
    {
        const CuentaDeCorreo account = LeerCuentaDeCorreo(m_c.s);
        const QString text = account.usuario.isEmpty()
                                 ? m_c.s(SinCuenta)
                                 : m_c.s(Usuario_) + u": "_s + account.usuario;
        lblUsuarioMail->setText(text);
        lblUsuarioMail->setAccessibleName(text);
    }

    void showServer()
    {
        const CuentaDeCorreo account = LeerCuentaDeCorreo(m_c.s);
        txtServidorMail->setText(account.servidor);
        txtPuertoMail->PonerEntero(account.puerto);
        cmbCifrado->setCurrentIndex(cmbCifrado->findData(int(account.cifrado)));
    }

    void store()
    {
        m_c.guarded([this] {
            CuentaDeCorreo account = LeerCuentaDeCorreo(m_c.s);
            account.servidor = txtServidorMail->text();
            account.cifrado = chosen();
            account.puerto = txtPuertoMail->Entero().value_or(0);
            GuardarServidorDeCorreo(m_c.s, account);
        });
        showServer(); // a port that is none becomes the usual one
    }

    Cifrado chosen() const { return Cifrado(cmbCifrado->currentData().toInt()); }

    ContextoDePagina m_c;
    QLabel *lblUsuarioMail = nullptr;
    QPushButton *cmdModMail = nullptr;
    QLineEdit *txtServidorMail = nullptr;
    QComboBox *cmbCifrado = nullptr;
    CajaDeEntero *txtPuertoMail = nullptr;
};

} // namespace

QWidget *PaginaDeCorreo(const ContextoDePagina &c) { return new Correo(c); }
