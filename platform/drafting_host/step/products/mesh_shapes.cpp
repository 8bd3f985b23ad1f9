// A product leads to its shape by what defines it, and from one shape to another by relations.
#include "drafting_host/step/products/mesh_shapes.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_set>

#include "drafting_host/step/products/step_notes.h"
#include "drafting_host/step/products/usage_tree.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

bool IsMesh(const Statement& statement) {
    return statement.kind.starts_with("TESSELLATED_SHAPE_REPRESENTATION");
}

bool IsRelation(const Statements& statements, const Statement& statement) {
    if (statement.kind == "SHAPE_DEFINITION_REPRESENTATION" ||
        statement.kind == "SHAPE_REPRESENTATION_RELATIONSHIP")
        return true;
    return statement.kind.empty() &&
           TextOf(statements, statement).find("SHAPE_REPRESENTATION_RELATIONSHIP") != std::string_view::npos;
}

bool RefersToOne(const Statements& statements, const Statement& statement,
                 const std::unordered_set<int>& numbers) {
    return std::ranges::any_of(statements.ReferencesOf(statement), [&](const Reference& reference) {
        return numbers.contains(reference.number);
    });
}

}  // namespace

std::vector<const Statement*> MeshRelations(const Statements& statements) {
    std::unordered_set<int> meshes;
    for (const Statement& statement : statements.All())
        if (IsMesh(statement)) meshes.insert(statement.number);
    std::vector<const Statement*> found;
    if (meshes.empty()) return found;
    std::unordered_set<int> relations;
    for (const Statement& statement : statements.All()) {
        if (!IsRelation(statements, statement) || !RefersToOne(statements, statement, meshes)) continue;
        found.push_back(&statement);
        relations.insert(statement.number);
    }
    for (const Statement& statement : statements.All())
        if (statement.kind == "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION" &&
            RefersToOne(statements, statement, relations))
            found.push_back(&statement);
    return found;
}

void NoteMeshShapes(const Statements& statements, CodePage codePage, StepDocument& document) {
    const auto relations = MeshRelations(statements);
    if (relations.empty()) return;
    const UsageTree tree(statements);
    std::size_t beside = 0;
    std::string first;
    for (const Statement* relation : relations) {
        const auto ends = statements.ReferencesOf(*relation);
        if (relation->kind != "SHAPE_DEFINITION_REPRESENTATION" || ends.empty()) continue;
        const Statement* const shape = statements.Find(ends[0].number);
        if (shape == nullptr || statements.ReferencesOf(*shape).empty()) continue;
        const int definition = statements.ReferencesOf(*shape)[0].number;
        const std::string name = ProductName(statements, definition, codePage);
        if (!tree.HoldsBodies(definition)) {
            document.notes.push_back({"part \"" + name + "\" (" + Shown(definition) +
                                          ") is left out: its shape is made of triangles",
                                      statements.LineAt(relation->place)});
        } else if (beside++ == 0) {
            first = name;
        }
    }
    if (beside > 0)
        document.notes.push_back({"shapes made of triangles are passed over beside the solids of " +
                                      std::to_string(beside) + " part(s), the first one \"" + first + "\"",
                                  0, false});
}

}  // namespace brenvik::step
