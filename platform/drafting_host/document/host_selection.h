// Named selection sets of a document.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <memory>
#include <string>
#include <vector>

#include "drafting_host/document/entity_list.h"
#include "session/ports/host_interface.h"

namespace brenvik {

class HostSelectionSets;

class HostSelectionSet final : public AcadSelectionSet {
  public:
    HostSelectionSet(HostSelectionSets& sets, HostDocument& document, std::string name)
        : mSets(sets), mDocument(document), mName(std::move(name)), mList(document) {}

    std::string Name() const override;
    int Count() const override;
    AcadEntity* Item(int index) override;
    void Highlight(bool on) override;
    /// Members on locked layers stay, in the drawing and in the set.
    void Erase() override;
    void Update() override;
    /// Fails for an erased entity or one of another document, and then adds none.
    void AddItems(std::span<AcadEntity* const> items) override;
    void RemoveItems(std::span<AcadEntity* const> items) override;
    void Clear() override;
    /// Locked and frozen layers are no hindrance. All takes model space, then paper space, in drawing order.
    void Select(SelectMode mode) override;
    /// The visible entities of the current space whose box holds the point, in the plan view: Z is
    /// passed over.
    void SelectAtPoint(const Point3& point) override;
    /// The visible entities of the current space whose box lies within the polygon in the plan view.
    void SelectByPolygon(std::span<const Point3> polygon) override;
    void SelectOnScreen() override;
    void Delete() override;

    /// The living members in order.
    std::span<HostEntity* const> Members() const;

  private:
    void RequireAlive() const;
    void AddWhere(const std::function<bool(const Box3&)>& wanted);

    HostSelectionSets& mSets;
    HostDocument& mDocument;
    std::string mName;
    EntityList mList;
    bool mDeleted = false;
};

class HostSelectionSets final : public AcadSelectionSets {
  public:
    explicit HostSelectionSets(HostDocument& document) : mDocument(document) {}
    int Count() const override;
    AcadSelectionSet* Item(std::string_view name) override;
    AcadSelectionSet* Add(std::string_view name) override;
    /// Takes a set out of the collection; it stays in store for pointers that point at it.
    void Remove(const HostSelectionSet& set);

  private:
    HostSelectionSet* Find(std::string_view name) const;

    HostDocument& mDocument;
    std::vector<std::unique_ptr<HostSelectionSet>> mStore;
    std::vector<HostSelectionSet*> mSets;
};

}  // namespace brenvik
