#include "admin/frmconfiguracion_rows.h"
#include "commerce/categories.h"
#include "ui/boxes.h"
#include "ui/form_base.h"
#include "ui/theme.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QRegularExpressionValidator>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    OlvidaTurnos = 2734,
    DemoraDeudas = 2735,
    Deudor = 2736,
    BuenComprador = 2737,
    Frecuente = 2738,
    Minimo = 2739,
    Porcentaje = 2740,
    Demora = 2741,
    TotalDeVenta = 2742,
    VisitaDentroDe = 2743,
    MostrarPerfil = 2744,
    Destacado = 2766,
    Categorias = 9690,
    AyudaComprador = 9691,
    AyudaDemora,
    AyudaFrecuente,
    AyudaTurnos,
    AyudaDeudor,
    AlMes,
    AyudaRegistrosDeudor = 9697,
};

constexpr int longestTotal = 12; // 999999999.99

QLineEdit *percentage(const ContextoDePagina &c, QFormLayout *section, std::string_view column,
                      int hint)
{
    QLineEdit *box = FilaDeEntero(c, section, column, Porcentaje, 3, hint);
    static const QRegularExpression upTo100(u"[0-9]{0,2}|100"_s);
    box->setValidator(new QRegularExpressionValidator(upTo100, box));
    return box;
}

/// The categories of products; those marked make a good buyer of whoever buys them.
QWidget *categories(const ContextoDePagina &c)
{
    auto *all = new QWidget;
    auto *grid = new QGridLayout(all);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(Espacio::XL);
    grid->setVerticalSpacing(Espacio::XS);
    const QList<CategoriaDePerfil> found = CategoriasDePerfil(c.s);
    const int rows = int(found.size() + 1) / 2;
    for (int i = 0; i < found.size(); ++i) {
        const CategoriaDePerfil &category = found[i];
        // Names are the clinic's own: an & in one is no letter to press.
        auto *check = named(new QCheckBox(QString(category.nom).replace(u'&', u"&&"_s)),
                            u"CatPerfil%1"_s.arg(category.idcat), category.nom);
        check->setChecked(category.cuenta);
        grid->addWidget(check, i % rows, i / rows);
        QObject::connect(check, &QCheckBox::clicked, check,
                         [c, check, id = category.idcat](bool counts) {
                             if (!c.guarded([&] { GuardarCategoriaDePerfil(c.s, id, counts); }))
                                 check->setChecked(!counts);
                         });
    }
    return all;
}

} // namespace

QWidget *PaginaDePerfiles(const ContextoDePagina &c)
{
    const Sesion &s = c.s;
    auto *page = new QWidget;
    auto *column = Parte::Columna(page);
    column->addWidget(Parte::Nota(s(AlMes) + u' ' + s(Destacado) + u'.'));
    auto *top = new QFormLayout;
    column->addLayout(top);
    auto *show = FilaDeCasilla(c, top, u"LeerPerfil"_s, MostrarPerfil, AlMes);
    Atar::Casilla(c.s, c.guarded, show, "LeerPerfil");

    QList<QWidget *> chain;
    auto *buyers = Parte::Seccion(column, s(BuenComprador));
    chain << FilaDeEntero(c, buyers, "RegistrosBuenosCompradores", Minimo, 4, AyudaComprador);
    chain << percentage(c, buyers, "PorcentajeBuenosCompradores", AyudaComprador);
    auto *total = new CajaDeNumero(s);
    total->setObjectName(u"totalbuenoscompradores"_s);
    total->setMaxLength(longestTotal);
    total->setFixedWidth(Parte::AnchoDeCifra);
    total->setAlignment(Qt::AlignLeft); // like the whole numbers above it
    Parte::Fila(buyers, s(TotalDeVenta), total);
    Atar::Numero(c.s, c.guarded, total, "totalbuenoscompradores");
    AvisarAlEntrar(c, total, AyudaComprador);
    chain << total;
    auto *marks = categories(c);
    Parte::Fila(buyers, s(Categorias), marks);
    AvisarAlEntrar(c, marks, AyudaComprador);
    for (auto *mark : marks->findChildren<QCheckBox *>())
        chain << mark; // ENTER walks over them, SPACE marks

    auto *frequent = Parte::Seccion(column, s(Frecuente));
    chain << FilaDeEntero(c, frequent, "RegistrosFrecuente", Minimo, 4, AyudaFrecuente);
    chain << FilaDeEntero(c, frequent, "TiempoFrecuente", VisitaDentroDe, 4, AyudaFrecuente);

    auto *late = Parte::Seccion(column, s(DemoraDeudas));
    chain << FilaDeEntero(c, late, "RegistrosDemoraDeudas", Minimo, 4, AyudaDemora);
    chain << percentage(c, late, "PorcentajeDemoraDeudas", AyudaDemora);

    auto *missing = Parte::Seccion(column, s(OlvidaTurnos));
    chain << FilaDeEntero(c, missing, "RegistrosIncumplidorTurnos", Minimo, 4, AyudaTurnos);
    chain << percentage(c, missing, "PorcentajeIncumplidorTurnos", AyudaTurnos);

    auto *debtors = Parte::Seccion(column, s(Deudor));
    chain << FilaDeEntero(c, debtors, "RegistrosDeudor", Minimo, 4, AyudaRegistrosDeudor);
    chain << FilaDeEntero(c, debtors, "TiempoDeudor", Demora, 4, AyudaDeudor);

    c.cadenaDeEnter(chain);
    return page;
}
