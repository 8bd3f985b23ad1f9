// Settled before a line is written: the tables with everything that the entities use, and a handle for
// everything that has one.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik {

/// Checks the drawing and gives handles. Handles that the drawing has are kept; of two that are the same
/// the second is replaced, entities before tables. Throws Failure 5 "Invalid procedure call or argument",
/// naming it, for what no strict reader takes: a layer name with a forbidden character, two table entries
/// of one name, a reference to a block that isn't there, a polyline without vertices.
class WritePlan {
  public:
    /// `data` outlives the plan. What the release can't hold is reported in `unkept`.
    WritePlan(const DrawingData& data, std::vector<std::string>& unkept);

    struct BlockPlan {
        const BlockData* block = nullptr;
        HandleValue record = 0;
        std::string layoutName;
        bool isSpace = false;
        /// One for each entity in order; an old polyline's is followed by its vertices' and its end's, a
        /// block reference's by those of its attributes and their end.
        std::vector<HandleValue> handles;
        /// Records that go through unread, with the number of entities before them, ascending.
        std::vector<std::pair<std::size_t, const KeptRecord*>> kept{};
    };

    const DrawingData& Data() const { return mData; }
    /// The tables, complete and with handles; the blocks of this drawing are empty.
    const DrawingData& Tables() const { return mTables; }
    /// Model space, paper space, then the others.
    const std::vector<BlockPlan>& Blocks() const { return mBlocks; }
    const BlockPlan* FindBlock(std::string_view name) const;
    /// The handle of a part of the file, such as "TABLE LAYER".
    HandleValue FileHandle(const std::string& what);
    HandleValue StyleHandle() const;
    bool IsEntity(HandleValue handle) const { return mEntities.contains(handle); }
    bool IsLayer(HandleValue handle) const;
    /// Above every handle; asked when all have been given.
    HandleValue Seed() const { return mNext; }

    /// The release in which the file is written, as $ACADVER counts: 1015 is release 2000.
    int Release() const { return mRelease; }
    /// The other records of the file that was read; null for a drawing made here, or for one without records
    /// to pass on.
    const KeptFile* File() const { return mFile; }
    bool IsRaised() const { return mFile != nullptr && mFile->release < mRelease; }
    bool IsLowered() const { return mFile != nullptr && mFile->release > mRelease; }
    /// Whether what had this handle in the file that was read isn't in this one.
    bool IsGone(HandleValue handle) const { return mGone.contains(handle); }
    /// The groups of a kept record, fit to be written.
    std::string Fit(std::string_view kind, const std::string& groups) const;
    const KeptTable* FindTable(std::string_view name) const;

  private:
    void ChooseRelease();
    void PlanKept(BlockPlan& plan);
    bool IsUnkept(const KeptRecord& entity) const;
    void FindGone();
    void TellUnkept();
    void PlanBlocks();
    void PlanTables();
    void PlanEntities(BlockPlan& plan);
    void CollectNames();
    void FindFirstFree();
    HandleValue Claim(HandleValue given);

    const DrawingData& mData;
    DrawingData mTables;
    BlockData mEmptyModel, mEmptyPaper;
    std::vector<BlockPlan> mBlocks;
    std::map<std::string, HandleValue> mFileHandles;
    std::unordered_set<HandleValue> mUsed, mEntities;
    HandleValue mNext = 1;
    int mRelease = 1015;
    const KeptFile* mFile = nullptr;
    std::unordered_set<HandleValue> mGone;
    std::map<std::string, std::size_t> mUnkeptKinds;
    std::vector<std::string>& mUnkept;
};

}  // namespace brenvik
