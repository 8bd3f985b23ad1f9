// The shape of the component stands first in the relationship, that of the assembly second.
#include "drafting_host/step/products/product_shapes.h"

#include <algorithm>
#include <map>
#include <set>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "drafting_host/step/products/step_externals.h"
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

  private:
    void TakeOwn(const Statement& statement) {
        const auto references = mStatements.ReferencesOf(statement);
        if (references.size() < 2) return;
        mDefinitions.insert(FirstOf(mStatements, references[0].number));
        mShapes.insert(references[1].number);
    }

    void TakePlacing(const Statement& placing) {
        const auto references = mStatements.ReferencesOf(placing);
        if (references.size() < 2) return;
        const Statement* const relationship = mStatements.Find(references[0].number);
        const Statement* const usage = mStatements.Find(FirstOf(mStatements, references[1].number));
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

/// Products that need no shape here: assemblies are made of others, a document may name the file of a shape,
/// and some products are documents themselves.
class Lacking {
  public:
    Lacking(const Statements& statements, CodePage codePage)
        : mStatements(statements), mFiles(ExternalFiles(statements, codePage)), mCodePage(codePage) {
        for (const Statement& statement : statements.All()) {
            const auto references = statements.ReferencesOf(statement);
            if (statement.kind == "NEXT_ASSEMBLY_USAGE_OCCURRENCE" && !references.empty())
                mAssemblies.insert(references[0].number);
            if (statement.kind == "PRODUCT_RELATED_PRODUCT_CATEGORY" &&
                FirstTextOf(statements, statement, codePage) == "document")
                for (const Reference& product : references) mDocuments.insert(product.number);
        }
    }

    bool MayLackShape(const Statement& definition) const {
        if (mAssemblies.contains(definition.number) || definition.kind != "PRODUCT_DEFINITION") return true;
        for (const Reference& reference : mStatements.ReferencesOf(definition)) {
            const Statement* const context = mStatements.Find(reference.number);
            const bool isContext = context != nullptr && context->kind.ends_with("CONTEXT");
            if (isContext && TextOf(mStatements, *context).find("document") != std::string_view::npos)
                return true;
            const auto products =
                context == nullptr ? std::span<const Reference>() : mStatements.ReferencesOf(*context);
            if (!products.empty() && mDocuments.contains(products[0].number)) return true;
        }
        return mFiles.contains(ProductName(mStatements, definition.number, mCodePage));
    }

  private:
    const Statements& mStatements;
    const std::map<std::string, std::string> mFiles;  ///< By the names of products.
    CodePage mCodePage;
    std::set<int> mAssemblies, mDocuments;
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
    const Lacking lacking(statements, codePage);
    std::map<int, const Statement*> named;  // what says that a product has a shape, by its definition
    for (const Statement& statement : statements.All())
        if (statement.kind == "PRODUCT_DEFINITION_SHAPE")
            named.emplace(FirstOf(statements, statement.number), &statement);
    for (const Statement& product : statements.All()) {
        if (!product.kind.starts_with("PRODUCT_DEFINITION") || reader.HasShape(product.number) ||
            all.contains(product.number) || lacking.MayLackShape(product))
            continue;
        const auto shape = named.find(product.number);
        document.notes.push_back(
            {"the product \"" + ProductName(statements, product.number, codePage) + "\" (" +
                 Shown(product.number) + ") has no shape: a part may be missing",
             statements.LineAt((shape == named.end() ? product : *shape->second).place)});
    }
}

}  // namespace brenvik::step
