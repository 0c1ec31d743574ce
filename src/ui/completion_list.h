// A list that can be typed in and completes what is typed.
#pragma once

#include "store/dialogs.h"
#include "ui/calm_list.h"

namespace ui
{

/// The list itself does not know what completes a text: it tells each typed text, and whoever
/// knows gives back the best entry, whose untyped part stays selected so that the next key
/// replaces it. A key that moves or erases tells nothing and leaves the text as it is.
class ListWithCompleted : public CalmList
{
    Q_OBJECT
public:
    explicit ListWithCompleted(QWidget *parent = nullptr);

    /// Fills the list; `value` of an option is its id. The text stays.
    void load(const QList<store::Option> &options);
    /// Shows the entry with that id, or empties the box when there is none.
    void SeleccionarItem(int id);
    /// Id of the entry whose name is the text shown, letter case aside; 0 when it is a new one.
    int Id() const;
    /// Completes what was typed with this name, in the capitals of the list.
    void propose(int id, const QString &name);

Q_SIGNALS:
    void typed(const QString &text);
    void emptied();
    /// Walked to or picked by the user: UP, DOWN or the mouse.
    void chosen(int id);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    bool m_deletes = false; // the key at work erases
};

} // namespace ui
