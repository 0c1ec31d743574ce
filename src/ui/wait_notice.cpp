#include "ui/wait_notice.h"

#include "ui/theme.h"

#include <QApplication>
#include <QScreen>

#include <utility>

using namespace ui;

namespace
{

// Longer than the interval between two calls, yet short enough to vanish once work goes on.
constexpr int StaysMs = 300;

QWidget *windowAtWork()
{
    if (QWidget *active = QApplication::activeWindow())
        return active;
    for (QWidget *w : QApplication::topLevelWidgets())
        if (w->isVisible() && w->windowType() != Qt::ToolTip)
            return w;
    return nullptr;
}

} // namespace

WaitNotice::WaitNotice(Sesion &s)
    : QLabel(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus), m_s(s)
{
    setObjectName(QStringLiteral("avisoDeEspera"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setTextFormat(Qt::PlainText);
    setFrameShape(QFrame::StyledPanel);
    setMargin(space::L);
    m_over.setSingleShot(true);
    m_over.setInterval(StaysMs);
    connect(&m_over, &QTimer::timeout, this, &QWidget::hide);
    m_s.progress.waiting = [this](const QString &text) { tell(text); };
}

WaitNotice::~WaitNotice() { m_s.progress.waiting = {}; }

void WaitNotice::tell(const QString &text)
{
    if (text != this->text() || !isVisible()) {
        setText(text);
        setAccessibleName(text);
        adjustSize();
        place();
        show();
    }
    m_over.start();
    paintWindows();
}

void WaitNotice::place()
{
    const QWidget *window = windowAtWork();
    const QRect room =
        window ? window->frameGeometry() : QGuiApplication::primaryScreen()->availableGeometry();
    QRect own(QPoint(), size());
    own.moveCenter(room.center());
    move(own.topLeft());
}

void WaitNotice::paintWindows()
{
    qApp->installEventFilter(this);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents
                                    | QEventLoop::ExcludeSocketNotifiers);
    qApp->removeEventFilter(this);
    for (Held &held : std::exchange(m_held, {}))
        if (held.receiver)
            QCoreApplication::postEvent(held.receiver, held.event.release());
}

bool WaitNotice::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Timer:
        // Dropped timer events fire again. A window's own timer is the one that makes it paint.
        return !watched->isWindowType();
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        if (!watched->isWidgetType())
            return false;
        m_held.push_back({watched, std::unique_ptr<QEvent>(event->clone())});
        return true;
    default:
        return false;
    }
}
