// Forms by name: how one subsystem opens another's screen without knowing its class.
#pragma once

#include <QHash>
#include <QPointer>
#include <QString>
#include <QVariantMap>
#include <functional>

class FormBase;

/// The forms that this build of the program has. Owned by the program's entry, passed by reference.
class Formularios
{
public:
    using Fabrica = std::function<FormBase *()>;

    /// Forms that are still loaded go with the registry.
    ~Formularios();

    void Registrar(const QString &nombre, Fabrica fabrica);
    bool Existe(const QString &nombre) const;

    /// Builds the form hidden, or finds it built. There is one of each name at most.
    /// @return nullptr when the name is not registered
    FormBase *Cargar(const QString &nombre);

    /// Shows the form and brings it to the front; one that is modal is waited for.
    /// @return false when the name is not registered
    bool Abrir(const QString &nombre, const QVariantMap &parametros = {});

private:
    QHash<QString, Fabrica> m_fabricas;
    QHash<QString, QPointer<FormBase>> m_cargados;
};
