// The dialogs that find a patient or a client by any two of their data.
#pragma once

#include "clients/search.h"
#include "ui/form_base.h"

#include <QTimer>

class Formularios;
class Grilla;
class LineaDeAyuda;
class QComboBox;
class QLineEdit;
class QPushButton;

/// Both dialogs: frmBusquedaMascotas and frmBusquedaClientes differ only in what they look for.
/// What is found appears as the user types; ENTER looks for all of it and goes to the grid, where
/// ENTER takes a row to the registry.
class frmBusqueda : public FormBase
{
    Q_OBJECT
public:
    frmBusqueda(Sesion &s, Formularios &formularios, Busqueda busqueda);

    void opened(const QVariantMap &parametros) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void build();
    void listen();
    QComboBox *criteria(const QString &name, int label);
    QLineEdit *textBox(const QString &name);
    void hintFor(QComboBox *criterion, QLineEdit *box);
    Condiciones asked() const;
    void searchTyped();
    void searchAll();
    void showRows(Hallazgo found);
    void take(int row);

    Formularios &m_forms;
    const Busqueda m_busqueda;
    QTimer m_pause; // runs out when no key has come for a moment

    QComboBox *cmbCriterioUno = nullptr;
    QComboBox *cmbCriterioDos = nullptr;
    QLineEdit *txtTextoUno = nullptr;
    QLineEdit *txtTextoDos = nullptr;
    Grilla *grd = nullptr;
    LineaDeAyuda *Ayu = nullptr;
    QPushButton *cmdContinuar = nullptr;
};
