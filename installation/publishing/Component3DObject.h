#pragma once

#include "components/contracts/Publishing.h"
#include "installation/publishing/Publication.h"
#include "installation/publishing/SettingsHolder.h"

#include <wrl/client.h>

#include <string>
#include <vector>

namespace devinst {

// "KV.3D.1": publishes a project as a text or, with a viewer, as a view of it with the objects that
// its nodes refer to.
class Component3DObject final : public SettingsHolder {
  public:
    Component3DObject();

    HRESULT On(zt::Component3D::PutViewer, IDispatch* viewer);
    HRESULT On(zt::Component3D::PutKernel, zt::KernelAdmin* kernel);
    HRESULT On(zt::Component3D::PutLearningMode, VARIANT_BOOL learning);
    HRESULT On(zt::Component3D::PutResourceTag, BSTR tag);
    HRESULT On(zt::Component3D::PutAxesFolder, BSTR folder);
    HRESULT On(zt::Component3D::PutSpecificationFileName, BSTR path);
    HRESULT On(zt::Component3D::PutOptionC, LONG value);
    HRESULT On(zt::Component3D::PutLanguage, BSTR language);
    // Fails without a viewer, as without kernel, open project or destination folder.
    HRESULT On(zt::Component3D::PublishView, BSTR destination, BSTR first, BSTR second, LONG one,
               LONG zero, const VARIANT& last);
    HRESULT On(zt::Component3D::PublishText, zt::KernelAdmin* kernel, BSTR destination, BSTR name,
               const VARIANT& last);

    // Command 1 begins a new list of referenced objects; command 1000 adds one, given as an array
    // of two: an item of the tree and the object.
    HRESULT On(zt::CommandTarget3D::Execute, LONG flags, const VARIANT* command,
               const VARIANT* argument);

  private:
    ~Component3DObject() override = default;

    Publication Begin(const char* kind, IDispatch* kernel) const;
    HRESULT AddObject(const VARIANT* argument);

    Microsoft::WRL::ComPtr<IDispatch> m_viewer;
    Microsoft::WRL::ComPtr<IDispatch> m_kernel;
    bool m_learning = false;
    std::wstring m_resourceTag;
    std::wstring m_axesFolder;
    std::wstring m_specification;
    std::wstring m_language;
    LONG m_optionC = -1; // unset until it is set
    std::vector<PublishedObject> m_objects;
};

} // namespace devinst
