// The quick find that CTRL+K opens over any form.
#pragma once

#include "clients/quick_search.h"
#include "ui/form_base.h"

class Formularios;
class Grilla;
class LineaDeAyuda;
class QLineEdit;

/// One box: what matches stands below with every key. UP and DOWN walk, ENTER goes to the registry.
class frmBusquedaRapida : public FormBase
{
    Q_OBJECT
public:
    frmBusquedaRapida(Sesion &s, Formularios &formularios);

    void opened(const QVariantMap &parametros) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build();
    void search();
    void take(int row);

    Formularios &m_forms;
    IndiceRapido m_indice;

    QLineEdit *txtBuscar = nullptr;
    Grilla *grd = nullptr;
    LineaDeAyuda *Ayu = nullptr;
};
