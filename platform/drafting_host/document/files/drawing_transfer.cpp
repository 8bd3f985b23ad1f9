// Between the open document and the plain data of a drawing. Bodies are built from their ACIS text when
// a drawing is taken over, so that what can't be read is reported at once, and written as text on the way
// out.
#include <TopExp_Explorer.hxx>
#include <functional>
#include <set>
#include <span>
#include <utility>

#include "base/handle_text.h"
#include "base/letter_case.h"
#include "drafting_host/acis/acis_text.h"
#include "drafting_host/document/files/bodies_ahead.h"
#include "drafting_host/document/files/body_texts.h"
#include "drafting_host/document/files/lost_data.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/host_application.h"
#include "drafting_host/dxf/data/standard_entries.h"

namespace brenvik {
namespace {

std::string_view NameOf(AcisData::Kind kind) {
    switch (kind) {
        case AcisData::Kind::Solid:
            return "3DSOLID";
        case AcisData::Kind::Region:
            return "REGION";
        case AcisData::Kind::Body:
            return "BODY";
    }
    return {};
}

/// The body that its text gives; what went wrong is reported with the line of the file where the text begins
/// and the line and record in it.
ShapeData BodyAsRead(const acis::ReadResult& read, const AcisData& data, HandleValue handle,
                     std::vector<ReadNote>& notes) {
    ShapeData result{data.kind, OneShapeOf(read.bodies)};
    const std::string what = std::string(NameOf(data.kind)) + " " + HandleToText(handle);
    for (const acis::Problem& problem : read.problems) {
        std::string text = what;
        if (problem.line > 0) text += ", line " + std::to_string(problem.line) + " of its body";
        if (problem.record >= 0) text += ", record " + std::to_string(problem.record);
        text += ": " + problem.text;
        if (result.shape.IsNull()) text += "; the body is left out";
        notes.push_back({data.firstLine, std::move(text), problem.lost});
    }
    if (result.shape.IsNull() && read.problems.empty())
        notes.push_back({data.firstLine, what + ": its text holds no body; it is left out", true});
    return result;
}

/// A solid without a volume is no part: it is kept as an open body, with a note.
void TakeForSheet(ShapeData& shape, const AcisData& data, HandleValue handle, std::vector<ReadNote>& notes) {
    if (shape.kind != AcisData::Kind::Solid || TopExp_Explorer(shape.shape, TopAbs_SOLID).More()) return;
    std::size_t faces = 0;
    for (TopExp_Explorer face(shape.shape, TopAbs_FACE); face.More(); face.Next()) ++faces;
    shape.kind = AcisData::Kind::Body;
    notes.push_back({data.firstLine, "3DSOLID " + HandleToText(handle) + ": a sheet of " +
                                         std::to_string(faces) + (faces == 1 ? " face" : " faces") +
                                         " that encloses nothing; it is no part, and is kept as a BODY"});
}

/// The plain data as the document holds them; empty for a body that can't be built. `shapes` are those of
/// bodies without a text, and stay behind what was taken. A body's text stays with it where its shape may be
/// made again.
std::optional<HostGeometry> ToHost(EntityGeometry& geometry, HandleValue handle, std::vector<ReadNote>& notes,
                                   std::span<const TopoDS_Shape>& shapes,
                                   const std::function<acis::ReadResult()>& readBody) {
    return std::visit(
        [&](auto& data) -> std::optional<HostGeometry> {
            using Data = std::decay_t<decltype(data)>;
            if constexpr (std::is_same_v<Data, AcisData>) {
                if (data.text.empty() && !shapes.empty()) {
                    ShapeData kept{data.kind, shapes.front()};
                    shapes = shapes.subspan(1);
                    return kept;
                }
                ShapeData shape = BodyAsRead(readBody(), data, handle, notes);
                if (shape.shape.IsNull()) return std::nullopt;
                TakeForSheet(shape, data, handle, notes);
                return shape;
            } else {
                return std::move(data);
            }
        },
        geometry);
}

/// Writes the shape as ACIS text. Returns nothing and adds a problem if ACIS text can't hold it.
std::optional<EntityGeometry> ToPlain(HostGeometry& geometry, const std::string& what,
                                      std::vector<std::string>& problems) {
    return std::visit(
        [&](auto& data) -> std::optional<EntityGeometry> {
            using Data = std::decay_t<decltype(data)>;
            if constexpr (std::is_same_v<Data, ShapeData>) {
                AcisData text;
                text.kind = data.kind;
                try {
                    text.text = TextOfBody(data.shape);
                } catch (const acis::WriteFailure& failure) {
                    problems.push_back(what + ": " + failure.what());
                    return std::nullopt;
                }
                return text;
            } else {
                return std::move(data);
            }
        },
        geometry);
}

/// Everything but the geometry.
EntityData PlainLook(const HostEntity& entity) {
    EntityData data;
    data.handle = entity.HandleNumber();
    data.layer = entity.LayerObject().Values().name;
    data.linetype = entity.Look().linetype;
    data.linetypeScale = entity.Look().linetypeScale;
    data.color = entity.Look().color;
    data.visible = entity.Look().visible;
    data.lineweight = entity.Look().lineweight;
    data.xdata = entity.ExtendedData();
    return data;
}

std::optional<EntityData> ToPlain(const HostEntity& entity, std::vector<std::string>& problems) {
    HostGeometry geometry = entity.Geometry();
    std::string what = std::string(entity.ObjectName()) + " " + HandleToText(entity.HandleNumber());
    if (const std::string name = PartText(entity, "PARTNAME"); !name.empty()) what += " \"" + name + "\"";
    std::optional<EntityGeometry> plain = ToPlain(geometry, what, problems);
    if (!plain) return std::nullopt;
    EntityData data = PlainLook(entity);
    data.geometry = std::move(*plain);
    data.kept = entity.KeptGroupsOfFile();
    return data;
}

/// A body goes among the shapes and leaves its kind.
EntityData ToSnapshot(const HostEntity& entity, const Similarity& move, std::vector<TopoDS_Shape>& shapes) {
    HostGeometry geometry = entity.Geometry();
    if (!move.Identity()) Transform(geometry, move);
    EntityData data = PlainLook(entity);
    std::visit(
        [&](auto& values) {
            using Data = std::decay_t<decltype(values)>;
            if constexpr (std::is_same_v<Data, ShapeData>) {
                shapes.push_back(std::move(values.shape));
                data.geometry = AcisData{values.kind, {}, 0};
            } else {
                data.geometry = std::move(values);
            }
        },
        geometry);
    return data;
}

void FillBlock(HostBlock& block, std::vector<EntityData>& entities, HostLayers& layers,
               std::vector<ReadNote>& notes, std::span<const TopoDS_Shape>& shapes) {
    BodiesAhead bodies(entities);
    for (EntityData& data : entities) {
        const auto place = static_cast<std::size_t>(&data - entities.data());
        std::optional<HostGeometry> geometry =
            ToHost(data.geometry, data.handle, notes, shapes, [&] { return bodies.Take(place); });
        if (!geometry) continue;
        HostEntity& entity = block.Add(std::move(*geometry), data.handle);
        if (auto* body = std::get_if<AcisData>(&data.geometry); body != nullptr && !body->text.empty()) {
            if (block.Document().Host().Shapes().IsLimited())
                dynamic_cast<HostShapeEntity&>(entity).SetSource(SourceOfText(std::move(body->text)));
            // The shape takes the memory of its text: all texts and all shapes at once are too much for large
            // drawings.
            std::string().swap(body->text);
        }
        LayerData layer;
        layer.name = data.layer;
        entity.SetLook({&layers.Put(std::move(layer)), std::move(data.linetype), data.linetypeScale,
                        data.color, data.visible, data.lineweight});
        entity.SetExtendedData(std::move(data.xdata));
        entity.SetKeptGroups(std::move(data.kept));
    }
}

/// A written drawing of its own has handles of its own.
void ForgetHandles(EntityData& data) {
    data.handle = 0;
    if (auto* polyline = std::get_if<PolylineData>(&data.geometry)) {
        polyline->seqendHandle = 0;
        for (PolylineData::Vertex& vertex : polyline->vertices) vertex.handle = 0;
    }
    if (auto* viewport = std::get_if<ViewportData>(&data.geometry)) viewport->frozenLayers.clear();
}

/// Collects entities for a drawing of their own, and the blocks that they refer to.
class Extract {
  public:
    Extract(const HostDocument& document, DrawingData& data) : mDocument(document), mData(data) {}

    void Take(std::size_t block, const HostEntity& entity, const Similarity& move) {
        if (mShapes.size() <= block) mShapes.resize(block + 1);
        EntityData plain = ToSnapshot(entity, move, mShapes[block]);
        ForgetHandles(plain);
        mLayers.insert(&entity.LayerObject());
        for (const XDataOfApp& app : plain.xdata)
            if (mApps.insert(app.app).second) mData.applications.push_back(app.app);
        const auto* reference = std::get_if<InsertData>(&plain.geometry);
        const std::string name = reference == nullptr ? std::string() : reference->block;
        mData.blocks[block].entities.push_back(std::move(plain));
        if (!name.empty()) TakeBlock(name);
    }

    /// Block after block: a block is met in the middle of another one.
    std::vector<TopoDS_Shape> Shapes() const {
        std::vector<TopoDS_Shape> all;
        for (const std::vector<TopoDS_Shape>& one : mShapes) all.insert(all.end(), one.begin(), one.end());
        return all;
    }

    const std::set<const HostLayer*>& Layers() const { return mLayers; }

  private:
    void TakeBlock(const std::string& name) {
        const HostBlock* block = mDocument.FindBlock(name);
        if (block == nullptr || !mBlocks.insert(name).second) return;
        const std::size_t place = mData.blocks.size();
        mData.blocks.push_back(block->Record());
        mData.blocks.back().handle = 0;
        mData.blocks.back().kept = {};
        for (const HostEntity* entity : block->Entities()) Take(place, *entity, Similarity());
    }

    const HostDocument& mDocument;
    DrawingData& mData;
    std::vector<std::vector<TopoDS_Shape>> mShapes;
    std::set<const HostLayer*> mLayers;
    std::set<std::string, LessIgnoreCase> mApps, mBlocks;
};

/// A drawing of its own has nothing of the file that its source was read from.
template <class Entries>
void ForgetFile(Entries& entries) {
    for (auto& entry : entries) {
        entry.handle = 0;
        entry.kept = {};
    }
}

}  // namespace

void HostDocument::TakeOver(DrawingData data) { TakeOver(std::move(data), {}); }

void HostDocument::TakeOver(const DrawingSnapshot& snapshot) {
    DrawingData data = snapshot.data;
    AddStandardEntries(data);
    TakeOver(std::move(data), snapshot.shapes);
}

void HostDocument::TakeOver(DrawingData data, std::span<const TopoDS_Shape> shapes) {
    mTables = std::move(data);
    std::vector<LayerData> layers = std::move(mTables.layers);
    std::vector<BlockData> blocks = std::move(mTables.blocks);
    std::vector<GroupData> groups = std::move(mTables.groups);
    mTables.layers.clear();
    mTables.blocks.clear();
    mTables.groups.clear();
    mNextHandle = std::max(mNextHandle, mTables.handleSeed);
    // The file's own layer "0" stands in for the one of an empty drawing.
    mLayers.Clear();
    for (LayerData& layer : layers) mLayers.Put(std::move(layer));
    LayerData zero;
    zero.name = "0";
    mCurrentLayer = &mLayers.Put(std::move(zero));
    if (HostLayer* current = mLayers.Find(mTables.currentLayer)) mCurrentLayer = current;
    for (BlockData& block : blocks) {
        std::vector<EntityData> entities = std::move(block.entities);
        block.entities.clear();
        HostBlock* target = FindBlock(block.name);
        if (target == nullptr) {
            mBlocks.push_back(std::make_unique<HostBlock>(*this, std::move(block)));
            target = mBlocks.back().get();
        } else {
            target->SetRecord(std::move(block));
        }
        FillBlock(*target, entities, mLayers, mTables.notes, shapes);
    }
    for (GroupData& group : groups) mGroups.Put(std::move(group));
}

DrawingData HostDocument::ToData(std::vector<std::string>& problems) const {
    DrawingData data = mTables;
    data.handleSeed = mNextHandle;
    data.currentLayer = mCurrentLayer->Values().name;
    data.notes.clear();
    for (const HostLayer* layer : mLayers.All()) data.layers.push_back(layer->Values());
    for (const auto& block : mBlocks) {
        data.blocks.push_back(block->Record());
        std::vector<EntityData>& entities = data.blocks.back().entities;
        for (const HostEntity* entity : block->Entities())
            if (auto plain = ToPlain(*entity, problems)) entities.push_back(std::move(*plain));
    }
    for (const HostGroup* group : mGroups.All()) data.groups.push_back(group->Values());
    return data;
}

DrawingSnapshot HostDocument::Extracted(std::span<HostEntity* const> entities, const Similarity& move) const {
    DrawingSnapshot snapshot;
    DrawingData& data = snapshot.data;
    data.codePage = mTables.codePage;
    data.insertUnits = mTables.insertUnits;
    data.measurement = mTables.measurement;
    data.linetypes = mTables.linetypes;
    data.styles = mTables.styles;
    data.headerVariables = mTables.headerVariables;
    ForgetFile(data.linetypes);
    ForgetFile(data.styles);
    for (const std::size_t space : {0, 1}) {
        data.blocks.push_back(mBlocks[space]->Record());
        data.blocks.back().handle = 0;
        data.blocks.back().kept = {};
    }
    Extract extract(*this, data);
    for (const HostEntity* entity : entities) {
        entity->RequireAlive();
        extract.Take(entity->Owner().IsPaperSpace() ? 1 : 0, *entity, move);
    }
    for (const HostLayer* layer : mLayers.All()) {
        if (!extract.Layers().contains(layer) && layer->Values().name != "0") continue;
        data.layers.push_back(layer->Values());
        data.layers.back().handle = 0;
        data.layers.back().kept = {};
    }
    snapshot.shapes = extract.Shapes();
    return snapshot;
}

DrawingData WithBodyTexts(const DrawingSnapshot& snapshot, std::vector<std::string>& problems) {
    DrawingData data = snapshot.data;
    std::size_t next = 0;
    for (BlockData& block : data.blocks) {
        std::erase_if(block.entities, [&](EntityData& entity) {
            auto* body = std::get_if<AcisData>(&entity.geometry);
            if (body == nullptr || !body->text.empty()) return false;
            const TopoDS_Shape& solid = snapshot.shapes.at(next++);
            if (std::optional<std::string> text = TakeBodyText(solid)) {
                body->text = std::move(*text);
                return false;
            }
            HostGeometry shape = ShapeData{body->kind, solid};
            std::optional<EntityGeometry> text =
                ToPlain(shape, std::string(NameOf(body->kind)) + " " + std::to_string(next), problems);
            if (text) entity.geometry = std::move(*text);
            return !text;
        });
    }
    return data;
}

}  // namespace brenvik
