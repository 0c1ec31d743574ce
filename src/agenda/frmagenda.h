// The day's agenda, by list and by hours, and what the system decided on today.
#pragma once

#include "agenda/day_list.h"
#include "ui/form_base.h"

class CajaDeDia;
class Formularios;
class Grilla;
class LineaDeAyuda;
class ModeloDeGrilla;
class QLabel;
class QMenu;
class QPushButton;
class QSplitter;
class QStackedWidget;
class QTabBar;
class VistaDeHoras;

/// Opened with `dia` (today without it) and `modo`: 1 the day, 2 the tasks of the system.
class frmagenda : public FormBase
{
    Q_OBJECT
public:
    frmagenda(Sesion &s, Formularios &formularios, QWidget *parent = nullptr);

    void opened(const QVariantMap &parametros) override;

protected:
    void activated() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // frmagenda_layout.cpp
    void build();
    QWidget *buildDay();
    QLayout *buildNavigation();
    QWidget *buildList();
    QWidget *buildHours();
    QLayout *buildActions();
    QWidget *buildOwnTasks();
    void orderKeys();

    void wire();
    void wireShortcuts();

    void showDay(QDate dia);
    void goTo(QDate dia, const QList<int> &seleccion);
    void reload(const QList<int> &seleccion = {});
    void show(const QList<int> &seleccion);
    void sizeRows();
    int rowToBeginWith() const;
    void showOwnTasks();
    void arrange();
    void rowChanged(int fila);
    void taskChosen(int id);
    void tell(const TareaDelDia *tarea);

    const TareaDelDia *task(int id) const;
    const TareaDelDia *taskOfRow(int fila) const;
    int idOfRow(int fila) const;
    int rowOf(int id) const;
    int current() const;
    QList<int> selectedIds() const;

    bool agendaKey(const QKeyEvent &tecla);
    bool moveKey(const QKeyEvent &tecla);
    void move(const std::vector<Destino> &destinos);
    void takeBack();
    void tellMoved(const std::vector<Sitio> &antes, const QString &mas);
    QString movement(const TareaDelDia &ultima, qsizetype cuantas) const;
    void delay();
    void remove();
    void leaveList(int fila);
    void toggleDone();
    void newTask(QDate dia = {}, QTime hora = {});
    void openPatient(int id);
    void exportDay();
    void exportTask();
    void saveCalendar(int titulo, const std::vector<TareaDelDia> &tareas, const QString &nombre);

    Formularios &m_formularios;
    QDate m_dia;
    QList<QDate> m_dias;               // that are read: this one alone, or its week
    std::vector<TareaDelDia> m_tareas; // of all days shown
    Fichero m_fichero;
    std::vector<Sitio> m_antes; // where what was moved last came from
    qint64 m_version = 0;
    bool m_ocupado = false; // list and hours follow each other

    QTabBar *tabAgenda = nullptr;
    QStackedWidget *m_vistas = nullptr;
    CajaDeDia *dtpAgenda = nullptr, *dtpPasarTarea = nullptr;
    QLabel *lblDia = nullptr;
    ModeloDeGrilla *m_modelo = nullptr, *m_modeloKelvara = nullptr;
    Grilla *GAgenda = nullptr, *GKelvara = nullptr;
    VistaDeHoras *Horas = nullptr;
    QSplitter *m_mitades = nullptr;
    QMenu *m_menu = nullptr;
    QPushButton *cmdAnterior = nullptr, *cmdSiguiente = nullptr, *cmdHoy = nullptr;
    QPushButton *cmdDia = nullptr, *cmdSemana = nullptr;
    QPushButton *cmdNuevaTarea = nullptr, *cmdTareaRealizada = nullptr, *cmdEliminar = nullptr,
                *cmdImprimir = nullptr, *cmdCalendario = nullptr, *cmdPasarTarea = nullptr,
                *cmdvolver = nullptr;
    LineaDeAyuda *Ayu = nullptr;
};
