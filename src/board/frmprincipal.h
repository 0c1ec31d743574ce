// The home screen: the day's board and the ways to everything else.
#pragma once

#include "board/navigation.h"
#include "ui/form_base.h"

class Formularios;
class ModeloDePizarra;
class QLabel;
class QModelIndex;
class QPushButton;
class QTableView;
class QTimer;

/// What the board asks of the desktop. Tests put their own.
struct Escritorio {
    std::function<bool(const QUrl &)> abrir;
    std::function<void()> pitar;
    std::function<void()> terminar;

    /// The real one: pages in the browser, folders in the file manager.
    static Escritorio Real();
};

class frmprincipal : public FormBase
{
    Q_OBJECT
public:
    frmprincipal(Sesion &s, Formularios &formularios, Escritorio escritorio = Escritorio::Real(),
                 QWidget *parent = nullptr);

    /// Reads title, clinic and lines again. Called once the user is known, and by who changes the
    /// report.
    void CargarPizarra();
    /// Shows the board, on the whole of a small screen.
    void Mostrar();

    void opened(const QVariantMap &parametros) override;
    void reject() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void build();
    void wire();
    QWidget *buildRail();
    QWidget *buildHead();
    QPushButton *buildButton(const BotonDeTablero &button);
    void layRows();

    void navigate(const BotonDeTablero &button);
    void follow(const Destino &target);
    void pointAt(const QModelIndex &cell);
    bool boardKey(const QKeyEvent &key);
    void tick();
    void interrupt(const QString &text);

    Formularios &m_formularios;
    Escritorio m_escritorio;
    ModeloDePizarra *m_model = nullptr;

    QTableView *GPizarra = nullptr;
    QTimer *TimerHora = nullptr;
    QLabel *lblClinica = nullptr;
    QLabel *lblDatos = nullptr;
    QLabel *lblUsuario = nullptr;
};
