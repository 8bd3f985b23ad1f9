// A drawing in memory: entities with extended data and boxes, selection sets, and a previous selection that
// a test sets. What no test needs refuses with a failure of its own.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/letter_case.h"
#include "session/ports/host_interface.h"

namespace brenvik::fakes {

[[noreturn]] inline void Refuse(const char* operation) { throw Failure(445, "FakeHost", operation); }

class FakeEntity : public AcadEntity {
  public:
    FakeEntity(std::string entityHandle, std::string name, std::int32_t id)
        : handle(std::move(entityHandle)), objectName(std::move(name)), objectId(id) {}

    std::string layer = "0";
    Box3 box;
    std::map<std::string, std::string> data;
    /// Each SetXData call, as "KEY" for a clearing one and "KEY=value" for a setting one.
    std::vector<std::string> writes;
    std::optional<Failure> failOnData, failOnBox, failOnLayer;
    /// Fails each SetXData call, as for an entity on a locked layer.
    std::optional<Failure> failOnWrite;
    /// Extended data of this application are an application entry alone.
    std::string bareApplication;
    std::map<std::string, XDataValue> otherData;

    std::string Handle() const override { return handle; }
    std::string_view ObjectName() const override { return objectName; }
    std::int32_t ObjectID() const override { return objectId; }
    void GetXData(std::string_view appName, std::vector<std::int16_t>& types,
                  std::vector<XDataValue>& values) const override {
        if (failOnData) throw *failOnData;
        types.clear();
        values.clear();
        const std::string key(appName);
        if (data.contains(key)) {
            types = {1001, 1000};
            values = {key, data.at(key)};
        } else if (otherData.contains(key)) {
            // Other programs may keep more than one item.
            types = {1001, 1040, 1000};
            values = {key, otherData.at(key), std::string("more")};
        } else if (key == bareApplication) {
            types = {1001};
            values = {key};
        }
    }
    void SetXData(std::span<const std::int16_t> types, std::span<const XDataValue> values) override {
        if (types.empty() || types[0] != 1001) Refuse("SetXData");
        if (failOnWrite) throw *failOnWrite;
        const std::string key = std::get<std::string>(values[0]);
        if (values.size() == 1) {
            data.erase(key);
            writes.push_back(key);
            return;
        }
        const std::string text = std::get<std::string>(values[1]);
        if (text.size() > XDataTextLimit) throw Failure(-2145386445, "FakeHost", "Invalid input");
        data[key] = text;
        writes.push_back(key + "=" + text);
    }
    void Delete() override { erased = true; }

    std::string Layer() const override {
        if (failOnLayer) throw *failOnLayer;
        return layer;
    }
    void SetLayer(std::string_view name) override { layer = name; }
    std::string Linetype() const override { return "ByLayer"; }
    void SetLinetype(std::string_view) override {}
    double LinetypeScale() const override { return 1; }
    void SetLinetypeScale(double) override {}
    bool Visible() const override { return visible; }
    void SetVisible(bool on) override { visible = on; }
    int Color() const override { return 256; }
    void SetColor(int) override {}
    void Highlight(bool on) override { highlighted = on; }
    void Update() override {}
    AcadEntity* Copy() override { Refuse("Copy"); }
    void Move(const Point3&, const Point3&) override { Refuse("Move"); }
    void Rotate(const Point3&, double) override { Refuse("Rotate"); }
    void Rotate3D(const Point3&, const Point3&, double) override { Refuse("Rotate3D"); }
    AcadEntity* Mirror(const Point3&, const Point3&) override { Refuse("Mirror"); }
    AcadEntity* Mirror3D(const Point3&, const Point3&, const Point3&) override { Refuse("Mirror3D"); }
    void ScaleEntity(const Point3&, double) override { Refuse("ScaleEntity"); }
    void TransformBy(const Matrix4&) override { Refuse("TransformBy"); }
    Box3 GetBoundingBox() const override {
        if (failOnBox) throw *failOnBox;
        return box;
    }
    std::vector<Point3> IntersectWith(const AcadEntity&, ExtendOption) const override { return {}; }

    bool erased = false, visible = true, highlighted = false;

  private:
    std::string handle, objectName;
    std::int32_t objectId;
};

class FakeDocument;

class FakeSelectionSet : public AcadSelectionSet {
  public:
    FakeSelectionSet(FakeDocument& owner, std::string setName) : document(owner), name(std::move(setName)) {}
    std::vector<AcadEntity*> members;

    std::string Name() const override { return name; }
    int Count() const override { return static_cast<int>(members.size()); }
    AcadEntity* Item(int index) override { return members.at(static_cast<std::size_t>(index)); }
    void Highlight(bool) override {}
    void Erase() override {}
    void Update() override {}
    void AddItems(std::span<AcadEntity* const> items) override {
        members.insert(members.end(), items.begin(), items.end());
    }
    void RemoveItems(std::span<AcadEntity* const>) override { Refuse("RemoveItems"); }
    void Clear() override { members.clear(); }
    void Select(SelectMode mode) override;
    void SelectAtPoint(const Point3&) override { Refuse("SelectAtPoint"); }
    void SelectByPolygon(std::span<const Point3>) override { Refuse("SelectByPolygon"); }
    void SelectOnScreen() override { Refuse("SelectOnScreen"); }
    void Delete() override;

  private:
    FakeDocument& document;
    std::string name;
};

class FakeSelectionSets : public AcadSelectionSets {
  public:
    explicit FakeSelectionSets(FakeDocument& owner) : document(owner) {}
    std::vector<std::unique_ptr<FakeSelectionSet>> sets;
    std::optional<Failure> failOnAdd;

    int Count() const override { return static_cast<int>(sets.size()); }
    AcadSelectionSet* Item(std::string_view name) override {
        for (const auto& set : sets)
            if (EqualsIgnoreCase(set->Name(), name)) return set.get();
        throw Failure(-2145386476, "FakeHost", "Key not found");
    }
    AcadSelectionSet* Add(std::string_view name) override {
        if (failOnAdd) throw *failOnAdd;
        for (const auto& set : sets)
            if (EqualsIgnoreCase(set->Name(), name)) throw Failure(-2145386431, "FakeHost", "Duplicate key");
        sets.push_back(std::make_unique<FakeSelectionSet>(document, std::string(name)));
        return sets.back().get();
    }
    void Remove(const FakeSelectionSet* set) {
        std::erase_if(sets, [set](const auto& owned) { return owned.get() == set; });
    }

  private:
    FakeDocument& document;
};

/// Model space as the entities that are not erased; a document's own entities stand in it.
class FakeModelSpace : public AcadBlock {
  public:
    explicit FakeModelSpace(std::vector<std::unique_ptr<FakeEntity>>& modelEntities)
        : entities(modelEntities) {}
    int walks = 0;

    std::string Name() const override { return "*Model_Space"; }
    int Count() const override {
        return static_cast<int>(std::count_if(entities.begin(), entities.end(),
                                              [](const auto& entity) { return !entity->erased; }));
    }
    AcadEntity* Item(int) override { Refuse("Item"); }
    void ForEach(const std::function<void(AcadEntity&)>& visit) override {
        ++walks;
        for (const auto& entity : entities)
            if (!entity->erased) visit(*entity);
    }
    AcadLine* AddLine(const Point3&, const Point3&) override { Refuse("AddLine"); }
    AcadCircle* AddCircle(const Point3&, double) override { Refuse("AddCircle"); }
    AcadArc* AddArc(const Point3&, double, double, double) override { Refuse("AddArc"); }
    AcadLWPolyline* AddLightWeightPolyline(std::span<const double>) override {
        Refuse("AddLightWeightPolyline");
    }
    Acad3DPolyline* Add3DPoly(std::span<const double>) override { Refuse("Add3DPoly"); }
    std::vector<AcadRegion*> AddRegion(std::span<AcadEntity* const>) override { Refuse("AddRegion"); }
    Acad3DSolid* AddExtrudedSolid(AcadRegion&, double, double) override { Refuse("AddExtrudedSolid"); }
    Acad3DSolid* AddBox(const Point3&, double, double, double) override { Refuse("AddBox"); }
    Acad3DSolid* AddCylinder(const Point3&, double, double) override { Refuse("AddCylinder"); }
    AcadPViewport* AddPViewport(const Point3&, double, double) override { Refuse("AddPViewport"); }

  private:
    std::vector<std::unique_ptr<FakeEntity>>& entities;
};

class FakeApplication;

class FakeDocument : public AcadDocument {
  public:
    explicit FakeDocument(AcadApplication& owner) : selectionSets(*this), application(owner) {}

    std::vector<std::unique_ptr<FakeEntity>> entities;
    std::vector<AcadEntity*> previousSelection;
    FakeModelSpace modelSpace{entities};
    FakeSelectionSets selectionSets;
    /// The mode of the last Select call.
    std::optional<SelectMode> lastMode;
    bool failOnUnknownHandle = false;

    FakeEntity& AddEntity(const std::string& handle, const std::string& objectName = "AcDb3dSolid") {
        const auto id = static_cast<std::int32_t>(entities.size() + 1);
        entities.push_back(std::make_unique<FakeEntity>(handle, objectName, id));
        previousSelection.push_back(entities.back().get());
        return *entities.back();
    }

    AcadApplication& Application() override { return application; }
    std::string Name() const override { return "job.dxf"; }
    std::string FullName() const override { return "C:\\jobs\\job.dxf"; }
    AcadSelectionSets& SelectionSets() override { return selectionSets; }
    AcadBlock& ModelSpace() override { return modelSpace; }
    AcadBlock& PaperSpace() override { Refuse("PaperSpace"); }
    AcadBlocks& Blocks() override { Refuse("Blocks"); }
    AcadGroups& Groups() override { Refuse("Groups"); }
    AcadLayers& Layers() override { Refuse("Layers"); }
    AcadUtility& Utility() override { Refuse("Utility"); }
    AcadObject* HandleToObject(std::string_view handle) override {
        for (const auto& entity : entities)
            if (entity->Handle() == handle && !entity->erased) return entity.get();
        if (failOnUnknownHandle) throw Failure(-2145386420, "FakeHost", "Unknown handle");
        return nullptr;
    }
    void SendCommand(std::string_view) override { Refuse("SendCommand"); }
    void Save() override { Refuse("Save"); }
    void SaveAs(std::string_view, SaveAsKind) override { Refuse("SaveAs"); }
    void Wblock(std::string_view, AcadSelectionSet&) override { Refuse("Wblock"); }
    void PurgeAll() override { Refuse("PurgeAll"); }
    void Close(bool) override { Refuse("Close"); }
    ActiveSpaceKind ActiveSpace() const override { return ActiveSpaceKind::ModelSpace; }
    void SetActiveSpace(ActiveSpaceKind) override { Refuse("SetActiveSpace"); }
    bool MSpace() const override { return true; }
    void SetMSpace(bool) override { Refuse("SetMSpace"); }
    AcadPViewport* ActivePViewport() override { return nullptr; }
    void SetActivePViewport(AcadPViewport&) override { Refuse("SetActivePViewport"); }
    AcadLayer* ActiveLayer() override { return nullptr; }
    void SetActiveLayer(AcadLayer&) override { Refuse("SetActiveLayer"); }
    std::string ActiveLayout() const override { return "Model"; }
    std::array<Point3, 3> ActiveUCS() const override { return {Point3{}, {1, 0, 0}, {0, 1, 0}}; }

  private:
    AcadApplication& application;
};

inline void FakeSelectionSet::Select(SelectMode mode) {
    document.lastMode = mode;
    members.insert(members.end(), document.previousSelection.begin(), document.previousSelection.end());
}

inline void FakeSelectionSet::Delete() { document.selectionSets.Remove(this); }

class FakeApplication : public AcadApplication {
  public:
    FakeApplication() { OpenDocument(); }
    std::vector<std::unique_ptr<FakeDocument>> documents;
    /// Nothing: no document is open.
    FakeDocument* active = nullptr;

    FakeDocument& OpenDocument() {
        documents.push_back(std::make_unique<FakeDocument>(*this));
        active = documents.back().get();
        return *active;
    }
    AcadDocument* ActiveDocument() override {
        if (active == nullptr) throw Failure(-2145320900, "FakeHost", "No document is open");
        return active;
    }
    AcadDocuments& Documents() override { Refuse("Documents"); }
    WindowStateKind WindowState() const override { return WindowStateKind::Normal; }
    void SetWindowState(WindowStateKind) override {}
    void ZoomExtents() override {}
};

}  // namespace brenvik::fakes
