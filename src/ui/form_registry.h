// Forms by name: how one subsystem opens another's screen without knowing its class.
#pragma once

#include <QHash>
#include <QPointer>
#include <QString>
#include <QVariantMap>
#include <functional>

namespace ui
{

class FormBase;

/// The forms that this build of the program has. Owned by the program's entry, passed by reference.
class FormRegistry
{
public:
    using Maker = std::function<FormBase *()>;

    /// Forms that are still loaded go with the registry.
    ~FormRegistry();

    /// Where forms that are no dialogs are shown; in windows of their own without it.
    using Host = std::function<void(FormBase &)>;
    void setHost(const Host &host) { m_host = host; }

    void enrol(const QString &name, const Maker &maker);
    bool exists(const QString &name) const;

    /// Builds the form hidden, or finds it built. There is one of each name at most.
    /// @return nullptr when the name is not registered
    FormBase *load(const QString &name);

    /// Shows the form, as a page of the host where there is one, and brings it to the front; one
    /// that is modal is waited for.
    /// @return false when the name is not registered
    bool open(const QString &name, const QVariantMap &parameters = {});

private:
    Host m_host;
    QHash<QString, Maker> m_makers;
    QHash<QString, QPointer<FormBase>> m_loaded;
};

} // namespace ui
