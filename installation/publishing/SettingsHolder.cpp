#include "installation/publishing/SettingsHolder.h"

namespace devinst {

void SettingsHolder::AddSettingsFace() {
    AddFace(IID_IPersistPropertyBag, FunctionTable<PersistPropertyBag, SettingsHolder>());
}

HRESULT SettingsHolder::On(PersistPropertyBag::InitNew) {
    m_settings = PublicationSettings();
    return S_OK;
}

HRESULT SettingsHolder::On(PersistPropertyBag::Load, IPropertyBag* bag, IErrorLog*) {
    if (bag == nullptr)
        return E_POINTER;
    m_settings.Load(bag);
    return S_OK;
}

HRESULT SettingsHolder::On(PersistPropertyBag::Save, IPropertyBag* bag, LONG, LONG) {
    return bag != nullptr ? m_settings.Save(bag) : E_POINTER;
}

} // namespace devinst
