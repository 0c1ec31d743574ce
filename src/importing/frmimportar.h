// Importing the data of another program: choose the file, say what its columns hold, try, write.
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

/// The form of the import.
class frmImportar : public ui::FormBase
{
    Q_OBJECT
public:
    /// Builds the form; opened() or a dropped file fills it.
    explicit frmImportar(Sesion &s, QWidget *parent = nullptr);

    /// @param parameters "archivo": a file to load at once
    void opened(const QVariantMap &parameters) override;
    /// Closes the form; while an import is running, stops the import instead.
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

/// Registers frmImportar under its name.
void registerImportForms(Sesion &s, ui::FormRegistry &forms);

} // namespace importing
