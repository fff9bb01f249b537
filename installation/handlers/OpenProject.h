// The open project as a handler reaches it: by name, from the kernel's automation interface.
#pragma once

#include <windows.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <string>

namespace devinst {

class OpenProject {
  public:
    // Reads the kernel's property "CurrentProject". Raises ComFailure when there is no kernel or no
    // project is open.
    explicit OpenProject(IDispatch* kernel);

    // Calls the project's "SetMetadata". Raises the project's own failure as ComFailure.
    void SetMetadata(const std::wstring& name, const std::wstring& value);
    // Empty where the project has none.
    std::wstring Metadata(const std::wstring& name);
    std::wstring Revision();
    std::wstring DocumentPath();
    std::wstring Name();
    // The content as XML.
    std::wstring Content();
    std::wstring Folder();
    // The folder of the project's representations.
    std::wstring Representations();

  private:
    std::wstring Read(const wchar_t* property);

    Microsoft::WRL::ComPtr<IDispatch> m_project;
};

} // namespace devinst
