#include "ui/bound.h"

#include "store/settings_row.h"
#include "ui/boxes.h"
#include "ui/theme.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFocusEvent>
#include <QRadioButton>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

constexpr const char *ValueOf = "valor";

QString decimalText(const Sesion &s, const store::Value &v)
{
    return v.isNull() ? QString() : v.toMoneda().toText().replace(u'.', s.separatorDecimal);
}

/// A control and the column it is bound to.
struct Binding {
    Sesion &s;
    bind::Guard guard;
    std::string column;
    std::function<void(const store::Value &)> show;
    std::shared_ptr<store::Value> last = std::make_shared<store::Value>(); // as shown

    /// Not guarded, so that an unreadable row is reported once by whoever binds the controls,
    /// rather than once per control.
    void showStored() const
    {
        if (s.configuracion.AbsolutePosition() < 0)
            s.configuracion.MoveFirst();
        *last = s.configuracion[column];
        show(*last);
    }
    /// Shows the stored value afterwards, whether the write succeeded or not.
    void write(const store::Value &value) const
    {
        const bool written = guard([&] {
            store::saveSetting(s, column, value);
            showStored();
        });
        if (!written)
            show(*last);
    }
};

/// Calls a task when its control is left; consumes no event.
class Left : public QObject
{
public:
    Left(QWidget *control, std::function<void()> task)
        : QObject(control), m_control(control), m_task(std::move(task))
    {
        control->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        const bool left =
            event->type() == QEvent::FocusOut && isLeft(*static_cast<const QFocusEvent *>(event));
        // A form under destruction is no longer a FormBase and has no guard.
        const bool hidden =
            event->type() == QEvent::Hide && qobject_cast<FormBase *>(m_control->window());
        if (left || hidden)
            m_task();
        return false;
    }

private:
    QWidget *m_control;
    std::function<void()> m_task;
};

/// @param textOf the stored value as shown in the box
/// @param valueOfText what to store, nullopt for invalid text
void tieBox(Sesion &s, const bind::Guard &guard, QLineEdit *box, std::string_view column,
            const std::function<QString(const store::Value &)> &textOf,
            const std::function<std::optional<store::Value>(const QString &)> &valueOfText)
{
    auto shown = std::make_shared<QString>();
    const Binding tie{s, guard, std::string(column), [box, textOf, shown](const store::Value &v) {
                          box->setText(textOf(v));
                          *shown = box->text();
                      }};
    const auto commit = [box, tie, shown, valueOfText] {
        if (box->text() == *shown)
            return;
        *shown = box->text(); // a message from write() makes the box lose the focus again
        if (const auto value = valueOfText(box->text()))
            tie.write(*value);
        else
            tie.show(*tie.last);
    };
    tie.showStored();
    QObject::connect(box, &QLineEdit::editingFinished, box, commit);
    bind::onLeaving(box, commit);
}

} // namespace

OptionsGroup::OptionsGroup(const QString &title, const QList<std::pair<int, QString>> &options,
                           QWidget *parent)
    : QGroupBox(title, parent), m_group(new QButtonGroup(this))
{
    setAccessibleName(title);
    auto *column = new QVBoxLayout(this);
    column->setSpacing(space::XS);
    for (const auto &[number, caption] : options) {
        auto *option = named(new QRadioButton(caption), u"opt%1"_s.arg(number), caption);
        option->setProperty(ValueOf, number);
        m_group->addButton(option);
        column->addWidget(option);
    }
    connect(m_group, &QButtonGroup::buttonToggled, this, [this](QAbstractButton *b, bool on) {
        if (on)
            Q_EMIT chosen(b->property(ValueOf).toInt());
    });
}

int OptionsGroup::Value() const
{
    const QAbstractButton *chosen = m_group->checkedButton();
    return chosen ? chosen->property(ValueOf).toInt() : 0;
}

void OptionsGroup::setValue(int value)
{
    const QSignalBlocker silent(m_group);
    m_group->setExclusive(false); // an exclusive group cannot be unchecked
    for (QAbstractButton *option : m_group->buttons())
        option->setChecked(option->property(ValueOf).toInt() == value);
    m_group->setExclusive(true);
}

void bind::onLeaving(QWidget *control, const std::function<void()> &task)
{
    new Left(control, task);
}

void bind::Options(Sesion &s, const Guard &guard, OptionsGroup *group, std::string_view column)
{
    const Binding tie{s, guard, std::string(column),
                      [group](const store::Value &v) { group->setValue(v.toInt()); }};
    tie.showStored();
    QObject::connect(group, &OptionsGroup::chosen, group, [tie](int value) { tie.write(value); });
}

void bind::Checkbox(Sesion &s, const Guard &guard, QCheckBox *checkbox, std::string_view column)
{
    const Binding tie{s, guard, std::string(column), [checkbox](const store::Value &v) {
                          const QSignalBlocker silent(checkbox);
                          checkbox->setChecked(v.toBool());
                      }};
    tie.showStored();
    QObject::connect(checkbox, &QCheckBox::toggled, checkbox, [tie](bool on) { tie.write(on); });
}

void bind::text(Sesion &s, const Guard &guard, QLineEdit *box, std::string_view column)
{
    tieBox(
        s, guard, box, column, [](const store::Value &v) { return v.toText(); },
        [](const QString &t) { return std::optional<store::Value>(t); });
}

void bind::whole(Sesion &s, const Guard &guard, QLineEdit *box, std::string_view column)
{
    tieBox(
        s, guard, box, column,
        [](const store::Value &v) { return v.isNull() ? QString() : QString::number(v.toLong()); },
        [](const QString &t) -> std::optional<store::Value> {
            bool fine = false;
            const int n = t.trimmed().toInt(&fine);
            if (fine)
                return n;
            return t.trimmed().isEmpty() ? std::optional<store::Value>(nullptr) : std::nullopt;
        });
}

void bind::numberOf(Sesion &s, const Guard &guard, QLineEdit *box, std::string_view column)
{
    tieBox(
        s, guard, box, column, [&s](const store::Value &v) { return decimalText(s, v); },
        [&s](const QString &t) -> std::optional<store::Value> {
            if (const auto n = Moneda::fromText(t, s.separatorDecimal))
                return *n;
            return t.trimmed().isEmpty() ? std::optional<store::Value>(nullptr) : std::nullopt;
        });
}

void bind::hourOf(Sesion &s, const Guard &guard, QLineEdit *box, std::string_view column)
{
    tieBox(
        s, guard, box, column, [](const store::Value &v) { return v.toTime().toString(u"HH:mm"); },
        [](const QString &t) -> std::optional<store::Value> {
            if (QString(t).remove(u':').trimmed().isEmpty())
                return store::Value();
            const QTime time = QTime::fromString(t.trimmed(), u"H:mm"_s);
            return time.isValid() ? std::optional<store::Value>(time) : std::nullopt;
        });
}
