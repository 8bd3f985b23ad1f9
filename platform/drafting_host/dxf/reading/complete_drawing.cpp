// The last step of reading: a drawing that is complete in itself, whatever the file left out.
#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "base/handle_text.h"
#include "drafting_host/dxf/data/standard_entries.h"
#include "drafting_host/dxf/reading/reading.h"

namespace brenvik {
namespace {

template <typename Visit>
void ForEachEntity(DrawingData& data, Visit visit) {
    for (BlockData& block : data.blocks)
        for (EntityData& entity : block.entities) visit(entity);
}

/// The records that have a handle of their own and go through as they are.
template <typename Visit>
void ForEachKept(Reading& reading, Visit visit) {
    for (auto& [name, block] : reading.keptBlocks)
        for (KeptRecord& record : block.entities) visit(record);
    for (KeptTable& table : reading.file.tables)
        for (KeptRecord& record : table.entries) visit(record);
    for (KeptRecord& record : reading.file.objects) visit(record);
}

/// The attributes of block references.
template <typename Visit>
void ForEachPart(DrawingData& data, Visit visit) {
    ForEachEntity(data, [&](const EntityData& entity) {
        if (!entity.kept) return;
        for (const KeptRecord& part : entity.kept->parts) visit(part);
    });
}

// A blank name can stand in no table; it means what the file would have meant without the group.
void FillBlank(std::string& name, const char* standard) {
    if (name.empty()) name = standard;
}

// The names in entities become those of the tables, letter by letter; what no table holds is added.
void JoinNames(DrawingData& data) {
    NameTable layers(data.layers);
    NameTable linetypes(data.linetypes);
    NameTable styles(data.styles);
    std::set<std::string, LessIgnoreCase> applications(data.applications.begin(), data.applications.end());
    ForEachEntity(data, [&](EntityData& entity) {
        FillBlank(entity.layer, "0");
        entity.layer = layers.Named(entity.layer).name;
        FillBlank(entity.linetype, "ByLayer");
        entity.linetype = linetypes.Named(entity.linetype).name;
        if (std::string* const style = StyleOf(entity.geometry)) {
            FillBlank(*style, "Standard");
            *style = styles.Named(*style).name;
        }
        for (const XDataOfApp& app : entity.xdata)
            if (applications.insert(app.app).second) data.applications.push_back(app.app);
    });
    for (LayerData& layer : data.layers) {
        FillBlank(layer.linetype, "Continuous");
        layer.linetype = linetypes.Named(layer.linetype).name;
    }
    data.currentLayer = layers.Has(data.currentLayer) ? layers.Named(data.currentLayer).name : "0";
}

// Which blocks a reference may name: those without a reference, direct or through others, back to the block
// that holds it. A walk through such a ring would not end.
class BlockRings {
  public:
    explicit BlockRings(Reading& reading)
        : mReading(reading), mStates(reading.data.blocks.size(), State::New) {}

    void DropReferences() {
        for (std::size_t block = 0; block < mStates.size(); ++block) Visit(block);
        for (std::size_t block = 0; block < mStates.size(); ++block) DropFrom(block);
    }

  private:
    enum class State { New, Open, Done };
    struct Step {
        std::size_t block = 0, next = 0;
    };

    std::optional<std::size_t> Target(const EntityData& entity) const {
        const auto* const insert = std::get_if<InsertData>(&entity.geometry);
        if (insert == nullptr) return std::nullopt;
        const auto place = mReading.blockPlaces.find(insert->block);
        return place == mReading.blockPlaces.end() ? std::nullopt : std::optional(place->second);
    }

    // Depth first with a stack of its own: files nest as deep as they like.
    void Visit(std::size_t first) {
        if (mStates[first] != State::New) return;
        std::vector<Step> stack{{first, 0}};
        mStates[first] = State::Open;
        while (!stack.empty()) {
            Step& step = stack.back();
            const auto& entities = mReading.data.blocks[step.block].entities;
            if (step.next == entities.size()) {
                mStates[step.block] = State::Done;
                stack.pop_back();
                continue;
            }
            const EntityData& entity = entities[step.next++];
            const auto target = Target(entity);
            if (!target) continue;
            if (mStates[*target] == State::Open) {
                mRings.insert(&entity);
            } else if (mStates[*target] == State::New) {
                mStates[*target] = State::Open;
                stack.push_back({*target, 0});
            }
        }
    }

    void DropFrom(std::size_t place) {
        BlockData& block = mReading.data.blocks[place];
        std::vector<char> isBad(block.entities.size(), 0);
        for (std::size_t i = 0; i < block.entities.size(); ++i) {
            const EntityData& entity = block.entities[i];
            const auto* const insert = std::get_if<InsertData>(&entity.geometry);
            if (insert == nullptr) continue;
            const bool isRing = mRings.contains(&entity);
            if (!isRing && Target(entity) && !IsSpace(insert->block)) continue;
            isBad[i] = 1;
            mReading.Note(0, "INSERT left out of block " + ShownName(block.name) + ": it names " +
                                 ShownName(insert->block) + ", " +
                                 (isRing ? "which holds itself" : "a block of the drawing was expected"));
        }
        MoveUp(mReading.keptBlocks[block.name].entities, isBad);
        const EntityData* const first = block.entities.data();
        std::erase_if(block.entities, [&](const EntityData& entity) {
            return isBad[static_cast<std::size_t>(&entity - first)] != 0;
        });
    }

    /// Kept entities count the others before them.
    static void MoveUp(std::vector<KeptRecord>& kept, const std::vector<char>& isBad) {
        for (KeptRecord& record : kept) {
            const auto end = isBad.begin() + static_cast<std::ptrdiff_t>(record.place);
            record.place -= static_cast<std::size_t>(std::count(isBad.begin(), end, 1));
        }
    }

    Reading& mReading;
    std::vector<State> mStates;
    std::unordered_set<const EntityData*> mRings;
};

// Every object its own handle: entities keep theirs before tables do, tables before what goes through unread,
// and that before what only files need.
class Handles {
  public:
    explicit Handles(Reading& reading) : mReading(reading), mData(reading.data) {}

    void Settle() {
        ForEachHandle([this](HandleValue& handle) { Keep(handle); });
        for (const GroupData& group : mData.groups) mGroups.insert(group.handle);
        ForEachKept(mReading, [this](KeptRecord& record) { Keep(record); });
        std::unordered_set<HandleValue> objects;
        for (const KeptRecord& object : mReading.file.objects) objects.insert(object.handle);
        const std::map<std::string, HandleValue> readHandles = mData.fileHandles;
        for (auto& [what, handle] : mData.fileHandles)
            if (!(IsObject(what) ? objects : mKept).contains(handle)) Keep(handle);
        std::erase_if(mData.fileHandles, [](const auto& entry) { return entry.second == 0; });
        ForEachPart(mData, [this](const KeptRecord& part) { mHighest = std::max(mHighest, part.handle); });
        if (mData.handleSeed <= mHighest || mData.handleSeed > HighestHandle) mData.handleSeed = mHighest + 1;
        ForEachHandle([this](HandleValue& handle) {
            if (handle == 0) handle = mData.handleSeed++;
        });
        ForEachKept(mReading, [this](KeptRecord& record) {
            if (record.handle == 0) ChangeOwnHandle(record, mData.handleSeed++);
            mUsed.insert(record.handle);
        });
        if (mChanged.empty()) return;
        for (const auto& [what, handle] : readHandles)
            if (const auto object = mChanged.find(handle); object != mChanged.end() && IsObject(what))
                mData.fileHandles.emplace(what, object->second->handle);
    }

    /// Every handle of the file, ascending.
    std::vector<HandleValue> All() {
        ForEachHandle([this](const HandleValue& handle) { mUsed.insert(handle); });
        ForEachPart(mData, [this](const KeptRecord& part) { mUsed.insert(part.handle); });
        std::vector<HandleValue> all(mUsed.begin(), mUsed.end());
        std::ranges::sort(all);
        return all;
    }

  private:
    /// Entries of dictionaries may name what is none of the objects.
    static bool IsObject(std::string_view what) {
        return what.starts_with("DICTIONARY") || what.starts_with("LAYOUT ") || what.starts_with("ACAD_");
    }

    template <typename Visit>
    void ForEachHandle(Visit visit) {
        ForEachEntity(mData, [&](EntityData& entity) {
            visit(entity.handle);
            if (auto* const polyline = std::get_if<PolylineData>(&entity.geometry)) {
                for (auto& vertex : polyline->vertices) visit(vertex.handle);
                visit(polyline->seqendHandle);
            }
        });
        for (BlockData& block : mData.blocks) visit(block.handle);
        for (LayerData& layer : mData.layers) visit(layer.handle);
        for (LinetypeData& linetype : mData.linetypes) visit(linetype.handle);
        for (TextStyleData& style : mData.styles) visit(style.handle);
        for (UcsData& ucs : mData.namedUcs) visit(ucs.handle);
        for (GroupData& group : mData.groups) visit(group.handle);
    }

    void Keep(HandleValue& handle) {
        if (handle == 0) return;
        if (!mUsed.insert(handle).second) {
            handle = 0;
            return;
        }
        mHighest = std::max(mHighest, handle);
    }

    void Keep(KeptRecord& record) {
        const HandleValue read = record.handle;
        // A group is kept as text in addition to what the drawing knows of it.
        if (record.name == "GROUP" && mGroups.contains(read)) {
            mKept.insert(read);
            return;
        }
        Keep(record.handle);
        if (record.handle != 0) {
            mKept.insert(read);
        } else if (read != 0) {
            mReading.Note(0, "handle used twice: " + HandleToText(read) + "; the " + record.name +
                                 " of this handle gets a new one");
            mChanged.emplace(read, &record);
        }
    }

    Reading& mReading;
    DrawingData& mData;
    std::unordered_set<HandleValue> mUsed, mKept, mGroups;
    std::unordered_map<HandleValue, const KeptRecord*> mChanged;  ///< By the handles that they had.
    HandleValue mHighest = 0;
};

// Handles that lead nowhere: members whose entity was passed over, frozen layers that are none.
void DropDeadReferences(DrawingData& data) {
    std::unordered_set<HandleValue> entities, layers;
    ForEachEntity(data, [&](const EntityData& entity) { entities.insert(entity.handle); });
    for (const LayerData& layer : data.layers) layers.insert(layer.handle);
    for (GroupData& group : data.groups)
        std::erase_if(group.members, [&](HandleValue handle) { return !entities.contains(handle); });
    ForEachEntity(data, [&](EntityData& entity) {
        if (auto* const viewport = std::get_if<ViewportData>(&entity.geometry))
            std::erase_if(viewport->frozenLayers,
                          [&](HandleValue handle) { return !layers.contains(handle); });
    });
}

/// Hands what goes through unread over to the drawing.
void JoinKept(Reading& reading, std::vector<HandleValue> handles) {
    DrawingData& data = reading.data;
    for (BlockData& block : data.blocks) {
        const auto found = reading.keptBlocks.find(block.name);
        if (found == reading.keptBlocks.end()) continue;
        KeptBlock& kept = found->second;
        if (!kept.entities.empty())
            for (const EntityData& entity : block.entities) kept.order.push_back(entity.handle);
        block.kept = {std::make_shared<const KeptBlock>(std::move(kept))};
    }
    KeptFile& file = reading.file;
    file.hasByteOrderMark = reading.hasByteOrderMark;
    file.handles = std::move(handles);
    file.unkept.assign(reading.unkept.begin(), reading.unkept.end());
    data.file = {std::make_shared<const KeptFile>(std::move(file))};
}

void NameBlocks(Reading& reading) {
    int layoutNumber = 0;
    for (BlockData& block : reading.data.blocks) {
        const auto record = reading.recordOfBlock.find(block.name);
        if (record != reading.recordOfBlock.end()) block.handle = record->second;
        if (!IsSpace(block.name)) continue;
        const auto layout = reading.layoutOfBlock.find(block.name);
        if (layout != reading.layoutOfBlock.end()) block.layoutName = layout->second;
        if (block.layoutName.empty())
            block.layoutName = layoutNumber == 0 ? "Model" : "Layout" + std::to_string(layoutNumber);
        ++layoutNumber;
    }
}

}  // namespace

void CompleteDrawing(Reading& reading) {
    AddStandardEntries(reading.data);
    NameBlocks(reading);
    BlockRings(reading).DropReferences();
    JoinNames(reading.data);
    Handles handles(reading);
    handles.Settle();
    DropDeadReferences(reading.data);
    JoinKept(reading, handles.All());
}

}  // namespace brenvik
