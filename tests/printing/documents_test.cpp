#include "agenda/day_sheet.h"
#include "agenda/tasks.h"
#include "printing/letter.h"
#include "printing/pdf.h"
#include "printing/report.h"
#include "support/clinic.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <csignal>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace
{

class Informes : public Clinica
{
protected:
    void Repartos(int n)
    {
        Base &b = AbrirAuxiliar(s, u"rep97"_s);
        for (int i = 1; i <= n; ++i)
            b.Execute("insert into auxrevacunacion (mas, vac, pro, dir, tel, dos) values (?, ?, ?, "
                      "?, ?, ?)",
                      u"Pet %1"_s.arg(i), u"Rabies <b>&"_s,
                      u"Owner %1"_s.arg(i, 3, 10, QChar(u'0')),
                      u"Street %1"_s.arg(i) + QString(i % 7 * 15, u'~').replace(u'~', u" way"_s)
                          + u" door"_s,
                      u"099"_s, i);
        CerrarAuxiliar(s);
    }

    void Definicion(const QString &nombre, const QString &texto)
    {
        QDir().mkpath(carpeta.filePath(u"reportes"_s));
        QFile f(carpeta.filePath(u"reportes/"_s + nombre));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(texto.toUtf8());
    }
};

} // namespace

TEST_F(Informes, AListRepeatsItsHeadNumbersItsPagesAndCutsNoRow)
{
    s.clinica.nom = u"Clinic & Sons"_s;
    Repartos(60);
    for (const auto hoja : {QPageSize::A4, QPageSize::Letter}) {
        const auto informe = CorrerInforme(s, u"vac"_s);
        const QStringList paginas = PaginasEnPapel(*informe, QPageSize(hoja));
        EXPECT_TRUE(paginas[0].startsWith(u"Scheduled products not supplied\nClinic & Sons"_s))
            << paginas[0].left(200).toStdString();
        EXPECT_GE(paginas.size(), 3);
        int filas = 0;
        for (int p = 0; p < paginas.size(); ++p) {
            const QString &texto = paginas[p];
            EXPECT_EQ(texto.count(u"Patient Product Owner Address Phones Dose"_s), 1) << p;
            EXPECT_TRUE(texto.endsWith(u"Page %1 of %2"_s.arg(p + 1).arg(paginas.size())));
            // Long addresses: their beginnings and their ends stand on the same pages.
            EXPECT_EQ(texto.count(u"Street "_s), texto.count(u"door"_s)) << p;
            filas += int(texto.count(u"door"_s));
        }
        EXPECT_EQ(filas, 60);
        EXPECT_TRUE(paginas.last().contains(u"Rabies <b>&"_s));
        EXPECT_TRUE(paginas.last().contains(u"Total: 60"_s));
    }
    EXPECT_EQ(s.auxiliar, nullptr);
}

TEST_F(Informes, TheClinicsOwnDefinitionComesFirstAndSumsItsGroups)
{
    Repartos(3);
    Definicion(u"vacEN.html"_s,
               u"<!--\ntitulo: Ours\nconsulta: select mas, pro, dos,\n  iif(dos < 3, "
               "'low', 'high') as nivel from auxrevacunacion order by dos\n"
               "grupo: nivel\nsumas: dos\n-->\n{{#grupos}}<p>{{nombre}} "
               "{{cantidad}}, {{#filas}}{{mas}} {{/filas}}= {{suma_dos}}</p>"
               "{{/grupos}}<p>all {{suma_dos}}</p>"_s);
    EXPECT_EQ(TextoEnPapel(*CorrerInforme(s, u"vac"_s)),
              u"low 2, Pet 1 Pet 2 = 3.00\nhigh 1, Pet 3 = 3.00\nall 6.00\nOurs Page 1 of 1"_s);

    const auto falla = [&](const QString &texto) {
        Definicion(u"vacEN.html"_s, texto);
        try {
            CorrerInforme(s, u"vac"_s);
        } catch (const ErrorDeAlmacen &e) {
            EXPECT_EQ(s.auxiliar, nullptr);
            return e.numero;
        }
        return 0;
    };
    EXPECT_EQ(falla(u"<p>no head</p>"_s), ErrorNum::Sintaxis);
    EXPECT_EQ(falla(u"<!--\nother: x\n-->"_s), ErrorNum::Sintaxis);
    EXPECT_EQ(falla(u"<!--\nconsulta: select x from nowhere\n-->"_s), ErrorNum::TablaNoEncontrada);
    EXPECT_EQ(falla(u"<!--\nconsulta: select mas from auxrevacunacion\n-->{{#filas}}"_s),
              ErrorNum::Sintaxis);
    EXPECT_THROW(CorrerInforme(s, u"nothing"_s), ErrorDeAlmacen);
}

// What each document says, whole, in the three languages. A change that is meant goes into
// golden/; the failure shows both texts.
TEST_F(Informes, EachDocumentReadsAsBefore)
{
    s.clinica = {.nom = u"Clínica Ñandú"_s, .pro = u"Ana"_s, .dir = u"Sur 1"_s, .tel = u"29"_s};
    s.clientes->Execute("insert into clientes (idc, ayn, dir) values (1, 'María', 'Norte 7')");
    s.clientes->Execute("insert into mascotas (idm, idc, nom) values (1, 1, 'Maximilian G.')");
    s.finanzas->Execute("insert into articulos (ida, idcat, nom) values (75, 2, 'Check')");
    Base &b = AbrirAuxiliar(s, u"rep97"_s);
    b.Execute("insert into auxrevacunacion (mas, vac, pro, dir, tel, dos) values "
              "('Toby', 'Rabies', 'María', 'Norte 7', '099', 2)");
    b.Execute("insert into auxrealimentacion (mas, ali, pro, dir, tel) values "
              "('Toby', 'Adult 15 kg', 'María', 'Norte 7', '099')");
    CerrarAuxiliar(s);
    for (const QTime hora : {QTime(8, 0), QTime(9, 15), QTime(9, 20), QTime(22, 0)}) {
        Tarea t;
        t.tip = 75;
        t.ida = 1;
        t.dia = t.fcreacion = hoy;
        t.hor = hora;
        AgregarTarea(s, t);
    }
    QHash<QString, QString> vistos;
    for (const auto &[idioma, local] :
         {std::pair{Idioma::Espanol, QLocale(QLocale::Spanish, QLocale::Uruguay)},
          std::pair{Idioma::Portugues, QLocale(QLocale::Portuguese, QLocale::Brazil)},
          std::pair{Idioma::Ingles, QLocale(QLocale::English, QLocale::UnitedStates)}}) {
        s.textos = Textos(idioma);
        QLocale::setDefault(local);
        for (const QString &nombre : {u"vac"_s, u"revac"_s, u"ali2"_s})
            vistos[nombre] += TextoEnPapel(*CorrerInforme(s, nombre)) + u"\n\n"_s;
        vistos[u"day_sheet"_s] += TextoEnPapel(*HojaDelDia(s, true, hoy, {})) + u"\n\n"_s;
        const auto carta = ComponerCarta(s, u"Notice"_s, u"<a> & b:\n\n  "_s + s(4602));
        vistos[u"letter"_s] += TextoEnPapel(*carta) + u"\n\n"_s;
    }
    QLocale::setDefault(QLocale::c());
    for (auto it = vistos.cbegin(); it != vistos.cend(); ++it) {
        QFile f(QStringLiteral(GOLDEN "/%1.txt").arg(it.key()));
        ASSERT_TRUE(f.open(QIODevice::ReadOnly)) << f.fileName().toStdString();
        EXPECT_EQ(it.value().trimmed().toStdString(), f.readAll().trimmed().toStdString())
            << it.key().toStdString();
    }
}

TEST_F(Informes, ALetterheadKeepsItsProportions)
{
    s.configuracion.Edit();
    s.configuracion.Put("encabezado", true);
    s.configuracion.Update();
    const auto hojaCon = [&](QSize membrete) {
        QImage cabeza(membrete, QImage::Format_RGB32);
        cabeza.fill(Qt::red);
        EXPECT_TRUE(cabeza.save(carpeta.filePath(u"Encabezado.bmp"_s)));
        QImage hoja(2480, 3508, QImage::Format_RGB32); // 300 dots per inch
        hoja.setDotsPerMeterX(qRound(300 / 0.0254));
        hoja.setDotsPerMeterY(qRound(300 / 0.0254));
        hoja.fill(Qt::white);
        const auto carta = ComponerCarta(s, u"Notice"_s, u"Dear Ana:"_s);
        EXPECT_EQ(carta->Componer(hoja, QSizeF(180, 267)), 1);
        QPainter pintor(&hoja);
        carta->Dibujar(pintor, 0);
        return hoja;
    };
    const auto esRojo = [](const QImage &hoja, int x, int y) {
        return hoja.pixelColor(x, y) == QColor(Qt::red);
    };
    // As wide as the text, 180 mm, and an eighth as high.
    const QImage ancho = hojaCon({800, 100});
    EXPECT_TRUE(esRojo(ancho, 20, 20));
    EXPECT_TRUE(esRojo(ancho, 2100, 240));
    EXPECT_FALSE(esRojo(ancho, 20, 320));
    // A third of the page high, 89 mm, and four ninths as wide.
    const QImage alto = hojaCon({400, 900});
    EXPECT_TRUE(esRojo(alto, 440, 1020));
    EXPECT_FALSE(esRojo(alto, 500, 20));
    EXPECT_FALSE(esRojo(alto, 20, 1100));
}

// The former file stays, whatever the new one failed of.
TEST_F(Informes, APdfIsSavedWholeOrNotAtAll)
{
    const QString archivo = carpeta.filePath(u"letter.pdf"_s);
    const auto carta = ComponerCarta(s, u"Notice"_s, u"former"_s);
    EXPECT_EQ(GuardarPdf(*carta, archivo), 1);
    const auto falla = [](Documento &documento, const QString &donde) {
        try {
            GuardarPdf(documento, donde);
        } catch (const ErrorDeAlmacen &e) {
            EXPECT_EQ(e.numero, ErrorNum::RutaODisco);
            EXPECT_TRUE(e.descripcion.startsWith(donde + u": "_s)) << e.what();
            return true;
        }
        return false;
    };
    EXPECT_TRUE(falla(*carta, carpeta.filePath(u"nowhere/at/all.pdf"_s)));

    // A disk that takes no more than a kilobyte.
    const auto largo = ComponerCarta(s, u"Notice"_s, u"new "_s.repeated(5000));
    rlimit antes;
    getrlimit(RLIMIT_FSIZE, &antes);
    const rlimit poco{1024, antes.rlim_max};
    const auto senal = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &poco);
    const bool lleno = falla(*largo, archivo);
    setrlimit(RLIMIT_FSIZE, &antes);
    std::signal(SIGXFSZ, senal);
    EXPECT_TRUE(lleno);
    EXPECT_EQ(PaginasDe(archivo), QStringList{u"former"_s});
    EXPECT_EQ(QDir(carpeta.path()).entryList({u"letter*"_s}), QStringList{u"letter.pdf"_s});
}
