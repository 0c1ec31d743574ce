#include "admin/frmconfiguracion_pages.h"

#include "ui/form_base.h"
#include "ui/theme.h"

#include <QFormLayout>
#include <QPainter>

namespace
{

constexpr int pageWidth = 720; // longer lines do not read well
constexpr int captionWidth = 220;
constexpr int swatch = 24;
constexpr qreal swatchScale = 3; // drawn as large as any screen asks

QPixmap paintSwatch(const QColor &color, bool chosen)
{
    QPixmap picture(QSize(swatch, swatch) * swatchScale);
    picture.setDevicePixelRatio(swatchScale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(PaletaEnUso().borde, 1));
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(0.5, 0.5, swatch - 1, swatch - 1), 6, 6);
    if (chosen) {
        const QColor ink = Contraste(color, Qt::white) >= 3 ? Qt::white : Qt::black;
        painter.setPen(QPen(ink, 2.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(QPolygonF{{7.0, 12.5}, {10.6, 16.0}, {17.2, 8.6}});
    }
    return picture;
}

} // namespace

QVBoxLayout *Parte::Columna(QWidget *pagina)
{
    pagina->setMaximumWidth(pageWidth);
    auto *column = new QVBoxLayout(pagina);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Espacio::XL);
    return column;
}

QFormLayout *Parte::Seccion(QVBoxLayout *columna, const QString &titulo, const QString &nota)
{
    auto *heading = new QLabel(titulo);
    heading->setProperty("clase", QStringLiteral("subtitulo"));
    auto *section = new QVBoxLayout;
    section->setSpacing(Espacio::XS);
    section->addWidget(heading);
    if (!nota.isEmpty())
        section->addWidget(Nota(nota));
    section->addSpacing(Espacio::S);
    auto *rows = new QFormLayout;
    rows->setHorizontalSpacing(Espacio::L);
    rows->setVerticalSpacing(Espacio::S);
    rows->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    rows->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    section->addLayout(rows);
    columna->addLayout(section);
    return rows;
}

void Parte::Fila(QFormLayout *seccion, const QString &titulo, QWidget *control)
{
    auto *caption = new QLabel(titulo);
    caption->setFixedWidth(captionWidth);
    caption->setWordWrap(true);
    caption->setBuddy(control);
    control->setAccessibleName(spoken(titulo));
    seccion->addRow(caption, control);
}

QLabel *Parte::Nota(const QString &texto)
{
    auto *note = new QLabel(texto);
    note->setTextFormat(Qt::PlainText);
    note->setProperty("clase", QStringLiteral("suave"));
    note->setWordWrap(true);
    return note;
}

QPushButton *Parte::Boton(const QString &titulo, const QString &nombre)
{
    auto *button = new QPushButton(titulo);
    button->setObjectName(nombre);
    button->setAccessibleName(spoken(titulo));
    button->setAutoDefault(false);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return button;
}

QIcon Parte::Muestra(const QColor &color)
{
    QIcon icon;
    // In every mode, or the style would tint the colour that is to be shown.
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Active, QIcon::Selected}) {
        icon.addPixmap(paintSwatch(color, false), mode, QIcon::Off);
        icon.addPixmap(paintSwatch(color, true), mode, QIcon::On);
    }
    return icon;
}

QColor Parte::ColorDeAjuste(int valor)
{
    return QColor(valor & 0xff, valor >> 8 & 0xff, valor >> 16 & 0xff);
}

int Parte::AjusteDeColor(const QColor &color)
{
    return color.red() | color.green() << 8 | color.blue() << 16;
}
