#include "messages/chat_link.h"
#include "messages/frmavisosplanificadas.h"
#include "messages/frmmensajeria.h"
#include "messages/message_forms.h"

#include "agenda/tasks.h"
#include "store/settings_row.h"
#include "support/clinic.h"
#include "texts/agenda.h"
#include "texts/texts.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

using namespace messages;
using namespace Qt::StringLiterals;

namespace
{

class MessageForms : public Clinic
{
protected:
    explicit MessageForms(store::Language language = store::Language::English) : Clinic(language)
    {
        s.programFolder = folder.path() + u'/';
        const auto run = [this](const char *sql) { s.clientes->Execute(sql); };
        run("insert into clientes (idc, ayn, email, telc2) values (1, 'Ana', 'a@x.example', '099 "
            "123-456')");
        run("insert into clientes (idc, ayn) values (2, 'Eva')");
        run("insert into mascotas (idm, idc, nom) values (11, 1, 'Toby')");
        run("insert into mascotas (idm, idc, nom) values (12, 2, 'Luna')");
        store::saveSetting(s, "mensajeriacumplemail", u"Happy day, <nommas> & Co. (100 %)\nBye"_s);
        store::saveSetting(s, "mensajeriadeudorescarta", u"Dear <nomcli>"_s);
        store::saveSetting(s, "mensajeriavencimientosmail", u"<nommas>'s dose"_s);
        store::saveSetting(s, "FechaInicioAnterior", hoy.addDays(-5));
    }

    void task(int tip, int ida, int medio)
    {
        agenda::Task t;
        t.tip = tip;
        t.ida = ida;
        t.medio = medio;
        t.fcreacion = hoy;
        AgregarTarea(s, t);
    }
    void dose(int idm, int dos, QDate rep)
    {
        s.clientes->Execute("insert into artplan (idm, ida, dos, idcat, rep, si) values (?, 1, ?, "
                            "3, ?, 0)",
                            idm, dos, rep);
    }

    template <typename W>
    static W *child(QWidget &form, const char16_t *name)
    {
        auto *found = form.findChild<W *>(QString::fromUtf16(name));
        EXPECT_TRUE(found) << QString::fromUtf16(name).toStdString();
        return found;
    }
    static QString text(QWidget &form, const char16_t *name)
    {
        return child<QPlainTextEdit>(form, name)->toPlainText();
    }
    static QString rows(QWidget &form)
    {
        const ui::GridModel *rows = child<ui::Grid>(form, u"Grilla")->gridModel();
        QString t;
        for (int r = 0; r < rows->allRows(); ++r) {
            for (int c = 0; c < rows->allColumns().size(); ++c)
                if (!rows->allColumns()[c].hidden)
                    t += (c ? u"|"_s : QString()) + rows->cellText(r, c);
            t += u'\n';
        }
        return t;
    }
    QString notes() { return allRows(*s.clientes, "select ID, Texto from AvisosPlanificadas"); }

    static void show(ui::FormBase &form, const QVariantMap &parameters = {})
    {
        form.opened(parameters);
        form.show();
        QApplication::setActiveWindow(&form);
    }

    // Everything that TAB reaches has an accessible name.
    static void checkFocus(QWidget &form)
    {
        for (QWidget *w : form.findChildren<QWidget *>()) {
            if (w->isVisibleTo(&form) && (w->focusPolicy() & Qt::TabFocus)
                && !w->objectName().startsWith(u"qt_"_s)) {
                EXPECT_FALSE(w->accessibleName().isEmpty())
                    << w->metaObject()->className() << ' ' << w->objectName().toStdString();
            }
        }
    }

    QList<QUrl> links;
    LinkOpener browser = [this](const QUrl &link) {
        links << link;
        return true;
    };
    ui::FormRegistry forms;
};

class MessageFormsByLanguage : public MessageForms,
                               public testing::WithParamInterface<store::Language>
{
protected:
    MessageFormsByLanguage() : MessageForms(GetParam()) {}
};

} // namespace

TEST_P(MessageFormsByLanguage, TheOutboxIsReadByKeys)
{
    task(-46, 11, 1);
    task(-43, 2, 3);
    frmmensajeria form(s, browser);
    show(form);
    EXPECT_TRUE(form.windowTitle().startsWith(s(text::OutboxMessages) + u' '));
    EXPECT_EQ(rows(form), u"Ana|%1|%2|%3\nEva|%4|%2/%5|%3\n"_s.arg(
                              s(text::BirthdayGreeting), s(text::Email), s(text::OutboxWaiting),
                              s(text::DebtReminder), s(text::Letter)));
    EXPECT_EQ(text(form, u"txtmensaje"), u"Happy day, Toby & Co. (100 %)\nBye"_s);
    EXPECT_EQ(child<ui::HelpLine>(form, u"Ayu")->text(),
              s(text::OutboxCounts).arg(2).arg(0).arg(2));
    checkFocus(form);

    auto *grid = child<ui::Grid>(form, u"Grilla");
    EXPECT_EQ(form.focusWidget(), grid);
    QTest::keyClick(grid, Qt::Key_Down);
    EXPECT_EQ(text(form, u"txtmensaje"), u"Dear Eva"_s);
    EXPECT_FALSE(child<QPushButton>(form, u"cmdChat")->isEnabled());
    EXPECT_EQ(child<QPushButton>(form, u"cmdChat")->toolTip(), s(text::NoMobile));
    // ALT with the button's mnemonic, which depends on the language.
    const auto mnemonic = [&form](const char16_t *name) {
        const QString caption = child<QPushButton>(form, name)->text();
        return Qt::Key(caption.at(caption.indexOf(u'&') + 1).toUpper().unicode());
    };
    QTest::keyClick(&form, mnemonic(u"cmdImprimir"), Qt::AltModifier);
    const QStringList printed{s(text::DebtReminder).trimmed() + u" - Eva"_s};
    EXPECT_TRUE(QTest::qWaitFor([&] { return impresion.printed == printed; }, 3000));
    QTest::keyClick(&form, mnemonic(u"cmdCopiar"), Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor(
        [] { return QGuiApplication::clipboard()->text() == u"Dear Eva"_s; }, 3000));

    // F5 shows what another terminal did and keeps the current row.
    s.morvane->Execute("update TareasAgenda set fmedio = ? where tip = -43", hoy);
    task(-71, 1, 1);
    QTest::keyClick(&form, Qt::Key_F5);
    EXPECT_EQ(grid->gridModel()->allRows(), 3);
    EXPECT_EQ(grid->currentRow(), 1);
    EXPECT_EQ(grid->gridModel()->cellText(1, 3), s(text::OutboxTitle));
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
}

TEST_P(MessageFormsByLanguage, NoticesAreWorkedThroughByKeys)
{
    dose(11, 1, hoy.addDays(-2));
    dose(12, 2, hoy.addDays(-1));
    dose(12, 3, hoy);
    forms.enrol(u"frmPropietarios"_s, [this] { return new ui::FormBase(s, u"frmPropietarios"_s); });
    frmAvisosPlanificadas form(s, forms, browser);
    show(form, {{u"grupo"_s, 18}});
    const auto names = [&form] {
        QString t;
        for (const QString &row : rows(form).split(u'\n', Qt::SkipEmptyParts))
            t += row.section(u'|', 0, 0) + u' ';
        return t;
    };
    EXPECT_EQ(names(), u"Luna Toby "_s);
    EXPECT_EQ(child<QLabel>(form, u"lblAyuda")->text(), s(text::NoticesHelp));
    checkFocus(form);

    // A note stays with its notice, even if the user moves to other rows.
    auto *grid = child<ui::Grid>(form, u"Grilla");
    auto *note = child<QPlainTextEdit>(form, u"txtNota");
    QTest::keyClick(grid, Qt::Key_Down);
    QTest::keyClick(grid, Qt::Key_Tab);
    EXPECT_EQ(form.focusWidget(), note);
    QTest::keyClicks(note, u"it's no answer"_s);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return notes() == u"11-1-3-20260309|it's no answer\n"_s; }, 3000));
    EXPECT_EQ(child<ui::HelpLine>(form, u"Ayu")->text(), s(text::NoteKept));
    QTest::keyClicks(note, u"!"_s);
    QTest::keyClick(grid, Qt::Key_Up);
    EXPECT_EQ(note->toPlainText(), QString());
    EXPECT_EQ(notes(), u"11-1-3-20260309|it's no answer!\n"_s);
    EXPECT_TRUE(rows(form).contains(u"|it's no answer!"_s));

    auto *tabs = child<QTabBar>(form, u"tabGrupo");
    tabs->setFocus();
    QTest::keyClick(tabs, Qt::Key_Right);
    EXPECT_EQ(names(), QString());
    EXPECT_FALSE(note->isEnabled());
    QTest::keyClick(tabs, Qt::Key_Right);
    EXPECT_EQ(names(), u"Luna Luna Toby "_s);
    QTest::keyClick(tabs, Qt::Key_Left);
    QTest::keyClick(tabs, Qt::Key_Left);
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Down);
    EXPECT_EQ(note->toPlainText(), u"it's no answer!"_s);

    QTest::keyClick(grid, Qt::Key_Return);
    EXPECT_EQ(s.IdGlobal.idc, 1);
    EXPECT_EQ(s.IdGlobal.idm, 11);
    EXPECT_TRUE(forms.load(u"frmPropietarios"_s)->isVisible());

    // Closing the form keeps a note that is still being typed.
    QTest::keyClicks(note, u"?"_s);
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(notes().count(u'?'), 1);
}

INSTANTIATE_TEST_SUITE_P(Languages, MessageFormsByLanguage,
                         testing::Values(store::Language::Spanish, store::Language::Portuguese,
                                         store::Language::English));

TEST_F(MessageForms, AnEmptyOutboxSaysWhatToDo)
{
    frmmensajeria form(s, browser);
    show(form);
    EXPECT_EQ(rows(form), QString());
    for (const char16_t *name : {u"cmdImprimir", u"cmdCopiar", u"cmdChat"})
        EXPECT_FALSE(child<QPushButton>(form, name)->isEnabled());
    EXPECT_TRUE(child<QPushButton>(form, u"cmdActualizar")->isEnabled());
    task(-44, 1, 1); // a kind without a text
    QTest::keyClick(&form, Qt::Key_F5);
    EXPECT_EQ(text(form, u"txtmensaje"), QString());
    EXPECT_FALSE(child<QPushButton>(form, u"cmdImprimir")->isEnabled());
}

TEST_F(MessageForms, ANoteOfAnotherTerminalIsNotOverwrittenByLookingAtIt)
{
    dose(11, 1, hoy.addDays(-2));
    frmAvisosPlanificadas form(s, forms, browser);
    show(form, {{u"grupo"_s, 18}});
    EXPECT_FALSE(child<QPushButton>(form, u"cmdFicha")->isEnabled()) << "no such form here";
    saveNote(s, u"11-1-3-20260309"_s, u"theirs"_s);
    form.hide();
    EXPECT_EQ(notes(), u"11-1-3-20260309|theirs\n"_s);
    show(form, {{u"grupo"_s, 99}}); // no such group gives the last one
    EXPECT_EQ(child<QTabBar>(form, u"tabGrupo")->currentIndex(), 3);
    show(form, {{u"grupo"_s, 18}});
    EXPECT_EQ(text(form, u"txtNota"), u"theirs"_s);
}

TEST_F(MessageForms, AChatOpensWithTheTextAndAsksForTheCountryOnce)
{
    task(-46, 11, 1);
    frmmensajeria form(s, browser);
    show(form);
    auto *chat = child<QPushButton>(form, u"cmdChat");
    ask.expectText(u"Country code"_s, std::nullopt); // cancelled
    chat->click();
    ask.expectText(u"Country code"_s, u"none"_s);
    ask.wait(s(text::CountryCodeInvalid));
    chat->click();
    EXPECT_EQ(links.size(), 0);
    ask.expectText(u"Country code"_s, u"+598"_s);
    chat->click();
    chat->click(); // the code is not asked for again
    ASSERT_EQ(links.size(), 2);
    EXPECT_EQ(links[1].toString(QUrl::FullyEncoded).toStdString(),
              "https://wa.me/59899123456?text=Happy%20day%2C%20Toby%20%26%20Co.%20%28100%20%25%29"
              "%0ABye");
    browser = [](const QUrl &) { return false; };
    frmmensajeria closed(s, browser);
    show(closed);
    child<QPushButton>(closed, u"cmdChat")->click();
    EXPECT_EQ(child<ui::HelpLine>(closed, u"Ayu")->text(), s(text::BrowserFailed));

    // The text of a notice is that of the reminder.
    dose(11, 1, hoy.addDays(-2));
    frmAvisosPlanificadas notices(s, forms, [this](const QUrl &link) {
        links << link;
        return true;
    });
    show(notices, {{u"grupo"_s, 18}});
    child<QPushButton>(notices, u"cmdChat")->click();
    EXPECT_EQ(links.last().query(QUrl::FullyDecoded), u"text=Toby's dose"_s);
}

TEST(ChatNumber, IsTheFirstMobileWithItsCountry)
{
    const std::pair<const char16_t *, const char *> cases[] = {
        {u"099 123-456", "59899123456"},
        {u"099 123-456, 098 765432", "59899123456"},
        {u"+54 9 11 5555-0101", "5491155550101"},
        {u"0054 9 11 5555-0101", "5491155550101"},
        {u"+1 (555) 010-0199", "15550100199"},
        {u"+598 (0)99 123456", "59899123456"},
        {u", home / 099 123-456 / 098 765432", "59899123456"},
        {u"", ""},
        {u"no phone", ""},
        {u"4812", ""}, // too short even with the country code
        {u"+598 99 123 456 789 012 345", ""},
    };
    for (const auto &[phones, number] : cases)
        EXPECT_EQ(numberForChat(QString::fromUtf16(phones), u"598"_s).toStdString(), number);
}

TEST_F(MessageForms, AreRegisteredUnderTheirNames)
{
    registerMessageForms(s, forms);
    for (const QString &name : {u"frmmensajeria"_s, u"frmAvisosPlanificadas"_s})
        EXPECT_EQ(forms.load(name)->objectName(), name);
}
