#include "ui/quick_key.h"

#include "ui/form_base.h"
#include "ui/form_registry.h"

#include <QApplication>
#include <QKeyEvent>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

class SearchKey : public QObject
{
public:
    SearchKey(QApplication &app, FormRegistry &forms) : QObject(&app), m_forms(forms)
    {
        setObjectName(u"TeclaDeBusqueda"_s);
        app.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
            return false;
        const auto &key = *static_cast<QKeyEvent *>(event);
        if (event->type() == QEvent::KeyPress && typesByAccident(watched, key))
            return true;
        if (key.key() != Qt::Key_K || key.modifiers() != Qt::ControlModifier || !canOpen())
            return false;
        if (event->type() == QEvent::ShortcutOverride) {
            event->accept(); // comes again as a key press
            return true;
        }
        auto *form = qobject_cast<FormBase *>(QApplication::activeWindow());
        form->guarded([this] { m_forms.open(target); });
        return true;
    }

private:
    /// ALT with a letter that belongs to no button must not type into the focused box, which may be
    /// one for a password.
    static bool typesByAccident(QObject *watched, const QKeyEvent &key)
    {
        return key.modifiers() == Qt::AltModifier && !key.text().isEmpty()
               && key.text().front().isPrint() && watched->isWidgetType()
               && static_cast<QWidget *>(watched)->testAttribute(Qt::WA_InputMethodEnabled);
    }

    /// Not over dialogs, modal forms or menus, and not before the login.
    bool canOpen() const
    {
        const auto *form = qobject_cast<FormBase *>(QApplication::activeWindow());
        return form && form->objectName() != u"frminicio" && !QApplication::activeModalWidget()
               && !QApplication::activePopupWidget() && m_forms.exists(target);
    }

    const QString target = u"frmBusquedaRapida"_s;
    FormRegistry &m_forms;
};

} // namespace

void ui::installQuickSearch(QApplication &app, FormRegistry &forms) { new SearchKey(app, forms); }
