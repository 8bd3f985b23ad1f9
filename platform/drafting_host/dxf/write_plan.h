// What is settled before a line is written: the tables with everything that the entities use, and a handle
// for everything that has one.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "drafting_host/dxf/drawing_data.h"

namespace brenvik {

/// Checks the drawing and gives handles. Handles that the drawing has are kept; of two that are the same
/// the second is replaced, entities before tables. Throws Failure 5 "Invalid procedure call or argument",
/// naming it, for what no strict reader takes: a layer name with a forbidden character, two table entries
/// of one name, a reference to a block that isn't there, a polyline without vertices.
class WritePlan {
  public:
    /// `data` outlives the plan.
    explicit WritePlan(const DrawingData& data);

    struct BlockPlan {
        const BlockData* block = nullptr;
        HandleValue record = 0;
        std::string layoutName;
        bool isSpace = false;
        /// One for each entity in order; an old polyline's is followed by its vertices' and its end's.
        std::vector<HandleValue> handles;
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

  private:
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
};

}  // namespace brenvik
