#include "messages/chat_opener.h"

#include "messages/chat_link.h"
#include "store/lookups.h"
#include "texts/agenda.h"
#include "ui/help_line.h"

#include <QDesktopServices>

using namespace messages;

namespace
{

} // namespace

LinkOpener messages::browser()
{
    return [](const QUrl &link) { return QDesktopServices::openUrl(link); };
}

void messages::openChat(Sesion &s, const LinkOpener &open, ui::HelpLine &help, int idc,
                        const QString &text)
{
    help.clean();
    if (!hasChat(s, idc))
        return help.faultOf(s(text::NoMobile));
    const std::optional<QUrl> link = chatLink(s, idc, text);
    if (link && !link->isValid())
        help.faultOf(
            s(text::InvalidMobile).arg(LeerCampo(s, "clientes", "clientes", idc, "telc2")));
    else if (link && !open(*link))
        help.faultOf(s(text::BrowserFailed));
}
