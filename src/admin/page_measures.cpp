#include "admin/page_rows.h"
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

// Settings whose number is not that of an option: shown by one rule, stored by another.
void tie(const ContextoDePagina &c, GrupoDeOpciones *group, const char *column,
         const std::function<int()> &shown, const std::function<Valor(int)> &stored)
{
    group->PonerValor(shown());
    QObject::connect(group, &GrupoDeOpciones::elegida, group, [=, &s = c.s](int value) {
        if (!c.guarded([&] { GuardarAjuste(s, column, stored(value)); }))
            group->PonerValor(shown());
    });
}

} // namespace

QWidget *PaginaDeMedidas(const ContextoDePagina &c)
{
    Sesion &s = c.s;
    const auto number = [&s](const char *column) { return s.configuracion[column].toInt(); };
    auto *page = new QWidget;
    auto *column = Parte::Columna(page);

    auto *doses = Parte::Seccion(column, s(SeccionDosis));
    tieMeasure(c,
               ask(c, doses, "MedidasRevac", Dosis,
                   {{1, Enviar}, {2, Imprimir}, {3, CorreoOCarta}, {nothing, Nada}}, 9683),
               "MedidasRevac");
    FilaDeEntero(c, doses, "tiempovencimiento", DiasAntes, 3, 9684);
    auto *second = FilaDeCasilla(c, doses, u"MedidasRevacDescont"_s, SegundoVencimiento, 9685);
    // A number, not a Yes/No: on as 1 and, from older rows, as -1.
    const auto showSecond = [=] {
        const int n = number("MedidasRevacDescont");
        second->setChecked(n == 1 || n == -1);
    };
    showSecond();
    QObject::connect(second, &QCheckBox::clicked, second, [=, &s](bool on) {
        if (!c.guarded([&] { GuardarAjuste(s, "MedidasRevacDescont", on ? 1 : 0); }))
            showSecond();
    });

    auto *birthdays = Parte::Seccion(column, s(SeccionCumpleanos));
    tieMeasure(c,
               ask(c, birthdays, "MedidasCumple", Cumpleanos,
                   {{1, EnviarSaludo}, {2, ImprimirSaludo}, {3, CorreoOCarta}, {nothing, Nada}},
                   9686),
               "MedidasCumple");

    auto *debts = Parte::Seccion(column, s(SeccionDeudas));
    auto *debtors =
        ask(c, debts, "MedidasDeudores", Deudores, {{1, TresRecordatorios}, {2, Nada}}, 9687);
    debts->addRow(Parte::Nota(s(Secuencia)));
    tie(
        c, debtors, "MedidasDeudores",
        [=] {
            const int n = number("MedidasDeudores");
            return n == 1 || n == 3 ? 1 : 2;
        },
        [](int option) { return Valor(option == 1 ? 1 : 0); });
    FilaDeEntero(c, debts, "diasdeudores", DiasSinPagos, 3, 9688);

    auto *food = Parte::Seccion(column, s(SeccionAlimento));
    tie(
        c, ask(c, food, "alimentomail", Alimento, {{1, OfertaDelMes}, {2, Nada}}, 9689),
        "alimentomail", [&s] { return s.configuracion["alimentomail"].toBool() ? 1 : 2; },
        [](int option) { return Valor(option == 1); });
    return page;
}
