#include "clients/frmbusquedarapida.h"

#include "clients/search.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"
#include "ui/theme.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Propietario = 9809,
    Telefono = 9815,
    YaNoExiste = 9829,
    Titulo = 9830,
    QueBuscar = 9831,
    CualquierTrozo = 9832,
    NadieCoincide = 9833,
    Mascota = 9834,
    Fallecido = 9835,
    HayMas = 9836,
    EnterAbre = 9837,
};

enum Columna { DePropietario, DeMascota, DeTelefono, DeIdc, DeIdm };

// Whoever is not among these is found by one more letter.
constexpr int RowsShown = 40;

} // namespace

frmBusquedaRapida::frmBusquedaRapida(Sesion &s, Formularios &formularios)
    : FormBase(s, u"frmBusquedaRapida"_s), m_forms(formularios)
{
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(s(Titulo));
    build();
    connect(txtBuscar, &QLineEdit::textChanged, this, &frmBusquedaRapida::search);
    connect(grd, &Grilla::filaElegida, this, &frmBusquedaRapida::take);
    rememberSize({680, 460});
}

void frmBusquedaRapida::build()
{
    txtBuscar = named(new QLineEdit, u"txtBuscar"_s, m_s(QueBuscar));
    txtBuscar->setPlaceholderText(m_s(QueBuscar));
    txtBuscar->setClearButtonEnabled(true);
    txtBuscar->setMaxLength(100);
    txtBuscar->installEventFilter(this);

    auto *model = new ModeloDeGrilla(m_s,
                                     {{.titulo = m_s(Propietario), .ancho = 250},
                                      {.titulo = m_s(Mascota), .ancho = 190},
                                      {.titulo = m_s(Telefono), .ancho = 160},
                                      {.clase = Clase::Entero, .oculta = true},
                                      {.clase = Clase::Entero, .oculta = true}},
                                     this);
    grd = named(new Grilla(m_s, model), u"grd"_s, m_s(Titulo));
    grd->setSortingEnabled(false); // the best match stands first
    grd->horizontalHeader()->setSectionsClickable(false);

    Ayu = named(new LineaDeAyuda, u"Ayu"_s, {});

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(Espacio::L, Espacio::L, Espacio::L, Espacio::M);
    all->setSpacing(Espacio::M);
    all->addWidget(txtBuscar);
    all->addWidget(grd, 1);
    all->addWidget(Ayu);
}

void frmBusquedaRapida::opened(const QVariantMap &)
{
    txtBuscar->clear();
    search();
    txtBuscar->setFocus();
    guarded([this] { m_indice.PonerAlDia(m_s); });
}

bool frmBusquedaRapida::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && watched == txtBuscar) {
        auto *key = static_cast<QKeyEvent *>(event);
        if (grd->Recorrer(key))
            return true;
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            take(grd->FilaActual());
            return true;
        }
    }
    return FormBase::eventFilter(watched, event);
}

void frmBusquedaRapida::search()
{
    guarded([this] {
        const QString text = txtBuscar->text();
        const RespuestaRapida found = m_indice.Buscar(m_s, text, RowsShown);
        std::vector<FilaDeGrilla> rows;
        int owner = 0;
        for (const HalladoRapido &h : found.filas) {
            // An owner stands above all its animals once.
            const bool first = h.idc != owner;
            owner = h.idc;
            FilaDeGrilla &row = rows.emplace_back();
            row.celdas = {first ? h.propietario : QString(), h.mascota,
                          first ? h.telefonos : QString(), h.idc, h.idm};
            if (h.dec) {
                row.celdas[DeMascota] = h.mascota + u" ("_s + m_s(Fallecido) + u')';
                row.realce = Realce::Apagado;
                row.celdaRealzada = DeMascota;
                row.motivo = m_s(Fallecido);
            }
        }
        grd->PonerVacio(m_s(text.trimmed().isEmpty() ? CualquierTrozo : NadieCoincide));
        grd->Modelo()->Poner(std::move(rows));
        grd->Seleccionar(0);

        const int shown = grd->Modelo()->Filas();
        if (shown == 0)
            Ayu->Limpiar();
        else if (found.total > shown)
            Ayu->Decir(m_s(HayMas).arg(locale().toString(shown), locale().toString(found.total)));
        else
            Ayu->Decir(m_s(EnterAbre));
    });
}

void frmBusquedaRapida::take(int row)
{
    if (row < 0)
        return;
    guarded([this, row] {
        const QList<Valor> &cells = grd->Modelo()->Fila(row).celdas;
        const int idm = cells[DeIdm].toInt();
        const bool taken = idm > 0 ? TomarHallado(m_s, Busqueda::Mascotas, idm)
                                   : TomarHallado(m_s, Busqueda::Clientes, cells[DeIdc].toInt());
        if (!taken) {
            Ayu->Fallo(m_s(YaNoExiste));
            return;
        }
        accept();
        m_forms.Abrir(u"frmPropietarios"_s);
    });
}
