#include "ui/record_fields.h"

#include "texts/clients.h"
#include "ui/theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

constexpr int Columns = 4; // caption, box, caption, box
constexpr int CodeWidth = 68;
const QString titleKey = u"teclaDelTitulo"_s;

} // namespace

FieldGrid::FieldGrid(QWidget *owner) : QGridLayout(owner)
{
    setContentsMargins({});
    setHorizontalSpacing(ui::space::S);
    setVerticalSpacing(ui::space::XS + 1);
    for (const int boxColumn : {1, 3})
        setColumnStretch(boxColumn, 1);
}

QLabel *FieldGrid::caption(const QString &title, QWidget *box)
{
    auto *label = new QLabel(title);
    label->setProperty("clase", u"suave"_s);
    label->setBuddy(box);
    return label;
}

void FieldGrid::Row(const QString &title, QWidget *box, QWidget *code)
{
    const int row = rowCount();
    const bool tall = qobject_cast<QPlainTextEdit *>(box);
    addWidget(caption(title, box), row, 0, tall ? Qt::AlignTop : Qt::Alignment());
    if (code) {
        auto *line = new QHBoxLayout;
        line->setSpacing(ui::space::S);
        line->addWidget(box, 1);
        line->addWidget(code);
        code->setFixedWidth(CodeWidth);
        addLayout(line, row, 1, 1, Columns - 1);
    } else {
        addWidget(box, row, 1, 1, Columns - 1);
    }
    if (tall)
        setRowStretch(row, 1);
}

void FieldGrid::Row(const QString &title, QWidget *box, const QString &title2, QWidget *box2)
{
    const int row = rowCount();
    addWidget(caption(title, box), row, 0);
    addWidget(box, row, 1);
    addWidget(caption(title2, box2), row, 2);
    addWidget(box2, row, 3);
}

QVariantMap ui::readFields(const QList<QWidget *> &fields)
{
    QVariantMap values;
    for (QWidget *w : fields) {
        QVariant &v = values[w->objectName()];
        if (const auto *line = qobject_cast<QLineEdit *>(w))
            v = line->text();
        else if (const auto *notes = qobject_cast<QPlainTextEdit *>(w))
            v = notes->toPlainText();
        else if (const auto *checkbox = qobject_cast<QCheckBox *>(w))
            v = checkbox->isChecked();
        else if (const auto *list = qobject_cast<QComboBox *>(w))
            v = list->isEditable() ? QVariant(list->currentText()) : list->currentData();
    }
    return values;
}

void ui::setFields(const QList<QWidget *> &fields, const QVariantMap &values)
{
    for (QWidget *w : fields) {
        const QVariant v = values.value(w->objectName());
        if (!v.isValid())
            continue;
        if (auto *line = qobject_cast<QLineEdit *>(w))
            line->setText(v.toString());
        else if (auto *notes = qobject_cast<QPlainTextEdit *>(w))
            notes->setPlainText(v.toString());
        else if (auto *checkbox = qobject_cast<QCheckBox *>(w))
            checkbox->setChecked(v.toBool());
        else if (auto *list = qobject_cast<QComboBox *>(w)) {
            if (list->isEditable())
                list->setEditText(v.toString());
            else
                list->setCurrentIndex(list->findData(v.toInt()));
        }
    }
}

void ui::showBeginnings(const QWidget *panel)
{
    for (QLineEdit *line : panel->findChildren<QLineEdit *>())
        line->home(false);
}

void ui::openFields(const QList<QWidget *> &fields, bool open)
{
    const auto policy = open ? Qt::StrongFocus : Qt::ClickFocus;
    for (QWidget *w : fields) {
        if (auto *line = qobject_cast<QLineEdit *>(w)) {
            line->setReadOnly(!open);
            line->setFocusPolicy(policy);
        } else if (auto *notes = qobject_cast<QPlainTextEdit *>(w)) {
            notes->setReadOnly(!open);
            notes->setFocusPolicy(policy);
            // Unlike a line, it does not dress anew by itself.
            notes->style()->unpolish(notes);
            notes->style()->polish(notes);
        } else {
            w->setEnabled(open);
        }
    }
}

void ui::onChange(const QList<QWidget *> &fields, QObject *context,
                  const std::function<void()> &what)
{
    for (QWidget *w : fields) {
        if (auto *line = qobject_cast<QLineEdit *>(w))
            QObject::connect(line, &QLineEdit::textChanged, context, what);
        else if (auto *notes = qobject_cast<QPlainTextEdit *>(w))
            QObject::connect(notes, &QPlainTextEdit::textChanged, context, what);
        else if (auto *checkbox = qobject_cast<QCheckBox *>(w))
            QObject::connect(checkbox, &QCheckBox::toggled, context, what);
        else if (auto *list = qobject_cast<QComboBox *>(w))
            QObject::connect(list, &QComboBox::currentTextChanged, context, what);
    }
}

QPlainTextEdit *ui::notesBox(const Sesion &s, const QString &name, const QString &accessible)
{
    auto *notes = named(new QPlainTextEdit, name, accessible);
    notes->setTabChangesFocus(true);
    notes->setToolTip(s(text::NewLineHint));
    notes->setMinimumHeight(44);
    notes->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    return notes;
}

QPlainTextEdit *ui::informationBox(const QString &name, const QString &accessible)
{
    auto *info = named(new QPlainTextEdit, name, accessible);
    info->setProperty("clase", u"informacion"_s);
    info->setReadOnly(true);
    info->setTabChangesFocus(true);
    info->setFocusPolicy(Qt::ClickFocus);
    info->setMinimumHeight(60);
    info->document()->setDocumentMargin(0);
    info->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    return info;
}

QLineEdit *ui::columnBox(const Sesion &s, std::string_view table, std::string_view column,
                         const QString &name, const QString &accessible)
{
    auto *box = named(new QLineEdit, name, accessible);
    if (const int width = s.clientes->widthOf(table, column); width > 0)
        box->setMaxLength(width);
    // What it takes, not what it is long: the grid gives it the room there is.
    box->setMinimumWidth(40);
    return box;
}

void ui::setTitle(QPushButton *button, const QString &title)
{
    if (button->text() == title)
        return;
    button->setText(title);
    button->setAccessibleName(ui::spoken(title));
    button->setShortcut({});
    auto *key = button->findChild<QShortcut *>(titleKey);
    if (!key) {
        key = new QShortcut(button);
        key->setObjectName(titleKey);
        QObject::connect(key, &QShortcut::activated, button, &QPushButton::click);
    }
    key->setKey(QKeySequence::mnemonic(title));
}

QString ui::denseStyle()
{
    return uR"(
QLineEdit, QPlainTextEdit { padding: 3px 7px; }
QLineEdit:focus, QPlainTextEdit:focus { padding: 2px 6px; }
QComboBox { padding: 3px 24px 3px 7px; }
QComboBox:focus { padding: 2px 23px 2px 6px; }
QComboBox:!editable { padding-left: 9px; }
QComboBox:!editable:focus { padding-left: 8px; }
QComboBox:disabled { padding-right: 7px; }
QComboBox QLineEdit, QComboBox QLineEdit:focus { padding: 0; border: 0; }
QLineEdit:read-only, QPlainTextEdit:read-only { background: transparent; border-color: palette(mid); }
QComboBox:disabled { background: transparent; border-color: palette(mid); color: palette(window-text); }
QComboBox QLineEdit:disabled { background: transparent; color: palette(window-text); }
QComboBox::drop-down:disabled { width: 0; border: 0; }
QComboBox::down-arrow:disabled { image: none; }
QCheckBox:disabled { color: palette(window-text); }
QPlainTextEdit[clase="informacion"] { background: transparent; border: 0; padding: 0; }
QPushButton { padding: 4px 12px; }
QPushButton:focus { padding: 3px 11px; }
QPushButton[clase="barra"] { background: transparent; border-color: transparent; padding: 5px 9px; }
QPushButton[clase="barra"]:focus { border-color: palette(highlight); padding: 4px 8px; }
QPushButton[clase="barra"]:hover:enabled { border-color: palette(highlight); }
)"_s;
}
