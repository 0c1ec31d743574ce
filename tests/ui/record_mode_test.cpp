#include "ui/record_mode.h"

#include <gtest/gtest.h>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

/// "save new modify delete": + can be used, - is shown pale, . is hidden.
std::string seen(const RecordChoices &choices)
{
    std::string all;
    for (const auto &c : {choices.save, choices.newOne, choices.modify, choices.erase})
        all += c.shown ? (c.usable ? '+' : '-') : '.';
    return all;
}

TEST(RecordMode, ButtonsOfferWhatTheModeAllows)
{
    EXPECT_EQ(seen(recordChoices(Mode::View, true, true, true)), ".+++");
    EXPECT_EQ(seen(recordChoices(Mode::View, true, false, true)), ".+--");
    EXPECT_EQ(seen(recordChoices(Mode::View, true, false, false)), ".---")
        << "nothing to belong to";
    EXPECT_EQ(seen(recordChoices(Mode::View, false, true, true)), ".---")
        << "another panel is open";
    EXPECT_EQ(seen(recordChoices(Mode::New, false, true, true)), "++..");
    EXPECT_EQ(seen(recordChoices(Mode::Modify, false, true, true)), "+.+.");
}

TEST(RecordMode, OneEntryIsUnderWayAndKnowsWhatWasTyped)
{
    Entering entering;
    EXPECT_EQ(entering.panel(), -1);
    EXPECT_FALSE(entering.hasChanged({{u"a"_s, 1}})) << "nothing is open";

    entering.begin(1, Mode::Modify, {{u"a"_s, u"x"_s}});
    EXPECT_EQ(entering.modeOf(0), Mode::View);
    EXPECT_EQ(entering.modeOf(1), Mode::Modify);
    EXPECT_FALSE(entering.hasChanged({{u"a"_s, u"x"_s}}));
    EXPECT_TRUE(entering.hasChanged({{u"a"_s, u"xy"_s}}));

    entering.end();
    EXPECT_FALSE(entering.underWay());
    EXPECT_EQ(entering.modeOf(1), Mode::View);
}

} // namespace
