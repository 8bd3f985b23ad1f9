// Work that is spread over copies of this process: a loop over parts that don't look at each other.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

/// What came of the work on a part in a process of its own.
struct WorkerEnd {
    enum class Kind {
        Done,
        /// It wrote messages that only this process may write; its result is discarded.
        Talked,
        /// The process has died over it.
        Broken,
    };
    Kind kind = Kind::Done;
    /// The result of the work, or how the process died.
    std::string text;
};

struct SpreadWork {
    std::size_t parts = 0;
    /// Runs in the other process. What it changes in memory is lost; the text comes over.
    std::function<std::string(std::size_t part)> work;
    /// Runs in this process, part by part in their order; false ends the loop.
    std::function<bool(std::size_t part, const WorkerEnd& end)> take;
};

class AcadEntity;

/// Calls `take` for each of so many entities in their order, until one says false.
inline void TakeInTurn(std::size_t entities, const std::function<bool(std::size_t entity)>& take) {
    for (std::size_t entity = 0; entity < entities; ++entity)
        if (!take(entity)) return;
}

class WorkersPort {
  public:
    virtual ~WorkersPort() = default;
    /// Calls `take` for each entity in their order, in this process, until one says false; it writes a
    /// drawing of that entity. Meanwhile the other processes may find out what the host needs for the later
    /// ones.
    virtual void DrawAhead(std::span<AcadEntity* const> entities,
                           const std::function<bool(std::size_t entity)>& take) {
        TakeInTurn(entities.size(), take);
    }
    /// Over how many processes a loop of so many parts is spread; 1 where it isn't worth it, or can't be.
    virtual int ProcessesFor(std::size_t parts) = 0;
    /// Returns when all parts have been taken, or when one has ended the loop: the other processes are gone
    /// then. What `take` throws comes out.
    virtual void Spread(const SpreadWork& work) = 0;

    /// In the other process: from now on the folder's paths mean an empty folder of this part alone, which
    /// has copies of these files of the real one, as far as they are there.
    virtual void WorkApart(std::string_view folder, std::size_t part, std::span<const std::string> files) = 0;
    /// There, when the work is done: the names below the folder of what it has written beside these files.
    virtual std::vector<std::string> MadeApart(std::string_view folder,
                                               std::span<const std::string> files) = 0;
    /// In this process: moves the files `made` into the real folder, and deletes there those of `files` that
    /// the part has deleted. False if that couldn't be done with all of them, for instance because somebody
    /// has taken one away meanwhile.
    virtual bool TakeOver(std::string_view folder, std::size_t part, std::span<const std::string> files,
                          std::span<const std::string> made) = 0;
    /// Forgets what it has written, as far as it hasn't been taken over.
    virtual void Discard(std::string_view folder, std::size_t part) = 0;
};

}  // namespace brenvik
