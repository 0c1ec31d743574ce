#include "support/clinic.h"
#include "texts/texts.h"
#include "ui/completion_list.h"
#include "ui/form_base.h"
#include "ui/form_registry.h"
#include "ui/quick_key.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

/// A chain with boxes of every kind and a button.
class Form : public FormBase
{
public:
    explicit Form(Sesion &s) : FormBase(s, u"frmprueba"_s)
    {
        auto *column = new QVBoxLayout(this);
        for (QWidget *w : QWidgetList{first, second, list, notes, last, save})
            column->addWidget(w);
        enterChain({first, second, list, notes, last, save});
        refuseApostrophe({first});
        refuseApostropheIn({list, notes});
        rememberSize({300, 200});
        connect(save, &QPushButton::clicked, this, [this] { ++saved; });
    }
    using FormBase::guarded;
    void activated() override
    {
        ++activations;
        if (fails)
            throw std::runtime_error("broken");
    }

    QLineEdit *first = new QLineEdit, *second = new QLineEdit, *last = new QLineEdit;
    ListWithCompleted *list = new ListWithCompleted;
    QPlainTextEdit *notes = new QPlainTextEdit;
    QPushButton *save = new QPushButton(u"Save"_s);
    int saved = 0, activations = 0;
    bool fails = false;
};

class BaseForm : public Clinic
{
protected:
    BaseForm()
    {
        s.programFolder = folder.path() + u'/';
        form.emplace(s);
        open(*form);
        form->first->setFocus();
    }
    static void open(QWidget &f)
    {
        f.show();
        f.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&f));
    }
    /// @return the widget that has the focus after ENTER
    QWidget *enter(Qt::KeyboardModifiers m = {})
    {
        QTest::keyClick(form->focusWidget(), Qt::Key_Return, m);
        return form->focusWidget();
    }
    static void paste(auto *box, const QString &text)
    {
        QGuiApplication::clipboard()->setText(text);
        box->setFocus();
        box->selectAll();
        box->paste();
    }

    std::optional<Form> form;
};

} // namespace

TEST_F(BaseForm, EnterWalksTheBoxesPressesTheButtonAndWritesNewLinesInNotes)
{
    form->second->setEnabled(false);
    form->last->setText(u"old"_s);
    EXPECT_EQ(enter(), form->list) << "a box that cannot be used is passed over";
    EXPECT_EQ(enter(), form->notes);
    QTest::keyClick(form->notes, Qt::Key_A);
    EXPECT_EQ(enter(), form->notes);
    EXPECT_EQ(form->notes->toPlainText(), u"a\n"_s);
    EXPECT_EQ(enter(Qt::ControlModifier), form->last);
    EXPECT_EQ(form->last->selectedText(), u"old"_s);
    EXPECT_EQ(enter(), form->save);
    EXPECT_EQ(form->saved, 0) << "arriving at a button is not pressing it";
    enter();
    EXPECT_EQ(form->saved, 1);
    form->list->setFocus();
    QTest::keyClick(form->list->lineEdit(), Qt::Key_Return);
    EXPECT_EQ(form->focusWidget(), form->notes);
    QTest::keyClick(form->list, Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(BaseForm, TheApostropheIsRefusedWhenTypedAndABlankWhenPasted)
{
    form->notes->setPlainText(u"stored 'so'"_s);
    // Reported beside the box, so that what is typed next is not lost.
    QTest::keyClicks(form->first, u"O'"_s);
    EXPECT_TRUE(form->first->property("falla").toBool());
    const auto *note = form->findChild<QLabel *>(u"lblNotaDelCampo"_s);
    ASSERT_TRUE(note);
    EXPECT_EQ(note->text(), s(text::ApostropheRefused));
    QTest::keyClicks(form->first, u"Hara"_s);
    EXPECT_FALSE(form->first->property("falla").toBool() || note->isVisible());
    EXPECT_EQ(form->first->text(), u"OHara"_s);
    form->list->setFocus();
    QTest::keyClicks(form->list, u"O'H"_s);
    EXPECT_EQ(form->list->currentText(), u"OH"_s);
    EXPECT_EQ(form->notes->toPlainText(), u"stored 'so'"_s) << "nobody touched it";

    paste(form->first, u"D'Angelo"_s);
    EXPECT_EQ(form->first->text(), u"D Angelo"_s);
    paste(form->notes, u"D'Angelo 'x'"_s);
    EXPECT_EQ(form->notes->toPlainText(), u"D Angelo  x "_s);
    QTest::keyClicks(form->notes, u"'"_s);

    QTest::keyClicks(form->second, u"O'Hara"_s);
    EXPECT_EQ(form->second->text(), u"O'Hara"_s) << "only the boxes that were named";
}

TEST_F(BaseForm, ComingBackToAFormIsToldAndAFailureThereDoesNotComeUpForEver)
{
    QWidget other;
    const auto comeBack = [&] {
        open(other);
        open(*form);
        return form->activations;
    };
    EXPECT_EQ(form->activations, 1);
    form->fails = true;
    ask.wait(s(text::ErrorWasLogged));
    EXPECT_EQ(comeBack(), 2);
    EXPECT_EQ(comeBack(), 2) << "as when the message closes";
    form->fails = false;
    EXPECT_EQ(comeBack(), 3);
}

TEST_F(BaseForm, TheQuickFindOpensFromAnyFormButNotBeforeTheLogin)
{
    struct Search : FormBase {
        explicit Search(Sesion &s_) : FormBase(s_, u"frmBusquedaRapida"_s) {}
    };
    FormRegistry forms;
    forms.enrol(u"frmBusquedaRapida"_s, [this] { return new Search(s); });
    auto *app = qobject_cast<QApplication *>(QCoreApplication::instance());
    installQuickSearch(*app, forms);
    const auto found = [&forms] { return forms.load(u"frmBusquedaRapida"_s); };

    form->first->setText(u"typed"_s);
    form->first->setCursorPosition(0);
    form->setObjectName(u"frminicio"_s);
    QTest::keyClick(form->first, Qt::Key_K, Qt::ControlModifier);
    EXPECT_FALSE(found()->isVisible());
    form->setObjectName(u"frmprueba"_s);
    form->first->setText(u"typed"_s);
    QTest::keyClick(form->first, Qt::Key_K, Qt::ControlModifier);
    EXPECT_TRUE(found()->isVisible());
    EXPECT_EQ(form->first->text(), u"typed"_s) << "the box has no say in this key";
    QTest::keyClick(form->first, Qt::Key_Z, Qt::AltModifier);
    EXPECT_EQ(form->first->text(), u"typed"_s) << "no button bears this letter";
    delete app->findChild<QObject *>(u"TeclaDeBusqueda"_s);
}

TEST_F(BaseForm, AFailureIsLoggedToldOnceAndLeavesTheFormOpen)
{
    form->first->setText(u"typed"_s);
    ask.wait(s(text::ErrorWasLogged));
    EXPECT_FALSE(form->guarded([] { throw store::StoreError(3265, u"no such column"_s); }));
    ask.wait(s(text::ErrorWasLogged));
    EXPECT_FALSE(form->guarded([] { throw std::runtime_error("broken"); }));
    EXPECT_TRUE(form->guarded([] {}));
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(form->first->text(), u"typed"_s);
    EXPECT_EQ(s.morvane->read("select count(*) from errores").toInt(), 2);
}

TEST_F(BaseForm, AFullDiskIsToldAsSuchAndNotLoggedOnThatDisk)
{
    ask.wait(u"The disk is full."_s);
    EXPECT_FALSE(
        form->guarded([] { throw store::StoreError(store::ErrorNumber::FullDisk, u"no room"_s); }));
    EXPECT_EQ(s.morvane->read("select count(*) from errores").toInt(), 0);
}

TEST_F(BaseForm, AFailureIsToldEvenWhenTheLogCannotBeWritten)
{
    s.morvane->Execute("drop table errores");
    ask.wait(u"no such column"_s);
    EXPECT_FALSE(form->guarded([] { throw store::StoreError(3265, u"no such column"_s); }));
}

TEST_F(BaseForm, OpensWithTheSizeOfLastTime)
{
    form->resize(411, 317);
    form->hide();
    EXPECT_EQ(Form(s).size(), QSize(411, 317));
}
