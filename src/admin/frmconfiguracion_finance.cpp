#include "admin/frmconfiguracion_pages.h"
#include "store/settings_row.h"
#include "ui/bound.h"
#include "ui/boxes.h"
#include "ui/theme.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QFormLayout>
#include <span>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Servicio = 2232,
    NotaDeVigencia = 2698,
    NotaDeColores = 3108,
    Vencido = 3137,
    BajoElMinimo,
    SinExistencia,
    MedicinaPrepaga = 3802,
    Impuestos = 9605,
    IdentificacionFiscal,
    ImpuestoCompraVenta,
    PreciosYCostos,
    GuardarPrecio,
    GuardarCosto,
    Palabras,
    NotaDePalabras,
    AlContado,
    ACuenta,
    Cuota,
    Cobro,
    Colores,
    Vigencia,
};

struct Ajuste {
    const char *columna;
    int titulo;
};

constexpr Ajuste taxes[] = {
    {"NombreIdentificacionFiscal", IdentificacionFiscal},
    {"NombreImpuestoCompraVenta", ImpuestoCompraVenta},
};
constexpr Ajuste words[] = {
    {"EntradaMoneda", AlContado},
    {"EntradaDeuda", ACuenta},
    {"EntradaMedicinaPrepaga", Cuota},
    {"PagoDeuda", Cobro},
};
constexpr Ajuste checks[] = {
    {"GuardarPrecioVentas", GuardarPrecio},
    {"GuardarCostoCompras", GuardarCosto},
};
constexpr Ajuste productColours[] = {
    {"FAColor0", SinExistencia},
    {"FAColorV", Vencido},
    {"FAColorM", BajoElMinimo},
    {"FAColorSer", Servicio},
};

void addTexts(const ContextoDePagina &c, QFormLayout *rows, std::span<const Ajuste> settings,
              int width)
{
    QList<QLineEdit *> made;
    for (const Ajuste &setting : settings) {
        auto *box = new QLineEdit;
        box->setObjectName(QString::fromLatin1(setting.columna));
        box->setMaxLength(c.s.morvane->Ancho("Configuracion", setting.columna));
        box->setFixedWidth(width);
        Parte::Fila(rows, c.s(setting.titulo), box);
        Atar::Texto(c.s, c.guarded, box, setting.columna);
        made << box;
    }
    c.sinApostrofes(made);
    c.cadenaDeEnter({made.begin(), made.end()});
}

void addChecks(const ContextoDePagina &c, QFormLayout *rows)
{
    for (const Ajuste &setting : checks) {
        auto *box = named(new QCheckBox(c.s(setting.titulo)), QString::fromLatin1(setting.columna),
                          c.s(setting.titulo));
        Atar::Casilla(c.s, c.guarded, box, setting.columna);
        rows->addRow(box);
    }
}

void addColours(const ContextoDePagina &c, QFormLayout *rows)
{
    auto *line = new QHBoxLayout;
    line->setSpacing(Espacio::S);
    for (const Ajuste &setting : productColours) {
        QPushButton *button =
            Parte::Boton(c.s(setting.titulo), QString::fromLatin1(setting.columna));
        button->setIconSize(QSize(18, 18));
        const auto stored = [c, setting] {
            return Parte::ColorDeAjuste(c.s.configuracion[setting.columna].toInt());
        };
        button->setIcon(Parte::Muestra(stored()));
        line->addWidget(button);
        QObject::connect(button, &QPushButton::clicked, button, [c, setting, stored, button] {
            const QColor chosen = QColorDialog::getColor(stored(), c.form, c.s(setting.titulo));
            if (!chosen.isValid())
                return;
            c.guarded([&] { GuardarAjuste(c.s, setting.columna, Parte::AjusteDeColor(chosen)); });
            button->setIcon(Parte::Muestra(stored()));
        });
    }
    line->addStretch();
    rows->addRow(line);
}

} // namespace

QWidget *PaginaDeFinanzas(const ContextoDePagina &c)
{
    auto *page = new QWidget;
    QVBoxLayout *column = Parte::Columna(page);
    addTexts(c, Parte::Seccion(column, c.s(Impuestos)), taxes, Parte::AnchoDePalabra);
    addChecks(c, Parte::Seccion(column, c.s(PreciosYCostos)));
    addTexts(c, Parte::Seccion(column, c.s(Palabras), c.s(NotaDePalabras)), words,
             Parte::AnchoDePalabra);

    auto *months = new CajaDeEntero(3);
    months->setObjectName(u"OSDuracionSol"_s);
    months->setFixedWidth(Parte::AnchoDeCifra);
    Parte::Fila(Parte::Seccion(column, c.s(MedicinaPrepaga), c.s(NotaDeVigencia)), c.s(Vigencia),
                months);
    Atar::Entero(c.s, c.guarded, months, "OSDuracionSol");

    addColours(c, Parte::Seccion(column, c.s(Colores), c.s(NotaDeColores)));
    return page;
}
