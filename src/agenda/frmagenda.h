// The day's agenda as a list and by hours, and the tasks that the program created today.
#pragma once

#include "agenda/open_agenda.h"
#include "ui/form_base.h"

namespace ui
{

class DayBox;
class FormRegistry;
class Grid;
class HelpLine;
class GridModel;

} // namespace ui

class QLabel;
class QMenu;
class QPushButton;
class QSplitter;
class QStackedWidget;
class QTabBar;

namespace agenda
{

class HoursView;

} // namespace agenda

/// The form of the agenda.
class frmagenda : public ui::FormBase
{
    Q_OBJECT
public:
    /// @param forms opens the booking dialog and patients' records
    frmagenda(Sesion &s, ui::FormRegistry &forms, QWidget *parent = nullptr);

    /// @param parameters "dia": the day to show, today if missing; "modo": 1 the day, 2 the
    ///        program's own tasks
    void opened(const QVariantMap &parameters) override;

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
    void goTo(QDate dia, const QList<int> &selection);
    void reload(const QList<int> &selection = {});
    void show(const QList<int> &selection);
    void sizeRows();
    void showOwnTasks();
    void arrange();
    void rowChanged(int row);
    void taskChosen(int id);
    void tell(const agenda::DayTask *task);

    const agenda::DayTask *taskOfRow(int row) const;
    QList<int> selectedIds() const;

    bool agendaKey(const QKeyEvent &key);
    bool moveKey(const QKeyEvent &key);
    void move(const std::vector<agenda::Target> &targets);
    void takeBack();
    void tellMoved(const QList<int> &ids, const QString &more);
    QString movement(const agenda::DayTask &last, qsizetype count) const;
    void delay();
    void remove();
    void leaveList(int row);
    void toggleDone();
    void newTask(QDate dia = {}, QTime hour = {});
    void openPatient(int id);
    void exportDay();
    void exportTask();
    void saveCalendar(int title, const std::vector<agenda::DayTask> &tasks, const QString &name);

    ui::FormRegistry &m_forms;
    agenda::OpenAgenda m_open;
    bool m_busy = false; // list and hours view are being synchronised

    QTabBar *tabAgenda = nullptr;
    QStackedWidget *m_views = nullptr;
    ui::DayBox *dtpAgenda = nullptr, *dtpPasarTarea = nullptr;
    QLabel *lblDia = nullptr;
    ui::GridModel *m_model = nullptr, *m_modelKelvara = nullptr;
    ui::Grid *GAgenda = nullptr, *GKelvara = nullptr;
    agenda::HoursView *hoursOf = nullptr;
    QSplitter *m_halves = nullptr;
    QMenu *m_menu = nullptr;
    QPushButton *cmdAnterior = nullptr, *cmdSiguiente = nullptr, *cmdHoy = nullptr;
    QPushButton *cmdDia = nullptr, *cmdSemana = nullptr;
    QPushButton *cmdNuevaTarea = nullptr, *cmdTareaRealizada = nullptr, *cmdEliminar = nullptr,
                *cmdImprimir = nullptr, *cmdCalendario = nullptr, *cmdPasarTarea = nullptr,
                *cmdvolver = nullptr;
    ui::HelpLine *Ayu = nullptr;
};
