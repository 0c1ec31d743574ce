#include "clients/profiles.h"

#include "texts/texts.h"

bool ClienteDestacado(Sesion &s, int idc)
{
    const auto profile = [&](std::string_view column) {
        return s.lists.clientes.lookUp("idc = ?", idc, column).value_or(false).toBool();
    };
    return profile("Perfil1") && profile("Perfil3") && !profile("Perfil2");
}

QString TextoPerfil(Sesion &s, int idc)
{
    QStringList lines;
    if (ClienteDestacado(s, idc))
        lines << s(text::ProfileOutstanding);
    const Recordset r = s.clientes->OpenSnapshot(
        "select perfil1, perfil2, perfil3, perfil4, perfil5 from clientes where idc = ?", idc);
    constexpr int texts[] = {text::GoodBuyer, text::PaysLate, text::FrequentProfile,
                             text::MissesAppointments, text::Debtor};
    for (int i = 0; !r.EOF_() && i < 5; ++i)
        if (r[i].toBool())
            lines << s(texts[i]);
    return lines.join(u'\n');
}
