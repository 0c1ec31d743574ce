#include "store/settings_row.h"
#include "store/sqlcipher/connection.h"
#include "support/clinic.h"
#include "texts/texts.h"
#include "ui/bound.h"
#include "ui/boxes.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

struct Form : FormBase {
    explicit Form(Sesion &s) : FormBase(s, u"frmx"_s) {}
    bind::Guard guard()
    {
        return [this](const std::function<void()> &task) { return guarded(task); };
    }
    template <typename W, typename... A>
    W *add(A &&...args)
    {
        if (!layout())
            new QVBoxLayout(this);
        auto *w = new W(std::forward<A>(args)...);
        layout()->addWidget(w);
        return w;
    }
};

class Bound : public Clinic
{
protected:
    void start()
    {
        form.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    }
    QString stored(std::string_view column)
    {
        const store::Value v =
            s.morvane->read("select " + std::string(column) + " from configuracion");
        return v.isNull() ? u"null"_s : v.toText();
    }
    void retype(QLineEdit *box, const QString &text)
    {
        box->setFocus();
        box->selectAll();
        QTest::keyClick(box, Qt::Key_Delete);
        QTest::keyClicks(box, text);
    }

    Form form{s};
};

const QList<std::pair<int, QString>> channels{{1, u"&Mail"_s}, {2, u"Letter"_s}, {4, u"Nothing"_s}};

} // namespace

TEST_F(Bound, AnOptionIsStoredWhenTheUserChoosesIt)
{
    store::saveSetting(s, "MedidasRevac", 2);
    auto *group = form.add<OptionsGroup>(u"Reminders"_s, channels);
    QSignalSpy chosen(group, &OptionsGroup::chosen);
    bind::Options(s, form.guard(), group, "MedidasRevac");
    EXPECT_EQ(group->Value(), 2);
    EXPECT_EQ(chosen.size(), 0);
    start();
    auto *mail = group->findChild<QRadioButton *>(u"opt1"_s);
    EXPECT_EQ(mail->accessibleName(), u"Mail"_s);
    mail->click();
    EXPECT_EQ(stored("MedidasRevac"), u"1"_s);
    QTest::keyClick(mail, Qt::Key_Down);
    EXPECT_EQ(stored("MedidasRevac"), u"2"_s);
    group->setValue(3);
    EXPECT_EQ(group->Value(), 0) << "a value that is none of the options";
    EXPECT_EQ(stored("MedidasRevac"), u"2"_s);
}

TEST_F(Bound, ABoxIsStoredWhenItIsLeft)
{
    s.separatorDecimal = u',';
    auto *name = form.add<QLineEdit>();
    auto *days = form.add<WholeNumberBox>(4);
    auto *level = form.add<NumberBox>(s);
    auto *hour = form.add<HourBox>();
    auto *check = form.add<QCheckBox>(u"x"_s);
    bind::text(s, form.guard(), name, "TicketSup1");
    bind::whole(s, form.guard(), days, "diasdeudores");
    bind::numberOf(s, form.guard(), level, "detali1");
    bind::hourOf(s, form.guard(), hour, "horaracion1");
    bind::Checkbox(s, form.guard(), check, "LVMascotas");
    start();

    const QString before = stored("diasdeudores");
    retype(name, u"Clinic"_s);
    EXPECT_EQ(stored("TicketSup1"), QString()) << "not before it is left";
    retype(days, u"030"_s);
    EXPECT_EQ(stored("TicketSup1"), u"Clinic"_s);
    EXPECT_EQ(stored("diasdeudores"), before);
    retype(level, u"1,5"_s);
    EXPECT_EQ(stored("diasdeudores"), u"30"_s);
    EXPECT_EQ(days->text(), u"30"_s) << "shows what is stored";
    retype(hour, u"0730"_s);
    EXPECT_EQ(stored("detali1"), u"1.5"_s);
    EXPECT_EQ(level->text(), u"1,5"_s);
    QTest::keyClick(hour, Qt::Key_Return);
    EXPECT_EQ(stored("horaracion1"), u"07:30:00"_s);
    check->click();
    EXPECT_EQ(stored("LVMascotas"), u"-1"_s);

    for (const QString &bad : {u"2530"_s, u"8"_s}) {
        retype(hour, bad);
        check->setFocus(Qt::TabFocusReason);
        EXPECT_EQ(stored("horaracion1") + hour->text(), u"07:30:0007:30"_s) << bad.toStdString();
    }
    retype(hour, QString());
    retype(days, QString());
    name->setFocus();
    EXPECT_EQ(stored("horaracion1") + stored("diasdeudores"), u"nullnull"_s);

    retype(name, u"typed, then the form is closed"_s);
    form.close();
    EXPECT_EQ(stored("TicketSup1"), u"typed, then the form is closed"_s);
}

TEST_F(Bound, AFailureIsToldAndTheStoredValueShownAgain)
{
    auto *name = form.add<QLineEdit>();
    auto *other = form.add<QLineEdit>();
    auto *group = form.add<OptionsGroup>(u"Reminders"_s, channels);
    store::saveSetting(s, "MedidasRevac", 4);
    store::saveSetting(s, "TicketSup1", u"kept"_s);
    bind::text(s, form.guard(), name, "TicketSup1");
    bind::Options(s, form.guard(), group, "MedidasRevac");
    start();
    // A store that refuses every write.
    sqlcipher::run(sqlcipher::openFile(folder.filePath(u"morvane.mdb"_s), false).get(),
                   "create trigger no before update on configuracion begin select "
                   "raise(abort, 'no'); end");
    retype(name, u"lost"_s);
    ask.wait(s(text::ErrorWasLogged));
    other->setFocus();
    EXPECT_EQ(name->text(), u"kept"_s);
    ask.wait(s(text::ErrorWasLogged));
    group->findChild<QRadioButton *>(u"opt1"_s)->click();
    EXPECT_EQ(group->Value(), 4);
}
