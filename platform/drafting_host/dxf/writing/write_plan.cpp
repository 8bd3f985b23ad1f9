// Checks, tables and handles of a drawing to be written.
#include "drafting_host/dxf/writing/write_plan.h"

#include <algorithm>
#include <set>

#include "base/failure.h"
#include "base/letter_case.h"
#include "drafting_host/dxf/data/standard_entries.h"

namespace brenvik {
namespace {

template <typename Entry>
void RequireDifferentNames(const std::vector<Entry>& entries, const std::string& what) {
    std::set<std::string, LessIgnoreCase> names;
    for (const Entry& entry : entries) {
        if (!names.insert(entry.name).second)
            throw InvalidCall(what + " \"" + entry.name + "\" stands there twice");
    }
}

template <typename Visit>
void ForEachGivenHandle(const DrawingData& data, Visit visit) {
    for (const BlockData& block : data.blocks) {
        visit(block.handle);
        for (const EntityData& entity : block.entities) {
            visit(entity.handle);
            if (const auto* const polyline = std::get_if<PolylineData>(&entity.geometry)) {
                for (const auto& vertex : polyline->vertices) visit(vertex.handle);
                visit(polyline->seqendHandle);
            }
        }
    }
    for (const auto& entry : data.layers) visit(entry.handle);
    for (const auto& entry : data.linetypes) visit(entry.handle);
    for (const auto& entry : data.styles) visit(entry.handle);
    for (const auto& entry : data.namedUcs) visit(entry.handle);
    for (const auto& entry : data.groups) visit(entry.handle);
    for (const auto& entry : data.fileHandles) visit(entry.second);
}

}  // namespace

WritePlan::WritePlan(const DrawingData& data, std::vector<std::string>& unkept)
    : mData(data), mUnkept(unkept) {
    ChooseRelease();
    mTables.layers = data.layers;
    mTables.linetypes = data.linetypes;
    mTables.styles = data.styles;
    mTables.namedUcs = data.namedUcs;
    mTables.applications = data.applications;
    mTables.groups = data.groups;
    mTables.headerVariables = data.headerVariables;
    mEmptyModel.name = ModelSpaceName;
    mEmptyPaper.name = PaperSpaceName;
    AddStandardEntries(mTables);
    FindFirstFree();
    PlanBlocks();
    CollectNames();
    PlanTables();
    FindGone();
    TellUnkept();
}

void WritePlan::FindFirstFree() {
    HandleValue highest = 0;
    ForEachGivenHandle(mData, [&](HandleValue handle) {
        if (handle <= HighestHandle) highest = std::max(highest, handle);
    });
    if (mData.file && !mData.file->handles.empty()) highest = std::max(highest, mData.file->handles.back());
    mNext = highest + 1;
    if (mData.handleSeed <= HighestHandle) mNext = std::max(mNext, mData.handleSeed);
}

HandleValue WritePlan::Claim(HandleValue given) {
    if (given != 0 && given <= HighestHandle && mUsed.insert(given).second) return given;
    return mNext++;
}

void WritePlan::PlanBlocks() {
    RequireDifferentNames(mData.blocks, "block");
    const auto find = [this](std::string_view name) -> const BlockData* {
        for (const BlockData& block : mData.blocks)
            if (EqualsIgnoreCase(block.name, name)) return &block;
        return nullptr;
    };
    const BlockData* const model = find(ModelSpaceName);
    const BlockData* const paper = find(PaperSpaceName);
    mBlocks.push_back({model == nullptr ? &mEmptyModel : model, 0, {}, true, {}});
    mBlocks.push_back({paper == nullptr ? &mEmptyPaper : paper, 0, {}, true, {}});
    for (const BlockData& block : mData.blocks)
        if (&block != model && &block != paper) mBlocks.push_back({&block, 0, {}, IsSpace(block.name), {}});
    for (BlockPlan& plan : mBlocks) PlanEntities(plan);
    int layoutNumber = 0;
    for (BlockPlan& plan : mBlocks) {
        plan.record = Claim(plan.block->handle);
        if (!plan.isSpace) continue;
        plan.layoutName = plan.block->layoutName;
        if (plan.layoutName.empty())
            plan.layoutName = layoutNumber == 0 ? "Model" : "Layout" + std::to_string(layoutNumber);
        ++layoutNumber;
    }
}

void WritePlan::PlanEntities(BlockPlan& plan) {
    plan.handles.reserve(plan.block->entities.size());
    for (const EntityData& entity : plan.block->entities) {
        plan.handles.push_back(Claim(entity.handle));
        mEntities.insert(plan.handles.back());
        if (const auto* const polyline = std::get_if<PolylineData>(&entity.geometry)) {
            for (const auto& vertex : polyline->vertices) plan.handles.push_back(Claim(vertex.handle));
            plan.handles.push_back(Claim(polyline->seqendHandle));
        }
        if (!entity.kept) continue;
        for (const KeptRecord& part : entity.kept->parts) plan.handles.push_back(Claim(part.handle));
    }
    PlanKept(plan);
}

void WritePlan::CollectNames() {
    NameTable layers(mTables.layers);
    NameTable linetypes(mTables.linetypes);
    NameTable styles(mTables.styles);
    std::set<std::string, LessIgnoreCase> applications(mTables.applications.begin(),
                                                       mTables.applications.end());
    std::set<std::string, LessIgnoreCase> blocks;
    for (const BlockPlan& plan : mBlocks) blocks.insert(plan.block->name);
    for (const BlockPlan& plan : mBlocks) {
        for (const EntityData& entity : plan.block->entities) {
            layers.Named(entity.layer);
            linetypes.Named(entity.linetype);
            if (const std::string* const style = StyleOf(entity.geometry)) styles.Named(*style);
            for (const XDataOfApp& app : entity.xdata)
                if (applications.insert(app.app).second) mTables.applications.push_back(app.app);
            const auto* const insert = std::get_if<InsertData>(&entity.geometry);
            if (insert != nullptr && !blocks.contains(insert->block))
                throw InvalidCall("block \"" + insert->block + "\" is referred to and not there");
        }
    }
    for (const LayerData& layer : mTables.layers) linetypes.Named(layer.linetype);
    layers.Named(mData.currentLayer.empty() ? "0" : mData.currentLayer);
}

void WritePlan::PlanTables() {
    RequireDifferentNames(mTables.layers, "layer");
    RequireDifferentNames(mTables.linetypes, "linetype");
    RequireDifferentNames(mTables.styles, "text style");
    RequireDifferentNames(mTables.namedUcs, "coordinate system");
    RequireDifferentNames(mTables.groups, "group");
    for (LayerData& layer : mTables.layers) {
        if (!IsAllowedLayerName(layer.name))
            throw InvalidCall("layer name \"" + layer.name +
                              "\": expected 1 to 255 characters without any of " +
                              std::string(ForbiddenInNames));
        layer.handle = Claim(layer.handle);
    }
    for (LinetypeData& linetype : mTables.linetypes) linetype.handle = Claim(linetype.handle);
    for (TextStyleData& style : mTables.styles) style.handle = Claim(style.handle);
    for (UcsData& ucs : mTables.namedUcs) ucs.handle = Claim(ucs.handle);
    for (GroupData& group : mTables.groups) group.handle = Claim(group.handle);
}

const WritePlan::BlockPlan* WritePlan::FindBlock(std::string_view name) const {
    for (const BlockPlan& plan : mBlocks)
        if (EqualsIgnoreCase(plan.block->name, name)) return &plan;
    return nullptr;
}

HandleValue WritePlan::FileHandle(const std::string& what) {
    const auto known = mFileHandles.find(what);
    if (known != mFileHandles.end()) return known->second;
    const auto given = mData.fileHandles.find(what);
    return mFileHandles.emplace(what, Claim(given == mData.fileHandles.end() ? 0 : given->second))
        .first->second;
}

HandleValue WritePlan::StyleHandle() const {
    for (const TextStyleData& style : mTables.styles)
        if (EqualsIgnoreCase(style.name, "Standard")) return style.handle;
    return 0;
}

bool WritePlan::IsLayer(HandleValue handle) const {
    return std::any_of(mTables.layers.begin(), mTables.layers.end(),
                       [handle](const LayerData& layer) { return layer.handle == handle; });
}

}  // namespace brenvik
