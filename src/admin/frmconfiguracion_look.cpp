#include "admin/frmconfiguracion_pages.h"
#include "columns/configuracion.h"
#include "store/settings_row.h"
#include "texts/admin.h"
#include "ui/bound.h"
#include "ui/help_line.h"
#include "ui/text_size.h"
#include "ui/theme.h"

#include <QApplication>
#include <QButtonGroup>
#include <QColorDialog>
#include <QFormLayout>
#include <QToolButton>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

constexpr int OwnColour = 1;
// In the order of their names, after the program's own colour.
constexpr QRgb Colours[] = {
    0x2563ab, 0x3f51a3, 0x6b4ca5, 0x86407f, 0xb0305c, 0xb23a36,
    0xb3582b, 0x96701a, 0x6b7a2a, 0x3f7d3f, 0x1d7a5c, 0x4c6070,
};

/// A swatch for each colour on offer, as it will look, and a dialog for any other.
class ProgramColor : public QWidget
{
public:
    explicit ProgramColor(const PageContext &c) : m_c(c)
    {
        auto *row = new QHBoxLayout;
        row->setSpacing(ui::space::XS);
        QList<int> values{OwnColour};
        for (const QRgb colour : Colours)
            values << parts::colorSetting(QColor(colour));
        const QStringList names = c.s(text::ColoursNames).split(u'|');
        for (int i = 0; i < values.size(); ++i) {
            auto *patch =
                named(new QToolButton, u"Color%1"_s.arg(i), names.value(i, QString::number(i)));
            patch->setToolTip(patch->accessibleName());
            patch->setIconSize(QSize(24, 24));
            patch->setCheckable(true);
            patch->setAutoRaise(true);
            m_patches.addButton(patch, values[i]);
            row->addWidget(patch);
        }
        row->addStretch();
        m_other = parts::buttonOf(c.s(text::OtherColor), u"PrincipalColor"_s);
        m_other->setIconSize(QSize(18, 18));
        auto *all = new QVBoxLayout(this);
        all->setContentsMargins(0, 0, 0, 0);
        all->setSpacing(ui::space::M);
        all->addLayout(row);
        all->addWidget(m_other);

        connect(&m_patches, &QButtonGroup::idClicked, this, [this](int value) { choose(value); });
        connect(m_other, &QPushButton::clicked, this, [this] { chooseOther(); });
        paint();
        show(stored());
    }

protected:
    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::PaletteChange)
            paint();
        QWidget::changeEvent(event);
    }

private:
    int stored() const
    {
        return std::max(OwnColour, m_c.s.configuracion[setting::PrincipalColor].toInt());
    }

    static QColor shown(int value)
    {
        return ui::computePalette(value, ui::paletteInUse().dark).accent;
    }

    void paint()
    {
        for (QAbstractButton *patch : m_patches.buttons())
            patch->setIcon(parts::sample(shown(m_patches.id(patch))));
        show(stored());
    }

    void show(int value)
    {
        QAbstractButton *patch = m_patches.button(value);
        m_patches.setExclusive(false);
        for (QAbstractButton *other : m_patches.buttons())
            other->setChecked(other == patch);
        m_patches.setExclusive(true);
        m_other->setIcon(patch ? QIcon() : parts::sample(shown(value)));
    }

    void choose(int value)
    {
        m_c.guarded([&] {
            store::saveSetting(m_c.s, setting::PrincipalColor, value);
            ui::applyTheme(*qApp, value);
        });
        show(stored());
    }

    void chooseOther()
    {
        const QColor chosen =
            QColorDialog::getColor(shown(stored()), m_c.form, ui::spoken(m_c.s(text::OtherColor)));
        if (chosen.isValid())
            choose(parts::colorSetting(chosen));
    }

    PageContext m_c;
    QButtonGroup m_patches;
    QPushButton *m_other = nullptr;
};

/// How large everything is drawn, on this machine alone.
ui::OptionsGroup *textSizes(const PageContext &c)
{
    QList<std::pair<int, QString>> sizes;
    for (const int percent : ui::TextSizes)
        sizes.append({percent, u"%1 %"_s.arg(percent)});
    auto *group = named(new ui::OptionsGroup({}, sizes), u"TamanoTexto"_s, c.s(text::TextSize));
    group->setValue(ui::textSize(c.s));
    QObject::connect(group, &ui::OptionsGroup::chosen, group, [c, group](int percent) {
        if (c.guarded([&] { ui::saveTextSize(c.s, percent); }))
            c.help->success(c.s(text::TextSizeNote));
        else
            group->setValue(ui::textSize(c.s));
    });
    return group;
}

/// The heading stands above it, so that it needs no frame of its own.
void takeOffFrame(QWidget *group)
{
    group->setStyleSheet(
        u"QGroupBox { background: transparent; border: 0; margin: 0; padding: 0 }"_s);
    group->layout()->setContentsMargins(0, 0, 0, 0);
}

} // namespace

QWidget *admin::lookPage(const PageContext &c)
{
    auto *page = new QWidget;
    QVBoxLayout *column = parts::Column(page);
    parts::sectionOf(column, c.s(text::SettingsLookColor), c.s(text::ColorNote))
        ->addRow(new ProgramColor(c));
    ui::OptionsGroup *sizes = textSizes(c);
    takeOffFrame(sizes);
    parts::sectionOf(column, c.s(text::TextSize), c.s(text::TextSizeNote))->addRow(sizes);
    auto *units = named(
        new ui::OptionsGroup({}, {{store::weightUnit::Kilos, c.s(text::SettingsLookKilos)},
                                  {store::weightUnit::Libras, c.s(text::PoundsAndFahrenheit)}}),
        u"KgLbs"_s, c.s(text::SettingsLookUnits));
    takeOffFrame(units);
    ui::bind::Options(c.s, c.guarded, units, setting::KgLbs);
    parts::sectionOf(column, c.s(text::SettingsLookUnits), c.s(text::UnitsNote))->addRow(units);
    return page;
}
