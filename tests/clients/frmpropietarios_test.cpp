#include "clients/frmpropietarios.h"
#include "clients/photos.h"
#include "clients/registry.h"
#include "clients/registry_draft.h"
#include "support/clinic.h"
#include "texts/clients.h"
#include "texts/texts.h"
#include "texts/ui.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/theme.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace clients;
using namespace Qt::StringLiterals;

// Readable failures.
void printTo(const QString &text, std::ostream *out) { *out << text.toStdString(); }

namespace
{

/// Notes that it was opened, for which client and patient, and shows nothing.
struct Screen : ui::FormBase {
    Screen(Sesion &s, const QString &name, QStringList &log) : ui::FormBase(s, name), m_log(log) {}
    void opened(const QVariantMap &) override
    {
        m_log << objectName() + u" %1/%2"_s.arg(m_s.IdGlobal.idc).arg(m_s.IdGlobal.idm);
    }
    void setVisible(bool) override {}
    QStringList &m_log;
};

class Owners : public Clinic
{
protected:
    explicit Owners(store::Language language = store::Language::English) : Clinic(language)
    {
        s.programFolder = folder.path() + u"/programa/"_s;
        QDir().mkpath(s.programFolder);
        s.clientes->Execute("delete * from clientes");
        s.clientes->Execute("delete * from mascotas");
    }

    int client(const QString &ayn, const QString &tel = {})
    {
        ClientRecord f;
        f.ayn = ayn;
        f.tel2 = tel;
        return addClient(s, f).id;
    }
    int patient(int idc, const QString &nom, bool dec = false)
    {
        PatientRecord f;
        f.idc = idc;
        f.nom = nom;
        f.dec = dec;
        return addPatient(s, f, true).id;
    }

    void show()
    {
        form = std::make_unique<frmPropietarios>(s, forms, [this](const QUrl &link) {
            log << link.toString();
            return linkOpens;
        });
        form->opened({});
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
        rest();
    }
    /// Until the boxes beside the panels are filled.
    void rest()
    {
        QCoreApplication::processEvents(); // what was put off until the loop runs
        const auto *timer = get<QTimer>(u"TimerReposo"_s);
        EXPECT_TRUE(QTest::qWaitFor([timer] { return !timer->isActive(); }));
    }

    template <typename W = QWidget>
    W *get(const QString &name)
    {
        W *w = form->findChild<W *>(name);
        EXPECT_TRUE(w) << name.toStdString();
        return w;
    }
    QPushButton *button(const QString &name) { return get<QPushButton>(name); }
    void click(const QString &name) { QTest::mouseClick(button(name), Qt::LeftButton); }
    QString text(const QString &name) { return get<QLineEdit>(name)->text(); }
    QString hint() { return get<QLabel>(u"Ayu"_s)->text(); }
    QString info(const QString &name) { return get<QPlainTextEdit>(name)->toPlainText(); }
    ui::Grid *clients() { return get<ui::Grid>(u"GClientes"_s); }
    ui::Grid *patients() { return get<ui::Grid>(u"GMascotas"_s); }
    QString shownClient() { return clients()->gridModel()->cellText(clients()->currentRow(), 1); }
    QString shownPatient()
    {
        return patients()->gridModel()->cellText(patients()->currentRow(), 0);
    }
    QString rows(std::string_view sql) { return allRows(*s.clientes, sql); }
    QStringList names()
    {
        QStringList all;
        for (int row = 0; row < clients()->gridModel()->allRows(); ++row)
            all << clients()->gridModel()->cellText(row, 1);
        return all;
    }
    QString focus()
    {
        const QWidget *w = QApplication::focusWidget();
        return w ? w->objectName() : QString();
    }

    // As a user types: into whatever has the focus.
    void key(Qt::Key k, Qt::KeyboardModifiers m = {})
    {
        QWidget *w = QApplication::focusWidget();
        QTest::keyClick(w ? w : form.get(), k, m);
    }
    /// Letters, ENTER as '\r' and the backspace key as '\b'.
    void type(const QString &what)
    {
        for (const QChar c : what) {
            if (c == u'\r' || c == u'\b')
                key(c == u'\r' ? Qt::Key_Return : Qt::Key_Backspace);
            else // not keyClick, which knows no letter but those of ASCII
                QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown,
                                    QString(c), Qt::NoModifier);
        }
    }
    void typeInto(QWidget *box, const QString &what)
    {
        box->setFocus();
        type(what);
    }
    void alt(Qt::Key k) { key(k, Qt::AltModifier); }
    void enterUntil(const QString &box)
    {
        for (int i = 0; i < 20 && focus() != box; ++i)
            key(Qt::Key_Return);
        ASSERT_EQ(focus(), box);
    }
    void search(const QString &what)
    {
        auto *box = get<QLineEdit>(u"Txtapellidob"_s);
        box->clear();
        typeInto(box, what);
    }
    void choose(const QString &ayn)
    {
        search(ayn);
        ASSERT_EQ(shownClient(), ayn);
    }
    /// Another form of the program comes to the front, and the user returns from it.
    void comeBack()
    {
        QWidget other;
        other.show();
        other.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
        form->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    }
    void comeBackTo(int idc, int idm)
    {
        s.IdGlobal = {idc, idm};
        comeBack();
    }
    QStringList taken() { return std::exchange(log, {}); }
    QString selection() const { return u"%1/%2"_s.arg(s.IdGlobal.idc).arg(s.IdGlobal.idm); }

    QStringList log;
    bool linkOpens = true;
    ui::FormRegistry forms;
    std::unique_ptr<frmPropietarios> form;
};

class InSpanish : public Owners
{
protected:
    InSpanish() : Owners(store::Language::Spanish) {}
};

} // namespace

TEST_F(Owners, ANewClientWithTwoPatientsByTheKeyboardAlone)
{
    client(u"Zabala"_s);
    client(u"Abad"_s);
    show();
    alt(Qt::Key_N);
    EXPECT_EQ(text(u"txtidc"_s), u"00003"_s);
    type(u"Núñez, Ana\rMitre 100\rCentro\r"_s); // a new place: its region comes next
    type(u"Canelones\r91000\r433\r555-1234\r099 111\rana@kelvara.example\r"_s);
    enterUntil(u"cmdagregar"_s);
    key(Qt::Key_Return);

    ASSERT_EQ(focus(), u"cmdnuevomas"_s) << hint().toStdString();
    EXPECT_EQ(names(), QStringList({u"Abad"_s, u"Núñez, Ana"_s, u"Zabala"_s}));
    EXPECT_EQ(selection(), u"3/0"_s);
    for (const QString &name : {u"Luna"_s, u"Bola"_s}) {
        type(u'\r' + name + u"\rSiamés\rf\r"_s); // Felino
        enterUntil(u"Msknac"_s);
        type(u"29022024\r3.5\r"_s);
        enterUntil(u"cmdagregarmas"_s);
        key(Qt::Key_Return);
        ASSERT_EQ(focus(), u"cmdnuevomas"_s) << hint().toStdString();
    }
    EXPECT_EQ(selection(), u"3/2"_s);
    EXPECT_EQ(rows("select idc, ayn, dir, codp2, codt2, tel2, telc2, email from "
                   "clientes where idc = 3"),
              u"3|Núñez, Ana|Mitre 100|91000|433|555-1234|099 111|ana@kelvara.example\n"_s);
    EXPECT_EQ(rows("select idm, idc, mascotas.nom, mascotas.esp, mlrazas.nom, fecn, "
                   "pes from mascotas inner join mlrazas on mascotas.raz = "
                   "mlrazas.id order by idm"),
              u"1|3|Luna|2|Siamés|2024-02-29|3.5\n2|3|Bola|2|Siamés|2024-02-29|3.5\n"_s);
    EXPECT_EQ(rows("select nom from email"), u"kelvara.example\n"_s);
}

TEST_F(Owners, WhatIsRefusedKeepsWhatWasTyped)
{
    client(u"Abad"_s);
    show();
    alt(Qt::Key_N);
    ask.wait(s(text::PleaseEnterName));
    click(u"cmdagregar"_s);
    EXPECT_EQ(focus(), u"txtayn"_s);
    type(u"D'Elia\r"_s);
    EXPECT_EQ(text(u"txtayn"_s), u"DElia"_s);
    key(Qt::Key_Return);
    ask.wait(s(text::SubregionIsNumber));
    type(u"25\r"_s);
    EXPECT_EQ(focus(), u"cmbloc"_s);
    EXPECT_EQ(get<QComboBox>(u"cmbloc"_s)->currentText(), u"25"_s);
    type(u" de Mayo"_s);
    type(u"'\r"_s);
    click(u"cmdagregar"_s);
    EXPECT_EQ(names(), QStringList({u"Abad"_s, u"DElia"_s}));

    alt(Qt::Key_W);
    type(u"Sol"_s);
    typeInto(get(u"Msknac"_s), u"99999999\r"_s);
    EXPECT_EQ(focus(), u"Msknac"_s);
    EXPECT_EQ(text(u"Msknac"_s), u"99999999"_s);
    ask.wait(s(text::EnterValidDate));
    click(u"cmdagregarmas"_s);
    EXPECT_EQ(text(u"txtnom"_s), u"Sol"_s);
}

TEST_F(Owners, ATelephoneThatIsThereAlready)
{
    const int first = client(u"Abad"_s, u"555"_s);
    client(u"Ruiz"_s);
    show();
    choose(u"Ruiz"_s);
    const auto enter = [this](const QString &name) {
        alt(Qt::Key_N);
        type(name + u'\r');
        typeInto(get(u"txttel"_s), u"5-55"_s); // the same by its digits
        alt(Qt::Key_S);
    };
    ask.wait(s(text::SameClientTelephone) + u" 555"_s, false);
    enter(u"Abad again"_s);
    EXPECT_EQ(names(), QStringList({u"Abad"_s, u"Ruiz"_s}));
    EXPECT_EQ(s.IdGlobal.idc, first);
    EXPECT_EQ(shownClient(), u"Abad"_s);
    EXPECT_EQ(button(u"cmdNuevo"_s)->text(), s(text::NewClientButton));

    ask.wait(s(text::SameClientAdvice), true);
    enter(u"Abad brother"_s);
    EXPECT_EQ(names(), QStringList({u"Abad"_s, u"Abad brother"_s, u"Ruiz"_s}));
    EXPECT_EQ(shownClient(), u"Abad brother"_s);
}

TEST_F(Owners, OwnersAreFoundByNameIdAndTelephone)
{
    for (const QString &name : {u"Álvarez"_s, u"alvear"_s, u"*Star"_s, u"#1 Dog"_s, u"[New] Farm"_s,
                                u"What?"_s, u"Zabala"_s, u"Ñandú"_s})
        client(name, name == u"Zabala" ? u"12345, 777"_s : QString());
    show();
    const std::pair<QString, QString> found[] = {
        {u"álv"_s, u"Álvarez"_s}, {u"ALVE"_s, u"alvear"_s},    {u"alvar"_s, u"Álvarez"_s},
        {u"*"_s, u"*Star"_s},     {u"#1"_s, u"#1 Dog"_s},      {u"["_s, u"[New] Farm"_s},
        {u"What?"_s, u"What?"_s}, {u"nandu"_s, u"Ñandú"_s},    {u"12345"_s, u"Zabala"_s},
        {u"0003"_s, u"*Star"_s},  {u"12-3 45"_s, u"Zabala"_s}, {u"7"_s, u"Zabala"_s}};
    for (const auto &[typed, owner] : found) {
        search(typed);
        EXPECT_EQ(shownClient(), owner) << typed.toStdString();
        EXPECT_EQ(hint(),
                  s(text::ClientSearchFound) + u' ' + owner + u' ' + s(text::ClientSearchHelp));
        EXPECT_EQ(text(u"txtayn"_s), owner);
    }
    // On the way the beginning is found; where nothing is (00007 is a telephone), the row stays.
    const std::pair<QString, QString> notFound[] = {
        {u"Wh*"_s, u"What?"_s},   {u"?lvar"_s, u"What?"_s},   {u"99"_s, u"What?"_s},
        {u"00007"_s, u"What?"_s}, {u"123456"_s, u"Zabala"_s}, {u"99999999999"_s, u"Zabala"_s}};
    for (const auto &[typed, owner] : notFound) {
        search(typed);
        EXPECT_EQ(hint(), (s(text::ClientSearchNotFound) + typed).trimmed());
        EXPECT_EQ(shownClient(), owner) << typed.toStdString();
    }
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_Delete);
    EXPECT_EQ(hint(), s(text::ClientSearchIsBlank));
}

TEST_F(Owners, ArrowsWalkTheClientsAndEnterOpensTheMenu)
{
    const int abad = client(u"Abad"_s), ruiz = client(u"Ruiz"_s);
    const int moon = patient(ruiz, u"Luna"_s);
    for (const QString &name : {u"frmventas"_s, u"frmos"_s, u"frmficha"_s})
        forms.enrol(name, [this, name] { return new Screen(s, name, log); });
    show();
    EXPECT_EQ(selection(), u"%1/0"_s.arg(abad));
    key(Qt::Key_Down);
    EXPECT_EQ(selection(), u"%1/%2"_s.arg(ruiz).arg(moon));
    EXPECT_EQ(focus(), u"Txtapellidob"_s);
    rest();
    EXPECT_TRUE(info(u"txtinfoCliente"_s).startsWith(s(text::LastVisitShort)))
        << "what is told beside the client";

    auto *menu = get<QMenu>(u"menuRapido"_s);
    const QString here = u' ' + selection();
    const auto menuOpens = [&](std::initializer_list<Qt::Key> ways, const QStringList &opened) {
        for (const Qt::Key way : ways) {
            key(Qt::Key_Return);
            ASSERT_TRUE(menu->isVisible());
            EXPECT_EQ(get<QAction>(u"menuTitulo"_s)->text(), u"Ruiz"_s);
            QTest::keyClick(menu, way);
            EXPECT_FALSE(menu->isVisible());
            EXPECT_EQ(taken(), opened) << way;
        }
    };
    menuOpens({Qt::Key_1, Qt::Key_F, Qt::Key_Return}, {u"frmficha"_s + here});
    menuOpens({Qt::Key_2, Qt::Key_L}, {u"frmventas"_s + here});
    menuOpens({Qt::Key_3}, {u"frmos"_s + here});
    menuOpens({Qt::Key_4, Qt::Key_E, Qt::Key_Escape}, {});
    alt(Qt::Key_V);
    alt(Qt::Key_F);
    alt(Qt::Key_O);
    EXPECT_EQ(taken(),
              QStringList({u"frmventas"_s + here, u"frmficha"_s + here, u"frmos"_s + here}));
    patients()->setFocus();
    key(Qt::Key_Return);
    EXPECT_EQ(taken(), QStringList{u"frmficha"_s + here});
}

TEST_F(Owners, PatientsAreFoundHereAndAmongAllClients)
{
    const int abad = client(u"Abad"_s), ruiz = client(u"Ruiz"_s);
    patient(abad, u"Bola"_s);
    const int moon = patient(abad, u"Luna"_s), luna2 = patient(ruiz, u"Luna"_s);
    const int star = patient(ruiz, u"*Sol"_s, true);
    patient(ruiz, u"Ñandú"_s);
    show();
    auto *box = get<QLineEdit>(u"txtmascotab"_s);
    const auto look = [&](const QString &what) {
        box->clear();
        typeInto(box, what);
    };
    look(u"lu"_s);
    EXPECT_EQ(s.IdGlobal.idm, moon);
    look(u"b*a"_s);
    EXPECT_EQ(hint(), s(text::PatientFoundHere) + u" Bola"_s);
    look(u"*s"_s);
    EXPECT_EQ(hint(), s(text::PatientNotFoundHere) + u" *s"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(selection(), u"%1/%2"_s.arg(ruiz).arg(star)) << "the only one, with its owner";
    EXPECT_EQ(shownPatient(), u"*Sol · "_s + s(text::Deceased));
    look(u"nandu"_s);
    EXPECT_EQ(hint(), s(text::PatientFoundHere) + u" Ñandú"_s);
    ask.expectSelection(s(text::RegistryChoosePatient), QList<int>{1});
    look(u"Luna"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(selection(), u"%1/%2"_s.arg(ruiz).arg(luna2));
    ask.expectSelection(s(text::RegistryChoosePatient), std::nullopt);
    key(Qt::Key_Return);
    EXPECT_EQ(selection(), u"%1/%2"_s.arg(ruiz).arg(luna2));
    look(u"Nobody"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(hint(), s(text::NoPatientBeginsWith) + u" Nobody"_s);
}

TEST_F(InSpanish, AModeLocksTheRestAndIsLeftFirst)
{
    const int abad = client(u"Abad"_s);
    patient(abad, u"Luna"_s);
    show();
    alt(Qt::Key_N);
    EXPECT_EQ(button(u"cmdNuevo"_s)->text(), u"Cancelar"_s);
    EXPECT_EQ(get<QAction>(u"menu1"_s)->text() + get<QAction>(u"menu2"_s)->text(),
              u"&Ficha\t1&Vender\t2"_s);
    for (const QString &name : {u"GClientes"_s, u"GMascotas"_s, u"Txtapellidob"_s, u"txtmascotab"_s,
                                u"cmdnuevomas"_s, u"cmdmodificarmas"_s, u"cmdMail"_s})
        EXPECT_FALSE(get(name)->isEnabled()) << name.toStdString();
    key(Qt::Key_Escape); // nothing was typed: no question
    EXPECT_EQ(button(u"cmdNuevo"_s)->text(), s(text::NewClientButton));
    EXPECT_EQ(text(u"txtayn"_s), u"Abad"_s) << "the row is back";
    EXPECT_TRUE(form->isVisible());

    alt(Qt::Key_R);
    EXPECT_EQ(button(u"cmdmodificarmas"_s)->text(), u"Cancelar"_s);
    EXPECT_FALSE(button(u"cmdNuevo"_s)->isEnabled());
    type(u"Otra"_s);
    ask.wait(s(text::LeaveUnsavedQuestion), true);
    key(Qt::Key_Escape);
    EXPECT_EQ(text(u"txtnom"_s), u"Otra"_s);
    ask.wait(s(text::LeaveUnsavedQuestion), false);
    form->close();
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(text(u"txtnom"_s), u"Luna"_s);
    EXPECT_EQ(rows("select nom from mascotas"), u"Luna\n"_s);
    click(u"cmdvolver"_s);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(Owners, ComingBackFollowsWhatOthersDid)
{
    client(u"Abad"_s);
    const int ruiz = client(u"Ruiz"_s);
    const int moon = patient(ruiz, u"Luna"_s), sol = patient(ruiz, u"Sol"_s);
    show();
    comeBackTo(ruiz, sol);
    EXPECT_EQ(shownClient() + u'/' + shownPatient(), u"Ruiz/Sol"_s);
    comeBackTo(ruiz, moon);
    EXPECT_EQ(shownPatient(), u"Luna"_s);

    {
        Sesion other(ask, impresion, store::Language::English);
        other.reloj = s.reloj;
        store::setDataFolder(other, folder.path());
        ASSERT_FALSE(store::openStore(other));
        ClientRecord f = *readClient(other, ruiz);
        f.ayn = u"Aguirre"_s;
        ASSERT_FALSE(modifyClient(other, f));
        f = {};
        f.ayn = u"Zabala"_s;
        ASSERT_TRUE(addClient(other, f).id);
    }
    EXPECT_TRUE(eventually([&] {
        comeBack();
        return names() == QStringList({u"Abad"_s, u"Aguirre"_s, u"Zabala"_s});
    }));
    EXPECT_EQ(shownClient() + u'/' + shownPatient(), u"Aguirre/Luna"_s);

    // A form of this program writes patients and debts.
    s.clientes->Execute("update mascotas set nom = 'Lola' where idm = ?", moon);
    comeBack();
    EXPECT_EQ(shownPatient(), u"Lola"_s);
    s.clientes->Execute("update clientes set deuda = -1 where idc = ?", ruiz);
    comeBack();
    EXPECT_EQ(clients()->gridModel()->Row(clients()->currentRow()).highlight, ui::Highlight::Alert);

    ask.wait(s(text::SelectionError) + u'\n' + s(text::ClientNotFound));
    comeBackTo(999, 0);
    EXPECT_EQ(s.IdGlobal.idc, ruiz) << "what is shown is what is worked on";
    ask.wait(s(text::SelectionError));
    comeBackTo(ruiz, 999);
    EXPECT_EQ(selection(), u"%1/%2"_s.arg(ruiz).arg(moon));
    comeBack();
}

TEST_F(Owners, AnotherChoiceWaitsForWhatIsBeingTyped)
{
    const int abad = client(u"Abad"_s);
    client(u"Ruiz"_s);
    show();
    choose(u"Ruiz"_s);
    const QString own = selection();
    alt(Qt::Key_I);
    type(u"Half"_s);
    comeBackTo(abad, 0);
    EXPECT_EQ(text(u"txtayn"_s), u"Half"_s);

    const auto pick = [&](bool giveUp) {
        s.IdGlobal = {abad, 0};
        ask.wait(s(text::LeaveUnsavedQuestion), !giveUp);
        form->opened({});
        EXPECT_EQ(selection(), own) << "until it is answered";
        rest();
    };
    pick(false);
    EXPECT_EQ(text(u"txtayn"_s), u"Half"_s);
    EXPECT_EQ(selection(), own);
    pick(true);
    EXPECT_EQ(text(u"txtayn"_s), u"Abad"_s);
    EXPECT_EQ(button(u"cmdmodificar"_s)->text(), s(text::EditClientButton));
    EXPECT_EQ(names(), QStringList({u"Abad"_s, u"Ruiz"_s}));
}

TEST_F(Owners, ADraftOutlivesTheProgram)
{
    const int abad = client(u"Abad"_s);
    const int moon = patient(abad, u"Luna"_s);
    const auto drafts = [this] {
        return QDir(s.programFolder).entryList({u"borrador-*"_s}).size();
    };
    const auto crashAndStart = [&](bool takeUp) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return drafts() == 1; }));
        form.reset();
        ask.wait(s(text::RestoreDraftQuestion), takeUp);
        show();
    };
    show();
    alt(Qt::Key_N);
    type(u"Half a name\rMitre 1"_s);
    crashAndStart(true);
    EXPECT_EQ(button(u"cmdNuevo"_s)->text(), s(text::Cancel));
    EXPECT_EQ(text(u"txtayn"_s) + u'/' + text(u"txtdir"_s), u"Half a name/Mitre 1"_s);
    alt(Qt::Key_S);
    EXPECT_EQ(names(), QStringList({u"Abad"_s, u"Half a name"_s}));

    choose(u"Abad"_s);
    alt(Qt::Key_D);
    type(u"Lola"_s);
    get<QComboBox>(u"cmbser"_s)->setCurrentIndex(1);
    crashAndStart(true);
    EXPECT_EQ(text(u"txtnom"_s), u"Lola"_s);
    alt(Qt::Key_S);
    EXPECT_EQ(rows("select idm, nom, ser from mascotas"), u"%1|Lola|1\n"_s.arg(moon));

    alt(Qt::Key_D);
    type(u"Lulu"_s);
    crashAndStart(false);
    EXPECT_EQ(text(u"txtnom"_s), u"Lola"_s);
    EXPECT_EQ(drafts(), 0) << "what was declined is not offered again";
}

TEST(RegistryDraft, WhatIsGoneMeanwhileBecomesANewOne)
{
    using ui::Mode;
    const auto resumed = [](RegistryPanel panel, Mode mode, bool client, bool patient) {
        const auto kept = RegistryDraft::fromMap(
            RegistryDraft{panel, mode, {3, 7}, {{u"txtayn"_s, u"Abad"_s}}}.toMap());
        return kept->modeToResume(client, patient);
    };
    EXPECT_EQ(resumed(ClientSide, Mode::Modify, true, false), Mode::Modify);
    EXPECT_EQ(resumed(ClientSide, Mode::Modify, false, false), Mode::New);
    EXPECT_EQ(resumed(PatientSide, Mode::Modify, true, true), Mode::Modify);
    EXPECT_EQ(resumed(PatientSide, Mode::Modify, true, false), Mode::New);
    EXPECT_EQ(resumed(PatientSide, Mode::New, false, false), std::nullopt) << "no owner for it";
    EXPECT_FALSE(RegistryDraft::fromMap({}));
}

TEST_F(Owners, PlacesBringTheirCodesAndBreedsTheirSpecies)
{
    for (const char *row :
         {"cldepartamento (id, nom, ctel) values (1, 'Canelones', '433')",
          "cldepartamento (id, nom, ctel) values (2, 'Colonia', '452')",
          "cllocalidad (id, nom, cp, dep) values (5, 'Centro', '91', 1)",
          "mlrazas (id, nom, esp) values (7, 'Boxer', 1)", "email (nom) values ('kelvara.example')",
          "email (nom) values ('kite.example')"})
        s.clientes->Execute("insert into " + std::string(row));
    const int abad = client(u"Abad"_s);
    s.clientes->Execute("update clientes set faltamail = -1");
    show();
    alt(Qt::Key_I); // edit
    get(u"cmbloc"_s)->setFocus();
    const auto after = [this](const QString &typed) {
        type(typed);
        return get<QComboBox>(u"cmbloc"_s)->currentText() + u'|'
               + get<QComboBox>(u"cmbdep"_s)->currentText() + u'|' + text(u"txtcodp"_s) + u'|'
               + text(u"txtcodt"_s);
    };
    const QString whole = u"Centro|Canelones|91|433"_s;
    EXPECT_EQ(after(u"ce"_s), whole);
    EXPECT_EQ(after(u"x"_s), u"Cex|||"_s) << "what came with the other place";
    EXPECT_EQ(hint(), s(text::SubregionNotFound));
    EXPECT_EQ(after(u"\bn"_s), whole);
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_Delete);
    EXPECT_EQ(after({}), u"|||"_s);
    type(u"ce"_s);
    get<QComboBox>(u"cmbdep"_s)->setEditText(u"Colonia"_s);
    EXPECT_EQ(after(u"x"_s), u"Cex|Colonia||433"_s) << "what was typed over stays";
    get<QComboBox>(u"cmbdep"_s)->clearEditText();
    EXPECT_EQ(after(u"\bntro\r"_s), whole);
    EXPECT_EQ(focus(), u"txtcodp"_s) << "a known place passes its region by";

    auto *mail = get<QLineEdit>(u"txtemail"_s);
    typeInto(mail, u"ana@k"_s);
    EXPECT_EQ(mail->text(), u"ana@kelvara.example"_s);
    type(u"i"_s);
    EXPECT_EQ(mail->text(), u"ana@kite.example"_s);
    type(u"\b"_s);
    EXPECT_EQ(mail->text(), u"ana@ki"_s);
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    EXPECT_EQ(mail->text(), u"ana@kite.example"_s);
    EXPECT_EQ(clients()->gridModel()->Row(0).highlight, ui::Highlight::Notice);
    key(Qt::Key_Return);
    EXPECT_EQ(rows("select faltamail from clientes"), u"0\n"_s);
    EXPECT_EQ(clients()->gridModel()->Row(0).highlight, ui::Highlight::None);
    alt(Qt::Key_S);
    EXPECT_EQ(rows("select loc, dep, email from clientes"), u"5|1|ana@kite.example\n"_s);

    patient(abad, u"Luna"_s);
    comeBack();
    alt(Qt::Key_D);
    typeInto(get(u"cmbraza"_s), u"b"_s);
    auto *species = get<QComboBox>(u"cmbespecie"_s);
    EXPECT_EQ(species->currentText(), u"Canino"_s);
    type(u"x"_s);
    EXPECT_EQ(species->currentText(), QString());
    type(u"\bo"_s);
    EXPECT_EQ(species->currentText(), u"Canino"_s);
    typeInto(species, u"Fel"_s); // of the breed, for all its patients
    EXPECT_EQ(rows("select esp from mlrazas where id = 7"), u"1\n"_s) << "not before it is saved";
    alt(Qt::Key_S);
    EXPECT_EQ(rows("select esp from mlrazas where id = 7"), u"2\n"_s);
    EXPECT_EQ(rows("select raz, esp from mascotas"), u"7|2\n"_s);

    // ENTER after a search without a find opens no menu: the client below is another one.
    typeInto(get(u"Txtapellidob"_s), u"Nobody\r"_s);
    EXPECT_FALSE(QApplication::activePopupWidget());
    EXPECT_TRUE(hint().contains(u"Nobody"_s)) << hint().toStdString();
    // A new client has no animals yet.
    alt(Qt::Key_N);
    EXPECT_EQ(text(u"txtnom"_s), QString());
    key(Qt::Key_Escape);
    EXPECT_EQ(text(u"txtnom"_s), u"Luna"_s);
}

TEST_F(Owners, DeletingGoesToTheNextAndEndsWithAnEmptyScreen)
{
    client(u"Abad"_s);
    const int ruiz = client(u"Ruiz"_s);
    for (const QString &name : {u"Luna"_s, u"Mora"_s, u"Sol"_s})
        patient(ruiz, name);
    show();
    const auto deleteIn = [this](ui::Grid *grid, int prompt, bool yes = true) {
        grid->setFocus();
        ask.wait(s(prompt), yes);
        key(Qt::Key_Delete);
    };
    s.user.ut = 1;
    deleteIn(clients(), 1);
    choose(u"Ruiz"_s);
    deleteIn(patients(), 1);
    s.user.ut = 2;
    deleteIn(patients(), 3, false);
    EXPECT_EQ(patients()->gridModel()->allRows(), 3);
    key(Qt::Key_Down);
    deleteIn(patients(), 3);
    EXPECT_EQ(shownPatient(), u"Sol"_s);
    s.clientes->Execute("delete * from mascotas where nom = 'Sol'"); // at another terminal
    ask.wait(s(text::PatientIsGone));
    click(u"cmdmodificarmas"_s);
    EXPECT_EQ(button(u"cmdmodificarmas"_s)->text(), s(text::EditPatientButton));
    ask.wait(s(text::PatientIsGone));
    click(u"cmdeliminarmas"_s);
    EXPECT_EQ(shownPatient(), u"Luna"_s);
    ask.wait(s(text::DeleteQuestion), true);
    click(u"cmdEliminar"_s);
    EXPECT_EQ(shownClient(), u"Abad"_s);
    EXPECT_EQ(patients()->gridModel()->allRows(), 0);
    s.clientes->Execute("delete * from clientes");
    ask.wait(s(text::ClientIsGone));
    click(u"cmdEliminar"_s);
    EXPECT_EQ(selection(), u"0/0"_s);
    EXPECT_EQ(text(u"txtayn"_s), QString());
    EXPECT_FALSE(button(u"cmdEliminar"_s)->isEnabled());
    EXPECT_FALSE(button(u"cmdnuevomas"_s)->isEnabled());
    alt(Qt::Key_N);
    type(u"First"_s);
    alt(Qt::Key_S);
    EXPECT_EQ(names(), QStringList{u"First"_s});
}

TEST_F(Owners, APhotoIsChosenPastedAndRemoved)
{
    const int moon = patient(client(u"Abad"_s), u"Luna"_s);
    QImage picture(40, 30, QImage::Format_RGB32);
    picture.fill(Qt::red);
    const QString file = folder.filePath(u"luna.png"_s), bad = folder.filePath(u"bad.png"_s);
    ASSERT_TRUE(picture.save(file));
    QFile broken(bad);
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly) && broken.write("no picture") > 0);
    broken.close();
    show();
    auto *photo = get<QLabel>(u"PicMascota"_s);
    const auto stored = [&] { return QImage(photoFile(s, moon)).pixelColor(5, 5); };
    const auto choosePicture = [&](const QString &path) {
        ask.expectText(s(text::RegistryPatientPhoto), path);
        QTest::mouseClick(photo, Qt::LeftButton);
    };
    choosePicture(bad);
    EXPECT_TRUE(hint().startsWith(s(text::PhotoUnreadable)));
    EXPECT_FALSE(QFile::exists(photoFile(s, moon)));
    choosePicture(file);
    EXPECT_EQ(stored(), QColor(Qt::red));
    EXPECT_FALSE(photo->pixmap().isNull());
    picture.fill(Qt::blue);
    QApplication::clipboard()->setImage(picture);
    photo->setFocus();
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(stored(), QColor(Qt::blue));
    for (const bool yes : {false, true}) {
        ask.wait(s(text::RemovePhotoQuestion), yes);
        key(Qt::Key_Delete);
        EXPECT_EQ(QFile::exists(photoFile(s, moon)), !yes);
    }
    alt(Qt::Key_D);
    QTest::mouseClick(photo, Qt::LeftButton); // not while the patient is changed
}

TEST_F(Owners, ShortcutsSayWhatIsMissing)
{
    show();
    EXPECT_FALSE(button(u"cmdvender"_s)->isEnabled()) << "there is no such form";
    const auto told = [this](const QString &name, int prompt) {
        ask.wait(s(prompt));
        click(name);
    };
    told(u"cmdHospedaje"_s, 2262);
    told(u"cmdTurnos"_s, 2269);
    const int abad = client(u"Abad"_s);
    comeBackTo(abad, 0);
    told(u"cmdHospedaje"_s, 2262);
    told(u"cmdMail"_s, 2263);
    told(u"cmdTel"_s, 2268);
    EXPECT_TRUE(taken().isEmpty());

    const int moon = patient(abad, u"Luna"_s);
    s.clientes->Execute("update clientes set email = 'a@b.example, c@d.example', tel2 = '(2) 555'");
    s.clientes->Execute("insert into mhospedaje (idm, idcanil, fent, fsal, tip) values (?, 1, "
                        "#03/10/2026#, #03/12/2026#, 'h')",
                        moon);
    comeBack();
    rest();
    EXPECT_FALSE(button(u"cmdHospedaje"_s)->isEnabled());
    EXPECT_EQ(button(u"cmdHospedaje"_s)->property("tag").toString(), u"alt"_s);
    click(u"cmdMail"_s);
    EXPECT_EQ(taken(), QStringList{u"mailto:a@b.example,c@d.example"_s});
    linkOpens = false;
    s.IdGlobal = {}; // the panel's own client is written to
    get<QAction>(u"accEscribirCorreo"_s)->trigger();
    EXPECT_EQ(taken(), QStringList{u"mailto:a@b.example,c@d.example"_s});
    EXPECT_EQ(hint(), s(text::MailProgramFailed));
    get<QAction>(u"accCopiarTel"_s)->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), u"(2) 555"_s);
    EXPECT_FALSE(get<QAction>(u"accCopiarCel"_s)->isVisible());
}

class InEachLanguage : public Owners, public testing::WithParamInterface<int>
{
protected:
    InEachLanguage() : Owners(store::Language(GetParam())) {}
};

TEST_P(InEachLanguage, NothingIsCutNamelessOrReachedByTwoKeys)
{
    ui::applyTheme(*qApp, 1);
    patient(client(u"Abad"_s, u"555"_s), u"Luna"_s);
    show();
    form->resize(1320, 700);
    for (const bool editing : {false, true}) {
        if (editing)
            button(u"cmdmodificar"_s)->click();
        QCoreApplication::processEvents();
        QStringList keys;
        for (QWidget *w : form->findChildren<QWidget *>()) {
            if (!w->isVisibleTo(form.get()) || w->window() != form.get())
                continue;
            const std::string name = w->objectName().toStdString();
            if (w->focusPolicy() != Qt::NoFocus && !w->focusProxy()) {
                EXPECT_FALSE(w->accessibleName().isEmpty()) << name << w->metaObject()->className();
            }
            const auto *button = qobject_cast<QPushButton *>(w);
            const auto *label = qobject_cast<QLabel *>(w);
            if (button || (label && !label->wordWrap() && name != "Ayu")) {
                EXPECT_GE(w->width(), w->sizeHint().width()) << name;
                const QString caption = button ? button->text() : label->text();
                const QKeySequence key = QKeySequence::mnemonic(caption);
                if (!key.isEmpty() && (button || label->buddy()))
                    keys << key.toString();
            }
        }
        EXPECT_EQ(QSet<QString>(keys.begin(), keys.end()).size(), keys.size())
            << keys.join(u' ').toStdString();
        EXPECT_GT(keys.size(), 12);
    }
    qApp->setStyleSheet({});
}

INSTANTIATE_TEST_SUITE_P(Idiomas, InEachLanguage, testing::Values(0, 1, 2));
