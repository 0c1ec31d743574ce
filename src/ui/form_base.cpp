#include "ui/form_base.h"

#include "store/lookups.h"
#include "store/opening.h"
#include "store/settings_row.h"
#include "store/upkeep.h"
#include "texts/texts.h"
#include "ui/day_box.h"
#include "ui/field_note.h"
#include "ui/pictures.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QTextEdit>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

constexpr const char *NoApostrophe = "refusesApostrophe";

bool isEnterKey(const QKeyEvent &key)
{
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

bool isEnter(const QKeyEvent &key)
{
    return isEnterKey(key) && !(key.modifiers() & ~Qt::KeypadModifier);
}

bool hasSeveralLines(const QObject *box)
{
    return qobject_cast<const QTextEdit *>(box) || qobject_cast<const QPlainTextEdit *>(box);
}

/// The line edit of a box; nullptr if it has none.
QLineEdit *lineOf(QWidget *box)
{
    if (auto *list = qobject_cast<QComboBox *>(box))
        return list->lineEdit();
    return qobject_cast<QLineEdit *>(box);
}

/// Replaces pasted apostrophes in a way that keeps the undo stack.
void replaceApostrophes(QTextDocument *document)
{
    for (QTextCursor c = document->find(u"'"_s); !c.isNull(); c = document->find(u"'"_s, c))
        c.insertText(u" "_s);
}

void tellFailure(Sesion &s, int number, const QString &description, const QString &source)
{
    // A log that cannot be written must not hide the original failure.
    try {
        RegistrarError(s, number, description, source);
    } catch (const std::exception &) {
        s.dialogos.Mensaje(description);
    }
}

} // namespace

QString ui::spoken(QString caption)
{
    caption.remove(u'&');
    for (const QString &dots : {u"…"_s, u"..."_s})
        if (caption.endsWith(dots))
            caption.chop(dots.size());
    return caption;
}

FormBase::FormBase(Sesion &s, const QString &name, QWidget *parent) : QDialog(parent), m_s(s)
{
    setObjectName(name);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

void FormBase::opened(const QVariantMap &) {}

bool FormBase::guarded(const std::function<void()> &task)
{
    try {
        task();
        return true;
    } catch (const store::StoreError &e) {
        if (e.number == store::ErrorNumber::DatabaseDamaged)
            store::noteDamage(m_s);
        // Not logged: a full or protected disk is for the user to fix, and the log is on the same
        // disk; and it is no fault that another terminal was faster.
        if (e.isMediumFailure() || e.number == store::ErrorNumber::Conflict)
            m_s.dialogos.Mensaje(store::errorText(m_s, e));
        else
            tellFailure(m_s, e.number, store::errorText(m_s, e), objectName());
    } catch (const std::bad_alloc &) {
        tellFailure(m_s, store::ErrorNumber::OutOfMemory, u"Out of memory"_s, objectName());
    } catch (const std::exception &e) {
        tellFailure(m_s, store::ErrorNumber::Internals, QString::fromUtf8(e.what()), objectName());
    } catch (...) {
        tellFailure(m_s, store::ErrorNumber::Internals, u"Unknown failure"_s, objectName());
    }
    // If closing the message activates the form again, the failure must not repeat forever.
    m_passOver = m_activating;
    return false;
}

void FormBase::activated() {}

void FormBase::enterChain(const QList<QWidget *> &boxes)
{
    for (int i = 0; i + 1 < boxes.size(); ++i) {
        QWidget *box = boxes[i];
        m_nextBox.insert(box, boxes[i + 1]);
        box->installEventFilter(this);
        if (QLineEdit *line = lineOf(box); line && line != box) {
            m_nextBox.insert(line, boxes[i + 1]);
            line->installEventFilter(this);
        }
        if (auto *page = qobject_cast<QTextEdit *>(box))
            page->setTabChangesFocus(true);
        if (auto *page = qobject_cast<QPlainTextEdit *>(box))
            page->setTabChangesFocus(true);
        setTabOrder(box, boxes[i + 1]);
    }
}

QPushButton *FormBase::button(const QString &name, int caption, const QString &picture,
                              const QString &key)
{
    const QString text = m_s(caption);
    auto *made = named(new QPushButton(text), name, text);
    made->setAutoDefault(false);
    if (!picture.isEmpty())
        made->setIcon(namedIcon(picture));
    if (!key.isEmpty())
        made->setToolTip(spoken(text) + u" ("_s + key + u')');
    return made;
}

void FormBase::refuseApostrophe(const QList<QLineEdit *> &boxes)
{
    for (QLineEdit *box : boxes)
        refuseApostropheIn({box});
}

void FormBase::refuseApostropheIn(const QList<QWidget *> &boxes)
{
    for (QWidget *box : boxes) {
        box->setProperty(NoApostrophe, true);
        box->installEventFilter(this);
        if (QLineEdit *line = lineOf(box)) {
            line->setProperty(NoApostrophe, true);
            line->installEventFilter(this);
            connect(line, &QLineEdit::textEdited, line, [line](const QString &text) {
                if (!text.contains(u'\''))
                    return;
                const int cursor = line->cursorPosition();
                line->setText(QuitarApostrofes(text));
                line->setCursorPosition(cursor);
            });
        }
        // Text that the program itself sets, while the focus is elsewhere, stays as it is.
        if (auto *page = qobject_cast<QPlainTextEdit *>(box))
            connect(page, &QPlainTextEdit::textChanged, page, [page] {
                if (page->hasFocus())
                    replaceApostrophes(page->document());
            });
        if (auto *page = qobject_cast<QTextEdit *>(box))
            connect(page, &QTextEdit::textChanged, page, [page] {
                if (page->hasFocus())
                    replaceApostrophes(page->document());
            });
    }
}

bool FormBase::event(QEvent *event)
{
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::WindowActivate && isWindow())
        comeForward();
    return handled;
}

void FormBase::comeForward()
{
    if (m_activating || std::exchange(m_passOver, false))
        return;
    m_activating = true;
    guarded([this] { activated(); });
    m_activating = false;
}

bool FormBase::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const auto &key = *static_cast<QKeyEvent *>(event);

    if (key.text() == u"'" && watched->property(NoApostrophe).toBool()) {
        // Like FiltrarApostrofe, but beside the box, so that what is typed next is not lost.
        refuse(qobject_cast<QWidget *>(watched), m_s(text::ApostropheRefused));
        return true;
    }
    const bool movesOn = hasSeveralLines(watched)
                             ? isEnterKey(key) && key.modifiers() & Qt::ControlModifier
                             : isEnter(key);
    if (movesOn && m_nextBox.contains(watched)) {
        moveOn(watched);
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void FormBase::moveOn(QObject *from)
{
    // An invalid date is reported beside the box, which keeps the focus.
    if (auto *day = qobject_cast<DayBox *>(from); day && !day->commit())
        return;
    QWidget *next = m_nextBox.value(from);
    while (next && !(next->isEnabled() && next->isVisibleTo(this)))
        next = m_nextBox.value(next);
    if (!next)
        return;
    next->setFocus(Qt::TabFocusReason);
    if (QLineEdit *line = lineOf(next))
        line->selectAll();
}

void FormBase::keyPressEvent(QKeyEvent *event)
{
    // Unlike QDialog, where ENTER in any box would press the default button.
    if (isEnter(*event)) {
        if (auto *button = qobject_cast<QAbstractButton *>(focusWidget()))
            button->click();
        return;
    }
    QDialog::keyPressEvent(event);
}

QString FormBase::headerKey(const QHeaderView *header) const
{
    return objectName() + u'/' + header->parent()->objectName();
}

void FormBase::rememberSize(QSize first)
{
    m_remembersSize = true;
    const QSettings ini(store::machineFile(m_s), QSettings::IniFormat);
    if (restoreGeometry(ini.value(objectName() + u"/geometry"_s).toByteArray()))
        return;
    resize(screen() ? first.boundedTo(screen()->availableSize()) : first);
}

void FormBase::rememberColumns(QHeaderView *header)
{
    m_headers.append(header);
    const QSettings ini(store::machineFile(m_s), QSettings::IniFormat);
    header->restoreState(ini.value(headerKey(header)).toByteArray());
}

void FormBase::hideEvent(QHideEvent *event)
{
    m_passOver = false;
    if (!event->spontaneous() && (m_remembersSize || !m_headers.isEmpty())) {
        QSettings ini(store::machineFile(m_s), QSettings::IniFormat);
        if (m_remembersSize && isWindow())
            ini.setValue(objectName() + u"/geometry"_s, saveGeometry());
        for (const auto &header : std::as_const(m_headers))
            if (header)
                ini.setValue(headerKey(header), header->saveState());
    }
    QDialog::hideEvent(event);
}
