#include "admin/frmconfiguracion_rows.h"
#include "columns/configuracion.h"
#include "commerce/categories.h"
#include "texts/admin.h"
#include "texts/texts.h"
#include "ui/boxes.h"
#include "ui/form_base.h"
#include "ui/theme.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QRegularExpressionValidator>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

constexpr int LongestTotal = 12; // 999999999.99

QLineEdit *percentage(const PageContext &c, QFormLayout *section, std::string_view column, int hint)
{
    QLineEdit *box = wholeNumberRow(c, section, column, text::Percentage, 3, hint);
    static const QRegularExpression upTo100(u"[0-9]{0,2}|100"_s);
    box->setValidator(new QRegularExpressionValidator(upTo100, box));
    return box;
}

/// The product categories; buying from the checked ones counts towards a good buyer.
QWidget *categories(const PageContext &c)
{
    auto *all = new QWidget;
    auto *grid = new QGridLayout(all);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(ui::space::XL);
    grid->setVerticalSpacing(ui::space::XS);
    const QList<commerce::ProfileCategory> found = commerce::profileCategories(c.s);
    const int rows = int(found.size() + 1) / 2;
    for (int i = 0; i < found.size(); ++i) {
        const commerce::ProfileCategory &category = found[i];
        // The clinic chooses the names: an & in one marks no shortcut.
        auto *check = named(new QCheckBox(QString(category.nom).replace(u'&', u"&&"_s)),
                            u"CatPerfil%1"_s.arg(category.idcat), category.nom);
        check->setChecked(category.account);
        grid->addWidget(check, i % rows, i / rows);
        QObject::connect(
            check, &QCheckBox::clicked, check, [c, check, id = category.idcat](bool counts) {
                if (!c.guarded([&] { commerce::saveProfileCategory(c.s, id, counts); }))
                    check->setChecked(!counts);
            });
    }
    return all;
}

} // namespace

QWidget *admin::profilesPage(const PageContext &c)
{
    const Sesion &s = c.s;
    auto *page = new QWidget;
    auto *column = parts::Column(page);
    column->addWidget(
        parts::noteOf(s(text::ProfilesMonthlyNote) + u' ' + s(text::FeaturedNote) + u'.'));
    auto *top = new QFormLayout;
    column->addLayout(top);
    auto *show = checkboxRow(c, top, u"LeerPerfil"_s, text::ShowProfile, text::ProfilesMonthlyNote);
    ui::bind::Checkbox(c.s, c.guarded, show, setting::LeerPerfil);

    QList<QWidget *> chain;
    auto *buyers = parts::sectionOf(column, s(text::GoodBuyer));
    chain << wholeNumberRow(c, buyers, setting::RegistrosBuenosCompradores, text::Minimum, 4,
                            text::GoodBuyerHelp);
    chain << percentage(c, buyers, setting::PorcentajeBuenosCompradores, text::GoodBuyerHelp);
    auto *total = new ui::NumberBox(s);
    total->setObjectName(u"totalbuenoscompradores"_s);
    total->setMaxLength(LongestTotal);
    total->setFixedWidth(parts::FigureWidth);
    total->setAlignment(Qt::AlignLeft); // aligned with the whole numbers above
    parts::Row(buyers, s(text::SaleTotal), total);
    ui::bind::numberOf(c.s, c.guarded, total, setting::totalbuenoscompradores);
    warnOnEntering(c, total, text::GoodBuyerHelp);
    chain << total;
    auto *marks = categories(c);
    parts::Row(buyers, s(text::CountedCategories), marks);
    warnOnEntering(c, marks, text::GoodBuyerHelp);
    for (auto *mark : marks->findChildren<QCheckBox *>())
        chain << mark; // ENTER walks over them, SPACE checks

    auto *frequent = parts::sectionOf(column, s(text::FrequentProfile));
    chain << wholeNumberRow(c, frequent, setting::RegistrosFrecuente, text::Minimum, 4,
                            text::FrequentHelp);
    chain << wholeNumberRow(c, frequent, setting::TiempoFrecuente, text::VisitWithinDays, 4,
                            text::FrequentHelp);

    auto *late = parts::sectionOf(column, s(text::PaysLate));
    chain << wholeNumberRow(c, late, setting::RegistrosDemoraDeudas, text::Minimum, 4,
                            text::DelayHelp);
    chain << percentage(c, late, setting::PorcentajeDemoraDeudas, text::DelayHelp);

    auto *missing = parts::sectionOf(column, s(text::MissesAppointments));
    chain << wholeNumberRow(c, missing, setting::RegistrosIncumplidorTurnos, text::Minimum, 4,
                            text::AppointmentsHelp);
    chain << percentage(c, missing, setting::PorcentajeIncumplidorTurnos, text::AppointmentsHelp);

    auto *debtors = parts::sectionOf(column, s(text::Debtor));
    chain << wholeNumberRow(c, debtors, setting::RegistrosDeudor, text::Minimum, 4,
                            text::DebtorRecordsHelp);
    chain << wholeNumberRow(c, debtors, setting::TiempoDeudor, text::DelayInDays, 4,
                            text::DebtorHelp);

    c.enterChain(chain);
    return page;
}
