#include "ui/record_buttons.h"

#include "texts/clients.h"
#include "texts/texts.h"
#include "ui/record_fields.h"
#include "ui/theme.h"

#include <QPushButton>

using namespace ui;

RecordButtons::RecordButtons(const Sesion &s, const Names &names, QWidget *parent)
    : QWidget(parent), m_s(s), m_newText(names.newText), m_modifyText(names.modifyText)
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->setSpacing(space::S);
    const auto button = [&](const QString &name, int caption) {
        auto *b = new QPushButton;
        b->setObjectName(name);
        b->setAutoDefault(false);
        setTitle(b, s(caption));
        row->addWidget(b);
        return b;
    };
    save = button(names.save, text::SaveButton);
    newOne = button(names.newOne, m_newText);
    modify = button(names.modify, m_modifyText);
    erase = button(names.erase, text::DeleteButton);
    row->addStretch();
    connect(save, &QPushButton::clicked, this, &RecordButtons::saved);
    connect(erase, &QPushButton::clicked, this, &RecordButtons::erased);
    connect(newOne, &QPushButton::clicked, this, [this] { Q_EMIT toggled(Mode::New); });
    connect(modify, &QPushButton::clicked, this, [this] { Q_EMIT toggled(Mode::Modify); });
}

void RecordButtons::arrange(Mode mode, bool free, bool hasRow, bool mayAdd)
{
    setTitle(newOne, m_s(mode == Mode::New ? text::Cancel : m_newText));
    setTitle(modify, m_s(mode == Mode::Modify ? text::Cancel : m_modifyText));
    const RecordChoices choices = recordChoices(mode, free, hasRow, mayAdd);
    const auto put = [](QPushButton *b, RecordChoices::Choice choice) {
        b->setVisible(choice.shown);
        b->setEnabled(choice.usable);
    };
    put(save, choices.save);
    put(newOne, choices.newOne);
    put(modify, choices.modify);
    put(erase, choices.erase);
    save->setDefault(mode != Mode::View);
}
