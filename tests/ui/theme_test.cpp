#include "ui/pictures.h"
#include "ui/theme.h"

#include <QApplication>
#include <QImage>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// Text must stand off from what it lies on, whatever colour a clinic chooses: 4.5 to 1 is what
// people with weak sight can read.
TEST(Theme, EveryColourOfTheSettingGivesReadableText)
{
    for (const int setting : {0, 1, 0x000002, 0x0000ff, 0x00ff00, 0xff0000, 0xffffff, 0x00ffff,
                              0x808080, 0x404040, 0xc8a078}) {
        for (const bool dark : {false, true}) {
            SCOPED_TRACE(testing::Message() << std::hex << setting << (dark ? " dark" : " light"));
            const Paleta p = CalcularPaleta(setting, dark);
            for (const QColor &ground : {p.fondo, p.superficie, p.superficieAlterna}) {
                EXPECT_GE(Contraste(p.texto, ground), 7);
                EXPECT_GE(Contraste(p.textoSuave, ground), 4.5);
                EXPECT_GE(Contraste(p.acento, ground), 4.5);
                EXPECT_GE(Contraste(p.error, ground), 4.5);
                EXPECT_GE(Contraste(p.logro, ground), 4.5);
            }
            EXPECT_GE(Contraste(p.texto, p.acentoSuave), 7);
            EXPECT_GE(Contraste(p.texto, p.alerta), 7);
            EXPECT_GE(Contraste(p.texto, p.aviso), 6);
            EXPECT_GE(Contraste(p.sobreAcento, p.acento), 4.5);
            EXPECT_GE(Contraste(p.sobreMarco, p.marco), 7);
        }
    }
}

TEST(Theme, TheLowestByteOfTheSettingIsRed)
{
    const QColor red = CalcularPaleta(0x0000c0, false).acento;
    EXPECT_GT(red.red(), red.blue());
}

TEST(Theme, TheStyleSheetKnowsAllItsColours)
{
    AplicarTema(*qApp, 1);
    EXPECT_FALSE(qApp->styleSheet().isEmpty());
    EXPECT_FALSE(qApp->styleSheet().contains(u'@'));
    qApp->setStyleSheet({});
}

TEST(Pictures, AreDrawnForTheScaleOfTheScreenAndInTheColoursOfTheTheme)
{
    AplicarTema(*qApp, 1);
    const QPixmap sharp = Icono(u"Agenda"_s).pixmap(QSize(24, 24), 2.0);
    EXPECT_EQ(sharp.size(), QSize(48, 48));
    EXPECT_EQ(sharp.devicePixelRatio(), 2.0);
    const QImage before = Imagen(u"inicio1"_s, {64, 26}, 1).toImage();
    AplicarTema(*qApp, 0x0000c0);
    EXPECT_NE(Imagen(u"inicio1"_s, {64, 26}, 1).toImage(), before);
    EXPECT_TRUE(Icono(u"nothing"_s).isNull());
    qApp->setStyleSheet({});
}
