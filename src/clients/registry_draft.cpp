#include "clients/registry_draft.h"

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

const QString PanelKey = u"panel"_s, ModeKey = u"modo"_s, ClientKey = u"idc"_s,
              PatientKey = u"idm"_s, BoxesKey = u"campos"_s;
const QString ClientPanelName = u"cliente"_s, PatientPanelName = u"paciente"_s;

} // namespace

QString RegistryDraft::name() const
{
    return boxes.value(panel == ClientSide ? u"txtayn"_s : u"txtnom"_s).toString();
}

QVariantMap RegistryDraft::toMap() const
{
    return {{PanelKey, panel == ClientSide ? ClientPanelName : PatientPanelName},
            {ModeKey, int(mode)},
            {ClientKey, shown.idc},
            {PatientKey, shown.idm},
            {BoxesKey, boxes}};
}

std::optional<RegistryDraft> RegistryDraft::fromMap(const QVariantMap &map)
{
    if (map.isEmpty())
        return std::nullopt;
    return RegistryDraft{.panel = map.value(PanelKey) == ClientPanelName ? ClientSide : PatientSide,
                         .mode = map.value(ModeKey).toInt() == int(ui::Mode::Modify)
                                     ? ui::Mode::Modify
                                     : ui::Mode::New,
                         .shown = {map.value(ClientKey).toInt(), map.value(PatientKey).toInt()},
                         .boxes = map.value(BoxesKey).toMap()};
}

std::optional<ui::Mode> RegistryDraft::modeToResume(bool clientThere, bool patientThere) const
{
    if (panel == PatientSide && !clientThere)
        return std::nullopt;
    const bool gone = panel == ClientSide ? !clientThere : !patientThere;
    return gone ? ui::Mode::New : mode;
}
