#include "admin/frmconfiguracion_pages.h"
#include "columns/configuracion.h"
#include "texts/admin.h"
#include "texts/texts.h"
#include "ui/bound.h"
#include "ui/boxes.h"

#include <QFormLayout>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

struct RationBox {
    std::string_view column;
    const char16_t *name;
};

constexpr RationBox RationBoxes[] = {
    {setting::horaracion1, u"HoraRacion1"},
    {setting::horaracion2, u"HoraRacion2"},
    {setting::horaracion3, u"HoraRacion3"},
    {setting::horaracion4, u"HoraRacion4"},
};

} // namespace

QWidget *admin::boardingPage(const PageContext &c)
{
    auto *page = new QWidget;
    QVBoxLayout *column = parts::Column(page);

    auto *count = new ui::WholeNumberBox(3);
    count->setObjectName(u"CantidadCaniles"_s);
    count->setFixedWidth(parts::FigureWidth);
    parts::Row(parts::sectionOf(column, c.s(text::SettingsBoardingKennels)),
               c.s(text::NumberOfKennels), count);
    ui::bind::whole(c.s, c.guarded, count, setting::CantidadCaniles);

    QList<QWidget *> boxes{count};
    QFormLayout *rows =
        parts::sectionOf(column, c.s(text::SettingsBoardingRations), c.s(text::RationsNote));
    int text = text::FirstRation;
    for (const RationBox &ration : RationBoxes) {
        auto *time = new ui::HourBox;
        time->setObjectName(QString::fromUtf16(ration.name));
        time->setFixedWidth(parts::FigureWidth);
        parts::Row(rows, c.s(text++), time);
        ui::bind::hourOf(c.s, c.guarded, time, ration.column);
        boxes << time;
    }
    c.enterChain(boxes);
    return page;
}
