// The open drawing: tables, handles, spaces, and the operations of the object model on a document.
#include "drafting_host/document/host_document.h"

#include <algorithm>

#include "base/handle_text.h"
#include "base/letter_case.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/document/host_application.h"

namespace brenvik {

using namespace vectors;

namespace {

/// Below it lie the handles of a new file's own tables.
constexpr HandleValue FirstHandle = 0x100;

std::string NameWithoutFolder(const std::string& fullName) {
    const std::size_t slash = fullName.find_last_of("/\\");
    return slash == std::string::npos ? fullName : fullName.substr(slash + 1);
}

}  // namespace

int HostBlocks::Count() const {
    mDocument.RequireOpen();
    return static_cast<int>(mDocument.AllBlocks().size());
}

AcadBlock* HostBlocks::Item(int index) {
    mDocument.RequireOpen();
    const auto& blocks = mDocument.AllBlocks();
    if (index < 0 || static_cast<std::size_t>(index) >= blocks.size()) {
        throw host_failure::KeyNotFound("block " + std::to_string(index) + " of " +
                                        std::to_string(blocks.size()));
    }
    return blocks[static_cast<std::size_t>(index)].get();
}

AcadBlock* HostBlocks::Item(std::string_view name) {
    mDocument.RequireOpen();
    HostBlock* block = mDocument.FindBlock(name);
    if (block == nullptr) throw host_failure::KeyNotFound("block \"" + std::string(name) + "\"");
    return block;
}

HostDocument::HostDocument(HostApplication& application)
    : mApplication(application),
      mStore(std::make_unique<EntityStore>()),
      mNextHandle(FirstHandle),
      mLayers(*this),
      mGroups(*this),
      mSets(*this),
      mBlockTable(*this),
      mUtility(*this),
      mPrevious(*this) {
    BlockData space;
    space.name = "*Model_Space";
    space.layoutName = "Model";
    mBlocks.push_back(std::make_unique<HostBlock>(*this, space));
    space.name = "*Paper_Space";
    space.layoutName = "Layout1";
    mBlocks.push_back(std::make_unique<HostBlock>(*this, space));
    LayerData zero;
    zero.name = "0";
    mCurrentLayer = &mLayers.Put(std::move(zero));
}

HostDocument::~HostDocument() = default;

void HostDocument::RequireOpen() const {
    if (mClosed) throw host_failure::WasErased("the drawing " + mFullName + " was closed");
}

AcadApplication& HostDocument::Application() { return mApplication; }
std::string HostDocument::Name() const { return NameWithoutFolder(mFullName); }
std::string HostDocument::FullName() const { return mFullName; }

AcadSelectionSets& HostDocument::SelectionSets() {
    RequireOpen();
    return mSets;
}

AcadBlock& HostDocument::ModelSpace() {
    RequireOpen();
    return Model();
}

AcadBlock& HostDocument::PaperSpace() {
    RequireOpen();
    return Paper();
}

AcadBlocks& HostDocument::Blocks() {
    RequireOpen();
    return mBlockTable;
}

AcadGroups& HostDocument::Groups() {
    RequireOpen();
    return mGroups;
}

AcadLayers& HostDocument::Layers() {
    RequireOpen();
    return mLayers;
}

AcadUtility& HostDocument::Utility() {
    RequireOpen();
    return mUtility;
}

AcadObject* HostDocument::HandleToObject(std::string_view handle) {
    RequireOpen();
    const std::optional<HandleValue> value = HandleFromText(handle);
    return value ? FindEntity(*value) : nullptr;
}

void HostDocument::SendCommand(std::string_view text) {
    RequireOpen();
    CommandLinePort* commandLine = mApplication.CommandLine();
    if (commandLine == nullptr) throw host_failure::NotPossible("this host has no command line");
    commandLine->Send(*this, text);
}

void HostDocument::Close(bool saveChanges) {
    RequireOpen();
    if (saveChanges) Save();
    mApplication.CloseDocument(*this);
}

ActiveSpaceKind HostDocument::ActiveSpace() const {
    RequireOpen();
    return mSpace;
}

void HostDocument::SetActiveSpace(ActiveSpaceKind space) {
    RequireOpen();
    mSpace = space;
    mMSpace = false;
}

bool HostDocument::MSpace() const {
    RequireOpen();
    return CurrentViewport() != nullptr;
}

void HostDocument::SetMSpace(bool on) {
    RequireOpen();
    if (mSpace == ActiveSpaceKind::ModelSpace)
        throw host_failure::NotPossible("model space is entered from a viewport of paper space");
    if (on) {
        auto* viewport = dynamic_cast<HostViewport*>(ActivePViewport());
        if (viewport == nullptr) throw host_failure::NotPossible("paper space has no viewport");
        mViewport = viewport;
    }
    mMSpace = on;
}

AcadPViewport* HostDocument::ActivePViewport() {
    RequireOpen();
    if (mViewport != nullptr && !mViewport->Erased() && mViewport->On()) return mViewport;
    HostViewport* off = nullptr;
    for (HostEntity* entity : Paper().Entities()) {
        auto* viewport = dynamic_cast<HostViewport*>(entity);
        if (viewport == nullptr || viewport->IsSheet()) continue;
        if (viewport->On()) return viewport;
        if (off == nullptr) off = viewport;
    }
    return off;
}

void HostDocument::SetActivePViewport(AcadPViewport& viewport) {
    RequireOpen();
    const std::span<HostEntity* const> sheet = Paper().Entities();
    auto* own = dynamic_cast<HostViewport*>(&viewport);
    if (own == nullptr || own->IsSheet() || std::find(sheet.begin(), sheet.end(), own) == sheet.end())
        throw host_failure::InvalidArgument("no viewport of this drawing");
    if (!own->On()) throw host_failure::NotPossible("a viewport that is off can't be made current");
    mViewport = own;
}

HostViewport* HostDocument::CurrentViewport() const {
    if (!mMSpace || mViewport == nullptr || mViewport->Erased()) return nullptr;
    return mViewport;
}

AcadLayer* HostDocument::ActiveLayer() {
    RequireOpen();
    return mCurrentLayer;
}

void HostDocument::SetActiveLayer(AcadLayer& layer) {
    RequireOpen();
    HostLayer* own = mLayers.Find(layer.Name());
    if (own == nullptr || own != dynamic_cast<HostLayer*>(&layer))
        throw host_failure::InvalidArgument("a layer of another drawing");
    if (own->Freeze()) throw host_failure::NotPossible("a frozen layer can't be made current");
    mCurrentLayer = own;
}

std::string HostDocument::ActiveLayout() const {
    RequireOpen();
    const std::size_t space = mSpace == ActiveSpaceKind::ModelSpace ? 0 : 1;
    return mBlocks[space]->Record().layoutName;
}

std::array<Point3, 3> HostDocument::ActiveUCS() const {
    RequireOpen();
    return {mTables.ucs.origin, mTables.ucs.xAxis, mTables.ucs.yAxis};
}

void HostDocument::SetActiveUcs(const Point3& origin, const Point3& xAxis, const Point3& yAxis) {
    RequireOpen();
    const Similarity frame = Similarity::FromFrame(origin, xAxis, yAxis);
    mTables.ucs.origin = origin;
    mTables.ucs.xAxis = frame.Direction({1, 0, 0});
    mTables.ucs.yAxis = frame.Direction({0, 1, 0});
}

Similarity HostDocument::UcsToWorld() const {
    return Similarity::FromFrame(mTables.ucs.origin, mTables.ucs.xAxis, mTables.ucs.yAxis);
}

HostBlock& HostDocument::CurrentSpace() {
    return mSpace == ActiveSpaceKind::ModelSpace || CurrentViewport() != nullptr ? Model() : Paper();
}

HostBlock* HostDocument::FindBlock(std::string_view name) const {
    const auto found = std::find_if(mBlocks.begin(), mBlocks.end(), [&](const auto& block) {
        return EqualsIgnoreCase(block->Record().name, name);
    });
    return found == mBlocks.end() ? nullptr : found->get();
}

HostBlock& HostDocument::AddBlock(BlockData record) {
    RequireOpen();
    if (FindBlock(record.name) != nullptr) throw host_failure::DuplicateKey("block \"" + record.name + "\"");
    const std::string_view name = record.name;
    RequireTableName(name.starts_with("*") ? name.substr(1) : name, "block");
    mBlocks.push_back(std::make_unique<HostBlock>(*this, std::move(record)));
    return *mBlocks.back();
}

HostEntity* HostDocument::FindEntity(HandleValue handle) const {
    const auto found = mByHandle.find(handle);
    return found == mByHandle.end() ? nullptr : found->second;
}

void HostDocument::SetPreviousSelection(std::span<HostEntity* const> entities) {
    RequireOpen();
    for (const HostEntity* entity : entities) {
        entity->RequireAlive();
        if (&entity->Document() != this) throw host_failure::InvalidArgument("an entity of another drawing");
    }
    // The entities may be the present selection itself.
    const std::vector<HostEntity*> chosen(entities.begin(), entities.end());
    mPrevious.Clear();
    for (HostEntity* entity : chosen) mPrevious.Add(*entity);
}

bool HostDocument::HasLinetype(std::string_view name) const {
    for (const std::string_view standard : {"ByLayer", "ByBlock", "Continuous"})
        if (EqualsIgnoreCase(name, standard)) return true;
    return std::any_of(mTables.linetypes.begin(), mTables.linetypes.end(),
                       [&](const LinetypeData& one) { return EqualsIgnoreCase(one.name, name); });
}

std::string HostDocument::RegisterApplication(std::string_view name) {
    for (const std::string& known : mTables.applications)
        if (EqualsIgnoreCase(known, name)) return known;
    mTables.applications.emplace_back(name);
    return mTables.applications.back();
}

HandleValue HostDocument::TakeHandle(HandleValue wanted) {
    if (wanted == 0 || mByHandle.contains(wanted)) return mNextHandle++;
    mNextHandle = std::max(mNextHandle, wanted + 1);
    return wanted;
}

void HostDocument::Register(HostEntity& entity) { mByHandle[entity.HandleNumber()] = &entity; }

void HostDocument::NoteErased(const HostEntity& entity) {
    mByHandle.erase(entity.HandleNumber());
    ++mErasures;
}

void HostDocument::Empty() {
    mClosed = true;
    mViewport = nullptr;
    ++mErasures;
    mPrevious.Clear();
    mByHandle.clear();
    mBlocks.clear();
    mPurgedBlocks.clear();
    mStore.reset();
    mTables = DrawingData();
}

}  // namespace brenvik
