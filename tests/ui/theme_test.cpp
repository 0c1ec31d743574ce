#include "ui/pictures.h"
#include "ui/theme.h"

#include <QApplication>
#include <QImage>
#include <gtest/gtest.h>

using namespace ui;
using namespace Qt::StringLiterals;

// Text must be readable whatever colour a clinic chooses: 4.5 to 1 is the contrast that people with
// weak sight need.
TEST(Theme, EveryColourOfTheSettingGivesReadableText)
{
    for (const int setting : {0, 1, 0x000002, 0x0000ff, 0x00ff00, 0xff0000, 0xffffff, 0x00ffff,
                              0x808080, 0x404040, 0xc8a078}) {
        for (const bool dark : {false, true}) {
            SCOPED_TRACE(testing::Message() << std::hex << setting << (dark ? " dark" : " light"));
            const Palette p = computePalette(setting, dark);
            for (const QColor &ground : {p.background, p.surface, p.alternateSurface}) {
                EXPECT_GE(contrastOf(p.text, ground), 7);
                EXPECT_GE(contrastOf(p.softText, ground), 4.5);
                EXPECT_GE(contrastOf(p.accent, ground), 4.5);
                EXPECT_GE(contrastOf(p.error, ground), 4.5);
                EXPECT_GE(contrastOf(p.success, ground), 4.5);
            }
            EXPECT_GE(contrastOf(p.text, p.softAccent), 7);
            EXPECT_GE(contrastOf(p.text, p.alert), 7);
            EXPECT_GE(contrastOf(p.text, p.notice), 6);
            EXPECT_GE(contrastOf(p.onAccent, p.accent), 4.5);
            EXPECT_GE(contrastOf(p.onFrame, p.frame), 7);
        }
    }
}

TEST(Theme, TheLowestByteOfTheSettingIsRed)
{
    const QColor red = computePalette(0x0000c0, false).accent;
    EXPECT_GT(red.red(), red.blue());
}

TEST(Theme, TheStyleSheetKnowsAllItsColours)
{
    applyTheme(*qApp, 1);
    EXPECT_FALSE(qApp->styleSheet().isEmpty());
    EXPECT_FALSE(qApp->styleSheet().contains(u'@'));
    qApp->setStyleSheet({});
}

TEST(Pictures, AreDrawnForTheScaleOfTheScreenAndInTheColoursOfTheTheme)
{
    applyTheme(*qApp, 1);
    const QPixmap sharp = ui::namedIcon(u"Agenda"_s).pixmap(QSize(24, 24), 2.0);
    EXPECT_EQ(sharp.size(), QSize(48, 48));
    EXPECT_EQ(sharp.devicePixelRatio(), 2.0);
    const QImage before = Image(u"inicio1"_s, {64, 26}, 1).toImage();
    applyTheme(*qApp, 0x0000c0);
    EXPECT_NE(Image(u"inicio1"_s, {64, 26}, 1).toImage(), before);
    EXPECT_TRUE(ui::namedIcon(u"nothing"_s).isNull());
    qApp->setStyleSheet({});
}
