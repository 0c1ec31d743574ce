// Unsaved input, kept so that it survives a crash.
#pragma once

#include "store/session.h"

#include <QVariantMap>

namespace ui
{

/// The draft of one form, kept beside the machine's settings in a file that only this user can
/// read. Each data folder has its own drafts. A draft that cannot be written is silently skipped.
class Draft
{
public:
    /// Nothing is kept when the session has no program folder.
    /// @param form name of the form, part of the file's name
    Draft(const Sesion &s, const QString &form);
    /// Writes the draft to the disk; call it when typing pauses.
    /// @param fields texts, numbers and booleans by field name
    void save(const QVariantMap &fields) const;
    /// The fields saved last; empty when there is no draft.
    QVariantMap read() const;
    /// Deletes the draft, if there is one.
    void clear() const;

private:
    QString m_file; // empty when nothing is kept
};

} // namespace ui
