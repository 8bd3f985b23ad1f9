// What of the records that were kept can stand in the file to be written: its release, and what they belong
// to.
#include <algorithm>
#include <array>
#include <functional>
#include <unordered_map>

#include "drafting_host/dxf/data/kept_text.h"
#include "drafting_host/dxf/writing/write_plan.h"

namespace brenvik {
namespace {

constexpr int Release13 = 1012, Release2000 = 1015, Release2004 = 1018, Release2010 = 1024;

/// Bodies that stand in the file's binary section from release 2013 on.
constexpr auto BodyKinds = std::to_array<std::string_view>(
    {"3DSOLID", "REGION", "BODY", "SURFACE", "EXTRUDEDSURFACE", "LOFTEDSURFACE", "REVOLVEDSURFACE",
     "SWEPTSURFACE", "PLANESURFACE", "NURBSURFACE"});

bool HasBodies(const DrawingData& data) {
    return std::ranges::any_of(data.blocks, [](const BlockData& block) {
        return std::ranges::any_of(block.entities, [](const EntityData& entity) {
            return std::holds_alternative<AcisData>(entity.geometry);
        });
    });
}

/// True colours and transparency, which came with release 2004.
bool HasTrueColors(const DrawingData& data) {
    const auto isColored = [](const EntityData& entity) {
        return entity.kept && !entity.kept->common.empty();
    };
    return std::ranges::any_of(data.layers,
                               [](const LayerData& layer) {
                                   return layer.kept && TrueColorIn(layer.kept->own).has_value();
                               }) ||
           std::ranges::any_of(data.blocks, [&](const BlockData& block) {
               return std::ranges::any_of(block.entities, isColored);
           });
}

/// Finds what goes with its owner: an extension dictionary and all below it.
class Owners {
  public:
    Owners(const KeptFile& file, std::unordered_set<HandleValue> alive) : mAlive(std::move(alive)) {
        for (const KeptRecord& object : file.objects) mObjects.emplace(object.handle, &object);
        for (const HandleValue handle : file.handles) mRead.insert(handle);
        for (const KeptRecord& object : file.objects) Settle(object);
        // The link from a dimension to its objects is meaningless without them.
        for (const KeptRecord& object : file.objects) {
            if (object.name != "DIMASSOC") continue;
            bool isTorn = false;
            ForEachReference(object.groups, [&](HandleValue handle) { isTorn = isTorn || IsGone(handle); });
            if (isTorn) mAlive.erase(object.handle);
        }
    }

    bool IsGone(HandleValue handle) const { return mRead.contains(handle) && !mAlive.contains(handle); }

  private:
    /// A chain of owners, of any length, is as alive as its first.
    void Settle(const KeptRecord& object) {
        std::vector<HandleValue> chain;
        const KeptRecord* at = &object;
        bool isAlive = true;
        for (std::unordered_set<HandleValue> seen; seen.insert(at->handle).second;) {
            if (mAlive.contains(at->handle)) break;
            chain.push_back(at->handle);
            if (at->name == "GROUP") {
                isAlive = false;
                break;
            }
            if (at->owner == 0 || !mRead.contains(at->owner) || mAlive.contains(at->owner)) break;
            const auto owner = mObjects.find(at->owner);
            isAlive = owner != mObjects.end() && !mDead.contains(at->owner);
            if (!isAlive) break;
            at = owner->second;
        }
        if (isAlive)
            mAlive.insert(chain.begin(), chain.end());
        else
            mDead.insert(chain.begin(), chain.end());
    }

    std::unordered_set<HandleValue> mAlive, mDead, mRead;
    std::unordered_map<HandleValue, const KeptRecord*> mObjects;
};

/// The groups up to an embedded object, and its extended data.
std::string WithoutEmbedded(const std::string& groups, std::size_t& count) {
    std::string result;
    bool isEmbedded = false;
    GroupWalk walk(groups);
    while (walk.Next()) {
        if (walk.Code() == 101) {
            isEmbedded = true;
            ++count;
        }
        if (walk.Code() >= 1000 || walk.Code() == 0) isEmbedded = false;
        if (!isEmbedded) result += walk.Text();
    }
    return result;
}

}  // namespace

void WritePlan::ChooseRelease() {
    // True colours of drawings that were no DXF; one that was read keeps its release.
    const bool isOfFile = mData.file && mData.file->release >= Release13;
    if (!isOfFile && HasTrueColors(mData)) mRelease = Release2004;
    if (!mData.file) return;
    const int read = mData.file->release;
    if (read < Release13) return;
    mFile = mData.file.value.get();
    mRelease = std::max(read, Release2000);
    // Bodies are written as text, which later releases don't take.
    if (mRelease > Release2010 && HasBodies(mData)) mRelease = Release2010;
}

bool WritePlan::IsUnkept(const KeptRecord& entity) const {
    return mRelease <= Release2010 && IsLowered() &&
           std::ranges::find(BodyKinds, entity.name) != BodyKinds.end();
}

void WritePlan::PlanKept(BlockPlan& plan) {
    if (mFile == nullptr || !plan.block->kept || plan.block->kept->entities.empty()) return;
    const KeptBlock& kept = *plan.block->kept;
    std::unordered_map<HandleValue, std::size_t> places;
    for (std::size_t i = 0; i < plan.block->entities.size(); ++i)
        places.emplace(plan.block->entities[i].handle, i);
    std::size_t position = 0, next = 0;
    for (const KeptRecord& record : kept.entities) {
        for (; next < std::min(record.place, kept.order.size()); ++next) {
            const auto place = places.find(kept.order[next]);
            if (place != places.end()) position = std::max(position, place->second + 1);
        }
        if (IsUnkept(record))
            ++mUnkeptKinds[record.name];
        else
            plan.kept.emplace_back(position, &record);
    }
}

void WritePlan::FindGone() {
    if (mFile == nullptr) return;
    std::unordered_set<HandleValue> alive = mUsed;
    for (const BlockPlan& plan : mBlocks)
        for (const auto& [position, record] : plan.kept) alive.insert(record->handle);
    for (const KeptTable& table : mFile->tables)
        for (const KeptRecord& entry : table.entries) alive.insert(entry.handle);
    for (const auto& [what, handle] : mData.fileHandles) {
        const std::string_view key = what;
        const std::size_t blank = key.find(' ');
        const bool isOfBlock = key.starts_with("BLOCK ") || key.starts_with("ENDBLK ");
        // The named dictionaries are in each file, kept or made anew under the same handle.
        const bool isInEach = key.starts_with("TABLE ") || key.starts_with("DICTIONARY");
        if (isInEach || (isOfBlock && FindBlock(key.substr(blank + 1)) != nullptr)) alive.insert(handle);
    }
    const Owners owners(*mFile, std::move(alive));
    for (const HandleValue handle : mFile->handles)
        if (owners.IsGone(handle)) mGone.insert(handle);
}

void WritePlan::TellUnkept() {
    if (mData.file) {
        for (const auto& [kind, count] : mData.file->unkept) {
            mUnkept.push_back(std::to_string(count) + " of kind \"" + kind +
                              "\": " + mData.file->unkeptReason);
        }
    }
    for (const auto& [kind, count] : mUnkeptKinds) {
        mUnkept.push_back(std::to_string(count) + " of kind \"" + kind +
                          "\": the drawing holds solids, with which it is written in release 2010, and that "
                          "release has no form for these");
    }
    if (!IsLowered()) return;
    std::size_t embedded = 0;
    for (const BlockPlan& plan : mBlocks) {
        for (const auto& [position, record] : plan.kept) WithoutEmbedded(record->groups, embedded);
        for (const EntityData& entity : plan.block->entities) {
            if (!entity.kept) continue;
            WithoutEmbedded(entity.kept->further, embedded);
            for (const KeptRecord& part : entity.kept->parts) WithoutEmbedded(part.groups, embedded);
        }
    }
    if (embedded > 0) {
        mUnkept.push_back("columns or lines of " + std::to_string(embedded) +
                          (embedded == 1 ? " text" : " texts") +
                          ": the drawing holds solids, with which it is written in release 2010, and that "
                          "release has no form for these");
    }
}

std::string WritePlan::Fit(std::string_view kind, const std::string& groups) const {
    std::size_t count = 0;
    std::string fit = IsLowered() ? WithoutEmbedded(groups, count) : groups;
    if (mGone.empty()) return fit;
    return MendedGroups(kind, fit, [this](HandleValue handle) { return IsGone(handle); });
}

const KeptTable* WritePlan::FindTable(std::string_view name) const {
    if (mFile == nullptr) return nullptr;
    const auto found = std::ranges::find(mFile->tables, name, &KeptTable::name);
    return found == mFile->tables.end() ? nullptr : &*found;
}

}  // namespace brenvik
