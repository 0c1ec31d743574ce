#include "admin/frmconfiguracion_rows.h"

#include "ui/boxes.h"
#include "ui/form_base.h"
#include "ui/help_line.h"
#include "ui/theme.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QEvent>
#include <QFocusEvent>
#include <QFormLayout>
#include <QLabel>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

/// Calls a function for each event of a widget; consumes none.
class Listener : public QObject
{
public:
    Listener(QObject *parent, std::function<void(QEvent *)> hear)
        : QObject(parent), m_hear(std::move(hear))
    {
    }
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_hear(event);
        return false;
    }

private:
    std::function<void(QEvent *)> m_hear;
};

constexpr int CaptionDrop = 6;

} // namespace

ui::OptionsGroup *admin::optionsRow(const PageContext &c, QFormLayout *section,
                                    const PageQuestion &question)
{
    QList<std::pair<int, QString>> options;
    for (const auto &[number, text] : question.options)
        options.append({number, c.s(text)});
    auto *group = named(new ui::OptionsGroup({}, options), question.name, question.title);
    // The caption beside it makes the group's own frame superfluous.
    group->setStyleSheet(
        u"QGroupBox { background: transparent; border: 0; margin: 0; padding: 0 }"_s);
    group->layout()->setContentsMargins(0, 0, 0, ui::space::S);
    for (auto *button : group->findChildren<QAbstractButton *>())
        button->setAccessibleDescription(question.title);
    parts::Row(section, question.title, group);
    // Align the caption's first line with the first option, however many lines it has.
    auto *caption = qobject_cast<QLabel *>(section->labelForField(group));
    caption->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    caption->setContentsMargins(0, CaptionDrop, 0, 0);
    warnOnEntering(c, group, question.help);
    return group;
}

QLineEdit *admin::wholeNumberRow(const PageContext &c, QFormLayout *section,
                                 std::string_view column, int title, int digits, int help)
{
    auto *box = new ui::WholeNumberBox(digits);
    box->setObjectName(QString::fromLatin1(column.data(), qsizetype(column.size())));
    box->setFixedWidth(parts::FigureWidth);
    parts::Row(section, c.s(title), box);
    ui::bind::whole(c.s, c.guarded, box, column);
    warnOnEntering(c, box, help);
    return box;
}

QCheckBox *admin::checkboxRow(const PageContext &c, QFormLayout *section, const QString &name,
                              int title, int help)
{
    auto *check = named(new QCheckBox(c.s(title)), name, c.s(title));
    section->addRow(check);
    warnOnEntering(c, check, help);
    return check;
}

void admin::warnOnEntering(const PageContext &c, QWidget *control, int help)
{
    const auto hear = [line = c.help, text = c.s(help)](const QEvent *event) {
        // Not when the window is reactivated, for example after a dialog, whose result the line is
        // showing.
        if (event->type() == QEvent::FocusIn
            && static_cast<const QFocusEvent *>(event)->reason() != Qt::ActiveWindowFocusReason)
            line->tell(text);
    };
    auto *listener = new Listener(control, hear);
    control->installEventFilter(listener);
    for (auto *inner : control->findChildren<QWidget *>())
        inner->installEventFilter(listener);
}

void admin::onShow(QWidget *page, const std::function<void()> &task)
{
    page->installEventFilter(new Listener(page, [task](const QEvent *event) {
        if (event->type() == QEvent::Show)
            task();
    }));
}
