#include "ui/completion_list.h"

#include <QKeyEvent>
#include <QLineEdit>

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

ListaConCompletado::ListaConCompletado(QWidget *parent) : ListaCalma(parent)
{
    setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr);
    setMaxVisibleItems(16);
    lineEdit()->installEventFilter(this);
    connect(lineEdit(), &QLineEdit::textEdited, this, [this](const QString &text) {
        if (text.isEmpty())
            Q_EMIT vaciado();
        else if (!m_borra)
            Q_EMIT tecleado(text);
    });
    connect(this, &QComboBox::activated, this,
            [this](int index) { Q_EMIT elegido(itemData(index).toInt()); });
}

void ListaConCompletado::Cargar(const QList<Opcion> &opciones)
{
    const QSignalBlocker silent(this);
    const QString shown = currentText();
    clear();
    for (const Opcion &option : opciones)
        addItem(option.texto.section(u'\t', 0, 0), option.valor);
    setCurrentIndex(findText(shown, Qt::MatchFixedString));
    setEditText(shown);
}

void ListaConCompletado::SeleccionarItem(int id)
{
    const QSignalBlocker silent(this);
    const int index = findData(id);
    setCurrentIndex(index);
    if (index < 0)
        clearEditText();
    lineEdit()->home(false); // a long name shows how it begins
}

int ListaConCompletado::Id() const
{
    const QString text = currentText().trimmed();
    if (text.isEmpty())
        return 0;
    // Two entries may bear the same name: the one that was shown last goes first.
    if (itemText(currentIndex()).compare(text, Qt::CaseInsensitive) == 0)
        return currentData().toInt();
    return itemData(findText(text, Qt::MatchFixedString)).toInt();
}

void ListaConCompletado::Proponer(int id, const QString &nombre)
{
    const QString text = lineEdit()->text();
    if (!nombre.startsWith(text, Qt::CaseInsensitive))
        return;
    {
        const QSignalBlocker silent(this);
        setCurrentIndex(findData(id));
    }
    lineEdit()->setText(nombre);
    lineEdit()->setSelection(int(text.size()), int(nombre.size() - text.size()));
}

bool ListaConCompletado::eventFilter(QObject *watched, QEvent *event)
{
    // Keys reach the list itself; one that is sent to its box takes the same way.
    if (watched == lineEdit() && event->type() == QEvent::KeyPress) {
        keyPressEvent(static_cast<QKeyEvent *>(event));
        return true;
    }
    return ListaCalma::eventFilter(watched, event);
}

void ListaConCompletado::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        event->ignore(); // the form's
        return;
    case Qt::Key_Left:
    case Qt::Key_Right:
        // What is proposed stays proposed; a key meant to move would give it up unseen.
        if (lineEdit()->hasSelectedText() && event->modifiers() == Qt::NoModifier) {
            event->accept();
            return;
        }
        break;
    default:
        break;
    }
    m_borra = erases(*event);
    ListaCalma::keyPressEvent(event);
    m_borra = false;
}
