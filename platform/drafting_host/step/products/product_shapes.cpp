// The shape of the component stands first in the relationship, that of the assembly second.
#include "drafting_host/step/products/product_shapes.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "drafting_host/step/products/step_notes.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

bool IsShape(const Statements& statements, int number) {
    const Statement* const statement = statements.Find(number);
    return statement != nullptr && statement->kind.ends_with("SHAPE_REPRESENTATION");
}

class Reader {
  public:
    explicit Reader(const Statements& statements) : mStatements(statements) {}

    /// By product definition its shape.
    std::map<int, int> All() {
        std::vector<const Statement*> placings;
        for (const Statement& statement : mStatements.All()) {
            if (statement.kind == "SHAPE_DEFINITION_REPRESENTATION") TakeOwn(statement);
            if (statement.kind == "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION") placings.push_back(&statement);
        }
        for (const Statement* placing : placings) TakePlacing(*placing);
        std::erase_if(mFound, [](const auto& entry) { return entry.second == 0; });
        return std::move(mFound);
    }

    bool HasShape(int definition) const { return mDefinitions.contains(definition); }

    int FirstOf(int number) const {
        const Statement* const statement = mStatements.Find(number);
        const bool isEmpty = statement == nullptr || mStatements.ReferencesOf(*statement).empty();
        return isEmpty ? 0 : mStatements.ReferencesOf(*statement)[0].number;
    }

  private:
    void TakeOwn(const Statement& statement) {
        const auto references = mStatements.ReferencesOf(statement);
        if (references.size() < 2) return;
        mDefinitions.insert(FirstOf(references[0].number));
        mShapes.insert(references[1].number);
    }

    void TakePlacing(const Statement& placing) {
        const auto references = mStatements.ReferencesOf(placing);
        if (references.size() < 2) return;
        const Statement* const relationship = mStatements.Find(references[0].number);
        const Statement* const usage = mStatements.Find(FirstOf(references[1].number));
        if (relationship == nullptr || usage == nullptr || usage->kind != "NEXT_ASSEMBLY_USAGE_OCCURRENCE")
            return;
        const auto ends = mStatements.ReferencesOf(*usage);
        std::vector<int> shapes;
        for (const Reference& reference : mStatements.ReferencesOf(*relationship))
            if (IsShape(mStatements, reference.number)) shapes.push_back(reference.number);
        if (ends.size() < 2 || shapes.size() != 2 || shapes[0] == shapes[1]) return;
        Tie(ends[1].number, shapes[0]);
        Tie(ends[0].number, shapes[1]);
    }

    /// Two places that name two shapes leave it open.
    void Tie(int definition, int shape) {
        if (mDefinitions.contains(definition) || mShapes.contains(shape)) return;
        const auto [found, fresh] = mFound.emplace(definition, shape);
        if (!fresh && found->second != shape) found->second = 0;
    }

    const Statements& mStatements;
    std::set<int> mDefinitions, mShapes;  ///< Those that belong together.
    std::map<int, int> mFound;
};

}  // namespace

bool HasUntiedShapes(const Statements& statements) { return !Reader(statements).All().empty(); }

std::string WithTiedShapes(std::string content) {
    const Statements statements(content);
    NewStatements additions(statements);
    for (const auto& [definition, shape] : Reader(statements).All()) {
        const int own = additions.Add("PRODUCT_DEFINITION_SHAPE('',''," + Shown(definition) + ")");
        additions.Add("SHAPE_DEFINITION_REPRESENTATION(" + Shown(own) + "," + Shown(shape) + ")");
    }
    return WithEdits(std::move(content), {additions.Edit()});
}

namespace {

/// Assemblies are made of others, and documents name the file of a shape that isn't here.
class Lacking {
  public:
    explicit Lacking(const Statements& statements) {
        for (const Statement& statement : statements.All()) {
            if (statement.kind == "DOCUMENT_FILE") mHasDocuments = true;
            const auto references = statements.ReferencesOf(statement);
            if (statement.kind == "NEXT_ASSEMBLY_USAGE_OCCURRENCE" && !references.empty())
                mAssemblies.insert(references[0].number);
        }
    }

    bool MayLackShape(int definition) const { return mHasDocuments || mAssemblies.contains(definition); }

  private:
    bool mHasDocuments = false;
    std::set<int> mAssemblies;
};

}  // namespace

void NoteUntiedShapes(const Statements& statements, CodePage codePage, StepDocument& document) {
    Reader reader(statements);
    const auto all = reader.All();
    if (!all.empty())
        document.notes.push_back(
            {std::to_string(all.size()) +
                 " product(s) have the shape alone that they are placed with, the first one #" +
                 std::to_string(all.begin()->first),
             statements.LineOf(all.begin()->first), false});
    const Lacking lacking(statements);
    for (const Statement& statement : statements.All()) {
        if (statement.kind != "PRODUCT_DEFINITION_SHAPE") continue;
        const int definition = reader.FirstOf(statement.number);
        const Statement* const product = statements.Find(definition);
        if (product == nullptr || product->kind != "PRODUCT_DEFINITION" || reader.HasShape(definition) ||
            all.contains(definition) || lacking.MayLackShape(definition))
            continue;
        document.notes.push_back({"the product \"" + ProductName(statements, definition, codePage) + "\" (" +
                                      Shown(definition) + ") has no shape: a part may be missing",
                                  statements.LineAt(statement.place)});
    }
}

}  // namespace brenvik::step
