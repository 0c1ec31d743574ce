#include "ui/record_mode.h"

using namespace ui;

RecordChoices ui::recordChoices(Mode mode, bool free, bool hasRow, bool mayAdd)
{
    const bool mine = mode != Mode::View;
    return {.save = {mine, mine},
            .newOne = {mode != Mode::Modify, mine || (free && mayAdd)},
            .modify = {mode != Mode::New, mine || (free && hasRow)},
            .erase = {!mine, free && hasRow}};
}

void Entering::begin(int panel, Mode mode, QVariantMap boxes)
{
    m_panel = panel;
    m_mode = mode;
    m_before = std::move(boxes);
}

void Entering::end()
{
    m_panel = -1;
    m_mode = Mode::View;
    m_before.clear();
}
