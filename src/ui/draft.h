// What was typed and not saved, kept until it is: it survives a crash.
#pragma once

#include "store/session.h"

#include <QVariantMap>

namespace ui
{

/// The draft of one form, kept beside the machine's settings in a file that only this user can
/// read. Tied to the data folder: one clinic's draft is never offered in another.
/// A draft that cannot be written is passed over in silence.
class Draft
{
public:
    Draft(const Sesion &s, const QString &form);
    /// Writes to the disk: call it when typing pauses. @param fields texts, numbers, yes or no
    void save(const QVariantMap &fields) const;
    /// Empty when there is none.
    QVariantMap read() const;
    void clear() const;

private:
    QString m_file; // empty where nothing is kept
};

} // namespace ui
