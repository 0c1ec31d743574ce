#include "messages/chat_link.h"

#include "store/lookups.h"
#include "store/settings_row.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace
{

enum Texto { Chat = 9967, PidaPais = 9966, PaisNoValido = 9968 };

// International numbers have 15 digits at most (E.164); fewer than 8 are a short number.
constexpr qsizetype MenosCifras = 8;
constexpr qsizetype MasCifras = 15;
constexpr qsizetype CifrasDePais = 3;

const QString AjusteDePais = u"chat/pais"_s;

QString Cifras(const QString &texto)
{
    QString cifras;
    for (const QChar c : texto)
        if (c >= u'0' && c <= u'9')
            cifras += c;
    return cifras;
}

QString Movil(Sesion &s, int idc) { return LeerCampo(s, "clientes", "clientes", idc, "telc2"); }

// The first number of several, without the (0) that is dialled at home alone.
QString Primero(const QString &telefonos)
{
    static const QRegularExpression separador(uR"([,;]|\s/\s)"_s);
    for (const QString &parte : telefonos.split(separador))
        if (!Cifras(parte).isEmpty())
            return parte.trimmed().remove(u"(0)"_s);
    return {};
}

bool LlevaPais(const QString &numero)
{
    return numero.startsWith(u'+') || numero.startsWith(u"00"_s);
}

// nullopt when the user backed out or typed what is no code.
std::optional<QString> Pais(Sesion &s)
{
    const QString guardado = LeerAjusteDeClinica(s, AjusteDePais);
    if (!guardado.isEmpty())
        return guardado;
    const auto dicho = s.dialogos.PedirTexto(s(Chat), s(PidaPais));
    if (!dicho)
        return std::nullopt;
    static const QRegularExpression codigo(u"^\\s*(?:\\+|0+)?([1-9]\\d*)\\s*$"_s);
    const QString pais = codigo.match(*dicho).captured(1);
    if (pais.isEmpty() || pais.size() > CifrasDePais) {
        s.dialogos.Mensaje(s(PaisNoValido));
        return std::nullopt;
    }
    GuardarAjusteDeClinica(s, AjusteDePais, pais);
    return pais;
}

} // namespace

QString NumeroParaChat(const QString &telefonos, const QString &pais)
{
    const QString primero = Primero(telefonos);
    QString cifras = Cifras(primero);
    // At home numbers are dialled with a leading 0 that nobody dials from abroad.
    while (cifras.startsWith(u'0'))
        cifras.remove(0, 1);
    if (!LlevaPais(primero) && !cifras.isEmpty())
        cifras.prepend(pais);
    return cifras.size() >= MenosCifras && cifras.size() <= MasCifras ? cifras : QString();
}

bool TieneChat(Sesion &s, int idc)
{
    // Whatever the country, its code adds a digit at least.
    return !NumeroParaChat(Movil(s, idc), u"0"_s).isEmpty();
}

std::optional<QUrl> EnlaceDeChat(Sesion &s, int idc, const QString &texto)
{
    const QString movil = Movil(s, idc);
    std::optional<QString> pais = QString();
    if (!LlevaPais(Primero(movil)))
        pais = Pais(s);
    if (!pais)
        return std::nullopt;
    const QString numero = NumeroParaChat(movil, *pais);
    if (numero.isEmpty())
        return QUrl();
    QUrl enlace(u"https://wa.me/"_s + numero);
    enlace.setQuery(u"text="_s + QString::fromLatin1(QUrl::toPercentEncoding(texto)));
    return enlace;
}
