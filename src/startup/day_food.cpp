// Food and other consumption: the daily use of the stocks, and who runs out.

#include "startup/day_passes.h"

#include "agenda/tasks.h"
#include "board/board_lines.h"
#include "clinical/food.h"
#include "columns/configuracion.h"
#include "texts/texts.h"

using namespace startup;
using namespace board;

namespace
{

struct Shortages {
    int withService = 0;
    int withoutService = 0;
};

void warnMissing(DayRun &c, const Recordset &r, Shortages &shortages)
{
    const int idm = r["idm"].toInt(), ida = r["ida"].toInt();
    if (r["ser"].toInt() > 0) {
        ++shortages.withService;
        bookService(c, idm, ida, r["IdCat"].toInt());
        return;
    }
    ++shortages.withoutService;
    if (c.setting(setting::alimentomail).toBool()) {
        agenda::Task t;
        t.tip = agenda::TaskKind::FoodShortage;
        t.ida = idm;
        t.dia = c.hoy;
        t.medio = agenda::Channel::Mail;
        t.fcreacion = c.hoy;
        t.artaux = ida;
        AgregarTarea(c.s, t);
    }
}

// Uses up a patient's stock for every day since the last start, and warns at most once.
void consume(DayRun &c, Recordset &r, Shortages &shortages, bool withNotices)
{
    Moneda can = r["can"].toMoneda();
    const Moneda con = r["Con"].toMoneda();
    const double limit =
        UmbralAlimento(c.s, r["esp"].toInt(), r["pes"].toDouble(), r["IdCat"].toInt());
    bool warned = r["men"].toBool();
    bool missing = false;
    for (qint64 d = 0; d < c.days; ++d) {
        const Moneda yesterday = can;
        can = can - con;
        if (!warned && can.toDouble() <= limit) {
            missing = withNotices;
            warned = true;
        }
        can = std::max(can, Moneda());
        if (can == yesterday)
            break; // nothing changes on the remaining days either
    }
    // The stock goes down even if the task cannot be written.
    if (missing)
        c.attempt([&] { warnMissing(c, r, shortages); });
    r.Edit();
    r.Put("can", can);
    r.Put("men", warned);
    if (missing)
        r.Put("FaltaHoy", true);
    r.Update();
}

} // namespace

void passes::foodStock(DayRun &c)
{
    Sesion &s = c.s;
    s.progress.tellStage(s(text::ConsumptionCategories));
    c.attempt([&] { s.clientes->Execute("update consumo set FaltaHoy = 0 where FaltaHoy <> 0"); });
    const bool withNotices = c.setting(setting::medidasalimento).toInt() != 0;
    const bool offers = c.setting(setting::alimentomail).toBool();
    Shortages shortages;
    c.attempt([&] {
        Recordset r = s.clientes->OpenRecordset(
            "select consumo.idm, consumo.IdCat, consumo.ida, consumo.can, consumo.Con, "
            "consumo.men, consumo.FaltaHoy, mascotas.esp, mascotas.pes, mascotas.ser from consumo "
            "inner join mascotas on consumo.idm = mascotas.idm where can > 0 and mascotas.dec = 0");
        c.forEachRow(r, [&](Recordset &row) { consume(c, row, shortages, withNotices); });
    });
    c.attempt([&] {
        if (shortages.withService > 0)
            AgregarPizarra(s,
                           joined({s(text::Detected), numberText(shortages.withService),
                                   s(text::ClientsShortOfFoodServed)}),
                           picture::Food, click::ListFoodShortServed, click::Agenda);
        if (shortages.withoutService > 0) {
            QString line = joined({s(text::Detected), numberText(shortages.withoutService),
                                   s(text::ClientsShortOfFood)});
            if (offers)
                line = joined({line, s(text::ShippingOffer)});
            AgregarPizarra(s, line, offers ? picture::Messages : picture::Food,
                           click::ListFoodShort, offers ? click::Outbox : click::None);
        }
    });
}
