#include "support/clinic.h"
#include "ui/draft.h"

#include <QDir>
#include <QFileInfo>

using namespace ui;
using namespace Qt::StringLiterals;

class Drafts : public Clinic
{
protected:
    Drafts() { s.programFolder = folder.path() + u'/'; }
    const QVariantMap typed{{u"nom"_s, u"O'Hara \"ñ\"\n2"_s}, {u"nuevo"_s, true}, {u"id"_s, 42}};
};

TEST_F(Drafts, ADraftOutlivesTheProgramAndIsOfThisClinicAndFormAlone)
{
    Draft(s, u"frmPropietarios"_s).save(typed);
    const QVariantMap read = Draft(s, u"frmPropietarios"_s).read();
    EXPECT_EQ(read[u"nom"_s], typed[u"nom"_s]);
    EXPECT_TRUE(read[u"nuevo"_s].toBool());
    EXPECT_EQ(read[u"id"_s].toInt(), 42);
    EXPECT_TRUE(Draft(s, u"frmventas"_s).read().isEmpty());

    const QString here = s.dataFolder;
    s.dataFolder = u"/srv/other/"_s;
    EXPECT_TRUE(Draft(s, u"frmPropietarios"_s).read().isEmpty());
    Draft(s, u"frmPropietarios"_s).save({});
    s.dataFolder = here;
    EXPECT_FALSE(Draft(s, u"frmPropietarios"_s).read().isEmpty());
    Draft(s, u"frmPropietarios"_s).clear();
    EXPECT_TRUE(Draft(s, u"frmPropietarios"_s).read().isEmpty());
}

TEST_F(Drafts, OnlyThisUserCanReadIt)
{
    Draft(s, u"frmx"_s).save(typed);
    const auto files = QDir(folder.path()).entryInfoList({u"borrador-frmx-*"_s});
    ASSERT_EQ(files.size(), 1);
    EXPECT_FALSE(files[0].permissions()
                 & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther));
}

TEST_F(Drafts, WhatCannotBeKeptOrReadIsPassedOver)
{
    s.programFolder = u"/nowhere/"_s;
    Draft(s, u"frmx"_s).save(typed);
    EXPECT_TRUE(Draft(s, u"frmx"_s).read().isEmpty());
    s.programFolder.clear();
    Draft(s, u"frmx"_s).save(typed);
    Draft(s, u"frmx"_s).clear();

    s.programFolder = folder.path() + u'/';
    Draft(s, u"frmx"_s).save(typed);
    QFile file(QDir(folder.path()).entryInfoList({u"borrador-frmx-*"_s})[0].filePath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("{\"nom\": ");
    file.close();
    EXPECT_TRUE(Draft(s, u"frmx"_s).read().isEmpty()) << "a file cut short";
}
