// Rows of the pages that set what the program does by itself.
#pragma once

#include "admin/frmconfiguracion_pages.h"
#include "ui/bound.h"

namespace admin
{

/// One question with its options, as text numbers.
struct PageQuestion {
    QString name; // of the control
    QString title;
    QList<std::pair<int, int>> options; // number stored and its text
    int help;                           // text for the help line: what the choice does
};

/// Adds a question with its options beside it. It is not bound to a setting yet.
ui::OptionsGroup *optionsRow(const PageContext &c, QFormLayout *section,
                             const PageQuestion &question);
/// Adds a box for a whole number, bound to a column of the settings row.
/// @param digits how many can be typed
/// @throws StoreError when the column cannot be read
QLineEdit *wholeNumberRow(const PageContext &c, QFormLayout *section, std::string_view column,
                          int title, int digits, int help);
/// Adds a check box without a separate caption, aligned with the boxes above it.
QCheckBox *checkboxRow(const PageContext &c, QFormLayout *section, const QString &name, int title,
                       int help);

/// Shows a hint in the help line whenever the control, or one inside it, receives the focus.
void warnOnEntering(const PageContext &c, QWidget *control, int help);
/// Runs a task each time the page is shown, since other pages may have changed what it displays.
void onShow(QWidget *page, const std::function<void()> &task);

} // namespace admin
