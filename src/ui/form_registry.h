// Forms by name, so that one subsystem can open another's form without knowing its class.
#pragma once

#include <QHash>
#include <QPointer>
#include <QString>
#include <QVariantMap>
#include <functional>

namespace ui
{

class FormBase;

/// The forms of this build. Owned by main() and passed by reference.
class FormRegistry
{
public:
    /// Builds a form, which the registry then owns.
    using Maker = std::function<FormBase *()>;

    /// Destroys the forms that are still loaded.
    ~FormRegistry();

    /// Where forms that are no dialogs are shown; in windows of their own without it.
    using Host = std::function<void(FormBase &)>;
    void setHost(const Host &host) { m_host = host; }

    /// Registers a form under a name; a second registration replaces the first.
    void enrol(const QString &name, const Maker &maker);
    /// Whether a form is registered under that name.
    bool exists(const QString &name) const;

    /// Returns the form of that name, building it hidden the first time. There is at most one of
    /// each.
    /// @return nullptr when the name is not registered
    FormBase *load(const QString &name);

    /// Shows the form and brings it to the front; returns from a modal form only once it is closed.
    /// @return false when the name is not registered
    bool open(const QString &name, const QVariantMap &parameters = {});

private:
    Host m_host;
    QHash<QString, Maker> m_makers;
    QHash<QString, QPointer<FormBase>> m_loaded;
};

} // namespace ui
