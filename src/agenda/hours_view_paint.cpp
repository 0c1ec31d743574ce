#include "agenda/hours_view.h"

#include "agenda/tasks.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QPaintEvent>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace
{

constexpr int iconSide = 16;
constexpr int narrowWidth = 110; // an hour takes too much of it
constexpr int tightWidth = 56;   // no room for more than a name
constexpr qsizetype fewestLetters = 3;
constexpr int iconWidth = 90;

} // namespace

QString LoQueCabe(const QFontMetrics &letra, const QString &texto, int ancho)
{
    const QString cortado = letra.elidedText(texto, Qt::ElideRight, ancho);
    return cortado == texto || cortado.size() > fewestLetters ? cortado : QString();
}

void VistaDeHoras::paintEvent(QPaintEvent *event)
{
    QPainter p(viewport());
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(event->rect(), PaletaEnUso().superficie);
    if (m_dias.isEmpty())
        return;
    const QRect below(0, top(), viewport()->width(), viewport()->height() - top());
    p.setClipRect(below);
    drawHours(p, event->region());
    drawBlocks(p, event->region() & below, false);
    drawNow(p);
    p.setClipping(false);
    if (event->rect().top() < top()) {
        drawHead(p);
        drawBlocks(p, event->region(), true);
    }
    if (m_arrastre.enCurso) {
        if (m_arrastre.hora.isValid())
            p.setClipRect(below);
        drawDragged(p);
    }
}

/// Above the hours or below; the selected one last, over its neighbours.
void VistaDeHoras::drawBlocks(QPainter &p, const QRegion &dirty, bool above) const
{
    const auto draw = [&](const Bloque &b, bool chosen) {
        const QRect place = rectOf(b);
        if ((b.fila >= 0) == above && dirty.intersects(place))
            drawBlock(p, place, taskOf(b), chosen);
    };
    for (const Bloque &b : m_bloques)
        if (taskOf(b).id != m_elegida)
            draw(b, false);
    if (const Bloque *b = blockOf(m_elegida)) {
        p.setOpacity(m_arrastre.enCurso ? 0.4 : 1);
        draw(*b, !m_arrastre.enCurso);
        p.setOpacity(1);
    }
}

/// The task in the hand, where it would be dropped.
void VistaDeHoras::drawDragged(QPainter &p) const
{
    const Bloque *b = blockOf(m_arrastre.id);
    if (!b)
        return;
    Bloque there = *b;
    there.columna = std::max(0, int(m_dias.indexOf(m_arrastre.dia)));
    there.carril = {};
    if (m_arrastre.hora.isValid()) {
        const int from = MinutoDelDia(m_arrastre.hora);
        const int length = b->fila < 0 ? b->tramo.hasta - b->tramo.desde : step;
        there.fila = -1;
        there.tramo = {from, std::min(from + length, dayEnd)};
    }
    TareaDelDia t = taskOf(*b);
    t.hor = m_arrastre.hora;
    p.setOpacity(0.92);
    drawBlock(p, rectOf(there), t, true);
    p.setOpacity(1);
}

void VistaDeHoras::drawHours(QPainter &p, const QRegion &dirty) const
{
    const Paleta colours = PaletaEnUso();
    const int width = viewport()->width();
    for (const auto &[from, to] : {std::pair(0, workBegins), std::pair(workEnds, dayEnd)})
        p.fillRect(QRect(gutter(), yOf(from), width, yOf(to) - yOf(from)),
                   colours.superficieAlterna);
    QColor faint = colours.borde;
    faint.setAlphaF(0.5F);
    for (int m = 0; m < dayEnd; m += step) {
        if (!dirty.intersects(QRect(0, yOf(m) - 1, width, lineHeight() + 2)))
            continue;
        p.setPen(QPen(m % 60 == 0 ? colours.borde : faint, 1));
        p.drawLine(gutter(), yOf(m), width, yOf(m));
        if (m % 60 == 0) {
            p.setPen(colours.textoSuave);
            p.drawText(QRect(0, yOf(m) + 1, gutter() - Espacio::S, lineHeight()),
                       int(Qt::AlignRight) | Qt::AlignVCenter, QTime(m / 60, 0).toString(u"HH:mm"));
        }
    }
    p.setPen(colours.borde);
    for (int c = 0; c < m_dias.size(); ++c)
        p.drawLine(gutter() + c * columnWidth(), 0, gutter() + c * columnWidth(),
                   viewport()->height());
    if (m_elegida == 0 && !m_arrastre.enCurso) {
        p.setPen(hasFocus() ? QPen(colours.acento, 2) : QPen(colours.borde, 1));
        p.setBrush(hasFocus() ? colours.acentoSuave : Qt::transparent);
        p.drawRoundedRect(cursorPlace(), 4, 4);
        p.setBrush(Qt::NoBrush);
    }
}

void VistaDeHoras::drawHead(QPainter &p) const
{
    const Paleta colours = PaletaEnUso();
    const int line = fontMetrics().height() + Espacio::M;
    p.fillRect(QRect(0, 0, viewport()->width(), top()), colours.superficie);
    p.setPen(colours.borde);
    p.drawLine(0, top() - 1, viewport()->width(), top() - 1);
    const QLocale local;
    for (int c = 0; c < m_dias.size() && m_dias.size() > 1; ++c) {
        const QRect place(gutter() + c * columnWidth(), 0, columnWidth(), line);
        const bool today = m_dias[c] == m_s.reloj.hoy;
        p.setFont(c == m_columna ? m_fuerte : font());
        if (c == m_columna)
            p.fillRect(QRect(place.left() + 1, line - 3, place.width() - 2, 3), colours.acento);
        p.setPen(today ? colours.acento : colours.texto);
        const QString name = local.dayName(m_dias[c].dayOfWeek(), QLocale::ShortFormat) + u' '
                             + QString::number(m_dias[c].day());
        p.drawText(place, Qt::AlignCenter,
                   p.fontMetrics().elidedText(name, Qt::ElideRight, place.width() - 4));
    }
    p.setFont(font());
}

void VistaDeHoras::drawBlock(QPainter &p, const QRect &place, const TareaDelDia &t,
                             bool chosen) const
{
    const Paleta colours = PaletaEnUso();
    const bool own = t.tip < 0; // no appointment of a client
    const QColor ground = chosen ? colours.acento : own ? colours.fondo : colours.acentoSuave;
    const QColor ink = chosen ? colours.sobreAcento : t.est ? colours.textoSuave : colours.texto;
    p.save();
    p.setPen(QPen(chosen && hasFocus() ? colours.texto : own ? colours.borde : ground, 1));
    p.setBrush(ground);
    p.drawRoundedRect(QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    p.setClipRect(place, Qt::IntersectClip);
    p.fillRect(QRect(place.left(), place.top() + 2, 3, place.height() - 4),
               t.est ? colours.borde : colours.acento);

    // Narrow ones tell the name; their hour is where they stand.
    const bool narrow = place.width() < narrowWidth, tight = place.width() < tightWidth;
    QRect text = place.adjusted(tight ? Espacio::XS + 1 : Espacio::S, 1, -2, -1);
    if (text.width() < fontMetrics().averageCharWidth())
        return p.restore();
    const int line = fontMetrics().lineSpacing();
    const QString icon = t.est ? u"tarearealizada"_s : t.icono;
    if (!icon.isEmpty() && place.width() > iconWidth) {
        const QRect picture(text.right() - iconSide + 1, text.top() + (line - iconSide) / 2,
                            iconSide, iconSide);
        Icono(icon, chosen && !colours.oscura ? Tono::SobreMarco : Tono::Normal).paint(&p, picture);
        text.setRight(picture.left() - Espacio::XS);
    }
    const auto draw = [&](int row, const QString &words, bool strong) {
        const int y = place.top() + row * line + (place.height() < 2 * line ? 0 : 1);
        if (row > 0 && (tight || y + line > place.bottom() + 2))
            return;
        p.setFont(strong ? m_fuerte : font());
        p.drawText(QRect(text.left(), y, text.width(), std::min(line, place.height())),
                   int(Qt::AlignLeft) | Qt::AlignVCenter,
                   LoQueCabe(p.fontMetrics(), words, text.width()));
    };
    p.setPen(ink);
    const QString hour = t.hor.isValid() ? t.hor.toString(u"HH:mm") + u' ' : QString();
    const bool user = t.tip == TipoTarea::TareaDeUsuario;
    const QString who = user ? t.des.simplified() : t.paciente;
    draw(0, (narrow ? QString() : hour) + (who.isEmpty() ? t.concepto : who), !t.est);
    draw(1, who.isEmpty() ? t.des.simplified() : t.concepto, false);
    if (!user)
        draw(2, t.des.simplified(), false);
    p.restore();
}

void VistaDeHoras::drawNow(QPainter &p) const
{
    const int column = int(m_dias.indexOf(m_s.reloj.hoy));
    if (column < 0)
        return;
    const int y = yOf(MinutoDelDia(m_s.reloj.Hora()));
    const int x = gutter() + column * columnWidth();
    p.setPen(QPen(PaletaEnUso().error, 1.5));
    p.drawLine(x, y, x + columnWidth(), y);
    p.setBrush(PaletaEnUso().error);
    p.drawEllipse(QPoint(x, y), 3, 3);
    p.setBrush(Qt::NoBrush);
}
