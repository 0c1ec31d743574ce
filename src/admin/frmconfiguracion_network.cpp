#include "admin/frmconfiguracion_pages.h"
#include "admin/network_path.h"
#include "ui/bound.h"
#include "ui/form_registry.h"

#include <QCheckBox>
#include <QFormLayout>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    NoDisponible = 9115,
    CarpetaDeDatos = 9118,
    CarpetaCompartida = 9619,
    NotaDeCarpeta,
    Conectar,
    Datos = 9623,
    NotaDeImportar,
    Importar,
    Novedades,
    RecibirNovedades,
};

} // namespace

QWidget *PaginaDeRed(const ContextoDePagina &c)
{
    auto *page = new QWidget;
    QVBoxLayout *column = Parte::Columna(page);

    QFormLayout *network = Parte::Seccion(column, c.s(CarpetaCompartida), c.s(NotaDeCarpeta));
    auto *folder = new QLabel(c.s(CarpetaDeDatos) + u": "_s + c.s.carpetaDeDatos);
    folder->setTextFormat(Qt::PlainText);
    folder->setWordWrap(true);
    QPushButton *connectTo = Parte::Boton(c.s(Conectar), u"cmdRed"_s);
    network->addRow(folder);
    network->addRow(connectTo);
    QObject::connect(connectTo, &QPushButton::clicked, page,
                     [c] { c.guarded([&c] { ConectarTerminal(c.s); }); });

    QFormLayout *data = Parte::Seccion(column, c.s(Datos), c.s(NotaDeImportar));
    QPushButton *import = Parte::Boton(c.s(Importar), u"cmdImportar"_s);
    import->setEnabled(c.formularios.Existe(u"frmImportar"_s));
    if (!import->isEnabled())
        import->setToolTip(c.s(NoDisponible));
    data->addRow(import);
    QObject::connect(import, &QPushButton::clicked, page,
                     [c] { c.guarded([&c] { c.formularios.Abrir(u"frmImportar"_s); }); });

    QFormLayout *news = Parte::Seccion(column, c.s(Novedades));
    auto *receive = named(new QCheckBox(c.s(RecibirNovedades)), u"RecibirNotificaciones"_s,
                          c.s(RecibirNovedades));
    Atar::Casilla(c.s, c.guarded, receive, "RecibirNotificaciones");
    news->addRow(receive);
    return page;
}
