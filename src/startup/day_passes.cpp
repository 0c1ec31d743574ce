#include "startup/day_passes.h"

#include "agenda/tasks.h"
#include "commerce/categories.h"
#include "store/lookups.h"

using namespace startup;

namespace
{

// The option "Nothing" of the reminder and birthday settings.
constexpr int MeasureNothing = 4;

} // namespace

QString startup::joined(std::initializer_list<QString> parts)
{
    return QStringList(parts).join(u' ');
}

QString startup::withFullStop(const QString &t) { return t.endsWith(u'.') ? t : t + u'.'; }

QString startup::numberText(int n) { return QString::number(n); }

int startup::measureOf(const store::Value &v)
{
    const int n = v.toInt();
    return n >= agenda::Channel::Mail && n < MeasureNothing ? n : 0;
}

void startup::bookService(DayRun &c, int idm, int ida, int idcat)
{
    agenda::Task t;
    t.tip = ServicioDeCategoria(c.s, idcat);
    t.ida = idm;
    t.dia = c.hoy;
    t.hor = BuscarHorarioLibre(c.s, t.tip);
    t.medio = agenda::Channel::Delivery;
    t.fcreacion = c.hoy;
    t.artaux = ida;
    t.des = LeerCampo(c.s, "finanzas", "flcategorias", idcat, "nom") + QStringLiteral(" - ")
            + LeerCampo(c.s, "finanzas", "articulos", ida, "nom");
    AgregarTarea(c.s, t);
}
