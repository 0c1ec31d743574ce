#include "admin/frmconfiguracion_pages.h"
#include "store/settings_row.h"
#include "ui/bound.h"
#include "ui/theme.h"

#include <QApplication>
#include <QButtonGroup>
#include <QColorDialog>
#include <QFormLayout>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Unidades = 9595,
    Kilos,
    Libras,
    Color,
    NotaDeColor,
    NombresDeColores,
    OtroColor,
    NotaDeUnidades = 9629,
};

constexpr int ownColour = 1;
// In the order of the names, after the program's own.
constexpr QRgb colours[] = {
    0x2563ab, 0x3f51a3, 0x6b4ca5, 0x86407f, 0xb0305c, 0xb23a36,
    0xb3582b, 0x96701a, 0x6b7a2a, 0x3f7d3f, 0x1d7a5c, 0x4c6070,
};

/// The colours offered, each as it will look, and any other by a box.
class ColorDelPrograma : public QWidget
{
public:
    explicit ColorDelPrograma(const ContextoDePagina &c) : m_c(c)
    {
        auto *row = new QHBoxLayout;
        row->setSpacing(Espacio::XS);
        QList<int> values{ownColour};
        for (const QRgb colour : colours)
            values << Parte::AjusteDeColor(QColor(colour));
        const QStringList names = c.s(NombresDeColores).split(u'|');
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
        m_other = Parte::Boton(c.s(OtroColor), u"PrincipalColor"_s);
        m_other->setIconSize(QSize(18, 18));
        auto *all = new QVBoxLayout(this);
        all->setContentsMargins(0, 0, 0, 0);
        all->setSpacing(Espacio::M);
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
        return std::max(ownColour, m_c.s.configuracion["PrincipalColor"].toInt());
    }

    static QColor shown(int value) { return CalcularPaleta(value, PaletaEnUso().oscura).acento; }

    void paint()
    {
        for (QAbstractButton *patch : m_patches.buttons())
            patch->setIcon(Parte::Muestra(shown(m_patches.id(patch))));
        show(stored());
    }

    void show(int value)
    {
        QAbstractButton *patch = m_patches.button(value);
        m_patches.setExclusive(false);
        for (QAbstractButton *other : m_patches.buttons())
            other->setChecked(other == patch);
        m_patches.setExclusive(true);
        m_other->setIcon(patch ? QIcon() : Parte::Muestra(shown(value)));
    }

    void choose(int value)
    {
        m_c.guarded([&] {
            GuardarAjuste(m_c.s, "PrincipalColor", value);
            AplicarTema(*qApp, value);
        });
        show(stored());
    }

    void chooseOther()
    {
        const QColor chosen =
            QColorDialog::getColor(shown(stored()), m_c.form, spoken(m_c.s(OtroColor)));
        if (chosen.isValid())
            choose(Parte::AjusteDeColor(chosen));
    }

    ContextoDePagina m_c;
    QButtonGroup m_patches;
    QPushButton *m_other = nullptr;
};

} // namespace

QWidget *PaginaDeAspecto(const ContextoDePagina &c)
{
    auto *page = new QWidget;
    QVBoxLayout *column = Parte::Columna(page);
    Parte::Seccion(column, c.s(Color), c.s(NotaDeColor))->addRow(new ColorDelPrograma(c));
    auto *units = named(new GrupoDeOpciones({}, {{UnidadDePeso::Kilos, c.s(Kilos)},
                                                 {UnidadDePeso::Libras, c.s(Libras)}}),
                        u"KgLbs"_s, c.s(Unidades));
    // The heading stands above it, so that it needs no frame of its own.
    units->setStyleSheet(
        u"QGroupBox { background: transparent; border: 0; margin: 0; padding: 0 }"_s);
    units->layout()->setContentsMargins(0, 0, 0, 0);
    Atar::Opciones(c.s, c.guarded, units, "KgLbs");
    Parte::Seccion(column, c.s(Unidades), c.s(NotaDeUnidades))->addRow(units);
    return page;
}
