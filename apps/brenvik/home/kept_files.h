// The files that no output may take the place of: what a command reads, what its home lives by, and drawings
// of other programs.
#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "session/output_rule.h"

namespace brenvik::app {

class KeptFiles {
  public:
    /// Keeps a file, which need not be there; `mayBe` is the kind of output that may replace it all the same.
    void Keep(const std::filesystem::path& file, std::string what, std::optional<OutputKind> mayBe = {});
    /// Keeps everything in a folder and below it.
    void KeepFolder(const std::filesystem::path& folder, std::string what);
    /// The settings, libraries, profiles and databases of a home, which need not be there.
    void KeepHome(const std::filesystem::path& home);

    /// From now on this call may write the drawing again that it has written there.
    void NoteWritten(const std::filesystem::path& drawing);

    /// What stands at a place, or blank for a place that an output of this kind may take. A file is known by
    /// links and other spellings too, and a missing one by its name in any case, since names are looked up
    /// so. A saved drawing may take the place of one that is kept for it, and of one that this program saved
    /// before; no other output takes that of a drawing.
    std::string At(const std::filesystem::path& place, OutputKind kind) const;

    /// Ends the command with a status of wrong words where the place is kept. `shown` is what the user wrote.
    void RequireFree(const std::filesystem::path& place, OutputKind kind, const std::string& shown) const;

  private:
    struct Kept {
        std::filesystem::path place;
        std::string what;
        std::optional<OutputKind> mayBe;
    };
    std::string StrangerAt(const std::filesystem::path& place, OutputKind kind) const;

    std::vector<Kept> mFiles, mFolders;
    std::set<std::filesystem::path> mWritten;
};

}  // namespace brenvik::app
