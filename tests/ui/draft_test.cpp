#include "support/clinic.h"
#include "ui/draft.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

class Drafts : public Clinica
{
protected:
    Drafts() { s.carpetaDePrograma = carpeta.path() + u'/'; }
    const QVariantMap typed{{u"nom"_s, u"O'Hara \"ñ\"\n2"_s}, {u"nuevo"_s, true}, {u"id"_s, 42}};
};

TEST_F(Drafts, ADraftOutlivesTheProgramAndIsOfThisClinicAndFormAlone)
{
    Borrador(s, u"frmPropietarios"_s).Guardar(typed);
    const QVariantMap read = Borrador(s, u"frmPropietarios"_s).Leer();
    EXPECT_EQ(read[u"nom"_s], typed[u"nom"_s]);
    EXPECT_TRUE(read[u"nuevo"_s].toBool());
    EXPECT_EQ(read[u"id"_s].toInt(), 42);
    EXPECT_TRUE(Borrador(s, u"frmventas"_s).Leer().isEmpty());

    const QString here = s.carpetaDeDatos;
    s.carpetaDeDatos = u"/srv/other/"_s;
    EXPECT_TRUE(Borrador(s, u"frmPropietarios"_s).Leer().isEmpty());
    Borrador(s, u"frmPropietarios"_s).Guardar({});
    s.carpetaDeDatos = here;
    EXPECT_FALSE(Borrador(s, u"frmPropietarios"_s).Leer().isEmpty());
    Borrador(s, u"frmPropietarios"_s).Borrar();
    EXPECT_TRUE(Borrador(s, u"frmPropietarios"_s).Leer().isEmpty());
}

TEST_F(Drafts, OnlyThisUserCanReadIt)
{
    Borrador(s, u"frmx"_s).Guardar(typed);
    const auto files = QDir(carpeta.path()).entryInfoList({u"borrador-frmx-*"_s});
    ASSERT_EQ(files.size(), 1);
    EXPECT_FALSE(files[0].permissions()
                 & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther));
}

TEST_F(Drafts, WhatCannotBeKeptOrReadIsPassedOver)
{
    s.carpetaDePrograma = u"/nowhere/"_s;
    Borrador(s, u"frmx"_s).Guardar(typed);
    EXPECT_TRUE(Borrador(s, u"frmx"_s).Leer().isEmpty());
    s.carpetaDePrograma.clear();
    Borrador(s, u"frmx"_s).Guardar(typed);
    Borrador(s, u"frmx"_s).Borrar();

    s.carpetaDePrograma = carpeta.path() + u'/';
    Borrador(s, u"frmx"_s).Guardar(typed);
    QFile file(QDir(carpeta.path()).entryInfoList({u"borrador-frmx-*"_s})[0].filePath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("{\"nom\": ");
    file.close();
    EXPECT_TRUE(Borrador(s, u"frmx"_s).Leer().isEmpty()) << "a file cut short";
}
