#pragma once

#include "components/contracts/Publishing.h"
#include "installation/publishing/SettingsHolder.h"
#include "installation/runtime/ObjectWithSite.h"

#include <wrl/client.h>

#include <string>

namespace devinst {

// Publishes the kernel's project as a catalogue.
class ExporterObject final : public SettingsHolder {
  public:
    ExporterObject();

    HRESULT On(zt::Exporter::PutDestinationFolder, BSTR folder);
    // Fails without kernel, open project or destination folder.
    HRESULT On(zt::Exporter::Export);
    HRESULT On(zt::Exporter::PutAxesModelPath, BSTR path);
    HRESULT On(zt::Exporter::PutKernel, zt::KernelAdmin* kernel);
    HRESULT On(zt::Exporter::PutSpecificationFileName, BSTR path);
    HRESULT On(zt::Exporter::PutAxesPosition, LONG position);
    HRESULT On(zt::Exporter::PutOptionA, LONG value);
    HRESULT On(zt::Exporter::PutLanguage, BSTR language);
    HRESULT On(zt::Exporter::PutOptionB, LONG value);

    HRESULT On(ObjectWithSite::SetSite, IUnknown* site);
    HRESULT On(ObjectWithSite::GetSite, REFIID iid, void** site);

  private:
    ~ExporterObject() override = default;

    Microsoft::WRL::ComPtr<IUnknown> m_site;
    Microsoft::WRL::ComPtr<IDispatch> m_kernel;
    std::wstring m_destination;
    std::wstring m_axesModel;
    std::wstring m_specification;
    std::wstring m_language;
    LONG m_axesPosition = 0;
    // Unset until they are set.
    LONG m_optionA = -1;
    LONG m_optionB = -1;
};

} // namespace devinst
