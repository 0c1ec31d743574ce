#include "admin/pages.h"

#include "ui/theme.h"

#include <QFormLayout>

namespace
{

constexpr int pageWidth = 720; // longer lines do not read well
constexpr int captionWidth = 220;

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
    control->setAccessibleName(SinLetra(titulo));
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

QString Parte::SinLetra(QString titulo) { return titulo.remove(u'&'); }
