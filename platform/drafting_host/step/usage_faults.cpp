// A product is known by the number of its definition.
#include "drafting_host/step/usage_faults.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "drafting_host/step/step_notes.h"
#include "drafting_host/step/text_edits.h"
#include "drafting_host/step/usage_tree.h"

namespace brenvik::step {
namespace {

int FirstOf(const Statements& statements, int number) {
    const Statement* const statement = statements.Find(number);
    const bool isEmpty = statement == nullptr || statements.ReferencesOf(*statement).empty();
    return isEmpty ? 0 : statements.ReferencesOf(*statement)[0].number;
}

bool IsSolid(const Statement& statement) {
    return statement.kind == "MANIFOLD_SOLID_BREP" || statement.kind == "BREP_WITH_VOIDS" ||
           statement.kind == "FACETED_BREP";
}

class Owners {
  public:
    Owners(const Statements& statements, CodePage codePage, StepDocument& document)
        : mStatements(statements), mCodePage(codePage), mDocument(document) {}

    void Take(int shape, int definition) {
        const Statement* const statement = mStatements.Find(shape);
        if (statement == nullptr) return;
        bool isTold = false;
        for (const Reference& item : mStatements.ReferencesOf(*statement)) {
            const Statement* const solid = mStatements.Find(item.number);
            if (solid == nullptr || !IsSolid(*solid)) continue;
            const auto [owner, fresh] = mOwners.emplace(item.number, definition);
            if (fresh || owner->second == definition || isTold) continue;
            isTold = true;
            mDocument.notes.push_back({"the solid " + Shown(item.number) + " is that of the products " +
                                           NameOf(owner->second) + " and " + NameOf(definition) +
                                           ": parts may be missing or bear another one's name",
                                       mStatements.LineAt(solid->place)});
        }
    }

  private:
    std::string NameOf(int definition) const {
        return "\"" + ProductName(mStatements, definition, mCodePage) + "\" (" + Shown(definition) + ")";
    }

    const Statements& mStatements;
    CodePage mCodePage;
    StepDocument& mDocument;
    std::unordered_map<int, int> mOwners;  ///< Of solids, by their numbers.
};

/// Relationships that place a shape in another one.
bool IsPlacing(const Statements& statements, const Statement& statement) {
    if (!statement.kind.empty()) return false;
    const std::string_view text = TextOf(statements, statement);
    return text.find("REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION") != text.npos &&
           text.find("SHAPE_REPRESENTATION_RELATIONSHIP") != text.npos;
}

}  // namespace

void NoteSharedShapes(const Statements& statements, CodePage codePage, StepDocument& document) {
    const UsageTree tree(statements);
    Owners owners(statements, codePage, document);
    std::unordered_set<int> seen;
    for (const Statement& statement : statements.All()) {
        if (statement.kind != "SHAPE_DEFINITION_REPRESENTATION") continue;
        const int definition = FirstOf(statements, FirstOf(statements, statement.number));
        const Statement* const product = statements.Find(definition);
        if (product == nullptr || !product->kind.starts_with("PRODUCT_DEFINITION")) continue;
        if (product->kind == "PRODUCT_DEFINITION_SHAPE" || !seen.insert(definition).second) continue;
        for (const int shape : tree.ShapesOf(definition)) owners.Take(shape, definition);
    }
}

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
