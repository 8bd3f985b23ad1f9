// Shapes list their items; a solid names its shell first.
#include "drafting_host/step/products/double_bodies.h"

#include <map>
#include <string>

#include "drafting_host/step/texts/statement_roles.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {

void NoteDoubleBodies(const Statements& statements, StepDocument& document) {
    for (const Statement& shape : statements.All()) {
        if (!shape.kind.ends_with("SHAPE_REPRESENTATION")) continue;
        std::map<int, int> solidOf;  // the first, by its shell
        for (const Reference& item : statements.ReferencesOf(shape)) {
            const Statement* solid = statements.Find(item.number);
            if (solid == nullptr || !IsSolid(solid->kind)) continue;
            const auto shells = statements.ReferencesOf(*solid);
            if (shells.empty()) continue;
            const auto [first, fresh] = solidOf.emplace(shells[0].number, item.number);
            if (fresh) continue;
            const std::string what = first->second == item.number
                                         ? "the solid " + Shown(item.number) + " stands twice in the shape "
                                         : "the solids " + Shown(first->second) + " and " +
                                               Shown(item.number) + " have one shell in the shape ";
            document.notes.push_back(
                {what + Shown(shape.number) + ": it is listed as two parts", statements.LineAt(shape.place)});
        }
    }
}

}  // namespace brenvik::step
