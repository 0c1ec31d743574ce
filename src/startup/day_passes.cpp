#include "startup/day_passes.h"

#include "agenda/tasks.h"
#include "commerce/categories.h"
#include "store/lookups.h"

namespace
{

// Option "Nothing" of the reminder and birthday measures.
constexpr int MedidaNada = 4;

} // namespace

QString Unir(std::initializer_list<QString> partes) { return QStringList(partes).join(u' '); }

QString ConPunto(const QString &t) { return t.endsWith(u'.') ? t : t + u'.'; }

QString Num(int n) { return QString::number(n); }

int Medida(const Valor &v)
{
    const int n = v.toInt();
    return n >= Medio::Correo && n < MedidaNada ? n : 0;
}

void ReservarServicio(Corrida &c, int idm, int ida, int idcat)
{
    Tarea t;
    t.tip = ServicioDeCategoria(c.s, idcat);
    t.ida = idm;
    t.dia = c.hoy;
    t.hor = BuscarHorarioLibre(c.s, t.tip);
    t.medio = Medio::Reparto;
    t.fcreacion = c.hoy;
    t.artaux = ida;
    t.des = LeerCampo(c.s, "finanzas", "flcategorias", idcat, "nom") + QStringLiteral(" - ")
            + LeerCampo(c.s, "finanzas", "articulos", ida, "nom");
    AgregarTarea(c.s, t);
}
