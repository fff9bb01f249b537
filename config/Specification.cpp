#include "config/Specification.h"

#include "components/Installation.h"
#include "config/Axes.h"
#include "config/SpecificationFiles.h"
#include "config/SpecificationHandlers.h"
#include "config/SpecificationTexts.h"
#include "support/Files.h"
#include "support/Text.h"

#include <string>

namespace zt {

namespace {

// The kernel's own facility in a result code, as far as the loading of command templates goes.
constexpr HRESULT FacilityBits = 0x1FFF0000;
constexpr HRESULT TemplateFacility = 0x00400000;

bool EqualInUserLocale(const wchar_t* left, const wchar_t* right) {
    return CompareStringW(LOCALE_USER_DEFAULT, 0, left, -1, right, -1) == CSTR_EQUAL;
}

// One specification on its way into the kernel and the run.
class SpecificationLoader {
  public:
    SpecificationLoader(const SpecificationRun& run, const std::wstring& name)
        : m_run(run), m_name(name), m_paths(PathsOfSpecification(GetDataFolder(), name)) {}

    bool Load(const wchar_t* requiredVersion) {
        if (!FindFiles() || !ReadDescription() || !CheckVersion(requiredVersion))
            return false;
        TakeLanguage();
        KernelAdmin::PutSpecificationFolder::Call(Kernel(), _bstr_t(m_paths.folder.c_str()));
        if (!TakeClass())
            return false;
        RegisterHandlerLibraries(m_run, m_configuration);
        if (Is(SpecificationClass::Ipc) || Is(SpecificationClass::Illus))
            LoadForIllustrations();
        else
            LoadForDocuments();
        KernelAdmin::LoadMetadata::Call(Kernel(), Resolve(L"Metadata.xml"));
        if (!Is(SpecificationClass::Text))
            TakeAxes();
        return true;
    }

  private:
    KernelAdmin* Kernel() const { return m_run.kernel; }
    bool Is(SpecificationClass value) const { return m_run.specificationClass == value; }
    _bstr_t Resolve(const wchar_t* fileName) const {
        return ResolveSpecificationFile(m_run.kernel, WideText(m_run.language), fileName);
    }

    bool Fail(const std::wstring& message) {
        m_run.log.LogError(message.c_str());
        return false;
    }

    bool FindFiles() {
        if (!Exists(m_paths.descriptionFile.c_str()))
            return Fail(L"Specification cfg-file does not exist: " + m_paths.descriptionFile);
        if (!Exists(m_paths.folder.c_str()))
            return Fail(L"Specification " + m_name +
                        L" is not valid.\nData folder does not exist:\n\n" + m_paths.folder);
        return true;
    }

    bool ReadDescription() {
        if (FAILED(m_description.Create()) ||
            !m_description.Load(m_paths.descriptionFile.c_str()) ||
            FAILED(SelectConfigurationElement(WideText(m_run.language), m_description,
                                              m_configuration)))
            return Fail(L"Invalid specification cfg-file format: " + m_paths.descriptionFile);
        return true;
    }

    bool CheckVersion(const wchar_t* requiredVersion) {
        const _bstr_t version = m_configuration.SelectSingle(L"version").Text();
        if (LeadingInteger(requiredVersion) <= LeadingInteger(version))
            return true;
        return Fail(L"Project requires specification version " + WideText(requiredVersion) +
                    L". Current version is " + WideText(version) +
                    L". Please install the required version of specification.");
    }

    void TakeLanguage() {
        if (m_run.language.length() != 0)
            return;
        if (const std::optional<_bstr_t> language = m_configuration.Attribute(L"lang"))
            m_run.language = *language;
    }

    bool TakeClass() {
        const std::optional<_bstr_t> word = m_configuration.Attribute(L"class");
        const std::optional<SpecificationClass> known =
            word ? SpecificationClassOf(*word, EqualInUserLocale) : std::nullopt;
        if (!known)
            return Fail(L"Project specification class unknown");
        m_run.specificationClass = *known;
        return true;
    }

    void LoadForIllustrations() {
        CreateKernelHandlers(m_run, m_configuration);
        LoadReferenceTables();
        if (!Is(SpecificationClass::Ipc))
            return;
        const HRESULT loaded =
            KernelAdmin::LoadCommandTemplates::Call(Kernel(), Resolve(L"Templates.xml"));
        if ((loaded & FacilityBits) == TemplateFacility)
            m_run.log.LogError(L"Error loading IPC DPL command templates.");
    }

    // The backup holds what was not yet in the tables; it goes once the kernel has both.
    void LoadReferenceTables() {
        if (FAILED(KernelAdmin::LoadRefTables::Call(Kernel(), Resolve(L"RefTables.xml"))))
            return;
        const _bstr_t backup = Resolve(L"RefTables.bak");
        if (Exists(backup) && SUCCEEDED(KernelAdmin::LoadRefTablesBackup::Call(Kernel(), backup)))
            DeleteFileW(backup);
    }

    void LoadForDocuments() {
        if (!Is(SpecificationClass::Text)) {
            if (FAILED(KernelAdmin::LoadDeclarations::Call(Kernel(), Resolve(L"Declarations.xml"))))
                m_run.log.LogError(L"Couldn't load library of declarations.");
            if (FAILED(KernelAdmin::LoadTypes::Call(Kernel(), Resolve(L"Types.xml"))))
                m_run.log.LogError(L"Couldn't load library of types.");
        }
        if (const XmlElement handler = m_configuration.SelectSingle(L"docHandler"))
            m_run.documentHandler = handler.Text();
        CreateExportHandler(m_run, m_configuration);
    }

    void TakeAxes() {
        m_run.axesModelPath = L"";
        m_run.axesPosition = DefaultAxesPosition;
        const XmlElement axis = m_configuration.SelectSingle(L"axis");
        if (!axis)
            return;
        m_run.axesModelPath = FindAxesModel(WideText(axis.Text())).c_str();
        if (const std::optional<_bstr_t> x = axis.Attribute(L"xpos"))
            m_run.axesPosition = WithAxesX(m_run.axesPosition, LeadingInteger(*x));
        if (const std::optional<_bstr_t> y = axis.Attribute(L"ypos"))
            m_run.axesPosition = WithAxesY(m_run.axesPosition, LeadingInteger(*y));
    }

    const SpecificationRun& m_run;
    const std::wstring m_name;
    const SpecificationPaths m_paths;
    XmlDocument m_description;
    XmlElement m_configuration;
};

} // namespace

bool ReadSpecification(const SpecificationRun& run, const wchar_t* name,
                       const wchar_t* requiredVersion) {
    return SpecificationLoader(run, WideText(name)).Load(requiredVersion);
}

} // namespace zt
