// Rows of the pages that ask how the program should act by itself.
#pragma once

#include "admin/frmconfiguracion_pages.h"
#include "ui/bound.h"

namespace admin
{

/// One question with its options, as strings of the table.
struct PageQuestion {
    QString name; // of the control
    QString title;
    QList<std::pair<int, int>> options; // number stored, string
    int help;                           // what the choice does, told in the help line
};

/// Puts a question beside its options. Nothing is tied to the settings yet.
ui::OptionsGroup *optionsRow(const PageContext &c, QFormLayout *section,
                             const PageQuestion &question);
/// A box for a whole number of few digits, tied to a column of the settings row.
QLineEdit *wholeNumberRow(const PageContext &c, QFormLayout *section, std::string_view column,
                          int title, int digits, int help);
/// A check mark without a caption beside it. It stands below the boxes.
QCheckBox *checkboxRow(const PageContext &c, QFormLayout *section, const QString &name, int title,
                       int help);

/// Tells a hint in the help line whenever the focus comes to a control or into it.
void warnOnEntering(const PageContext &c, QWidget *control, int help);
/// Runs a task each time a page is shown: other pages may have changed what it shows.
void onShow(QWidget *page, const std::function<void()> &task);

} // namespace admin
