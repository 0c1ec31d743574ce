#include "admin/frmconfiguracion_pages.h"
#include "columns/configuracion.h"
#include "store/settings_row.h"
#include "texts/admin.h"
#include "texts/texts.h"
#include "ui/bound.h"
#include "ui/boxes.h"
#include "ui/theme.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QFormLayout>
#include <span>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

struct Setting {
    std::string_view column;
    int title;
};

constexpr Setting Taxes[] = {
    {setting::NombreIdentificacionFiscal, text::FiscalIdentification},
    {setting::NombreImpuestoCompraVenta, text::TaxPurchaseSale},
};
constexpr Setting Words[] = {
    {setting::EntradaMoneda, text::CashSaleWord},
    {setting::EntradaDeuda, text::AccountSaleWord},
    {setting::EntradaMedicinaPrepaga, text::PrepaidFeeWord},
    {setting::PagoDeuda, text::DebtPaymentWord},
};
constexpr Setting Checks[] = {
    {setting::GuardarPrecioVentas, text::StoreSalePrice},
    {setting::GuardarCostoCompras, text::StorePurchaseCost},
};
constexpr Setting ProductColours[] = {
    {setting::FAColor0, text::OutOfStock},
    {setting::FAColorV, text::HasExpired},
    {setting::FAColorM, text::BelowMinimum},
    {setting::FAColorSer, text::Service},
};

void addTexts(const PageContext &c, QFormLayout *rows, std::span<const Setting> settings, int width)
{
    QList<QLineEdit *> made;
    for (const Setting &e : settings) {
        auto *box = new QLineEdit;
        box->setObjectName(QString::fromLatin1(e.column));
        box->setMaxLength(c.s.morvane->widthOf("Configuracion", e.column));
        box->setFixedWidth(width);
        parts::Row(rows, c.s(e.title), box);
        ui::bind::text(c.s, c.guarded, box, e.column);
        made << box;
    }
    c.withoutApostrophes(made);
    c.enterChain({made.begin(), made.end()});
}

void addChecks(const PageContext &c, QFormLayout *rows)
{
    for (const Setting &e : Checks) {
        auto *box = named(new QCheckBox(c.s(e.title)), QString::fromLatin1(e.column), c.s(e.title));
        ui::bind::Checkbox(c.s, c.guarded, box, e.column);
        rows->addRow(box);
    }
}

void addColours(const PageContext &c, QFormLayout *rows)
{
    auto *line = new QHBoxLayout;
    line->setSpacing(ui::space::S);
    for (const Setting &e : ProductColours) {
        QPushButton *button = parts::buttonOf(c.s(e.title), QString::fromLatin1(e.column));
        button->setIconSize(QSize(18, 18));
        const auto stored = [c, e] {
            return parts::settingColor(c.s.configuracion[e.column].toInt());
        };
        button->setIcon(parts::sample(stored()));
        line->addWidget(button);
        QObject::connect(button, &QPushButton::clicked, button, [c, e, stored, button] {
            const QColor chosen = QColorDialog::getColor(stored(), c.form, c.s(e.title));
            if (!chosen.isValid())
                return;
            c.guarded([&] { store::saveSetting(c.s, e.column, parts::colorSetting(chosen)); });
            button->setIcon(parts::sample(stored()));
        });
    }
    line->addStretch();
    rows->addRow(line);
}

} // namespace

QWidget *admin::financePage(const PageContext &c)
{
    auto *page = new QWidget;
    QVBoxLayout *column = parts::Column(page);
    addTexts(c, parts::sectionOf(column, c.s(text::SettingsFinanceTaxes)), Taxes, parts::WordWidth);
    addChecks(c, parts::sectionOf(column, c.s(text::PricesAndCosts)));
    addTexts(c, parts::sectionOf(column, c.s(text::SettingsFinanceWords), c.s(text::WordsNote)),
             Words, parts::WordWidth);

    auto *months = new ui::WholeNumberBox(3);
    months->setObjectName(u"OSDuracionSol"_s);
    months->setFixedWidth(parts::FigureWidth);
    parts::Row(parts::sectionOf(column, c.s(text::PrepaidMedicine), c.s(text::ValidityNote)),
               c.s(text::SettingsFinanceValidity), months);
    ui::bind::whole(c.s, c.guarded, months, setting::OSDuracionSol);

    addColours(c,
               parts::sectionOf(column, c.s(text::SettingsFinanceColours), c.s(text::ColoursNote)));
    return page;
}
