// A state is taken at the end of each command and compared with the one before: that costs a look at every
// entity, and no command has to know of it.
#include "drafting_host/document/drawing_history.h"

#include <algorithm>
#include <map>
#include <ranges>
#include <unordered_map>
#include <utility>

#include "drafting_host/document/drawing_state.h"
#include "drafting_host/document/extended_data.h"
#include "drafting_host/document/host_application.h"
#include "drafting_host/document/host_document.h"

namespace brenvik {

namespace {

/// A list of ten thousand parts that is applied again and again would fill the memory long before the
/// hundredth time: an entity with its data takes about 2 kB. The last step is kept however large it is.
constexpr std::size_t MostSteps = 100, MostEntities = 100000;

struct EntityImage {
    HandleValue handle = 0;
    EntityLook look;  ///< Its layer by name.
    std::string layer;
    std::vector<XDataOfApp> extendedData;
    Kept<KeptGroups> kept;
    HostGeometry geometry;
};
using EntityPointer = std::shared_ptr<const EntityImage>;

bool IsSame(const EntityImage& image, const HostEntity& entity) {
    const EntityLook& look = entity.Look();
    return image.handle == entity.HandleNumber() && image.layer == entity.LayerObject().Values().name &&
           image.look.linetype == look.linetype && image.look.linetypeScale == look.linetypeScale &&
           image.look.color == look.color && image.look.visible == look.visible &&
           image.look.lineweight == look.lineweight &&
           IsSameXData(image.extendedData, entity.ExtendedData()) &&
           image.kept.value == entity.KeptGroupsOfFile().value &&
           IsSameGeometry(image.geometry, entity.Geometry());
}

EntityPointer ImageOf(const HostEntity& entity) {
    EntityImage image{entity.HandleNumber(),
                      entity.Look(),
                      entity.LayerObject().Values().name,
                      entity.ExtendedData(),
                      entity.KeptGroupsOfFile(),
                      entity.Geometry()};
    image.look.layer = nullptr;
    return std::make_shared<const EntityImage>(std::move(image));
}

struct BlockImage {
    BlockData record;
    std::vector<EntityPointer> entities;
    friend bool operator==(const BlockImage&, const BlockImage&) = default;
};

std::vector<LayerData> LayersOf(HostDocument& document) {
    std::vector<LayerData> layers;
    for (const HostLayer* layer : document.LayerTable().All()) layers.push_back(layer->Values());
    return layers;
}

std::vector<GroupData> GroupsOf(HostDocument& document) {
    std::vector<GroupData> groups;
    for (const HostGroup* group : document.GroupTable().All()) groups.push_back(group->Values());
    return groups;
}

/// The layers as they were, in their order. Entities know them by pointer.
void RestoreLayers(HostDocument& document, const std::vector<LayerData>& layers, const std::string& current) {
    HostLayers& table = document.LayerTable();
    if (LayersOf(document) != layers) {
        const std::vector<HostLayer*> all = table.All();
        for (HostLayer* layer : all) table.Purge(*layer);
        for (LayerData layer : layers) {
            // Files may say so; no host makes a frozen layer the current one.
            if (layer.name == current) layer.frozen = false;
            table.Put(std::move(layer));
        }
        for (const auto& block : document.AllBlocks())
            for (HostEntity* entity : block->Entities()) {
                EntityLook look = entity->Look();
                // Those on a layer of later are erased in a moment.
                HostLayer* const layer = table.Find(look.layer->Values().name);
                if (layer == nullptr) continue;
                look.layer = layer;
                entity->SetLook(std::move(look));
            }
    }
    HostLayer* const layer = table.Find(current);
    if (layer != nullptr && layer != &document.CurrentLayer()) document.SetActiveLayer(*layer);
}

/// Erases what the image hasn't, from the first difference on: the order of drawing is that of adding.
void EraseDifferent(HostBlock& block, std::span<const EntityPointer> wanted) {
    const std::span<HostEntity* const> entities = block.Entities();
    const std::vector<HostEntity*> present(entities.begin(), entities.end());
    std::size_t same = 0;
    while (same < present.size() && same < wanted.size() && IsSame(*wanted[same], *present[same])) ++same;
    for (HostEntity* entity : present | std::views::drop(same)) entity->EraseAnyway();
}

void AddMissing(HostDocument& document, HostBlock& block, std::span<const EntityPointer> wanted) {
    for (const EntityPointer& image : wanted | std::views::drop(block.Entities().size())) {
        HostEntity& entity = block.Add(image->geometry, image->handle);
        EntityLook look = image->look;
        look.layer = document.LayerTable().Find(image->layer);
        entity.SetLook(std::move(look));
        entity.SetExtendedData(image->extendedData);
        entity.SetKeptGroups(image->kept);
    }
}

void RestoreGroups(HostDocument& document, const std::vector<GroupData>& groups) {
    if (GroupsOf(document) == groups) return;
    const std::vector<HostGroup*> all = document.GroupTable().All();
    for (const HostGroup* group : all) document.GroupTable().Remove(*group);
    for (const GroupData& group : groups) document.GroupTable().Put(group);
}

}  // namespace

struct DrawingHistory::Image {
    std::vector<BlockImage> blocks;
    std::vector<LayerData> layers;
    std::string currentLayer;
    std::vector<GroupData> groups;
    std::shared_ptr<const DrawingData> tables;
    friend bool operator==(const Image&, const Image&) = default;
};

DrawingHistory::DrawingHistory(HostDocument& document) : mDocument(document) {
    std::size_t all = 0;
    mPresent = Taken(all);
}
DrawingHistory::~DrawingHistory() = default;

std::shared_ptr<const DrawingHistory::Image> DrawingHistory::Taken(std::size_t& changed) const {
    std::unordered_map<HandleValue, EntityPointer> known;
    if (mPresent)
        for (const BlockImage& block : mPresent->blocks)
            for (const EntityPointer& entity : block.entities) known.emplace(entity->handle, entity);
    auto image = std::make_shared<Image>();
    for (const auto& block : mDocument.AllBlocks()) {
        BlockImage& taken = image->blocks.emplace_back(BlockImage{block->Record(), {}});
        taken.entities.reserve(block->Entities().size());
        for (const HostEntity* entity : block->Entities()) {
            const auto before = known.find(entity->HandleNumber());
            const bool isSame = before != known.end() && IsSame(*before->second, *entity);
            if (!isSame) ++changed;
            taken.entities.push_back(isSame ? before->second : ImageOf(*entity));
        }
    }
    image->layers = LayersOf(mDocument);
    image->currentLayer = mDocument.CurrentLayer().Values().name;
    image->groups = GroupsOf(mDocument);
    image->tables = mPresent && *mPresent->tables == mDocument.Tables()
                        ? mPresent->tables
                        : std::make_shared<const DrawingData>(mDocument.Tables());
    return image;
}

void DrawingHistory::NoteStep(const std::string& command) {
    std::size_t changed = 0;
    std::shared_ptr<const Image> now = Taken(changed);
    if (*now == *mPresent) return;
    mPast.push_back({command, std::exchange(mPresent, std::move(now)), changed});
    mFuture.clear();
    ForgetOldest();
}

void DrawingHistory::ForgetOldest() {
    std::size_t kept = 0, entities = 0;
    while (kept < mPast.size() && kept < MostSteps) {
        entities += mPast[mPast.size() - kept - 1].entities;
        if (kept > 0 && entities > MostEntities) break;
        ++kept;
    }
    mPast.erase(mPast.begin(), mPast.end() - static_cast<std::ptrdiff_t>(kept));
}

void DrawingHistory::Restore(const Image& image) {
    std::vector<HandleValue> selected;
    for (const HostEntity* entity : mDocument.PreviousSelection()) selected.push_back(entity->HandleNumber());
    RestoreLayers(mDocument, image.layers, image.currentLayer);
    for (const auto& block : mDocument.AllBlocks()) {
        const auto wanted = std::ranges::find(image.blocks, block->Record().name,
                                              [](const BlockImage& one) { return one.record.name; });
        EraseDifferent(*block, wanted == image.blocks.end() ? std::span<const EntityPointer>()
                                                            : std::span(wanted->entities));
    }
    for (const BlockImage& wanted : image.blocks) {
        HostBlock* block = mDocument.FindBlock(wanted.record.name);
        if (block == nullptr) block = &mDocument.AddBlock(wanted.record);
        if (!(block->Record() == wanted.record)) block->SetRecord(wanted.record);
        AddMissing(mDocument, *block, wanted.entities);
    }
    RestoreGroups(mDocument, image.groups);
    mDocument.Tables() = *image.tables;
    std::vector<HostEntity*> living;
    for (const HandleValue handle : selected)
        if (HostEntity* const entity = mDocument.FindEntity(handle)) living.push_back(entity);
    mDocument.SetPreviousSelection(living);
}

std::optional<std::string> DrawingHistory::Go(std::vector<Step>& from, std::vector<Step>& to) {
    if (mCommandsAtWork > 0 || from.empty()) return std::nullopt;
    const Step step = std::move(from.back());
    from.pop_back();
    Restore(*step.state);
    to.push_back({step.command, std::move(mPresent), step.entities});
    mPresent = step.state;
    // Blocks that were made since stay defined, so the drawing may hold more than it did.
    std::size_t changed = 0;
    mPresent = Taken(changed);
    return step.command;
}

std::optional<std::string> DrawingHistory::Undo() { return Go(mPast, mFuture); }
std::optional<std::string> DrawingHistory::Redo() { return Go(mFuture, mPast); }

namespace {

struct KeptHistory {
    const HostApplication* application;
    std::unique_ptr<DrawingHistory> history;
};

std::map<const HostDocument*, KeptHistory>& Histories() {
    static std::map<const HostDocument*, KeptHistory> histories;
    return histories;
}

}  // namespace

void KeepHistory(HostDocument& document) {
    Histories()[&document] = {&document.Host(), std::make_unique<DrawingHistory>(document)};
}

DrawingHistory* HistoryOf(const HostDocument& document) {
    const auto found = Histories().find(&document);
    return found == Histories().end() ? nullptr : found->second.history.get();
}

void ForgetHistory(const HostDocument& document) { Histories().erase(&document); }

void ForgetHistories(const HostApplication& application) {
    std::erase_if(Histories(), [&](const auto& kept) { return kept.second.application == &application; });
}

OneStep::OneStep(const HostDocument* document, std::string command)
    : mDocument(document), mCommand(std::move(command)) {
    DrawingHistory* const history = document == nullptr ? nullptr : HistoryOf(*document);
    if (history == nullptr) return;
    mCounted = true;
    ++history->mCommandsAtWork;
}

OneStep::~OneStep() {
    DrawingHistory* const history = mCounted ? HistoryOf(*mDocument) : nullptr;
    if (history != nullptr && --history->mCommandsAtWork == 0) history->NoteStep(mCommand);
}

}  // namespace brenvik
