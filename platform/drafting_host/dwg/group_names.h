// Groups: their names, which stand in a dictionary and not in the groups themselves, and their members, which
// name their groups in turn.
#pragma once

#include <functional>
#include <unordered_map>
#include <vector>

#include "drafting_host/dwg/links.h"
#include "drafting_host/dwg/missing_records.h"
#include "drafting_host/dwg/names.h"

namespace brenvik::dwg {

/// Gives each group the name that the dictionary has for it; one without a name of its own becomes anonymous
/// ("*A1"). Gives the handles of these.
std::vector<HandleValue> NameGroups(std::vector<GroupData>& groups, const Dictionary& dictionary);

/// Reports members that are none, and those that stand there twice, of which one stays. Others that aren't
/// known have been left out.
void CheckMembers(GroupData& group, const std::function<bool(HandleValue)>& isKnown, Links& links,
                  Reading& reading);

/// What entities say of the groups in which they are: among those that hear of their changes stand these.
class GroupsOfEntities {
  public:
    /// Of an entity whose common part has been read.
    void Add(const Object& entity) { mHearers[entity.handle] = entity.reactors; }
    /// Reports where a group and an entity disagree. A group that none of its members names comes from a
    /// program that doesn't keep these references.
    void Check(const std::vector<GroupData>& groups, Reading& reading) const;

  private:
    bool Names(HandleValue entity, HandleValue group) const;
    void CheckGroup(const GroupData& group, Reading& reading) const;

    std::unordered_map<HandleValue, std::vector<HandleValue>> mHearers;
};

/// Names and checks all groups of a drawing, and hands them over.
void TakeGroups(dwg::Names& names, const Dictionary& dictionary, const GroupsOfEntities& ofEntities,
                const std::function<bool(HandleValue)>& isKnown, Links& links, Reading& reading);

}  // namespace brenvik::dwg
