// Booking an appointment or a task of one's own.
#pragma once

#include "agenda/booking.h"
#include "ui/form_base.h"

class CajaDeDia;
class Grilla;
class ListaConCompletado;
class ModeloDeGrilla;
class QCheckBox;
class QLabel;
class QPushButton;

/// Opened with `ida` (the patient; the selected one without it, 0 for none), `dia` and `hora`.
/// ENTER walks from box to box, and books in the last one.
class frmTurnos : public FormBase
{
    Q_OBJECT
public:
    explicit frmTurnos(Sesion &s, QWidget *parent = nullptr);

    void opened(const QVariantMap &parametros) override;
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
    void complete(const QString &texto);
    void conceptChosen();
    void hourLeft();
    void help(const QString &texto, bool falla = false);
    QString hint() const;
    bool remindsInVain() const;
    QStringList typed() const;
    void book();
    Turno turno() const;

    std::vector<ConceptoDeTurno> m_conceptos;
    std::vector<TareaDelDia> m_turnos;
    QStringList m_alEmpezar; // what the form held when it was opened
    ModeloDeGrilla *m_modelo = nullptr;

    QLabel *lblPaciente = nullptr;
    QLabel *lblCliente = nullptr;
    ListaConCompletado *cmbSel = nullptr;
    CajaDeDia *dtpDia = nullptr;
    QLineEdit *txtHora = nullptr;
    QLineEdit *txtAla = nullptr;
    QLineEdit *txtDesc = nullptr;
    QCheckBox *chkRec = nullptr;
    QPushButton *cmdAgendar = nullptr;
    QPushButton *cmdVolver = nullptr;
    Grilla *GTurnos = nullptr;
    QLabel *Ayu = nullptr; // of several lines
};
