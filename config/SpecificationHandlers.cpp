#include "config/SpecificationHandlers.h"

#include "app/ZTInvisible.h"
#include "components/ByName.h"
#include "components/Creation.h"
#include "config/SpecificationFiles.h"

#include <cwchar>

namespace zt {

namespace {

constexpr wchar_t Platform[] = L"x64";

ComPtr<IUnknown> CreateKernelHandler(const CZTInvisible& app, const XmlElement& element) {
    ComPtr<IUnknown> handler;
    const _bstr_t progId = element.Text();
    if (progId.length() == 0 || FAILED(CreateComponent(progId, nullptr, AllServers, &handler)))
        return nullptr;
    const ComPtr<IDispatch> dispatch = Query<IDispatch>(handler.Get());
    if (dispatch == nullptr)
        return handler;
    const _variant_t kernel(static_cast<IDispatch*>(app.m_pKernelAdmin.Get()));
    PutPropertyByName(dispatch.Get(), L"Kernel", &kernel);
    return handler;
}

} // namespace

void RegisterHandlerLibraries(CZTInvisible& app, const XmlElement& configuration) {
    for (const XmlElement& handler : configuration.SelectAll(L"handlers/handler")) {
        const std::optional<_bstr_t> platform = handler.Attribute(L"platform");
        if (platform && std::wcscmp(*platform, Platform) == 0)
            SelfRegisterLibrary(ResolveSpecificationFile(app, handler.Text()));
    }
}

void CreateKernelHandlers(CZTInvisible& app, const XmlElement& configuration) {
    app.m_pSequenceNumberHandler =
        CreateKernelHandler(app, configuration.SelectSingle(L"seqnoHandler"));
    app.m_pNotificationHandler =
        CreateKernelHandler(app, configuration.SelectSingle(L"notifyHandler"));
}

void CreateExportHandler(CZTInvisible& app, const XmlElement& configuration) {
    const XmlElement element = configuration.SelectSingle(L"exportHandler");
    if (!element)
        return;
    if (FAILED(CreateHandlerComponent(element.Text(), nullptr, AllServers,
                                      app.m_pExportHandler.ReleaseAndGetAddressOf())))
        return;
    const ComPtr<ScriptExporter> exporter = Query<ScriptExporter>(app.m_pExportHandler.Get());
    const std::optional<_bstr_t> script = element.Attribute(L"script");
    if (exporter == nullptr || !script || script->length() == 0)
        return;
    if (FAILED(ScriptExporter::LoadScript::Call(exporter.Get(),
                                                ResolveSpecificationFile(app, *script))))
        app.m_pExportHandler.Reset();
}

} // namespace zt
