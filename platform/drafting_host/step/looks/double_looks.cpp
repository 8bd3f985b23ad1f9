// Styles stand in chains of statements down to a colour; layers list what stands on them.
#include "drafting_host/step/looks/double_looks.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "drafting_host/step/products/step_notes.h"

namespace brenvik::step {
namespace {

using Looks = std::map<int, std::vector<const Statement*>>;  ///< By the number of the item.

void GatherColours(const Statements& statements, const Statement& statement, int depth,
                   std::set<std::string_view>& colours) {
    constexpr int deepest = 12;
    if (statement.kind == "COLOUR_RGB" || statement.kind == "DRAUGHTING_PRE_DEFINED_COLOUR") {
        const std::string_view text =
            statements.Content().substr(statement.place, statement.end - statement.place);
        colours.insert(text.substr(std::min(text.find('('), text.size())));
    }
    if (depth == deepest) return;
    for (const Reference& reference : statements.ReferencesOf(statement)) {
        const Statement* next = statements.Find(reference.number);
        if (next != nullptr && RoleIn(statements, *next) == Role::Look)
            GatherColours(statements, *next, depth + 1, colours);
    }
}

std::set<std::string_view> ColoursOf(const Statements& statements, const Statement& style) {
    std::set<std::string_view> colours;
    GatherColours(statements, style, 0, colours);
    return colours;
}

/// The first look of an item that contradicts the one before it; nothing where all agree.
template <typename Meaning>
const Statement* SecondLook(const std::vector<const Statement*>& looks, Meaning meaning) {
    if (looks.size() < 2) return nullptr;
    const auto first = meaning(*looks.front());
    for (std::size_t index = 1; index < looks.size(); ++index) {
        const auto other = meaning(*looks[index]);
        if (!first.empty() && !other.empty() && other != first) return looks[index];
    }
    return nullptr;
}

template <typename Meaning>
void NoteDoubles(const Statements& statements, const Looks& looks, const std::string& what, Meaning meaning,
                 StepDocument& document) {
    std::size_t count = 0;
    int firstItem = 0;
    const Statement* first = nullptr;
    for (const auto& [item, all] : looks) {
        const Statement* second = SecondLook(all, meaning);
        if (second == nullptr) continue;
        if (count++ > 0) continue;
        first = second;
        firstItem = item;
    }
    if (first == nullptr) return;
    document.notes.push_back({std::to_string(count) + " item(s) " + what + ", the first one #" +
                                  std::to_string(firstItem) + ": one of them is taken",
                              statements.LineAt(first->place), false});
}

}  // namespace

void NoteDoubleLooks(const Statements& statements, const Quarantine& quarantine, CodePage codePage,
                     StepDocument& document) {
    Looks styles, layers;
    for (const Statement& statement : statements.All()) {
        if (quarantine.IsRemoved(statement)) continue;
        const auto references = statements.ReferencesOf(statement);
        if (statement.kind == "STYLED_ITEM" && references.size() > 1)
            styles[references.back().number].push_back(&statement);
        if (statement.kind != "PRESENTATION_LAYER_ASSIGNMENT") continue;
        for (const Reference& item : references) layers[item.number].push_back(&statement);
    }
    NoteDoubles(
        statements, styles, "have two styles of different colours",
        [&](const Statement& style) { return ColoursOf(statements, style); }, document);
    NoteDoubles(
        statements, layers, "stand on two layers",
        [&](const Statement& layer) { return FirstTextOf(statements, layer, codePage); }, document);
}

std::vector<StatementFault> ContextLooks(const Statements& statements, const Quarantine& quarantine) {
    std::vector<StatementFault> looks;
    for (const Statement& statement : statements.All()) {
        const bool isOfContext = statement.kind == "CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM" ||
                                 statement.kind == "CONTEXT_DEPENDENT_INVISIBILITY";
        if (isOfContext && !quarantine.IsRemoved(statement))
            looks.push_back({&statement, statement.place, "a look that holds everywhere (style_context)"});
    }
    return looks;
}

void NoteContextLooks(const Statements& statements, const Quarantine& quarantine, StepDocument& document) {
    std::set<std::size_t> places;
    for (const StatementFault& fault : quarantine.LostLooks())
        if (IsOfContext(fault) && fault.statement != nullptr) places.insert(fault.statement->place);
    if (places.empty()) return;
    const std::string_view first = statements.Content().substr(*places.begin());
    document.notes.push_back({std::to_string(places.size()) +
                                  " style(s) for one use or view alone passed over, the first one " +
                                  std::string(first.substr(0, first.find_first_of(" ="))),
                              statements.LineAt(*places.begin()), false});
}

}  // namespace brenvik::step
