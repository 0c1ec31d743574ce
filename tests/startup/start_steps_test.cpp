#include "startup/first_run.h"
#include "startup/start_steps.h"
#include "store/lookups.h"
#include "support/clinic.h"

#include <QDir>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace
{

class StartSteps : public Clinica
{
protected:
    QString settings(std::string_view columns)
    {
        return Filas(*s.morvane, "select " + std::string(columns) + " from configuracion");
    }
    const QLocale point{QLocale::English, QLocale::UnitedStates};
};

} // namespace

TEST_F(StartSteps, TheFirstRunLeavesAClinicReadyToWork)
{
    ASSERT_TRUE(EsPrimeraVez(s));
    EmpezarPrimeraVez(s);
    EXPECT_EQ(settings("FechaUltimoInicio, FechaUltimoInicioMes"), u"2026-03-11|2026-03-11\n"_s);
    EXPECT_TRUE(EsPrimeraVez(s)) << "it can still be broken off";

    QDir().mkpath(carpeta.filePath(u"mascotas/fot"_s)); // one that is there already
    TerminarPrimeraVez(s);
    EXPECT_FALSE(EsPrimeraVez(s));
    EXPECT_EQ(settings("FechaPrimerInicio"), u"2026-03-11\n"_s);
    for (const auto &folder : {u"cli"_s, u"ray"_s, u"eco"_s, u"fot"_s})
        EXPECT_TRUE(QDir(carpeta.filePath(u"mascotas/"_s + folder)).exists());
    EXPECT_EQ(Filas(*s.morvane, "select mensaje, dibujo, codigo1, codigo2 from pizarra"),
              s(5056) + u' ' + PaginaDeAyuda(s) + u" (click to access).|106|38|0\n"_s);
    EXPECT_GT(s.finanzas->Leer("select count(*) from articulos").toInt(), 30);

    Reabrir();
    EXPECT_FALSE(EsPrimeraVez(s));
}

TEST_F(StartSteps, AFirstRunThatFailsBeginsAgainAtTheNextStart)
{
    QFile inTheWay(carpeta.filePath(u"mascotas"_s));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    EXPECT_THROW(TerminarPrimeraVez(s), ErrorDeAlmacen);
    Reabrir();
    EXPECT_TRUE(EsPrimeraVez(s));
    EXPECT_EQ(s.morvane->Leer("select count(*) from pizarra").toInt(), 0);

    inTheWay.remove();
    TerminarPrimeraVez(s);
    EXPECT_FALSE(EsPrimeraVez(s));
}

TEST_F(StartSteps, TheClinicsDataAndTheDayAreTaken)
{
    RegistrarPrimeraVez(s, {u"El Ombú"_s, u"Mitre 1"_s, u"555"_s, u"Ana"_s, {}, {}});
    s.reloj.hoy = hoy.addDays(-1); // the form of the first run stayed open over midnight
    s.reloj.ahora = [this] { return QDateTime(hoy, QTime(0, 5)); };
    EXPECT_TRUE(ComprobarInicio(s, point));
    EXPECT_EQ(s.clinica.nom, u"El Ombú"_s);
    EXPECT_EQ(s.clinica.pro, u"Ana"_s);
    EXPECT_EQ(s.reloj.hoy, hoy);
}

TEST_F(StartSteps, ALastStartInTheFutureIsAskedAbout)
{
    const auto lastStart = [this](QDate day) {
        s.morvane->Execute("update configuracion set FechaUltimoInicio = ?", day);
        Reabrir();
    };
    lastStart(hoy);
    EXPECT_TRUE(ComprobarInicio(s, point)) << "today is no reason to ask";

    lastStart(hoy.addDays(1));
    const QString question =
        s(3408) + QLocale().toString(hoy.addDays(1), QLocale::ShortFormat) + u' ' + s(3409);
    ask.Espera(question, false);
    EXPECT_FALSE(ComprobarInicio(s, point));
    EXPECT_EQ(settings("FechaUltimoInicio"), u"2026-03-12\n"_s);

    ask.Espera(question, true);
    EXPECT_TRUE(ComprobarInicio(s, point));
    EXPECT_EQ(settings("FechaUltimoInicio"), u"2026-03-11\n"_s);
    EXPECT_EQ(s.configuracion["FechaUltimoInicio"].toDate(), hoy);
}

TEST_F(StartSteps, TheDecimalSeparatorIsTheSystems)
{
    ComprobarInicio(s, QLocale(QLocale::Spanish, QLocale::Argentina));
    EXPECT_EQ(s.separadorDecimal, u',');
    ComprobarInicio(s, point);
    EXPECT_EQ(s.separadorDecimal, u'.');
}
