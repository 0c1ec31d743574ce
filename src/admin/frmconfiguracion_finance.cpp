#include "admin/frmconfiguracion_pages.h"
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

struct setting {
    const char *column;
    int title;
};

constexpr setting Taxes[] = {
    {"NombreIdentificacionFiscal", text::FiscalIdentification},
    {"NombreImpuestoCompraVenta", text::TaxPurchaseSale},
};
constexpr setting Words[] = {
    {"EntradaMoneda", text::CashSaleWord},
    {"EntradaDeuda", text::AccountSaleWord},
    {"EntradaMedicinaPrepaga", text::PrepaidFeeWord},
    {"PagoDeuda", text::DebtPaymentWord},
};
constexpr setting Checks[] = {
    {"GuardarPrecioVentas", text::StoreSalePrice},
    {"GuardarCostoCompras", text::StorePurchaseCost},
};
constexpr setting ProductColours[] = {
    {"FAColor0", text::OutOfStock},
    {"FAColorV", text::HasExpired},
    {"FAColorM", text::BelowMinimum},
    {"FAColorSer", text::Service},
};

void addTexts(const PageContext &c, QFormLayout *rows, std::span<const setting> settings, int width)
{
    QList<QLineEdit *> made;
    for (const setting &setting : settings) {
        auto *box = new QLineEdit;
        box->setObjectName(QString::fromLatin1(setting.column));
        box->setMaxLength(c.s.morvane->widthOf("Configuracion", setting.column));
        box->setFixedWidth(width);
        parts::Row(rows, c.s(setting.title), box);
        ui::bind::text(c.s, c.guarded, box, setting.column);
        made << box;
    }
    c.withoutApostrophes(made);
    c.enterChain({made.begin(), made.end()});
}

void addChecks(const PageContext &c, QFormLayout *rows)
{
    for (const setting &setting : Checks) {
        auto *box = named(new QCheckBox(c.s(setting.title)), QString::fromLatin1(setting.column),
                          c.s(setting.title));
        ui::bind::Checkbox(c.s, c.guarded, box, setting.column);
        rows->addRow(box);
    }
}

void addColours(const PageContext &c, QFormLayout *rows)
{
    auto *line = new QHBoxLayout;
    line->setSpacing(ui::space::S);
    for (const setting &setting : ProductColours) {
        QPushButton *button =
            parts::buttonOf(c.s(setting.title), QString::fromLatin1(setting.column));
        button->setIconSize(QSize(18, 18));
        const auto stored = [c, setting] {
            return parts::settingColor(c.s.configuracion[setting.column].toInt());
        };
        button->setIcon(parts::sample(stored()));
        line->addWidget(button);
        QObject::connect(button, &QPushButton::clicked, button, [c, setting, stored, button] {
            const QColor chosen = QColorDialog::getColor(stored(), c.form, c.s(setting.title));
            if (!chosen.isValid())
                return;
            c.guarded(
                [&] { store::saveSetting(c.s, setting.column, parts::colorSetting(chosen)); });
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
    ui::bind::whole(c.s, c.guarded, months, "OSDuracionSol");

    addColours(c,
               parts::sectionOf(column, c.s(text::SettingsFinanceColours), c.s(text::ColoursNote)));
    return page;
}
