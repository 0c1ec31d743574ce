// What was typed and not saved, kept until it is: it survives a crash.
#pragma once

#include "store/session.h"

#include <QVariantMap>

/// The draft of one form, kept beside the machine's settings in a file that only this user can
/// read. Tied to the data folder: one clinic's draft is never offered in another.
/// A draft that cannot be written is passed over in silence.
class Borrador
{
public:
    Borrador(const Sesion &s, const QString &formulario);
    /// Writes to the disk: call it when typing pauses. @param campos texts, numbers, yes or no
    void Guardar(const QVariantMap &campos) const;
    /// Empty when there is none.
    QVariantMap Leer() const;
    void Borrar() const;

private:
    QString m_archivo; // empty where nothing is kept
};
