// What was typed into the registry and not saved, as it is kept on the disk, and how it is taken up
// again.
#pragma once

#include "store/session.h"
#include "ui/record_mode.h"

namespace clients
{

/// The two panels of the registry.
enum RegistryPanel { ClientSide, PatientSide };

struct RegistryDraft {
    RegistryPanel panel = ClientSide;
    ui::Mode mode = ui::Mode::New;
    store::Selection shown; // what was on the screen, and is changed where the mode is Modify
    QVariantMap boxes;

    /// What was typed as the name, to ask by.
    QString name() const;
    QVariantMap toMap() const;
    /// nullopt for an empty map: there is no draft.
    static std::optional<RegistryDraft> fromMap(const QVariantMap &map);

    /// How to go on with it: what was to be changed and is gone becomes a new one.
    /// @return nullopt for a patient whose owner is gone
    std::optional<ui::Mode> modeToResume(bool clientThere, bool patientThere) const;
};

} // namespace clients
