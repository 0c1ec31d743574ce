// Tables of all forms: rows in memory, sorted by what their columns mean.
#pragma once

#include "store/session.h"

#include <QAbstractTableModel>
#include <QTableView>
#include <vector>

/// What a column holds: how its cells are shown, aligned and sorted.
enum class Clase {
    Texto,
    Entero,
    Codigo,  // a whole number shown with five digits, 00042
    Numero,  // with the decimals that it has
    Importe, // with two decimals
    Dia,
    Hora,
    SiNo,
};

struct ColumnaDeGrilla {
    QString titulo = {};
    Clase clase = Clase::Texto;
    int ancho = 120; // pixels at 100 %; the last visible column takes what is left
    bool oculta = false;
};

/// Why a row stands out. Each has a colour of the theme and a sign beside it, so that nobody needs
/// to see colours.
enum class Realce { Ninguno, Alerta, Aviso, Apagado, Hecho };

/// One row. `celdas` has a value for each column, hidden ones too.
struct FilaDeGrilla {
    QList<Valor> celdas = {};
    Realce realce = Realce::Ninguno;
    int celdaRealzada = -1; // column that takes colour and sign; -1 is all of them
    QString motivo = {};    // what the colour means, as tool tip and for screen readers
};

/// The rows of a grid. A click on a title sorts by the type of the column, texts as the store
/// orders them (an accented letter beside its plain one), empty cells first; a second click turns
/// it round. Row numbers are those on screen.
class ModeloDeGrilla : public QAbstractTableModel
{
    Q_OBJECT
public:
    /// Role of a cell's sign: its Realce, where one is to be drawn.
    static constexpr int RolDeSigno = Qt::UserRole + 1;

    ModeloDeGrilla(const Sesion &s, QList<ColumnaDeGrilla> columnas, QObject *parent = nullptr);

    /// Takes the place of all rows, sorted if a sort is on.
    void Poner(std::vector<FilaDeGrilla> filas);
    /// Puts one row where the sort says, or before the first row whose text of @p columna is
    /// greater when no sort is on. @return where it stands now
    int Insertar(FilaDeGrilla fila, int columna);
    /// Changes a row where it stands.
    void Cambiar(int fila, FilaDeGrilla datos);
    void Quitar(int fila);

    const FilaDeGrilla &Fila(int fila) const;
    int Filas() const;
    const QList<ColumnaDeGrilla> &Columnas() const;
    /// The cell as it is shown.
    QString TextoDeCelda(int fila, int columna) const;

    /// Linear search from row @p desde to row @p hasta: a text matches when the cell begins with
    /// it, letter case aside, a number when the cell equals it. @return the row, or -1
    int BuscarEnGrilla(const Valor &valor, int columna, int desde, int hasta) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int columna, Qt::SortOrder orden) override;

private:
    struct Interno;
    std::shared_ptr<Interno> d;
};

/// The view of a ModeloDeGrilla. Sorts on click, copies the selected rows as text (CTRL+C), exports
/// everything shown as CSV or XLSX (context menu, where the actions of the widget come first),
/// selects whole rows. ENTER and double click take the current row.
class Grilla : public QTableView
{
    Q_OBJECT
public:
    Grilla(Sesion &s, ModeloDeGrilla *modelo, QWidget *parent = nullptr);

    ModeloDeGrilla *Modelo() const;
    /// What to do next, shown in the middle while there is no row.
    void PonerVacio(const QString &texto);
    /// Lets several rows be selected, from the first to the last click as well.
    void PermitirVarias();
    /// The current row, -1 without one.
    int FilaActual() const;
    /// Makes a row the current and only selected one and scrolls to it.
    void Seleccionar(int fila);
    /// Selected rows from first to last on screen.
    QList<int> FilasSeleccionadas() const;
    /// Selected rows with their titles, cells parted by tabs.
    QString ComoTexto() const;
    /// Walks the rows by a key pressed in the box that filters them. @return whether it was one
    /// that walks
    bool Recorrer(QKeyEvent *tecla);

Q_SIGNALS:
    /// The current row changed; -1 when there is none.
    void filaCambiada(int fila);
    /// Taken by ENTER or a double click.
    void filaElegida(int fila);
    /// Everything shown was written to a file.
    void exportada(const QString &archivo);

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void tellRow();
    QList<int> shownColumns() const;
    void exportAs(const QString &suffix);
    void openMenu(QPoint place);
    QPoint menuPlace() const;

    static constexpr int notTold = -2;
    Sesion &m_s;
    QString m_vacio;
    int m_dicha = -1; // row told last
    bool m_quitando = false;
};
