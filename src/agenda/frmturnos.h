// The form for booking an appointment or the user's own task.
#pragma once

#include "agenda/booking.h"
#include "ui/form_base.h"

namespace ui
{

class DayBox;
class Grid;
class ListWithCompleted;
class GridModel;

} // namespace ui

class QCheckBox;
class QLabel;
class QPushButton;

/// The booking dialog. ENTER moves from box to box and books in the last one.
class frmTurnos : public ui::FormBase
{
    Q_OBJECT
public:
    /// Builds the form; opened() fills it.
    explicit frmTurnos(Sesion &s, QWidget *parent = nullptr);

    /// @param parameters "ida": the patient, 0 for none, the selected one if missing; "dia" and
    ///        "hora": the day and hour to start with
    void opened(const QVariantMap &parameters) override;
    /// Closes the form; asks first when something entered would be lost.
    void reject() override;

    int ida = 0; // the patient to book for

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build();
    QLayout *buildBoxes();
    QLayout *buildList();
    void wire();
    void showPatient();
    void loadConcepts();
    void loadDay();
    void complete(const QString &text);
    void conceptChosen();
    void hourLeft();
    void help(const QString &text, bool failure = false);
    QString hint() const;
    bool remindsInVain() const;
    QStringList typed() const;
    void book();
    agenda::Appointment appointment() const;

    std::vector<agenda::AppointmentConcept> m_concepts;
    std::vector<agenda::DayTask> m_appointments;
    QStringList m_toBegin; // what the form contained when it was opened
    ui::GridModel *m_model = nullptr;

    QLabel *lblPaciente = nullptr;
    QLabel *lblCliente = nullptr;
    ui::ListWithCompleted *cmbSel = nullptr;
    ui::DayBox *dtpDia = nullptr;
    QLineEdit *txtHora = nullptr;
    QLineEdit *txtAla = nullptr;
    QLineEdit *txtDesc = nullptr;
    QCheckBox *chkRec = nullptr;
    QPushButton *cmdAgendar = nullptr;
    QPushButton *cmdVolver = nullptr;
    ui::Grid *GTurnos = nullptr;
    QLabel *Ayu = nullptr; // has several lines
};
