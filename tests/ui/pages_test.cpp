#include "support/clinic.h"
#include "ui/form_base.h"
#include "ui/form_registry.h"
#include "ui/pages.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

/// A page with two boxes; counts how often the user has come back to it.
struct Page : FormBase {
    Page(Sesion &s, const QString &name) : FormBase(s, name)
    {
        setWindowTitle(name);
        auto *column = new QVBoxLayout(this);
        for (QLineEdit *box : {&first, &second})
            column->addWidget(box);
    }
    void opened(const QVariantMap &) override { second.setFocus(); }
    void activated() override { ++visits; }
    bool mayLeave() override { return !refuses; }

    QLineEdit first, second;
    int visits = 0;
    bool refuses = false;
};

class OneWindow : public Clinic
{
protected:
    OneWindow()
    {
        for (const auto &name : {u"registry"_s, u"agenda"_s})
            forms.enrol(name, [this, name] { return new Page(s, name); });
        forms.setHost([this](FormBase &form) { pages->bringForward(form); });
        home->setFocusPolicy(Qt::StrongFocus);
        pages = std::make_unique<Pages>(home);
        pages->resize(600, 400);
        pages->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(pages.get()));
    }
    Page *page(const QString &name) { return static_cast<Page *>(forms.load(name)); }
    QString inFront() const
    {
        return pages->current() ? pages->current()->objectName() : u"home"_s;
    }

    FormRegistry forms;
    QWidget *home = new QWidget;
    std::unique_ptr<Pages> pages;
};

} // namespace

TEST_F(OneWindow, PagesComeToTheFrontAndGiveWayToTheOneBefore)
{
    forms.open(u"registry"_s);
    EXPECT_EQ(inFront(), u"registry"_s);
    EXPECT_TRUE(page(u"registry"_s)->second.hasFocus()) << "where the form wants to begin";
    EXPECT_EQ(page(u"registry"_s)->visits, 1);
    page(u"registry"_s)->second.setText(u"half a na"_s);

    forms.open(u"agenda"_s);
    EXPECT_EQ(inFront(), u"agenda"_s);
    EXPECT_FALSE(page(u"registry"_s)->isVisible());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(inFront(), u"registry"_s);
    EXPECT_EQ(page(u"registry"_s)->second.text(), u"half a na"_s);
    EXPECT_TRUE(page(u"registry"_s)->second.hasFocus());
    EXPECT_EQ(page(u"registry"_s)->visits, 2);

    pages->goHome();
    EXPECT_EQ(inFront(), u"home"_s);
    forms.open(u"registry"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(inFront(), u"home"_s);
    EXPECT_TRUE(home->hasFocus());
}

TEST_F(OneWindow, APageInAWindowOfItsOwnIsAPageAgainOnceItWasClosed)
{
    forms.open(u"registry"_s);
    forms.open(u"agenda"_s);
    Page *agenda = page(u"agenda"_s);
    pages->separate();
    EXPECT_TRUE(agenda->isWindow() && agenda->isVisible());
    EXPECT_EQ(inFront(), u"registry"_s);
    forms.open(u"agenda"_s);
    EXPECT_TRUE(agenda->isWindow()) << "raised where it is";
    agenda->reject();
    EXPECT_EQ(inFront(), u"registry"_s);
    forms.open(u"agenda"_s);
    EXPECT_FALSE(agenda->isWindow());
    EXPECT_EQ(inFront(), u"agenda"_s);
}

TEST_F(OneWindow, APageThatMayNotBeLeftIsBroughtForward)
{
    forms.open(u"registry"_s);
    forms.open(u"agenda"_s);
    EXPECT_TRUE(pages->mayLeaveAll());
    page(u"registry"_s)->refuses = true;
    EXPECT_FALSE(pages->mayLeaveAll());
    EXPECT_EQ(inFront(), u"registry"_s);

    page(u"registry"_s)->refuses = false;
    page(u"agenda"_s)->refuses = true;
    forms.open(u"agenda"_s);
    pages->separate();
    EXPECT_FALSE(pages->mayLeaveAll()) << "nor one in a window of its own";
    page(u"agenda"_s)->reject();
    EXPECT_TRUE(pages->mayLeaveAll()) << "a closed one is not asked";
}

TEST_F(OneWindow, WhereThereIsLittleRoomThePageFollowsTheCursor)
{
    Page *registry = page(u"registry"_s);
    registry->setMinimumSize(500, 2000);
    forms.open(u"registry"_s);
    const auto inSight = [&](QWidget &box) {
        return QRect(box.mapTo(pages.get(), QPoint()), box.size()).intersects(pages->rect());
    };
    EXPECT_TRUE(inSight(registry->second));
    registry->first.setFocus();
    EXPECT_TRUE(inSight(registry->first));
    EXPECT_FALSE(inSight(registry->second));
}

TEST_F(OneWindow, FormsOutliveTheWindowTheyWereShownIn)
{
    forms.open(u"registry"_s);
    pages.reset();
    EXPECT_EQ(page(u"registry"_s)->parent(), nullptr);
    EXPECT_FALSE(page(u"registry"_s)->isVisible());
}
