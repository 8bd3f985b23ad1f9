// Taking turns in a folder whose files several programs write over.
#pragma once

#include <filesystem>
#include <memory>

#include "file_roots/claim.h"

namespace brenvik {

/// Keeps other programs' turns out of a folder as long as it lives; making one waits for theirs. A turn takes
/// moments: who holds the folder for longer is no longer waited for, and a folder that knows no locks has no
/// turns, so whoever writes compares contents all the same.
class FolderTurn {
  public:
    explicit FolderTurn(const std::filesystem::path& folder);

  private:
    struct Held {
        explicit Held(const std::filesystem::path& folder) : claim(Claim::ByFileIn(folder)) {}
        const Claim claim;
    };
    std::unique_ptr<const Held> mHeld;
};

}  // namespace brenvik
