#include "app/options.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Opciones, TakesWhatItOffersAndRefusesTheRest)
{
    QString error;
    const auto leer = [&error](const QString &linea) {
        return LeerOpciones(linea.split(u' ', Qt::SkipEmptyParts), &error);
    };
    const auto nada = leer({});
    ASSERT_TRUE(nada);
    EXPECT_EQ(nada->modo, Opciones::Modo::Ventana);
    const auto demo = leer(u"--crear /x --idioma pt --demo"_s);
    ASSERT_TRUE(demo);
    EXPECT_TRUE(demo->modo == Opciones::Modo::Crear && demo->demo && demo->crear == u"/x"
                && demo->idioma == Idioma::Portugues);
    const auto cron = leer(u"--datos /x --desatendido"_s);
    ASSERT_TRUE(cron);
    EXPECT_TRUE(cron->modo == Opciones::Modo::Desatendido && cron->datos == u"/x");
    const auto importar = leer(u"--importar a.csv --datos /x --confirmar --columnas Pet=mascota "
                               "--fechas mda --propietario Shelter"_s);
    ASSERT_TRUE(importar);
    EXPECT_TRUE(importar->modo == Opciones::Modo::Importar && importar->importar == u"a.csv"
                && importar->confirmar && importar->columnas == u"Pet=mascota"
                && importar->fechas == u"mda" && importar->propietario == u"Shelter");
    EXPECT_FALSE(leer(u"--importar a.csv"_s)->confirmar);
    for (const auto &mala : {u"--importar"_s, u"--confirmar"_s, u"--importar a --fechas amd"_s,
                             u"--importar a --columnas"_s, u"--propietario x"_s})
        EXPECT_FALSE(leer(mala)) << mala.toStdString();
    for (const auto &mala : {u"--datos"_s, u"--crear"_s, u"--idioma de"_s, u"--demo"_s, u"algo"_s})
        EXPECT_FALSE(leer(mala)) << mala.toStdString();
}
