// The pages of the settings. Each builds one and wires it; whatever changes is written at once.
#pragma once

#include "store/session.h"

#include <QColor>
#include <QIcon>
#include <functional>

namespace ui
{

class FormRegistry;
class FormBase;
class HelpLine;

} // namespace ui

class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;
class QWidget;

namespace admin
{

/// What a page is built with. The form brings what is around it: title, margins, scrolling, and the
/// size of the page, which is as tall as it needs unless something in it wants to grow.
struct PageContext {
    Sesion &s;
    ui::FormRegistry &forms;
    ui::FormBase *form; // the settings form, parent of boxes
    ui::HelpLine *help;
    /// The form's guard: false when the task failed, the user has been told.
    std::function<bool(const std::function<void()> &)> guarded;
    /// The form's apostrophe filter.
    std::function<void(const QList<QLineEdit *> &)> withoutApostrophes;
    /// The form's ENTER chain, for boxes that follow each other.
    std::function<void(const QList<QWidget *> &)> enterChain = [](const QList<QWidget *> &) {};
};

/// What pages are laid out with, so that all stand on one grid.
namespace parts
{
/// The column of a page: sections follow each other from the top.
QVBoxLayout *Column(QWidget *page);
/// A heading, a soft sentence below it where it needs one, and rows to be filled with Fila or as
/// the layout allows. The column keeps it.
QFormLayout *sectionOf(QVBoxLayout *column, const QString &title, const QString &note = {});
/// One row: a caption, which may have a letter behind & that leads to the control, and the control,
/// which takes its accessible name from the caption. Captions are equally wide on all pages.
void Row(QFormLayout *section, const QString &title, QWidget *control);
/// Soft text over as many lines as it needs.
QLabel *noteOf(const QString &text);
/// A button as wide as its caption needs.
QPushButton *buttonOf(const QString &title, const QString &name);
/// A patch of a colour; the chosen one has a mark.
QIcon sample(const QColor &color);
/// Settings hold colours with red in the lowest byte.
QColor settingColor(int value);
int colorSetting(const QColor &color);

inline constexpr int TextWidth = 360; // of boxes, in device-independent pixels
inline constexpr int WordWidth = 200;
inline constexpr int FigureWidth = 96;
} // namespace parts

QWidget *clinicPage(const PageContext &c);
QWidget *usersPage(const PageContext &c);
QWidget *mailPage(const PageContext &c);
QWidget *lookPage(const PageContext &c);
QWidget *boardingPage(const PageContext &c);
QWidget *financePage(const PageContext &c);
QWidget *networkPage(const PageContext &c);

QWidget *automationPage(const PageContext &c);
QWidget *measuresPage(const PageContext &c);
QWidget *profilesPage(const PageContext &c);
QWidget *foodPage(const PageContext &c);
QWidget *messagesPage(const PageContext &c);
QWidget *listsPage(const PageContext &c);

} // namespace admin
