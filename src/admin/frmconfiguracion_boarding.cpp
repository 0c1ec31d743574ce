#include "admin/frmconfiguracion_pages.h"
#include "ui/bound.h"
#include "ui/boxes.h"

#include <QFormLayout>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    PrimeraRacion = 2702,
    Cantidad = 5086,
    Caniles = 9602,
    Raciones,
    NotaDeRaciones,
};

constexpr const char *rationColumns[] = {"HoraRacion1", "HoraRacion2", "HoraRacion3",
                                         "HoraRacion4"};

} // namespace

QWidget *PaginaDeHospedaje(const ContextoDePagina &c)
{
    auto *page = new QWidget;
    QVBoxLayout *column = Parte::Columna(page);

    auto *count = new CajaDeEntero(3);
    count->setObjectName(u"CantidadCaniles"_s);
    count->setFixedWidth(Parte::AnchoDeCifra);
    Parte::Fila(Parte::Seccion(column, c.s(Caniles)), c.s(Cantidad), count);
    Atar::Entero(c.s, c.guarded, count, "CantidadCaniles");

    QList<QWidget *> boxes{count};
    QFormLayout *rows = Parte::Seccion(column, c.s(Raciones), c.s(NotaDeRaciones));
    int text = PrimeraRacion;
    for (const char *name : rationColumns) {
        auto *time = new CajaDeHora;
        time->setObjectName(QString::fromLatin1(name));
        time->setFixedWidth(Parte::AnchoDeCifra);
        Parte::Fila(rows, c.s(text++), time);
        Atar::Hora(c.s, c.guarded, time, name);
        boxes << time;
    }
    c.cadenaDeEnter(boxes);
    return page;
}
