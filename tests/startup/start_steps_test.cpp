#include "startup/first_run.h"
#include "startup/start_steps.h"
#include "store/lookups.h"
#include "support/clinic.h"
#include "texts/texts.h"

#include <QDir>
#include <QLocale>

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

class StartSteps : public Clinic
{
protected:
    QString settings(std::string_view columns)
    {
        return allRows(*s.morvane, "select " + std::string(columns) + " from configuracion");
    }
    const QLocale point{QLocale::English, QLocale::UnitedStates};
};

} // namespace

TEST_F(StartSteps, TheFirstRunLeavesAClinicReadyToWork)
{
    ASSERT_TRUE(isFirstRun(s));
    beginFirstRun(s);
    EXPECT_EQ(settings("FechaUltimoInicio, FechaUltimoInicioMes"), u"2026-03-11|2026-03-11\n"_s);
    EXPECT_TRUE(isFirstRun(s)) << "it can still be broken off";

    QDir().mkpath(folder.filePath(u"mascotas/fot"_s)); // this one exists already
    finishFirstRun(s);
    EXPECT_FALSE(isFirstRun(s));
    EXPECT_EQ(settings("FechaPrimerInicio"), u"2026-03-11\n"_s);
    for (const auto &name : {u"cli"_s, u"ray"_s, u"eco"_s, u"fot"_s})
        EXPECT_TRUE(QDir(folder.filePath(u"mascotas/"_s + name)).exists());
    EXPECT_EQ(allRows(*s.morvane, "select mensaje, dibujo, codigo1, codigo2 from pizarra"),
              s(text::WelcomeLine) + u' ' + store::helpPage(s)
                  + u" (click to access).|106|38|0\n"_s);
    EXPECT_GT(s.finanzas->read("select count(*) from articulos").toInt(), 30);

    reopen();
    EXPECT_FALSE(isFirstRun(s));
}

TEST_F(StartSteps, AFirstRunThatFailsBeginsAgainAtTheNextStart)
{
    QFile inTheWay(folder.filePath(u"mascotas"_s));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    EXPECT_THROW(finishFirstRun(s), store::StoreError);
    reopen();
    EXPECT_TRUE(isFirstRun(s));
    EXPECT_EQ(s.morvane->read("select count(*) from pizarra").toInt(), 0);

    inTheWay.remove();
    finishFirstRun(s);
    EXPECT_FALSE(isFirstRun(s));
}

TEST_F(StartSteps, TheClinicsDataAndTheDayAreTaken)
{
    registerFirstRun(s, {u"El Ombú"_s, u"Mitre 1"_s, u"555"_s, u"Ana"_s, {}, {}});
    s.reloj.hoy = hoy.addDays(-1); // the first-run form was open past midnight
    s.reloj.now = [this] { return QDateTime(hoy, QTime(0, 5)); };
    EXPECT_TRUE(checkStart(s, point));
    EXPECT_EQ(s.clinic.nom, u"El Ombú"_s);
    EXPECT_EQ(s.clinic.pro, u"Ana"_s);
    EXPECT_EQ(s.reloj.hoy, hoy);
}

TEST_F(StartSteps, ALastStartInTheFutureIsAskedAbout)
{
    const auto lastStart = [this](QDate day) {
        s.morvane->Execute("update configuracion set FechaUltimoInicio = ?", day);
        reopen();
    };
    lastStart(hoy);
    EXPECT_TRUE(checkStart(s, point)) << "today is no reason to ask";

    lastStart(hoy.addDays(1));
    const QString question = s(text::LastStartWas)
                             + QLocale().toString(hoy.addDays(1), QLocale::ShortFormat) + u' '
                             + s(text::DateIsEarlier);
    ask.wait(question, false);
    EXPECT_FALSE(checkStart(s, point));
    EXPECT_EQ(settings("FechaUltimoInicio"), u"2026-03-12\n"_s);

    ask.wait(question, true);
    EXPECT_TRUE(checkStart(s, point));
    EXPECT_EQ(settings("FechaUltimoInicio"), u"2026-03-11\n"_s);
    EXPECT_EQ(s.configuracion["FechaUltimoInicio"].toDate(), hoy);
}

TEST_F(StartSteps, TheDecimalSeparatorIsTheSystems)
{
    checkStart(s, QLocale(QLocale::Spanish, QLocale::Argentina));
    EXPECT_EQ(s.separatorDecimal, u',');
    checkStart(s, point);
    EXPECT_EQ(s.separatorDecimal, u'.');
}
