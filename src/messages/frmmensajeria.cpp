#include "messages/frmmensajeria.h"

#include "messages/chat_link.h"
#include "messages/outbox.h"
#include "printing/letter.h"
#include "ui/boxes.h"
#include "ui/grid.h"
#include "ui/help_line.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Mensajeria = 3601,
    Destinatario = 3603,
    Motivo = 3604,
    Medio = 3605,
    Estado = 3606,
    Chat = 9962,
    SinMovil = 9965,
    SinMensajes = 9970,
    Imprimir = 9971,
    Copiar = 9972,
    Actualizar = 9973,
    Cuenta = 9974,
    TextoDelMensaje = 9975,
    SinTexto = 9976,
    Copiado = 9977,
};

enum Columna { Quien, Porque, Como, EnQueEsta, Tip, PorMedio, Ida, ArtAux, Dibujo, Id };

// Draws what the reason is about before it.
class MessageRows : public ModeloDeGrilla
{
public:
    using ModeloDeGrilla::ModeloDeGrilla;

    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role == Qt::DecorationRole && index.column() == Porque)
            if (const QString name = Fila(index.row()).celdas.value(Dibujo).toText();
                !name.isEmpty())
                return Icono(name);
        return ModeloDeGrilla::data(index, role);
    }
};

QList<ColumnaDeGrilla> columnsOf(const Sesion &s)
{
    QList<ColumnaDeGrilla> columns{{.titulo = s(Destinatario), .ancho = 150},
                                   {.titulo = s(Motivo), .ancho = 360},
                                   {.titulo = s(Medio), .ancho = 95},
                                   {.titulo = s(Estado), .ancho = 110}};
    while (columns.size() <= Id)
        columns << ColumnaDeGrilla{.oculta = true};
    return columns;
}

FilaDeGrilla rowOf(const MensajeDelDia &m)
{
    FilaDeGrilla row;
    row.celdas = {m.destinatario, m.motivo, m.porMedio, m.estado, m.tip,
                  m.medio,        m.ida,    m.artaux,   m.icono,  m.id};
    if (m.salio) { // what still waits is what one looks for
        row.realce = Realce::Hecho;
        row.motivo = m.estado;
    }
    return row;
}

} // namespace

frmmensajeria::frmmensajeria(Sesion &s, AbridorDeEnlaces abrir, QWidget *parent)
    : FormBase(s, u"frmmensajeria"_s, parent), m_abrir(std::move(abrir))
{
    build();
    wire();
    rememberSize({1080, 600});
    rememberColumns(grd->horizontalHeader());
}

void frmmensajeria::build()
{
    grd = named(new Grilla(m_s, new MessageRows(m_s, columnsOf(m_s), this)), u"Grilla"_s,
                m_s(Mensajeria));
    grd->PonerVacio(m_s(SinMensajes));

    auto *text = new QWidget;
    text->setLayout(buildText());
    auto *parts = new QSplitter;
    parts->setChildrenCollapsible(false);
    parts->addWidget(grd);
    parts->addWidget(text);
    parts->setSizes({750, 300});
    parts->setStretchFactor(0, 1);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(Espacio::L, Espacio::L, Espacio::L, Espacio::L);
    all->setSpacing(Espacio::M);
    all->addWidget(parts, 1);
    all->addLayout(buildButtons());
}

QLayout *frmmensajeria::buildText()
{
    txtmensaje = named(new QPlainTextEdit, u"txtmensaje"_s, m_s(TextoDelMensaje));
    txtmensaje->setReadOnly(true);
    txtmensaje->setTabChangesFocus(true);
    auto *title = new QLabel(m_s(TextoDelMensaje));
    title->setBuddy(txtmensaje);

    auto *column = new QVBoxLayout;
    column->setContentsMargins(Espacio::S, 0, 0, 0);
    column->setSpacing(Espacio::S);
    column->addWidget(title);
    column->addWidget(txtmensaje, 1);
    return column;
}

QLayout *frmmensajeria::buildButtons()
{
    cmdImprimir = button(u"cmdImprimir"_s, Imprimir, u"imprimir"_s);
    cmdCopiar = button(u"cmdCopiar"_s, Copiar, u"copiar"_s);
    cmdChat = button(u"cmdChat"_s, Chat, u"109"_s);
    cmdActualizar = button(u"cmdActualizar"_s, Actualizar);
    Ayu = named(new LineaDeAyuda, u"Ayu"_s, {});

    auto *foot = new QHBoxLayout;
    foot->setSpacing(Espacio::S);
    foot->addWidget(Ayu, 1);
    for (QPushButton *b : {cmdImprimir, cmdCopiar, cmdChat, cmdActualizar})
        foot->addWidget(b);
    return foot;
}

void frmmensajeria::wire()
{
    connect(grd, &Grilla::filaCambiada, this, &frmmensajeria::showMessage);
    connect(grd, &Grilla::filaElegida, txtmensaje, qOverload<>(&QWidget::setFocus));
    connect(cmdImprimir, &QPushButton::clicked, this, &frmmensajeria::print);
    connect(cmdCopiar, &QPushButton::clicked, this, &frmmensajeria::copy);
    connect(cmdActualizar, &QPushButton::clicked, this, [this] { guarded([this] { load(); }); });
    auto *again = new QShortcut(QKeySequence::Refresh, this);
    connect(again, &QShortcut::activated, cmdActualizar, &QPushButton::click);
    connect(cmdChat, &QPushButton::clicked, this, [this] {
        guarded([this] {
            if (const MensajeDelDia *m = current())
                AbrirChat(m_s, m_abrir, *Ayu, DestinatarioDeTarea(m_s, m->tip, m->ida),
                          txtmensaje->toPlainText());
        });
    });
}

void frmmensajeria::opened(const QVariantMap &)
{
    guarded([this] { load(); });
    grd->Seleccionar(0);
    grd->setFocus();
}

void frmmensajeria::activated() { load(); }

void frmmensajeria::load()
{
    setWindowTitle(m_s(Mensajeria) + u' ' + TextoDeDia(m_s.reloj.hoy));
    const int before =
        grd->FilaActual() < 0 ? 0 : grd->Modelo()->Fila(grd->FilaActual()).celdas.value(Id).toInt();
    m_mensajes = MensajesDelDia(m_s);
    std::vector<FilaDeGrilla> rows;
    rows.reserve(m_mensajes.size());
    for (const MensajeDelDia &m : m_mensajes)
        rows.push_back(rowOf(m));
    grd->Modelo()->Poner(std::move(rows));
    const int count = grd->Modelo()->Filas();
    const int again = before == 0 ? -1 : grd->Modelo()->BuscarEnGrilla(before, Id, 0, count - 1);
    grd->Seleccionar(std::max(again, 0));
    showMessage();

    const auto gone = std::ranges::count_if(m_mensajes, &MensajeDelDia::salio);
    if (count == 0)
        Ayu->Limpiar();
    else
        Ayu->Decir(m_s(Cuenta).arg(count).arg(gone).arg(count - gone));
}

const MensajeDelDia *frmmensajeria::current() const
{
    const int row = grd->FilaActual();
    if (row < 0)
        return nullptr;
    const int id = grd->Modelo()->Fila(row).celdas.value(Id).toInt();
    const auto found = std::ranges::find(m_mensajes, id, &MensajeDelDia::id);
    return found == m_mensajes.end() ? nullptr : &*found;
}

void frmmensajeria::showMessage()
{
    guarded([this] {
        const MensajeDelDia *m = current();
        const QString text = m ? TextoDeMensaje(m_s, *m) : QString();
        txtmensaje->setPlainText(text);
        txtmensaje->setPlaceholderText(m ? m_s(SinTexto) : QString());
        cmdImprimir->setEnabled(!text.isEmpty());
        cmdCopiar->setEnabled(!text.isEmpty());
        const bool chats = m && TieneChat(m_s, DestinatarioDeTarea(m_s, m->tip, m->ida));
        cmdChat->setEnabled(chats);
        cmdChat->setToolTip(m && !chats ? m_s(SinMovil) : QString());
    });
}

void frmmensajeria::print()
{
    guarded([this] {
        if (const MensajeDelDia *m = current()) {
            const auto letter = ComponerCarta(m_s, TituloDeCarta(m->motivo, m->destinatario),
                                              txtmensaje->toPlainText());
            m_s.impresion.Mostrar(m_s, *letter);
        }
    });
}

void frmmensajeria::copy()
{
    QGuiApplication::clipboard()->setText(txtmensaje->toPlainText());
    Ayu->Logro(m_s(Copiado));
}
