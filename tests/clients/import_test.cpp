#include "clients/delimited_file.h"
#include "clients/frmimportar.h"
#include "clients/import.h"
#include "store/settings_row.h"
#include "support/clinic.h"
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

using namespace Qt::StringLiterals;

class Importacion : public Clinica
{
protected:
    QString Archivo(const QByteArray &bytes)
    {
        const QString nombre = carpeta.filePath(u"registro.csv"_s);
        QFile f(nombre);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
        return nombre;
    }
    // Records of a file, a line each behind the number of the line that it begins on.
    QString Leido(const QByteArray &bytes)
    {
        ArchivoDelimitado a(Archivo(bytes));
        QString t;
        for (QStringList campos; a.Leer(campos);)
            t += QString::number(a.Linea()) + u':' + campos.join(u'|') + u'\n';
        return t;
    }
    static QString Nombres(const QList<Dato> &datos)
    {
        QStringList n;
        for (const Dato d : datos)
            n << NombreDeDato(d);
        return n.join(u' ');
    }
    static QByteArray MuchasFilas(int n)
    {
        QByteArray filas = "cliente,mascota\n";
        for (int i = 0; i < n; ++i)
            filas += "Cliente " + QByteArray::number(i) + " x,Rex\n";
        return filas;
    }
    int Cuenta(const char *tabla)
    {
        return s.clientes->Leer("select count(*) from " + std::string(tabla)).toInt();
    }
    OpcionesDeImportacion Opciones_(const QByteArray &bytes, const QString &columnas = {})
    {
        OpcionesDeImportacion o;
        o.archivo = Archivo(bytes);
        const VistaDeArchivo v = MirarArchivo(s, o.archivo, 1);
        EXPECT_EQ(v.falla, QString());
        o.columnas = v.columnas;
        EXPECT_EQ(AplicarColumnas(s, columnas, v.titulos, o.columnas), QString());
        return o;
    }
    // What happened to each line, and the counts: clients and patients, new and there, refused.
    static std::string Texto(const InformeDeImportacion &i)
    {
        QString t = u"%1+%2 %3+%4 %5\n"_s.arg(i.clientesNuevos)
                        .arg(i.clientesExistentes)
                        .arg(i.mascotasNuevas)
                        .arg(i.mascotasExistentes)
                        .arg(i.rechazadas);
        for (const LineaDeInforme &l : i.lineas)
            t += QString::number(l.linea) + u"NERX"_s[int(l.suerte)] + u' ' + l.texto + u'\n';
        return t.replace(u" \n"_s, u"\n"_s).toStdString();
    }
    QString Todo()
    {
        QString t;
        for (const char *tabla : {"clientes", "mascotas", "mlrazas", "mlespecies", "cllocalidad"})
            t += Filas(*s.clientes, "select * from " + std::string(tabla) + " order by 1");
        return t + Filas(*s.morvane, "select idc from perfiles order by idc")
               + Filas(*s.morvane, "select contadorclientes, contadormascotas, contadorraza,"
                                   " contadorespecie, contadorpelaje from configuracion");
    }
    // Imports, and once more: the second time everything is there and nothing changes.
    InformeDeImportacion DosVeces(const OpcionesDeImportacion &o)
    {
        const InformeDeImportacion i = Importar(s, o);
        const QString tras = Todo();
        const InformeDeImportacion otra = Importar(s, o);
        EXPECT_EQ(otra.clientesNuevos + otra.mascotasNuevas, 0);
        EXPECT_EQ(otra.rechazadas, i.rechazadas);
        EXPECT_EQ(Todo(), tras);
        return i;
    }
};

TEST_F(Importacion, RecordsAreReadWhateverWroteThem)
{
    EXPECT_EQ(Leido("\xEF\xBB\xBF"
                    "a,b\r\n\r\n\"x, \"\"y\"\"\nz\",2\r\nlast,\"\""_ba),
              u"1:a|b\n3:x, \"y\"\nz|2\n5:last|\n"_s);
    // Another separator inside quotes, or only in some records, deceives nobody.
    EXPECT_EQ(Leido("a;b\n\"1,2\";3,5\n\"4,4\";5,5\n"_ba), u"1:a|b\n2:1,2|3,5\n3:4,4|5,5\n"_s);
    // Nor does a mark that is one for another separator alone.
    EXPECT_EQ(Leido("a;b\n1,\"x;2\n"_ba), u"1:a|b\n2:1,\"x|2\n"_s);
    EXPECT_EQ(Leido("a\tb\n1;1\t2\n"_ba), u"1:a|b\n2:1;1|2\n"_s);
    EXPECT_EQ(Leido("a\r1 \"no\" quote\r"_ba), u"1:a\n2:1 \"no\" quote\n"_s);
    EXPECT_EQ(Leido(""_ba), QString());

    EXPECT_EQ(Leido("\xC3\xB1,\xE2\x82\xAC\n"_ba), u"1:ñ|€\n"_s);
    EXPECT_EQ(Leido("\xF1,\x80\n"_ba), u"1:ñ|€\n"_s);
    EXPECT_EQ(Leido("a,\xC3"_ba), u"1:a|Ã\n"_s); // cut off inside a character: not UTF-8
    // A character that lies over the border of what is read at a time.
    for (const int antes : {262142, 262143, 262144}) {
        const QString largo = Leido(QByteArray(antes, 'x') + "\xE2\x82\xAC,b\r\nc,d\r\n");
        EXPECT_TRUE(largo.endsWith(u"x€|b\n2:c|d\n"_s)) << antes;
    }
}

TEST_F(Importacion, WhatIsNoTableIsRefusedWithItsReason)
{
    const auto falla = [this](const QByteArray &bytes) {
        return MirarArchivo(s, Archivo(bytes), 3).falla;
    };
    EXPECT_EQ(falla("PK\x03\x04\0\0"_ba.append('\0')), s(9775));
    EXPECT_EQ(falla("\xFF\xFE"
                    "a\0,\0"_ba.append('\0')),
              s(9775));
    EXPECT_EQ(falla(""_ba), s(9777));
    EXPECT_EQ(falla("a,b\n1,\"2\n3,4\n"_ba), s(9776).arg(2));
    EXPECT_EQ(falla(QByteArray(3'000'000, ',')), s(9775));
    const QString nada = carpeta.filePath(u"no.csv"_s);
    EXPECT_TRUE(MirarArchivo(s, nada, 3).falla.startsWith(s(9774).arg(QString())));
    EXPECT_TRUE(MirarArchivo(s, carpeta.path(), 3).falla.startsWith(s(9774).arg(QString())));

    // Marks that are opened late are found when all is read, and nothing is written.
    OpcionesDeImportacion o =
        Opciones_("cliente,mascota\n"_ba + QByteArray("A B,x\n").repeated(99) + "C,\"x\n");
    const InformeDeImportacion i = Importar(s, o);
    EXPECT_EQ(i.falta, InformeDeImportacion::Falta::Archivo);
    EXPECT_EQ(i.falla, s(9776).arg(101));
    EXPECT_EQ(Cuenta("clientes"), 0);
}

TEST_F(Importacion, TitlesAreRecognisedInThreeLanguages)
{
    const auto datos = [](const QString &titulos) {
        return Nombres(ReconocerTitulos(titulos.split(u',')));
    };
    EXPECT_EQ(datos(u"License Issue Date,License Number,Animal's Name,Species,Primary Breed,"
                    "Secondary Breed,ZIP Code"_s),
              u"nada idmascota mascota especie raza nada cp"_s);
    EXPECT_EQ(datos(u"PROPIETARIO,Teléfono,Correo electrónico,Mascota,Fecha de Nacimiento,Señas"_s),
              u"cliente telefono email mascota nacimiento marcas"_s);
    EXPECT_EQ(datos(u"nome_do_tutor,Endereço,CEP,nome_do_pet,Espécie,Raça,Data de nascimento"_s),
              u"cliente direccion cp mascota especie raza nacimiento"_s);
    // Whose name, number and notes these are, the other columns tell.
    EXPECT_EQ(datos(u"id,nombre,apellido,notas"_s), u"idcliente cliente apellido notascliente"_s);
    EXPECT_EQ(datos(u"id,nombre,especie,dueño,obs"_s),
              u"idmascota mascota especie cliente notasmascota"_s);
    EXPECT_EQ(datos(u"name,breed,sex"_s), u"mascota raza sexo"_s);
    EXPECT_EQ(datos(u"cliente,cliente"_s), u"cliente nada"_s);

    QStringList titulos{u"A, b"_s, u"ZIP"_s, u"Raza"_s};
    QList<Dato> columnas = ReconocerTitulos(titulos);
    EXPECT_EQ(AplicarColumnas(s, u"1=mascota,zip=nada,Raza=Pelaje"_s, titulos, columnas),
              QString());
    EXPECT_EQ(Nombres(columnas), u"mascota nada pelaje"_s);
    EXPECT_EQ(AplicarColumnas(s, u"2=mascota"_s, titulos, columnas), QString());
    EXPECT_EQ(Nombres(columnas), u"nada mascota pelaje"_s); // no datum twice
    EXPECT_EQ(AplicarColumnas(s, u"Zap=raza"_s, titulos, columnas), s(9781).arg(u"Zap"_s));
    EXPECT_EQ(AplicarColumnas(s, u"4=raza"_s, titulos, columnas), s(9781).arg(u"4"_s));
    EXPECT_TRUE(AplicarColumnas(s, u"1=cola"_s, titulos, columnas).contains(u"\"cola\""));
}

TEST_F(Importacion, DatesAreReadAsTheyAreWritten)
{
    const auto dia = [](const QString &t, OrdenDeFecha orden = OrdenDeFecha::DiaMes) {
        return LeerFecha(t, orden).toString(Qt::ISODate);
    };
    EXPECT_EQ(dia(u"3/4/2015"_s), u"2015-04-03");
    EXPECT_EQ(dia(u"3-4-15"_s, OrdenDeFecha::MesDia), u"2015-03-04");
    EXPECT_EQ(dia(u"12/25/2019"_s), u"2019-12-25"); // there is but one way
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
    EXPECT_EQ(OrdenQuePrueba(u"13/4/15"_s), PruebaDeOrden::DiaMes);
    EXPECT_EQ(OrdenQuePrueba(u"4/13/15"_s), PruebaDeOrden::MesDia);
    EXPECT_EQ(OrdenQuePrueba(u"4/3/15"_s), PruebaDeOrden::Ambigua);
    for (const auto &t : {u"4/4/15"_s, u"2015-03-04"_s, u"1971"_s, u"3 mar 2015"_s, u"40/1/15"_s})
        EXPECT_EQ(OrdenQuePrueba(t), PruebaDeOrden::Ninguna) << t.toStdString();
}

TEST_F(Importacion, WordsOfSexSpeciesAndWeightAreUnderstood)
{
    const QString casos[] = {u"Macho|M|male|masculino|macho entero|Macho sin castrar"_s,
                             u"Hembra|f|H|Fêmea|female (not spayed)"_s,
                             u"Neutered male|macho castrado|MC|castrated male"_s,
                             u"hembra esterilizada|Fêmea castrada|spayed female|FS"_s};
    for (int sexo = 0; sexo < 4; ++sexo)
        for (const QString &t : casos[sexo].split(u'|'))
            EXPECT_EQ(LeerSexo(t), sexo) << t.toStdString();
    EXPECT_EQ(LeerSexo(u"y"_s), std::nullopt);
    EXPECT_EQ(LeerSexo(u"castrado"_s), std::nullopt);
    EXPECT_EQ(LeerSiNo(u"Sí"_s), true);
    EXPECT_EQ(LeerSiNo(QString()), false);
    EXPECT_EQ(LeerSiNo(u"quizás"_s), std::nullopt);
    EXPECT_EQ(EspecieConocida(u"Perro"_s), 1);
    EXPECT_EQ(EspecieConocida(u"CAT"_s), 2);
    EXPECT_EQ(EspecieConocida(u"égua"_s), 3);
    EXPECT_EQ(LeerPeso(u"12,5 kg"_s), 12.5);
    EXPECT_EQ(LeerPeso(u"gordo"_s), std::nullopt);
    const std::initializer_list<std::pair<QString, QString>> unidades = {
        {u"kg"_s, u"12,5 Kg.|3kilos|Weight (kg)|peso_kg|PesoEnKg"_s},
        {u"lb"_s, u"26 lbs|26lb|Weight (Lbs.)|peso en libras|weight in pounds"_s},
        {u"g"_s, u"900 g|900grs|peso (gramos)"_s},
        {QString(), u"12,5|Peso|Weight|Dog"_s}};
    for (const auto &[unidad, textos] : unidades)
        for (const QString &t : textos.split(u'|'))
            EXPECT_EQ(UnidadEscrita(t), unidad) << t.toStdString();
}

TEST_F(Importacion, OwnersAndAnimalsAreWrittenAsTheRegistryWritesThem)
{
    const auto o =
        Opciones_("Apellido;Nombre;Tel\xE9"
                  "fono;Celular;Email;Direcci\xF3n;Localidad;Provincia;CP;Mascota;"
                  "Especie;Raza;Color;Sexo;Castrado;Nacimiento;Peso;Chip;Fallecido\r\n"
                  "Garc\xED"
                  "a;Ana;422-1234;155;ana@x.org;Calle 5;Tolosa;Buenos Aires;1900;Firulais;Perro;"
                  "Beagle;Tricolor;M;s\xED;13/2/2019;12,5;985;no\r\n"
                  "Garc\xED"
                  "a;Ana;4221234;;;;;;;Michi;Gato;;;hembra;;2013;;;\r\n"
                  "D'Amico;Luz;;;;;12;;;Kid;Cabra;Criolla;;;;11;;;\r\n"
                  "P\xE9rez;;;;;;;;;;;;;;;;;;\r\n"_ba);
    const QString antes = Todo();
    EXPECT_EQ(Texto(ProbarImportacion(s, o)), "3+0 3+0 0\n2N\n3N\n"
                                              "4N Birth date left empty: 11; "
                                              "Without its apostrophe: D'Amico Luz; "
                                              "A region cannot be a number, left empty: 12\n"
                                              "5N\n");
    EXPECT_EQ(Todo(), antes); // a dry run
    const InformeDeImportacion i = DosVeces(o);
    EXPECT_TRUE(i.escrito && !i.interrumpido);

    EXPECT_EQ(Filas(*s.clientes, "select idc, ayn, dir, loc, dep, codp2, tel2, telc2, email, feci,"
                                 " fecu, deuda, obra from clientes order by idc"),
              u"1|García Ana|Calle 5|1|1|1900|422-1234|155|ana@x.org|2026-03-11|2026-03-11|0|0\n"
              "2|D Amico Luz||0|0|||||2026-03-11|2026-03-11|0|0\n"
              "3|Pérez||0|0|||||2026-03-11|2026-03-11|0|0\n"_s);
    EXPECT_EQ(Filas(*s.clientes, "select idm, idc, nom, esp, raz, pel, Chip, fecn, pes, sex, dec,"
                                 " ser, feci, fot from mascotas order by idm"),
              u"1|1|Firulais|1|1|1|985|2019-02-13|12.5|2|0|0|2026-03-11|0\n"
              "2|1|Michi|2|0|0||2013-01-01|0|1|0|0|2026-03-11|0\n"
              "3|2|Kid|4|2|0|||0|0|0|0|2026-03-11|0\n"_s);
    EXPECT_EQ(Filas(*s.clientes, "select nom, esp, ran from mlrazas order by id"),
              u"Beagle|1|1\nCriolla|4|1\n"_s);
    EXPECT_EQ(Filas(*s.clientes, "select nom, cp, dep, ran from cllocalidad"),
              u"Tolosa|1900|1|1\n"_s);
    EXPECT_EQ(Filas(*s.clientes, "select nom from mlespecies where id > 3"), u"Cabra\n"_s);
    EXPECT_EQ(Filas(*s.morvane, "select idc from perfiles order by idc"), u"1\n2\n3\n"_s);
}

TEST_F(Importacion, LinesThatCannotBeTakenSayWhy)
{
    const QByteArray largo(60, 'x');
    const auto o = Opciones_("cliente,telefono,mascota,especie,sexo,peso,nacimiento\n"
                             "Ana,1,,Dog,,,\n"
                             ",1,Rex,Dog,,,\n"
                             "Ana,1,99,Dog,,,\n"
                             "123,1,Rex,Dog,,,\n"
                             "Ana,1,Rex,Dog,m,1,2013,too,many\n"
                             "Ana,\"4222-1111, 4222-2222, 4222-3333\","
                             + largo
                             + ",Dog,y,gordo,5018\n"
                               "Ana\n");
    EXPECT_EQ(Texto(DosVeces(o)),
              "1+0 1+0 5\n"
              "2R The patient has no name\n3R The client has no name\n"
              "4R A number is no name: 99\n5R A number is no name: 123\n"
              "6R The line has 9 fields and there are 7 titles\n"
              "7N Cut short: "
                  + largo.toStdString()
                  + "; Birth date left empty: 5018; Weight left at zero: gordo; Sex not known, "
                    "taken as male: y; Cut short: 4222-1111, 4222-2222, 4222-3333\n8E\n");
    // Of the telephones, those that fit whole.
    EXPECT_EQ(Filas(*s.clientes, "select tel2 from clientes"), u"4222-1111, 4222-2222\n"_s);
}

TEST_F(Importacion, WhatTheImportBringsAboutIsToldBefore)
{
    GuardarAjuste(s, "AutNuevoCliente", 1);
    GuardarAjuste(s, "KgLbs", 1);
    const auto o = Opciones_("owner,email,pet,weight lbs\nAnn,a@x.org,Rex,20\nBea,,Tom,9 kg\n"
                             "Cal,,Bob,30 lb\n"_ba,
                             u"weight lbs=peso"_s);
    const InformeDeImportacion i = ProbarImportacion(s, o);
    ASSERT_EQ(i.notas.size(), 2);
    EXPECT_EQ(i.notas[0], s(9873).arg(u"kg"_s, u"weight lbs"_s));
    EXPECT_TRUE(i.notas[1].contains(s(5068)) && i.notas[1].contains(s(9551)));
    EXPECT_EQ(Texto(i), "3+0 3+0 0\n2N\n3N\n4N The weight is taken in kg as it stands: 30 lb\n");
    EXPECT_EQ(Importar(s, o).notas, i.notas);
    EXPECT_EQ(ProbarImportacion(s, o).notas.size(), 1) << "nobody is new now";
    GuardarAjuste(s, "KgLbs", 2);
    GuardarAjuste(s, "AutNuevoCliente", 2);
    s.clientes->Execute("delete * from clientes");
    EXPECT_EQ(ProbarImportacion(s, o).notas, QStringList());
}

TEST_F(Importacion, AnEntryIsWrittenWithItsParentThoughNoWrittenRowNamesIt)
{
    s.clientes->Execute("insert into clientes (idc, ayn, tel2) values (1, 'Ana', '555001')");
    GuardarAjuste(s, "contadorclientes", 1);
    const auto o = Opciones_("cliente,telefono,localidad,provincia\nAna,555001,Tolosa,Norte\n"
                             "Bea,555002,Tolosa,\n"_ba);
    EXPECT_EQ(Texto(DosVeces(o)), "1+1 0+0 0\n2E\n3N\n");
    EXPECT_EQ(Filas(*s.clientes, "select nom, ran from cldepartamento"), u"Norte|0\n"_s);
    EXPECT_EQ(Filas(*s.clientes, "select l.nom, d.nom, l.ran from cllocalidad as l inner join "
                                 "cldepartamento as d on l.dep = d.id"),
              u"Tolosa|Norte|1\n"_s);
}

TEST_F(Importacion, OneOwnerIsFoundAgainAndNamesakesAreToldApart)
{
    s.clientes->Execute(
        "insert into clientes (idc, ayn, tel2) values (1, 'María García', '422 1')");
    s.clientes->Execute("insert into clientes (idc, ayn, tel2) values (2, 'Juan Sosa', '4331234')");
    s.clientes->Execute("insert into mascotas (idm, idc, nom, esp, fecn) values "
                        "(1, 2, 'Luna', 2, ?)",
                        QDate(2019, 1, 1));
    GuardarAjuste(s, "contadorclientes", 2);
    GuardarAjuste(s, "contadormascotas", 1);
    const auto o =
        Opciones_("cliente,telefono,email,mascota,especie,nacimiento\n"
                  "MARÍA GARCÍA,999999,,Tom,cat,\n"            // another telephone: another one
                  "María García,,m@x.org,Pipo,dog,\n"          // the row before, or the clinic's?
                  "Juan Sosa,433-1234,,luna,gato,2019-01-01\n" // there, with the same cat
                  "Juan Sosa,,,Luna,dog,\n"                    // another Luna
                  "Juan Sosa,,,Luna,dog,2020-05-05\n"          // the dog once more
                  "Juan Sosa,,,Luna,cat,2021-01-01\n");
    EXPECT_EQ(Texto(DosVeces(o)), "1+1 4+2 0\n2N\n3N\n4E\n5N\n6E Repeats line 5\n7N\n");
    EXPECT_EQ(Filas(*s.clientes, "select idc, ayn, tel2, email from clientes order by idc"),
              u"1|María García|422 1|\n2|Juan Sosa|4331234|\n"
              "3|MARÍA GARCÍA|999999|m@x.org\n"_s);
    // What the second line of the dog knows is not lost.
    EXPECT_EQ(Filas(*s.clientes, "select idm, nom, esp, fecn from mascotas where idc = 2"),
              u"1|Luna|2|2019-01-01\n4|Luna|1|2020-05-05\n5|Luna|2|2021-01-01\n"_s);
}

TEST_F(Importacion, NumbersOfOwnersAndAnimalsTellThemApart)
{
    // Identifiers beyond 16 bits, no names of either; one owner twice under two numbers.
    const auto perros = Opciones_("ID Tutor,Raza\n105585,Mops\n105585,Mops\n574,Pudel\n"_ba);
    const InformeDeImportacion i = DosVeces(perros);
    EXPECT_EQ(Texto(i), "2+0 3+0 0\n2N\n3N\n4N\n");
    EXPECT_EQ(i.notas, QStringList(s(9798)));
    EXPECT_EQ(Filas(*s.clientes, "select c.ayn, m.nom from clientes as c inner join mascotas as m "
                                 "on c.idc = m.idc order by m.idm"),
              u"Owner 105585|Patient 1\nOwner 105585|Patient 2\nOwner 574|Patient 1\n"_s);

    // Namesakes with numbers are two, unless they share a telephone.
    const auto tocayos = Opciones_("owner id,owner,phone,pet id,pet\n"
                                   "1,Ann Lee,,a1,Rex\n2,Ann Lee,,a2,Rex\n2,Ann Lee,555001,a2,Rex\n"
                                   "3,Ann Lee,555001,a3,Rex\n3,Ann Lee,,a3,Tom\n");
    EXPECT_EQ(Texto(DosVeces(tocayos)), "2+0 4+1 0\n2N\n3N\n4E Repeats line 3\n5N\n6N\n");
}

TEST_F(Importacion, AnimalsWithoutOwnersGoToOneClient)
{
    auto o =
        Opciones_("License Number,Animal's Name,Species,ZIP Code\n"
                  "S1,Luna,Dog,98117\nS2,Luna,Dog,98115\nS3,O'Malley,Pig,98115\nS4,,Cat,\n"_ba);
    EXPECT_EQ(Importar(s, o).falta, InformeDeImportacion::Falta::Propietario);
    o.propietario = u"123"_s;
    EXPECT_EQ(Importar(s, o).falta, InformeDeImportacion::Falta::Propietario);
    o.propietario = u"Town register"_s;
    const InformeDeImportacion i = DosVeces(o);
    EXPECT_EQ(Texto(i), "1+0 3+0 1\n2N\n3N\n4N Without its apostrophe: O'Malley\n"
                        "5R The patient has no name\n");
    EXPECT_EQ(i.notas, QStringList(s(9799)));
    EXPECT_EQ(Filas(*s.clientes, "select ayn, codp2 from clientes"), u"Town register|\n"_s);

    o.columnas.fill(Dato::Nada);
    EXPECT_EQ(ProbarImportacion(s, o).falta, InformeDeImportacion::Falta::Columnas);
}

TEST_F(Importacion, TheOrderOfDaysIsFoundOrAskedFor)
{
    const auto nacidos = [this](const QByteArray &filas, std::optional<OrdenDeFecha> orden = {}) {
        auto o = Opciones_("cliente,mascota,nacimiento\n"_ba + filas);
        o.orden = orden;
        s.clientes->Execute("delete * from mascotas");
        return Importar(s, o).falta == InformeDeImportacion::Falta::Orden
                   ? u"?"_s
                   : Filas(*s.clientes, "select fecn from mascotas order by idm");
    };
    EXPECT_EQ(nacidos("A,x,3/4/2015\nA,y,4/25/2015\n"), u"2015-03-04\n2015-04-25\n"_s);
    EXPECT_EQ(nacidos("A,x,3/4/2015\nA,y,25/4/2015\n"), u"2015-04-03\n2015-04-25\n"_s);
    EXPECT_EQ(nacidos("A,x,3/4/2015\n"), u"?"_s);
    EXPECT_EQ(nacidos("A,x,3/4/2015\n", OrdenDeFecha::MesDia), u"2015-03-04\n"_s);
    EXPECT_EQ(nacidos("A,x,3/4/2015\nA,y,25/4/2015\nA,z,4/25/2015\n"), u"?"_s); // both at once
    EXPECT_EQ(nacidos("A,x,25/4/2015\nA,z,4/25/2015\nA,w,12/3/2030\n"),
              u"?"_s); // the last one can be read in two ways
    EXPECT_EQ(nacidos("A,x,2015-03-04\nA,z,5/5/2030\n"), u"2015-03-04\n\n"_s); // not born yet
}

TEST_F(Importacion, NothingIsWrittenBeyondTheLastIdentifier)
{
    GuardarAjuste(s, "contadormascotas", 32765);
    const auto o =
        Opciones_("cliente,mascota\nAna,a\nBea,b\nAna,A\nCarla,c\nAna,\nDora,\nBea,d\n"_ba);
    const InformeDeImportacion seca = ProbarImportacion(s, o);
    EXPECT_EQ(Texto(seca), "2+0 2+1 0\n2N\n3N\n4E Repeats line 2\n5X\n6E\n7X\n8X\n");
    EXPECT_EQ(seca.sinLugar * 100 + seca.primeraSinLugar, 305);
    EXPECT_EQ(Texto(DosVeces(o)), Texto(seca));
    EXPECT_EQ(Filas(*s.clientes, "select idm from mascotas order by idm"), u"32766\n32767\n"_s);
    EXPECT_EQ(Filas(*s.clientes, "select ayn from clientes order by idc"), u"Ana\nBea\n"_s);

    // Species end at 255: the animal is taken without one.
    s.morvane->Execute("update configuracion set contadormascotas = 2, contadorespecie = 255");
    s.configuracion.Requery();
    EXPECT_EQ(
        Texto(Importar(s, Opciones_("cliente,mascota,especie\nAna,z,Pulpo\nAna,y,Perro\n"_ba))),
        "0+1 2+0 0\n2N The list is full, left empty: Pulpo\n3N\n");
}

TEST_F(Importacion, WhatWasWrittenBeforeAStopStaysAndIsTold)
{
    const auto o = Opciones_(MuchasFilas(1300));
    int veces = 0;
    s.avance.barra = [&](int hecho, int total) { veces += hecho <= total; };
    const InformeDeImportacion cortada = Importar(s, o, [&] { return veces < 3; });
    EXPECT_TRUE(cortada.interrumpido && cortada.escrito);
    EXPECT_EQ(cortada.mascotasNuevas, Cuenta("mascotas"));
    EXPECT_EQ(cortada.clientesNuevos, Cuenta("clientes"));
    EXPECT_EQ(int(cortada.lineas.size()), cortada.clientesNuevos);
    EXPECT_EQ(cortada.clientesNuevos, 500);

    // A failure in a later part takes back that part alone.
    s.clientes->Execute("insert into mascotas (idm, idc, nom) values (1100, 0, 'x')");
    const InformeDeImportacion rota = Importar(s, o);
    EXPECT_TRUE(rota.interrumpido && !rota.falla.isEmpty());
    EXPECT_EQ(rota.clientesNuevos, 500);
    EXPECT_EQ(Cuenta("clientes"), 1000);
    EXPECT_EQ(s.clientes->Leer("select max(idm) from mascotas where idm <> 1100").toInt(), 1000);
    EXPECT_EQ(s.morvane->Leer("select contadormascotas from configuracion").toInt(), 1000);

    s.clientes->Execute("delete * from mascotas where idm = 1100");
    const InformeDeImportacion resto = DosVeces(o);
    EXPECT_EQ(resto.clientesNuevos * 10000 + resto.clientesExistentes, 3001000);
    EXPECT_EQ(s.morvane->Leer("select count(*) from perfiles").toInt(), 1300);
}

class FormularioDeImportacion : public Importacion
{
protected:
    FormularioDeImportacion()
    {
        s.carpetaDePrograma = carpeta.path() + u'/';
        form.emplace(s);
        form->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&*form));
    }
    template <typename W>
    W *Control(const QString &nombre)
    {
        W *w = form->findChild<W *>(nombre);
        EXPECT_NE(w, nullptr) << nombre.toStdString();
        return w;
    }
    QPushButton *Boton(const QString &nombre) { return Control<QPushButton>(nombre); }
    QComboBox *Columna(int n) { return Control<QComboBox>(u"cmbColumna%1"_s.arg(n)); }
    void Abrir(const QByteArray &bytes) { form->opened({{u"archivo"_s, Archivo(bytes)}}); }
    QString Aviso() { return Control<QLabel>(u"Ayu"_s)->text(); }
    static void Elegir(QComboBox *lista, int lugar)
    {
        lista->setCurrentIndex(lugar);
        Q_EMIT lista->activated(lugar);
    }
    bool Soltar(const QString &ruta)
    {
        QMimeData datos;
        datos.setUrls({QUrl::fromLocalFile(ruta)});
        QDragEnterEvent llega({5, 5}, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&*form, &llega);
        QDropEvent suelta({5, 5}, Qt::CopyAction, &datos, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&*form, &suelta);
        return llega.isAccepted();
    }

    std::optional<frmImportar> form;
};

TEST_F(FormularioDeImportacion, TriesAndThenWritesAndShowsWhatBecameOfEachLine)
{
    EXPECT_FALSE(Boton(u"cmdProbar"_s)->isEnabled());
    Abrir("owner,phone,pet,kind\nAnn O'Hara,555001,Rex,Dog\nAnn O'Hara,555001,,Cat\n");
    EXPECT_EQ(Columna(1)->currentIndex(), int(Dato::Cliente));
    EXPECT_EQ(Columna(4)->currentIndex(), int(Dato::Nada));
    EXPECT_FALSE(Boton(u"cmdImportar"_s)->isEnabled());
    Elegir(Columna(4), int(Dato::Especie));

    EXPECT_EQ(form->focusWidget(), Boton(u"cmdProbar"_s));
    QTest::keyClick(form->focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(Control<QLabel>(u"lblResumen"_s)->text().contains(s(9767).arg(u"1"_s, u"0"_s)));
    EXPECT_EQ(Cuenta("mascotas"), 0);
    auto *grilla = Control<Grilla>(u"grdInforme"_s);
    ASSERT_EQ(grilla->Modelo()->Filas(), 2);
    EXPECT_EQ(grilla->Modelo()->TextoDeCelda(1, 4), s(9783));
    auto *mostrar = Control<QComboBox>(u"cmbMostrar"_s);
    for (const auto &[lugar, filas] : {std::pair(1, 1), {2, 0}, {3, 1}, {5, 1}, {0, 2}}) {
        Elegir(mostrar, lugar);
        EXPECT_EQ(grilla->Modelo()->Filas(), filas) << lugar;
    }

    // What is changed must be tried again before it is written; one datum stands in one column.
    Elegir(Columna(2), int(Dato::Especie));
    EXPECT_EQ(Columna(4)->currentIndex(), 0);
    EXPECT_FALSE(Boton(u"cmdImportar"_s)->isEnabled());
    EXPECT_EQ(grilla->Modelo()->Filas(), 0);
    Elegir(Columna(4), int(Dato::Especie));

    Boton(u"cmdProbar"_s)->click();
    EXPECT_EQ(form->focusWidget(), Boton(u"cmdImportar"_s));
    QTest::keyClick(form->focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(Aviso().contains(s(9771)));
    EXPECT_FALSE(Boton(u"cmdImportar"_s)->isEnabled());
    EXPECT_EQ(Filas(*s.clientes, "select nom, esp from mascotas"), u"Rex|1\n"_s);
}

TEST_F(FormularioDeImportacion, AsksForWhatTheFileDoesNotTell)
{
    Abrir("pet,birthday\nRex,3/4/2019\n");
    Boton(u"cmdProbar"_s)->click();
    auto *dueno = Control<QLineEdit>(u"txtPropietario"_s);
    EXPECT_EQ(form->focusWidget(), dueno);
    QTest::keyClicks(dueno, u"Shelter"_s);
    Boton(u"cmdProbar"_s)->click();
    auto *orden = Control<QComboBox>(u"cmbOrden"_s);
    EXPECT_EQ(form->focusWidget(), orden);
    QTest::keyClick(orden, Qt::Key_Down);
    QTest::keyClick(orden, Qt::Key_Down); // month first
    Boton(u"cmdProbar"_s)->click();
    Boton(u"cmdImportar"_s)->click();
    EXPECT_EQ(Filas(*s.clientes, "select nom, fecn from mascotas"), u"Rex|2019-03-04\n"_s);

    // A file that is none leaves nothing of the former one behind.
    Abrir("PK\x03\x04\0\0"_ba.append('\0'));
    EXPECT_TRUE(Aviso().contains(s(9775)));
    EXPECT_FALSE(Boton(u"cmdProbar"_s)->isEnabled());
}

TEST_F(FormularioDeImportacion, TakesADroppedFileAndStopsWhenAskedTo)
{
    ASSERT_TRUE(Soltar(Archivo(MuchasFilas(3000))));
    ASSERT_EQ(Columna(2)->currentIndex(), int(Dato::Mascota));

    Boton(u"cmdProbar"_s)->click();
    // A file that is none, and ESC before anything is written, leave what was told.
    Soltar(carpeta.path());
    EXPECT_TRUE(Aviso().contains(s(9774).arg(QString())));
    QTimer::singleShot(0, &*form, [this] { QTest::keyClick(&*form, Qt::Key_Escape); });
    Boton(u"cmdImportar"_s)->click();
    EXPECT_EQ(Aviso(), s(9871));
    EXPECT_EQ(Cuenta("mascotas"), 0);
    EXPECT_EQ(Control<Grilla>(u"grdInforme"_s)->Modelo()->Filas(), 3000);
    EXPECT_EQ(Columna(2)->currentIndex(), int(Dato::Mascota));
    // ESC stops the work as soon as some of it is written, and does not close the form.
    QTimer mira;
    QObject::connect(&mira, &QTimer::timeout, &*form, [this] {
        auto *barra = Control<QProgressBar>(u"barAvance"_s);
        if (barra->isVisible() && barra->maximum() == 3000 && barra->value() >= 1000)
            QTest::keyClick(&*form, Qt::Key_Escape);
    });
    mira.start(0);
    Boton(u"cmdImportar"_s)->click();
    mira.stop();
    EXPECT_TRUE(form->isVisible());
    const int escritas = Cuenta("mascotas");
    EXPECT_TRUE(escritas >= 1000 && escritas < 3000) << escritas;
    EXPECT_TRUE(Aviso().contains(s(9772).arg(QLocale().toString(escritas + 1))));
    QTest::keyClick(&*form, Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
}
