#include "messages/frmavisosplanificadas.h"

#include "messages/chat_link.h"
#include "texts/agenda.h"
#include "texts/search.h"
#include "texts/texts.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTabBar>
#include <algorithm>

using namespace messages;
using namespace Qt::StringLiterals;

namespace
{

constexpr int FirstGroup = int(NoticesGroup::MissedWithoutService);
constexpr int Groups = 4;

// Long enough not to write on every key, short enough that nothing is lost.
constexpr int PauseMs = 300;

enum Column { OfPatient, OfOwner, OfProduct, OfTelephones, OfExpiry, OfNote, OfKey };

ui::GridRow rowOf(const PlannedNotice &a)
{
    ui::GridRow row;
    row.cells = {a.patient, a.owner, a.product, a.telephones, a.expires, a.note, a.key};
    return row;
}

} // namespace

frmAvisosPlanificadas::frmAvisosPlanificadas(Sesion &s, ui::FormRegistry &forms, LinkOpener open,
                                             QWidget *parent)
    : ui::FormBase(s, u"frmAvisosPlanificadas"_s, parent), m_forms(forms), m_open(std::move(open))
{
    setWindowTitle(s(text::NoticesTitle));
    m_pause.setSingleShot(true);
    m_pause.setInterval(PauseMs);
    build();
    wire();
    rememberSize({1120, 620});
    rememberColumns(grd->horizontalHeader());
}

void frmAvisosPlanificadas::build()
{
    tabGrupo = named(new QTabBar, u"tabGrupo"_s, m_s(text::NoticesGroup));
    for (int i = 0; i < Groups; ++i)
        tabGrupo->addTab(m_s(text::MissedWithoutService + i));
    tabGrupo->setExpanding(false);
    tabGrupo->setDrawBase(false);

    grd = named(
        new ui::Grid(m_s,
                     new ui::GridModel(
                         m_s,
                         {{.title = m_s(text::Patient), .width = 120},
                          {.title = m_s(text::Owner), .width = 180},
                          {.title = m_s(text::NoticesProduct), .width = 200},
                          {.title = m_s(text::Phones), .width = 190},
                          {.title = m_s(text::NoticesExpires), .kind = ui::Kind::Day, .width = 100},
                          {.title = m_s(text::NoticesNote), .width = 140},
                          {.hidden = true}},
                         this)),
        u"Grilla"_s, m_s(text::NoticesTitle));
    grd->setEmptyText(m_s(text::NoDosesInGroup));

    auto *note = new QWidget;
    note->setLayout(buildNote());
    auto *parts = new QSplitter(Qt::Vertical);
    parts->setChildrenCollapsible(false);
    parts->addWidget(grd);
    parts->addWidget(note);
    parts->setSizes({360, 140});
    parts->setStretchFactor(0, 1);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(ui::space::L, ui::space::L, ui::space::L, ui::space::L);
    all->setSpacing(ui::space::M);
    all->addWidget(tabGrupo);
    all->addWidget(parts, 1);
    all->addLayout(buildButtons());
}

QLayout *frmAvisosPlanificadas::buildNote()
{
    txtNota = named(new QPlainTextEdit, u"txtNota"_s, m_s(text::NoticeNote));
    txtNota->setTabChangesFocus(true);
    auto *title = new QLabel(m_s(text::NoticeNote));
    title->setBuddy(txtNota);
    auto *explanation =
        named(new QLabel(m_s(text::NoticesHelp)), u"lblAyuda"_s, m_s(text::NoticesHelp));
    explanation->setProperty("clase", u"suave"_s);
    explanation->setWordWrap(true);
    explanation->setTextFormat(Qt::PlainText);

    auto *place = new QGridLayout;
    place->setContentsMargins(0, ui::space::S, 0, 0);
    place->setHorizontalSpacing(ui::space::L);
    place->setVerticalSpacing(ui::space::XS);
    place->addWidget(title, 0, 0);
    place->addWidget(txtNota, 1, 0);
    place->addWidget(explanation, 1, 1, Qt::AlignTop);
    place->setColumnStretch(0, 3);
    place->setColumnStretch(1, 2);
    return place;
}

QLayout *frmAvisosPlanificadas::buildButtons()
{
    cmdChat = button(u"cmdChat"_s, text::NoticesChat, u"109"_s);
    cmdFicha = button(u"cmdFicha"_s, text::NoticesRecord, u"Propietarios"_s);
    Ayu = named(new ui::HelpLine, u"Ayu"_s, {});
    auto *foot = new QHBoxLayout;
    foot->setSpacing(ui::space::S);
    foot->addWidget(Ayu, 1);
    foot->addWidget(cmdChat);
    foot->addWidget(cmdFicha);
    return foot;
}

void frmAvisosPlanificadas::wire()
{
    connect(tabGrupo, &QTabBar::currentChanged, this, [this] {
        guarded([this] {
            keepNote();
            load();
        });
    });
    connect(grd, &ui::Grid::changedRow, this, &frmAvisosPlanificadas::showNotice);
    connect(grd, &ui::Grid::chosenRow, this, &frmAvisosPlanificadas::goToClient);
    connect(txtNota, &QPlainTextEdit::textChanged, &m_pause, qOverload<>(&QTimer::start));
    connect(&m_pause, &QTimer::timeout, this, [this] { guarded([this] { keepNote(); }); });
    connect(cmdFicha, &QPushButton::clicked, this, &frmAvisosPlanificadas::goToClient);
    connect(cmdChat, &QPushButton::clicked, this, [this] {
        guarded([this] {
            if (const PlannedNotice *a = current())
                openChat(m_s, m_open, *Ayu, a->idc, noticeText(m_s, *a));
        });
    });
}

void frmAvisosPlanificadas::opened(const QVariantMap &parameters)
{
    guarded([this, &parameters] {
        keepNote();
        const int group =
            parameters.value(u"grupo"_s, FirstGroup + tabGrupo->currentIndex()).toInt();
        {
            const QSignalBlocker quiet(tabGrupo); // the list is read below, only once
            tabGrupo->setCurrentIndex(std::clamp(group - FirstGroup, 0, Groups - 1));
        }
        load();
    });
    grd->Seleccionar(0);
    grd->setFocus();
}

void frmAvisosPlanificadas::activated()
{
    keepNote();
    load();
}

void frmAvisosPlanificadas::hideEvent(QHideEvent *event)
{
    guarded([this] { keepNote(); });
    ui::FormBase::hideEvent(event);
}

void frmAvisosPlanificadas::load()
{
    const QString before = m_keyInBox;
    m_notices = noticesOf(m_s, NoticesGroup(FirstGroup + tabGrupo->currentIndex()));
    std::vector<ui::GridRow> rows;
    rows.reserve(m_notices.size());
    for (const PlannedNotice &a : m_notices)
        rows.push_back(rowOf(a));
    grd->gridModel()->set(std::move(rows));
    const int count = grd->gridModel()->allRows();
    const int again =
        before.isEmpty() ? -1 : grd->gridModel()->BuscarEnGrilla(before, OfKey, 0, count - 1);
    grd->Seleccionar(std::max(again, 0));
    showNotice();
    if (count == 0)
        Ayu->clean();
    else
        Ayu->tell(m_s(text::NoticesCount).arg(count));
}

PlannedNotice *frmAvisosPlanificadas::current()
{
    const int row = grd->currentRow();
    if (row < 0)
        return nullptr;
    const QString key = grd->gridModel()->Row(row).cells.value(OfKey).toText();
    const auto found = std::ranges::find(m_notices, key, &PlannedNotice::key);
    return found == m_notices.end() ? nullptr : &*found;
}

void frmAvisosPlanificadas::showNotice()
{
    guarded([this] {
        keepNote();
        const PlannedNotice *a = current();
        m_keyInBox = a ? a->key : QString();
        {
            const QSignalBlocker quiet(txtNota);
            txtNota->setPlainText(a ? a->note : QString());
        }
        txtNota->setEnabled(a);
        cmdFicha->setEnabled(a && m_forms.exists(u"frmPropietarios"_s));
        const bool chats = a && hasChat(m_s, a->idc);
        cmdChat->setEnabled(chats);
        cmdChat->setToolTip(a && !chats ? m_s(text::NoMobile) : QString());
    });
}

void frmAvisosPlanificadas::keepNote()
{
    m_pause.stop();
    // A note that was only displayed must not overwrite what another terminal wrote.
    const auto notice = std::ranges::find(m_notices, m_keyInBox, &PlannedNotice::key);
    if (notice == m_notices.end() || !txtNota->document()->isModified())
        return;
    const QString text = txtNota->toPlainText();
    saveNote(m_s, notice->key, text);
    txtNota->document()->setModified(false);
    notice->note = text;
    ui::GridModel *rows = grd->gridModel();
    const int row = rows->BuscarEnGrilla(notice->key, OfKey, 0, rows->allRows() - 1);
    if (row >= 0)
        rows->change(row, rowOf(*notice));
    Ayu->success(m_s(text::NoteKept));
}

void frmAvisosPlanificadas::goToClient()
{
    guarded([this] {
        keepNote();
        const PlannedNotice *a = current();
        if (!a || !cmdFicha->isEnabled())
            return;
        m_s.IdGlobal = {a->idc, a->idm};
        m_forms.open(u"frmPropietarios"_s);
    });
}
