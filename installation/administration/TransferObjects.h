// What archive and configuration hand each other: a project on its way in or out.
#pragma once

#include "installation/runtime/StandIn.h"

#include <filesystem>
#include <string>

namespace devinst {

// Of the archive's ExtractProject.
class ExtractedProjectObject final : public StandIn {
  public:
    explicit ExtractedProjectObject(std::filesystem::path archive);

    const std::filesystem::path& ArchivePath() const { return m_archive; }

  private:
    std::filesystem::path m_archive;
};

// Of the configuration's ExportProject.
class ExportedProjectObject final : public StandIn {
  public:
    explicit ExportedProjectObject(std::filesystem::path folder);

    // The project's folder in the work folder.
    const std::filesystem::path& Folder() const { return m_folder; }

  private:
    std::filesystem::path m_folder;
};

} // namespace devinst
