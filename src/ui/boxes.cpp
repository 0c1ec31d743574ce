#include "ui/boxes.h"

#include <QKeyEvent>
#include <QLocale>
#include <QValidator>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

constexpr int MostDigits = 9;     // as many as always fit an int
constexpr int LongestNumber = 21; // an amount with sign and decimal mark

/// Removes whatever cannot be part of the value, even if pasted or dropped.
class Filter : public QValidator
{
public:
    using Cleaning = std::function<QString(const QString &)>;
    Filter(Cleaning clean, QObject *parent) : QValidator(parent), m_clean(std::move(clean)) {}

    State validate(QString &text, int &cursor) const override
    {
        const QString before = m_clean(text.left(cursor));
        text = m_clean(text);
        cursor = std::min(int(before.size()), int(text.size()));
        return Acceptable;
    }

private:
    Cleaning m_clean;
};

bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }
bool isMark(QChar c) { return c == u'.' || c == u','; }

QString digitsOnly(const QString &text, qsizetype most)
{
    QString digits;
    for (const QChar c : text)
        if (isDigit(c) && digits.size() < most)
            digits += c;
    return digits;
}

/// Keeps digits, a leading minus and one decimal mark: the last mark, unless it occurs more than
/// once and therefore separates thousands.
QString numberOnly(const QString &text, QChar separator)
{
    qsizetype last = text.size() - 1;
    while (last >= 0 && !isMark(text[last]))
        --last;
    const bool decimal = last >= 0 && text.count(text[last]) == 1;
    QString number;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isDigit(text[i]) || (text[i] == u'-' && number.isEmpty()))
            number += text[i];
        else if (i == last && decimal)
            number += separator;
    }
    return number;
}

/// The character of a printable key, which must be part of the value; null for all other keys.
QChar typed(const QKeyEvent &key)
{
    const bool command =
        key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const QString text = key.text();
    return !command && text.size() == 1 && text.front().isPrint() ? text.front() : QChar();
}

/// The parts of a masked text; nullopt for a part that is no number.
std::vector<std::optional<int>> parts(const QString &text, QChar mark)
{
    std::vector<std::optional<int>> numbers;
    for (const QString &part : text.split(mark)) {
        bool fine = false;
        const int n = part.toInt(&fine);
        numbers.push_back(fine ? std::optional(n) : std::nullopt);
    }
    return numbers;
}

} // namespace

bool ui::isLeft(const QFocusEvent &event)
{
    return event.reason() != Qt::ActiveWindowFocusReason && event.reason() != Qt::PopupFocusReason;
}

WholeNumberBox::WholeNumberBox(int digits, QWidget *parent)
    : QLineEdit(parent), m_digits(std::clamp(digits, 1, MostDigits))
{
    // No maximum length: it would cut pasted text before the digits are picked out.
    setInputMethodHints(Qt::ImhDigitsOnly);
    setValidator(
        new Filter([most = m_digits](const QString &t) { return digitsOnly(t, most); }, this));
}

std::optional<int> WholeNumberBox::whole() const
{
    bool fine = false;
    const int n = text().toInt(&fine);
    return fine ? std::optional(n) : std::nullopt;
}

void WholeNumberBox::setWholeNumber(std::optional<int> n)
{
    setText(n && *n >= 0 ? QString::number(*n) : QString());
}

void WholeNumberBox::keyPressEvent(QKeyEvent *event)
{
    const QChar c = typed(*event);
    const bool fits = hasSelectedText() || text().size() < m_digits;
    if (c.isNull() || (isDigit(c) && fits))
        QLineEdit::keyPressEvent(event);
}

NumberBox::NumberBox(const Sesion &s, QWidget *parent)
    : QLineEdit(parent), m_separator(s.separatorDecimal)
{
    setMaxLength(LongestNumber);
    setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    setAlignment(Qt::AlignRight);
    setValidator(
        new Filter([mark = m_separator](const QString &t) { return numberOnly(t, mark); }, this));
}

std::optional<Moneda> NumberBox::numberOf() const { return Moneda::fromText(text(), m_separator); }

void NumberBox::setNumber(std::optional<Moneda> n)
{
    setText(n ? n->toText().replace(u'.', m_separator) : QString());
}

void NumberBox::keyPressEvent(QKeyEvent *event)
{
    const QChar c = typed(*event);
    if (isMark(c)) {
        QString rest = text();
        rest.remove(selectionStart(), selectedText().size());
        if (!rest.contains(m_separator))
            insert(m_separator);
        return;
    }
    if (c.isNull() || isDigit(c))
        QLineEdit::keyPressEvent(event);
}

HourBox::HourBox(QWidget *parent) : QLineEdit(parent) { setInputMask(u"00:00;_"_s); }

QTime HourBox::hourOf() const
{
    const auto n = parts(text(), u':');
    // 9:5 could mean five or fifty minutes past nine.
    if (n.size() != 2 || !n[0] || !n[1] || text().section(u':', 1).size() != 2)
        return {};
    return {*n[0], *n[1]};
}

void HourBox::setHour(QTime hour) { setText(hour.isValid() ? hour.toString(u"HH:mm") : QString()); }

void HourBox::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    if (text() == u":")
        setCursorPosition(0);
}

void HourBox::focusOutEvent(QFocusEvent *event)
{
    // Half-typed input waits for the user to come back; editingFinished is not emitted yet.
    const bool left = isLeft(*event);
    const QSignalBlocker silent(left ? nullptr : this);
    QLineEdit::focusOutEvent(event);
    // Only after editingFinished, so that a listener sees an invalid time and not a box that the
    // user has emptied.
    if (left && !hourOf().isValid())
        clear();
}
