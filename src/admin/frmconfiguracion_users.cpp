#include "admin/frmconfiguracion_pages.h"
#include "admin/users.h"
#include "ui/grid.h"
#include "ui/help_line.h"
#include "ui/theme.h"

#include <QShortcut>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    PrimeraAyuda = 2601,
    UltimaAyuda = 2606,
    Usuario_ = 33,
    Titulo = 9550,
    Tipo_ = 9575,
    Nuevo = 9578,
    CambiarContrasena,
    Eliminar_,
    Agregado,
    ContrasenaCambiada,
    Eliminado,
};

enum Columna { Nom, Ut, Idu };

class Usuarios : public QWidget
{
public:
    explicit Usuarios(const ContextoDePagina &c) : m_c(c)
    {
        m_rows = new ModeloDeGrilla(c.s,
                                    {{c.s(Usuario_), Clase::Texto, 320},
                                     {c.s(Tipo_), Clase::Texto, 160},
                                     {u"IDU"_s, Clase::Entero, 60, true}},
                                    this);
        grdUsr = new Grilla(c.s, m_rows);
        grdUsr->setObjectName(u"grdUsr"_s);
        grdUsr->setAccessibleName(c.s(Titulo));
        grdUsr->setMinimumHeight(160);
        cmdUsrNuevo = Parte::Boton(c.s(Nuevo), u"cmdUsrNuevo"_s);
        cmdUsrModificarContrasena =
            Parte::Boton(c.s(CambiarContrasena), u"cmdUsrModificarContrasena"_s);
        cmdUsrEliminar = Parte::Boton(c.s(Eliminar_), u"cmdUsrEliminar"_s);
        layOut();
        wire();
        reload(c.s.usuario.idu);
    }

private:
    void layOut()
    {
        QVBoxLayout *column = Parte::Columna(this);
        column->setSpacing(Espacio::M);
        auto *buttons = new QHBoxLayout;
        buttons->setSpacing(Espacio::S);
        for (QPushButton *button : {cmdUsrNuevo, cmdUsrModificarContrasena, cmdUsrEliminar})
            buttons->addWidget(button);
        buttons->addStretch();
        column->addWidget(grdUsr, 1);
        column->addLayout(buttons);
        column->addSpacing(Espacio::S);
        for (int help = PrimeraAyuda; help <= UltimaAyuda; ++help)
            column->addWidget(Parte::Nota(m_c.s(help)));
    }

    void wire()
    {
        connect(cmdUsrNuevo, &QPushButton::clicked, this, &Usuarios::add);
        connect(cmdUsrModificarContrasena, &QPushButton::clicked, this, &Usuarios::changePassword);
        connect(cmdUsrEliminar, &QPushButton::clicked, this, &Usuarios::remove);
        connect(grdUsr, &Grilla::filaElegida, this, &Usuarios::changePassword);
        const auto key = [this](Qt::Key k, void (Usuarios::*task)()) {
            auto *shortcut = new QShortcut(k, grdUsr);
            shortcut->setContext(Qt::WidgetShortcut);
            connect(shortcut, &QShortcut::activated, this, task);
        };
        key(Qt::Key_Insert, &Usuarios::add);
        key(Qt::Key_Delete, &Usuarios::remove);
    }

    void reload(int selected)
    {
        std::vector<FilaDeGrilla> rows;
        for (const FilaDeUsuario &u : LeerUsuarios(m_c.s))
            rows.push_back({.celdas = {u.nom, TextoDeTipo(m_c.s, u.ut), u.idu}});
        m_rows->Poner(std::move(rows));
        const int row = m_rows->BuscarEnGrilla(selected, Idu, 0, m_rows->Filas() - 1);
        if (m_rows->Filas() > 0)
            grdUsr->Seleccionar(std::max(row, 0));
        for (QPushButton *button : {cmdUsrModificarContrasena, cmdUsrEliminar})
            button->setEnabled(m_rows->Filas() > 0);
    }

    int currentId() const { return m_rows->Fila(grdUsr->FilaActual()).celdas[Idu].toInt(); }
    QString currentName() const { return m_rows->TextoDeCelda(grdUsr->FilaActual(), Nom); }

    void add()
    {
        m_c.guarded([this] {
            const auto added = NuevoUsuario(m_c.s);
            if (!added)
                return;
            reload(*added);
            m_c.ayuda->Logro(m_c.s(Agregado) + currentName());
        });
    }

    void changePassword()
    {
        if (grdUsr->FilaActual() < 0)
            return;
        m_c.guarded([this] {
            if (ModificarContrasena(m_c.s, currentId()))
                m_c.ayuda->Logro(m_c.s(ContrasenaCambiada) + currentName());
        });
    }

    void remove()
    {
        if (grdUsr->FilaActual() < 0)
            return;
        m_c.guarded([this] {
            const QString name = currentName();
            if (!EliminarUsuario(m_c.s, currentId()))
                return;
            reload(m_c.s.usuario.idu);
            m_c.ayuda->Logro(m_c.s(Eliminado) + name);
        });
    }

    ContextoDePagina m_c;
    ModeloDeGrilla *m_rows = nullptr;
    Grilla *grdUsr = nullptr;
    QPushButton *cmdUsrNuevo = nullptr;
    QPushButton *cmdUsrModificarContrasena = nullptr;
    QPushButton *cmdUsrEliminar = nullptr;
};

} // namespace

QWidget *PaginaDeUsuarios(const ContextoDePagina &c) { return new Usuarios(c); }
