#include "ui/calm_keyboard.h"

#include <QApplication>
#include <QKeyEvent>

namespace
{

constexpr int calmMs = 1000;

} // namespace

TecladoEnCalma::TecladoEnCalma() : m_escrita(QApplication::focusWidget())
{
    if (m_escrita && !m_escrita->testAttribute(Qt::WA_InputMethodEnabled))
        m_escrita = nullptr; // nothing is typed there
    m_desdeLaUltima.start();
    qApp->installEventFilter(this);
}

TecladoEnCalma::~TecladoEnCalma() { qApp->removeEventFilter(this); }

bool TecladoEnCalma::eventFilter(QObject *, QEvent *event)
{
    const auto type = event->type();
    const bool key = type == QEvent::KeyPress || type == QEvent::ShortcutOverride;
    if (!key || m_calma || event == m_propia)
        return false;
    if (m_desdeLaUltima.elapsed() >= calmMs) {
        m_calma = true;
        return false;
    }
    m_desdeLaUltima.restart();
    // Accepted, it is no shortcut, and comes again as the press of a key.
    event->accept();
    if (type == QEvent::KeyPress)
        goOnTyping(*static_cast<QKeyEvent *>(event));
    return true;
}

/// Letters alone: ENTER and the like would act behind the box.
void TecladoEnCalma::goOnTyping(const QKeyEvent &key)
{
    const auto held = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier);
    const bool command = held == Qt::ControlModifier || held == Qt::AltModifier; // both are AltGr
    const bool letter = !command && !key.text().isEmpty() && key.text().at(0).isPrint();
    if (!m_escrita || !(letter || key.key() == Qt::Key_Backspace))
        return;
    QKeyEvent same(QEvent::KeyPress, key.key(), key.modifiers(), key.text(), key.isAutoRepeat(),
                   ushort(key.count()));
    m_propia = &same;
    QApplication::sendEvent(m_escrita, &same);
    m_propia = nullptr;
}
