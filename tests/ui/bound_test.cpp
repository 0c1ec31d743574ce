#include "store/settings_row.h"
#include "support/clinic.h"
#include "ui/bound.h"
#include "ui/boxes.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

struct Formulario : FormBase {
    explicit Formulario(Sesion &s) : FormBase(s, u"frmx"_s) {}
    Atar::Guardia guard()
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

class Bound : public Clinica
{
protected:
    void start()
    {
        form.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    }
    QString stored(std::string_view column)
    {
        const Valor v = s.morvane->Leer("select " + std::string(column) + " from configuracion");
        return v.EsNulo() ? u"null"_s : v.toText();
    }
    void retype(QLineEdit *box, const QString &text)
    {
        box->setFocus();
        box->selectAll();
        QTest::keyClick(box, Qt::Key_Delete);
        QTest::keyClicks(box, text);
    }

    Formulario form{s};
};

const QList<std::pair<int, QString>> channels{{1, u"&Mail"_s}, {2, u"Letter"_s}, {4, u"Nothing"_s}};

} // namespace

TEST_F(Bound, AnOptionIsStoredWhenTheUserChoosesIt)
{
    GuardarAjuste(s, "MedidasRevac", 2);
    auto *group = form.add<GrupoDeOpciones>(u"Reminders"_s, channels);
    QSignalSpy chosen(group, &GrupoDeOpciones::elegida);
    Atar::Opciones(s, form.guard(), group, "MedidasRevac");
    EXPECT_EQ(group->Valor(), 2);
    EXPECT_EQ(chosen.size(), 0);
    start();
    auto *mail = group->findChild<QRadioButton *>(u"opt1"_s);
    EXPECT_EQ(mail->accessibleName(), u"Mail"_s);
    mail->click();
    EXPECT_EQ(stored("MedidasRevac"), u"1"_s);
    QTest::keyClick(mail, Qt::Key_Down);
    EXPECT_EQ(stored("MedidasRevac"), u"2"_s);
    group->PonerValor(3);
    EXPECT_EQ(group->Valor(), 0) << "a value that is none of the options";
    EXPECT_EQ(stored("MedidasRevac"), u"2"_s);
}

TEST_F(Bound, ABoxIsStoredWhenItIsLeft)
{
    s.separadorDecimal = u',';
    auto *name = form.add<QLineEdit>();
    auto *days = form.add<CajaDeEntero>(4);
    auto *level = form.add<CajaDeNumero>(s);
    auto *hour = form.add<CajaDeHora>();
    auto *check = form.add<QCheckBox>(u"x"_s);
    Atar::Texto(s, form.guard(), name, "TicketSup1");
    Atar::Entero(s, form.guard(), days, "diasdeudores");
    Atar::Numero(s, form.guard(), level, "detali1");
    Atar::Hora(s, form.guard(), hour, "horaracion1");
    Atar::Casilla(s, form.guard(), check, "LVMascotas");
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
    auto *group = form.add<GrupoDeOpciones>(u"Reminders"_s, channels);
    GuardarAjuste(s, "MedidasRevac", 4);
    GuardarAjuste(s, "TicketSup1", u"kept"_s);
    Atar::Texto(s, form.guard(), name, "TicketSup1");
    Atar::Opciones(s, form.guard(), group, "MedidasRevac");
    start();
    // A store that refuses every write.
    s.motor->Ejecutar("create trigger morvane.no before update on configuracion begin select "
                      "raise(abort, 'no'); end");
    retype(name, u"lost"_s);
    ask.Espera(s(4604));
    other->setFocus();
    EXPECT_EQ(name->text(), u"kept"_s);
    ask.Espera(s(4604));
    group->findChild<QRadioButton *>(u"opt1"_s)->click();
    EXPECT_EQ(group->Valor(), 4);
}
