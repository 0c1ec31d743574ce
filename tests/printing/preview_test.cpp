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

using namespace Qt::StringLiterals;

namespace
{

class Paginas : public Documento
{
public:
    explicit Paginas(int cuantas) : m_cuantas(cuantas) {}
    QString Titulo() const override { return u"Sheets 1/2"_s; }
    int Componer(QPaintDevice &, QSizeF) override { return m_cuantas; }
    void Dibujar(QPainter &pintor, int pagina) override
    {
        pintor.drawText(QPointF(500, 500), u"sheet %1"_s.arg(pagina + 1));
        if (pagina + 1 == seApagaEn)
            pintor.end();
    }
    int seApagaEn = 0; // the device gives up behind this page

private:
    int m_cuantas;
};

class Papel : public Clinica
{
protected:
    // @return what was told; "" when the printer took the document
    QString Falla(const std::function<void()> &imprimir)
    {
        try {
            imprimir();
        } catch (const ErrorDeAlmacen &e) {
            EXPECT_EQ(e.numero, ErrorNum::Impresora);
            return e.descripcion;
        }
        return {};
    }
    template <typename W>
    W *En(frmVistaPrevia &f, const char *nombre)
    {
        auto *w = f.findChild<W *>(QString::fromLatin1(nombre));
        EXPECT_TRUE(w) << nombre;
        return w;
    }
    void Mostrar(frmVistaPrevia &f)
    {
        f.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&f));
        QCoreApplication::processEvents();
    }
    template <typename T>
    void Elegir(QComboBox *lista, T que)
    {
        lista->setCurrentIndex(que);
        Q_EMIT lista->activated(que);
    }

    Paginas tres{3};
    const QString archivo = carpeta.filePath(u"out.pdf"_s);
};

} // namespace

TEST_F(Papel, APrinterThatFailsIsToldAndAnEmptyDocumentToo)
{
    QPrinter impresora;
    impresora.setOutputFormat(QPrinter::PdfFormat);
    impresora.setOutputFileName(archivo);
    ImprimirDocumento(s, tres, impresora, u"One"_s);
    EXPECT_EQ(PaginasDe(archivo), (QStringList{u"sheet 1"_s, u"sheet 2"_s, u"sheet 3"_s}));

    impresora.setOutputFileName(carpeta.filePath(u"nowhere/out.pdf"_s));
    EXPECT_NE(Falla([&] { ImprimirDocumento(s, tres, impresora, u"One"_s); }), QString());

    Paginas aMedias(3);
    aMedias.seApagaEn = 2;
    impresora.setOutputFileName(carpeta.filePath(u"half.pdf"_s));
    EXPECT_NE(Falla([&] { ImprimirDocumento(s, aMedias, impresora, u"One"_s); }), QString());
    EXPECT_THROW(GuardarPdf(aMedias, archivo), ErrorDeAlmacen);
    Paginas ninguna(0);
    EXPECT_EQ(GuardarPdf(ninguna, archivo), 0);
    EXPECT_EQ(PaginasDe(archivo).size(), 3) << "the former file stays";

    ask.Espera(u"No data to display"_s);
    ImprimirDocumento(s, ninguna, impresora, u"One"_s);
}

TEST_F(Papel, TheDeskTakesTheUsualPrinterOrAsks)
{
    Impresoras hay;
    ImpresionDeEscritorio desk([&hay] { return hay; });
    // None: a PDF, or nothing.
    ask.Espera(u"There is no printer"_s, false);
    desk.Imprimir(s, tres);
    ask.Espera(u"There is no printer"_s);
    ask.EsperaTexto(u"Save as PDF"_s, carpeta.filePath(u"out"_s));
    desk.Imprimir(s, tres);
    EXPECT_EQ(PaginasDe(archivo).size(), 3);

    // These are no printers of this machine: whichever is taken fails with its name.
    const auto tomada = [&] { return Falla([&] { desk.Imprimir(s, tres); }).section(u": "_s, 1); };
    hay = {{u"One"_s, u"Two"_s}, u"Two"_s};
    EXPECT_EQ(tomada(), u"Two"_s);
    hay = {{u"One"_s}, QString()};
    EXPECT_EQ(tomada(), u"One"_s);
    hay = {{u"One"_s, u"Two"_s, u"Three"_s}, QString()};
    ask.EsperaSeleccion(u"Printer"_s, std::nullopt);
    EXPECT_EQ(tomada(), QString());
    ask.EsperaSeleccion(u"Printer"_s, QList<int>{2});
    EXPECT_EQ(tomada(), u"Three"_s);
    EXPECT_EQ(tomada(), u"Three"_s) << "asked once";
}

TEST_F(Papel, ThePreviewTurnsPagesZoomsAndSavesTheSheetChosen)
{
    frmVistaPrevia f(s, tres, {});
    Mostrar(f);
    auto *vista = f.findChild<QPrintPreviewWidget *>();
    EXPECT_EQ(vista->pageCount(), 3);
    auto *pagina = En<QSpinBox>(f, "txtPagina");
    EXPECT_EQ(pagina->maximum(), 3);
    QTest::keyClick(&f, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(vista->currentPage(), 2);
    QTest::keyClick(&f, Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(vista->currentPage(), 1);
    pagina->setValue(3);
    EXPECT_EQ(vista->currentPage(), 3);

    auto *zoom = En<QComboBox>(f, "cmbZoom");
    Elegir(zoom, zoom->findText(u"200 %"_s));
    EXPECT_DOUBLE_EQ(vista->zoomFactor(), 2);
    Elegir(zoom, zoom->findText(u"Page width"_s));
    EXPECT_EQ(vista->zoomMode(), QPrintPreviewWidget::FitToWidth);

    EXPECT_FALSE(En<QComboBox>(f, "cmbImpresora")->isEnabled());
    EXPECT_FALSE(En<QPushButton>(f, "cmdImprimir")->isEnabled());
    auto *pdf = En<QPushButton>(f, "cmdPdf");
    auto *hoja = En<QComboBox>(f, "cmbHoja");
    for (const auto &[nombre, puntos] :
         {std::pair{u"Letter"_s, "612 x 792"}, std::pair{u"A4"_s, "595 x 842"}}) {
        Elegir(hoja, hoja->findText(nombre, Qt::MatchStartsWith));
        EXPECT_EQ(vista->pageCount(), 3);
        ask.EsperaTexto(u"Save as PDF"_s, archivo);
        pdf->click();
        QProcess info;
        info.start(u"pdfinfo"_s, {archivo});
        EXPECT_TRUE(info.waitForFinished());
        EXPECT_TRUE(info.readAll().contains(puntos)) << puntos;
    }
    ask.EsperaTexto(u"Save as PDF"_s, carpeta.filePath(u"nowhere/out.pdf"_s));
    ask.Espera(u"The file could not be saved:"_s);
    pdf->click();
    EXPECT_TRUE(f.isVisible());
}

TEST_F(Papel, ThePreviewPrintsOnWhatItsListShows)
{
    frmVistaPrevia f(s, tres, {{u"One"_s, u"Two"_s}, QString()}); // the system names none
    Mostrar(f);
    auto *impresoras = En<QComboBox>(f, "cmbImpresora");
    auto *imprimir = En<QPushButton>(f, "cmdImprimir");
    EXPECT_EQ(impresoras->currentText(), u"One"_s);
    ask.Espera(u"does not take the document: One"_s);
    imprimir->click();
    EXPECT_TRUE(f.isVisible());
    Elegir(impresoras, 1);
    ask.Espera(u"does not take the document: Two"_s);
    imprimir->click();

    Paginas ninguna(0);
    frmVistaPrevia vacia(s, ninguna, {{u"One"_s}, u"One"_s});
    Mostrar(vacia);
    EXPECT_FALSE(En<QPushButton>(vacia, "cmdImprimir")->isEnabled());
    EXPECT_FALSE(En<QPushButton>(vacia, "cmdPdf")->isEnabled());
}

TEST_F(Papel, EachLetterOfThePreviewIsOnesOwn)
{
    for (const Idioma idioma : {Idioma::Espanol, Idioma::Portugues, Idioma::Ingles}) {
        s.textos = Textos(idioma);
        const frmVistaPrevia f(s, tres, {});
        QSet<QChar> letras;
        const auto anotar = [&](const QString &texto) {
            const qsizetype i = texto.indexOf(u'&');
            if (i < 0)
                return;
            const QChar letra = texto[i + 1].toUpper();
            EXPECT_TRUE(letra >= u'A' && letra <= u'Z') << texto.toStdString();
            EXPECT_FALSE(letras.contains(letra)) << texto.toStdString();
            letras.insert(letra);
        };
        for (const auto *w : f.findChildren<QPushButton *>())
            anotar(w->text());
        for (const auto *w : f.findChildren<QLabel *>())
            anotar(w->text());
        EXPECT_EQ(letras.size(), 7);
    }
}
