#include "printing/frmvistaprevia.h"
#include "printing/pdf.h"
#include "support/clinic.h"

#include <QComboBox>
#include <QLabel>
#include <QPainter>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPushButton>
#include <QSet>
#include <QSpinBox>
#include <QTest>

using namespace printing;
using namespace Qt::StringLiterals;

namespace
{

class Pages : public Documento
{
public:
    explicit Pages(int count) : m_count(count) {}
    QString titleOf() const override { return u"Sheets 1/2"_s; }
    int compose(QPaintDevice &, QSizeF) override { return m_count; }
    void draw(QPainter &painter, int page) override
    {
        painter.drawText(QPointF(500, 500), u"sheet %1"_s.arg(page + 1));
        if (page + 1 == turnsOffIn)
            painter.end();
    }
    int turnsOffIn = 0; // the device fails after this page

private:
    int m_count;
};

class Paper : public Clinic
{
protected:
    // @return the message shown; "" when the printer accepted the document
    QString Failure(const std::function<void()> &print)
    {
        try {
            print();
        } catch (const store::StoreError &e) {
            EXPECT_EQ(e.number, store::ErrorNumber::Printer);
            return e.description;
        }
        return {};
    }
    template <typename W>
    W *in(frmVistaPrevia &f, const char *name)
    {
        auto *w = f.findChild<W *>(QString::fromLatin1(name));
        EXPECT_TRUE(w) << name;
        return w;
    }
    void show(frmVistaPrevia &f)
    {
        f.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&f));
        QCoreApplication::processEvents();
    }
    template <typename T>
    void choose(QComboBox *list, T que)
    {
        list->setCurrentIndex(que);
        Q_EMIT list->activated(que);
    }

    Pages three{3};
    const QString file = folder.filePath(u"out.pdf"_s);
};

} // namespace

TEST_F(Paper, APrinterThatFailsIsToldAndAnEmptyDocumentToo)
{
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(file);
    printDocument(s, three, printer, u"One"_s);
    EXPECT_EQ(pagesOf(file), (QStringList{u"sheet 1"_s, u"sheet 2"_s, u"sheet 3"_s}));

    printer.setOutputFileName(folder.filePath(u"nowhere/out.pdf"_s));
    EXPECT_NE(Failure([&] { printDocument(s, three, printer, u"One"_s); }), QString());

    Pages aMedias(3);
    aMedias.turnsOffIn = 2;
    printer.setOutputFileName(folder.filePath(u"half.pdf"_s));
    EXPECT_NE(Failure([&] { printDocument(s, aMedias, printer, u"One"_s); }), QString());
    EXPECT_THROW(savePdf(aMedias, file), store::StoreError);
    Pages none(0);
    EXPECT_EQ(savePdf(none, file), 0);
    EXPECT_EQ(pagesOf(file).size(), 3) << "the former file stays";

    ask.wait(u"No data to display"_s);
    printDocument(s, none, printer, u"One"_s);
}

TEST_F(Paper, TheDeskTakesTheUsualPrinterOrAsks)
{
    Printers hay;
    DeskPrinting desk([&hay] { return hay; });
    // Without a printer: a PDF or nothing.
    ask.wait(u"There is no printer"_s, false);
    desk.print(s, three);
    ask.wait(u"There is no printer"_s);
    ask.expectText(u"Save as PDF"_s, folder.filePath(u"out"_s));
    desk.print(s, three);
    EXPECT_EQ(pagesOf(file).size(), 3);

    // These printers do not exist on this machine, so the chosen one fails with its name.
    const auto taken = [&] { return Failure([&] { desk.print(s, three); }).section(u": "_s, 1); };
    hay = {{u"One"_s, u"Two"_s}, u"Two"_s};
    EXPECT_EQ(taken(), u"Two"_s);
    hay = {{u"One"_s}, QString()};
    EXPECT_EQ(taken(), u"One"_s);
    hay = {{u"One"_s, u"Two"_s, u"Three"_s}, QString()};
    ask.expectSelection(u"Printer"_s, std::nullopt);
    EXPECT_EQ(taken(), QString());
    ask.expectSelection(u"Printer"_s, QList<int>{2});
    EXPECT_EQ(taken(), u"Three"_s);
    EXPECT_EQ(taken(), u"Three"_s) << "asked once";
}

TEST_F(Paper, ThePreviewTurnsPagesZoomsAndSavesTheSheetChosen)
{
    frmVistaPrevia f(s, three, {});
    show(f);
    auto *view = f.findChild<QPrintPreviewWidget *>();
    EXPECT_EQ(view->pageCount(), 3);
    auto *page = in<QSpinBox>(f, "txtPagina");
    EXPECT_EQ(page->maximum(), 3);
    QTest::keyClick(&f, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(view->currentPage(), 2);
    QTest::keyClick(&f, Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(view->currentPage(), 1);
    page->setValue(3);
    EXPECT_EQ(view->currentPage(), 3);

    auto *zoom = in<QComboBox>(f, "cmbZoom");
    choose(zoom, zoom->findText(u"200 %"_s));
    EXPECT_DOUBLE_EQ(view->zoomFactor(), 2);
    choose(zoom, zoom->findText(u"Page width"_s));
    EXPECT_EQ(view->zoomMode(), QPrintPreviewWidget::FitToWidth);

    EXPECT_FALSE(in<QComboBox>(f, "cmbImpresora")->isEnabled());
    EXPECT_FALSE(in<QPushButton>(f, "cmdImprimir")->isEnabled());
    auto *pdf = in<QPushButton>(f, "cmdPdf");
    auto *sheet = in<QComboBox>(f, "cmbHoja");
    for (const auto &[name, points] :
         {std::pair{u"Letter"_s, "612 x 792"}, std::pair{u"A4"_s, "595 x 842"}}) {
        choose(sheet, sheet->findText(name, Qt::MatchStartsWith));
        EXPECT_EQ(view->pageCount(), 3);
        ask.expectText(u"Save as PDF"_s, file);
        pdf->click();
        QProcess info;
        info.start(u"pdfinfo"_s, {file});
        EXPECT_TRUE(info.waitForFinished());
        EXPECT_TRUE(info.readAll().contains(points)) << points;
    }
    ask.expectText(u"Save as PDF"_s, folder.filePath(u"nowhere/out.pdf"_s));
    ask.wait(u"The file could not be saved:"_s);
    pdf->click();
    EXPECT_TRUE(f.isVisible());
}

TEST_F(Paper, ThePreviewPrintsOnWhatItsListShows)
{
    frmVistaPrevia f(s, three, {{u"One"_s, u"Two"_s}, QString()}); // no system default
    show(f);
    auto *printers = in<QComboBox>(f, "cmbImpresora");
    auto *print = in<QPushButton>(f, "cmdImprimir");
    EXPECT_EQ(printers->currentText(), u"One"_s);
    ask.wait(u"does not take the document: One"_s);
    print->click();
    EXPECT_TRUE(f.isVisible());
    choose(printers, 1);
    ask.wait(u"does not take the document: Two"_s);
    print->click();

    Pages none(0);
    frmVistaPrevia empty(s, none, {{u"One"_s}, u"One"_s});
    show(empty);
    EXPECT_FALSE(in<QPushButton>(empty, "cmdImprimir")->isEnabled());
    EXPECT_FALSE(in<QPushButton>(empty, "cmdPdf")->isEnabled());
}

TEST_F(Paper, EachLetterOfThePreviewIsOnesOwn)
{
    for (const store::Language language :
         {store::Language::Spanish, store::Language::Portuguese, store::Language::English}) {
        s.texts = store::Texts(language);
        const frmVistaPrevia f(s, three, {});
        QSet<QChar> letters;
        const auto log = [&](const QString &text) {
            const qsizetype i = text.indexOf(u'&');
            if (i < 0)
                return;
            const QChar font = text[i + 1].toUpper();
            EXPECT_TRUE(font >= u'A' && font <= u'Z') << text.toStdString();
            EXPECT_FALSE(letters.contains(font)) << text.toStdString();
            letters.insert(font);
        };
        for (const auto *w : f.findChildren<QPushButton *>())
            log(w->text());
        for (const auto *w : f.findChildren<QLabel *>())
            log(w->text());
        EXPECT_EQ(letters.size(), 7);
    }
}
