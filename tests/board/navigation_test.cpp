#include "board/navigation.h"
#include "store/lookups.h"
#include "support/clinic.h"
#include "ui/pictures.h"

#include <set>

using namespace board;
using namespace Qt::StringLiterals;

namespace
{

class Navigation : public Clinic
{
protected:
    /// The target as text, form and parameters; "-" for none.
    QString behindIcon(int code, WhichIcon icon)
    {
        const BoardLine line{u"text"_s, 106, icon == WhichIcon::First ? code : 0,
                             icon == WhichIcon::Second ? code : 0};
        const Target d = iconTarget(s, line, icon);
        QString text = d.None() ? u"-"_s : d.form;
        for (auto i = d.parameters.begin(); i != d.parameters.end(); ++i)
            text += u' ' + i.key() + u'=' + i.value().toString();
        return text;
    }
    QUrl behindText(int code1, const QString &text = u"text"_s)
    {
        return textTarget(s, {text, 106, code1, 0}).link;
    }
};

} // namespace

TEST_F(Navigation, EachCodeOpensItsScreen)
{
    const std::set<int> listings{1, 2, 3, 4, 6, 7, 9, 12, 13, 14, 15, 17, 31};
    const std::set<int> notices{18, 19, 20, 21};
    const std::map<int, QString> others{
        {5, u"frmmensajeria"_s},
        {8, u"frmagenda dia=2026-03-11 modo=1"_s},
        {10, u"frmagenda dia=2026-03-11 modo=2"_s},
        {32, u"frmagenda dia=2026-03-10 modo=1"_s},
        {33, u"frmAnalisis"_s},
    };
    for (int code = 0; code <= 40; ++code) {
        QString expected = u"-"_s;
        if (listings.contains(code))
            expected = u"frmlistados rapido=%1"_s.arg(code);
        else if (notices.contains(code))
            expected = u"frmAvisosPlanificadas grupo=%1"_s.arg(code);
        else if (others.contains(code))
            expected = others.at(code);
        EXPECT_EQ(behindIcon(code, WhichIcon::First), expected) << code;
        EXPECT_EQ(behindIcon(code, WhichIcon::Second), expected) << code;
    }
}

TEST_F(Navigation, TheTextOfALineLeadsOnlyByItsFirstCode)
{
    EXPECT_EQ(behindText(34), QUrl(store::videosPage(s)));
    EXPECT_EQ(behindText(38), QUrl(store::helpPage(s)));
    EXPECT_EQ(behindText(37, u"Backup of data (click to see): /media/usb/a:b/11-03-2026"_s),
              QUrl::fromLocalFile(u"/media/usb/a:b/11-03-2026"_s));
    EXPECT_TRUE(behindText(37, u"no folder"_s).isEmpty());
    EXPECT_TRUE(behindText(1).isEmpty());
    EXPECT_TRUE(textTarget(s, {u"text"_s, 106, 0, 38}).None());
}

TEST_F(Navigation, ACodeShowsItsPictureInTheColumnWhereItHasOne)
{
    const auto pictures = [](WhichIcon icon) {
        QString all;
        for (int code = 0; code <= 40; ++code)
            if (const QString p = codePicture(code, icon); !p.isEmpty()) {
                all += u"%1 %2\n"_s.arg(code).arg(p);
                EXPECT_TRUE(ui::imageExists(p)) << p.toStdString();
            }
        return all;
    };
    EXPECT_EQ(pictures(WhichIcon::First),
              u"1 listadospizarra\n2 listadospizarra\n3 listadospizarra\n4 listadospizarra\n"
              "5 mensajeriapizarra\n6 listadospizarra\n7 listadospizarra\n8 AgendaPizarra\n"
              "9 listadospizarra\n10 KelvaraPizarra\n11 ConfPizarra\n12 listadospizarra\n"
              "13 listadospizarra\n14 listadospizarra\n15 listadospizarra\n17 listadospizarra\n"
              "31 listadospizarra\n32 AgendaPizarra\n33 AnalisisPizarraChico\n"_s);
    EXPECT_EQ(pictures(WhichIcon::Second),
              u"1 listadospizarra\n2 listadospizarra\n3 listadospizarra\n4 listadospizarra\n"
              "5 mensajeriapizarra\n8 AgendaPizarra\n10 KelvaraPizarra\n11 ConfPizarra\n"
              "18 telefonoChico\n19 telefonoChico\n20 telefonoChico\n21 telefonoChico\n"_s);
}

TEST_F(Navigation, EveryPictureThatTheBoardNamesIsDrawn)
{
    for (const int number : {102, 103, 104, 106, 107, 108, 109, 110, 111, 113, 114, 115, 116})
        EXPECT_TRUE(ui::imageExists(QString::number(number))) << number;
    for (const BoardButton &button : boardButtons())
        EXPECT_TRUE(ui::imageExists(button.dibujo.toString()))
            << button.dibujo.toString().toStdString();
}

TEST_F(Navigation, ACommonUserIsRefusedAnalysisAndSettings)
{
    QStringList refused;
    for (const BoardButton &button : boardButtons()) {
        EXPECT_TRUE(canUse({1, 2, u"Supervisor"_s}, button));
        if (!canUse({2, 1, u"Common"_s}, button))
            refused << button.name.toString();
    }
    EXPECT_EQ(refused, QStringList({u"cmdAnalisis"_s, u"cmdConfiguracion"_s}));
}
