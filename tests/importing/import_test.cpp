#include "importing/delimited_file.h"
#include "importing/frmimportar.h"
#include "importing/import.h"
#include "store/settings_row.h"
#include "support/clinic.h"
#include "texts/clients.h"
#include "texts/import.h"
#include "texts/texts.h"
#include "ui/grid.h"

#include <QComboBox>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QUrl>

using namespace importing;
using namespace Qt::StringLiterals;

class Import : public Clinic
{
protected:
    QString fileOf(const QByteArray &bytes)
    {
        const QString name = folder.filePath(u"registro.csv"_s);
        QFile f(name);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
        return name;
    }
    // The records of a file, one per line, each preceded by the number of its first line.
    QString hasBeenRead(const QByteArray &bytes)
    {
        DelimitedFile a(fileOf(bytes));
        QString t;
        for (QStringList fields; a.read(fields);)
            t += QString::number(a.Line()) + u':' + fields.join(u'|') + u'\n';
        return t;
    }
    static QString names(const QList<Datum> &data)
    {
        QStringList n;
        for (const Datum d : data)
            n << datumName(d);
        return n.join(u' ');
    }
    static QByteArray manyRows(int n)
    {
        QByteArray rows = "cliente,mascota\n";
        for (int i = 0; i < n; ++i)
            rows += "Cliente " + QByteArray::number(i) + " x,Rex\n";
        return rows;
    }
    int Account(const char *table)
    {
        return s.clientes->read("select count(*) from " + std::string(table)).toInt();
    }
    ImportOptions options(const QByteArray &bytes, const QString &columns = {})
    {
        ImportOptions o;
        o.file = fileOf(bytes);
        const FileView v = inspectFile(s, o.file, 1);
        EXPECT_EQ(v.failure, QString());
        o.columns = v.columns;
        EXPECT_EQ(applyColumns(s, columns, v.titles, o.columns), QString());
        return o;
    }
    // The counts (clients and patients, new and existing; rejected), then the outcome of each line.
    static std::string text(const ImportReport &i)
    {
        QString t = u"%1+%2 %3+%4 %5\n"_s.arg(i.newClients)
                        .arg(i.existingClients)
                        .arg(i.newPatients)
                        .arg(i.existingPatients)
                        .arg(i.rejected);
        for (const ReportLine &l : i.lines)
            t += QString::number(l.line) + u"NERX"_s[int(l.outcome)] + u' ' + l.text + u'\n';
        return t.replace(u" \n"_s, u"\n"_s).toStdString();
    }
    QString all()
    {
        QString t;
        for (const char *table : {"clientes", "mascotas", "mlrazas", "mlespecies", "cllocalidad"})
            t += allRows(*s.clientes, "select * from " + std::string(table) + " order by 1");
        return t + allRows(*s.morvane, "select idc from perfiles order by idc")
               + allRows(*s.morvane, "select contadorclientes, contadormascotas, contadorraza,"
                                     " contadorespecie, contadorpelaje from configuracion");
    }
    // Imports twice: the second time everything exists already and nothing changes.
    ImportReport twoTimes(const ImportOptions &o)
    {
        const ImportReport i = importFile(s, o);
        const QString after = all();
        const ImportReport other = importFile(s, o);
        EXPECT_EQ(other.newClients + other.newPatients, 0);
        EXPECT_EQ(other.rejected, i.rejected);
        EXPECT_EQ(all(), after);
        return i;
    }
};

TEST_F(Import, RecordsAreReadWhateverWroteThem)
{
    EXPECT_EQ(hasBeenRead("\xEF\xBB\xBF"
                          "a,b\r\n\r\n\"x, \"\"y\"\"\nz\",2\r\nlast,\"\""_ba),
              u"1:a|b\n3:x, \"y\"\nz|2\n5:last|\n"_s);
    // Another separator inside quotes, or in some records only, is not mistaken for the real one.
    EXPECT_EQ(hasBeenRead("a;b\n\"1,2\";3,5\n\"4,4\";5,5\n"_ba),
              u"1:a|b\n2:1,2|3,5\n3:4,4|5,5\n"_s);
    // Nor does a quotation mark matter that only counts with another separator.
    EXPECT_EQ(hasBeenRead("a;b\n1,\"x;2\n"_ba), u"1:a|b\n2:1,\"x|2\n"_s);
    EXPECT_EQ(hasBeenRead("a\tb\n1;1\t2\n"_ba), u"1:a|b\n2:1;1|2\n"_s);
    EXPECT_EQ(hasBeenRead("a\r1 \"no\" quote\r"_ba), u"1:a\n2:1 \"no\" quote\n"_s);
    EXPECT_EQ(hasBeenRead(""_ba), QString());

    EXPECT_EQ(hasBeenRead("\xC3\xB1,\xE2\x82\xAC\n"_ba), u"1:ñ|€\n"_s);
    EXPECT_EQ(hasBeenRead("\xF1,\x80\n"_ba), u"1:ñ|€\n"_s);
    EXPECT_EQ(hasBeenRead("\x9F,x\xA0y\n"_ba), u"1:Ÿ|x\u00A0y\n"_s) << "both ends of the range";
    EXPECT_EQ(hasBeenRead("a,\xC3"_ba), u"1:a|Ã\n"_s); // cut off inside a character: not UTF-8
    // A character across the boundary between two blocks that are read.
    for (const int before : {262142, 262143, 262144}) {
        const QString length = hasBeenRead(QByteArray(before, 'x') + "\xE2\x82\xAC,b\r\nc,d\r\n");
        EXPECT_TRUE(length.endsWith(u"x€|b\n2:c|d\n"_s)) << before;
    }
}

TEST_F(Import, WhatIsNoTableIsRefusedWithItsReason)
{
    const auto failure = [this](const QByteArray &bytes) {
        return inspectFile(s, fileOf(bytes), 3).failure;
    };
    EXPECT_EQ(failure("PK\x03\x04\0\0"_ba.append('\0')), s(text::FileIsNotText));
    EXPECT_EQ(failure("\xFF\xFE"
                      "a\0,\0"_ba.append('\0')),
              s(text::FileIsNotText));
    EXPECT_EQ(failure(""_ba), s(text::FileIsEmpty));
    EXPECT_EQ(failure("a,b\n1,\"2\n3,4\n"_ba), s(text::QuotesNotClosed).arg(2));
    EXPECT_EQ(failure(QByteArray(3'000'000, ',')), s(text::FileIsNotText));
    const QString nothing = folder.filePath(u"no.csv"_s);
    EXPECT_TRUE(
        inspectFile(s, nothing, 3).failure.startsWith(s(text::FileUnreadable).arg(QString())));
    EXPECT_TRUE(inspectFile(s, folder.path(), 3)
                    .failure.startsWith(s(text::FileUnreadable).arg(QString())));

    // An open quotation mark near the end is found on reading everything, and nothing is written.
    ImportOptions o =
        options("cliente,mascota\n"_ba + QByteArray("A B,x\n").repeated(99) + "C,\"x\n");
    const ImportReport i = importFile(s, o);
    EXPECT_EQ(i.missing, ImportReport::Missing::File);
    EXPECT_EQ(i.failure, s(text::QuotesNotClosed).arg(101));
    EXPECT_EQ(Account("clientes"), 0);
}

TEST_F(Import, TitlesAreRecognisedInThreeLanguages)
{
    const auto data = [](const QString &titles) {
        return names(recogniseTitles(titles.split(u',')));
    };
    EXPECT_EQ(data(u"License Issue Date,License Number,Animal's Name,Species,Primary Breed,"
                   "Secondary Breed,ZIP Code"_s),
              u"nada idmascota mascota especie raza nada cp"_s);
    EXPECT_EQ(data(u"PROPIETARIO,Teléfono,Correo electrónico,Mascota,Fecha de Nacimiento,Señas"_s),
              u"cliente telefono email mascota nacimiento marcas"_s);
    EXPECT_EQ(data(u"nome_do_tutor,Endereço,CEP,nome_do_pet,Espécie,Raça,Data de nascimento"_s),
              u"cliente direccion cp mascota especie raza nacimiento"_s);
    // The other columns decide whose name, number and notes these are.
    EXPECT_EQ(data(u"id,nombre,apellido,notas"_s), u"idcliente cliente apellido notascliente"_s);
    EXPECT_EQ(data(u"id,nombre,especie,dueño,obs"_s),
              u"idmascota mascota especie cliente notasmascota"_s);
    EXPECT_EQ(data(u"name,breed,sex"_s), u"mascota raza sexo"_s);
    EXPECT_EQ(data(u"cliente,cliente"_s), u"cliente nada"_s);

    QStringList titles{u"A, b"_s, u"ZIP"_s, u"Raza"_s};
    QList<Datum> columns = recogniseTitles(titles);
    EXPECT_EQ(applyColumns(s, u"1=mascota,zip=nada,Raza=Pelaje"_s, titles, columns), QString());
    EXPECT_EQ(names(columns), u"mascota nada pelaje"_s);
    EXPECT_EQ(applyColumns(s, u"2=mascota"_s, titles, columns), QString());
    EXPECT_EQ(names(columns), u"nada mascota pelaje"_s); // no datum twice
    EXPECT_EQ(applyColumns(s, u"Zap=raza"_s, titles, columns), s(text::NoSuchColumn).arg(u"Zap"_s));
    EXPECT_EQ(applyColumns(s, u"4=raza"_s, titles, columns), s(text::NoSuchColumn).arg(u"4"_s));
    EXPECT_TRUE(applyColumns(s, u"1=cola"_s, titles, columns).contains(u"\"cola\""));
}

TEST_F(Import, DatesAreReadAsTheyAreWritten)
{
    const auto dia = [](const QString &t, DateOrder order = DateOrder::DayMonth) {
        return readDate(t, order).toString(Qt::ISODate);
    };
    EXPECT_EQ(dia(u"3/4/2015"_s), u"2015-04-03");
    EXPECT_EQ(dia(u"3-4-15"_s, DateOrder::MonthDay), u"2015-03-04");
    EXPECT_EQ(dia(u"12/25/2019"_s), u"2019-12-25"); // only one order is possible
    EXPECT_EQ(dia(u"1.1.29"_s), u"2029-01-01");
    EXPECT_EQ(dia(u"1.1.30"_s), u"1930-01-01");
    for (const auto &t : {u"2015-12-18"_s, u"2015/12/18"_s, u"20151218"_s,
                          u"2015-12-18T00:00:00Z"_s, u"18/12/2015 10:30"_s, u"December 18 2015"_s,
                          u"Dec. 18th, 2015"_s, u"18 December 2015"_s, u"18 de diciembre de 2015"_s,
                          u"18-dic-15"_s, u"18 de Dezembro de 2015"_s, u"2015 December 18"_s})
        EXPECT_EQ(dia(t), u"2015-12-18") << t.toStdString();
    EXPECT_EQ(dia(u"1º de março de 2020"_s), u"2020-03-01");
    EXPECT_EQ(dia(u"1971"_s), u"1971-01-01");
    for (const auto &t : {u"11"_s, u"18"_s, u"31/02/2015"_s, u"13/13/2013"_s, u"Mischling"_s,
                          u"3 Ene"_s, u"1/1/1"_s, u"99999999999/1/1"_s, u"__/__/____"_s, u"?"_s})
        EXPECT_EQ(dia(t), QString()) << t.toStdString();
    EXPECT_EQ(orderThatTests(u"13/4/15"_s), OrderTest::DayMonth);
    EXPECT_EQ(orderThatTests(u"4/13/15"_s), OrderTest::MonthDay);
    EXPECT_EQ(orderThatTests(u"4/3/15"_s), OrderTest::Ambiguous);
    for (const auto &t : {u"4/4/15"_s, u"2015-03-04"_s, u"1971"_s, u"3 mar 2015"_s, u"40/1/15"_s})
        EXPECT_EQ(orderThatTests(t), OrderTest::None) << t.toStdString();
}

TEST_F(Import, WordsOfSexSpeciesAndWeightAreUnderstood)
{
    const QString cases[] = {u"Macho|M|male|masculino|macho entero|Macho sin castrar"_s,
                             u"Hembra|f|H|Fêmea|female (not spayed)"_s,
                             u"Neutered male|macho castrado|MC|castrated male"_s,
                             u"hembra esterilizada|Fêmea castrada|spayed female|FS"_s};
    for (int sex = 0; sex < 4; ++sex)
        for (const QString &t : cases[sex].split(u'|'))
            EXPECT_EQ(readSex(t), sex) << t.toStdString();
    EXPECT_EQ(readSex(u"y"_s), std::nullopt);
    EXPECT_EQ(readSex(u"castrado"_s), std::nullopt);
    EXPECT_EQ(readYesNo(u"Sí"_s), true);
    EXPECT_EQ(readYesNo(QString()), false);
    EXPECT_EQ(readYesNo(u"quizás"_s), std::nullopt);
    EXPECT_EQ(knownSpecies(u"Perro"_s), 1);
    EXPECT_EQ(knownSpecies(u"CAT"_s), 2);
    EXPECT_EQ(knownSpecies(u"égua"_s), 3);
    EXPECT_EQ(readWeight(u"12,5 kg"_s), 12.5);
    EXPECT_EQ(readWeight(u"gordo"_s), std::nullopt);
    const std::initializer_list<std::pair<QString, QString>> units = {
        {u"kg"_s, u"12,5 Kg.|3kilos|Weight (kg)|peso_kg|PesoEnKg"_s},
        {u"lb"_s, u"26 lbs|26lb|Weight (Lbs.)|peso en libras|weight in pounds"_s},
        {u"g"_s, u"900 g|900grs|peso (gramos)"_s},
        {QString(), u"12,5|Peso|Weight|Dog"_s}};
    for (const auto &[unit, texts] : units)
        for (const QString &t : texts.split(u'|'))
            EXPECT_EQ(writtenUnit(t), unit) << t.toStdString();
}

TEST_F(Import, OwnersAndAnimalsAreWrittenAsTheRegistryWritesThem)
{
    const auto o =
        options("Apellido;Nombre;Tel\xE9"
                "fono;Celular;Email;Direcci\xF3n;Localidad;Provincia;CP;Mascota;"
                "Especie;Raza;Color;Sexo;Castrado;Nacimiento;Peso;Chip;Fallecido;Pedigree\r\n"
                "Garc\xED"
                "a;Ana;422-1234;155;ana@x.org;Calle 5;Tolosa;Buenos Aires;1900;Firulais;Perro;"
                "Beagle;Tricolor;M;s\xED;13/2/2019;12,5;985;no;s\xED\r\n"
                "Garc\xED"
                "a;Ana;4221234;;;;;;;Michi;Gato;;;hembra;;2013;;;s\xED;no\r\n"
                "D'Amico;Luz;;;;;12;;;Kid;Cabra;Criolla;;;;11;;;\r\n"
                "P\xE9rez;;;;;;;;;;;;;;;;;;\r\n"_ba);
    const QString before = all();
    EXPECT_EQ(text(testImport(s, o)), "3+0 3+0 0\n2N\n3N\n"
                                      "4N Birth date left empty: 11; "
                                      "Without its apostrophe: D'Amico Luz; "
                                      "A region cannot be a number, left empty: 12\n"
                                      "5N\n");
    EXPECT_EQ(all(), before); // a dry run
    const ImportReport i = twoTimes(o);
    EXPECT_TRUE(i.written && !i.interrupted);

    EXPECT_EQ(allRows(*s.clientes,
                      "select idc, ayn, dir, loc, dep, codp2, tel2, telc2, email, feci,"
                      " fecu, deuda, obra from clientes order by idc"),
              u"1|García Ana|Calle 5|1|1|1900|422-1234|155|ana@x.org|2026-03-11||0|0\n"
              "2|D Amico Luz||0|0|||||2026-03-11||0|0\n"
              "3|Pérez||0|0|||||2026-03-11||0|0\n"_s);
    EXPECT_EQ(allRows(*s.clientes, "select idm, idc, nom, esp, raz, pel, Chip, fecn, pes, sex, dec,"
                                   " ped, ser, feci, fot from mascotas order by idm"),
              u"1|1|Firulais|1|1|1|985|2019-02-13|12.5|2|0|-1|0|2026-03-11|0\n"
              "2|1|Michi|2|0|0||2013-01-01|0|1|-1|0|0|2026-03-11|0\n"
              "3|2|Kid|4|2|0|||0|0|0|0|0|2026-03-11|0\n"_s);
    EXPECT_EQ(allRows(*s.clientes, "select nom, esp, ran from mlrazas order by id"),
              u"Beagle|1|1\nCriolla|4|1\n"_s);
    EXPECT_EQ(allRows(*s.clientes, "select nom, cp, dep, ran from cllocalidad"),
              u"Tolosa|1900|1|1\n"_s);
    EXPECT_EQ(allRows(*s.clientes, "select nom from mlespecies where id > 3"), u"Cabra\n"_s);
    EXPECT_EQ(allRows(*s.morvane, "select idc from perfiles order by idc"), u"1\n2\n3\n"_s);
}

TEST_F(Import, WhatStandsForNothingOrTellsOtherwiseIsUnderstood)
{
    const auto o = options("Cod Cliente,cliente,mascota,cp,fallecido\n"
                           "18,---,Rex,12345678901,13/2/2019\n"
                           "18,Ana,Mia,1234567890,-\n"
                           "19,???,Sol,,\n"_ba);
    EXPECT_EQ(text(twoTimes(o)), "2+0 3+0 0\n"
                                 "2N Postal code too long, left empty: 12345678901\n3N\n4N\n");
    EXPECT_EQ(allRows(*s.clientes, "select ayn, codp2 from clientes order by idc"),
              u"Ana|1234567890\nOwner 19|\n"_s);
    EXPECT_EQ(allRows(*s.clientes, "select nom, idc, dec from mascotas order by idm"),
              u"Rex|1|-1\nMia|1|0\nSol|2|0\n"_s);
}

TEST_F(Import, LinesThatCannotBeTakenSayWhy)
{
    const QByteArray length(60, 'x');
    const auto o = options("cliente,telefono,mascota,especie,sexo,peso,nacimiento\n"
                           "Ana,1,,Dog,,,\n"
                           ",1,Rex,Dog,,,\n"
                           "Ana,1,99,Dog,,,\n"
                           "123,1,Rex,Dog,,,\n"
                           "Ana,1,Rex,Dog,m,1,2013,too,many\n"
                           "Ana,\"4222-1111, 4222-2222, 4222-3333\","
                           + length
                           + ",Dog,y,gordo,5018\n"
                             "Ana\n");
    EXPECT_EQ(text(twoTimes(o)),
              "1+0 1+0 5\n"
              "2R The patient has no name\n3R The client has no name\n"
              "4R A number is no name: 99\n5R A number is no name: 123\n"
              "6R The line has 9 fields and there are 7 titles\n"
              "7N Cut short: "
                  + length.toStdString()
                  + "; Birth date left empty: 5018; Weight left at zero: gordo; Sex not known, "
                    "taken as male: y; Cut short: 4222-1111, 4222-2222, 4222-3333\n8E\n");
    // Only the telephones that fit completely.
    EXPECT_EQ(allRows(*s.clientes, "select tel2 from clientes"), u"4222-1111, 4222-2222\n"_s);
}

TEST_F(Import, WhatTheImportBringsAboutIsToldBefore)
{
    store::saveSetting(s, "AutNuevoCliente", 1);
    store::saveSetting(s, "KgLbs", 1);
    const auto o = options("owner,email,pet,weight lbs\nAnn,a@x.org,Rex,20\nBea,,Tom,9 kg\n"
                           "Cal,,Bob,30 lb\n"_ba,
                           u"weight lbs=peso"_s);
    const ImportReport i = testImport(s, o);
    ASSERT_EQ(i.notes.size(), 2);
    EXPECT_EQ(i.notes[0], s(text::WeightUnitNote).arg(u"kg"_s, u"weight lbs"_s));
    EXPECT_TRUE(i.notes[1].contains(s(text::NewClientQuestion))
                && i.notes[1].contains(s(text::Automation)));
    EXPECT_EQ(text(i), "3+0 3+0 0\n2N\n3N\n4N The weight is taken in kg as it stands: 30 lb\n");
    EXPECT_EQ(importFile(s, o).notes, i.notes);
    EXPECT_EQ(testImport(s, o).notes.size(), 1) << "nobody is new now";
    store::saveSetting(s, "KgLbs", 2);
    store::saveSetting(s, "AutNuevoCliente", 2);
    s.clientes->Execute("delete * from clientes");
    EXPECT_EQ(testImport(s, o).notes, QStringList());
}

TEST_F(Import, AnEntryIsWrittenWithItsParentThoughNoWrittenRowNamesIt)
{
    s.clientes->Execute("insert into clientes (idc, ayn, tel2) values (1, 'Ana', '555001')");
    store::saveSetting(s, "contadorclientes", 1);
    const auto o = options("cliente,telefono,localidad,provincia\nAna,555001,Tolosa,Norte\n"
                           "Bea,555002,Tolosa,\n"_ba);
    EXPECT_EQ(text(twoTimes(o)), "1+1 0+0 0\n2E\n3N\n");
    EXPECT_EQ(allRows(*s.clientes, "select nom, ran from cldepartamento"), u"Norte|0\n"_s);
    EXPECT_EQ(allRows(*s.clientes, "select l.nom, d.nom, l.ran from cllocalidad as l inner join "
                                   "cldepartamento as d on l.dep = d.id"),
              u"Tolosa|Norte|1\n"_s);
}

TEST_F(Import, OneOwnerIsFoundAgainAndNamesakesAreToldApart)
{
    s.clientes->Execute(
        "insert into clientes (idc, ayn, tel2) values (1, 'María García', '422 1')");
    s.clientes->Execute("insert into clientes (idc, ayn, tel2) values (2, 'Juan Sosa', '4331234')");
    s.clientes->Execute("insert into mascotas (idm, idc, nom, esp, fecn) values "
                        "(1, 2, 'Luna', 2, ?)",
                        QDate(2019, 1, 1));
    store::saveSetting(s, "contadorclientes", 2);
    store::saveSetting(s, "contadormascotas", 1);
    const auto o = options("cliente,telefono,email,mascota,especie,nacimiento\n"
                           "MARÍA GARCÍA,999999,,Tom,cat,\n"   // other telephone: other client
                           "María García,,m@x.org,Pipo,dog,\n" // the row before, or the clinic's?
                           "Juan Sosa,433-1234,,luna,gato,2019-01-01\n" // known, with the same cat
                           "Juan Sosa,,,Luna,dog,\n"                    // another Luna
                           "Juan Sosa,,,Luna,dog,2020-05-05\n"          // the dog again
                           "Juan Sosa,,,Luna,cat,2021-01-01\n");
    EXPECT_EQ(text(twoTimes(o)), "1+1 4+2 0\n2N\n3N\n4E\n5N\n6E Repeats line 5\n7N\n");
    EXPECT_EQ(allRows(*s.clientes, "select idc, ayn, tel2, email from clientes order by idc"),
              u"1|María García|422 1|\n2|Juan Sosa|4331234|\n"
              "3|MARÍA GARCÍA|999999|m@x.org\n"_s);
    // What only the dog's second line says is not lost.
    EXPECT_EQ(allRows(*s.clientes, "select idm, nom, esp, fecn from mascotas where idc = 2"),
              u"1|Luna|2|2019-01-01\n4|Luna|1|2020-05-05\n5|Luna|2|2021-01-01\n"_s);
}

TEST_F(Import, NumbersOfOwnersAndAnimalsTellThemApart)
{
    // Identifiers beyond 16 bits, and no names at all.
    const auto dogs = options("ID Tutor,Raza\n105585,Mops\n105585,Mops\n574,Pudel\n"_ba);
    const ImportReport i = twoTimes(dogs);
    EXPECT_EQ(text(i), "2+0 3+0 0\n2N\n3N\n4N\n");
    EXPECT_EQ(i.notes, QStringList(s(text::NoPatientNamesNote)));
    EXPECT_EQ(allRows(*s.clientes,
                      "select c.ayn, m.nom from clientes as c inner join mascotas as m "
                      "on c.idc = m.idc order by m.idm"),
              u"Owner 105585|Patient 1\nOwner 105585|Patient 2\nOwner 574|Patient 1\n"_s);

    // Namesakes with different numbers are two owners, unless they share a telephone.
    const auto namesakes = options("owner id,owner,phone,pet id,pet\n"
                                   "1,Ann Lee,,a1,Rex\n2,Ann Lee,,a2,Rex\n2,Ann Lee,555001,a2,Rex\n"
                                   "3,Ann Lee,555001,a3,Rex\n3,Ann Lee,,a3,Tom\n");
    EXPECT_EQ(text(twoTimes(namesakes)), "2+0 4+1 0\n2N\n3N\n4E Repeats line 3\n5N\n6N\n");
}

TEST_F(Import, AnimalsWithoutOwnersGoToOneClient)
{
    auto o = options("License Number,Animal's Name,Species,ZIP Code\n"
                     "S1,Luna,Dog,98117\nS2,Luna,Dog,98115\nS3,O'Malley,Pig,98115\nS4,,Cat,\n"_ba);
    EXPECT_EQ(importFile(s, o).missing, ImportReport::Missing::Owner);
    o.owner = u"123"_s;
    EXPECT_EQ(importFile(s, o).missing, ImportReport::Missing::Owner);
    o.owner = u"Town register"_s;
    const ImportReport i = twoTimes(o);
    EXPECT_EQ(text(i), "1+0 3+0 1\n2N\n3N\n4N Without its apostrophe: O'Malley\n"
                       "5R The patient has no name\n");
    EXPECT_EQ(i.notes, QStringList(s(text::ClientsUnusedNote)));
    EXPECT_EQ(allRows(*s.clientes, "select ayn, codp2 from clientes"), u"Town register|\n"_s);

    o.columns.fill(Datum::Nothing);
    EXPECT_EQ(testImport(s, o).missing, ImportReport::Missing::ColumnCount);
}

TEST_F(Import, TheOrderOfDaysIsFoundOrAskedFor)
{
    const auto born = [this](const QByteArray &rows, std::optional<DateOrder> order = {}) {
        auto o = options("cliente,mascota,nacimiento\n"_ba + rows);
        o.order = order;
        s.clientes->Execute("delete * from mascotas");
        return importFile(s, o).missing == ImportReport::Missing::Order
                   ? u"?"_s
                   : allRows(*s.clientes, "select fecn from mascotas order by idm");
    };
    EXPECT_EQ(born("A,x,3/4/2015\nA,y,4/25/2015\n"), u"2015-03-04\n2015-04-25\n"_s);
    EXPECT_EQ(born("A,x,3/4/2015\nA,y,25/4/2015\n"), u"2015-04-03\n2015-04-25\n"_s);
    EXPECT_EQ(born("A,x,3/4/2015\n"), u"?"_s);
    EXPECT_EQ(born("A,x,3/4/2015\n", DateOrder::MonthDay), u"2015-03-04\n"_s);
    EXPECT_EQ(born("A,x,3/4/2015\nA,y,25/4/2015\nA,z,4/25/2015\n"), u"?"_s); // contradictory
    EXPECT_EQ(born("A,x,25/4/2015\nA,z,4/25/2015\nA,w,12/3/2030\n"),
              u"?"_s); // the last one is ambiguous
    EXPECT_EQ(born("A,x,2015-03-04\nA,z,5/5/2030\n"), u"2015-03-04\n\n"_s); // not born yet
}

TEST_F(Import, NothingIsWrittenBeyondTheLastIdentifier)
{
    store::saveSetting(s, "contadormascotas", 32765);
    const auto o =
        options("cliente,mascota\nAna,a\nBea,b\nAna,A\nCarla,c\nAna,\nDora,\nBea,d\n"_ba);
    const ImportReport dry = testImport(s, o);
    EXPECT_EQ(text(dry), "2+0 2+1 0\n2N\n3N\n4E Repeats line 2\n5X\n6E\n7X\n8X\n");
    EXPECT_EQ(dry.withoutPlace * 100 + dry.firstWithoutPlace, 305);
    EXPECT_EQ(text(twoTimes(o)), text(dry));
    EXPECT_EQ(allRows(*s.clientes, "select idm from mascotas order by idm"), u"32766\n32767\n"_s);
    EXPECT_EQ(allRows(*s.clientes, "select ayn from clientes order by idc"), u"Ana\nBea\n"_s);

    // Species end at 255, so the animal is imported without one.
    s.morvane->Execute("update configuracion set contadormascotas = 2, contadorespecie = 255");
    s.configuracion.Requery();
    EXPECT_EQ(
        text(importFile(s, options("cliente,mascota,especie\nAna,z,Pulpo\nAna,y,Perro\n"_ba))),
        "0+1 2+0 0\n2N The list is full, left empty: Pulpo\n3N\n");
}

TEST_F(Import, WhatWasWrittenBeforeAStopStaysAndIsTold)
{
    const auto o = options(manyRows(1300));
    int times = 0;
    s.progress.bar = [&](int done, int total) { times += done <= total; };
    const ImportReport cut = importFile(s, o, [&] { return times < 3; });
    EXPECT_TRUE(cut.interrupted && cut.written);
    EXPECT_EQ(cut.newPatients, Account("mascotas"));
    EXPECT_EQ(cut.newClients, Account("clientes"));
    EXPECT_EQ(int(cut.lines.size()), cut.newClients);
    EXPECT_EQ(cut.newClients, 500);

    // A failure in a later batch undoes only that batch.
    s.clientes->Execute("insert into mascotas (idm, idc, nom) values (1100, 0, 'x')");
    const ImportReport broken = importFile(s, o);
    EXPECT_TRUE(broken.interrupted && !broken.failure.isEmpty());
    EXPECT_EQ(broken.newClients, 500);
    EXPECT_EQ(Account("clientes"), 1000);
    EXPECT_EQ(s.clientes->read("select max(idm) from mascotas where idm <> 1100").toInt(), 1000);
    EXPECT_EQ(s.morvane->read("select contadormascotas from configuracion").toInt(), 1000);

    s.clientes->Execute("delete * from mascotas where idm = 1100");
    const ImportReport rest = twoTimes(o);
    EXPECT_EQ(rest.newClients * 10000 + rest.existingClients, 3001000);
    EXPECT_EQ(s.morvane->read("select count(*) from perfiles").toInt(), 1300);
}

class ImportForm : public Import
{
protected:
    ImportForm()
    {
        s.programFolder = folder.path() + u'/';
        form.emplace(s);
        form->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&*form));
    }
    template <typename W>
    W *control(const QString &name)
    {
        W *w = form->findChild<W *>(name);
        EXPECT_NE(w, nullptr) << name.toStdString();
        return w;
    }
    QPushButton *buttonOf(const QString &name) { return control<QPushButton>(name); }
    QComboBox *Column(int n) { return control<QComboBox>(u"cmbColumna%1"_s.arg(n)); }
    void open(const QByteArray &bytes) { form->opened({{u"archivo"_s, fileOf(bytes)}}); }
    QString noticeOf() { return control<QLabel>(u"Ayu"_s)->text(); }
    static void choose(QComboBox *list, int place)
    {
        list->setCurrentIndex(place);
        Q_EMIT list->activated(place);
    }
    bool drop(const QString &ruta)
    {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(ruta)});
        QDragEnterEvent arrives({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&*form, &arrives);
        QDropEvent loose({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&*form, &loose);
        return arrives.isAccepted();
    }

    std::optional<frmImportar> form;
};

TEST_F(ImportForm, TriesAndThenWritesAndShowsWhatBecameOfEachLine)
{
    EXPECT_FALSE(buttonOf(u"cmdProbar"_s)->isEnabled());
    open("owner,phone,pet,kind\nAnn O'Hara,555001,Rex,Dog\nAnn O'Hara,555001,,Cat\n");
    EXPECT_EQ(Column(1)->currentIndex(), int(Datum::Client));
    EXPECT_EQ(Column(4)->currentIndex(), int(Datum::Nothing));
    EXPECT_FALSE(buttonOf(u"cmdImportar"_s)->isEnabled());
    choose(Column(4), int(Datum::Species));

    EXPECT_EQ(form->focusWidget(), buttonOf(u"cmdProbar"_s));
    QTest::keyClick(form->focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(control<QLabel>(u"lblResumen"_s)
                    ->text()
                    .contains(s(text::ImportedPatients).arg(u"1"_s, u"0"_s)));
    EXPECT_EQ(Account("mascotas"), 0);
    auto *grid = control<ui::Grid>(u"grdInforme"_s);
    ASSERT_EQ(grid->gridModel()->allRows(), 2);
    EXPECT_EQ(grid->gridModel()->cellText(1, 4), s(text::PatientHasNoName));
    auto *show = control<QComboBox>(u"cmbMostrar"_s);
    for (const auto &[place, rows] : {std::pair(1, 1), {2, 0}, {3, 1}, {5, 1}, {0, 2}}) {
        choose(show, place);
        EXPECT_EQ(grid->gridModel()->allRows(), rows) << place;
    }

    // After a change the dry run is needed again; a datum can be in one column only.
    choose(Column(2), int(Datum::Species));
    EXPECT_EQ(Column(4)->currentIndex(), 0);
    EXPECT_FALSE(buttonOf(u"cmdImportar"_s)->isEnabled());
    EXPECT_EQ(grid->gridModel()->allRows(), 0);
    choose(Column(4), int(Datum::Species));

    buttonOf(u"cmdProbar"_s)->click();
    EXPECT_EQ(form->focusWidget(), buttonOf(u"cmdImportar"_s));
    QTest::keyClick(form->focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(noticeOf().contains(s(text::ImportIsDone)));
    EXPECT_FALSE(buttonOf(u"cmdImportar"_s)->isEnabled());
    EXPECT_EQ(allRows(*s.clientes, "select nom, esp from mascotas"), u"Rex|1\n"_s);
}

TEST_F(ImportForm, AsksForWhatTheFileDoesNotTell)
{
    open("pet,birthday\nRex,3/4/2019\n");
    buttonOf(u"cmdProbar"_s)->click();
    auto *owner = control<QLineEdit>(u"txtPropietario"_s);
    EXPECT_EQ(form->focusWidget(), owner);
    QTest::keyClicks(owner, u"Shelter"_s);
    buttonOf(u"cmdProbar"_s)->click();
    auto *order = control<QComboBox>(u"cmbOrden"_s);
    EXPECT_EQ(form->focusWidget(), order);
    QTest::keyClick(order, Qt::Key_Down);
    QTest::keyClick(order, Qt::Key_Down); // month first
    buttonOf(u"cmdProbar"_s)->click();
    buttonOf(u"cmdImportar"_s)->click();
    EXPECT_EQ(allRows(*s.clientes, "select nom, fecn from mascotas"), u"Rex|2019-03-04\n"_s);

    // Opening the form with an unreadable file leaves nothing of the previous one.
    open("PK\x03\x04\0\0"_ba.append('\0'));
    EXPECT_TRUE(noticeOf().contains(s(text::FileIsNotText)));
    EXPECT_FALSE(buttonOf(u"cmdProbar"_s)->isEnabled());
}

TEST_F(ImportForm, TakesADroppedFileAndStopsWhenAskedTo)
{
    ASSERT_TRUE(drop(fileOf(manyRows(3000))));
    ASSERT_EQ(Column(2)->currentIndex(), int(Datum::Patient));

    buttonOf(u"cmdProbar"_s)->click();
    // Dropping an unreadable file, or ESC before anything is written, leaves the report in place.
    drop(folder.path());
    EXPECT_TRUE(noticeOf().contains(s(text::FileUnreadable).arg(QString())));
    QTimer::singleShot(0, &*form, [this] { QTest::keyClick(&*form, Qt::Key_Escape); });
    buttonOf(u"cmdImportar"_s)->click();
    EXPECT_EQ(noticeOf(), s(text::StoppedNothingWritten));
    EXPECT_EQ(Account("mascotas"), 0);
    EXPECT_EQ(control<ui::Grid>(u"grdInforme"_s)->gridModel()->allRows(), 3000);
    EXPECT_EQ(Column(2)->currentIndex(), int(Datum::Patient));
    // ESC stops the import once some of it is written, and does not close the form.
    QTimer mira;
    QObject::connect(&mira, &QTimer::timeout, &*form, [this] {
        auto *bar = control<QProgressBar>(u"barAvance"_s);
        if (bar->isVisible() && bar->maximum() == 3000 && bar->value() >= 1000)
            QTest::keyClick(&*form, Qt::Key_Escape);
    });
    mira.start(0);
    buttonOf(u"cmdImportar"_s)->click();
    mira.stop();
    EXPECT_TRUE(form->isVisible());
    const int written = Account("mascotas");
    EXPECT_TRUE(written >= 1000 && written < 3000) << written;
    EXPECT_TRUE(
        noticeOf().contains(s(text::ImportWasStopped).arg(QLocale().toString(written + 1))));
    QTest::keyClick(&*form, Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
}
