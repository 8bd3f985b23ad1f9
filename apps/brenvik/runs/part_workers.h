// The parts of a run, spread over copies of this program: how many, and where each part's files are made.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "drafting_host/document/written_drawings.h"
#include "file_roots/file_roots.h"
#include "file_roots/late_folders.h"
#include "session/ports/workers_port.h"

namespace brenvik::app {

class PartWorkers : public WorkersPort {
  public:
    /// `jobs` processes, or as many as there are processors where it is 0. `roots` are those that the system
    /// finds its files by, `drawings` those that its host has written.
    PartWorkers(FileRoots& roots, WrittenDrawings& drawings, int jobs)
        : mFiles(roots), mDrawings(drawings), mJobs(jobs) {}

    void DrawAhead(std::span<AcadEntity* const> entities,
                   const std::function<bool(std::size_t entity)>& take) override;
    int ProcessesFor(std::size_t parts) override;
    void Spread(const SpreadWork& work) override;
    void WorkApart(std::string_view folder, std::size_t part, std::span<const std::string> files) override;
    std::vector<std::string> MadeApart(std::string_view folder, std::span<const std::string> files) override;
    bool TakeOver(std::string_view folder, std::size_t part, std::span<const std::string> files,
                  std::span<const std::string> made) override;
    void Discard(std::string_view folder, std::size_t part) override;

  private:
    void MakePlace(std::string_view folder, const std::string& place);
    void FreePlace(std::string_view folder, std::size_t part);

    FileRoots& mFiles;
    WrittenDrawings& mDrawings;
    const int mJobs;
    /// In a worker: the files without the place of a part.
    std::optional<FileRoots> mReal;
    /// In a worker: the folders that it has filled. Their names needn't reach the disk.
    std::vector<std::unique_ptr<LateFolder>> mLate;
    /// Folders that wait, or have waited, for another part.
    std::set<std::filesystem::path> mFreed;
};

}  // namespace brenvik::app
