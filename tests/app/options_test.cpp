#include "app/options.h"

#include <gtest/gtest.h>

using namespace app;

using namespace Qt::StringLiterals;

TEST(Options, TakesWhatItOffersAndRefusesTheRest)
{
    QString error;
    const auto read = [&error](const QString &line) {
        return readOptions(line.split(u' ', Qt::SkipEmptyParts), &error);
    };
    const auto nothing = read({});
    ASSERT_TRUE(nothing);
    EXPECT_EQ(nothing->mode, Options::Mode::Window);
    const auto demo = read(u"--crear /x --idioma pt --demo"_s);
    ASSERT_TRUE(demo);
    EXPECT_TRUE(demo->mode == Options::Mode::Create && demo->demo && demo->create == u"/x"
                && demo->language == store::Language::Portuguese);
    const auto cron = read(u"--datos /x --desatendido"_s);
    ASSERT_TRUE(cron);
    EXPECT_TRUE(cron->mode == Options::Mode::Unattended && cron->data == u"/x");
    const auto importing = read(u"--importar a.csv --datos /x --confirmar --columnas Pet=mascota "
                                "--fechas mda --propietario Shelter"_s);
    ASSERT_TRUE(importing);
    EXPECT_TRUE(importing->mode == Options::Mode::Import && importing->importing == u"a.csv"
                && importing->confirm && importing->columns == u"Pet=mascota"
                && importing->dates == u"mda" && importing->owner == u"Shelter");
    EXPECT_FALSE(read(u"--importar a.csv"_s)->confirm);
    for (const auto &bad : {u"--importar"_s, u"--confirmar"_s, u"--importar a --fechas amd"_s,
                            u"--importar a --columnas"_s, u"--propietario x"_s})
        EXPECT_FALSE(read(bad)) << bad.toStdString();
    const auto clinic = read(u"--crear /x --usuario Eva --veterinaria Norte"_s);
    ASSERT_TRUE(clinic);
    EXPECT_EQ(clinic->user + u'|' + clinic->clinic, u"Eva|Norte"_s);
    for (const auto &bad : {u"--crear /x --veterinaria Norte"_s, u"--usuario Eva"_s,
                            u"--crear /x --demo --usuario Eva"_s, u"--crear /x --usuario"_s})
        EXPECT_FALSE(read(bad)) << bad.toStdString();
    for (const auto &bad : {u"--datos"_s, u"--crear"_s, u"--idioma de"_s, u"--demo"_s, u"algo"_s})
        EXPECT_FALSE(read(bad)) << bad.toStdString();
}
