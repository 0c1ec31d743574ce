#include "admin/page_rows.h"
#include "ui/boxes.h"
#include "ui/form_base.h"
#include "ui/theme.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QListWidget>
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
};

constexpr int categoryId = Qt::UserRole;

void percentage(const ContextoDePagina &c, QFormLayout *section, std::string_view column, int hint)
{
    QLineEdit *box = FilaDeEntero(c, section, column, Porcentaje, 3, hint);
    static const QRegularExpression upTo100(u"[0-9]{0,2}|100"_s);
    box->setValidator(new QRegularExpressionValidator(upTo100, box));
}

/// The categories of products, those marked whose purchases make a good buyer.
QListWidget *categories(const ContextoDePagina &c)
{
    auto *list = new QListWidget;
    Recordset r = c.s.finanzas->OpenSnapshot("select idcat, nom, CatPerfil from FLCategorias "
                                             "order by nom");
    for (; !r.EOF_(); r.MoveNext()) {
        auto *item = new QListWidgetItem(r["nom"].toText(), list);
        item->setData(categoryId, r["idcat"].toInt());
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(r["CatPerfil"].toBool() ? Qt::Checked : Qt::Unchecked);
    }
    QObject::connect(list, &QListWidget::itemChanged, list, [c, list](QListWidgetItem *item) {
        const bool counts = item->checkState() == Qt::Checked;
        if (c.guarded([&] {
                c.s.finanzas->Execute("update flcategorias set CatPerfil = ? where idcat = ?",
                                      counts, item->data(categoryId).toInt());
            }))
            return;
        const QSignalBlocker quiet(list);
        item->setCheckState(counts ? Qt::Unchecked : Qt::Checked);
    });
    if (list->count() > 0)
        list->setCurrentRow(0);
    list->setFixedSize(300, 6 * 26 + Espacio::S);
    return list;
}

} // namespace

QWidget *PaginaDePerfiles(const ContextoDePagina &c)
{
    const Sesion &s = c.s;
    auto *page = new QWidget;
    auto *column = Parte::Columna(page);
    column->addWidget(Parte::Nota(s(AlMes) + u' ' + s(Destacado) + u'.'));

    auto *buyers = Parte::Seccion(column, s(BuenComprador));
    FilaDeEntero(c, buyers, "RegistrosBuenosCompradores", Minimo, 4, AyudaComprador);
    percentage(c, buyers, "PorcentajeBuenosCompradores", AyudaComprador);
    auto *total = new CajaDeNumero(s);
    total->setObjectName(u"totalbuenoscompradores"_s);
    total->setFixedWidth(Parte::AnchoDeCifra);
    Parte::Fila(buyers, s(TotalDeVenta), total);
    Atar::Numero(c.s, c.guarded, total, "totalbuenoscompradores");
    AvisarAlEntrar(c, total, AyudaComprador);
    auto *list = categories(c);
    list->setObjectName(u"CatPerfil"_s);
    Parte::Fila(buyers, s(Categorias), list);
    AvisarAlEntrar(c, list, AyudaComprador);

    auto *frequent = Parte::Seccion(column, s(Frecuente));
    FilaDeEntero(c, frequent, "RegistrosFrecuente", Minimo, 4, AyudaFrecuente);
    FilaDeEntero(c, frequent, "TiempoFrecuente", VisitaDentroDe, 4, AyudaFrecuente);

    auto *late = Parte::Seccion(column, s(DemoraDeudas));
    FilaDeEntero(c, late, "RegistrosDemoraDeudas", Minimo, 4, AyudaDemora);
    percentage(c, late, "PorcentajeDemoraDeudas", AyudaDemora);

    auto *missing = Parte::Seccion(column, s(OlvidaTurnos));
    FilaDeEntero(c, missing, "RegistrosIncumplidorTurnos", Minimo, 4, AyudaTurnos);
    percentage(c, missing, "PorcentajeIncumplidorTurnos", AyudaTurnos);

    auto *debtors = Parte::Seccion(column, s(Deudor));
    FilaDeEntero(c, debtors, "RegistrosDeudor", Minimo, 4, AyudaDeudor);
    FilaDeEntero(c, debtors, "TiempoDeudor", Demora, 4, AyudaDeudor);

    auto *show = FilaDeCasilla(c, debtors, u"LeerPerfil"_s, MostrarPerfil, AlMes);
    Atar::Casilla(c.s, c.guarded, show, "LeerPerfil");
    return page;
}
