// An open drawing: its entities with their handles, its tables, its coordinate system, and its file.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "drafting_host/document/drawing_snapshot.h"
#include "drafting_host/document/entity_list.h"
#include "drafting_host/document/host_block.h"
#include "drafting_host/document/host_groups.h"
#include "drafting_host/document/host_layers.h"
#include "drafting_host/document/host_selection.h"
#include "drafting_host/document/host_utility.h"

namespace brenvik {

class HostApplication;

class HostBlocks final : public AcadBlocks {
  public:
    explicit HostBlocks(HostDocument& document) : mDocument(document) {}
    int Count() const override;
    AcadBlock* Item(int index) override;
    AcadBlock* Item(std::string_view name) override;

  private:
    HostDocument& mDocument;
};

class HostDocument final : public AcadDocument {
  public:
    /// An empty drawing without a name, with layer "0" and the two spaces.
    explicit HostDocument(HostApplication& application);
    ~HostDocument() override;

    AcadApplication& Application() override;
    std::string Name() const override;
    std::string FullName() const override;
    AcadSelectionSets& SelectionSets() override;
    AcadBlock& ModelSpace() override;
    AcadBlock& PaperSpace() override;
    AcadBlocks& Blocks() override;
    AcadGroups& Groups() override;
    AcadLayers& Layers() override;
    AcadUtility& Utility() override;
    AcadObject* HandleToObject(std::string_view handle) override;
    void SendCommand(std::string_view text) override;
    /// Fails for a drawing without a name, and for one read from STEP or ACIS text: its source is never
    /// overwritten, and only SaveAs gives it a file of its own.
    void Save() override;
    void SaveAs(std::string_view fileName, SaveAsKind kind) override;
    void Wblock(std::string_view fileName, AcadSelectionSet& set) override;
    void PurgeAll() override;
    void Close(bool saveChanges) override;
    ActiveSpaceKind ActiveSpace() const override;
    void SetActiveSpace(ActiveSpaceKind space) override;
    bool MSpace() const override;
    void SetMSpace(bool on) override;
    /// Null if paper space has no viewport.
    AcadPViewport* ActivePViewport() override;
    void SetActivePViewport(AcadPViewport& viewport) override;
    AcadLayer* ActiveLayer() override;
    void SetActiveLayer(AcadLayer& layer) override;
    std::string ActiveLayout() const override;
    std::array<Point3, 3> ActiveUCS() const override;

    // Beyond the object model, for the host's own commands, readers and programs.

    HostApplication& Host() const { return mApplication; }
    HostBlock& Model() { return *mBlocks[0]; }
    HostBlock& Paper() { return *mBlocks[1]; }
    /// Where new entities of commands go: paper space unless model space or one of its viewports is on.
    HostBlock& CurrentSpace();
    /// The viewport whose model space is entered, or null.
    HostViewport* CurrentViewport() const;
    /// The one that MSPACE enters next.
    void SetCurrentViewport(HostViewport& viewport) { mViewport = &viewport; }
    HostLayers& LayerTable() { return mLayers; }
    HostGroups& GroupTable() { return mGroups; }
    HostLayer& CurrentLayer() const { return *mCurrentLayer; }
    const std::vector<std::unique_ptr<HostBlock>>& AllBlocks() const { return mBlocks; }
    HostBlock* FindBlock(std::string_view name) const;
    /// A new block definition; fails for a name in use or not allowed. Anonymous names begin with "*".
    HostBlock& AddBlock(BlockData record);
    HostEntity* FindEntity(HandleValue handle) const;
    /// What mode 3 takes until it is set again.
    void SetPreviousSelection(std::span<HostEntity* const> entities);
    std::span<HostEntity* const> PreviousSelection() const { return mPrevious.Members(); }
    /// Origin, X axis and Y axis in world coordinates; the axes are made unit and square.
    void SetActiveUcs(const Point3& origin, const Point3& xAxis, const Point3& yAxis);
    /// From the user coordinate system to the world.
    Similarity UcsToWorld() const;
    std::vector<UcsData>& NamedUcs() { return mTables.namedUcs; }
    /// What was passed over or could not be taken over when the drawing was read.
    const std::vector<ReadNote>& Notes() const { return mTables.notes; }
    /// Everything but blocks, layers, groups and the coordinate system, which live in objects.
    DrawingData& Tables() { return mTables; }
    const DrawingData& Tables() const { return mTables; }
    bool HasLinetype(std::string_view name) const;
    /// Registers an application name where the drawing has none such; gives the name as first written.
    std::string RegisterApplication(std::string_view name);
    /// The drawing as plain data. Bodies without a text form are left out and reported in `problems`.
    DrawingData ToData(std::vector<std::string>& problems) const;
    /// Some entities alone, moved, with what they refer to; handles are left to the writer.
    DrawingSnapshot Extracted(std::span<HostEntity* const> entities, const Similarity& move) const;
    /// Puts a read drawing into this document, which has to be empty still.
    void TakeOver(DrawingData data);
    /// The same for a drawing that never left the memory; its shapes are shared.
    void TakeOver(const DrawingSnapshot& snapshot);
    void SetFile(std::string fullName) { mFullName = std::move(fullName); }
    /// Records that the drawing came from a file of another system.
    void MarkImported() { mImported = true; }
    /// The drawing was read from a file that holds more than is read of it (a DWG, STEP of another program):
    /// nothing here writes over that. Saving a DWG under its own name writes DXF text beside it.
    void MarkOnlyRead(std::filesystem::path original) { mOnlyRead = std::move(original); }
    /// Fails where `path` is the file of MarkOnlyRead.
    void RequireOtherThanOriginal(const std::filesystem::path& path) const;
    /// From now on what is saved of the drawing as DXF bears this program's name, by which a later saving
    /// knows that it may take its place. The drawings that a run writes for machines bear none.
    void SignSavings() { mSignsSavings = true; }
    /// The text of a saving, with that name where it is due.
    std::string Signed(std::string dxf) const;
    bool Closed() const { return mClosed; }
    void RequireOpen() const;
    /// Lets go of everything; the shell stays for pointers that point at it.
    void Empty();

    // For entities.

    EntityStore& Store() { return *mStore; }
    HandleValue TakeHandle(HandleValue wanted);  ///< `wanted` if it is free and not 0, else the next.
    void Register(HostEntity& entity);           ///< From now on found by its handle.
    void NoteErased(const HostEntity& entity);   ///< No longer found by its handle.
    /// Grows by one with every erased entity.
    std::uint64_t Erasures() const { return mErasures; }

  private:
    void TakeOver(DrawingData data, std::span<const TopoDS_Shape> shapes);
    void SaveBesideOriginal();
    void PurgeBlocks();
    void PurgeLayers();
    void PurgeStyles();

    HostApplication& mApplication;
    std::string mFullName;
    DrawingData mTables;
    std::unique_ptr<EntityStore> mStore;
    std::unordered_map<HandleValue, HostEntity*> mByHandle;
    HandleValue mNextHandle;
    std::uint64_t mErasures = 0;
    HostLayers mLayers;
    HostGroups mGroups;
    HostSelectionSets mSets;
    HostBlocks mBlockTable;
    HostUtility mUtility;
    std::vector<std::unique_ptr<HostBlock>> mBlocks;
    std::vector<std::unique_ptr<HostBlock>> mPurgedBlocks;
    HostLayer* mCurrentLayer = nullptr;
    EntityList mPrevious;
    ActiveSpaceKind mSpace = ActiveSpaceKind::ModelSpace;
    HostViewport* mViewport = nullptr;  ///< Stays in store once erased, so it may be asked.
    bool mMSpace = false;
    bool mClosed = false;
    bool mImported = false;
    bool mSignsSavings = false;
    std::filesystem::path mOnlyRead;  ///< Empty for a drawing that can be saved where it lies.
};

}  // namespace brenvik
