// Entity records: common properties, the space they stand in, polylines of many records.
#include "drafting_host/dxf/reading/entity_reader.h"

#include <algorithm>
#include <array>

#include "base/handle_text.h"
#include "base/text.h"
#include "drafting_host/dxf/data/annotation_kinds.h"
#include "drafting_host/dxf/reading/stated_counts.h"
#include "session/ports/point_arithmetic.h"

namespace brenvik {
namespace {

constexpr int ByLayer = 256;

void TakeLinetypeScale(Reading& reading, EntityData& entity, const Group& group) {
    const double scale = RealOf(group);
    entity.linetypeScale = scale > 0 ? scale : 1;
    if (!(scale > 0))
        reading.Doubt("48", group.line,
                      "group 48 holds " + ShownName(Trim(group.value)) +
                          " where a scale of line types above 0 was expected; 1 is taken",
                      false);
}

void TakeCommon(Reading& reading, EntityData& entity, const Group& group) {
    switch (group.code) {
        case 5:
            entity.handle = HandleOf(group);
            break;
        case 6:
            entity.linetype = reading.Text(group);
            break;
        case 8:
            entity.layer = LayerNameOf(reading, group);
            break;
        case 48:
            TakeLinetypeScale(reading, entity, group);
            break;
        case 60:
            entity.visible = IntegerOf(group) == 0;
            break;
        case 62: {
            const int color = IntegerOf(group);
            entity.color = color >= 0 && color <= ByLayer ? color : ByLayer;
            break;
        }
        case 370:
            entity.lineweight = IntegerWithin(reading, group, -3, 211, "a line weight", -1);
            break;
        default:
            break;
    }
}

EntityData CommonOf(Reading& reading, Groups groups) {
    EntityData entity;
    for (const Group& group : groups) TakeCommon(reading, entity, group);
    if (entity.layer.empty()) entity.layer = "0";
    return entity;
}

struct SplitGroups {
    Groups own, xdata;
};

SplitGroups Split(Record& record) {
    DropBrackets(record.groups);
    const Groups all = record.groups;
    const auto first = std::find_if(all.begin(), all.end(), [](const Group& g) { return g.code >= 1000; });
    const auto count = static_cast<std::size_t>(first - all.begin());
    return {all.first(count), all.subspan(count)};
}

Point3* NormalOf(EntityGeometry& geometry) {
    return std::visit(
        [](auto& shape) -> Point3* {
            if constexpr (requires { shape.normal; })
                return &shape.normal;
            else
                return nullptr;
        },
        geometry);
}

/// An entity as a message names it: "3DSOLID (handle 2F)".
std::string ShownEntity(const Record& record) {
    const Group* const handle = FindGroup(record.groups, 5);
    std::string text = ShownName(record.name).substr(1);
    text.pop_back();
    if (handle != nullptr) text += " (handle " + std::string(handle->value.substr(0, 20)) + ")";
    return text;
}

/// Kinds of many records, the others of which go into what is kept of the first.
bool HasParts(std::string_view name) { return name == "INSERT" || name == "POLYLINE"; }
bool IsBodyKind(std::string_view name) { return name == "3DSOLID" || name == "REGION" || name == "BODY"; }

}  // namespace

std::size_t BlockPlace(Reading& reading, const std::string& name) {
    auto& blocks = reading.data.blocks;
    const auto [entry, isNew] = reading.blockPlaces.emplace(name, blocks.size());
    if (isNew) blocks.emplace_back().name = name;
    return entry->second;
}

std::size_t EntityReader::SpaceOf(Groups groups) {
    if (const Group* const owner = FindGroup(groups, 330)) {
        const auto block = mReading.blockOfRecord.find(HandleOf(*owner));
        if (block != mReading.blockOfRecord.end() &&
            (block->second == ModelSpaceName || StartsWithIgnoreCase(block->second, PaperSpaceName)))
            return BlockPlace(mReading, block->second);
    }
    const Group* const flag = FindGroup(groups, 67);
    const bool isPaper = flag != nullptr && IntegerOf(*flag) == 1;
    return BlockPlace(mReading, std::string(isPaper ? PaperSpaceName : ModelSpaceName));
}

void EntityReader::NoteDamagedHandle(Groups groups, HandleValue read, std::size_t line) {
    const Group* const group = FindGroup(groups, 5);
    if (group == nullptr || read != 0 || IsBlank(group->value) || Trim(group->value) == "0") return;
    mReading.Note(line, "a handle was expected, found \"" + std::string(group->value.substr(0, 20)) +
                            "\"; the entity gets a new one");
}

HandleValue EntityReader::OwnHandle(HandleValue handle, std::size_t line, bool isOfEntity) {
    if (handle == 0 || mHandles.insert(handle).second) return handle;
    // Lists, choices and other programs' records name entities by their handles.
    mReading.Note(line, "handle used twice: " + HandleToText(handle) + "; the second entity gets a new one",
                  isOfEntity);
    return 0;
}

void EntityReader::NoteFalseCounts(const Record& record, Groups groups, const EntityGeometry& geometry) {
    for (const FalseCount& count : FalseCountsOf(groups, geometry))
        mReading.Note(count.line, ShownEntity(record) + ": " + count.text);
}

void EntityReader::TakeFalseColor(const Record& record, Groups groups) {
    const Group* const group = FindGroup(groups, 62);
    if (group == nullptr) return;
    const int color = IntegerOf(*group);
    if ((color >= 0 && color <= ByLayer) || mFalseColors.count++ > 0) return;
    mFalseColors.firstLine = group->line;
    mFirstFalseColor = ShownEntity(record) + " holds " + std::to_string(color);
}

void EntityReader::Refuse(const Record& record, const EntityRefused& refused) {
    mReading.Note(refused.line, ShownEntity(record) + " left out: " + refused.reason);
}

void EntityReader::EndOpenPolyline(std::size_t line) {
    if (!mPolyline) return;
    if (!mPolyline->refused) {
        auto& data = std::get<PolylineData>(mPolyline->entity.geometry);
        if (data.vertices.empty()) {
            mReading.Note(std::min(line, mPolyline->line), "POLYLINE left out: a vertex was expected");
        } else {
            if (const auto falseCount = FalseCountOfMesh(data, "groups 71 and 72 state"))
                mReading.Note(mPolyline->line, "POLYLINE: " + *falseCount);
            if (mPolyline->kept)
                std::ranges::sort(mPolyline->kept->vertices, {}, &KeptGroups::Vertex::handle);
            mReading.data.blocks[mPolyline->block].entities.push_back(std::move(mPolyline->entity));
        }
    }
    mPolyline.reset();
}

std::string EntityReader::DropOpenPolyline() {
    if (!mPolyline) return {};
    std::string dropped = "the POLYLINE of " + mReading.Place(mPolyline->line);
    mPolyline.reset();
    return dropped;
}

// True when the record belongs to the polyline that stands open.
bool EntityReader::TakePolylinePart(Record& record) {
    if (!mPolyline) return false;
    const bool isVertex = record.name == "VERTEX", isEnd = record.name == "SEQEND";
    if (!isVertex && !isEnd) {
        mReading.Note(record.line, "POLYLINE without its end: SEQEND was expected", false);
        EndOpenPolyline(record.line);
        return false;
    }
    std::optional<KeptGroups::Vertex> kept;
    if (!mPolyline->refused) kept = LeftoversOfVertex(record, mPolyline->fileLayer);
    if (kept && !mReading.KeepsRecords()) {
        CountLost(mReading.unkept, std::string(record.name), kept->head + kept->common + kept->own);
        kept.reset();
    }
    const SplitGroups groups = Split(record);
    const auto keep = [&](HandleValue handle) {
        if (!kept || (kept->head.empty() && kept->common.empty() && kept->own.empty())) return;
        kept->handle = handle;
        mPolyline->kept->vertices.push_back(std::move(*kept));
    };
    if (isEnd) {
        const Group* const handle = FindGroup(groups.own, 5);
        if (!mPolyline->refused && handle != nullptr) {
            HandleValue& end = std::get<PolylineData>(mPolyline->entity.geometry).seqendHandle;
            end = OwnHandle(HandleOf(*handle), record.line, false);
            if (end != 0) keep(end);
        }
        EndOpenPolyline(record.line);
        return true;
    }
    if (mPolyline->refused) return true;
    try {
        PolylineData::Vertex vertex = ReadPolylineVertex(mReading, groups.own, record.line);
        TellDoubled(mReading, "VERTEX", groups.own);
        if (FindGroup(groups.own, 40) == nullptr) vertex.startWidth = mPolyline->startWidth;
        if (FindGroup(groups.own, 41) == nullptr) vertex.endWidth = mPolyline->endWidth;
        vertex.handle = OwnHandle(vertex.handle, record.line, false);
        if (vertex.handle != 0) keep(vertex.handle);
        std::get<PolylineData>(mPolyline->entity.geometry).vertices.push_back(vertex);
    } catch (const EntityRefused& refused) {
        // A polyline less a vertex would be another shape.
        Refuse(record, {refused.line, refused.reason + "; its polyline is left out"});
        mPolyline->refused = true;
    }
    return true;
}

void EntityReader::Pass(const Record& record) {
    auto& passed = mPassed[std::string(record.name)];
    if (passed.count++ == 0) passed.firstLine = record.line;
}

void EntityReader::KeepEntity(Record& record, std::optional<std::size_t> block) {
    if (!mReading.KeepsRecords()) {
        ++mReading.unkept[std::string(record.name)];
        return;
    }
    KeptRecord kept = KeptRecordOf(record);
    const SplitGroups groups = Split(record);
    KeepRecord(std::move(kept), block ? *block : SpaceOf(groups.own));
}

void EntityReader::KeepRecord(KeptRecord record, std::size_t block) {
    const BlockData& target = mReading.data.blocks[block];
    record.place = target.entities.size();
    mReading.keptBlocks[target.name].entities.push_back(std::move(record));
}

void EntityReader::TakeEntity(Record& record, std::optional<std::size_t> block) {
    if (!IsUnderstoodKind(record.name)) {
        Pass(record);
        return KeepEntity(record, block);
    }
    const bool hasParts = HasParts(record.name);
    std::shared_ptr<KeptGroups> parts;
    const Group* const layer = FindGroup(record.groups, 8);
    const std::string fileLayer(layer == nullptr ? std::string_view() : layer->value);
    Kept<KeptGroups> kept;
    kept = LeftoversOfEntity(record);
    if (!mReading.KeepsRecords() && kept) {
        CountLost(mReading.unkept, std::string(record.name),
                  kept->head + kept->common + kept->own + kept->further);
        kept = {};
    }
    std::optional<KeptRecord> binaryBody;
    if (mReading.isBinaryBodies && IsBodyKind(record.name)) binaryBody = KeptRecordOf(record);
    if (mReading.KeepsRecords() && hasParts) {
        parts = kept ? std::make_shared<KeptGroups>(*kept) : std::make_shared<KeptGroups>();
        kept.value = parts;
    }
    const SplitGroups groups = Split(record);
    try {
        auto geometry = ReadGeometry(mReading, record, groups.own);
        EntityData entity = CommonOf(mReading, groups.own);
        NoteFalseCounts(record, groups.own, *geometry);
        TakeFalseColor(record, groups.own);
        const std::size_t place = block ? *block : SpaceOf(groups.own);
        if (Point3* const normal = NormalOf(*geometry); normal != nullptr && vectors::IsZero(*normal)) {
            mReading.Note(record.line, "a normal without length (group 210): taken as 0,0,1", false);
            *normal = {0, 0, 1};
        }
        NoteDamagedHandle(groups.own, entity.handle, record.line);
        entity.handle = OwnHandle(entity.handle, record.line, true);
        entity.geometry = std::move(*geometry);
        entity.xdata = groups.xdata.empty() ? std::vector<XDataOfApp>()
                                            : ReadXData(mReading, groups.xdata, ShownEntity(record));
        entity.kept = std::move(kept);
        if (binaryBody && entity.handle != 0) mReading.bodyRecords.emplace(entity.handle, *binaryBody);
        if (record.name == "POLYLINE") {
            mPolyline = OpenPolyline{std::move(entity), place, record.line, false, fileLayer, parts};
            // Of later releases they go through as they stand.
            const auto widthOf = [&](int code) {
                const Group* const group = FindGroup(groups.own, code);
                return group == nullptr || mReading.KeepsRecords() ? 0 : RealOf(*group);
            };
            mPolyline->startWidth = widthOf(40);
            mPolyline->endWidth = widthOf(41);
        } else {
            if (record.name == "INSERT") mInsert = parts;
            mReading.data.blocks[place].entities.push_back(std::move(entity));
        }
    } catch (const EntityRefused& refused) {
        Refuse(record, refused);
        if (binaryBody) KeepRecord(std::move(*binaryBody), block ? *block : SpaceOf(groups.own));
        if (record.name == "POLYLINE") mPolyline = OpenPolyline{{}, 0, record.line, true, {}, {}};
    }
}

bool EntityReader::TakeInsertPart(const Record& record) {
    const bool isAttribute = record.name == "ATTRIB", isEnd = record.name == "SEQEND";
    if (!mAfterInsert || (!isAttribute && !isEnd)) return false;
    if (mInsert)
        mInsert->parts.push_back(KeptRecordOf(record));
    else if (isAttribute)
        ++mReading.unkept["ATTRIB"];
    if (isEnd) {
        mAfterInsert = false;
        mInsert.reset();
    }
    return true;
}

void EntityReader::Take(Record& record, std::optional<std::size_t> block) {
    if (TakePolylinePart(record)) return;
    if (TakeInsertPart(record)) return;
    mAfterInsert = record.name == "INSERT";
    mInsert.reset();
    TakeEntity(record, block);
}

void EntityReader::NotePassedOver() {
    for (const auto& [kind, passed] : mPassed) {
        mReading.Note(passed.firstLine,
                      std::to_string(passed.count) + " of kind " + ShownName(kind) +
                          " passed over, the first " +
                          (mReading.unit == PlaceUnit::Line ? "in this line: " : "here: ") +
                          (mReading.KeepsRecords() ? "they stay in the drawing as they are"
                                                   : "drawings don't hold this kind"),
                      !IsAnnotationKind(kind), mReading.KeepsRecords());
    }
    mPassed.clear();
    if (mFalseColors.count == 0) return;
    mReading.Note(mFalseColors.firstLine,
                  std::to_string(mFalseColors.count) +
                      " entity(s) with a colour that doesn't exist get that of their layer, the first one: " +
                      mFirstFalseColor + " in group 62 where 0 to 256 was expected",
                  false);
    mFalseColors = {};
}

}  // namespace brenvik
