#include "agenda/day_sheet.h"
#include "agenda/tasks.h"
#include "printing/document_set.h"
#include "printing/letter.h"
#include "printing/pdf.h"
#include "printing/report.h"
#include "support/clinic.h"
#include "texts/texts.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <csignal>
#include <sys/resource.h>

using namespace printing;
using namespace Qt::StringLiterals;

namespace
{

class Reports : public Clinic
{
protected:
    void deliveries(int n)
    {
        Base &b = *s.rep97;
        for (int i = 1; i <= n; ++i)
            b.Execute("insert into auxrevacunacion (mas, vac, pro, dir, tel, dos) values (?, ?, ?, "
                      "?, ?, ?)",
                      u"Pet %1"_s.arg(i), u"Rabies <b>&"_s,
                      u"Owner %1"_s.arg(i, 3, 10, QChar(u'0')),
                      u"Street %1"_s.arg(i) + QString(i % 7 * 9, u'~').replace(u'~', u" way"_s)
                          + u" door"_s,
                      u"099"_s, i);
    }

    void Definition(const QString &name, const QString &text)
    {
        QDir().mkpath(folder.filePath(u"reportes"_s));
        QFile f(folder.filePath(u"reportes/"_s + name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(text.toUtf8());
    }
};

} // namespace

TEST_F(Reports, AreTheClinicsOwnWhereItHasOneAndForALanguageFirst)
{
    deliveries(1);
    const auto first = [this] {
        return pagesInPaper(*runReport(s, u"vac"_s), QPageSize(QPageSize::A4))[0];
    };
    Definition(u"vac.html"_s, u"<!--\ntitulo: Uno | Um | One\ntexto fin: fin | fim | end\n"
                              "consulta: select mas from auxrevacunacion\n-->\n"
                              "{{titulo}} {{#filas}}{{mas}} {{/filas}}{{texto.fin}}"_s);
    EXPECT_TRUE(first().startsWith(u"One Pet 1 end"_s)) << first().toStdString();
    Definition(u"vacEN.html"_s,
               u"<!--\ntitulo: Two\nconsulta: select mas from auxrevacunacion\n-->\n"
               "{{titulo}}"_s);
    EXPECT_TRUE(first().startsWith(u"Two"_s));
    Definition(u"vacEN.html"_s, u"<!--\ntitulo: Two | Dos\n-->\n"_s);
    EXPECT_THROW(runReport(s, u"vac"_s), store::StoreError);
}

TEST_F(Reports, AListRepeatsItsHeadNumbersItsPagesAndCutsNoRow)
{
    s.clinic.nom = u"Clinic & Sons"_s;
    deliveries(60);
    for (const auto sheet : {QPageSize::A4, QPageSize::Letter}) {
        const auto report = runReport(s, u"vac"_s);
        const QStringList pages = pagesInPaper(*report, QPageSize(sheet));
        EXPECT_TRUE(pages[0].startsWith(u"Scheduled products not supplied\nClinic & Sons"_s))
            << pages[0].left(200).toStdString();
        EXPECT_GE(pages.size(), 3);
        int rows = 0;
        for (int p = 0; p < pages.size(); ++p) {
            const QString &text = pages[p];
            EXPECT_EQ(text.count(u"Patient Product Owner Address Phones Dose"_s), 1) << p;
            EXPECT_TRUE(text.endsWith(u"Page %1 of %2"_s.arg(p + 1).arg(pages.size())));
            // Rows with long addresses are never broken across pages.
            EXPECT_EQ(text.count(u"Street "_s), text.count(u"door"_s)) << p;
            rows += int(text.count(u"door"_s));
        }
        EXPECT_EQ(rows, 60);
        EXPECT_TRUE(pages.last().contains(u"Rabies <b>&"_s));
        EXPECT_TRUE(pages.last().contains(u"Total: 60"_s));
    }
}

TEST_F(Reports, TheClinicsOwnDefinitionComesFirstAndSumsItsGroups)
{
    deliveries(3);
    Definition(u"vacEN.html"_s,
               u"<!--\ntitulo: Ours\nconsulta: select mas, pro, dos,\n  iif(dos < 3, "
               "'low', 'high') as nivel from auxrevacunacion order by dos\n"
               "grupo: nivel\nsumas: dos\n-->\n{{#grupos}}<p>{{nombre}} "
               "{{cantidad}}, {{#filas}}{{mas}} {{/filas}}= {{suma_dos}}</p>"
               "{{/grupos}}<p>all {{suma_dos}}</p>"_s);
    EXPECT_EQ(textInPaper(*runReport(s, u"vac"_s)),
              u"low 2, Pet 1 Pet 2 = 3.00\nhigh 1, Pet 3 = 3.00\nall 6.00\nOurs Page 1 of 1"_s);

    const auto failure = [&](const QString &text) {
        Definition(u"vacEN.html"_s, text);
        try {
            runReport(s, u"vac"_s);
        } catch (const store::StoreError &e) {
            return e.number;
        }
        return 0;
    };
    EXPECT_EQ(failure(u"<p>no head</p>"_s), store::ErrorNumber::Syntax);
    EXPECT_EQ(failure(u"<!--\nother: x\n-->"_s), store::ErrorNumber::Syntax);
    EXPECT_EQ(failure(u"<!--\nconsulta: select x from nowhere\n-->"_s),
              store::ErrorNumber::TableNotFound);
    EXPECT_EQ(failure(u"<!--\nconsulta: select mas from auxrevacunacion\n-->{{#filas}}"_s),
              store::ErrorNumber::Syntax);
    EXPECT_THROW(runReport(s, u"nothing"_s), store::StoreError);
}

// The full text of each document in the three languages. After a wanted change, update golden/; a
// failure shows both texts.
TEST_F(Reports, EachDocumentReadsAsBefore)
{
    s.clinic = {.nom = u"Clínica Ñandú"_s, .pro = u"Ana"_s, .dir = u"Sur 1"_s, .tel = u"29"_s};
    s.clientes->Execute("insert into clientes (idc, ayn, dir) values (1, 'María', 'Norte 7')");
    s.clientes->Execute("insert into mascotas (idm, idc, nom) values (1, 1, 'Maximilian G.')");
    s.finanzas->Execute("insert into articulos (ida, idcat, nom) values (75, 2, 'Check')");
    Base &b = *s.rep97;
    b.Execute("insert into auxrevacunacion (mas, vac, pro, dir, tel, dos) values "
              "('Toby', 'Rabies', 'María', 'Norte 7', '099', 2)");
    b.Execute("insert into auxrealimentacion (mas, ali, pro, dir, tel) values "
              "('Toby', 'Adult 15 kg', 'María', 'Norte 7', '099')");
    for (const QTime hour : {QTime(8, 0), QTime(9, 15), QTime(9, 20), QTime(22, 0)}) {
        agenda::Task t;
        t.tip = 75;
        t.ida = 1;
        t.dia = t.fcreacion = hoy;
        t.hor = hour;
        AgregarTarea(s, t);
    }
    QHash<QString, QString> seen;
    for (const auto &[language, local] :
         {std::pair{store::Language::Spanish, QLocale(QLocale::Spanish, QLocale::Uruguay)},
          std::pair{store::Language::Portuguese, QLocale(QLocale::Portuguese, QLocale::Brazil)},
          std::pair{store::Language::English, QLocale(QLocale::English, QLocale::UnitedStates)}}) {
        s.texts = store::Texts(language);
        QLocale::setDefault(local);
        for (const QString &name : {u"vac"_s, u"revac"_s, u"ali2"_s})
            seen[name] += textInPaper(*runReport(s, name)) + u"\n\n"_s;
        seen[u"day_sheet"_s] += textInPaper(*agenda::daySheet(s, true, hoy, {})) + u"\n\n"_s;
        const auto letter =
            composeLetter(s, u"Notice"_s, u"<a> & b:\n\n  "_s + s(text::PrintVaccinationQuestion));
        seen[u"letter"_s] += textInPaper(*letter) + u"\n\n"_s;
    }
    QLocale::setDefault(QLocale::c());
    for (auto it = seen.cbegin(); it != seen.cend(); ++it) {
        QFile f(QStringLiteral(GOLDEN "/%1.txt").arg(it.key()));
        ASSERT_TRUE(f.open(QIODevice::ReadOnly)) << f.fileName().toStdString();
        EXPECT_EQ(it.value().trimmed().toStdString(), f.readAll().trimmed().toStdString())
            << it.key().toStdString();
    }
}

TEST_F(Reports, ALetterheadKeepsItsProportions)
{
    s.configuracion.Edit();
    s.configuracion.Put("encabezado", true);
    s.configuracion.Update();
    const auto sheetWith = [&](QSize letterhead) {
        QImage head(letterhead, QImage::Format_RGB32);
        head.fill(Qt::red);
        EXPECT_TRUE(head.save(folder.filePath(u"Encabezado.bmp"_s)));
        QImage sheet(2480, 3508, QImage::Format_RGB32); // 300 dots per inch
        sheet.setDotsPerMeterX(qRound(300 / 0.0254));
        sheet.setDotsPerMeterY(qRound(300 / 0.0254));
        sheet.fill(Qt::white);
        const auto letter = composeLetter(s, u"Notice"_s, u"Dear Ana:"_s);
        EXPECT_EQ(letter->compose(sheet, QSizeF(180, 267)), 1);
        QPainter painter(&sheet);
        letter->draw(painter, 0);
        return sheet;
    };
    const auto isRed = [](const QImage &sheet, int x, int y) {
        return sheet.pixelColor(x, y) == QColor(Qt::red);
    };
    // Full width, 180 mm, and an eighth of that in height.
    const QImage width = sheetWith({800, 100});
    EXPECT_TRUE(isRed(width, 20, 20));
    EXPECT_TRUE(isRed(width, 2100, 240));
    EXPECT_FALSE(isRed(width, 20, 320));
    // A third of the page in height, 89 mm, and four ninths of that in width.
    const QImage height = sheetWith({400, 900});
    EXPECT_TRUE(isRed(height, 440, 1020));
    EXPECT_FALSE(isRed(height, 500, 20));
    EXPECT_FALSE(isRed(height, 20, 1100));
}

// The existing file stays, whatever the reason for the failure.
TEST_F(Reports, APdfIsSavedWholeOrNotAtAll)
{
    const QString file = folder.filePath(u"letter.pdf"_s);
    const auto letter = composeLetter(s, u"Notice"_s, u"former"_s);
    EXPECT_EQ(savePdf(*letter, file), 1);
    const auto failure = [](Documento &document, const QString &where) {
        try {
            savePdf(document, where);
        } catch (const store::StoreError &e) {
            EXPECT_EQ(e.number, store::ErrorNumber::PathOrDisk);
            EXPECT_TRUE(e.description.startsWith(where + u": "_s)) << e.what();
            return true;
        }
        return false;
    };
    EXPECT_TRUE(failure(*letter, folder.filePath(u"nowhere/at/all.pdf"_s)));

    // A limit of one kilobyte per file plays a full disk.
    const auto length = composeLetter(s, u"Notice"_s, u"new "_s.repeated(5000));
    rlimit before;
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit little{1024, before.rlim_max};
    const auto signal = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &little);
    const bool full = failure(*length, file);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, signal);
    EXPECT_TRUE(full);
    EXPECT_EQ(pagesOf(file), QStringList{u"former"_s});
    EXPECT_EQ(QDir(folder.path()).entryList({u"letter*"_s}), QStringList{u"letter.pdf"_s});
}

namespace
{

/// Notes which of its pages are drawn.
struct Numbered : Documento {
    Numbered(QString name, int pages, QStringList &log)
        : m_name(std::move(name)), m_pages(pages), m_log(log)
    {
    }
    QString titleOf() const override { return m_name; }
    int compose(QPaintDevice &, QSizeF) override { return m_pages; }
    void draw(QPainter &, int page) override { m_log << m_name + QString::number(page); }

    QString m_name;
    int m_pages;
    QStringList &m_log;
};

} // namespace

TEST(DocumentSet, PagesOfSeveralDocumentsFollowEachOther)
{
    QStringList drawn;
    printing::DocumentSet set;
    set.add(std::make_unique<Numbered>(u"a"_s, 2, drawn));
    set.add(std::make_unique<Numbered>(u"empty"_s, 0, drawn));
    set.add(std::make_unique<Numbered>(u"b"_s, 1, drawn));
    QImage sheet(10, 10, QImage::Format_ARGB32);
    QPainter painter(&sheet);
    const int pages = set.compose(sheet, {180, 260});
    EXPECT_EQ(pages, 3);
    for (int page = 0; page <= pages; ++page)
        set.draw(painter, page);
    EXPECT_EQ(drawn, QStringList({u"a0"_s, u"a1"_s, u"b0"_s})) << "and nothing behind the last";
}
