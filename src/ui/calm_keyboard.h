// Keeps a message that pops up by itself from being answered by someone who is typing.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>

class QKeyEvent;

namespace ui
{

/// Since some moment in the past; never goes back.
qint64 steadyMilliseconds();

/// While it lives, keys are held back from the message on screen until a second has passed without
/// one, so that the message is read first. What is typed meanwhile goes on into the text box that
/// had the focus. The mouse works at once.
class KeyboardInCalm : public QObject
{
    Q_OBJECT
public:
    /// Remembers the text box that has the focus and starts filtering keys.
    /// @param milliseconds the clock that the second is measured by
    explicit KeyboardInCalm(std::function<qint64()> milliseconds = steadyMilliseconds);
    /// Stops filtering and restores the pause of the dialogs.
    ~KeyboardInCalm() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void goOnTyping(const QKeyEvent &key);

    QPointer<QWidget> m_written; // text box that had the focus
    std::function<qint64()> m_clock;
    qint64 m_lastKey;
    int m_pause; // of the dialogs, which is switched off meanwhile
    bool m_calm = false;
    const QEvent *m_own = nullptr; // key being passed on to m_written
};

} // namespace ui
