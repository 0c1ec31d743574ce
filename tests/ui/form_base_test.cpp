#include "support/clinic.h"
#include "ui/completion_list.h"
#include "ui/form_base.h"
#include "ui/form_registry.h"
#include "ui/quick_key.h"

#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
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
        open(*form);
    }
    static void open(QWidget &f)
    {
        f.show();
        f.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&f));
    }
    /// ENTER, where the focus is. @return where it is then
    static QWidget *enter(QWidget &f, Qt::KeyboardModifiers m = {})
    {
        QTest::keyClick(f.focusWidget(), Qt::Key_Return, m);
        return f.focusWidget();
    }
    static void paste(auto *box, const QString &text)
    {
        QGuiApplication::clipboard()->setText(text);
        box->selectAll();
        box->paste();
    }

    std::optional<Formulario> form;
};

/// A list and a box of several lines between two lines.
class ConListas : public FormBase
{
public:
    explicit ConListas(Sesion &s) : FormBase(s, u"frmlistas"_s)
    {
        auto *column = new QVBoxLayout(this);
        column->addWidget(first = new QLineEdit);
        column->addWidget(list = new ListaConCompletado);
        column->addWidget(notes = new QPlainTextEdit);
        column->addWidget(last = new QLineEdit);
        enterChain({first, list, notes, last});
        refuseApostropheIn({list, notes});
    }
    void activated() override
    {
        ++activations;
        if (fails)
            throw std::runtime_error("broken");
    }

    QLineEdit *first, *last;
    ListaConCompletado *list;
    QPlainTextEdit *notes;
    int activations = 0;
    bool fails = false;
};

} // namespace

TEST_F(BaseForm, EnterPassesThroughListsAndWritesNewLinesInNotes)
{
    ConListas f(s);
    open(f);
    f.first->setFocus();
    EXPECT_EQ(enter(f), f.list);
    EXPECT_EQ(enter(f), f.notes);
    QTest::keyClick(f.notes, Qt::Key_A);
    EXPECT_EQ(enter(f), f.notes);
    EXPECT_EQ(f.notes->toPlainText(), u"a\n"_s);
    EXPECT_EQ(enter(f, Qt::ControlModifier), f.last);
    f.list->setFocus();
    QTest::keyClick(f.list->lineEdit(), Qt::Key_Return);
    EXPECT_EQ(f.focusWidget(), f.notes);
    QTest::keyClick(f.list, Qt::Key_Escape);
    EXPECT_FALSE(f.isVisible());
}

TEST_F(BaseForm, ListsAndNotesRefuseTheApostropheToo)
{
    ConListas f(s);
    f.notes->setPlainText(u"stored 'so'"_s);
    open(f);
    ask.Espera(s(4624));
    f.list->setFocus();
    QTest::keyClicks(f.list, u"O'H"_s);
    EXPECT_EQ(f.list->currentText(), u"OH"_s);
    EXPECT_EQ(f.notes->toPlainText(), u"stored 'so'"_s) << "nobody touched it";
    f.notes->setFocus();
    paste(f.notes, u"D'Angelo 'x'"_s);
    EXPECT_EQ(f.notes->toPlainText(), u"D Angelo  x "_s);
    ask.Espera(s(4624));
    QTest::keyClicks(f.notes, u"'"_s);
}

TEST_F(BaseForm, ComingBackToAFormIsToldAndAFailureThereDoesNotComeUpForEver)
{
    ConListas f(s);
    open(f);
    EXPECT_EQ(f.activations, 1);
    const auto comeBack = [&] {
        open(*form);
        open(f);
        return f.activations;
    };
    f.fails = true;
    ask.Espera(s(4604));
    EXPECT_EQ(comeBack(), 2);
    EXPECT_EQ(comeBack(), 2) << "as when the message closes";
    f.fails = false;
    EXPECT_EQ(comeBack(), 3);
}

TEST_F(BaseForm, TheQuickFindOpensFromAnyFormButNotBeforeTheLogin)
{
    struct Busqueda : FormBase {
        explicit Busqueda(Sesion &s_) : FormBase(s_, u"frmBusquedaRapida"_s) {}
    };
    Formularios forms;
    forms.Registrar(u"frmBusquedaRapida"_s, [this] { return new Busqueda(s); });
    auto *app = qobject_cast<QApplication *>(QCoreApplication::instance());
    InstalarBusquedaRapida(*app, forms);
    const auto found = [&forms] { return forms.Cargar(u"frmBusquedaRapida"_s); };

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

TEST_F(BaseForm, EnterWalksTheBoxesAndPressesTheButtonAtTheEnd)
{
    form->first->setFocus();
    form->second->setEnabled(false);
    form->third->setText(u"old"_s);
    EXPECT_EQ(enter(*form), form->third) << "a box that cannot be used is passed over";
    EXPECT_EQ(form->third->selectedText(), u"old"_s);
    EXPECT_EQ(enter(*form), form->save);
    EXPECT_EQ(form->saved, 0) << "arriving at a button is not pressing it";
    enter(*form);
    EXPECT_EQ(form->saved, 1);
}

TEST_F(BaseForm, TheApostropheIsRefusedWhenTypedAndABlankWhenPasted)
{
    ask.Espera(s(4624));
    QTest::keyClicks(form->first, u"O'Hara"_s);
    EXPECT_EQ(form->first->text(), u"OHara"_s);

    paste(form->first, u"D'Angelo"_s);
    EXPECT_EQ(form->first->text(), u"D Angelo"_s);

    QTest::keyClicks(form->second, u"O'Hara"_s);
    EXPECT_EQ(form->second->text(), u"O'Hara"_s) << "only the boxes that were named";
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
