#include "printing/letter.h"
#include "printing/pdf.h"
#include "printing/report.h"
#include "support/clinic.h"

#include <QDir>
#include <QFile>
#include <QPainter>

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
                      u"Owner %1"_s.arg(i, 3, 10, QChar(u'0')), u"Street %1"_s.arg(i), u"099"_s, i);
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

TEST_F(Informes, AListRepeatsItsHeadAndNumbersItsPages)
{
    s.clinica.nom = u"Clinic & Sons"_s;
    Repartos(60);
    const auto informe = CorrerInforme(s, u"vac"_s);
    EXPECT_EQ(s.auxiliar, nullptr);
    const QString texto = TextoEnPapel(*informe);
    EXPECT_TRUE(texto.startsWith(u"Scheduled products not supplied\nClinic & Sons"_s))
        << texto.left(200).toStdString();
    EXPECT_TRUE(texto.contains(u"Pet 60 Rabies <b>& Owner 060 Street 60 099 60"_s))
        << texto.right(300).toStdString();
    EXPECT_TRUE(texto.contains(u"Total: 60"_s));
    const int paginas = int(texto.count(u"Page "_s));
    EXPECT_GE(paginas, 2);
    EXPECT_TRUE(texto.contains(u"Page 1 of %1"_s.arg(paginas)));
    EXPECT_EQ(texto.count(u"Patient Product Owner Address Phones Dose"_s), paginas);
    // Every row stands on some page, none is cut in two.
    for (int i = 1; i <= 60; ++i)
        EXPECT_EQ(texto.count(u"Owner %1 "_s.arg(i, 3, 10, QChar(u'0'))), 1) << i;
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

TEST_F(Informes, EachDefinitionThatTheProgramBringsRunsInItsLanguage)
{
    for (const Idioma idioma : {Idioma::Espanol, Idioma::Portugues, Idioma::Ingles}) {
        s.textos = Textos(idioma);
        for (const QString &nombre : {u"vac"_s, u"revac"_s, u"ali2"_s}) {
            const auto informe = CorrerInforme(s, nombre);
            EXPECT_FALSE(informe->Titulo().isEmpty());
            EXPECT_TRUE(TextoEnPapel(*informe).startsWith(informe->Titulo()))
                << nombre.toStdString();
        }
    }
}

TEST_F(Informes, ALetterKeepsItsLinesUnderTheLetterhead)
{
    const QString texto = u"Dear Ana:\n\n  we <remind> you & yours.\r\nRegards"_s;
    const auto sin = ComponerCarta(s, u"Notice"_s, texto);
    EXPECT_EQ(TextoEnPapel(*sin), u"Dear Ana:\nwe <remind> you & yours.\nRegards"_s);

    QImage cabeza(800, 100, QImage::Format_RGB32);
    cabeza.fill(Qt::red);
    ASSERT_TRUE(cabeza.save(carpeta.filePath(u"Encabezado.bmp"_s)));
    s.configuracion.Edit();
    s.configuracion.Put("encabezado", true);
    s.configuracion.Update();
    const auto con = ComponerCarta(s, u"Notice with head"_s, texto);
    QImage hoja(2480, 3508, QImage::Format_RGB32);
    hoja.setDotsPerMeterX(qRound(300 / 0.0254));
    hoja.setDotsPerMeterY(qRound(300 / 0.0254));
    hoja.fill(Qt::white);
    EXPECT_EQ(con->Componer(hoja, QSizeF(180, 267)), 1);
    QPainter pintor(&hoja);
    con->Dibujar(pintor, 0);
    pintor.end();
    // As wide as the text, an eighth as high.
    EXPECT_EQ(hoja.pixelColor(20, 20), QColor(Qt::red));
    EXPECT_EQ(hoja.pixelColor(2000, 20), QColor(Qt::red));
    EXPECT_EQ(hoja.pixelColor(20, 320), QColor(Qt::white));
    if (const QString guardar = qEnvironmentVariable("KELVARA_PDF"); !guardar.isEmpty())
        TextoEnPapel(*con);
}

TEST_F(Informes, AFileThatCannotBeWrittenIsToldAndTheFormerOneStays)
{
    const auto carta = ComponerCarta(s, u"Notice"_s, u"x"_s);
    try {
        GuardarPdf(*carta, carpeta.filePath(u"nowhere/at/all.pdf"_s));
        FAIL();
    } catch (const ErrorDeAlmacen &e) {
        EXPECT_EQ(e.numero, ErrorNum::RutaODisco);
    }
}
