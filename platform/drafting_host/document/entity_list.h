// An ordered list of entities without repetition, from which erased entities drop out by themselves:
// what selection sets, groups and the previous selection are.
#pragma once

#include <cstdint>
#include <span>
#include <unordered_set>
#include <vector>

namespace brenvik {

class HostDocument;
class HostEntity;

class EntityList {
  public:
    explicit EntityList(const HostDocument& document) : mDocument(&document) {}

    /// Adds behind the others unless it is there.
    void Add(HostEntity& entity);
    void Remove(const HostEntity& entity);
    void Clear();
    /// The living members in order. Good until the next change.
    std::span<HostEntity* const> Members() const;
    int Count() const { return static_cast<int>(Members().size()); }
    /// By position from 0; throws Failure outside.
    HostEntity& At(int index) const;

  private:
    const HostDocument* mDocument;
    mutable std::vector<HostEntity*> mMembers;
    mutable std::unordered_set<const HostEntity*> mHeld;
    mutable std::uint64_t mSeenErasures = 0;
};

}  // namespace brenvik
