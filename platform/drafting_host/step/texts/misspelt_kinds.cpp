// The modeller's own table says which kinds there are. Kinds of other schemas stand in sound files, so a kind
// counts as misspelt by its nearness to one of the table alone.
#include "drafting_host/step/texts/misspelt_kinds.h"

#include <RWStepAP214_ReadWriteModule.hxx>
#include <TCollection_AsciiString.hxx>

#include <algorithm>
#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "base/ascii.h"
#include "drafting_host/step/texts/statement_roles.h"

namespace brenvik::step {
namespace {

/// Whether the texts are the same but for one letter more, less or other, or two in the wrong order. Digits
/// tell kinds apart: of a plane or of space.
bool IsNear(std::string_view one, std::string_view other) {
    if (one.size() < other.size()) std::swap(one, other);
    if (one.size() - other.size() > 1) return false;
    const auto [first, second] = std::ranges::mismatch(one, other);
    std::string_view rest = one.substr(static_cast<std::size_t>(first - one.begin()));
    std::string_view otherRest = other.substr(static_cast<std::size_t>(second - other.begin()));
    if (rest.empty() || IsDigit(rest[0]) || (!otherRest.empty() && IsDigit(otherRest[0]))) return false;
    if (rest.size() > otherRest.size()) return rest.substr(1) == otherRest;
    if (rest.substr(1) == otherRest.substr(1)) return true;
    return rest.size() > 1 && rest[0] == otherRest[1] && rest[1] == otherRest[0] &&
           rest.substr(2) == otherRest.substr(2);
}

std::string_view View(const TCollection_AsciiString& text) {
    return {text.ToCString(), static_cast<std::size_t>(text.Length())};
}

/// The kind of the format that a kind without a meaning is near to, or blank.
std::string MeantKind(const RWStepAP214_ReadWriteModule& table, std::string_view kind) {
    constexpr std::size_t shortest = 5;  // of shorter ones too many are near to each other
    constexpr int most = 2000;           // numbers of the table, which answers "?" behind its end
    if (kind.size() < shortest) return {};
    if (table.CaseStep(TCollection_AsciiString(std::string(kind).c_str())) != 0) return {};
    for (int number = 1; number <= most; ++number)
        if (IsNear(kind, View(table.StepType(number)))) return std::string(View(table.StepType(number)));
    return {};
}

struct Count {
    const Statement* first = nullptr;
    std::size_t statements = 0;
};

}  // namespace

void NoteMisspeltKinds(const Statements& statements, StepDocument& document) {
    std::map<std::string_view, Count> kinds;
    for (const Statement& statement : statements.All()) {
        if (statement.kind.empty()) continue;
        Count& count = kinds[statement.kind];
        if (count.statements++ == 0) count.first = &statement;
    }
    const RWStepAP214_ReadWriteModule table;
    for (const auto& [kind, count] : kinds) {
        const std::string meant = MeantKind(table, kind);
        if (meant.empty()) continue;
        const std::string_view word = meant;
        const Role role = RoleOf(std::span(&word, 1));
        if (role == Role::Geometry || role == Role::Paperwork) continue;
        document.notes.push_back({std::to_string(count.statements) +
                                      " statement(s) of a kind that the format doesn't have, " +
                                      std::string(kind) + ", are passed over: " + meant + " may be meant",
                                  statements.LineAt(count.first->place), role != Role::Look});
    }
}

}  // namespace brenvik::step
