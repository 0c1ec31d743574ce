#include "ui/pictures.h"

#include "ui/theme.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace
{

QString fileOf(const QString &name) { return u":/pictures/"_s + name + u".svg"_s; }

QColor blend(const QColor &a, const QColor &b, double partOfA)
{
    return QColor::fromRgbF(float(a.redF() * partOfA + b.redF() * (1 - partOfA)),
                            float(a.greenF() * partOfA + b.greenF() * (1 - partOfA)),
                            float(a.blueF() * partOfA + b.blueF() * (1 - partOfA)));
}

/// What the five inks of the drawings stand for.
struct Tintas {
    QColor line, accent, soft, ground, alert;
};

Tintas inksOf(Tono tone)
{
    const Paleta p = PaletaEnUso();
    const QColor alert = p.oscura ? QColor(0xf0, 0xb0, 0x60) : QColor(0xc2, 0x66, 0x0a);
    if (tone == Tono::SobreMarco) {
        const QColor accent = blend(p.sobreMarco, p.marco, 0.65);
        return {p.sobreMarco, accent, blend(accent, p.marco, 0.45), p.marco, alert};
    }
    if (tone == Tono::Escena && p.oscura)
        return {blend(p.marco, p.fondo, 0.25), blend(p.acento, p.fondo, 0.58),
                blend(p.acento, p.fondo, 0.30), blend(p.texto, p.acento, 0.80), alert};
    return {blend(p.texto, p.acento, 0.75), p.acento, blend(p.acento, p.superficie, 0.24),
            p.superficie, alert};
}

QByteArray inColours(QByteArray svg, Tono tone)
{
    const Tintas inks = inksOf(tone);
    const std::initializer_list<std::pair<const char *, QColor>> names = {
        {"#111111", inks.line},   {"#00aaaa", inks.accent}, {"#aadddd", inks.soft},
        {"#fefefe", inks.ground}, {"#ee8800", inks.alert},
    };
    for (const auto &[ink, colour] : names)
        svg.replace(ink, colour.name().toLatin1());
    return svg;
}

QPixmap render(const QString &name, QSize pixels, Tono tone, QIcon::Mode mode)
{
    const QString key = u"k:%1:%2x%3:%4:%5:%6"_s.arg(name)
                            .arg(pixels.width())
                            .arg(pixels.height())
                            .arg(int(tone))
                            .arg(mode == QIcon::Disabled)
                            .arg(QGuiApplication::palette().cacheKey());
    QPixmap picture;
    if (QPixmapCache::find(key, &picture))
        return picture;
    picture = QPixmap(pixels);
    picture.fill(Qt::transparent);
    QFile file(fileOf(name));
    if (file.open(QIODevice::ReadOnly)) {
        QSvgRenderer svg(inColours(file.readAll(), tone));
        svg.setAspectRatioMode(Qt::KeepAspectRatio);
        QPainter painter(&picture);
        if (mode == QIcon::Disabled)
            painter.setOpacity(0.4);
        svg.render(&painter);
    }
    QPixmapCache::insert(key, picture);
    return picture;
}

/// Draws anew for each size and scale instead of stretching.
class DibujoVectorial : public QIconEngine
{
public:
    DibujoVectorial(QString name, Tono tone) : m_name(std::move(name)), m_tone(tone) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const qreal scale = painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect, render(m_name, rect.size() * scale, m_tone, mode));
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State) override
    {
        return render(m_name, size, m_tone, mode);
    }
    QIconEngine *clone() const override { return new DibujoVectorial(m_name, m_tone); }

private:
    QString m_name;
    Tono m_tone;
};

} // namespace

bool ExisteImagen(const QString &nombre) { return QFile::exists(fileOf(nombre)); }

QIcon Icono(const QString &nombre, Tono tono)
{
    return ExisteImagen(nombre) ? QIcon(new DibujoVectorial(nombre, tono)) : QIcon();
}

QPixmap Imagen(const QString &nombre, QSize tamano, qreal escala, Tono tono)
{
    if (!ExisteImagen(nombre))
        return {};
    QPixmap picture = render(nombre, tamano * escala, tono, QIcon::Normal);
    picture.setDevicePixelRatio(escala);
    return picture;
}
