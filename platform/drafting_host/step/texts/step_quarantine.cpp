// A fault spreads from a statement to those that refer to it: geometry falls with any of its pieces, lists of
// items, looks and papers lose one entry, and the structure of products stays whole or the file is refused.
#include "drafting_host/step/texts/step_quarantine.h"

#include <algorithm>

#include "base/ascii.h"
#include "base/text.h"

namespace brenvik::step {
namespace {

bool IsBlank(char c) { return static_cast<unsigned char>(c) <= ' '; }

/// Behind a text in quotes or a comment at `place`, `place` itself where none begins there.
std::size_t BehindQuoted(std::string_view text, std::size_t place) {
    const bool quote = text[place] == '\'';
    if (!quote && text.substr(place, 2) != "/*") return place;
    const std::size_t close = quote ? text.find('\'', place + 1) : text.find("*/", place + 2);
    return close == text.npos ? text.size() : close + (quote ? 1 : 2);
}

/// Copies a statement without the references that go. A list loses the comma with its entry.
void CopyWithout(std::string_view content, const Statement& statement,
                 const std::unordered_set<std::size_t>& cut, const std::unordered_set<std::size_t>& null,
                 std::string& result) {
    const std::string_view text = content.substr(0, statement.end);
    for (std::size_t place = statement.place; place < text.size();) {
        const std::size_t behind = BehindQuoted(text, place);
        const bool goes = cut.contains(place);
        if (behind > place || (!goes && !null.contains(place))) {
            const std::size_t end = std::max(behind, place + 1);
            result += text.substr(place, end - place);
            place = end;
            continue;
        }
        ++place;
        while (place < text.size() && IsDigit(text[place])) ++place;
        if (!goes) {
            result += '$';
            continue;
        }
        while (place < text.size() && IsBlank(text[place])) ++place;
        while (IsBlank(result.back())) result.pop_back();
        if (result.back() == '(' && text[place] == ',')
            ++place;
        else if (result.back() == ',')
            result.pop_back();
    }
}

}  // namespace

std::string LineForMessage(std::string_view content, std::size_t place) {
    constexpr std::size_t longest = 60;
    std::string text = Trim(content.substr(place, content.find_first_of("\r\n", place) - place));
    if (text.size() > longest) text = text.substr(0, longest) + "...";
    std::ranges::replace_if(
        text, [](char c) { return c < ' ' || c > '~'; }, '?');
    return text;
}

Role RoleIn(const Statements& statements, const Statement& statement) {
    const std::vector<std::string_view> kinds = statements.KindsOf(statement);
    return RoleOf(kinds);
}

void Quarantine::FindReferrers() {
    if (!mReferrers.empty()) return;
    for (const Statement& statement : mStatements.All()) {
        for (const Reference& reference : mStatements.ReferencesOf(statement)) {
            std::vector<const Statement*>& known = mReferrers[reference.number];
            if (known.empty() || known.back() != &statement) known.push_back(&statement);
        }
    }
}

/// A statement of several kinds has one pair of brackets more around its values.
bool Quarantine::IsInList(const Statement& holder, std::size_t place) const {
    const std::string_view content = mStatements.Content();
    long depth = 0;
    for (std::size_t at = holder.place; at < place;) {
        const std::size_t behind = BehindQuoted(content, at);
        if (behind > at) {
            at = behind;
            continue;
        }
        depth += content[at] == '(' ? 1 : content[at] == ')' ? -1 : 0;
        ++at;
    }
    return depth > (holder.kind.empty() ? 2 : 1);
}

/// Whether all entries of the list around `place` go.
bool Quarantine::ListIsEmpty(const Statement& holder, std::size_t place) const {
    const std::string_view content = mStatements.Content();
    std::size_t start = content.rfind('(', place), end = content.find(')', place);
    start = std::max(start, holder.place);
    end = std::min(end, holder.end);
    for (std::size_t at = start + 1; at < end; ++at) {
        if (IsBlank(content[at]) || content[at] == ',') continue;
        if (!mCut.contains(at)) return false;
        while (at + 1 < end && (content[at + 1] == '#' || IsDigit(content[at + 1]))) ++at;
    }
    return true;
}

void Quarantine::TakeOut(const Statement& statement, const StatementFault& fault, Walk& walk) {
    if (!mRemoved.insert(&statement).second) {
        walk.told = true;  // it fell with an earlier fault
        return;
    }
    if (RoleIn(mStatements, statement) == Role::Body) {
        mBodies.push_back({&statement, fault});
        walk.told = true;
    }
    walk.open.push_back(&statement);
}

Quarantine::Effect Quarantine::EffectOf(const Statement& removed, const Statement& referrer,
                                        const Reference& reference) {
    const Role from = RoleIn(mStatements, removed), role = RoleIn(mStatements, referrer);
    if (role == Role::Geometry || role == Role::Body) return Effect::Falls;
    const bool inList = IsInList(referrer, reference.place);
    if (role == Role::Look || role == Role::Paperwork) {
        if (inList) mCut.insert(reference.place);
        return !inList || ListIsEmpty(referrer, reference.place) ? Effect::Falls : Effect::Stays;
    }
    // Products and representations can do without their papers, and a representation without an item.
    const bool aside = from == Role::Paperwork || from == Role::Look;
    if (!aside && (role == Role::Structure || !inList)) return Effect::Refused;
    (inList ? mCut : mNull).insert(reference.place);
    return Effect::Stays;
}

void Quarantine::Keep(const StatementFault& fault, Role role, bool told) {
    if (!fault.isTold) return;
    if (role == Role::Look)
        mLooks.push_back(fault);
    else if (role == Role::Paperwork)
        mPapers.push_back(fault);
    else if (!told)
        mLooseGeometry.push_back(fault);
}

/// A list can do without an entry that leads nowhere. True where that was all.
bool Quarantine::RemoveEntry(const StatementFault& fault, Role role) {
    if (role != Role::Items && role != Role::Look && role != Role::Paperwork) return false;
    const auto references = mStatements.ReferencesOf(*fault.statement);
    const bool isReference =
        std::ranges::find(references, fault.place, &Reference::place) != references.end();
    if (!isReference || !IsInList(*fault.statement, fault.place)) return false;
    mCut.insert(fault.place);
    if (role != Role::Items && ListIsEmpty(*fault.statement, fault.place)) return false;
    Keep(fault, role, false);
    return true;
}

bool Quarantine::SpreadFrom(const Statement& removed, const StatementFault& fault, Walk& walk) {
    const auto referrers = mReferrers.find(removed.number);
    if (removed.number == 0 || referrers == mReferrers.end()) return true;
    for (const Statement* referrer : referrers->second) {
        if (mRemoved.contains(referrer)) {
            walk.told = true;
            continue;
        }
        bool falls = false;
        for (const Reference& reference : mStatements.ReferencesOf(*referrer)) {
            if (reference.number != removed.number) continue;
            switch (EffectOf(removed, *referrer, reference)) {
                case Effect::Refused:
                    return false;
                case Effect::Falls:
                    falls = true;
                    break;
                case Effect::Stays:
                    break;
            }
        }
        if (falls) TakeOut(*referrer, fault, walk);
    }
    return true;
}

bool Quarantine::Remove(const StatementFault& fault) {
    FindReferrers();
    const Role role = RoleIn(mStatements, *fault.statement);
    if (RemoveEntry(fault, role)) return true;
    if (role == Role::Structure || role == Role::Items) return false;
    Walk walk;
    TakeOut(*fault.statement, fault, walk);
    while (!walk.open.empty()) {
        const Statement& removed = *walk.open.back();
        walk.open.pop_back();
        if (!SpreadFrom(removed, fault, walk)) return false;
    }
    Keep(fault, role, walk.told);
    return true;
}

bool Quarantine::RemoveItem(const Statement& holder, const Reference& reference) {
    if (RoleIn(mStatements, holder) != Role::Items || !IsInList(holder, reference.place)) return false;
    if (!mCut.insert(reference.place).second) return false;
    mFalseItems.push_back(
        {&holder, reference.place,
         "an item of a shape, found #" + std::to_string(reference.number) + " of another kind"});
    return true;
}

std::string Quarantine::Content() const {
    const std::string_view content = mStatements.Content();
    const std::size_t end = mStatements.End().value_or(content.size());
    std::string result;
    result.reserve(end);
    std::size_t place = 0;
    for (const Statement& statement : mStatements.All()) {
        const bool changed =
            std::ranges::any_of(mStatements.ReferencesOf(statement), [&](const Reference& reference) {
                return mCut.contains(reference.place) || mNull.contains(reference.place);
            });
        if (!changed && !IsRemoved(statement)) continue;
        result += content.substr(place, statement.place - place);
        if (!IsRemoved(statement)) CopyWithout(content, statement, mCut, mNull, result);
        place = statement.end;
    }
    return result += content.substr(place, end - place);
}

}  // namespace brenvik::step
