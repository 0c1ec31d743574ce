#include "admin/frmconfiguracion_rows.h"
#include "admin/measures.h"
#include "store/settings_row.h"

#include <QCheckBox>
#include <QFormLayout>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Nada = 2231,
    Dosis = 2610,
    DiasAntes = 2613,
    Deudores = 2614,
    Alimento = 2617,
    Cumpleanos = 2620,
    CorreoOCarta = 2624,
    SegundoVencimiento = 2625,
    Secuencia = 2626,
    OfertaDelMes = 2629,
    Enviar = 9677,
    Imprimir = 9678,
    EnviarSaludo = 9679,
    ImprimirSaludo = 9680,
    TresRecordatorios = 9681,
    DiasSinPagos = 9682,
    SeccionDosis = 9722,
    SeccionCumpleanos,
    SeccionDeudas,
    SeccionAlimento,
};

constexpr int nothing = 4;
constexpr int yes = 1;
constexpr int no = 2;

GrupoDeOpciones *ask(const ContextoDePagina &c, QFormLayout *section, const char *column, int title,
                     const QList<std::pair<int, int>> &options, int hint)
{
    return FilaDeOpciones(c, section, {QString::fromLatin1(column), c.s(title), options, hint});
}

void tieMeasure(const ContextoDePagina &c, GrupoDeOpciones *group, const char *column)
{
    Atar::Opciones(c.s, c.guarded, group, column);
    if (group->Valor() == 0) // never chosen is off as well
        group->PonerValor(nothing);
}

// A question whose setting holds no number of an option.
void tieYesNo(const ContextoDePagina &c, GrupoDeOpciones *group, bool stored,
              const std::function<void(bool)> &store)
{
    group->PonerValor(stored ? yes : no);
    QObject::connect(group, &GrupoDeOpciones::elegida, group, [=](int option) {
        if (!c.guarded([&] { store(option == yes); }))
            group->PonerValor(option == yes ? no : yes);
    });
}

} // namespace

QWidget *PaginaDeMedidas(const ContextoDePagina &c)
{
    Sesion &s = c.s;
    auto *page = new QWidget;
    auto *column = Parte::Columna(page);

    auto *doses = Parte::Seccion(column, s(SeccionDosis));
    tieMeasure(c,
               ask(c, doses, "MedidasRevac", Dosis,
                   {{1, Enviar}, {2, Imprimir}, {3, CorreoOCarta}, {nothing, Nada}}, 9683),
               "MedidasRevac");
    FilaDeEntero(c, doses, "tiempovencimiento", DiasAntes, 3, 9684);
    auto *second = FilaDeCasilla(c, doses, u"MedidasRevacDescont"_s, SegundoVencimiento, 9685);
    second->setChecked(RecuerdaSegundoVencimiento(s));
    QObject::connect(second, &QCheckBox::clicked, second, [=, &s](bool on) {
        if (!c.guarded([&] { GuardarRecuerdaSegundoVencimiento(s, on); }))
            second->setChecked(!on);
    });

    auto *birthdays = Parte::Seccion(column, s(SeccionCumpleanos));
    tieMeasure(c,
               ask(c, birthdays, "MedidasCumple", Cumpleanos,
                   {{1, EnviarSaludo}, {2, ImprimirSaludo}, {3, CorreoOCarta}, {nothing, Nada}},
                   9686),
               "MedidasCumple");

    auto *debts = Parte::Seccion(column, s(SeccionDeudas));
    auto *debtors =
        ask(c, debts, "MedidasDeudores", Deudores, {{yes, TresRecordatorios}, {no, Nada}}, 9687);
    debts->addRow(Parte::Nota(s(Secuencia)));
    tieYesNo(c, debtors, RecuerdaDeudas(s), [&s](bool on) { GuardarRecuerdaDeudas(s, on); });
    FilaDeEntero(c, debts, "diasdeudores", DiasSinPagos, 3, 9688);

    auto *food = Parte::Seccion(column, s(SeccionAlimento));
    tieYesNo(c, ask(c, food, "alimentomail", Alimento, {{yes, OfertaDelMes}, {no, Nada}}, 9689),
             s.configuracion["alimentomail"].toBool(),
             [&s](bool on) { GuardarAjuste(s, "alimentomail", on); });
    return page;
}
