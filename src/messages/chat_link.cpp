#include "messages/chat_link.h"

#include "store/lookups.h"
#include "store/settings_row.h"

#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace
{

// International numbers have 15 digits at most (E.164); fewer than 8 are a short number.
constexpr qsizetype MenosCifras = 8;
constexpr qsizetype MasCifras = 15;

QString Cifras(const QString &texto)
{
    QString cifras;
    for (const QChar c : texto)
        if (c >= u'0' && c <= u'9')
            cifras += c;
    return cifras;
}

} // namespace

QString NumeroParaChat(const Sesion &s, const QString &telefonos)
{
    const QString primero = telefonos.section(u',', 0, 0).trimmed();
    QString cifras = Cifras(primero);
    if (primero.startsWith(u"00"_s)) {
        cifras.remove(0, 2);
    } else if (!primero.startsWith(u'+')) {
        // At home numbers are dialled with a leading 0 that nobody dials from abroad.
        while (cifras.startsWith(u'0'))
            cifras.remove(0, 1);
        const QString pais = Cifras(LeerAjusteDeMaquina(s, u"chat/pais"_s));
        if (!pais.isEmpty() && !cifras.isEmpty())
            cifras.prepend(pais);
    }
    return cifras.size() >= MenosCifras && cifras.size() <= MasCifras ? cifras : QString();
}

QUrl EnlaceDeChat(Sesion &s, int idc, const QString &texto)
{
    const QString numero = NumeroParaChat(s, LeerCampo(s, "clientes", "clientes", idc, "telc2"));
    if (numero.isEmpty())
        return {};
    QUrl enlace(u"https://wa.me/"_s + numero);
    QUrlQuery consulta;
    consulta.addQueryItem(u"text"_s, QString::fromLatin1(QUrl::toPercentEncoding(texto)));
    enlace.setQuery(consulta);
    return enlace;
}
