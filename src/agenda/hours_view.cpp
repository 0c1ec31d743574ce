#include "agenda/hours_view.h"

#include "agenda/frmagenda_look.h"
#include "agenda/tasks.h"
#include "ui/theme.h"

#include <QAccessible>
#include <QApplication>
#include <QHelpEvent>
#include <QScrollBar>
#include <QStyleHints>
#include <QTimer>
#include <QToolTip>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

enum Texto { Horas = 9927, Libre = 9931 };

} // namespace

VistaDeHoras::VistaDeHoras(Sesion &s, QWidget *parent)
    : QAbstractScrollArea(parent), m_s(s), m_minuto(MinutoDelDia(s.reloj.Hora()) / step * step)
{
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setAccessibleName(s(Horas));
    viewport()->setMouseTracking(true);
    verticalScrollBar()->setFocusPolicy(Qt::NoFocus);
    auto *clock = new QTimer(this); // the line of the present moment goes on
    connect(clock, &QTimer::timeout, viewport(), qOverload<>(&QWidget::update));
    clock->start(60'000);
}

QSize VistaDeHoras::minimumSizeHint() const { return {280, 240}; }
QSize VistaDeHoras::sizeHint() const { return {620, 480}; }

void VistaDeHoras::Mostrar(const QList<QDate> &dias, std::vector<TareaDelDia> tareas)
{
    stopDragging();
    const QDate before = DiaDelCursor();
    const int rows = m_filas;
    const Dibujadas drawn = drawnTasks();
    const bool sameDays = std::exchange(m_dias, dias) == dias;
    m_tareas = std::move(tareas);
    m_columna = std::max(0, int(m_dias.indexOf(before)));
    lay();
    if (!blockOf(m_elegida))
        m_elegida = 0;
    layScroll();
    say();
    if (sameDays && rows == m_filas)
        drawChanges(drawn);
    else
        viewport()->update();
}

VistaDeHoras::Dibujadas VistaDeHoras::drawnTasks() const
{
    Dibujadas drawn;
    for (const Bloque &b : m_bloques)
        drawn.insert(taskOf(b).id, {rectOf(b), taskOf(b)});
    return drawn;
}

/// On a full day a key moves one task: the others need not be drawn again, unless it was one that
/// held them apart. Many small pieces take longer than the whole.
void VistaDeHoras::drawChanges(const Dibujadas &antes)
{
    constexpr qsizetype mostPieces = 24;
    const Dibujadas now = drawnTasks();
    QList<QRect> changed;
    const auto note = [&](const Dibujadas &some, const Dibujadas &others) {
        for (auto task = some.cbegin(); task != some.cend(); ++task)
            if (const auto other = others.constFind(task.key());
                other == others.cend() || *other != *task)
                changed << task->first.adjusted(-1, -1, 1, 1);
    };
    note(antes, now);
    note(now, antes);
    if (changed.size() > mostPieces)
        return viewport()->update();
    for (const QRect &place : std::as_const(changed))
        viewport()->update(place);
}

void VistaDeHoras::lay()
{
    m_bloques.clear();
    m_filas = 0;
    for (int column = 0; column < m_dias.size(); ++column) {
        const size_t first = m_bloques.size();
        std::vector<Tramo> stretches;
        std::vector<size_t> above; // in m_bloques
        for (size_t i = 0; i < m_tareas.size(); ++i) {
            const TareaDelDia &t = m_tareas[i];
            if (t.dia != m_dias[column])
                continue;
            Bloque b{i, column, {}, {}, -1};
            if (t.hor.isValid()) {
                const int from = MinutoDelDia(t.hor);
                b.tramo = {from, std::min(from + std::max(t.minutos, quarter), dayEnd)};
            } else {
                above.push_back(m_bloques.size());
            }
            m_bloques.push_back(b);
        }
        // Where the rows do not suffice, side by side.
        const int rows = std::min(int(above.size()), mostAbove);
        for (int i = 0; i < int(above.size()); ++i) {
            m_bloques[above[size_t(i)]].fila = i % rows;
            m_bloques[above[size_t(i)]].carril = {i / rows, (int(above.size()) - 1) / rows + 1};
        }
        m_filas = std::max(m_filas, rows);
        std::stable_sort(
            m_bloques.begin() + std::ptrdiff_t(first), m_bloques.end(),
            [](const Bloque &a, const Bloque &b) { return a.tramo.desde < b.tramo.desde; });
        for (size_t i = first; i < m_bloques.size(); ++i)
            if (m_bloques[i].fila < 0)
                stretches.push_back(m_bloques[i].tramo);
        const std::vector<Carril> lanes = PonerLadoALado(stretches);
        size_t lane = 0;
        for (size_t i = first; i < m_bloques.size(); ++i)
            if (m_bloques[i].fila < 0)
                m_bloques[i].carril = lanes[lane++];
    }
}

void VistaDeHoras::layScroll()
{
    m_fuerte = font();
    m_fuerte.setWeight(QFont::DemiBold);
    m_alto = fontMetrics().lineSpacing() + 2;
    m_canto = fontMetrics().horizontalAdvance(u"00:00"_s) + 2 * Espacio::S;
    const int shown = std::max(1, viewport()->height() - top());
    verticalScrollBar()->setPageStep(shown);
    verticalScrollBar()->setSingleStep(lineHeight());
    verticalScrollBar()->setRange(0, std::max(0, dayEnd / quarter * lineHeight() - shown));
}

int VistaDeHoras::top() const
{
    const int above = m_filas > 0 ? m_filas * (lineHeight() + 2) + Espacio::XS : 0;
    // The name of a single day stands above the form already.
    return (m_dias.size() > 1 ? fontMetrics().height() + Espacio::L : 1) + above;
}

int VistaDeHoras::columnWidth() const
{
    return std::max(1, (viewport()->width() - gutter()) / std::max(1, int(m_dias.size())));
}

int VistaDeHoras::yOf(int minutos) const
{
    return top() + minutos * lineHeight() / quarter - verticalScrollBar()->value();
}

int VistaDeHoras::minuteAt(int y) const
{
    const int m = (y - top() + verticalScrollBar()->value()) * quarter / lineHeight();
    return std::clamp(m, 0, dayEnd - 1);
}

int VistaDeHoras::columnAt(int x) const
{
    return std::clamp((x - gutter()) / columnWidth(), 0, std::max(0, int(m_dias.size()) - 1));
}

QRect VistaDeHoras::rectOf(const Bloque &b) const
{
    const int left = gutter() + b.columna * columnWidth() + 2;
    const int width = columnWidth() - Espacio::XS - 2;
    const int lane = width / b.carril.total;
    if (b.fila >= 0) {
        const int line = lineHeight() + 2;
        return {left + b.carril.indice * lane, top() - m_filas * line - 2 + b.fila * line,
                std::max(6, lane - 2), line - 2};
    }
    const int from = yOf(b.tramo.desde), to = yOf(b.tramo.hasta);
    return {left + b.carril.indice * lane, from + 1, std::max(6, lane - 2),
            std::max(lineHeight(), to - from) - 2};
}

const VistaDeHoras::Bloque *VistaDeHoras::blockAt(QPoint p) const
{
    for (auto b = m_bloques.rbegin(); b != m_bloques.rend(); ++b)
        if ((b->fila >= 0 || p.y() >= top()) && rectOf(*b).contains(p))
            return &*b;
    return nullptr;
}

const VistaDeHoras::Bloque *VistaDeHoras::blockOf(int id) const
{
    const auto b = std::ranges::find_if(
        m_bloques, [&](const Bloque &x) { return id != 0 && taskOf(x).id == id; });
    return b == m_bloques.end() ? nullptr : &*b;
}

int VistaDeHoras::Elegida() const { return m_elegida; }

QDate VistaDeHoras::DiaDelCursor() const { return m_dias.value(m_columna); }

QTime VistaDeHoras::HoraDelCursor() const { return {m_minuto / 60, m_minuto % 60}; }

QRect VistaDeHoras::LugarDe(int id) const
{
    const Bloque *b = blockOf(id);
    return b ? rectOf(*b) : QRect();
}

QPoint VistaDeHoras::PuntoDe(QDate dia, QTime hora) const
{
    const int column = std::max(0, int(m_dias.indexOf(dia)));
    return {gutter() + column * columnWidth() + columnWidth() / 2, yOf(MinutoDelDia(hora)) + 1};
}

void VistaDeHoras::Elegir(int id) { select(id, false); }

/// What shows where the cursor is: the selected task, else a free half hour.
QRect VistaDeHoras::cursorPlace() const
{
    if (const Bloque *b = blockOf(m_elegida))
        return rectOf(*b);
    return {gutter() + m_columna * columnWidth() + 2, yOf(m_minuto) + 2,
            columnWidth() - Espacio::XS, yOf(m_minuto + step) - yOf(m_minuto) - 3};
}

/// Puts the cursor somewhere and draws what has changed by that, not the whole day.
void VistaDeHoras::place(int columna, int minutos, int id)
{
    const auto draw = [this] { viewport()->update(cursorPlace().adjusted(-3, -3, 3, 3)); };
    draw();
    if (columna != m_columna)
        viewport()->update(0, 0, viewport()->width(), top());
    m_columna = columna;
    m_minuto = minutos;
    m_elegida = id;
    draw();
    say();
}

void VistaDeHoras::select(int id, bool tell)
{
    const Bloque *b = blockOf(id);
    const bool other = (b ? id : 0) != m_elegida;
    if (!b) {
        place(m_columna, m_minuto, 0);
    } else if (b->fila >= 0) {
        place(b->columna, m_minuto, id);
    } else {
        place(b->columna, b->tramo.desde / step * step, id);
        ensureVisible(b->tramo.desde, b->tramo.hasta);
    }
    if (tell && other)
        Q_EMIT tareaElegida(m_elegida);
}

void VistaDeHoras::IrA(QDate dia)
{
    if (const int column = int(m_dias.indexOf(dia)); column >= 0 && column != m_columna)
        place(column, m_minuto, m_elegida);
}

void VistaDeHoras::ensureVisible(int desde, int hasta)
{
    QScrollBar *bar = verticalScrollBar();
    if (yOf(hasta) > viewport()->height())
        bar->setValue(bar->value() + yOf(hasta) - viewport()->height() + Espacio::S);
    if (yOf(desde) < top())
        bar->setValue(bar->value() - (top() - yOf(desde)) - Espacio::S);
}

/// What a screen reader tells of the place of the cursor.
void VistaDeHoras::say()
{
    if (m_dias.isEmpty())
        return;
    const Bloque *b = blockOf(m_elegida);
    const QString day = QLocale().toString(DiaDelCursor(), QLocale::LongFormat);
    const QString text = b ? AsuntoDeTarea(taskOf(*b)) + u", "_s + taskOf(*b).detalle.simplified()
                           : HoraDelCursor().toString(u"HH:mm") + u", "_s + m_s(Libre);
    setAccessibleDescription(day + u", "_s + text);
    if (hasFocus()) {
        QAccessibleEvent told(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&told);
    }
}

void VistaDeHoras::moveCursor(int columna, int minutos)
{
    if (columna < 0 || columna >= m_dias.size()) {
        const QDate day = DiaDelCursor().addDays(columna < 0 ? -1 : 1);
        select(0, true);
        Q_EMIT diaPedido(day);
        if (const int there = int(m_dias.indexOf(day)); there >= 0)
            moveCursor(there, minutos);
        return;
    }
    const bool otherDay = columna != m_columna;
    minutos = std::clamp(minutos, 0, dayEnd - step);
    // The task that begins within the half hour, else one that still lasts.
    const Bloque *found = nullptr;
    for (const Bloque &b : m_bloques)
        if (b.columna == columna && b.fila < 0 && b.tramo.desde < minutos + step
            && b.tramo.hasta > minutos && (!found || found->tramo.desde < minutos))
            found = &b;
    const int id = found ? taskOf(*found).id : 0;
    const bool otherTask = id != m_elegida;
    place(columna, minutos, id);
    ensureVisible(m_minuto, m_minuto + step);
    // The task first: the day alone would have the list choose one.
    if (otherTask)
        Q_EMIT tareaElegida(m_elegida);
    if (otherDay)
        Q_EMIT diaElegido(DiaDelCursor());
}

/// To the next task of the day, from the cursor when none is selected.
void VistaDeHoras::walkTasks(int paso)
{
    std::vector<const Bloque *> ofDay;
    for (const Bloque &b : m_bloques)
        if (b.columna == m_columna)
            ofDay.push_back(&b);
    const auto here =
        std::ranges::find_if(ofDay, [this](const Bloque *b) { return taskOf(*b).id == m_elegida; });
    std::ptrdiff_t i = here - ofDay.begin();
    if (here != ofDay.end())
        i += paso;
    else
        i = std::ranges::count_if(ofDay,
                                  [this](const Bloque *b) { return b->tramo.desde < m_minuto; })
            - (paso < 0);
    if (i >= 0 && i < std::ssize(ofDay))
        select(taskOf(*ofDay[size_t(i)]).id, true);
}

void VistaDeHoras::take()
{
    if (m_elegida != 0)
        Q_EMIT tareaTomada(m_elegida);
    else if (!m_dias.isEmpty())
        Q_EMIT horaLibreTomada(DiaDelCursor(), HoraDelCursor());
}

void VistaDeHoras::keyPressEvent(QKeyEvent *event)
{
    if (m_arrastre.enCurso && event->key() == Qt::Key_Escape)
        return stopDragging();
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool jump = modifiers == Qt::ControlModifier;
    if (modifiers != Qt::NoModifier && !jump)
        return event->ignore();
    switch (event->key()) {
    case Qt::Key_Up:
        return jump ? walkTasks(-1) : moveCursor(m_columna, m_minuto - step);
    case Qt::Key_Down:
        return jump ? walkTasks(1) : moveCursor(m_columna, m_minuto + step);
    case Qt::Key_Left:
        return moveCursor(m_columna - 1, m_minuto);
    case Qt::Key_Right:
        return moveCursor(m_columna + 1, m_minuto);
    case Qt::Key_Home:
        return moveCursor(m_columna, workBegins);
    case Qt::Key_End:
        return moveCursor(m_columna, workEnds);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return take();
    default:
        event->ignore();
    }
}

void VistaDeHoras::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    say();
    viewport()->update();
}

void VistaDeHoras::focusOutEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusOutEvent(event);
    stopDragging();
    viewport()->update();
}

void VistaDeHoras::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    layScroll();
}

void VistaDeHoras::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        layScroll();
}

void VistaDeHoras::showEvent(QShowEvent *event)
{
    QAbstractScrollArea::showEvent(event);
    if (!std::exchange(m_desplazado, true))
        verticalScrollBar()->setValue((workBegins - step) * lineHeight() / quarter);
}

bool VistaDeHoras::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const Bloque *b = blockAt(help->pos());
        if (b)
            QToolTip::showText(help->globalPos(),
                               u"<b>"_s + AsuntoDeTarea(taskOf(*b)).toHtmlEscaped() + u"</b><br>"_s
                                   + taskOf(*b).detalle.toHtmlEscaped().replace(u"\n"_s, u"<br>"_s),
                               viewport(), rectOf(*b));
        else
            QToolTip::hideText();
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void VistaDeHoras::mousePressEvent(QMouseEvent *event)
{
    const QPoint p = event->position().toPoint();
    if (event->button() != Qt::LeftButton || m_dias.isEmpty())
        return;
    if (const Bloque *b = blockAt(p)) {
        const QDate before = DiaDelCursor();
        // One without an hour hangs by its upper edge.
        Arrastre held;
        held.id = taskOf(*b).id;
        held.desde = p;
        held.asido = b->fila < 0 ? minuteAt(p.y()) - b->tramo.desde : 0;
        select(held.id, true);
        if (DiaDelCursor() != before)
            Q_EMIT diaElegido(DiaDelCursor());
        m_arrastre = held; // showing another day lets go of what was held
    } else if (p.y() >= top()) {
        const QDate before = DiaDelCursor();
        const bool other = m_elegida != 0;
        place(columnAt(p.x()), minuteAt(p.y()) / step * step, 0);
        if (other)
            Q_EMIT tareaElegida(0);
        if (DiaDelCursor() != before)
            Q_EMIT diaElegido(DiaDelCursor());
    } else {
        moveCursor(columnAt(p.x()), m_minuto);
    }
}

void VistaDeHoras::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QPoint p = event->position().toPoint();
    if (event->button() == Qt::LeftButton && (p.y() >= top() || blockAt(p)))
        take();
}

void VistaDeHoras::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint p = event->position().toPoint();
    if (m_arrastre.id != 0 && event->buttons() & Qt::LeftButton) {
        if (m_arrastre.enCurso
            || (p - m_arrastre.desde).manhattanLength()
                   >= QGuiApplication::styleHints()->startDragDistance())
            drag(p);
        return;
    }
    viewport()->setCursor(blockAt(p) ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

void VistaDeHoras::drag(QPoint p)
{
    const Bloque *b = blockOf(m_arrastre.id);
    if (!b)
        return stopDragging();
    m_arrastre.enCurso = true;
    viewport()->setCursor(Qt::ClosedHandCursor);
    const int column = columnAt(p.x()), minute = minuteAt(p.y()) - m_arrastre.asido;
    const bool above = b->fila >= 0 && p.y() < top();
    QScrollBar *bar = verticalScrollBar();
    if (p.y() > viewport()->height() - lineHeight())
        bar->setValue(bar->value() + lineHeight());
    else if (p.y() < top() + lineHeight() && p.y() >= 0 && !above)
        bar->setValue(bar->value() - lineHeight());
    m_arrastre.dia = m_dias[column];
    m_arrastre.hora = above ? QTime() : AlCuarto(minute);
    m_arrastre.enSuLugar = column == b->columna
                           && (b->fila < 0 ? qAbs(minute - b->tramo.desde) <= quarter / 2 : above);
    viewport()->update();
}

void VistaDeHoras::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    if (m_arrastre.enCurso)
        drag(event->position().toPoint());
    const Arrastre done = m_arrastre;
    stopDragging();
    if (done.enCurso && !done.enSuLugar)
        Q_EMIT tareaMovida(done.id, done.dia, done.hora);
}

void VistaDeHoras::stopDragging()
{
    if (std::exchange(m_arrastre, {}).id == 0)
        return;
    viewport()->setCursor(Qt::ArrowCursor);
    viewport()->update();
}
