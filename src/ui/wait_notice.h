// What is shown while the program waits for another terminal.
#pragma once

#include "store/session.h"

#include <QLabel>
#include <QPointer>
#include <QTimer>
#include <memory>
#include <vector>

namespace ui
{

/// Tells over the window at work what the session waits for, as long as it waits, and keeps all
/// windows painted. Keys and clicks wait with the program: what they would do runs statements, and
/// none can be run then. There is one for the session, which must outlive it.
class WaitNotice : public QLabel
{
    Q_OBJECT
public:
    explicit WaitNotice(Sesion &s);
    ~WaitNotice() override;

    /// Shows it for a moment; told again and again it stays.
    void tell(const QString &text);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void place();
    void paintWindows();

    struct Held {
        QPointer<QObject> receiver;
        std::unique_ptr<QEvent> event;
    };
    Sesion &m_s;
    QTimer m_over;
    std::vector<Held> m_held;
};

} // namespace ui
