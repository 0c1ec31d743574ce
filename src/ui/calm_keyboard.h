// A box that comes up by itself must not be answered by somebody who is typing.
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

/// As long as it lives, keys reach nobody until a second has gone by without one: the box that has
/// come up meanwhile is there to be read first. What is typed goes on into the box of text that
/// has the focus now. The mouse works at once.
class KeyboardInCalm : public QObject
{
    Q_OBJECT
public:
    /// @param milliseconds the clock that the second is measured by
    explicit KeyboardInCalm(std::function<qint64()> milliseconds = steadyMilliseconds);
    ~KeyboardInCalm() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void goOnTyping(const QKeyEvent &key);

    QPointer<QWidget> m_written; // where somebody may be typing
    std::function<qint64()> m_clock;
    qint64 m_lastKey;
    int m_pause; // of boxes, which is not needed beside this one
    bool m_calm = false;
    const QEvent *m_own = nullptr; // a key on its way there
};

} // namespace ui
