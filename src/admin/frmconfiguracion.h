// The settings form: a list of pages with the chosen page beside it.
#pragma once

#include "admin/frmconfiguracion_pages.h"
#include "ui/form_base.h"

class QLabel;
class QListWidget;
class QScrollArea;
class QStackedWidget;

/// Pages are built, and their settings read, when they are first shown. The form is destroyed when
/// it is closed and starts afresh next time, because other terminals write the same row.
class frmConfiguracion : public ui::FormBase
{
    Q_OBJECT
public:
    /// @param forms used by pages that open other forms
    frmConfiguracion(Sesion &s, ui::FormRegistry &forms, QWidget *parent = nullptr);

    /// Opens the page named by "pagina" ("usuarios"), or the last page shown without it.
    void opened(const QVariantMap &parameters) override;
    /// Writes the box being edited before the form closes.
    void reject() override;
    /// Stores what is being typed, so that nothing is left to ask about.
    bool mayLeave() override;

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
