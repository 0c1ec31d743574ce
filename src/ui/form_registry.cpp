#include "ui/form_registry.h"

#include "ui/form_base.h"

#include <QApplication>

using namespace ui;

namespace
{

/// Shows the busy cursor while a form is being built, even if that throws.
struct BusyCursor {
    BusyCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyCursor() { QApplication::restoreOverrideCursor(); }
    BusyCursor(const BusyCursor &) = delete;
    BusyCursor &operator=(const BusyCursor &) = delete;
};

} // namespace

FormRegistry::~FormRegistry()
{
    // Hide first: destroying a visible window moves the focus, and its slots would run on a
    // half-destroyed object.
    for (const auto &form : std::as_const(m_loaded))
        if (form) {
            form->hide();
            delete form.data();
        }
}

void FormRegistry::enrol(const QString &name, const Maker &maker) { m_makers.insert(name, maker); }

bool FormRegistry::exists(const QString &name) const { return m_makers.contains(name); }

FormBase *FormRegistry::load(const QString &name)
{
    FormBase *form = m_loaded.value(name);
    if (!form && exists(name)) {
        form = m_makers.value(name)();
        m_loaded.insert(name, form);
    }
    return form;
}

bool FormRegistry::open(const QString &name, const QVariantMap &parameters)
{
    FormBase *form = nullptr;
    {
        const BusyCursor busy;
        form = load(name);
        if (!form)
            return false;
        form->opened(parameters);
    }
    if (form->isModal()) {
        form->exec();
        return true;
    }
    if (m_host) {
        m_host(*form);
        return true;
    }
    if (form->isMinimized())
        form->setWindowState(form->windowState() & ~Qt::WindowMinimized);
    form->show();
    form->raise();
    form->activateWindow();
    return true;
}
