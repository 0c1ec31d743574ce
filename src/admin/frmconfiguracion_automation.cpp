#include "admin/frmconfiguracion_rows.h"

#include <QFormLayout>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Nada = 2231,
    Enviar = 5069,
    Preguntar = 5072,
    NoPermitir = 5074,
    PreguntarImpresion = 5077,
    ImprimirSinPreguntar = 5078,
    AbrirConsumo = 5080,
    PreguntarHistoria = 5082,
    AbrirHistoria = 5083,
    Clientes = 9662,
    Mostrador = 9663,
    FichaClinica = 9664,
    NoAbrir = 9665,
    VenderSinPreguntar = 9666,
};

const QList<std::pair<int, int>> sendOrNot{{1, Enviar}, {2, Nada}};
const QList<std::pair<int, int>> askOrPrint{
    {1, PreguntarImpresion}, {2, ImprimirSinPreguntar}, {3, Nada}};

void ask(const ContextoDePagina &c, QFormLayout *section, const char *column, const QString &title,
         const QList<std::pair<int, int>> &options, int hint)
{
    auto *group = FilaDeOpciones(c, section, {QString::fromLatin1(column), title, options, hint});
    Atar::Opciones(c.s, c.guarded, group, column);
}

} // namespace

QWidget *PaginaDeAutomatizacion(const ContextoDePagina &c)
{
    const Sesion &s = c.s;
    auto *page = new QWidget;
    auto *column = Parte::Columna(page);

    auto *clients = Parte::Seccion(column, s(Clientes));
    ask(c, clients, "AutNuevoCliente", s(5068), sendOrNot, 9667);
    ask(c, clients, "AutFrecuente", s(5085), sendOrNot, 9668);
    ask(c, clients, "AutMedicinaPrepaga", s(5036), sendOrNot, 9669);
    ask(c, clients, "AutRecordatorioCitasOlvida", s(5075), sendOrNot, 9670);

    auto *counter = Parte::Seccion(column, s(Mostrador));
    // Stored only, like the consumption question below: the counter goes by other choices, and the
    // help line says so.
    ask(c, counter, "AutDeudaNoVenderSupervisor", s(5070) + u".\n"_s + s(5071),
        {{1, Preguntar}, {2, VenderSinPreguntar}}, 9671);
    ask(c, counter, "AutDeudaNoVenderComun", s(5070) + u".\n"_s + s(5073),
        {{1, Preguntar}, {2, NoPermitir}, {3, Nada}}, 9672);
    ask(c, counter, "AutVentaPlanificadas", s(5076), askOrPrint, 9673);
    ask(c, counter, "AutVentaConsumo", s(5079), {{1, AbrirConsumo}, {2, NoAbrir}}, 9674);
    ask(c, counter, "AutVentaConsulta", s(5081),
        {{1, PreguntarHistoria}, {2, AbrirHistoria}, {3, Nada}}, 9675);

    auto *record = Parte::Seccion(column, s(FichaClinica));
    ask(c, record, "AutDosisPlanificada", s(5084), askOrPrint, 9676);
    return page;
}
