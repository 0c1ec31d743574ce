#include "printing/letter.h"

#include "store/data_folder.h"

using namespace Qt::StringLiterals;

QString TituloDeCarta(const QString &motivo, const QString &destinatario)
{
    return motivo.trimmed() + u" - "_s + destinatario.trimmed();
}

std::unique_ptr<DocumentoHtml> ComponerCarta(Sesion &s, const QString &titulo, const QString &texto)
{
    QString html = texto.toHtmlEscaped();
    html.replace(u"\r\n"_s, u"\n"_s).replace(u'\n', u"<br>"_s);
    auto carta = std::make_unique<DocumentoHtml>(
        titulo,
        u"<div style=\"font-size:11pt; line-height:140%; white-space:pre-wrap\">"_s + html
            + u"</div>"_s,
        QString());
    if (s.configuracion["encabezado"].toBool())
        carta->PonerCabecera(QImage(RutaBajo(s.carpetaDeDatos, u"encabezado.bmp"_s)));
    return carta;
}
