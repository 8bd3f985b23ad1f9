// Products and representations are nodes of one tree, by the numbers of their statements. Walks without
// recursion: a tree can be as deep as the file is long.
#include "drafting_host/step/products/usage_tree.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "drafting_host/step/texts/statement_roles.h"
#include "drafting_host/step/texts/step_quarantine.h"

namespace brenvik::step {
namespace {

constexpr std::uint64_t Most = std::uint64_t{1} << 62U;

std::uint64_t Added(std::uint64_t one, std::uint64_t other) { return std::min(Most, one + other); }

}  // namespace

UsageTree::UsageTree(const Statements& statements) : mStatements(statements) {
    for (const Statement& statement : statements.All()) TakeStatement(statement);
    for (Usage& usage : mUsages) {
        mWithin[usage.assembly].push_back(usage.component);
        usage.isPlaced = mPlacedShapes.contains(usage.statement->number);
    }
    // Without usages of products shapes are set into each other directly.
    if (mUsages.empty())
        for (const Statement* placing : mPlacings) TakeRelationship(*placing);
    for (const Statement* tie : mTies) {
        if (mPlacedByUsage.contains(tie->number)) continue;
        const auto references = mStatements.ReferencesOf(*tie);
        mEqual[references[0].number].push_back(references[1].number);
        mEqual[references[1].number].push_back(references[0].number);
    }
    TieProducts();
}

void UsageTree::TakeStatement(const Statement& statement) {
    const auto references = mStatements.ReferencesOf(statement);
    if (statement.kind == "NEXT_ASSEMBLY_USAGE_OCCURRENCE") {
        if (references.size() > 1)
            mUsages.push_back({&statement, references[0].number, references[1].number, false});
    } else if (statement.kind == "SHAPE_DEFINITION_REPRESENTATION") {
        TakeShape(statement);
    } else if (statement.kind == "SHAPE_REPRESENTATION_RELATIONSHIP") {
        if (references.size() > 1) mTies.push_back(&statement);
    } else if (statement.kind == "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION") {
        TakePlacing(statement);
    } else if (statement.kind.ends_with("REPRESENTATION")) {
        TakeItems(statement);
    } else if (statement.kind.empty() &&
               TextOf(mStatements, statement).find("WITH_TRANSFORMATION") != std::string_view::npos) {
        mPlacings.push_back(&statement);
    }
}

void UsageTree::TakeShape(const Statement& statement) {
    const auto references = mStatements.ReferencesOf(statement);
    const Statement* const shape = references.size() < 2 ? nullptr : mStatements.Find(references[0].number);
    if (shape == nullptr || mStatements.ReferencesOf(*shape).empty()) return;
    mShapes[mStatements.ReferencesOf(*shape)[0].number].push_back(references[1].number);
}

void UsageTree::TakePlacing(const Statement& statement) {
    const auto references = mStatements.ReferencesOf(statement);
    if (references.size() < 2) return;
    mPlacedByUsage.insert(references[0].number);
    const Statement* const shape = mStatements.Find(references[1].number);
    if (shape == nullptr) return;
    for (const Reference& usage : mStatements.ReferencesOf(*shape)) mPlacedShapes.insert(usage.number);
}

void UsageTree::TakeRelationship(const Statement& statement) {
    std::vector<int> shapes;
    for (const Reference& reference : mStatements.ReferencesOf(statement)) {
        const Statement* const one = mStatements.Find(reference.number);
        if (one != nullptr && RoleIn(mStatements, *one) == Role::Items) shapes.push_back(reference.number);
    }
    if (shapes.size() > 1) mWithin[shapes[1]].push_back(shapes[0]);
}

void UsageTree::TakeItems(const Statement& representation) {
    for (const Reference& reference : mStatements.ReferencesOf(representation)) {
        const Statement* const item = mStatements.Find(reference.number);
        if (item == nullptr) continue;
        if (IsBody(item->kind)) ++mBodies[representation.number];
        if (item->kind != "MAPPED_ITEM" || mStatements.ReferencesOf(*item).empty()) continue;
        const Statement* const map = mStatements.Find(mStatements.ReferencesOf(*item)[0].number);
        if (map != nullptr && mStatements.ReferencesOf(*map).size() > 1)
            mWithin[representation.number].push_back(mStatements.ReferencesOf(*map)[1].number);
    }
}

std::vector<int> UsageTree::ShapesOf(int definition) const {
    const auto own = mShapes.find(definition);
    std::vector<int> all = own == mShapes.end() ? std::vector<int>() : own->second;
    std::unordered_set<int> seen(all.begin(), all.end());
    for (std::size_t at = 0; at < all.size(); ++at) {
        const auto equal = mEqual.find(all[at]);
        if (equal == mEqual.end()) continue;
        for (const int one : equal->second)
            if (seen.insert(one).second) all.push_back(one);
    }
    return all;
}

void UsageTree::TieProducts() {
    for (const auto& [definition, shapes] : mShapes) {
        std::vector<int>& within = mWithin[definition];
        for (const int shape : ShapesOf(definition)) within.push_back(shape);
    }
}

template <typename Predicate>
bool UsageTree::AnyWithin(int node, Predicate predicate) const {
    std::unordered_set<int> seen{node};
    std::vector<int> open{node};
    while (!open.empty()) {
        const auto within = mWithin.find(open.back());
        if (predicate(open.back())) return true;
        open.pop_back();
        if (within == mWithin.end()) continue;
        for (const int one : within->second)
            if (seen.insert(one).second) open.push_back(one);
    }
    return false;
}

bool UsageTree::LeadsTo(int node, int other) const {
    return AnyWithin(node, [&](int one) { return one == other; });
}

bool UsageTree::HoldsBodies(int node) const {
    return AnyWithin(node, [&](int one) { return mBodies.contains(one); });
}

/// What lies below a node has to be known. A product and a shape of others have one end at least.
std::uint64_t UsageTree::EndsAt(int node, const std::unordered_map<int, std::uint64_t>& known) const {
    const auto bodies = mBodies.find(node);
    std::uint64_t ends = bodies == mBodies.end() ? 0 : bodies->second;
    const auto within = mWithin.find(node);
    if (within == mWithin.end()) return ends;
    for (const int one : within->second)
        if (const auto below = known.find(one); below != known.end()) ends = Added(ends, below->second);
    return std::max<std::uint64_t>(ends, 1);
}

UsageTree::Size UsageTree::Whole() const {
    std::unordered_map<int, std::uint64_t> known;
    std::unordered_set<int> open, components;
    for (const auto& [node, within] : mWithin) components.insert(within.begin(), within.end());
    Size whole;
    std::uint64_t largest = 0;
    for (const auto& [start, ignored] : mWithin) {
        if (components.contains(start)) continue;
        std::vector<std::pair<int, std::size_t>> path{{start, 0}};
        while (!path.empty()) {
            const int node = path.back().first;
            const auto within = mWithin.find(node);
            if (within != mWithin.end() && path.back().second < within->second.size()) {
                const int next = within->second[path.back().second++];
                if (!known.contains(next) && open.insert(next).second) path.emplace_back(next, 0);
                continue;
            }
            known[node] = EndsAt(node, known);
            path.pop_back();
        }
        const std::uint64_t ends = known[start];
        whole.ends = Added(whole.ends, ends);
        if (ends < largest || (ends == largest && whole.root != 0 && whole.root < start)) continue;
        largest = ends;
        whole.root = start;
    }
    return whole;
}

}  // namespace brenvik::step
