#include "ui/calm_keyboard.h"

#include "ui/window_dialogs.h"

#include <QApplication>
#include <QKeyEvent>
#include <chrono>

using namespace ui;

namespace
{

constexpr int CalmMs = 1000;

} // namespace

qint64 ui::steadyMilliseconds()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

KeyboardInCalm::KeyboardInCalm(std::function<qint64()> milliseconds)
    : m_written(QApplication::focusWidget()),
      m_clock(std::move(milliseconds)),
      m_lastKey(m_clock()),
      m_pause(WindowDialogs::setPause(0))
{
    if (m_written && !m_written->testAttribute(Qt::WA_InputMethodEnabled))
        m_written = nullptr; // not a text box
    qApp->installEventFilter(this);
}

KeyboardInCalm::~KeyboardInCalm()
{
    qApp->removeEventFilter(this);
    WindowDialogs::setPause(m_pause);
}

bool KeyboardInCalm::eventFilter(QObject *, QEvent *event)
{
    const auto type = event->type();
    const bool key = type == QEvent::KeyPress || type == QEvent::ShortcutOverride;
    if (!key || m_calm || event == m_own)
        return false;
    if (m_clock() - m_lastKey >= CalmMs) {
        m_calm = true;
        return false;
    }
    m_lastKey = m_clock();
    // Accepting it keeps it from being a shortcut; it comes again as a key press.
    event->accept();
    if (type == QEvent::KeyPress)
        goOnTyping(*static_cast<QKeyEvent *>(event));
    return true;
}

/// Letters only: ENTER and the like would act on the form behind the message.
void KeyboardInCalm::goOnTyping(const QKeyEvent &key)
{
    const auto held = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier);
    const bool command = held == Qt::ControlModifier || held == Qt::AltModifier; // both: AltGr
    const bool letter = !command && !key.text().isEmpty() && key.text().at(0).isPrint();
    if (!m_written || !(letter || key.key() == Qt::Key_Backspace))
        return;
    QKeyEvent same(QEvent::KeyPress, key.key(), key.modifiers(), key.text(), key.isAutoRepeat(),
                   ushort(key.count()));
    m_own = &same;
    QApplication::sendEvent(m_written, &same);
    m_own = nullptr;
}
