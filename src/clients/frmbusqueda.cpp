#include "clients/frmbusqueda.h"

#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"
#include "ui/theme.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    TextoABuscar = 3467,
    BuscarPor = 9800,
    YAdemasPor = 9801,
    TituloDeMascotas = 9802,
    TituloDeClientes = 9803,
    QueEscribir = 9823,
    NadaCoincide = 9824,
    UnoODos = 9825,
    HayMas = 9826,
    Encontrados = 9827,
    Continuar = 9828,
    YaNoExiste = 9829,
    Fallecido = 9835,
};

// Cells of a patient: pedigree, breeder and death are the Yes/No.
constexpr int ofPedigree = 8, ofDeath = 10;

// A key that comes sooner than this after the last one only goes into the box.
constexpr int PauseMs = 120;

QList<ColumnaDeGrilla> columnsOf(const Sesion &s, Busqueda busqueda)
{
    // Id, name, owner, breed, species, coat, features, chip, three flags, address, sub-region,
    // two telephones, notes.
    static constexpr int ofPatients[] = {64, 120, 170, 150, 84,  120, 150, 150,
                                         80, 96,  90,  180, 130, 110, 110, 200};
    // Id, name, address, sub-region, region, two codes, two telephones, mail, source, notes.
    static constexpr int ofClients[] = {64, 190, 200, 140, 110, 120, 120, 120, 120, 200, 120, 200};

    QList<ColumnaDeGrilla> columns;
    const std::span<const int> titles = TitulosDe(busqueda);
    for (size_t i = 0; i < titles.size(); ++i) {
        ColumnaDeGrilla column{.titulo = s(titles[i])};
        if (i == 0)
            column.clase = Clase::Codigo;
        else if (busqueda == Busqueda::Mascotas && i >= ofPedigree && i <= ofDeath)
            column.clase = Clase::SiNo;
        column.ancho = busqueda == Busqueda::Mascotas ? ofPatients[i] : ofClients[i];
        columns << column;
    }
    return columns;
}

} // namespace

frmBusqueda::frmBusqueda(Sesion &s, Formularios &formularios, Busqueda busqueda)
    : FormBase(s, busqueda == Busqueda::Mascotas ? u"frmBusquedaMascotas"_s
                                                 : u"frmBusquedaClientes"_s),
      m_forms(formularios),
      m_busqueda(busqueda)
{
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(s(busqueda == Busqueda::Mascotas ? TituloDeMascotas : TituloDeClientes));
    m_pause.setSingleShot(true);
    m_pause.setInterval(PauseMs);
    build();
    listen();
    rememberSize({1120, 600});
    rememberColumns(grd->horizontalHeader());
}

QComboBox *frmBusqueda::criteria(const QString &name, int label)
{
    auto *list = named(new QComboBox, name, m_s(label));
    for (const CriterioDeBusqueda &c : CriteriosDe(m_busqueda))
        list->addItem(m_s(c.nombre));
    list->setMaxVisibleItems(list->count());
    return list;
}

QLineEdit *frmBusqueda::textBox(const QString &name)
{
    auto *box = named(new QLineEdit, name, m_s(TextoABuscar));
    box->setMaxLength(160); // of the widest column
    box->setClearButtonEnabled(true);
    return box;
}

void frmBusqueda::build()
{
    cmbCriterioUno = criteria(u"cmbCriterioUno"_s, BuscarPor);
    cmbCriterioDos = criteria(u"cmbCriterioDos"_s, YAdemasPor);
    // The pair that is asked for most: a patient and its owner, a client and where it lives.
    cmbCriterioDos->setCurrentIndex(m_busqueda == Busqueda::Mascotas ? 6 : 1);
    txtTextoUno = textBox(u"txtTextoUno"_s);
    txtTextoDos = textBox(u"txtTextoDos"_s);
    refuseApostrophe({txtTextoUno, txtTextoDos});

    auto *questions = new QGridLayout;
    questions->setHorizontalSpacing(Espacio::M);
    questions->setVerticalSpacing(Espacio::S);
    const auto row = [&](int r, int label, QComboBox *list, QLineEdit *box) {
        auto *first = new QLabel(m_s(label));
        first->setBuddy(list);
        auto *second = new QLabel(m_s(TextoABuscar));
        second->setBuddy(box);
        questions->addWidget(first, r, 0);
        questions->addWidget(list, r, 1);
        questions->addWidget(second, r, 2);
        questions->addWidget(box, r, 3);
    };
    row(0, BuscarPor, cmbCriterioUno, txtTextoUno);
    row(1, YAdemasPor, cmbCriterioDos, txtTextoDos);
    questions->setColumnStretch(3, 1);

    grd = named(new Grilla(m_s, new ModeloDeGrilla(m_s, columnsOf(m_s, m_busqueda), this)),
                u"grd"_s, windowTitle());
    Ayu = named(new LineaDeAyuda, u"Ayu"_s, {});
    cmdContinuar = named(new QPushButton(m_s(Continuar)), u"cmdContinuar"_s, m_s(Continuar));
    cmdContinuar->setDefault(true);
    cmdContinuar->setEnabled(false);

    auto *foot = new QHBoxLayout;
    foot->setSpacing(Espacio::L);
    foot->addWidget(Ayu, 1);
    foot->addWidget(cmdContinuar);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(Espacio::L, Espacio::L, Espacio::L, Espacio::L);
    all->setSpacing(Espacio::M);
    all->addLayout(questions);
    all->addWidget(grd, 1);
    all->addLayout(foot);

    enterChain({cmbCriterioUno, txtTextoUno});
    enterChain({cmbCriterioDos, txtTextoDos});
}

void frmBusqueda::listen()
{
    const auto restart = [this] { m_pause.start(); };
    for (QLineEdit *box : {txtTextoUno, txtTextoDos}) {
        connect(box, &QLineEdit::textChanged, this, restart);
        box->installEventFilter(this);
    }
    for (const auto &[list, box] :
         {std::pair(cmbCriterioUno, txtTextoUno), std::pair(cmbCriterioDos, txtTextoDos)}) {
        hintFor(list, box);
        connect(list, &QComboBox::currentIndexChanged, this, [this, list = list, box = box] {
            hintFor(list, box);
            if (!box->text().isEmpty())
                m_pause.start();
        });
    }
    connect(&m_pause, &QTimer::timeout, this, &frmBusqueda::searchTyped);
    connect(grd, &Grilla::filaElegida, this, &frmBusqueda::take);
    connect(grd, &Grilla::filaCambiada, this, [this](int r) { cmdContinuar->setEnabled(r >= 0); });
    connect(cmdContinuar, &QPushButton::clicked, this, [this] { take(grd->FilaActual()); });
}

void frmBusqueda::hintFor(QComboBox *criterion, QLineEdit *box)
{
    const bool yesNo = CriteriosDe(m_busqueda)[size_t(criterion->currentIndex())].siNo;
    box->setPlaceholderText(yesNo ? m_s(UnoODos) : QString());
}

void frmBusqueda::opened(const QVariantMap &)
{
    txtTextoUno->clear();
    txtTextoDos->clear();
    m_pause.stop();
    grd->Modelo()->Poner({});
    grd->PonerVacio(m_s(QueEscribir));
    Ayu->Limpiar();
    txtTextoUno->setFocus();
}

bool frmBusqueda::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && (watched == txtTextoUno || watched == txtTextoDos)) {
        auto *key = static_cast<QKeyEvent *>(event);
        if (grd->Recorrer(key))
            return true;
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            searchAll();
            return true;
        }
    }
    return FormBase::eventFilter(watched, event);
}

void frmBusqueda::hideEvent(QHideEvent *event)
{
    m_pause.stop();
    FormBase::hideEvent(event);
}

Condiciones frmBusqueda::asked() const
{
    return {Condicion{cmbCriterioUno->currentIndex(), txtTextoUno->text()},
            Condicion{cmbCriterioDos->currentIndex(), txtTextoDos->text()}};
}

void frmBusqueda::searchTyped()
{
    guarded([this] {
        Hallazgo found = BuscarAlTeclear(m_s, m_busqueda, asked());
        if (!found.impedimento.isEmpty())
            Ayu->Fallo(found.impedimento);
        else
            showRows(std::move(found));
    });
}

void frmBusqueda::searchAll()
{
    m_pause.stop();
    guarded([this] {
        Hallazgo found = Buscar(m_s, m_busqueda, asked());
        if (!found.impedimento.isEmpty()) {
            Ayu->Fallo(found.impedimento);
            m_s.dialogos.Mensaje(found.impedimento);
            return;
        }
        const bool searched = found.buscado;
        showRows(std::move(found));
        if (searched && grd->FilaActual() >= 0)
            grd->setFocus();
    });
}

void frmBusqueda::showRows(Hallazgo found)
{
    if (!found.buscado) {
        Ayu->Decir(m_s(QueEscribir));
        return;
    }
    const auto idOf = [this](int row) { return grd->Modelo()->Fila(row).celdas.value(0).toInt(); };
    const int before = idOf(grd->FilaActual());
    std::vector<FilaDeGrilla> rows;
    rows.reserve(found.filas.size());
    for (QList<Valor> &cells : found.filas) {
        FilaDeGrilla &row = rows.emplace_back();
        if (m_busqueda == Busqueda::Mascotas && cells[ofDeath].toBool()) {
            row.realce = Realce::Apagado;
            row.celdaRealzada = 1;
            row.motivo = m_s(Fallecido);
        }
        row.celdas = std::move(cells);
    }
    grd->PonerVacio(m_s(NadaCoincide));
    grd->Modelo()->Poner(std::move(rows));
    const int again = grd->Modelo()->BuscarEnGrilla(before, 0, 0, grd->Modelo()->Filas() - 1);
    grd->Seleccionar(std::max(again, 0));

    const int count = grd->Modelo()->Filas();
    if (count == 0)
        Ayu->Limpiar();
    else
        Ayu->Decir(m_s(found.hayMas ? HayMas : Encontrados).arg(locale().toString(count)));
}

void frmBusqueda::take(int row)
{
    if (row < 0)
        return;
    guarded([this, row] {
        if (!TomarHallado(m_s, m_busqueda, grd->Modelo()->Fila(row).celdas.value(0).toInt())) {
            Ayu->Fallo(m_s(YaNoExiste));
            return;
        }
        accept();
        m_forms.Abrir(u"frmPropietarios"_s);
    });
}
