#include "ui/pictures.h"

#include "ui/theme.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

using namespace ui;
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

/// The colours for the five inks of the drawings.
struct Inks {
    QColor line, accent, soft, ground, alert;
};

Inks inksOf(Tone tone)
{
    const Palette p = paletteInUse();
    const QColor alert = p.dark ? QColor(0xf0, 0xb0, 0x60) : QColor(0xc2, 0x66, 0x0a);
    if (tone == Tone::OnFrame) {
        const QColor accent = blend(p.onFrame, p.frame, 0.65);
        return {p.onFrame, accent, blend(accent, p.frame, 0.45), p.frame, alert};
    }
    if (tone == Tone::Scene && p.dark)
        return {blend(p.frame, p.background, 0.25), blend(p.accent, p.background, 0.58),
                blend(p.accent, p.background, 0.30), blend(p.text, p.accent, 0.80), alert};
    return {blend(p.text, p.accent, 0.75), p.accent, blend(p.accent, p.surface, 0.24), p.surface,
            alert};
}

QByteArray inColours(QByteArray svg, Tone tone)
{
    const Inks inks = inksOf(tone);
    const std::initializer_list<std::pair<const char *, QColor>> names = {
        {"#111111", inks.line},   {"#00aaaa", inks.accent}, {"#aadddd", inks.soft},
        {"#fefefe", inks.ground}, {"#ee8800", inks.alert},
    };
    for (const auto &[ink, colour] : names)
        svg.replace(ink, colour.name().toLatin1());
    return svg;
}

QPixmap render(const QString &name, QSize pixels, Tone tone, QIcon::Mode mode)
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

/// Renders anew at each size and scale instead of stretching a bitmap.
class PictureVectorial : public QIconEngine
{
public:
    PictureVectorial(QString name, Tone tone) : m_name(std::move(name)), m_tone(tone) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const qreal scale = painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect, render(m_name, rect.size() * scale, m_tone, mode));
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State) override
    {
        return render(m_name, size, m_tone, mode);
    }
    QIconEngine *clone() const override { return new PictureVectorial(m_name, m_tone); }

private:
    QString m_name;
    Tone m_tone;
};

} // namespace

bool ui::imageExists(const QString &name) { return QFile::exists(fileOf(name)); }

QIcon ui::namedIcon(const QString &name, Tone tone)
{
    return imageExists(name) ? QIcon(new PictureVectorial(name, tone)) : QIcon();
}

QPixmap ui::Image(const QString &name, QSize size, qreal scale, Tone tone)
{
    if (!imageExists(name))
        return {};
    QPixmap picture = render(name, size * scale, tone, QIcon::Normal);
    picture.setDevicePixelRatio(scale);
    return picture;
}
