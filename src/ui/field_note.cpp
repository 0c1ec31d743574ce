#include "ui/field_note.h"

#include "ui/help_line.h"
#include "ui/theme.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QStyle>
#include <QTextEdit>
#include <QTimer>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

constexpr const char *Fault = "falla";
constexpr int NoteMs = 6000;
const QString NoteName = u"lblNotaDelCampo"_s;

/// Disappears on the next key, so as not to cover what is typed below.
class Note : public QLabel
{
public:
    explicit Note(QWidget *window) : QLabel(window)
    {
        setObjectName(NoteName);
        setTextFormat(Qt::PlainText);
        setWordWrap(true);
        setFocusPolicy(Qt::NoFocus);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        qApp->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress && isVisible())
            hide();
        return false;
    }
};

void frame(QWidget *box, bool fault)
{
    if (box->property(Fault).toBool() == fault)
        return;
    box->setProperty(Fault, fault);
    box->style()->unpolish(box);
    box->style()->polish(box);
}

QLabel *noteOf(const QWidget *box)
{
    return box->window()->findChild<QLabel *>(NoteName, Qt::FindDirectChildrenOnly);
}

void show(QWidget *box, const QString &why)
{
    QWidget *window = box->window();
    QLabel *note = noteOf(box);
    if (!note)
        note = new Note(window);
    note->setText(why);
    note->setAccessibleName(why);
    note->setFixedWidth(
        std::min(window->width() - 2 * space::S,
                 std::max(box->width(), 36 * note->fontMetrics().averageCharWidth())));
    note->adjustSize();
    const QPoint below = box->mapTo(window, QPoint(0, box->height() + 2));
    const QPoint above = box->mapTo(window, QPoint(0, -note->height() - 2));
    const bool fits = below.y() + note->height() <= window->height();
    note->move(
        std::clamp((fits ? below : above).x(), 0, std::max(0, window->width() - note->width())),
        (fits ? below : above).y());
    note->show();
    note->raise();
    QTimer::singleShot(NoteMs, note, &QLabel::hide);
    QAccessibleEvent told(note, QAccessible::Alert);
    QAccessible::updateAccessibility(&told);
}

// Installed once per box; any change of its text counts as a correction.
void clearOnChange(QWidget *box)
{
    if (box->property("refusalWatched").toBool())
        return;
    box->setProperty("refusalWatched", true);
    const auto clear = [box] { clearRefusal(box); };
    if (auto *line = qobject_cast<QLineEdit *>(box))
        QObject::connect(line, &QLineEdit::textChanged, box, clear);
    else if (auto *list = qobject_cast<QComboBox *>(box))
        QObject::connect(list, &QComboBox::editTextChanged, box, clear);
    else if (auto *page = qobject_cast<QPlainTextEdit *>(box))
        QObject::connect(page, &QPlainTextEdit::textChanged, box, clear);
    else if (auto *text = qobject_cast<QTextEdit *>(box))
        QObject::connect(text, &QTextEdit::textChanged, box, clear);
}

} // namespace

void ui::refuse(QWidget *box, const QString &why)
{
    clearOnChange(box);
    frame(box, true);
    auto *line = box->window()->findChild<HelpLine *>();
    if (line && line->isVisible())
        line->faultOf(why);
    else
        show(box, why);
}

void ui::clearRefusal(QWidget *box)
{
    if (!box->property(Fault).toBool())
        return;
    frame(box, false);
    if (QLabel *note = noteOf(box))
        note->hide();
    auto *line = box->window()->findChild<HelpLine *>();
    if (line && line->isVisible())
        line->clean();
}
