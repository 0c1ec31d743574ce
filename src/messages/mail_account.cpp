#include "messages/mail_account.h"

#include "columns/configuracion.h"
#include "store/settings_row.h"
#include "texts/admin.h"
#include "texts/texts.h"

using namespace messages;
using namespace Qt::StringLiterals;

namespace
{

constexpr int HighestPort = 65535;

// Keys of the clinic's settings file.
constexpr QStringView ServerKey = u"correo/servidor";
constexpr QStringView PortKey = u"correo/puerto";
constexpr QStringView EncryptionKey = u"correo/cifrado";

struct EncryptionName {
    Encryption encryption;
    QStringView name;
};
constexpr EncryptionName Encryptions[] = {
    {Encryption::StartTls, u"starttls"},
    {Encryption::Tls, u"tls"},
    {Encryption::None, u"ninguno"},
};

// Truncating would only make the server refuse the login later.
bool fits(Sesion &s, const QString &text, std::string_view column)
{
    if (text.size() <= s.morvane->widthOf("Configuracion", column))
        return true;
    s.dialogos.Mensaje(s(text::InvalidValue));
    return false;
}

std::optional<QString> askUser(Sesion &s, QString user)
{
    do {
        const auto given =
            s.dialogos.PedirTexto(s(text::MailAccountUser), s(text::MailAccountUser), user);
        user = given.value_or(QString()).trimmed();
        if (user.isEmpty())
            return std::nullopt;
    } while (!fits(s, user, setting::usuariomail));
    return user;
}

std::optional<QString> askMailPassword(Sesion &s)
{
    std::optional<QString> given;
    do
        given = s.dialogos.askPassword(s(text::MailAccountUser), s(text::Password));
    while (given && !fits(s, *given, setting::passwordmail));
    return given;
}

/// An unknown name gives encryption rather than none.
Encryption encryptionOfName(const QString &name)
{
    for (const EncryptionName &c : Encryptions)
        if (c.name == name)
            return c.encryption;
    return Encryption::StartTls;
}

QString nameOf(Encryption encryption)
{
    for (const EncryptionName &c : Encryptions)
        if (c.encryption == encryption)
            return c.name.toString();
    return {};
}

} // namespace

bool messages::isPort(int port) { return port >= 1 && port <= HighestPort; }

int messages::usualPort(Encryption encryption)
{
    switch (encryption) {
    case Encryption::Tls:
        return 465;
    case Encryption::None:
        return 25;
    case Encryption::StartTls:
        break;
    }
    return 587;
}

MailAccount messages::readMailAccount(Sesion &s)
{
    MailAccount c;
    c.user = s.configuracion[setting::usuariomail].toText();
    c.password = s.configuracion[setting::passwordmail].toText();
    c.server = store::readClinicSetting(s, ServerKey.toString());
    c.encryption = encryptionOfName(store::readClinicSetting(s, EncryptionKey.toString()));
    c.port = store::readClinicSetting(s, PortKey.toString()).toInt();
    if (!isPort(c.port))
        c.port = usualPort(c.encryption);
    return c;
}

void messages::saveMailAccount(Sesion &s, const MailAccount &account)
{
    Lote lote(s);
    store::saveSetting(s, setting::usuariomail, account.user);
    store::saveSetting(s, setting::passwordmail, account.password);
    lote.commit();
    saveMailServer(s, account);
}

void messages::saveMailServer(Sesion &s, const MailAccount &account)
{
    const MailAccount before = readMailAccount(s);
    if (account.server != before.server)
        store::saveClinicSetting(s, ServerKey.toString(), account.server.trimmed());
    if (account.encryption != before.encryption)
        store::saveClinicSetting(s, EncryptionKey.toString(), nameOf(account.encryption));
    // Read again, because a port that was never stored follows the encryption.
    if (account.port != readMailAccount(s).port)
        store::saveClinicSetting(s, PortKey.toString(), QString::number(account.port));
}

bool messages::modifyMailAccount(Sesion &s)
{
    MailAccount c = readMailAccount(s);
    const auto user = askUser(s, c.user);
    if (!user)
        return false;
    const auto password = askMailPassword(s);
    if (!password)
        return false;
    c.user = *user;
    c.password = *password;
    saveMailAccount(s, c);
    return true;
}
