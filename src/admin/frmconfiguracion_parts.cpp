#include "admin/frmconfiguracion_pages.h"

#include "ui/form_base.h"
#include "ui/theme.h"

#include <QFormLayout>
#include <QPainter>

using namespace admin;

namespace
{

constexpr int PageWidth = 720; // longer lines are hard to read
constexpr int CaptionWidth = 220;
constexpr int Swatch = 24;
constexpr qreal SwatchScale = 3; // sharp on every screen

QPixmap paintSwatch(const QColor &color, bool chosen)
{
    QPixmap picture(QSize(Swatch, Swatch) * SwatchScale);
    picture.setDevicePixelRatio(SwatchScale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ui::paletteInUse().border, 1));
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(0.5, 0.5, Swatch - 1, Swatch - 1), 6, 6);
    if (chosen) {
        const QColor ink = ui::contrastOf(color, Qt::white) >= 3 ? Qt::white : Qt::black;
        painter.setPen(QPen(ink, 2.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(QPolygonF{{7.0, 12.5}, {10.6, 16.0}, {17.2, 8.6}});
    }
    return picture;
}

} // namespace

QVBoxLayout *parts::Column(QWidget *page)
{
    page->setMaximumWidth(PageWidth);
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(ui::space::XL);
    return column;
}

QFormLayout *parts::sectionOf(QVBoxLayout *column, const QString &title, const QString &note)
{
    auto *heading = new QLabel(title);
    heading->setProperty("clase", QStringLiteral("subtitulo"));
    auto *section = new QVBoxLayout;
    section->setSpacing(ui::space::XS);
    section->addWidget(heading);
    if (!note.isEmpty())
        section->addWidget(noteOf(note));
    section->addSpacing(ui::space::S);
    auto *rows = new QFormLayout;
    rows->setHorizontalSpacing(ui::space::L);
    rows->setVerticalSpacing(ui::space::S);
    rows->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    rows->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    section->addLayout(rows);
    column->addLayout(section);
    return rows;
}

void parts::Row(QFormLayout *section, const QString &title, QWidget *control)
{
    auto *caption = new QLabel(title);
    caption->setFixedWidth(CaptionWidth);
    caption->setWordWrap(true);
    caption->setBuddy(control);
    control->setAccessibleName(ui::spoken(title));
    section->addRow(caption, control);
}

QLabel *parts::noteOf(const QString &text)
{
    auto *note = new QLabel(text);
    note->setTextFormat(Qt::PlainText);
    note->setProperty("clase", QStringLiteral("suave"));
    note->setWordWrap(true);
    return note;
}

QPushButton *parts::buttonOf(const QString &title, const QString &name)
{
    auto *button = new QPushButton(title);
    button->setObjectName(name);
    button->setAccessibleName(ui::spoken(title));
    button->setAutoDefault(false);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return button;
}

QIcon parts::sample(const QColor &color)
{
    QIcon icon;
    // Set for every mode, or the style would tint the colour.
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Active, QIcon::Selected}) {
        icon.addPixmap(paintSwatch(color, false), mode, QIcon::Off);
        icon.addPixmap(paintSwatch(color, true), mode, QIcon::On);
    }
    return icon;
}

QColor parts::settingColor(int value)
{
    return QColor(value & 0xff, value >> 8 & 0xff, value >> 16 & 0xff);
}

int parts::colorSetting(const QColor &color)
{
    return color.red() | color.green() << 8 | color.blue() << 16;
}
