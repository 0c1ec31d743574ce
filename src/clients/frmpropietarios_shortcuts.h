// The row of ways from the client and patient shown to everything that is done for them.
#pragma once

#include "boarding/stay.h"
#include "ui/bound.h"

#include <QUrl>
#include <array>

class Formularios;
class LineaDeAyuda;
class QMenu;
class QPushButton;

/// Hands a link to the desktop; tests put their own. @return false when nothing opens it
using AbrirEnlace = std::function<bool(const QUrl &)>;

class BarraDeAccesos : public QWidget
{
    Q_OBJECT
public:
    BarraDeAccesos(Sesion &s, Formularios &formularios, Atar::Guardia guardia, AbrirEnlace abrir,
                   LineaDeAyuda *ayuda, QWidget *parent = nullptr);

    /// Says again which buttons can be used with the client and patient of the session.
    /// @param libre nothing is being entered
    void Actualizar(bool libre);
    /// The button of the kennels for the patient shown.
    void PonerHospedaje(Estancia estancia);
    /// The quick access menu of the client with this name: record, sell, prepaid, exit; by letter,
    /// digit or mouse.
    void AbrirMenu(const QPoint &lugar, const QString &cliente);
    /// Writes to these addresses, parted by commas.
    void Correo(const QString &direcciones);
    QPushButton *Ficha() const { return cmdficha; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Acceso;
    static const QList<Acceso> &accesses();
    void build();
    void buildMenu();
    void take(const Acceso &acceso);
    QString savedMail();
    void Telefono();

    Sesion &m_s;
    Formularios &m_formularios;
    Atar::Guardia m_guardia;
    AbrirEnlace m_abrir;
    LineaDeAyuda *m_ayuda;
    QMenu *m_menu = nullptr;
    QAction *m_titulo = nullptr;
    std::array<QAction *, 4> m_entradas{}; // menu1 to menu4

    QPushButton *cmdficha, *cmdvender, *cmdobra, *cmdHospedaje, *cmdTurnos, *cmddeuda, *cmdAvisos,
        *cmdMail, *cmdTel, *cmdImprimir;
};
