#include "admin/frmconfiguracion_pages.h"
#include "messages/mail.h"
#include "messages/mail_account.h"
#include "texts/admin.h"
#include "texts/agenda.h"
#include "texts/texts.h"
#include "ui/boxes.h"
#include "ui/calm_list.h"
#include "ui/form_base.h"
#include "ui/form_registry.h"
#include "ui/help_line.h"

#include <QFormLayout>
#include <QGuiApplication>
#include <QPushButton>
#include <QScopeGuard>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

class Mail : public QWidget
{
public:
    explicit Mail(const PageContext &c) : m_c(c)
    {
        QVBoxLayout *column = parts::Column(this);
        addServer(column);
        addWayToAccount(column);
        showServer();
    }

private:
    void addServer(QVBoxLayout *column)
    {
        QFormLayout *rows =
            parts::sectionOf(column, m_c.s(text::SettingsMailServer), m_c.s(text::ServerNote));
        txtServidorMail = new QLineEdit;
        txtServidorMail->setObjectName(u"txtServidorMail"_s);
        txtServidorMail->setMinimumWidth(parts::TextWidth);
        txtServidorMail->setPlaceholderText(u"smtp.example.com"_s);
        cmbCifrado = new ui::CalmList;
        cmbCifrado->setObjectName(u"cmbCifrado"_s);
        cmbCifrado->addItem(u"STARTTLS"_s, int(messages::Encryption::StartTls));
        cmbCifrado->addItem(u"TLS"_s, int(messages::Encryption::Tls));
        cmbCifrado->addItem(m_c.s(text::NoEncryption), int(messages::Encryption::None));
        txtPuertoMail = new ui::WholeNumberBox(5);
        txtPuertoMail->setObjectName(u"txtPuertoMail"_s);
        txtPuertoMail->setFixedWidth(parts::FigureWidth);
        parts::Row(rows, m_c.s(text::ServerName), txtServidorMail);
        parts::Row(rows, m_c.s(text::SettingsMailEncryption), cmbCifrado);
        parts::Row(rows, m_c.s(text::SettingsMailPort), txtPuertoMail);
        QPushButton *test = parts::buttonOf(m_c.s(text::TestButton), u"cmdProbarMail"_s);
        rows->addRow(QString(), test);
        connect(test, &QPushButton::clicked, this,
                [this] { m_c.guarded([this] { testServer(); }); });
        m_c.withoutApostrophes({txtServidorMail});
        m_c.enterChain({txtServidorMail, cmbCifrado, txtPuertoMail});

        connect(txtServidorMail, &QLineEdit::editingFinished, this, [this] {
            store([this](messages::MailAccount &account) {
                account.server = txtServidorMail->text();
            });
        });
        connect(txtPuertoMail, &QLineEdit::editingFinished, this, [this] { storePort(); });
        connect(cmbCifrado, &QComboBox::activated, this, [this] {
            store([this](messages::MailAccount &account) {
                const bool usual = account.port == messages::usualPort(account.encryption);
                account.encryption = messages::Encryption(cmbCifrado->currentData().toInt());
                if (usual)
                    account.port = messages::usualPort(account.encryption);
            });
        });
    }

    // Name and password are among the clinic's data, since all terminals share them.
    void addWayToAccount(QVBoxLayout *column)
    {
        QFormLayout *rows = parts::sectionOf(column, m_c.s(text::SettingsClinicAccount),
                                             m_c.s(text::AccountIsInClinicPage));
        QPushButton *show = parts::buttonOf(m_c.s(text::ShowAccountButton), u"cmdVerCuenta"_s);
        rows->addRow(show);
        connect(show, &QPushButton::clicked, this, [this] {
            m_c.guarded([this] {
                m_c.forms.open(u"frmConfiguracion"_s, {{u"pagina"_s, u"clinica"_s}});
            });
        });
    }

    // Logs on and off again, so that an error shows up now rather than with tomorrow's mails.
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
            m_c.help->success(m_c.s(text::ServerAcceptsAccount));
        else if (!reason.isEmpty()) // else the user has been told what is missing
            m_c.help->faultOf(m_c.s(text::MailFailed).arg(reason));
    }

    void showServer()
    {
        const messages::MailAccount account = messages::readMailAccount(m_c.s);
        txtServidorMail->setText(account.server);
        txtPuertoMail->setWholeNumber(account.port);
        cmbCifrado->setCurrentIndex(cmbCifrado->findData(int(account.encryption)));
    }

    void storePort()
    {
        const std::optional<int> port = txtPuertoMail->whole();
        if (port && !messages::isPort(*port)) {
            m_c.help->faultOf(m_c.s(text::InvalidValue));
            return showServer();
        }
        store([port](messages::MailAccount &account) {
            account.port = port.value_or(messages::usualPort(account.encryption));
        });
    }

    void store(const std::function<void(messages::MailAccount &)> &change)
    {
        m_c.guarded([&] {
            messages::MailAccount account = messages::readMailAccount(m_c.s);
            change(account);
            messages::saveMailServer(m_c.s, account);
        });
        showServer();
    }

    PageContext m_c;
    QLineEdit *txtServidorMail = nullptr;
    ui::CalmList *cmbCifrado = nullptr;
    ui::WholeNumberBox *txtPuertoMail = nullptr;
};

} // namespace

QWidget *admin::mailPage(const PageContext &c) { return new Mail(c); }
