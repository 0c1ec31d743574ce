// A box that comes up by itself must not be answered by somebody who is typing.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QWidget>

class QKeyEvent;

namespace ui
{

/// As long as it lives, keys reach nobody until a second has gone by without one: the box that has
/// come up meanwhile is there to be read first. What is typed goes on into the box of text that
/// has the focus now. The mouse works at once.
class KeyboardInCalm : public QObject
{
    Q_OBJECT
public:
    KeyboardInCalm();
    ~KeyboardInCalm() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void goOnTyping(const QKeyEvent &key);

    QPointer<QWidget> m_written; // where somebody may be typing
    QElapsedTimer m_lastFrom;
    int m_pause; // of boxes, which is not needed beside this one
    bool m_calm = false;
    const QEvent *m_own = nullptr; // a key on its way there
};

} // namespace ui
