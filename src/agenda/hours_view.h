// A day or a week by its hours, tasks standing where they are.
#pragma once

#include "agenda/day_list.h"
#include "agenda/hours_layout.h"

#include <QAbstractScrollArea>

/// As much of a text as a width holds, with dots where it is cut; nothing when fewer than three
/// letters would be left.
QString LoQueCabe(const QFontMetrics &letra, const QString &texto, int ancho);

/// Tasks that overlap stand side by side; those without an hour stand above the hours. A task is
/// dragged to another hour or day with the mouse, quarter by quarter; one without an hour that is
/// dropped above the hours stays without. ESC gives the drag up.
///
/// By keys: arrows move over the half hours and days, CTRL with UP and DOWN over the tasks, HOME
/// and END to where the working day begins and ends. The view writes nothing: it tells.
class VistaDeHoras : public QAbstractScrollArea
{
    Q_OBJECT
public:
    VistaDeHoras(Sesion &s, QWidget *parent = nullptr);

    /// Takes the place of what was shown. The cursor keeps its day if that is still there.
    void Mostrar(const QList<QDate> &dias, std::vector<TareaDelDia> tareas);
    /// Makes a task the selected one and scrolls to it; 0 for none.
    void Elegir(int id);
    int Elegida() const;
    /// Puts the cursor on a day that is shown.
    void IrA(QDate dia);
    QDate DiaDelCursor() const;
    QTime HoraDelCursor() const;
    /// Where a task stands, in the viewport; empty when it is not shown.
    QRect LugarDe(int id) const;
    /// Where an hour begins.
    QPoint PuntoDe(QDate dia, QTime hora) const;

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user came to another task; 0 for a free hour.
    void tareaElegida(int id);
    void diaElegido(QDate dia);
    /// Beyond the first or the last day shown.
    void diaPedido(QDate dia);
    /// ENTER or a double click.
    void tareaTomada(int id);
    void horaLibreTomada(QDate dia, QTime hora);
    /// Dropped elsewhere; at no hour above them.
    void tareaMovida(int id, QDate dia, QTime hora);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    static constexpr int quarter = 15;
    static constexpr int step = 30; // of the cursor
    static constexpr int dayEnd = 24 * 60;
    static constexpr int workBegins = 8 * 60, workEnds = 20 * 60;
    static constexpr int mostAbove = 3; // rows above the hours

    /// A task and where it stands.
    struct Bloque {
        size_t tarea = 0;
        int columna = 0;
        Tramo tramo;
        Carril carril;
        int fila = -1; // above the hours; -1 for one that has its hour
    };
    struct Arrastre {
        int id = 0;
        QPoint desde;
        int asido = 0; // minutes below its beginning where the hand holds it
        bool enCurso = false;
        bool enSuLugar = true; // nothing moves, not even to the next quarter
        QDate dia;
        QTime hora; // none above the hours
    };

    using Dibujadas = QHash<int, std::pair<QRect, TareaDelDia>>; // by id
    Dibujadas drawnTasks() const;
    void drawChanges(const Dibujadas &antes);
    void lay();
    void layScroll();
    int top() const; // of the hours
    int lineHeight() const { return m_alto; }
    int gutter() const { return m_canto; }
    int columnWidth() const;
    int yOf(int minutos) const;
    int minuteAt(int y) const;
    int columnAt(int x) const;
    QRect rectOf(const Bloque &b) const;
    const Bloque *blockAt(QPoint p) const;
    const Bloque *blockOf(int id) const;
    QRect cursorPlace() const;
    const TareaDelDia &taskOf(const Bloque &b) const { return m_tareas[b.tarea]; }

    // hours_view_paint.cpp
    void drawHours(QPainter &p, const QRegion &dirty) const;
    void drawBlocks(QPainter &p, const QRegion &dirty, bool above) const;
    void drawHead(QPainter &p) const;
    void drawDragged(QPainter &p) const;
    void drawBlock(QPainter &p, const QRect &place, const TareaDelDia &t, bool chosen) const;
    void drawNow(QPainter &p) const;

    void moveCursor(int columna, int minutos);
    void place(int columna, int minutos, int id);
    void select(int id, bool tell);
    void walkTasks(int paso);
    void ensureVisible(int desde, int hasta);
    void take();
    void drag(QPoint p);
    void stopDragging();
    void say();

    Sesion &m_s;
    QList<QDate> m_dias;
    std::vector<TareaDelDia> m_tareas;
    std::vector<Bloque> m_bloques; // by day and hour
    int m_filas = 0;               // above the hours
    int m_alto = 1, m_canto = 0;   // of a quarter of an hour, and where the hours are written
    int m_columna = 0, m_minuto;   // cursor
    int m_elegida = 0;
    Arrastre m_arrastre;
    QFont m_fuerte;
    bool m_desplazado = false; // scrolled to the working day once
};
