// Selection sets.
#include "drafting_host/document/host_selection.h"

#include <algorithm>

#include "base/letter_case.h"
#include "base/text.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/host_application.h"

namespace brenvik {
namespace {

/// Checks all before any is taken, so that a failing call leaves the list as it was.
std::vector<HostEntity*> Checked(const HostDocument& document, std::span<AcadEntity* const> items) {
    std::vector<HostEntity*> result;
    for (AcadEntity* item : items) {
        HostEntity& entity = HostEntityOf(item);
        entity.RequireAlive();
        if (&entity.Document() != &document)
            throw host_failure::InvalidArgument("an entity of another drawing");
        result.push_back(&entity);
    }
    return result;
}

/// By the even-odd rule in the plan view.
bool Inside(std::span<const Point3> polygon, double x, double y) {
    bool inside = false;
    for (std::size_t i = 0, last = polygon.size() - 1; i < polygon.size(); last = i++) {
        const Point3& a = polygon[i];
        const Point3& b = polygon[last];
        if ((a.y > y) != (b.y > y) && x < (b.x - a.x) * (y - a.y) / (b.y - a.y) + a.x) inside = !inside;
    }
    return inside;
}

}  // namespace

void HostSelectionSet::RequireAlive() const {
    mDocument.RequireOpen();
    if (mDeleted) throw host_failure::WasErased("selection set \"" + mName + "\"");
}

std::span<HostEntity* const> HostSelectionSet::Members() const {
    RequireAlive();
    return mList.Members();
}

std::string HostSelectionSet::Name() const {
    RequireAlive();
    return mName;
}

int HostSelectionSet::Count() const {
    RequireAlive();
    return mList.Count();
}

AcadEntity* HostSelectionSet::Item(int index) {
    RequireAlive();
    return &mList.At(index);
}

void HostSelectionSet::Highlight(bool on) {
    for (HostEntity* entity : Members()) entity->Highlight(on);
}

void HostSelectionSet::Erase() {
    const std::span<HostEntity* const> members = Members();
    const std::vector<HostEntity*> standing(members.begin(), members.end());
    for (HostEntity* entity : standing)
        if (!entity->LayerObject().Locked()) entity->Delete();
}

void HostSelectionSet::Update() {
    for (HostEntity* entity : Members()) entity->Update();
}

void HostSelectionSet::AddItems(std::span<AcadEntity* const> items) {
    RequireAlive();
    for (HostEntity* entity : Checked(mDocument, items)) mList.Add(*entity);
}

void HostSelectionSet::RemoveItems(std::span<AcadEntity* const> items) {
    RequireAlive();
    for (AcadEntity* item : items) mList.Remove(HostEntityOf(item));
}

void HostSelectionSet::Clear() {
    RequireAlive();
    mList.Clear();
}

void HostSelectionSet::Select(SelectMode mode) {
    RequireAlive();
    const auto take = [&](std::span<HostEntity* const> entities) {
        for (HostEntity* entity : entities) mList.Add(*entity);
    };
    switch (mode) {
        case SelectMode::Previous:
            take(mDocument.PreviousSelection());
            return;
        case SelectMode::Last: {
            const std::span<HostEntity* const> entities = mDocument.CurrentSpace().Entities();
            const auto last = std::find_if(entities.rbegin(), entities.rend(),
                                           [](const HostEntity* entity) { return entity->Look().visible; });
            if (last != entities.rend()) mList.Add(**last);
            return;
        }
        case SelectMode::All:
            take(mDocument.Model().Entities());
            take(mDocument.Paper().Entities());
            return;
    }
    throw host_failure::InvalidArgument("select mode " + std::to_string(static_cast<int>(mode)));
}

void HostSelectionSet::AddWhere(const std::function<bool(const Box3&)>& wanted) {
    RequireAlive();
    for (HostEntity* entity : mDocument.CurrentSpace().Entities()) {
        const LayerData& layer = entity->LayerObject().Values();
        if (!entity->Look().visible || layer.frozen || !layer.on) continue;
        try {
            if (wanted(entity->GetBoundingBox())) mList.Add(*entity);
        } catch (const Failure&) {
            // What has no extent can't be pointed at.
        }
    }
}

void HostSelectionSet::SelectAtPoint(const Point3& point) {
    AddWhere([&](const Box3& box) {
        return point.x >= box.min.x && point.x <= box.max.x && point.y >= box.min.y && point.y <= box.max.y;
    });
}

void HostSelectionSet::SelectByPolygon(std::span<const Point3> polygon) {
    if (polygon.size() < 3) throw host_failure::InvalidArgument("a polygon has three corners or more");
    AddWhere([&](const Box3& box) {
        return Inside(polygon, box.min.x, box.min.y) && Inside(polygon, box.min.x, box.max.y) &&
               Inside(polygon, box.max.x, box.min.y) && Inside(polygon, box.max.x, box.max.y);
    });
}

void HostSelectionSet::SelectOnScreen() {
    RequireAlive();
    PromptPort* prompts = mDocument.Host().Prompts();
    const auto picked = prompts == nullptr ? std::nullopt : prompts->SelectOnScreen(mDocument);
    if (!picked) throw host_failure::Cancelled("Select objects:");
    AddItems(*picked);
}

void HostSelectionSet::Delete() {
    RequireAlive();
    mDeleted = true;
    mList.Clear();
    mSets.Remove(*this);
}

int HostSelectionSets::Count() const {
    mDocument.RequireOpen();
    return static_cast<int>(mSets.size());
}

HostSelectionSet* HostSelectionSets::Find(std::string_view name) const {
    const auto found = std::find_if(mSets.begin(), mSets.end(), [&](const HostSelectionSet* set) {
        return EqualsIgnoreCase(set->Name(), name);
    });
    return found == mSets.end() ? nullptr : *found;
}

AcadSelectionSet* HostSelectionSets::Item(std::string_view name) {
    mDocument.RequireOpen();
    HostSelectionSet* set = Find(name);
    if (set == nullptr) throw host_failure::KeyNotFound("selection set \"" + std::string(name) + "\"");
    return set;
}

AcadSelectionSet* HostSelectionSets::Add(std::string_view name) {
    mDocument.RequireOpen();
    if (IsBlank(name)) throw host_failure::InvalidArgument("a selection set needs a name");
    if (Find(name) != nullptr)
        throw host_failure::DuplicateKey("selection set \"" + std::string(name) + "\"");
    mStore.push_back(std::make_unique<HostSelectionSet>(*this, mDocument, std::string(name)));
    mSets.push_back(mStore.back().get());
    return mSets.back();
}

void HostSelectionSets::Remove(const HostSelectionSet& set) { std::erase(mSets, &set); }

}  // namespace brenvik
