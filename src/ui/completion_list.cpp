#include "ui/completion_list.h"

#include <QKeyEvent>
#include <QLineEdit>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

bool erases(const QKeyEvent &key)
{
    return key.key() == Qt::Key_Backspace || key.key() == Qt::Key_Delete
           || key.matches(QKeySequence::Cut) || key.matches(QKeySequence::Undo)
           || key.matches(QKeySequence::Redo);
}

} // namespace

ListWithCompleted::ListWithCompleted(QWidget *parent) : CalmList(parent)
{
    setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr);
    setMaxVisibleItems(16);
    lineEdit()->installEventFilter(this);
    connect(lineEdit(), &QLineEdit::textEdited, this, [this](const QString &text) {
        if (text.isEmpty())
            Q_EMIT emptied();
        else if (!m_deletes)
            Q_EMIT typed(text);
    });
    connect(this, &QComboBox::activated, this,
            [this](int index) { Q_EMIT chosen(itemData(index).toInt()); });
}

void ListWithCompleted::load(const QList<store::Option> &options)
{
    const QSignalBlocker silent(this);
    const QString shown = currentText();
    clear();
    for (const store::Option &option : options)
        addItem(option.text.section(u'\t', 0, 0), option.value);
    setCurrentIndex(findText(shown, Qt::MatchFixedString));
    setEditText(shown);
}

void ListWithCompleted::SeleccionarItem(int id)
{
    const QSignalBlocker silent(this);
    const int index = findData(id);
    setCurrentIndex(index);
    if (index < 0)
        clearEditText();
    lineEdit()->home(false); // show the beginning of a long name
}

int ListWithCompleted::Id() const
{
    const QString text = currentText().trimmed();
    if (text.isEmpty())
        return 0;
    // Two entries may have the same name; the current one wins.
    if (itemText(currentIndex()).compare(text, Qt::CaseInsensitive) == 0)
        return currentData().toInt();
    return itemData(findText(text, Qt::MatchFixedString)).toInt();
}

void ListWithCompleted::propose(int id, const QString &name)
{
    const QString text = lineEdit()->text();
    if (!name.startsWith(text, Qt::CaseInsensitive))
        return;
    {
        const QSignalBlocker silent(this);
        setCurrentIndex(findData(id));
    }
    lineEdit()->setText(name);
    lineEdit()->setSelection(int(text.size()), int(name.size() - text.size()));
}

bool ListWithCompleted::eventFilter(QObject *watched, QEvent *event)
{
    // Keys go to the list; those sent straight to its line edit are rerouted.
    if (watched == lineEdit() && event->type() == QEvent::KeyPress) {
        keyPressEvent(static_cast<QKeyEvent *>(event));
        return true;
    }
    return CalmList::eventFilter(watched, event);
}

void ListWithCompleted::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        event->ignore(); // left to the form
        return;
    case Qt::Key_Left:
    case Qt::Key_Right:
        // Keep the proposal: a cursor key would accept only part of it unnoticed.
        if (lineEdit()->hasSelectedText() && event->modifiers() == Qt::NoModifier) {
            event->accept();
            return;
        }
        break;
    default:
        break;
    }
    m_deletes = erases(*event);
    CalmList::keyPressEvent(event);
    m_deletes = false;
}
