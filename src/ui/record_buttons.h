// The row of buttons below a record: save, new, modify, delete.
#pragma once

#include "store/session.h"
#include "ui/record_mode.h"

#include <QWidget>

class QPushButton;

namespace ui
{

class RecordButtons : public QWidget
{
    Q_OBJECT
public:
    /// Given names and captions of the four.
    struct Names {
        QString save, newOne, modify, erase;
        int newText, modifyText; // numbers of the texts; the other two are the house's
    };

    RecordButtons(const Sesion &s, const Names &names, QWidget *parent = nullptr);

    /// Says in captions and states what can be done, see recordChoices.
    void arrange(Mode mode, bool free, bool hasRow, bool mayAdd = true);

    QPushButton *save, *newOne, *modify, *erase;

Q_SIGNALS:
    /// New or Modify, or the same button again to give it up.
    void toggled(ui::Mode mode);
    void saved();
    void erased();

private:
    const Sesion &m_s;
    int m_newText, m_modifyText;
};

} // namespace ui
