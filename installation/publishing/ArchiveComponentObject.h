#pragma once

#include "components/contracts/Publishing.h"
#include "installation/runtime/EarlyBound.h"
#include "installation/zip/Zip.h"

#include <optional>

namespace devinst {

// Packs files into a zip file, each as it comes. What is not closed is no archive.
class ArchiveComponentObject final : public StandIn {
  public:
    ArchiveComponentObject();

    // mode: 2 only. Replaces a file of that name.
    HRESULT On(zt::ArchiveComponent::Create, BSTR path, LONG mode);
    HRESULT On(zt::ArchiveComponent::Close);
    // name: relative, parts joined by a backslash. flag: -1 only.
    HRESULT On(zt::ArchiveComponent::AddFile, BSTR path, BSTR name, VARIANT_BOOL flag);

  private:
    ~ArchiveComponentObject() override = default;

    std::optional<ZipWriter> m_archive;
};

} // namespace devinst
