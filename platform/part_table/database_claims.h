// The database files that one program has for itself: two programs in one file would read each other's rows.
#pragma once

#include <filesystem>
#include <map>
#include <memory>

#include "part_table/file_identity.h"
#include "session/ports/file_claimer.h"

namespace brenvik::part_table {

/// A file is claimed at its first use and kept. One that was refused once stays refused: what another program
/// has left in it is not this one's list. Nor is a file that comes to the place of one with open connections.
class DatabaseClaims {
  public:
    explicit DatabaseClaims(FileClaimer claimer);

    /// Fails when another program has the file, or has put it in the place of one that is open. One that is
    /// missing is left to whoever opens it. The claim is to be kept as long as the file is open.
    std::shared_ptr<const void> Require(const std::filesystem::path& file);

  private:
    struct Entry {
        FileIdentity identity;
        std::shared_ptr<const void> claim;
    };

    FileClaimer mClaimer;
    std::map<std::filesystem::path, Entry> mEntries;
};

}  // namespace brenvik::part_table
