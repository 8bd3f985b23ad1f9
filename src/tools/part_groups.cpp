// Named groups by sub assembly. Every group of the drawing is dissolved first, so that the groups are what
// the selection says and nothing else.
#include <string>
#include <vector>

#include "base/letter_case.h"
#include "base/skip.h"
#include "base/text.h"
#include "base/wildcard.h"
#include "cnc/drawing/drawing_walk.h"
#include "parts/mautocad.h"
#include "session/session.h"
#include "tools/change_or_tell.h"
#include "tools/drawing_tools.h"

namespace brenvik::commands {

namespace {

bool GroupExists(AcadDocument& drawing, std::string_view name) {
    AcadGroups& groups = drawing.Groups();
    for (int i = 0; i < groups.Count(); ++i)
        if (MatchesWildcards(groups.Item(i)->Name(), name, FileWildcards)) return true;
    return false;
}

/// A group without members has nothing to dissolve.
std::vector<std::string> NamesOfFilledGroups(AcadDocument& drawing) {
    std::vector<std::string> names;
    AcadGroups& groups = drawing.Groups();
    for (int i = 0; i < groups.Count(); ++i)
        if (groups.Item(i)->Count() > 0) names.push_back(groups.Item(i)->Name());
    return names;
}

}  // namespace

void BVGroup(AcadApplication&) {
    AcadDocument& drawing = *TheSession().AcadDoc;
    AcadSelectionSet& selected = FreshSet(drawing, "prev");
    selected.Select(SelectMode::Previous);
    for (const std::string& name : NamesOfFilledGroups(drawing))
        if (GroupExists(drawing, name)) drawing.SendCommand("-group\re\r" + name + "\r");
    for (int i = 0; i < selected.Count(); ++i) {
        AcadEntity* entity = selected.Item(i);
        std::string name;
        Skip([&] { name = FoldUpper(mAutoCAD::PartDataOf(*entity, "SubAssembly")); });
        // A part without a sub assembly has no group; neither has one whose name the host refuses.
        if (IsBlank(name)) continue;
        ChangeOrTell(*entity, [&](AcadEntity&) {
            drawing.Groups().Add(name)->AppendItems(std::span<AcadEntity* const>(&entity, 1));
        });
    }
}

}  // namespace brenvik::commands
