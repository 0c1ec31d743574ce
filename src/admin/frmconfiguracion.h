// The settings: a list of pages, and the page chosen beside it.
#pragma once

#include "admin/frmconfiguracion_pages.h"
#include "ui/form_base.h"

class QLabel;
class QListWidget;
class QScrollArea;
class QStackedWidget;

/// Pages are built when they are first looked at, and read the settings then. The form goes when it
/// is closed: the next opening starts afresh, because other terminals write the same row.
class frmConfiguracion : public ui::FormBase
{
    Q_OBJECT
public:
    frmConfiguracion(Sesion &s, ui::FormRegistry &forms, QWidget *parent = nullptr);

    /// With "pagina" it opens on the page of that name ("usuarios"), else on the one of last time.
    void opened(const QVariantMap &parameters) override;
    /// A box that is being typed in is written before the form closes.
    void reject() override;

    /// Names of the pages in the order of the list.
    static QStringList Pages();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void build();
    void wire();
    void drawIcons();
    void showPage(int page);
    void buildPage(int page);
    void step(int by);
    void enterPage();
    QScrollArea *area(int page) const;

    ui::FormRegistry &m_forms;
    QListWidget *lstPaginas = nullptr;
    QLabel *lblTitulo = nullptr;
    QStackedWidget *stkPaginas = nullptr;
    ui::HelpLine *Ayu = nullptr;
};
