#include "support/clinic.h"
#include "ui/form_base.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

/// Three boxes and a button in a chain.
class Formulario : public FormBase
{
public:
    explicit Formulario(Sesion &s) : FormBase(s, u"frmprueba"_s)
    {
        auto *column = new QVBoxLayout(this);
        for (QLineEdit **box : {&first, &second, &third})
            column->addWidget(*box = new QLineEdit);
        column->addWidget(save = new QPushButton(u"Save"_s));
        enterChain({first, second, third, save});
        refuseApostrophe({first});
        rememberSize({300, 200});
        connect(save, &QPushButton::clicked, this, [this] { ++saved; });
    }
    using FormBase::guarded;

    QLineEdit *first, *second, *third;
    QPushButton *save;
    int saved = 0;
};

class BaseForm : public Clinica
{
protected:
    BaseForm()
    {
        s.carpetaDePrograma = carpeta.path() + u'/';
        form.emplace(s);
        form->show();
        form->first->setFocus();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&*form));
    }
    void enter() { QTest::keyClick(form->focusWidget(), Qt::Key_Return); }

    std::optional<Formulario> form;
};

} // namespace

TEST_F(BaseForm, EnterWalksTheBoxesAndPressesTheButtonAtTheEnd)
{
    form->second->setEnabled(false);
    form->third->setText(u"old"_s);
    enter();
    EXPECT_EQ(form->focusWidget(), form->third) << "a box that cannot be used is passed over";
    EXPECT_EQ(form->third->selectedText(), u"old"_s);
    enter();
    EXPECT_EQ(form->focusWidget(), form->save);
    EXPECT_EQ(form->saved, 0) << "arriving at a button is not pressing it";
    enter();
    EXPECT_EQ(form->saved, 1);
}

TEST_F(BaseForm, TheApostropheIsRefusedWhenTypedAndABlankWhenPasted)
{
    ask.Espera(s(4624));
    QTest::keyClicks(form->first, u"O'Hara"_s);
    EXPECT_EQ(form->first->text(), u"OHara"_s);

    form->first->clear();
    QGuiApplication::clipboard()->setText(u"D'Angelo"_s);
    form->first->paste();
    EXPECT_EQ(form->first->text(), u"D Angelo"_s);

    QTest::keyClicks(form->second, u"O'Hara"_s);
    EXPECT_EQ(form->second->text(), u"O'Hara"_s) << "only the boxes that were named";
}

TEST_F(BaseForm, EscapeCloses)
{
    QTest::keyClick(form->first, Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(BaseForm, AFailureIsLoggedToldOnceAndLeavesTheFormOpen)
{
    form->first->setText(u"typed"_s);
    ask.Espera(s(4604));
    EXPECT_FALSE(form->guarded([] { throw ErrorDeAlmacen(3265, u"no such column"_s); }));
    ask.Espera(s(4604));
    EXPECT_FALSE(form->guarded([] { throw std::runtime_error("broken"); }));
    EXPECT_TRUE(form->guarded([] {}));
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(form->first->text(), u"typed"_s);
    EXPECT_EQ(s.morvane->Leer("select count(*) from errores").toInt(), 2);
}

TEST_F(BaseForm, AFullDiskIsToldAsSuchAndNotLoggedOnThatDisk)
{
    ask.Espera(u"The disk is full."_s);
    EXPECT_FALSE(form->guarded([] { throw ErrorDeAlmacen(ErrorNum::DiscoLleno, u"no room"_s); }));
    EXPECT_EQ(s.morvane->Leer("select count(*) from errores").toInt(), 0);
}

TEST_F(BaseForm, AFailureIsToldEvenWhenTheLogCannotBeWritten)
{
    s.morvane->Execute("drop table errores");
    ask.Espera(u"no such column"_s);
    EXPECT_FALSE(form->guarded([] { throw ErrorDeAlmacen(3265, u"no such column"_s); }));
}

TEST_F(BaseForm, OpensWithTheSizeOfLastTime)
{
    form->resize(411, 317);
    form->hide();
    EXPECT_EQ(Formulario(s).size(), QSize(411, 317));
}
