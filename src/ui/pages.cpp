#include "ui/pages.h"

#include "ui/form_base.h"

#include <QApplication>
#include <QEvent>
#include <QScrollArea>

using namespace ui;

Pages::Pages(QWidget *home, QWidget *parent) : QStackedWidget(parent), m_home(home)
{
    addWidget(home);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget *, QWidget *focused) { keepInSight(focused); });
}

Pages::~Pages()
{
    disconnect(qApp, nullptr, this, nullptr); // the focus leaves while this goes away
    for (const auto &form : std::as_const(m_open))
        if (form)
            form->removeEventFilter(this);
    for (auto *frame : findChildren<QScrollArea *>(QString(), Qt::FindDirectChildrenOnly))
        if (auto *form = qobject_cast<FormBase *>(frame->widget())) {
            form->hide();
            frame->takeWidget();
            form->setParent(nullptr);
        }
}

QScrollArea *Pages::frameOf(const FormBase &form) const
{
    // The form stands in the viewport of its frame.
    return form.isWindow() ? nullptr : qobject_cast<QScrollArea *>(form.parent()->parent());
}

QScrollArea *Pages::adopt(FormBase &form)
{
    auto *frame = new QScrollArea;
    frame->setFrameShape(QFrame::NoFrame);
    frame->setFocusPolicy(Qt::NoFocus);
    frame->setWidgetResizable(true);
    form.setWindowState(Qt::WindowNoState); // a size remembered from a window of its own
    frame->setWidget(&form);
    // A dialog would otherwise look for the middle of its parent when it is shown.
    form.setAttribute(Qt::WA_Moved);
    form.installEventFilter(this);
    connect(&form, &QWidget::windowTitleChanged, frame, [this] { Q_EMIT changed(); });
    addWidget(frame);
    return frame;
}

void Pages::bringForward(FormBase &form)
{
    const auto toFront = [](QWidget &top) {
        if (top.isMinimized())
            top.setWindowState(top.windowState() & ~Qt::WindowMinimized);
        top.raise();
        top.activateWindow();
    };
    if (form.isWindow() && form.isVisible())
        return toFront(form);
    // Where it wants to begin: moving it into the stack would forget that.
    const QPointer<QWidget> focus = form.focusWidget();
    const bool wasInFront = current() == &form;
    QScrollArea *frame = frameOf(form);
    if (!frame)
        frame = adopt(form);
    m_open.removeAll(&form);
    m_open.append(&form);
    form.show();
    setCurrentWidget(frame);
    if (focus)
        focus->setFocus();
    else
        form.setFocus();
    // It may have been opened from a page in a window of its own.
    if (window()->isVisible() && !window()->isActiveWindow())
        toFront(*window());
    if (wasInFront)
        return;
    Q_EMIT changed();
    form.comeForward();
}

FormBase *Pages::current() const
{
    const auto *frame = qobject_cast<QScrollArea *>(currentWidget());
    return frame ? qobject_cast<FormBase *>(frame->widget()) : nullptr;
}

void Pages::goHome()
{
    setCurrentWidget(m_home);
    if (QWidget *focus = m_home->focusWidget())
        focus->setFocus();
    else
        m_home->setFocus();
    Q_EMIT changed();
}

void Pages::separate()
{
    FormBase *form = current();
    if (!form)
        return;
    const QSize size = form->size();
    release(*form);
    closed(*form);
    form->resize(size);
    form->setAttribute(Qt::WA_Moved, false);
    form->show();
    form->activateWindow();
    m_apart.removeAll(form);
    m_apart.append(form);
}

void Pages::release(FormBase &form)
{
    form.removeEventFilter(this);
    QScrollArea *frame = frameOf(form);
    frame->takeWidget();
    form.setParent(nullptr, Qt::Window);
    removeWidget(frame);
    frame->deleteLater();
}

bool Pages::mayLeaveAll()
{
    QList<QPointer<FormBase>> open;
    for (const auto &form : std::as_const(m_apart))
        if (form && form->isWindow() && form->isVisible())
            open << form;
    std::reverse_copy(m_open.begin(), m_open.end(), std::back_inserter(open));
    for (const auto &form : std::as_const(open))
        if (form && !form->mayLeave()) {
            bringForward(*form);
            return false;
        }
    return true;
}

void Pages::activate()
{
    if (FormBase *form = current())
        form->comeForward();
}

bool Pages::eventFilter(QObject *watched, QEvent *event)
{
    // Sent when the form itself is hidden, and not when another page comes before it.
    if (event->type() == QEvent::HideToParent)
        if (auto *form = qobject_cast<FormBase *>(watched))
            closed(*form);
    return QStackedWidget::eventFilter(watched, event);
}

void Pages::closed(FormBase &form)
{
    m_open.removeAll(&form);
    m_open.removeIf([](const auto &other) { return other.isNull(); });
    if (!m_open.isEmpty())
        bringForward(*m_open.last());
    else
        goHome();
}

void Pages::keepInSight(QWidget *focused)
{
    auto *frame = qobject_cast<QScrollArea *>(currentWidget());
    if (frame && focused && frame->widget() && frame->widget()->isAncestorOf(focused))
        frame->ensureWidgetVisible(focused);
}
