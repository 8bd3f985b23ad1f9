// Where a program keeps what nobody else may see: its working database and the lists that it hands over.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "file_roots/claim.h"

namespace brenvik {

/// The working place of one program in a folder that several may share.
///
/// The first program that asks has the folder itself. One that comes while another has it gets a folder of
/// its own below, `work-...`, which goes with it. Those of programs that died are cleared by the next one.
class WorkFolder {
  public:
    /// No folder is made or claimed yet: programs that never ask leave it alone.
    /// `warn` is called once if the file system knows no locks: then the shared folder is used, but another
    /// program in it isn't noticed.
    explicit WorkFolder(std::filesystem::path shared, std::function<void(const std::string&)> warn = {});
    ~WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    /// The folder of this program's own, or null when the shared one is its own. The answer stays the
    /// same. Throws Failure where no folder can be made, and when the one that was claimed has been removed:
    /// what stands there now may be another program's.
    const std::optional<std::filesystem::path>& Own();

  private:
    void Settle();
    void MakeOwn();
    const std::filesystem::path& Place() const { return mOwn ? *mOwn : mShared; }

    std::filesystem::path mShared;
    std::function<void(const std::string&)> mWarn;
    std::optional<std::filesystem::path> mOwn;
    std::unique_ptr<Claim> mClaim;
};

}  // namespace brenvik
