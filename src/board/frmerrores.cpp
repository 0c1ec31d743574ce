#include "board/frmerrores.h"

#include "board/failures.h"
#include "texts/board.h"
#include "texts/clients.h"
#include "ui/grid.h"
#include "ui/help_line.h"
#include "ui/theme.h"

#include <QPushButton>
#include <QVBoxLayout>

using namespace board;
using namespace Qt::StringLiterals;

frmErrores::frmErrores(Sesion &s, QWidget *parent) : ui::FormBase(s, u"frmErrores"_s, parent)
{
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(s(text::FailuresTitle));
    auto *model = new ui::GridModel(s,
                                    {{s(text::FailureDay), ui::Kind::Day, 100},
                                     {s(text::FailureNumber), ui::Kind::Whole, 80},
                                     {s(text::FailureSource), ui::Kind::Text, 180},
                                     {s(text::FailureDescription), ui::Kind::Text, 420}},
                                    this);
    grd = named(new ui::Grid(s, model), u"grd"_s, s(text::FailuresTitle));
    grd->setEmptyText(s(text::NoFailures));
    grd->allowSeveral();
    Ayu = named(new ui::HelpLine, u"Ayu"_s, {});
    cmdBorrar = button(u"cmdBorrar"_s, text::ClearFailures);
    auto *back = button(u"cmdvolver"_s, text::BackButton, u"volver"_s, u"Esc"_s);
    connect(cmdBorrar, &QPushButton::clicked, this, &frmErrores::clear);
    connect(back, &QPushButton::clicked, this, &frmErrores::reject);

    auto *foot = new QHBoxLayout;
    foot->setSpacing(ui::space::S);
    foot->addWidget(Ayu, 1);
    foot->addWidget(cmdBorrar);
    foot->addWidget(back);
    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(ui::space::L, ui::space::L, ui::space::L, ui::space::L);
    all->setSpacing(ui::space::M);
    all->addWidget(grd, 1);
    all->addLayout(foot);
    rememberSize({860, 480});
}

void frmErrores::opened(const QVariantMap &)
{
    guarded([this] { load(); });
    grd->setFocus();
    Ayu->tell(m_s(text::FailuresHint));
}

void frmErrores::load()
{
    std::vector<ui::GridRow> rows;
    for (const Failure &f : readFailures(m_s))
        rows.push_back({.cells = {f.day, f.number, f.source, f.description}});
    cmdBorrar->setEnabled(!rows.empty());
    grd->gridModel()->set(std::move(rows));
    grd->Seleccionar(0);
}

void frmErrores::clear()
{
    const int count = grd->gridModel()->allRows();
    if (!m_s.dialogos.askBeforeLoss(m_s(text::ClearFailuresQuestion).arg(count)))
        return;
    guarded([this] {
        clearFailures(m_s);
        load();
    });
}
