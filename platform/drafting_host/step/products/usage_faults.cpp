// A product is known by the number of its definition.
#include "drafting_host/step/products/usage_faults.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

/// Relationships that place a shape in another one.
bool IsPlacing(const Statements& statements, const Statement& statement) {
    if (!statement.kind.empty()) return false;
    const std::string_view text = TextOf(statements, statement);
    return text.find("REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION") != text.npos &&
           text.find("SHAPE_REPRESENTATION_RELATIONSHIP") != text.npos;
}

}  // namespace

void NoteDoubtfulUsages(const Statements& statements, StepDocument& document) {
    std::unordered_map<int, int> placings;  // of usages, the first
    std::unordered_set<int> relationships;
    const auto tell = [&](const Statement& statement, const std::string& what) {
        document.notes.push_back({what, statements.LineAt(statement.place)});
    };
    bool hasUsages = false;
    for (const Statement& statement : statements.All()) {
        hasUsages = hasUsages || statement.kind == "NEXT_ASSEMBLY_USAGE_OCCURRENCE";
        if (statement.kind == "PROMISSORY_USAGE_OCCURRENCE")
            tell(statement,
                 "the assembly usage " + Shown(statement.number) +
                     " is of a kind that isn't read (PROMISSORY_USAGE_OCCURRENCE): its part may be "
                     "missing or lie in another place");
        if (statement.kind != "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION") continue;
        const auto ends = statements.ReferencesOf(statement);
        if (ends.size() < 2) continue;
        relationships.insert(ends[0].number);
        const int usage = FirstOf(statements, ends[1].number);
        const auto [first, fresh] = placings.emplace(usage, statement.number);
        if (!fresh)
            tell(statement, "the assembly usage " + Shown(usage) + " has two places, " +
                                Shown(first->second) + " and " + Shown(statement.number) +
                                ": its part may be missing or lie in another place");
    }
    if (!hasUsages) return;
    for (const Statement& statement : statements.All())
        if (!relationships.contains(statement.number) && IsPlacing(statements, statement))
            tell(statement, "the place " + Shown(statement.number) +
                                " belongs to no assembly usage: a part may be missing");
}

}  // namespace brenvik::step
