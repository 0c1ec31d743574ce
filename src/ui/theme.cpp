#include "ui/theme.h"

#include <QApplication>
#include <QFile>
#include <QFontDatabase>
#include <QPixmapCache>
#include <QRegularExpression>
#include <QStyle>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr QColor ownAccent(0x0f, 0x72, 0x82);
constexpr double readable = 4.5; // contrast of body text
constexpr double comfortable = 8.0;
constexpr double smallestFont = 10.0;

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

/// Moves a colour towards black or white until it stands off from what it lies on.
QColor standOff(QColor colour, const QColor &ground, const QColor &towards, double contrast)
{
    for (int step = 0; step < 40 && Contraste(colour, ground) < contrast; ++step)
        colour = mix(towards, colour, 0.06);
    return colour;
}

QColor colourOfSetting(int principalColor)
{
    if (principalColor <= 1)
        return ownAccent;
    return QColor(principalColor & 0xff, principalColor >> 8 & 0xff, principalColor >> 16 & 0xff);
}

/// What means the same whatever colour a clinic chooses.
void setSignals(Paleta &p)
{
    p.logro = p.oscura ? QColor(0x83, 0xd6, 0xa4) : QColor(0x1a, 0x6b, 0x3c);
    p.alerta = p.oscura ? QColor(0x6b, 0x2b, 0x2b) : QColor(255, 192, 192);
    p.aviso = p.oscura ? QColor(0x5c, 0x51, 0x12) : QColor(255, 255, 128);
}

QPalette qtPalette(const Paleta &p)
{
    QPalette q;
    q.setColor(QPalette::Window, p.fondo);
    q.setColor(QPalette::WindowText, p.texto);
    q.setColor(QPalette::Base, p.superficie);
    q.setColor(QPalette::AlternateBase, p.superficieAlterna);
    q.setColor(QPalette::Text, p.texto);
    q.setColor(QPalette::PlaceholderText, p.textoSuave);
    q.setColor(QPalette::Button, p.superficie);
    q.setColor(QPalette::ButtonText, p.texto);
    q.setColor(QPalette::ToolTipBase, p.superficie);
    q.setColor(QPalette::ToolTipText, p.texto);
    q.setColor(QPalette::Highlight, p.acento);
    q.setColor(QPalette::HighlightedText, p.sobreAcento);
    q.setColor(QPalette::Link, p.acento);
    q.setColor(QPalette::LinkVisited, p.acento);
    q.setColor(QPalette::Mid, p.borde);
    q.setColor(QPalette::Light, p.superficie);
    q.setColor(QPalette::Midlight, p.superficieAlterna);
    q.setColor(QPalette::Dark, p.borde);
    // Two roles that our style sheet leaves free carry what Qt has no name for.
    q.setColor(QPalette::Shadow, p.marco);
    q.setColor(QPalette::BrightText, p.error);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        q.setColor(QPalette::Disabled, role, mix(p.texto, p.fondo, 0.45));
    return q;
}

/// The style sheet with `@name` replaced by the palette's colours.
QString styleSheet(const Paleta &p)
{
    QFile file(u":/theme/kelvara.qss"_s);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString sheet = QString::fromUtf8(file.readAll());
    const std::initializer_list<std::pair<QString, QColor>> names = {
        {u"fondo"_s, p.fondo},
        {u"superficie"_s, p.superficie},
        {u"alterna"_s, p.superficieAlterna},
        {u"borde"_s, p.borde},
        {u"bordeFirme"_s, mix(p.textoSuave, p.borde, 0.45)},
        {u"texto"_s, p.texto},
        {u"textoSuave"_s, p.textoSuave},
        {u"acento"_s, p.acento},
        {u"acentoFirme"_s, mix(p.texto, p.acento, 0.18)},
        {u"acentoSuave"_s, p.acentoSuave},
        {u"sobreAcento"_s, p.sobreAcento},
        {u"marco"_s, p.marco},
        {u"marcoClaro"_s, mix(p.sobreMarco, p.marco, 0.12)},
        {u"marcoFirme"_s, mix(p.sobreMarco, p.marco, 0.22)},
        {u"sobreMarco"_s, p.sobreMarco},
        {u"sobreMarcoSuave"_s, mix(p.sobreMarco, p.marco, 0.72)},
        {u"error"_s, p.error},
        {u"logro"_s, p.logro},
    };
    for (const auto &[name, colour] : names)
        sheet.replace(QRegularExpression(u'@' + name + u"\\b"_s), colour.name());
    sheet.replace(u"@noche"_s, p.oscura ? u"-noche"_s : QString());
    return sheet;
}

/// The desktop's own font, unless it is only the fallback of a desktop that chose none.
QFont letters(QFont font)
{
    const QStringList installed = QFontDatabase::families();
    const QString family = font.family();
    if (family.startsWith(u"Sans") || family.startsWith(u"DejaVu") || !installed.contains(family))
        font.setFamilies({u"Inter"_s, u"Noto Sans"_s, u"Cantarell"_s, u"DejaVu Sans"_s});
    font.setPointSizeF(std::max(font.pointSizeF(), smallestFont));
    return font;
}

} // namespace

double Contraste(const QColor &a, const QColor &b)
{
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

Paleta CalcularPaleta(int principalColor, bool oscura)
{
    const QColor base = colourOfSetting(principalColor);
    Paleta p;
    p.oscura = oscura;
    if (oscura) {
        p.fondo = mix(base, QColor(0x11, 0x17, 0x1a), 0.05);
        p.superficie = mix(base, QColor(0x19, 0x21, 0x25), 0.05);
        p.superficieAlterna = mix(base, QColor(0x1e, 0x28, 0x2d), 0.06);
        p.borde = mix(base, QColor(0x35, 0x43, 0x4a), 0.12);
        p.texto = QColor(0xe6, 0xee, 0xf0);
        p.textoSuave = QColor(0xa2, 0xb3, 0xb9);
        p.acento = standOff(base, p.superficieAlterna, Qt::white, readable + 1);
        p.sobreAcento = standOff(p.fondo, p.acento, Qt::black, readable);
        p.acentoSuave = mix(p.acento, p.superficie, 0.16);
        p.marco = standOff(mix(base, p.fondo, 0.30), Qt::white, Qt::black, comfortable);
        p.error = QColor(0xff, 0x9d, 0x8f);
    } else {
        p.fondo = mix(base, QColor(0xf5, 0xf8, 0xf9), 0.03);
        p.superficie = Qt::white;
        p.superficieAlterna = mix(base, Qt::white, 0.03);
        p.borde = mix(base, QColor(0xda, 0xe3, 0xe6), 0.06);
        p.texto = QColor(0x17, 0x26, 0x2b);
        p.textoSuave = QColor(0x52, 0x66, 0x6d);
        p.acento = standOff(base, p.fondo, Qt::black, readable + 0.4);
        p.sobreAcento = Qt::white;
        p.acentoSuave = mix(p.acento, p.superficie, 0.11);
        p.marco = standOff(p.acento, Qt::white, Qt::black, comfortable);
        p.error = QColor(0xb3, 0x26, 0x1e);
    }
    p.sobreMarco = Qt::white;
    setSignals(p);
    return p;
}

Paleta PaletaEnUso()
{
    const QPalette q = QGuiApplication::palette();
    Paleta p;
    p.fondo = q.color(QPalette::Window);
    p.superficie = q.color(QPalette::Base);
    p.superficieAlterna = q.color(QPalette::AlternateBase);
    p.borde = q.color(QPalette::Mid);
    p.texto = q.color(QPalette::WindowText);
    p.textoSuave = q.color(QPalette::PlaceholderText);
    p.acento = q.color(QPalette::Highlight);
    p.sobreAcento = q.color(QPalette::HighlightedText);
    p.marco = q.color(QPalette::Shadow);
    p.sobreMarco = Qt::white;
    p.error = q.color(QPalette::BrightText);
    p.oscura = p.fondo.lightness() < 128;
    p.acentoSuave = mix(p.acento, p.superficie, p.oscura ? 0.16 : 0.11);
    setSignals(p);
    return p;
}

bool TemaOscuro()
{
    const QString wish = qEnvironmentVariable("KELVARA_TEMA").toLower();
    if (wish == u"oscuro" || wish == u"claro")
        return wish == u"oscuro";
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
}

void AplicarTema(QApplication &app, int principalColor)
{
    const Paleta p = CalcularPaleta(principalColor, TemaOscuro());
    QPixmapCache::clear();
    QApplication::setStyle(u"Fusion"_s);
    QApplication::setFont(letters(QApplication::font()));
    QApplication::setPalette(qtPalette(p));
    app.setStyleSheet(styleSheet(p));
}
