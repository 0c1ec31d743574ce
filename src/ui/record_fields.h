// What panels that show one record are laid out with, and how all their boxes are read, filled,
// opened and closed at once.
#pragma once

#include "ui/form_base.h"

#include <QGridLayout>
#include <QVariantMap>

class QPlainTextEdit;
class QPushButton;

namespace ui
{

/// The column of facts beside the boxes, on the narrowest screen.
inline constexpr int NarrowestFacts = 96;

/// Boxes beside their captions, one or two to a line, all lines on one grid.
class FieldGrid : public QGridLayout
{
public:
    explicit FieldGrid(QWidget *owner);

    /// One box over the whole line, @p code a narrow one at its end.
    void Row(const QString &title, QWidget *box, QWidget *code = nullptr);
    /// Two boxes of the same width.
    void Row(const QString &title, QWidget *box, const QString &title2, QWidget *box2);

private:
    QLabel *caption(const QString &title, QWidget *box);
};

/// What stands in the boxes, each under its name: for drafts, and to tell whether anything was
/// typed.
QVariantMap readFields(const QList<QWidget *> &fields);
/// Puts it back. Boxes that @p values does not name stay as they are.
void setFields(const QList<QWidget *> &fields, const QVariantMap &values);

/// Long texts show how they begin.
void showBeginnings(const QWidget *panel);

/// Opens boxes for typing; or closes them so that their texts can be read and copied, and TAB
/// passes them over.
void openFields(const QList<QWidget *> &fields, bool open);

/// Runs a slot whenever the user or the form changes one of the boxes.
void onChange(const QList<QWidget *> &fields, QObject *context, const std::function<void()> &what);

/// A box for long texts; ENTER begins a line, CTRL+ENTER and TAB go on.
QPlainTextEdit *notesBox(const Sesion &s, const QString &name, const QString &accessible);

/// A text beside the boxes that is shown and not typed.
QPlainTextEdit *informationBox(const QString &name, const QString &accessible);

/// A text box with room for what its column takes.
QLineEdit *columnBox(const Sesion &s, std::string_view table, std::string_view column,
                     const QString &name, const QString &accessible);

/// Gives a button its caption and its ALT key, which acts at once: a button's own key shows it
/// pressed first, and what is typed meanwhile goes astray.
void setTitle(QPushButton *button, const QString &title);

/// The style sheet of dense forms: closed boxes as text on the window, buttons of a bar without
/// frame.
QString denseStyle();

} // namespace ui
