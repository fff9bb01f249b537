#pragma once

#include "installation/publishing/PublicationSettings.h"
#include "installation/publishing/PublishingContracts.h"
#include "installation/runtime/StandIn.h"

namespace devinst {

// Base of the publishing components that keep their settings in a property bag.
class SettingsHolder : public StandIn {
  public:
    HRESULT On(PersistPropertyBag::InitNew);
    HRESULT On(PersistPropertyBag::Load, IPropertyBag* bag, IErrorLog* log);
    HRESULT On(PersistPropertyBag::Save, IPropertyBag* bag, LONG clearDirty, LONG saveAll);

  protected:
    explicit SettingsHolder(const char* className) : StandIn(className) {}

    // To be called by the derived class's constructor behind its own AddFace.
    void AddSettingsFace();

    PublicationSettings m_settings;
};

} // namespace devinst
