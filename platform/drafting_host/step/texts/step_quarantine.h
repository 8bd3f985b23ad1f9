// Takes what can't be read out of the text of a STEP file, with everything that can't be without it, so that
// one damaged part doesn't take the others with it.
#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "drafting_host/step/texts/statement_roles.h"
#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {

/// The fault of a statement.
struct StatementFault {
    const Statement* statement = nullptr;
    std::size_t place = 0;
    std::string expected;  ///< For a message: "a statement #5, the file has none".
    bool isTold = true;    ///< False for omissions that need no report.
};

/// Whether it is a look that holds in one place alone, or what a style names as that place, of a kind that
/// the modeller doesn't know there.
inline bool IsOfContext(const StatementFault& fault) {
    return fault.expected.find("(style_context)") != std::string::npos;
}

/// A body that had to be left out, and the fault that it fell over.
struct LostBody {
    const Statement* body = nullptr;
    StatementFault fault;
};

class Quarantine {
  public:
    explicit Quarantine(const Statements& statements) : mStatements(statements) {}

    /// Takes a statement out. False where the parts' structure hangs on it: then the file can't be read.
    bool Remove(const StatementFault& fault);
    /// Takes a statement out that nothing refers to.
    void Hide(const Statement& statement) { mRemoved.insert(&statement); }
    /// Takes an item out of a representation's list; false where it isn't there.
    bool RemoveItem(const Statement& holder, const Reference& reference);

    bool Empty() const { return mRemoved.empty() && mCut.empty() && mNull.empty(); }
    bool IsRemoved(const Statement& statement) const { return mRemoved.contains(&statement); }
    const std::vector<LostBody>& LostBodies() const { return mBodies; }
    /// Faults of geometry that no body was made of.
    const std::vector<StatementFault>& LostGeometry() const { return mLooseGeometry; }
    /// Faults of styles, colours and layers, and of the paperwork.
    const std::vector<StatementFault>& LostLooks() const { return mLooks; }
    const std::vector<StatementFault>& LostPapers() const { return mPapers; }
    /// Items that RemoveItem took out.
    const std::vector<StatementFault>& FalseItems() const { return mFalseItems; }

    /// The text without what was taken out, up to the end mark.
    std::string Content() const;

  private:
    struct Walk {
        std::vector<const Statement*> open;
        bool told = false;  ///< A body, or something already taken out, was lost with it.
    };
    enum class Effect { Falls, Stays, Refused };
    Effect EffectOf(const Statement& removed, const Statement& referrer, const Reference& reference);
    bool SpreadFrom(const Statement& removed, const StatementFault& fault, Walk& walk);
    void TakeOut(const Statement& statement, const StatementFault& fault, Walk& walk);
    bool RemoveEntry(const StatementFault& fault, Role role);
    void Keep(const StatementFault& fault, Role role, bool told);
    bool IsInList(const Statement& holder, std::size_t place) const;
    bool ListIsEmpty(const Statement& holder, std::size_t place) const;
    void FindReferrers();

    const Statements& mStatements;
    std::unordered_map<int, std::vector<const Statement*>> mReferrers;  ///< By the number referred to.
    std::unordered_set<const Statement*> mRemoved;
    std::unordered_set<std::size_t> mCut, mNull;  ///< Places of references that go, and that become "$".
    std::vector<LostBody> mBodies;
    std::vector<StatementFault> mLooseGeometry, mLooks, mPapers, mFalseItems;
};

/// What stands in the line of a place, cut to a length that a message takes.
std::string LineForMessage(std::string_view content, std::size_t place);

/// The role of a statement.
Role RoleIn(const Statements& statements, const Statement& statement);

}  // namespace brenvik::step
