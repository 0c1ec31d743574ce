// The dialogs that find a patient or a client by any two criteria.
#pragma once

#include "clients/search.h"
#include "ui/form_base.h"

#include <QTimer>

namespace ui
{

class FormRegistry;
class Grid;
class HelpLine;

} // namespace ui

class QComboBox;
class QLineEdit;
class QPushButton;

/// frmBusquedaMascotas and frmBusquedaClientes, which differ only in what they search. Results
/// appear while the user types; ENTER runs the full search and goes to the grid, where ENTER opens
/// the row in the registry.
class frmBusqueda : public ui::FormBase
{
    Q_OBJECT
public:
    /// @param search what to search for; it also decides the form's name
    frmBusqueda(Sesion &s, ui::FormRegistry &forms, clients::Search search);

    /// Empties the boxes and the results.
    void opened(const QVariantMap &parameters) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void build();
    void listen();
    QComboBox *criteria(const QString &name, int label);
    QLineEdit *textBox(const QString &name);
    void hintFor(QComboBox *criterion, QLineEdit *box);
    clients::Conditions asked() const;
    void searchTyped();
    void searchAll();
    void showRows(clients::Finding found);
    void take(int row);

    ui::FormRegistry &m_forms;
    const clients::Search m_search;
    QTimer m_pause; // restarted by each key; the search runs when it expires

    QComboBox *cmbCriterioUno = nullptr;
    QComboBox *cmbCriterioDos = nullptr;
    QLineEdit *txtTextoUno = nullptr;
    QLineEdit *txtTextoDos = nullptr;
    ui::Grid *grd = nullptr;
    ui::HelpLine *Ayu = nullptr;
    QPushButton *cmdContinuar = nullptr;
};
