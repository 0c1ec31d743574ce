// Importing a register of another program: choose the file, say what its columns hold, try, write.
#pragma once

#include "clients/import.h"
#include "ui/form_base.h"

class Grilla;
class LineaDeAyuda;
class ModeloDeGrilla;
class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QStackedWidget;
class QTableWidget;

class frmImportar : public FormBase
{
    Q_OBJECT
public:
    explicit frmImportar(Sesion &s, QWidget *parent = nullptr);

    /// @param parametros "archivo" to begin with a file
    void opened(const QVariantMap &parametros) override;
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
    void fillGrid();
    void enableAll();
    OpcionesDeImportacion chosen() const;

    QString m_file;
    VistaDeArchivo m_view;
    std::optional<InformeDeImportacion> m_report;
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
    ModeloDeGrilla *m_model = nullptr;
    Grilla *grdInforme = nullptr;
    QProgressBar *barAvance = nullptr;
    QPushButton *cmdImportar = nullptr;
    QPushButton *cmdVolver = nullptr;
    LineaDeAyuda *Ayu = nullptr;
};
