// The shape of the component stands first in a relationship, that of the assembly second.
#include "drafting_host/step/places/use_index.h"

#include <string_view>

namespace brenvik::step {
namespace {

bool IsShape(const Statement* statement) {
    return statement != nullptr && statement->kind.ends_with("SHAPE_REPRESENTATION");
}

}  // namespace

std::vector<Reference> LookTargets(const Statements& statements, const Statement& look) {
    const auto references = statements.ReferencesOf(look);
    if (look.kind == "PRESENTATION_LAYER_ASSIGNMENT") return {references.begin(), references.end()};
    const bool overrides = look.kind.ends_with("OVER_RIDING_STYLED_ITEM");
    if (look.kind != "STYLED_ITEM" && !overrides) return {};
    if (references.size() < (overrides ? 3U : 2U)) return {};
    // A style of a context names that behind all others.
    if (look.kind.starts_with("CONTEXT_DEPENDENT")) return {};
    return {references[references.size() - (overrides ? 2 : 1)]};
}

UseIndex::UseIndex(const Statements& statements) : mStatements(statements) {
    std::unordered_set<int> placing;
    for (const Statement& statement : statements.All()) {
        Take(statement);
        const auto references = statements.ReferencesOf(statement);
        if (statement.kind == "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION" && !references.empty())
            placing.insert(references[0].number);
    }
    for (const Statement& statement : statements.All()) {
        const auto references = statements.ReferencesOf(statement);
        if (statement.kind != "SHAPE_REPRESENTATION_RELATIONSHIP" || references.size() < 2) continue;
        if (placing.contains(statement.number)) continue;
        for (const std::size_t end : {0, 1}) mTies[references[end].number].push_back(&statement);
    }
}

void UseIndex::Take(const Statement& statement) {
    for (const Reference& target : LookTargets(mStatements, statement)) mLooked.insert(target.number);
    const auto references = mStatements.ReferencesOf(statement);
    if (references.size() < 2) return;
    if (statement.kind == "NEXT_ASSEMBLY_USAGE_OCCURRENCE") {
        mUsages[references[0].number].push_back(&statement);
    } else if (statement.kind == "SHAPE_DEFINITION_REPRESENTATION") {
        const Statement* const shape = mStatements.Find(references[0].number);
        if (shape == nullptr || mStatements.ReferencesOf(*shape).empty()) return;
        const int definition = mStatements.ReferencesOf(*shape)[0].number;
        mShapes[definition].push_back(references[1].number);
        mProducts[references[1].number].push_back(definition);
    } else if (statement.kind == "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION") {
        TakePlace(statement);
    }
}

void UseIndex::TakePlace(const Statement& placing) {
    const auto ends = mStatements.ReferencesOf(placing);
    UsagePlace place;
    place.relationship = mStatements.Find(ends[0].number);
    const Statement* const shape = mStatements.Find(ends[1].number);
    if (place.relationship == nullptr || shape == nullptr || mStatements.ReferencesOf(*shape).empty()) return;
    for (const Reference& reference : mStatements.ReferencesOf(*place.relationship)) {
        const Statement* const one = mStatements.Find(reference.number);
        if (!IsShape(one))
            place.transformation = reference.number;
        else
            (place.component == 0 ? place.component : place.assembly) = reference.number;
    }
    if (place.assembly != 0) mPlaces.emplace(mStatements.ReferencesOf(*shape)[0].number, place);
}

const UsagePlace* UseIndex::PlaceOf(int usage) const {
    const auto place = mPlaces.find(usage);
    return place == mPlaces.end() ? nullptr : &place->second;
}

}  // namespace brenvik::step
