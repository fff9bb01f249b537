#include "project/EditorControl.h"

#include "components/Creation.h"
#include "components/ByName.h"
#include "components/Values.h"

namespace zt {

namespace {

constexpr wchar_t ControlProgId[] = L"KV.XMedCtrl.1";
constexpr wchar_t SaveProperty[] = L"cmdSave";

void RunCommand(IDispatch* host, const wchar_t* command) {
    const _bstr_t text = MakeText(command);
    VARIANT argument = {};
    argument.vt = VT_BSTR;
    argument.bstrVal = Borrow(text);
    InvokeByName(host, L"Run", argument, nullptr);
}

} // namespace

EditorControl::EditorControl()
    : m_control(ControlProgId), m_automation(Query<IDispatch>(m_control.Get())) {}

void EditorControl::SetKernel(IDispatch* kernel) {
    const _variant_t value(kernel);
    if (FAILED(PutPropertyByName(m_automation.Get(), L"Kernel", &value)))
        throw L"ERROR initializing KVXMed";
}

bool EditorControl::HasDocument() {
    return ReadFlag(L"cmdHasDocument", m_hasDocument, true);
}

bool EditorControl::HasUnsavedChanges() {
    return ReadFlag(SaveProperty, m_hasUnsavedChanges, false);
}

// A value that is no boolean is false; where there is none to be read, otherwise stands for it.
bool EditorControl::ReadFlag(const wchar_t* name, _variant_t& value, bool otherwise) {
    DISPID id = DISPID_UNKNOWN;
    if (FAILED(FindName(m_automation.Get(), name, &id)) ||
        FAILED(ReadProperty(m_automation.Get(), id, &value)))
        return otherwise;
    return value.vt == VT_BOOL && value.boolVal != VARIANT_FALSE;
}

void EditorControl::RunUpdateCommands(bool removeChangeMarks) {
    GetPropertyByName(m_automation.Get(), L"XMED", &m_editor);
    if (m_editor != nullptr)
        GetPropertyByName(m_editor.Get(), L"Document", &m_document);
    if (m_document != nullptr)
        GetPropertyByName(m_document.Get(), L"Host", &m_host);
    if (m_host == nullptr)
        return;
    if (removeChangeMarks)
        RunCommand(m_host.Get(), L"cmd_removeChangeMarks");
    RunCommand(m_host.Get(), L"OnSaveToCMS");
}

void EditorControl::Save() {
    const _variant_t value(true);
    if (FAILED(PutPropertyByName(m_automation.Get(), SaveProperty, &value)))
        throw L"Error updating document";
}

void EditorControl::Close() {
    m_host.Reset();
    m_document.Reset();
    m_editor.Reset();
    ClearVariant(m_hasDocument);
    ClearVariant(m_hasUnsavedChanges);
    m_automation.Reset();
    m_control.Destroy();
}

} // namespace zt
