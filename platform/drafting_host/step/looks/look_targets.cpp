// What a look refers to is followed to what the modeller knows, and the reference is written anew.
#include "drafting_host/step/looks/look_targets.h"

#include <map>
#include <utility>
#include <vector>

#include "drafting_host/step/texts/statement_roles.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

class Redirects {
  public:
    explicit Redirects(const Statements& statements) : mStatements(statements) {
        for (const Statement& statement : statements.All()) {
            const auto references = statements.ReferencesOf(statement);
            if (statement.kind == "OVER_RIDING_STYLED_ITEM" && references.size() > 2)
                mOverriding[references.back().number] = &statement;
        }
    }

    std::vector<TextEdit> All() {
        std::vector<TextEdit> all;
        for (const Statement& statement : mStatements.All()) {
            const auto references = mStatements.ReferencesOf(statement);
            if (statement.kind == "STYLED_ITEM" && !references.empty()) {
                Take(references.back(), ShellSolid(references.back().number), all);
                TakeOverriding(statement, all);
            }
            if (statement.kind == "PRESENTATION_LAYER_ASSIGNMENT")
                for (const Reference& item : references) Take(item, LayeredSolid(item.number), all);
            if (statement.kind == "INVISIBILITY")
                for (const Reference& item : references) Take(item, HiddenStyles(item.number), all);
        }
        return all;
    }

  private:
    void Take(const Reference& reference, std::string text, std::vector<TextEdit>& all) const {
        if (!text.empty())
            all.push_back(ReferenceEdit(mStatements.Content(), reference.place, std::move(text)));
    }

    /// A style that another one of the same item overrides gets the styles of that.
    void TakeOverriding(const Statement& styled, std::vector<TextEdit>& all) const {
        constexpr int mostTimes = 100;
        const auto references = mStatements.ReferencesOf(styled);
        const Statement* last = &styled;
        for (int time = 0; time < mostTimes; ++time) {
            const auto next = mOverriding.find(last->number);
            if (next == mOverriding.end()) break;
            const auto others = mStatements.ReferencesOf(*next->second);
            if (others[others.size() - 2].number != references.back().number) break;
            last = next->second;
        }
        if (last == &styled || references.size() < 2) return;
        const auto others = mStatements.ReferencesOf(*last);
        const std::size_t start = references.front().place;
        std::string styles;
        for (const Reference& style : others.first(others.size() - 2))
            styles += (styles.empty() ? "" : ",") + Shown(style.number);
        const std::size_t close = mStatements.Content().find(')', start);
        if (close < references.back().place) all.push_back({start, close - start, std::move(styles)});
    }

    std::string_view KindOf(int number) const {
        const Statement* statement = mStatements.Find(number);
        return statement == nullptr ? std::string_view() : statement->kind;
    }

    /// The solid that a shell bounds; blank for anything else.
    std::string ShellSolid(int number) {
        if (KindOf(number) != "CLOSED_SHELL") return {};
        if (mSolids.empty()) {
            for (const Statement& solid : mStatements.All()) {
                if (!IsSolid(solid.kind)) continue;
                const auto shells = mStatements.ReferencesOf(solid);
                if (!shells.empty()) mSolids.try_emplace(shells[0].number, solid.number);
            }
            mSolids.try_emplace(0, 0);
        }
        const auto solid = mSolids.find(number);
        return solid == mSolids.end() ? std::string() : Shown(solid->second);
    }

    std::string LayeredSolid(int number) {
        if (KindOf(number) != "STYLED_ITEM") return ShellSolid(number);
        const auto references = mStatements.ReferencesOf(*mStatements.Find(number));
        if (references.empty()) return {};
        const int item = references.back().number;
        const std::string solid = ShellSolid(item);
        return solid.empty() ? Shown(item) : solid;
    }

    std::string HiddenStyles(int number) const {
        const std::string_view kind = KindOf(number);
        if (!kind.ends_with("_PRESENTATION_REPRESENTATION") && kind != "DRAUGHTING_MODEL") return {};
        std::string styles;
        for (const Reference& item : mStatements.ReferencesOf(*mStatements.Find(number))) {
            if (KindOf(item.number) != "STYLED_ITEM") continue;
            styles += (styles.empty() ? "" : ",") + Shown(item.number);
        }
        return styles;
    }

    const Statements& mStatements;
    std::map<int, int> mSolids;                   ///< By their shells.
    std::map<int, const Statement*> mOverriding;  ///< Styles, by those that they override.
};

}  // namespace

bool HasIndirectLooks(const Statements& statements) { return !Redirects(statements).All().empty(); }

std::string WithDirectLooks(std::string content) {
    std::vector<TextEdit> edits = Redirects(Statements(content)).All();
    return WithEdits(std::move(content), std::move(edits));
}

}  // namespace brenvik::step
