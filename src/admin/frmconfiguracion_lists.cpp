#include "admin/frmconfiguracion_rows.h"
#include "admin/list_maintenance.h"
#include "ui/form_base.h"
#include "ui/grid.h"
#include "ui/help_line.h"
#include "ui/theme.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Nombre = 2201,
    PrimerTitulo = 9632, // in the order of Lista
    CodigoDeArea = 9644,
    CodigoPostal = 9645,
    Agregar = 9651,
    Modificar,
    Eliminar,
    ListaVacia,
    Teclas,
    Region,
    Especie,
    Agregado,
    Modificado,
    Eliminado,
    Listas_,
    TeclasSinEliminar = 9726,
};

/// Names of the buttons of one list. Regions are never deleted, so they have no third one.
struct ListOfPage {
    Lista list;
    QStringView grid;
    QStringView add;
    QStringView change;
    QStringView remove;
};

constexpr ListOfPage lists[] = {
    {Lista::Region, u"grdDepartamento", u"cmdND", u"cmdMD", u""},
    {Lista::Subregion, u"grdLocalidad", u"cmdNL", u"cmdML", u"cmdEL"},
    {Lista::Marketing, u"grdMarketing", u"cmdNM", u"cmdMM", u"cmdEM"},
    {Lista::Especie, u"grdEspecies", u"cmdNE", u"cmdME", u"cmdEE"},
    {Lista::Raza, u"grdRazas", u"cmdNR", u"cmdMR", u"cmdER"},
    {Lista::Pelaje, u"grdPelajes", u"cmdNP", u"cmdMp", u"cmdEP"},
};

constexpr int nameWidth = 260;

/// One list: its grid and what can be done to it.
class Maintenance : public QWidget
{
public:
    Maintenance(const ContextoDePagina &c, const ListOfPage &which) : m_c(c), m_list(which.list)
    {
        auto *model = new ModeloDeGrilla(c.s, columns(), this);
        m_idColumn = int(model->Columnas().size()) - 1;
        m_grid = named(new Grilla(c.s, model), which.grid.toString(),
                       c.s(PrimerTitulo + int(which.list)));
        m_grid->PonerVacio(c.s(ListaVacia));
        auto *buttons = new QHBoxLayout;
        buttons->setSpacing(Espacio::S);
        buttons->addWidget(button(which.add, Agregar, Qt::Key_Insert, [this] { add(); }));
        m_change = button(which.change, Modificar, Qt::Key_F2, [this] { change(); });
        buttons->addWidget(m_change);
        if (!which.remove.isEmpty()) {
            m_remove = button(which.remove, Eliminar, Qt::Key_Delete, [this] { remove(); });
            buttons->addWidget(m_remove);
        }
        buttons->addStretch();
        auto *all = new QVBoxLayout(this);
        all->setContentsMargins(0, Espacio::M, 0, 0);
        all->setSpacing(Espacio::S);
        all->addWidget(m_grid, 1);
        all->addLayout(buttons);
        connect(m_grid, &Grilla::filaElegida, this, [this] { change(); });
        AvisarAlEntrar(c, m_grid, m_remove ? Teclas : TeclasSinEliminar);
        // Entries are added while clients are entered, here and on other terminals.
        AlMostrar(this, [this] { m_c.guarded([this] { load(current()); }); });
    }

private:
    QList<ColumnaDeGrilla> columns() const
    {
        const Sesion &s = m_c.s;
        QList<ColumnaDeGrilla> all{{s(Nombre), Clase::Texto, nameWidth}};
        if (m_list == Lista::Region || m_list == Lista::Subregion)
            all.append({s(m_list == Lista::Region ? CodigoDeArea : CodigoPostal)});
        if (m_list == Lista::Subregion || m_list == Lista::Raza)
            all.append({s(m_list == Lista::Subregion ? Region : Especie)});
        all.append({{}, Clase::Entero, 0, true});
        return all;
    }

    FilaDeGrilla row(const Entrada &entry)
    {
        FilaDeGrilla row;
        row.celdas << entry.nom;
        if (m_list == Lista::Region || m_list == Lista::Subregion)
            row.celdas << entry.codigo;
        if (m_list == Lista::Subregion || m_list == Lista::Raza)
            row.celdas << NombreDelPadre(m_c.s, m_list, entry);
        row.celdas << entry.id;
        return row;
    }

    QPushButton *button(QStringView name, int caption, Qt::Key key,
                        const std::function<void()> &task)
    {
        auto *b = Parte::Boton(m_c.s(caption), name.toString());
        b->setToolTip(QKeySequence(key).toString(QKeySequence::NativeText));
        connect(b, &QPushButton::clicked, this, task);
        auto *shortcut = new QShortcut(key, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, b, [b] { b->click(); });
        return b;
    }

    /// Id of the current row, 0 without one.
    int current() const
    {
        const int row = m_grid->FilaActual();
        return row < 0 ? 0 : m_grid->Modelo()->Fila(row).celdas[m_idColumn].toInt();
    }

    /// Reads all rows and stands on that entry, else on the first.
    void load(int id)
    {
        std::vector<FilaDeGrilla> rows;
        for (const Entrada &entry : CargarLista(m_c.s, m_list))
            rows.push_back(row(entry));
        ModeloDeGrilla *model = m_grid->Modelo();
        model->Poner(std::move(rows));
        const bool any = model->Filas() > 0;
        if (any)
            m_grid->Seleccionar(
                std::max(0, model->BuscarEnGrilla(id, m_idColumn, 0, model->Filas() - 1)));
        m_change->setEnabled(any);
        if (m_remove)
            m_remove->setEnabled(any);
    }

    void add()
    {
        m_c.guarded([this] {
            if (const auto id = AgregarEntrada(m_c.s, m_list))
                done(Agregado, *id);
        });
    }

    void change()
    {
        m_c.guarded([this, id = current()] {
            if (id != 0 && ModificarEntrada(m_c.s, m_list, id))
                done(Modificado, id);
        });
    }

    void remove()
    {
        m_c.guarded([this, id = current()] {
            if (id == 0 || !EliminarEntrada(m_c.s, m_list, id))
                return;
            const int row = m_grid->FilaActual();
            const ModeloDeGrilla *model = m_grid->Modelo();
            const int next = row + 1 < model->Filas() ? row + 1 : row - 1;
            done(Eliminado, next < 0 ? 0 : model->Fila(next).celdas[m_idColumn].toInt());
        });
    }

    void done(int what, int id)
    {
        load(id);
        m_grid->setFocus();
        m_c.ayuda->Logro(m_c.s(what));
    }

    ContextoDePagina m_c;
    Lista m_list;
    int m_idColumn = 0;
    Grilla *m_grid = nullptr;
    QPushButton *m_change = nullptr;
    QPushButton *m_remove = nullptr;
};

} // namespace

QWidget *PaginaDeListas(const ContextoDePagina &c)
{
    auto *page = new QWidget;
    auto *tabs = named(new QTabWidget, u"tabListas"_s, c.s(Listas_));
    tabs->tabBar()->setAccessibleName(tabs->accessibleName());
    tabs->setDocumentMode(true);
    for (const ListOfPage &which : lists)
        tabs->addTab(new Maintenance(c, which), c.s(PrimerTitulo + int(which.list)));
    Parte::Columna(page)->addWidget(tabs, 1);
    return page;
}
