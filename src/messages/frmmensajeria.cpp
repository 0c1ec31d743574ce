#include "messages/frmmensajeria.h"

#include "messages/chat_link.h"
#include "messages/outbox.h"
#include "printing/letter.h"
#include "texts/agenda.h"
#include "texts/printing.h"
#include "texts/texts.h"
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

using namespace messages;
using namespace Qt::StringLiterals;

namespace
{

enum Column { Who, Why, As, State, Tip, ByChannel, Ida, ArtAux, Picture, Id };

// Draws an icon before the reason.
class MessageRows : public ui::GridModel
{
public:
    using ui::GridModel::GridModel;

    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role == Qt::DecorationRole && index.column() == Why)
            if (const QString name = Row(index.row()).cells.value(Picture).toText();
                !name.isEmpty())
                return ui::namedIcon(name);
        return ui::GridModel::data(index, role);
    }
};

QList<ui::GridColumn> columnsOf(const Sesion &s)
{
    QList<ui::GridColumn> columns{{.title = s(text::OutboxAddressee), .width = 150},
                                  {.title = s(text::OutboxReason), .width = 360},
                                  {.title = s(text::OutboxChannel), .width = 95},
                                  {.title = s(text::OutboxState), .width = 110}};
    while (columns.size() < Id)
        columns << ui::GridColumn{.hidden = true};
    columns << ui::GridColumn{.kind = ui::Kind::Whole, .hidden = true};
    return columns;
}

ui::GridRow rowOf(const DayMessage &m)
{
    ui::GridRow row;
    row.cells = {m.addressee, m.reason, m.byChannel, m.state, m.tip,
                 m.medio,     m.ida,    m.artaux,    m.icon,  m.id};
    if (m.wentOut) { // dimmed, since users look for what is still waiting
        row.highlight = ui::Highlight::Done;
        row.reason = m.state;
    }
    return row;
}

} // namespace

frmmensajeria::frmmensajeria(Sesion &s, LinkOpener open, QWidget *parent)
    : ui::FormBase(s, u"frmmensajeria"_s, parent), m_open(std::move(open))
{
    build();
    wire();
    rememberSize({1080, 600});
    rememberColumns(grd->horizontalHeader());
}

void frmmensajeria::build()
{
    grd = named(new ui::Grid(m_s, new MessageRows(m_s, columnsOf(m_s), this)), u"Grilla"_s,
                m_s(text::OutboxMessages));
    grd->setEmptyText(m_s(text::NoMessagesToday));

    auto *text = new QWidget;
    text->setLayout(buildText());
    auto *parts = new QSplitter;
    parts->setChildrenCollapsible(false);
    parts->addWidget(grd);
    parts->addWidget(text);
    parts->setSizes({750, 300});
    parts->setStretchFactor(0, 1);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(ui::space::L, ui::space::L, ui::space::L, ui::space::L);
    all->setSpacing(ui::space::M);
    all->addWidget(parts, 1);
    all->addLayout(buildButtons());
}

QLayout *frmmensajeria::buildText()
{
    txtmensaje = named(new QPlainTextEdit, u"txtmensaje"_s, m_s(text::OutboxMessageText));
    txtmensaje->setReadOnly(true);
    txtmensaje->setTabChangesFocus(true);
    auto *title = new QLabel(m_s(text::OutboxMessageText));
    title->setBuddy(txtmensaje);

    auto *column = new QVBoxLayout;
    column->setContentsMargins(ui::space::S, 0, 0, 0);
    column->setSpacing(ui::space::S);
    column->addWidget(title);
    column->addWidget(txtmensaje, 1);
    return column;
}

QLayout *frmmensajeria::buildButtons()
{
    cmdImprimir = button(u"cmdImprimir"_s, text::PrintButton, u"imprimir"_s);
    cmdCopiar = button(u"cmdCopiar"_s, text::OutboxCopy, u"copiar"_s);
    cmdChat = button(u"cmdChat"_s, text::NoticesChat, u"109"_s);
    cmdActualizar = button(u"cmdActualizar"_s, text::OutboxUpdate);
    Ayu = named(new ui::HelpLine, u"Ayu"_s, {});

    auto *foot = new QHBoxLayout;
    foot->setSpacing(ui::space::S);
    foot->addWidget(Ayu, 1);
    for (QPushButton *b : {cmdImprimir, cmdCopiar, cmdChat, cmdActualizar})
        foot->addWidget(b);
    return foot;
}

void frmmensajeria::wire()
{
    connect(grd, &ui::Grid::changedRow, this, &frmmensajeria::showMessage);
    connect(grd, &ui::Grid::chosenRow, txtmensaje, qOverload<>(&QWidget::setFocus));
    connect(cmdImprimir, &QPushButton::clicked, this, &frmmensajeria::print);
    connect(cmdCopiar, &QPushButton::clicked, this, &frmmensajeria::copy);
    connect(cmdActualizar, &QPushButton::clicked, this, [this] { guarded([this] { load(); }); });
    auto *again = new QShortcut(QKeySequence::Refresh, this);
    connect(again, &QShortcut::activated, cmdActualizar, &QPushButton::click);
    connect(cmdChat, &QPushButton::clicked, this, [this] {
        guarded([this] {
            if (const DayMessage *m = current())
                openChat(m_s, m_open, *Ayu, taskAddressee(m_s, m->tip, m->ida),
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
    setWindowTitle(m_s(text::OutboxMessages) + u' ' + store::dayText(m_s.reloj.hoy));
    const int before = grd->IdActual();
    m_messages = dayMessages(m_s);
    std::vector<ui::GridRow> rows;
    rows.reserve(m_messages.size());
    for (const DayMessage &m : m_messages)
        rows.push_back(rowOf(m));
    grd->gridModel()->set(std::move(rows));
    const int count = grd->gridModel()->allRows();
    if (!grd->IrA(before))
        grd->Seleccionar(0);
    showMessage();

    const auto gone = std::ranges::count_if(m_messages, &DayMessage::wentOut);
    if (count == 0)
        Ayu->clean();
    else
        Ayu->tell(m_s(text::OutboxCounts).arg(count).arg(gone).arg(count - gone));
}

const DayMessage *frmmensajeria::current() const
{
    const auto found = std::ranges::find(m_messages, grd->IdActual(), &DayMessage::id);
    return found == m_messages.end() ? nullptr : &*found;
}

void frmmensajeria::showMessage()
{
    guarded([this] {
        const DayMessage *m = current();
        const QString text = m ? messageText(m_s, *m) : QString();
        txtmensaje->setPlainText(text);
        txtmensaje->setPlaceholderText(m ? m_s(text::MessageHasNoText) : QString());
        cmdImprimir->setEnabled(!text.isEmpty());
        cmdCopiar->setEnabled(!text.isEmpty());
        const bool chats = m && hasChat(m_s, taskAddressee(m_s, m->tip, m->ida));
        cmdChat->setEnabled(chats);
        cmdChat->setToolTip(m && !chats ? m_s(text::NoMobile) : QString());
    });
}

void frmmensajeria::print()
{
    guarded([this] {
        if (const DayMessage *m = current()) {
            const auto letter = printing::composeLetter(
                m_s, printing::letterTitle(m->reason, m->addressee), txtmensaje->toPlainText());
            m_s.impresion.show(m_s, *letter);
        }
    });
}

void frmmensajeria::copy()
{
    QGuiApplication::clipboard()->setText(txtmensaje->toPlainText());
    Ayu->success(m_s(text::OutboxCopied));
}
