#include "admin/frmconfiguracion_pages.h"
#include "texts/admin.h"
#include "texts/texts.h"
#include "ui/bound.h"
#include "ui/boxes.h"

#include <QFormLayout>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

constexpr const char *RationColumns[] = {"HoraRacion1", "HoraRacion2", "HoraRacion3",
                                         "HoraRacion4"};

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
    ui::bind::whole(c.s, c.guarded, count, "CantidadCaniles");

    QList<QWidget *> boxes{count};
    QFormLayout *rows =
        parts::sectionOf(column, c.s(text::SettingsBoardingRations), c.s(text::RationsNote));
    int text = text::FirstRation;
    for (const char *name : RationColumns) {
        auto *time = new ui::HourBox;
        time->setObjectName(QString::fromLatin1(name));
        time->setFixedWidth(parts::FigureWidth);
        parts::Row(rows, c.s(text++), time);
        ui::bind::hourOf(c.s, c.guarded, time, name);
        boxes << time;
    }
    c.enterChain(boxes);
    return page;
}
