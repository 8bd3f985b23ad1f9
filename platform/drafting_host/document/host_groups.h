// Named groups of entities.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <memory>
#include <string>
#include <vector>

#include "drafting_host/document/entity_list.h"
#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik {

class HostGroups;

class HostGroup final : public AcadGroup {
  public:
    HostGroup(HostGroups& groups, HostDocument& document, GroupData data)
        : mGroups(groups), mDocument(document), mData(std::move(data)), mList(document) {}
    std::string Name() const override;
    int Count() const override;
    AcadEntity* Item(int index) override;
    /// Fails for an erased entity or one of another document, and then appends none.
    void AppendItems(std::span<AcadEntity* const> items) override;
    /// The members stay in the drawing.
    void Delete() override;

    std::span<HostEntity* const> Members() const { return mList.Members(); }
    /// Name, handle and description; members as handles.
    GroupData Values() const;

  private:
    void RequireAlive() const;

    HostGroups& mGroups;
    HostDocument& mDocument;
    GroupData mData;
    EntityList mList;
    bool mDeleted = false;
};

class HostGroups final : public AcadGroups {
  public:
    explicit HostGroups(HostDocument& document) : mDocument(document) {}
    int Count() const override;
    AcadGroup* Item(int index) override;
    AcadGroup* Item(std::string_view name) override;
    /// Fails for a name that a drawing's tables don't take.
    AcadGroup* Add(std::string_view name) override;

    HostGroup* Find(std::string_view name) const;
    /// A group as a file holds it; members that the drawing doesn't hold are left out.
    HostGroup& Put(GroupData data);
    const std::vector<HostGroup*>& All() const { return mGroups; }
    void Remove(const HostGroup& group);

  private:
    HostDocument& mDocument;
    std::vector<std::unique_ptr<HostGroup>> mStore;
    std::vector<HostGroup*> mGroups;
};

}  // namespace brenvik
