// Walks from the shapes that products name along the relations that place nothing.
#include "drafting_host/step/products/distant_shapes.h"

#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "drafting_host/step/texts/statement_roles.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

class Reader {
  public:
    explicit Reader(const Statements& statements) : mStatements(statements) {
        std::unordered_set<int> placing;
        for (const Statement& statement : statements.All())
            if (statement.kind == "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION" &&
                !statements.ReferencesOf(statement).empty())
                placing.insert(statements.ReferencesOf(statement)[0].number);
        for (const Statement& statement : statements.All()) {
            const auto references = statements.ReferencesOf(statement);
            if (references.size() < 2) continue;
            if (statement.kind == "SHAPE_DEFINITION_REPRESENTATION") {
                mOwn.insert(references[1].number);
            } else if (statement.kind == "SHAPE_REPRESENTATION_RELATIONSHIP" &&
                       !placing.contains(statement.number)) {
                mEqual[references[0].number].push_back(references[1].number);
                mEqual[references[1].number].push_back(references[0].number);
            }
        }
    }

    /// Pairs of a product's shape and a shape with bodies behind another one.
    std::vector<std::pair<int, int>> All() const {
        std::vector<std::pair<int, int>> pairs;
        for (const int shape : mOwn)
            if (mEqual.contains(shape)) TakeFrom(shape, pairs);
        return pairs;
    }

  private:
    /// Shapes that other products name end the walk: what lies behind is theirs.
    void TakeFrom(int shape, std::vector<std::pair<int, int>>& pairs) const {
        std::unordered_set<int> seen{shape};
        std::vector<std::pair<int, int>> open{{shape, 0}};  // with how many relations away
        for (std::size_t at = 0; at < open.size(); ++at) {
            const auto [one, distance] = open[at];
            if (distance > 1 && HoldsBodies(one)) pairs.emplace_back(shape, one);
            const auto equal = mEqual.find(one);
            if (equal == mEqual.end()) continue;
            for (const int next : equal->second)
                if (!mOwn.contains(next) && seen.insert(next).second) open.emplace_back(next, distance + 1);
        }
    }

    bool HoldsBodies(int shape) const {
        const Statement* const statement = mStatements.Find(shape);
        if (statement == nullptr) return false;
        for (const Reference& reference : mStatements.ReferencesOf(*statement)) {
            const Statement* const item = mStatements.Find(reference.number);
            if (item != nullptr && IsBody(item->kind)) return true;
        }
        return false;
    }

    const Statements& mStatements;
    std::set<int> mOwn;
    std::unordered_map<int, std::vector<int>> mEqual;
};

}  // namespace

bool HasDistantShapes(const Statements& statements) { return !Reader(statements).All().empty(); }

std::string WithNearShapes(std::string content) {
    const Statements statements(content);
    NewStatements additions(statements);
    for (const auto& [own, distant] : Reader(statements).All())
        additions.Add("SHAPE_REPRESENTATION_RELATIONSHIP('',''," + Shown(own) + "," + Shown(distant) + ")");
    return WithEdits(std::move(content), {additions.Edit()});
}

}  // namespace brenvik::step
