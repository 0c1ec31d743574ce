#include "agenda/tasks.h"
#include "messages/templates.h"
#include "store/settings_row.h"
#include "support/clinic.h"
#include "texts/texts.h"

#include <QLocale>
#include <QSet>

using namespace messages;
using namespace Qt::StringLiterals;

namespace
{

class Templates : public Clinic
{
protected:
    Templates()
    {
        s.clinic = {u"El Ombú"_s, u"Dr. Ruiz"_s, u"Rivera 12"_s, u"555-0101"_s};
        s.clientes->Execute("insert into cldepartamento (id, nom) values (1, 'Centro')");
        s.clientes->Execute("insert into clientes (idc, ayn, dir, dep) values (7, 'Ana Paz', "
                            "'Mitre 3', 1)");
        s.clientes->Execute("insert into mascotas (idm, idc, nom) values (9, 7, 'Toby')");
    }
    void book(QTime hour)
    {
        agenda::Task t;
        t.tip = 1;
        t.ida = 9;
        t.dia = hoy;
        t.hor = hour;
        t.fcreacion = hoy;
        AgregarTarea(s, t);
    }
    QString fill(const QString &text) { return fillTags(s, text, 0, 9, 1); }

    const QLocale before; // the default locale, restored at the end
    ~Templates() override { QLocale::setDefault(before); }
};

} // namespace

TEST_F(Templates, EachKindAndMediumHasItsColumn)
{
    for (const Template &p : templates())
        store::saveSetting(s, p.column, QString::fromLatin1(p.column).toLower());
    store::saveSetting(s, "MensajeriaSoloADestacados", u"sent to featured"_s);
    QString all; // one line per kind: by mail, by letter, by either
    for (const int tip : {-41, -42, -43, -46, -49, -50, -51, -70, -71, -72, -44, 0, 5}) {
        QStringList texts;
        for (const int medium : {1, 2, 3})
            texts << ComponerMensaje(s, tip, 7, 9, 1, medium);
        if (texts.count(texts[0]) == 3)
            texts = {texts[0]};
        all += u"%1 %2\n"_s.arg(tip).arg(texts.join(u' ').remove(u"mensajeria"_s));
    }
    EXPECT_EQ(all, u"-41 alimento\n"
                   u"-42 vencimientosmail vencimientoscarta vencimientoscarta\n"
                   u"-43 deudoresmail deudorescarta deudorescarta\n"
                   u"-46 cumplemail cumplecarta cumplecarta\n"
                   u"-49 turno\n-50 descont\n"
                   u"-51 sent to featured\n" // On purpose: edited in one column, sent from another.
                   u"-70 medicinaprepaga\n-71 nuevocliente\n-72 frecuente\n"
                   u"-44 \n0 \n5 \n"_s);
}

TEST_F(Templates, TheListNamesThirteenEntriesWithTheirTexts)
{
    QSet<QString> columns, titles, helps;
    for (const Template &p : templates()) {
        EXPECT_NO_THROW(s.configuracion.Column(p.column)) << p.column;
        columns << QString::fromLatin1(p.column);
        titles << s(p.title);
        helps << s(p.help);
    }
    EXPECT_EQ(templates().size(), 13U);
    EXPECT_EQ(columns.size(), 13);
    EXPECT_EQ(titles.size(), 13);
    EXPECT_EQ(helps.size(), 13);
    EXPECT_TRUE(columns.contains(u"MensajeriaCumpleMailDestacados"_s));
}

TEST_F(Templates, TagsTakeTheirValuesWhateverTheirCase)
{
    s.finanzas->Execute("insert into articulos (ida, nom) values (900, 'Rabia')");
    EXPECT_EQ(fillTags(s,
                       u"<NomCli>|<dircli>|<NOMMAS>|<TraMas>|<ProVet>|<DirVet>|<TelVet>|"
                       u"<RazVet>|<other>|< NomCli >|"_s,
                       0, 9, 900),
              u"Ana Paz|Mitre 3, Centro|Toby|Rabia|Dr. Ruiz|Rivera 12|555-0101|El Ombú|||"_s);
    s.clientes->Execute("insert into clientes (idc, ayn) values (8, 'Eva Sol')");
    EXPECT_EQ(fillTags(s, u"<nomcli>, <nommas>"_s, 8, 9, 0), u"Eva Sol, Toby"_s)
        << "a client given goes before the patient's";
    EXPECT_EQ(fillTags(s, u"<nomcli><dircli><nommas><tramas><hortur>."_s, 0, 0, 0), u"."_s);
    for (const QString &tag : tags())
        EXPECT_TRUE(s(text::TagsHelp).contains(u'<' + tag + u'>')) << tag.toStdString();
}

TEST_F(Templates, AnOpenBracketConsumesTheRest)
{
    EXPECT_EQ(fill(u"Hi <nommas>, 3 < 4 and so on"_s), u"Hi Toby, 3 "_s);
    EXPECT_EQ(fill(u"a > b <<nommas>>"_s), u"a > b >"_s);
    EXPECT_EQ(fill(u"<"_s), u""_s);
    EXPECT_EQ(fill(u"<>it's\n\"x\""_s), u"it's\n\"x\""_s);
}

TEST_F(Templates, WhatATagBringsIsNotReadAgain)
{
    s.clientes->Execute("update clientes set ayn = '<nommas> < x' where idc = 7");
    EXPECT_EQ(fill(u"<nomcli>/<nommas>"_s), u"<nommas> < x/Toby"_s);
}

TEST_F(Templates, DayAndHourFollowTheLocale)
{
    EXPECT_EQ(fill(u"[<hortur>]"_s), u"[]"_s) << "no appointment";
    book(QTime(16, 30));
    const auto in = [this](QLocale::Language language, QLocale::Country country) {
        QLocale::setDefault({language, country});
        return fill(u"<fecdia> - <hortur>"_s);
    };
    EXPECT_EQ(in(QLocale::Spanish, QLocale::Uruguay),
              u"miércoles, 11 de marzo de 2026 - 16:30:00"_s);
    EXPECT_EQ(in(QLocale::Portuguese, QLocale::Brazil),
              u"quarta-feira, 11 de março de 2026 - 16:30:00"_s);
    EXPECT_EQ(in(QLocale::English, QLocale::UnitedStates),
              u"Wednesday, March 11, 2026 - 4:30:00 PM"_s);
}

TEST_F(Templates, TheExampleIsTheSessionsClientOrTheFirst)
{
    const auto example = [this](int idc = 0) {
        const auto e = messageExample(s, idc);
        return e ? u"%1 %2 %3"_s.arg(e->idc).arg(e->idm).arg(e->ida) : u"none"_s;
    };
    s.clientes->Execute("insert into clientes (idc, ayn) values (8, 'Eva Sol')");
    s.clientes->Execute("insert into mascotas (idm, idc, nom) values (10, 7, 'Luna')");
    s.clientes->Execute("insert into artplan (idm, ida) values (10, 35)");
    s.finanzas->Execute("insert into articulos (ida, nom, idcat) values (4, 'Collar', 8)");
    s.finanzas->Execute("insert into articulos (ida, nom, idcat) values (5, 'Rabia', 3)");
    EXPECT_EQ(example(), u"7 9 5"_s);
    s.IdGlobal = {7, 10};
    EXPECT_EQ(example(), u"7 10 35"_s);
    EXPECT_EQ(example(8), u"8 0 5"_s);
    s.IdGlobal = {99, 9}; // client deleted at another terminal
    EXPECT_EQ(example(), u"7 9 5"_s);
    s.clientes->Execute("delete * from clientes");
    EXPECT_EQ(example(), u"none"_s);
}
