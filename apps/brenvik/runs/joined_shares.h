// Shares of a run in the place of its workers: what came of a part is there already.
#pragma once

#include <string>
#include <vector>

#include "file_roots/file_roots.h"
#include "runs/share_text.h"
#include "session/ports/workers_port.h"

namespace brenvik::app {

struct ShareInFolder {
    std::string folder;  ///< As the user names it.
    Share share;
};

/// Throws CommandError for a share whose files aren't as it has written them.
void RequireFilesOf(const ShareInFolder& share);

/// What is in the shares' folders that none of the shares names: files that look as if they were made by a
/// run or out of its files, and folders, which end in a slash. Somebody has put them there, perhaps to be
/// made with the others.
std::vector<std::string> FilesOfNoShare(const std::vector<ShareInFolder>& shares);

class JoinedShares : public WorkersPort {
  public:
    JoinedShares(FileRoots& roots, const std::vector<ShareInFolder>& shares);

    int ProcessesFor(std::size_t parts) override { return parts == 0 ? 1 : 2; }
    void Spread(const SpreadWork& work) override;
    void WorkApart(std::string_view, std::size_t, std::span<const std::string>) override {}
    std::vector<std::string> MadeApart(std::string_view, std::span<const std::string>) override { return {}; }
    /// False where the drawing of the part isn't the one that its share has worked on, or a file has changed
    /// meanwhile: the run works on the part then.
    bool TakeOver(std::string_view folder, std::size_t part, std::span<const std::string> files,
                  std::span<const std::string> made) override;
    void Discard(std::string_view, std::size_t) override {}

  private:
    struct Known {
        const ShareInFolder* share = nullptr;
        const SharedPart* part = nullptr;
    };
    FileRoots& mFiles;
    std::vector<Known> mParts;
};

}  // namespace brenvik::app
