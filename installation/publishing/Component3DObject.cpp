#include "installation/publishing/Component3DObject.h"

#include "components/ComponentIds.h"
#include "installation/publishing/Facts.h"

#include <comdef.h>

namespace devinst {

using Microsoft::WRL::ComPtr;

namespace {

constexpr LONG BeginObjects = 1;
constexpr LONG AddOneObject = 1000;

// "yes", "no", or what else the viewer says of its validation of nodes.
std::wstring DescribeViewer(IDispatch* viewer) {
    wchar_t name[] = L"ValidateNodes";
    wchar_t* names[] = {name};
    DISPID id = DISPID_UNKNOWN;
    DISPPARAMS none = {};
    _variant_t value;
    if (FAILED(viewer->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id)) ||
        FAILED(viewer->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                              &value, nullptr, nullptr)) ||
        value.vt != VT_I2)
        return L"unknown";
    return value.iVal != 0 ? L"yes" : L"no";
}

bool IsZero(const VARIANT& value) {
    return value.vt == VT_I4 && value.lVal == 0;
}

// The elements of an array of two objects; raises ComFailure for anything else.
std::vector<_variant_t> TwoObjects(const VARIANT* argument) {
    constexpr VARTYPE ArrayOfVariants = VT_ARRAY | VT_VARIANT;
    std::vector<_variant_t> elements(2);
    bool isPair = argument != nullptr && argument->vt == ArrayOfVariants &&
                  argument->parray != nullptr && SafeArrayGetDim(argument->parray) == 1 &&
                  argument->parray->rgsabound[0].cElements == elements.size();
    for (LONG i = 0; isPair && i < 2; ++i) {
        LONG at = argument->parray->rgsabound[0].lLbound + i;
        VARIANT& element = elements[static_cast<std::size_t>(i)];
        isPair = SUCCEEDED(SafeArrayGetElement(argument->parray, &at, &element)) &&
                 element.vt == VT_UNKNOWN;
    }
    if (!isPair)
        throw ComFailure{E_INVALIDARG, L"The command takes an item and an object."};
    return elements;
}

} // namespace

Component3DObject::Component3DObject() : SettingsHolder(zt::Component3D::Name) {
    AddFace(IID_3DComponent, FunctionTable<zt::Component3D, Component3DObject>());
    AddFace(IID_3DCommandTarget, FunctionTable<zt::CommandTarget3D, Component3DObject>());
    AddSettingsFace();
}

HRESULT Component3DObject::On(zt::Component3D::PutViewer, IDispatch* viewer) {
    m_viewer = viewer;
    return S_OK;
}

HRESULT Component3DObject::On(zt::Component3D::PutKernel, zt::KernelAdmin* kernel) {
    m_kernel = kernel;
    return S_OK;
}

HRESULT Component3DObject::On(zt::Component3D::PutLearningMode, VARIANT_BOOL learning) {
    m_learning = learning != VARIANT_FALSE;
    return S_OK;
}

HRESULT Component3DObject::On(zt::Component3D::PutResourceTag, BSTR tag) {
    m_resourceTag = TextFrom(tag);
    return S_OK;
}

HRESULT Component3DObject::On(zt::Component3D::PutAxesFolder, BSTR folder) {
    m_axesFolder = TextFrom(folder);
    return S_OK;
}

HRESULT Component3DObject::On(zt::Component3D::PutSpecificationFileName, BSTR path) {
    m_specification = TextFrom(path);
    return S_OK;
}

HRESULT Component3DObject::On(zt::Component3D::PutOptionC, LONG value) {
    m_optionC = value;
    return S_OK;
}

HRESULT Component3DObject::On(zt::Component3D::PutLanguage, BSTR language) {
    m_language = TextFrom(language);
    return S_OK;
}

Publication Component3DObject::Begin(const char* kind, IDispatch* kernel) const {
    Publication publication;
    publication.kind = kind;
    publication.language = m_language;
    publication.settings = m_settings;
    publication.project = ReadProject(kernel);
    publication.facts = {
        {"language", m_language},
        {"specification", DescribeSpecification(m_specification)},
        {"option-c", std::to_wstring(m_optionC)},
    };
    return publication;
}

HRESULT Component3DObject::On(zt::Component3D::PublishView, BSTR destination, BSTR first,
                              BSTR second, LONG one, LONG zero, const VARIANT& last) {
    if (one != 1 || zero != 0 || !IsZero(last) || SysStringLen(destination) == 0)
        return E_INVALIDARG;
    if (m_viewer == nullptr)
        throw ComFailure{E_UNEXPECTED, L"The 3D component has no viewer."};
    Publication publication = Begin("view", m_kernel.Get());
    publication.contents = TextFrom(second);
    publication.resourceTag = m_resourceTag;
    publication.learning = m_learning;
    publication.objects = m_objects;
    publication.facts.insert(publication.facts.end(),
                             {{"axes-model", DescribeAxesModel(m_axesFolder)},
                              {"resource-tag", m_resourceTag},
                              {"learning-mode", m_learning ? L"yes" : L"no"},
                              {"validates-nodes", DescribeViewer(m_viewer.Get())},
                              {"first-name", TextFrom(first)},
                              {"second-name", TextFrom(second)}});
    Publish(publication, TextFrom(destination));
    return S_OK;
}

HRESULT Component3DObject::On(zt::Component3D::PublishText, zt::KernelAdmin* kernel,
                              BSTR destination, BSTR name, const VARIANT& last) {
    if (!IsZero(last) || SysStringLen(destination) == 0)
        return E_INVALIDARG;
    Publication publication = Begin("text", kernel);
    publication.resourceTag = ResourceTag;
    publication.contents = TextFrom(name);
    publication.facts.push_back({"name", TextFrom(name)});
    Publish(publication, TextFrom(destination));
    return S_OK;
}

HRESULT Component3DObject::On(zt::CommandTarget3D::Execute, LONG flags, const VARIANT* command,
                              const VARIANT* argument) {
    if (flags != 0 || command == nullptr || command->vt != VT_I4)
        return E_INVALIDARG;
    switch (command->lVal) {
    case BeginObjects:
        m_objects.clear();
        return argument == nullptr ? S_OK : E_INVALIDARG;
    case AddOneObject:
        return AddObject(argument);
    default:
        return E_NOTIMPL;
    }
}

HRESULT Component3DObject::AddObject(const VARIANT* argument) {
    const std::vector<_variant_t> pair = TwoObjects(argument);
    if (pair[0].punkVal == nullptr)
        return E_INVALIDARG;
    m_objects.push_back(DescribeObject(pair[1].punkVal));
    return S_OK;
}

} // namespace devinst
