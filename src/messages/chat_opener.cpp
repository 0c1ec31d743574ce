#include "messages/chat_opener.h"

#include "messages/chat_link.h"
#include "store/lookups.h"
#include "ui/help_line.h"

#include <QDesktopServices>

namespace
{

enum Texto { SinMovil = 9965, SinNavegador = 9969, MovilNoValido = 9984 };

} // namespace

AbridorDeEnlaces Navegador()
{
    return [](const QUrl &enlace) { return QDesktopServices::openUrl(enlace); };
}

void AbrirChat(Sesion &s, const AbridorDeEnlaces &abrir, LineaDeAyuda &ayuda, int idc,
               const QString &texto)
{
    ayuda.Limpiar();
    if (!TieneChat(s, idc))
        return ayuda.Fallo(s(SinMovil));
    const std::optional<QUrl> enlace = EnlaceDeChat(s, idc, texto);
    if (enlace && !enlace->isValid())
        ayuda.Fallo(s(MovilNoValido).arg(LeerCampo(s, "clientes", "clientes", idc, "telc2")));
    else if (enlace && !abrir(*enlace))
        ayuda.Fallo(s(SinNavegador));
}
