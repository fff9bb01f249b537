#include "installation/publishing/ExporterObject.h"

#include "components/ComponentIds.h"
#include "installation/publishing/Facts.h"
#include "installation/publishing/Publication.h"

namespace devinst {

ExporterObject::ExporterObject() : SettingsHolder(zt::Exporter::Name) {
    AddFace(IID_Exporter, FunctionTable<zt::Exporter, ExporterObject>());
    AddSettingsFace();
    AddFace(IID_IObjectWithSite, FunctionTable<ObjectWithSite, ExporterObject>());
}

HRESULT ExporterObject::On(zt::Exporter::PutDestinationFolder, BSTR folder) {
    m_destination = TextFrom(folder);
    return S_OK;
}

HRESULT ExporterObject::On(zt::Exporter::PutAxesModelPath, BSTR path) {
    m_axesModel = TextFrom(path);
    return S_OK;
}

HRESULT ExporterObject::On(zt::Exporter::PutKernel, zt::KernelAdmin* kernel) {
    m_kernel = kernel;
    return S_OK;
}

HRESULT ExporterObject::On(zt::Exporter::PutSpecificationFileName, BSTR path) {
    m_specification = TextFrom(path);
    return S_OK;
}

HRESULT ExporterObject::On(zt::Exporter::PutAxesPosition, LONG position) {
    m_axesPosition = position;
    return S_OK;
}

HRESULT ExporterObject::On(zt::Exporter::PutOptionA, LONG value) {
    m_optionA = value;
    return S_OK;
}

HRESULT ExporterObject::On(zt::Exporter::PutLanguage, BSTR language) {
    m_language = TextFrom(language);
    return S_OK;
}

HRESULT ExporterObject::On(zt::Exporter::PutOptionB, LONG value) {
    m_optionB = value;
    return S_OK;
}

HRESULT ExporterObject::On(ObjectWithSite::SetSite, IUnknown* site) {
    m_site = site;
    return S_OK;
}

HRESULT ExporterObject::On(ObjectWithSite::GetSite, REFIID iid, void** site) {
    return m_site != nullptr ? m_site->QueryInterface(iid, site) : E_FAIL;
}

HRESULT ExporterObject::On(zt::Exporter::Export) {
    if (m_destination.empty())
        throw ComFailure{E_UNEXPECTED, L"The exporter has no destination folder."};
    Publication publication;
    publication.kind = "catalogue";
    publication.language = m_language;
    publication.resourceTag = ResourceTag;
    publication.settings = m_settings;
    publication.project = ReadProject(m_kernel.Get());
    publication.objects = ReadObjects(m_kernel.Get());
    publication.facts = {
        {"language", m_language},
        {"specification", DescribeSpecification(m_specification)},
        {"axes-model", m_axesModel.empty() ? L"none" : m_axesModel},
        {"axes-position", DescribeAxesPosition(m_axesPosition)},
        {"option-a", std::to_wstring(m_optionA)},
        {"option-b", std::to_wstring(m_optionB)},
        {"site", DescribeSite(m_site.Get())},
    };
    Publish(publication, m_destination);
    return S_OK;
}

} // namespace devinst
