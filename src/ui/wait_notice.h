// The notice shown while the program waits for another terminal.
#pragma once

#include "store/session.h"

#include <QLabel>
#include <QPointer>
#include <QTimer>
#include <memory>
#include <vector>

namespace ui
{

/// Shows what the session is waiting for over the active window, and keeps all windows painted.
/// Keys and clicks stay queued: handling them would run statements, and none can run during the
/// wait. There is one per session, and the session must outlive it.
class WaitNotice : public QLabel
{
    Q_OBJECT
public:
    /// Registers itself as the session's wait callback.
    explicit WaitNotice(Sesion &s);
    /// Unregisters the callback.
    ~WaitNotice() override;

    /// Shows the text for 0.3 seconds; repeated calls keep it up.
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
