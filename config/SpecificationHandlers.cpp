#include "config/SpecificationHandlers.h"

#include "components/ByName.h"
#include "components/Creation.h"
#include "config/SpecificationFiles.h"
#include "support/Text.h"

#include <cwchar>

namespace zt {

namespace {

constexpr wchar_t Platform[] = L"x64";

_bstr_t Resolve(const SpecificationRun& run, const wchar_t* fileName) {
    return ResolveSpecificationFile(run.kernel, WideText(run.language), fileName);
}

ComPtr<IUnknown> CreateKernelHandler(KernelAdmin* kernelAdmin, const XmlElement& element) {
    ComPtr<IUnknown> handler;
    const _bstr_t progId = element.Text();
    if (progId.length() == 0 || FAILED(CreateComponent(progId, nullptr, AllServers, &handler)))
        return nullptr;
    const ComPtr<IDispatch> dispatch = Query<IDispatch>(handler.Get());
    if (dispatch == nullptr)
        return handler;
    const _variant_t kernel(static_cast<IDispatch*>(kernelAdmin));
    PutPropertyByName(dispatch.Get(), L"Kernel", &kernel);
    return handler;
}

} // namespace

void RegisterHandlerLibraries(const SpecificationRun& run, const XmlElement& configuration) {
    for (const XmlElement& handler : configuration.SelectAll(L"handlers/handler")) {
        const std::optional<_bstr_t> platform = handler.Attribute(L"platform");
        if (platform && std::wcscmp(*platform, Platform) == 0)
            SelfRegisterLibrary(Resolve(run, handler.Text()));
    }
}

void CreateKernelHandlers(const SpecificationRun& run, const XmlElement& configuration) {
    run.sequenceNumberHandler =
        CreateKernelHandler(run.kernel, configuration.SelectSingle(L"seqnoHandler"));
    run.notificationHandler =
        CreateKernelHandler(run.kernel, configuration.SelectSingle(L"notifyHandler"));
}

void CreateExportHandler(const SpecificationRun& run, const XmlElement& configuration) {
    const XmlElement element = configuration.SelectSingle(L"exportHandler");
    if (!element)
        return;
    if (FAILED(CreateHandlerComponent(element.Text(), nullptr, AllServers,
                                      run.exportHandler.ReleaseAndGetAddressOf())))
        return;
    const ComPtr<ScriptExporter> exporter = Query<ScriptExporter>(run.exportHandler.Get());
    const std::optional<_bstr_t> script = element.Attribute(L"script");
    if (exporter == nullptr || !script || script->length() == 0)
        return;
    if (FAILED(ScriptExporter::LoadScript::Call(exporter.Get(), Resolve(run, *script))))
        run.exportHandler.Reset();
}

} // namespace zt
