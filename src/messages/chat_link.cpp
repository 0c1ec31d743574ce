#include "messages/chat_link.h"

#include "store/lookups.h"
#include "store/settings_row.h"
#include "texts/agenda.h"

#include <QRegularExpression>

using namespace messages;
using namespace Qt::StringLiterals;

namespace
{

// International numbers have at most 15 digits (E.164); fewer than 8 make a short code.
constexpr qsizetype FewestDigits = 8;
constexpr qsizetype MostDigits = 15;
constexpr qsizetype CountryDigits = 3;

const QString CountrySetting = u"chat/pais"_s;

QString digitsOf(const QString &text)
{
    QString digits;
    for (const QChar c : text)
        if (c >= u'0' && c <= u'9')
            digits += c;
    return digits;
}

QString mobileOf(Sesion &s, int idc) { return LeerCampo(s, "clientes", "clientes", idc, "telc2"); }

// The first of several numbers, without the "(0)" that is only dialled within the country.
QString firstOne(const QString &telephones)
{
    static const QRegularExpression separator(uR"([,;]|\s/\s)"_s);
    for (const QString &part : telephones.split(separator))
        if (!digitsOf(part).isEmpty())
            return part.trimmed().remove(u"(0)"_s);
    return {};
}

bool carriesCountry(const QString &number)
{
    return number.startsWith(u'+') || number.startsWith(u"00"_s);
}

// nullopt when the user cancelled or typed something that is not a code.
std::optional<QString> countryOf(Sesion &s)
{
    const QString saved = store::readClinicSetting(s, CountrySetting);
    if (!saved.isEmpty())
        return saved;
    const auto told = s.dialogos.PedirTexto(s(text::ChatLinkChat), s(text::AskCountryCode));
    if (!told)
        return std::nullopt;
    static const QRegularExpression code(u"^\\s*(?:\\+|0+)?([1-9]\\d*)\\s*$"_s);
    const QString country = code.match(*told).captured(1);
    if (country.isEmpty() || country.size() > CountryDigits) {
        s.dialogos.Mensaje(s(text::CountryCodeInvalid));
        return std::nullopt;
    }
    store::saveClinicSetting(s, CountrySetting, country);
    return country;
}

} // namespace

QString messages::numberForChat(const QString &telephones, const QString &country)
{
    const QString first = firstOne(telephones);
    QString digits = digitsOf(first);
    // The leading 0 of national numbers is not dialled from abroad.
    while (digits.startsWith(u'0'))
        digits.remove(0, 1);
    if (!carriesCountry(first) && !digits.isEmpty())
        digits.prepend(country);
    return digits.size() >= FewestDigits && digits.size() <= MostDigits ? digits : QString();
}

bool messages::hasChat(Sesion &s, int idc)
{
    // "0" stands in for the country code, which has at least one digit.
    return !numberForChat(mobileOf(s, idc), u"0"_s).isEmpty();
}

std::optional<QUrl> messages::chatLink(Sesion &s, int idc, const QString &text)
{
    const QString mobile = mobileOf(s, idc);
    std::optional<QString> country = QString();
    if (!carriesCountry(firstOne(mobile)))
        country = countryOf(s);
    if (!country)
        return std::nullopt;
    const QString number = numberForChat(mobile, *country);
    if (number.isEmpty())
        return QUrl();
    QUrl link(u"https://wa.me/"_s + number);
    link.setQuery(u"text="_s + QString::fromLatin1(QUrl::toPercentEncoding(text)));
    return link;
}
