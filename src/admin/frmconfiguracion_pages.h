// The pages of the settings. Each function builds one page and wires it; changes are written at
// once.
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

/// What a page is built with. The form supplies what surrounds a page: title, margins and
/// scrolling. A page is as tall as it needs to be unless something in it wants to grow.
struct PageContext {
    Sesion &s;
    ui::FormRegistry &forms;
    ui::FormBase *form; // the settings form, parent of dialogs
    ui::HelpLine *help;
    /// The form's guard: false when the task failed, and the user has been told.
    std::function<bool(const std::function<void()> &)> guarded;
    /// The form's apostrophe filter.
    std::function<void(const QList<QLineEdit *> &)> withoutApostrophes;
    /// The form's ENTER chain, for boxes that follow each other.
    std::function<void(const QList<QWidget *> &)> enterChain = [](const QList<QWidget *> &) {};
};

/// The building blocks of a page, so that all pages share one grid.
namespace parts
{
/// Makes the column of a page, in which sections follow each other from the top.
QVBoxLayout *Column(QWidget *page);
/// Adds a section to the column: a heading, an optional note below it, and rows to be added with
/// Row() or directly. The column owns it.
QFormLayout *sectionOf(QVBoxLayout *column, const QString &title, const QString &note = {});
/// Adds a row with a caption and a control, whose accessible name is the caption. An '&' in the
/// caption marks the letter that leads to the control. Captions are equally wide on all pages.
void Row(QFormLayout *section, const QString &title, QWidget *control);
/// A muted label that wraps as needed.
QLabel *noteOf(const QString &text);
/// A button no wider than its caption needs.
QPushButton *buttonOf(const QString &title, const QString &name);
/// A colour swatch as an icon; checked, it shows a mark.
QIcon sample(const QColor &color);
/// The colour of a setting, which has red in its lowest byte.
QColor settingColor(int value);
/// The setting for a colour; the inverse of settingColor().
int colorSetting(const QColor &color);

inline constexpr int TextWidth = 360; // of boxes, in device-independent pixels
inline constexpr int WordWidth = 200;
inline constexpr int FigureWidth = 96;
} // namespace parts

/// Name, address and telephones of the clinic.
QWidget *clinicPage(const PageContext &c);
/// Who may use the program.
QWidget *usersPage(const PageContext &c);
/// How mails are sent.
QWidget *mailPage(const PageContext &c);
/// Colours and units.
QWidget *lookPage(const PageContext &c);
/// Boarding.
QWidget *boardingPage(const PageContext &c);
/// Taxes, prices and costs, the words for movements of cash, prepaid medicine and product colours.
QWidget *financePage(const PageContext &c);
/// The data folder of this terminal, importing and news.
QWidget *networkPage(const PageContext &c);

/// What the program does by itself.
QWidget *automationPage(const PageContext &c);
/// Which reminders are sent.
QWidget *measuresPage(const PageContext &c);
/// What gives a client each mark of its profile.
QWidget *profilesPage(const PageContext &c);
/// Food levels by species.
QWidget *foodPage(const PageContext &c);
/// The wording of messages.
QWidget *messagesPage(const PageContext &c);
/// The six reference lists.
QWidget *listsPage(const PageContext &c);

} // namespace admin
