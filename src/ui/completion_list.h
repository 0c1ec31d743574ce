// An editable drop-down list that completes what is typed.
#pragma once

#include "store/dialogs.h"
#include "ui/calm_list.h"

namespace ui
{

/// The list does not search by itself: it emits each typed text, and the owner answers with the
/// best entry, whose remaining letters are selected so that the next key replaces them. Keys that
/// move the cursor or erase emit nothing and leave the text alone.
class ListWithCompleted : public CalmList
{
    Q_OBJECT
public:
    /// Starts out empty; see load().
    explicit ListWithCompleted(QWidget *parent = nullptr);

    /// Fills the list, keeping the text in the box. An option's `value` is the entry's id.
    void load(const QList<store::Option> &options);
    /// Shows the entry with that id; empties the box when there is none.
    void SeleccionarItem(int id);
    /// The id of the entry whose name is the text shown, ignoring case; 0 when the text is new or
    /// empty.
    int Id() const;
    /// Completes the typed text with this name, in the list's own spelling. Does nothing if the
    /// name does not begin with the text.
    void propose(int id, const QString &name);

Q_SIGNALS:
    /// The user typed; @p text is what the box holds now.
    void typed(const QString &text);
    /// The user emptied the box.
    void emptied();
    /// The user picked an entry with UP, DOWN or the mouse.
    void chosen(int id);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    bool m_deletes = false; // the current key erases
};

} // namespace ui
