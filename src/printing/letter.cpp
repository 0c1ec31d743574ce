#include "printing/letter.h"

#include "columns/configuracion.h"
#include "store/data_folder.h"

using namespace printing;
using namespace Qt::StringLiterals;

QString printing::letterTitle(const QString &reason, const QString &addressee)
{
    return reason.trimmed() + u" - "_s + addressee.trimmed();
}

std::unique_ptr<DocumentHtml> printing::composeLetter(Sesion &s, const QString &title,
                                                      const QString &text)
{
    QString html = text.toHtmlEscaped();
    html.replace(u"\r\n"_s, u"\n"_s).replace(u'\n', u"<br>"_s);
    auto letter = std::make_unique<DocumentHtml>(
        title,
        u"<div style=\"font-size:11pt; line-height:140%; white-space:pre-wrap\">"_s + html
            + u"</div>"_s,
        QString());
    if (s.configuracion[setting::encabezado].toBool())
        letter->setHeader(QImage(store::pathUnder(s.dataFolder, u"encabezado.bmp"_s)));
    return letter;
}
