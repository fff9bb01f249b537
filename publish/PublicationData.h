// What every route reads from the run and the kernel.
#pragma once

#include "components/contracts/Publishing.h"
#include "publish/PublicationRules.h"

#include <comdef.h>
#include <wrl/client.h>

#include <string>

namespace zt {

class CZTInvisible;

// The 3D component. Raises the message text for one that cannot be created.
Microsoft::WRL::ComPtr<Component3D> CreateComponent3D();

// Name of the description file of the specification that the kernel has loaded.
_bstr_t AskSpecificationFileName(KernelAdmin* kernel);

// The names that the export handler gives the publication, each empty where there is none.
std::wstring AskFirstName(CZTInvisible& app);
std::wstring AskSecondName(CZTInvisible& app);

} // namespace zt
