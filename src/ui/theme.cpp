#include "ui/theme.h"

#include <QApplication>
#include <QFile>
#include <QFontDatabase>
#include <QPixmapCache>
#include <QRegularExpression>
#include <QStyle>
#include <cmath>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

constexpr QColor ownAccent(0x0f, 0x72, 0x82);
constexpr double Readable = 4.5; // contrast for body text
constexpr double Comfortable = 8.0;
constexpr double SmallestFont = 10.0;

QColor mix(const QColor &a, const QColor &b, double partOfA)
{
    const auto part = [partOfA](int x, int y) {
        return int(std::lround(x * partOfA + y * (1 - partOfA)));
    };
    return QColor(part(a.red(), b.red()), part(a.green(), b.green()), part(a.blue(), b.blue()));
}

double luminance(const QColor &c)
{
    const auto linear = [](double v) {
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(c.redF()) + 0.7152 * linear(c.greenF()) + 0.0722 * linear(c.blueF());
}

/// Moves a colour towards black or white until it contrasts with its background.
QColor standOff(QColor colour, const QColor &ground, const QColor &towards, double contrast)
{
    for (int step = 0; step < 40 && contrastOf(colour, ground) < contrast; ++step)
        colour = mix(towards, colour, 0.06);
    return colour;
}

QColor colourOfSetting(int principalColor)
{
    if (principalColor <= 1)
        return ownAccent;
    return QColor(principalColor & 0xff, principalColor >> 8 & 0xff, principalColor >> 16 & 0xff);
}

/// Colours that mean the same whatever colour the clinic chooses.
void setSignals(Palette &p)
{
    p.success = p.dark ? QColor(0x83, 0xd6, 0xa4) : QColor(0x1a, 0x6b, 0x3c);
    p.alert = p.dark ? QColor(0x6b, 0x2b, 0x2b) : QColor(255, 192, 192);
    p.notice = p.dark ? QColor(0x5c, 0x51, 0x12) : QColor(255, 255, 128);
}

QPalette qtPalette(const Palette &p)
{
    QPalette q;
    q.setColor(QPalette::Window, p.background);
    q.setColor(QPalette::WindowText, p.text);
    q.setColor(QPalette::Base, p.surface);
    q.setColor(QPalette::AlternateBase, p.alternateSurface);
    q.setColor(QPalette::Text, p.text);
    q.setColor(QPalette::PlaceholderText, p.softText);
    q.setColor(QPalette::Button, p.surface);
    q.setColor(QPalette::ButtonText, p.text);
    q.setColor(QPalette::ToolTipBase, p.surface);
    q.setColor(QPalette::ToolTipText, p.text);
    q.setColor(QPalette::Highlight, p.accent);
    q.setColor(QPalette::HighlightedText, p.onAccent);
    q.setColor(QPalette::Link, p.accent);
    q.setColor(QPalette::LinkVisited, p.accent);
    q.setColor(QPalette::Mid, p.border);
    q.setColor(QPalette::Light, p.surface);
    q.setColor(QPalette::Midlight, p.alternateSurface);
    q.setColor(QPalette::Dark, p.border);
    // Two roles that our style sheet does not use carry colours for which Qt has no role.
    q.setColor(QPalette::Shadow, p.frame);
    q.setColor(QPalette::BrightText, p.error);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        q.setColor(QPalette::Disabled, role, mix(p.text, p.background, 0.45));
    return q;
}

/// The style sheet with each `@name` replaced by a colour of the palette.
QString styleSheet(const Palette &p)
{
    QFile file(u":/theme/kelvara.qss"_s);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString sheet = QString::fromUtf8(file.readAll());
    const std::initializer_list<std::pair<QString, QColor>> names = {
        {u"fondo"_s, p.background},
        {u"superficie"_s, p.surface},
        {u"alterna"_s, p.alternateSurface},
        {u"borde"_s, p.border},
        {u"bordeFirme"_s, mix(p.softText, p.border, 0.45)},
        {u"texto"_s, p.text},
        {u"textoSuave"_s, p.softText},
        {u"acento"_s, p.accent},
        {u"acentoFirme"_s, mix(p.text, p.accent, 0.18)},
        {u"acentoSuave"_s, p.softAccent},
        {u"sobreAcento"_s, p.onAccent},
        {u"marco"_s, p.frame},
        {u"marcoClaro"_s, mix(p.onFrame, p.frame, 0.12)},
        {u"marcoFirme"_s, mix(p.onFrame, p.frame, 0.22)},
        {u"sobreMarco"_s, p.onFrame},
        {u"sobreMarcoSuave"_s, mix(p.onFrame, p.frame, 0.72)},
        {u"error"_s, p.error},
        {u"logro"_s, p.success},
    };
    for (const auto &[name, colour] : names)
        sheet.replace(QRegularExpression(u'@' + name + u"\\b"_s), colour.name());
    sheet.replace(u"@noche"_s, p.dark ? u"-noche"_s : QString());
    return sheet;
}

/// The desktop's font, unless it is merely the fallback of a desktop without a choice.
QFont letters(QFont font)
{
    const QStringList installed = QFontDatabase::families();
    const QString family = font.family();
    if (family.startsWith(u"Sans") || family.startsWith(u"DejaVu") || !installed.contains(family))
        font.setFamilies({u"Inter"_s, u"Noto Sans"_s, u"Cantarell"_s, u"DejaVu Sans"_s});
    font.setPointSizeF(std::max(font.pointSizeF(), SmallestFont));
    return font;
}

} // namespace

double ui::contrastOf(const QColor &a, const QColor &b)
{
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

Palette ui::computePalette(int principalColor, bool dark)
{
    const QColor base = colourOfSetting(principalColor);
    Palette p;
    p.dark = dark;
    if (dark) {
        p.background = mix(base, QColor(0x11, 0x17, 0x1a), 0.05);
        p.surface = mix(base, QColor(0x19, 0x21, 0x25), 0.05);
        p.alternateSurface = mix(base, QColor(0x1e, 0x28, 0x2d), 0.06);
        p.border = mix(base, QColor(0x35, 0x43, 0x4a), 0.12);
        p.text = QColor(0xe6, 0xee, 0xf0);
        p.softText = QColor(0xa2, 0xb3, 0xb9);
        p.accent = standOff(base, p.alternateSurface, Qt::white, Readable + 1);
        p.onAccent = standOff(p.background, p.accent, Qt::black, Readable);
        p.softAccent = mix(p.accent, p.surface, 0.16);
        p.frame = standOff(mix(base, p.background, 0.30), Qt::white, Qt::black, Comfortable);
        p.error = QColor(0xff, 0x9d, 0x8f);
    } else {
        p.background = mix(base, QColor(0xf5, 0xf8, 0xf9), 0.03);
        p.surface = Qt::white;
        p.alternateSurface = mix(base, Qt::white, 0.03);
        p.border = mix(base, QColor(0xda, 0xe3, 0xe6), 0.06);
        p.text = QColor(0x17, 0x26, 0x2b);
        p.softText = QColor(0x52, 0x66, 0x6d);
        p.accent = standOff(base, p.background, Qt::black, Readable + 0.4);
        p.onAccent = Qt::white;
        p.softAccent = mix(p.accent, p.surface, 0.11);
        p.frame = standOff(p.accent, Qt::white, Qt::black, Comfortable);
        p.error = QColor(0xb3, 0x26, 0x1e);
    }
    p.onFrame = Qt::white;
    setSignals(p);
    return p;
}

Palette ui::paletteInUse()
{
    const QPalette q = QGuiApplication::palette();
    Palette p;
    p.background = q.color(QPalette::Window);
    p.surface = q.color(QPalette::Base);
    p.alternateSurface = q.color(QPalette::AlternateBase);
    p.border = q.color(QPalette::Mid);
    p.text = q.color(QPalette::WindowText);
    p.softText = q.color(QPalette::PlaceholderText);
    p.accent = q.color(QPalette::Highlight);
    p.onAccent = q.color(QPalette::HighlightedText);
    p.frame = q.color(QPalette::Shadow);
    p.onFrame = Qt::white;
    p.error = q.color(QPalette::BrightText);
    p.dark = p.background.lightness() < 128;
    p.softAccent = mix(p.accent, p.surface, p.dark ? 0.16 : 0.11);
    setSignals(p);
    return p;
}

bool ui::darkTheme()
{
    const QString wish = qEnvironmentVariable("KELVARA_TEMA").toLower();
    if (wish == u"oscuro" || wish == u"claro")
        return wish == u"oscuro";
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
}

void ui::applyTheme(QApplication &app, int principalColor)
{
    const Palette p = computePalette(principalColor, darkTheme());
    QPixmapCache::clear();
    QApplication::setStyle(u"Fusion"_s);
    QApplication::setFont(letters(QApplication::font()));
    QApplication::setPalette(qtPalette(p));
    app.setStyleSheet(styleSheet(p));
}
