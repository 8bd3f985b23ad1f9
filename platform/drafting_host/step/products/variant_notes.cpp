// Products are known by the numbers of their definitions; those without a body make no parts.
#include "drafting_host/step/products/variant_notes.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "drafting_host/step/products/step_notes.h"
#include "drafting_host/step/products/usage_tree.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

bool IsDefinition(const Statement& statement) {
    return statement.kind == "PRODUCT_DEFINITION" ||
           statement.kind == "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS";
}

bool RelatesVariants(const Statement& statement) {
    return statement.kind == "ASSEMBLY_COMPONENT_USAGE_SUBSTITUTE" ||
           statement.kind == "PRODUCT_DEFINITION_SUBSTITUTE" ||
           statement.kind == "ALTERNATE_PRODUCT_RELATIONSHIP" || statement.kind == "MAKE_FROM_USAGE_OPTION";
}

class Reader {
  public:
    Reader(const Statements& statements, CodePage codePage, StepDocument& document)
        : mStatements(statements), mCodePage(codePage), mDocument(document) {
        for (const Statement& statement : statements.All()) {
            if (IsDefinition(statement))
                if (const int product = ProductOf(statement))
                    mDefinitions[product].push_back(statement.number);
            const auto ends = statements.ReferencesOf(statement);
            if (statement.kind == "SHAPE_DEFINITION_REPRESENTATION" && ends.size() > 1)
                mShapes[FirstOf(statements, ends[0].number)].insert(ends[1].number);
        }
    }

    void Run() {
        for (const Statement& statement : mStatements.All())
            if (RelatesVariants(statement)) TakeRelation(statement);
        for (const auto& [product, definitions] : mDefinitions)
            if (definitions.size() > 1) TakeDefinitions(definitions);
        for (const auto& [definition, shapes] : mShapes)
            if (shapes.size() > 1) TakeShapes(definition, shapes);
    }

  private:
    using Ends = std::pair<int, int>;

    int ProductOf(const Statement& definition) const {
        return FirstOf(mStatements, FirstOf(mStatements, definition.number));
    }

    /// Most files have no variants, and need no tree.
    const UsageTree& Tree() {
        if (!mTree) mTree.emplace(mStatements);
        return *mTree;
    }

    void TakeRelation(const Statement& relation) {
        const auto references = mStatements.ReferencesOf(relation);
        if (references.size() < 2) return;
        const Ends ends{references[0].number, references[1].number};
        if (relation.kind == "ASSEMBLY_COMPONENT_USAGE_SUBSTITUTE") {
            Tell(relation, ComponentOf(ends.second), " stands for ", ComponentOf(ends.first),
                 " as a substitute");
        } else if (relation.kind == "PRODUCT_DEFINITION_SUBSTITUTE") {
            Tell(relation, Listed(ends.second), " stands for ", RelatedOf(ends.first), " as a substitute");
        } else if (relation.kind == "ALTERNATE_PRODUCT_RELATIONSHIP") {
            Tell(relation, ListedOf(ends.first), " stands for ", ListedOf(ends.second), " as an alternate");
        } else {
            Tell(relation, Listed(ends.first), " is made from ", Listed(ends.second), "");
        }
    }

    /// The definition if parts come of it, or 0.
    int Listed(int definition) { return Tree().HoldsBodies(definition) ? definition : 0; }

    int ListedOf(int product) {
        const auto definitions = mDefinitions.find(product);
        if (definitions == mDefinitions.end()) return 0;
        for (const int definition : definitions->second)
            if (Listed(definition) != 0) return definition;
        return 0;
    }

    /// A usage without a place makes no part.
    int ComponentOf(int number) {
        const auto usage = std::ranges::find_if(
            Tree().Usages(), [&](const Usage& one) { return one.statement->number == number; });
        return usage == Tree().Usages().end() || !usage->isPlaced ? 0 : Listed(usage->component);
    }

    /// What a usage or another relation of two products has as its second one.
    int RelatedOf(int number) {
        const Statement* const relation = mStatements.Find(number);
        if (relation == nullptr || mStatements.ReferencesOf(*relation).size() < 2) return 0;
        const bool isUsage = relation->kind == "NEXT_ASSEMBLY_USAGE_OCCURRENCE";
        return isUsage ? ComponentOf(number) : Listed(mStatements.ReferencesOf(*relation)[1].number);
    }

    void Tell(const Statement& relation, int variant, const std::string& verb, int base,
              const std::string& role) {
        if (variant == 0 || base == 0) return;
        Note(relation, Name(variant) + verb + Name(base) + role + ": both are listed");
    }

    /// What assemblies use is there because somebody put it there.
    void TakeDefinitions(const std::vector<int>& definitions) {
        std::vector<int> listed;
        for (const int definition : definitions)
            if (Listed(definition) != 0) listed.push_back(definition);
        if (listed.size() < 2 || std::ranges::all_of(listed, [&](int one) { return IsUsed(one); })) return;
        for (std::size_t at = 1; at < listed.size(); ++at) {
            const bool isVersion = FirstOf(mStatements, listed[at]) != FirstOf(mStatements, listed[0]);
            Note(*mStatements.Find(listed[at]),
                 Name(listed[0]) + " has two " + (isVersion ? "versions" : "definitions") + ", " +
                     Shown(listed[0]) + " and " + Shown(listed[at]) + ", each with a shape: both are listed");
        }
    }

    /// They may be bodies of one product as well as two pictures of it.
    void TakeShapes(int definition, const std::set<int>& shapes) {
        std::vector<int> listed;
        for (const int shape : shapes)
            if (Tree().HoldsBodies(shape)) listed.push_back(shape);
        const Statement* const product = mStatements.Find(definition);
        if (listed.size() < 2 || product == nullptr || !IsDefinition(*product)) return;
        mDocument.notes.push_back({Name(definition) + " has " + std::to_string(listed.size()) +
                                       " shapes of its own, the first ones " + Shown(listed[0]) + " and " +
                                       Shown(listed[1]) + ": the solids of all are listed",
                                   mStatements.LineOf(listed[1]), false});
    }

    bool IsUsed(int definition) {
        return std::ranges::find(Tree().Usages(), definition, &Usage::component) != Tree().Usages().end();
    }

    std::string Name(int definition) const {
        const std::string name = ProductName(mStatements, definition, mCodePage);
        return name.empty() ? "the product " + Shown(definition) : "part \"" + name + "\"";
    }

    void Note(const Statement& statement, std::string text) {
        mDocument.notes.push_back({std::move(text), mStatements.LineAt(statement.place)});
    }

    const Statements& mStatements;
    CodePage mCodePage;
    StepDocument& mDocument;
    std::map<int, std::vector<int>> mDefinitions;  ///< By product.
    std::map<int, std::set<int>> mShapes;          ///< By definition.
    std::optional<UsageTree> mTree;
};

}  // namespace

void NoteVariants(const Statements& statements, CodePage codePage, StepDocument& document) {
    Reader(statements, codePage, document).Run();
}

}  // namespace brenvik::step
