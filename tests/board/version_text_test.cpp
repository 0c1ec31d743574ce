#include "board/version_text.h"
#include "support/clinic.h"

using namespace board;
using namespace Qt::StringLiterals;

TEST(VersionText, FollowsTheStoredNumber)
{
    const std::initializer_list<std::pair<int, QString>> cases = {
        {33, u"4.3.0"_s},  {50, u"5.0.0"_s},  {57, u"5.0.7"_s},
        {508, u"5.0.8"_s}, {530, u"5.3.0"_s}, {554, u"5.5.4"_s}};
    for (const auto &[ver, text] : cases)
        EXPECT_EQ(versionText(ver), text);
}

using Title = Clinic;

TEST_F(Title, NamesClinicVersionDayAndUser)
{
    s.clinic.nom = u"El Ombú"_s;
    EXPECT_EQ(boardTitle(s), u"El Ombú. Kelvara v5.5.4 - "_s
                                 + QLocale().toString(hoy, QLocale::LongFormat)
                                 + u" - Usr: Ana."_s);
}
