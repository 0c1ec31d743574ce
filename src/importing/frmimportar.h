// Importing a register of another program: choose the file, say what its columns hold, try, write.
#pragma once

#include "importing/import.h"
#include "ui/form_base.h"

namespace ui
{

class Grid;
class FormRegistry;
class GridModel;
class HelpLine;

} // namespace ui

class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QStackedWidget;
class QTableWidget;

class frmImportar : public ui::FormBase
{
    Q_OBJECT
public:
    explicit frmImportar(Sesion &s, QWidget *parent = nullptr);

    /// @param parameters "archivo" to begin with a file
    void opened(const QVariantMap &parameters) override;
    void reject() override;

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void build();
    QWidget *buildColumns();
    QWidget *buildReport();
    void clear();
    void choose();
    void load(const QString &file);
    void fillColumns();
    void mapColumn(int column);
    void changed();
    void run(bool write);
    void showReport();
    void tellMissing(const importing::ImportReport &report);
    void fillGrid();
    void enableAll();
    importing::ImportOptions chosen() const;

    QString m_file;
    importing::FileView m_view;
    std::optional<importing::ImportReport> m_report;
    bool m_working = false;
    bool m_stop = false;

    QPushButton *cmdElegir = nullptr;
    QLabel *lblArchivo = nullptr;
    QStackedWidget *pages = nullptr;
    QTableWidget *tblColumnas = nullptr;
    QList<QComboBox *> m_columns;
    QComboBox *cmbOrden = nullptr;
    QLineEdit *txtPropietario = nullptr;
    QPushButton *cmdProbar = nullptr;
    QLabel *lblResumen = nullptr;
    QComboBox *cmbMostrar = nullptr;
    ui::GridModel *m_model = nullptr;
    ui::Grid *grdInforme = nullptr;
    QProgressBar *barAvance = nullptr;
    QPushButton *cmdImportar = nullptr;
    QPushButton *cmdVolver = nullptr;
    ui::HelpLine *Ayu = nullptr;
};

namespace importing
{

/// Makes frmImportar known by its name.
void registerImportForms(Sesion &s, ui::FormRegistry &forms);

} // namespace importing
