// One look at each statement. What needs another one's content asks for it by number.
#include "drafting_host/step/text_faults.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

#include "base/letter_case.h"
#include "base/numbers.h"
#include "drafting_host/step/places/place_operators.h"
#include "drafting_host/step/places/step_units.h"

namespace brenvik::step {
namespace {

bool IsOne(std::string_view kind, std::span<const std::string_view> kinds) {
    return std::ranges::find(kinds, kind) != kinds.end();
}

StatementFault OrientedEdgeFault(const Statements& statements, const Statement& edge) {
    for (const Reference& reference : statements.ReferencesOf(edge)) {
        const Statement* element = statements.Find(reference.number);
        if (element != nullptr && element->kind == "ORIENTED_EDGE")
            return {&edge, edge.place, "an oriented edge that holds an edge"};
    }
    return {};
}

/// One for each reference that leads nowhere: a list may lose them one by one.
void AddReferenceFaults(const Statements& statements, const Statement& statement,
                        std::vector<StatementFault>& faults) {
    for (const Reference& reference : statements.ReferencesOf(statement)) {
        if (reference.number == 0)
            faults.push_back(
                {&statement, reference.place, "statement numbers up to " + std::to_string(HighestStatement)});
        else if (statements.Find(reference.number) == nullptr)
            faults.push_back({&statement, reference.place,
                              "a statement #" + std::to_string(reference.number) + ", the file has none"});
    }
}

/// Kinds whose lists may be empty: the format or many programs have them so, and the modeller reads them.
bool MayHoldNothing(std::string_view kind) {
    constexpr auto kinds = std::to_array<std::string_view>(
        {"PRESENTATION_LAYER_ASSIGNMENT", "PRESENTATION_STYLE_ASSIGNMENT", "PERSON", "ORGANIZATION",
         "ADVANCED_FACE", "FACE_SURFACE", "FACE", "COORDINATES_LIST"});
    const bool isMesh = kind.find("TRIANGULATED") != kind.npos ||
                        (kind.starts_with("TESSELLATED_") && kind != "TESSELLATED_GEOMETRIC_SET");
    return isMesh || IsOne(kind, kinds);
}

void AddEmptyList(const Statements& statements, const Statement& statement,
                  std::vector<StatementFault>& faults) {
    if (statement.emptyList == 0 || MayHoldNothing(statement.kind)) return;
    const Role role = RoleIn(statements, statement);
    if (role == Role::Structure || role == Role::Items) return;
    faults.push_back(
        {&statement, statement.emptyList,
         "an entry in each list of " +
             (statement.kind.empty() ? "#" + std::to_string(statement.number) : std::string(statement.kind)) +
             ", found an empty one"});
}

/// Kinds of product data that the modeller falls over where a value of theirs is no reference, or in any
/// case. No shape hangs on them, and nobody here reads them.
bool IsTreacherous(std::string_view kind) {
    constexpr auto kinds = std::to_array<std::string_view>(
        {"EXTERNALLY_DEFINED_GENERAL_PROPERTY", "EDGP", "REP_ITEM_GROUP", "RPITGR", "CMMDTM",
         "DATUM_REFERENCE_COMPARTMENT", "DATUM_REFERENCE_ELEMENT", "GENERAL_DATUM_REFERENCE", "COMMON_DATUM",
         "FEA_MODEL", "FEA_MODEL_3D", "ANNOTATION_TEXT"});
    return IsOne(kind, kinds);
}

bool HoldsReferencesAlone(std::string_view text) {
    const std::string_view values = text.substr(std::min(text.find('('), text.size()));
    // A list may stand first, but none within it.
    return values.find('\'') == values.npos && values.find("((", 1) == values.npos;
}

/// The text behind the last quote of a statement, or behind its bracket where it has none.
std::string_view BehindName(std::string_view text) {
    const std::size_t quote = text.rfind('\'');
    const std::size_t start = quote == text.npos ? text.find('(') : quote;
    return text.substr(std::min(start + 1, text.size()));
}

/// A share of red, green or blue reaches from 0 to 1, but for the rounding of programs. The modeller refuses
/// the whole file for one below and makes another colour of one beyond.
bool IsColour(std::string_view text) {
    constexpr double most = 1.001;
    std::string_view values = BehindName(text);
    values = values.substr(std::min(values.find(',') + 1, values.size()));
    for (int part = 0; part < 3; ++part) {
        const std::size_t end = values.find_first_of(",)");
        if (end == values.npos) return false;
        // A statement may go on in the next line at any place between its values.
        std::string share(values.substr(0, end));
        std::erase_if(share, [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; });
        const double value = LenientNumber(share);
        if (NumberLength(share) != share.size() || !(value >= 0 && value <= most)) return false;
        values.remove_prefix(end + 1);
    }
    return true;
}

bool IsNamedColour(std::string_view text) {
    constexpr auto names = std::to_array<std::string_view>(
        {"red", "green", "blue", "yellow", "magenta", "cyan", "black", "white"});
    const std::size_t open = text.find('\''), close = text.rfind('\'');
    if (open == close) return false;
    // The modeller compares letter by letter, and makes yellow of what it doesn't know.
    return IsOne(text.substr(open + 1, close - open - 1), names);
}

void AddFalseColour(const Statements& statements, const Statement& statement,
                    std::vector<StatementFault>& faults) {
    const std::string_view text = TextOf(statements, statement);
    if (statement.kind == "COLOUR_RGB" && !IsColour(text))
        faults.push_back({&statement, statement.place,
                          "three shares of a colour from 0 to 1, found \"" +
                              LineForMessage(statements.Content(), statement.place) + "\""});
    if (statement.kind == "DRAUGHTING_PRE_DEFINED_COLOUR" && !IsNamedColour(text))
        faults.push_back({&statement, statement.place,
                          "red, green, blue, yellow, magenta, cyan, black or white, found \"" +
                              LineForMessage(statements.Content(), statement.place) + "\""});
}

/// A style that leads to no other statement says nothing, and the modeller passes over it without a word. One
/// that is said to be none, or that is empty, is meant so.
void AddStyleOfNothing(const Statements& statements, const Statement& statement,
                       std::vector<StatementFault>& faults) {
    constexpr auto kinds =
        std::to_array<std::string_view>({"PRESENTATION_STYLE_ASSIGNMENT", "SURFACE_STYLE_USAGE",
                                         "SURFACE_SIDE_STYLE", "SURFACE_STYLE_FILL_AREA", "FILL_AREA_STYLE",
                                         "FILL_AREA_STYLE_COLOUR", "STYLED_ITEM", "OVER_RIDING_STYLED_ITEM"});
    if (!IsOne(statement.kind, kinds) || statement.emptyList != 0) return;
    const std::size_t wanted = statement.kind.ends_with("STYLED_ITEM") ? 2 : 1;
    const std::string_view text = TextOf(statements, statement);
    if (statements.ReferencesOf(statement).size() >= wanted || text.find(".NULL.") != text.npos) return;
    faults.push_back({&statement, statement.place,
                      "a style made of other statements, found \"" +
                          LineForMessage(statements.Content(), statement.place) + "\""});
}

/// Solids by sweeps and set operations: they are items as good as others, and the modeller drops them without
/// a word. What they are made of falls with them.
void AddSolidsWithoutFaces(const Statements& statements, const Statement& holder,
                           std::vector<StatementFault>& faults) {
    constexpr auto kinds = std::to_array<std::string_view>({"CSG_SOLID",
                                                            "SWEPT_AREA_SOLID",
                                                            "EXTRUDED_AREA_SOLID",
                                                            "REVOLVED_AREA_SOLID",
                                                            "SURFACE_CURVE_SWEPT_AREA_SOLID",
                                                            "SWEPT_FACE_SOLID",
                                                            "EXTRUDED_FACE_SOLID",
                                                            "REVOLVED_FACE_SOLID",
                                                            "SURFACE_CURVE_SWEPT_FACE_SOLID",
                                                            "SWEPT_DISK_SOLID",
                                                            "SOLID_REPLICA",
                                                            "BOOLEAN_RESULT",
                                                            "HALF_SPACE_SOLID",
                                                            "BOXED_HALF_SPACE",
                                                            "BLOCK",
                                                            "SPHERE",
                                                            "TORUS",
                                                            "ELLIPSOID",
                                                            "RIGHT_CIRCULAR_CYLINDER",
                                                            "RIGHT_CIRCULAR_CONE",
                                                            "RIGHT_ANGULAR_WEDGE",
                                                            "TRIMMED_VOLUME"});
    if (!holder.kind.ends_with("REPRESENTATION") || RoleIn(statements, holder) != Role::Items) return;
    for (const Reference& reference : statements.ReferencesOf(holder)) {
        const Statement* item = statements.Find(reference.number);
        if (item != nullptr && IsOne(item->kind, kinds))
            faults.push_back(
                {item, item->place,
                 "a solid given by its faces (MANIFOLD_SOLID_BREP), found " + std::string(item->kind)});
    }
}

void AddUnreadKind(const Statement& statement, const Statements& statements,
                   std::vector<StatementFault>& faults) {
    if (IsTreacherous(statement.kind))
        faults.push_back({&statement, statement.place, "no " + std::string(statement.kind), false});
    if (statement.kind == "PRESENTATION_STYLE_BY_CONTEXT" &&
        !HoldsReferencesAlone(TextOf(statements, statement)))
        faults.push_back({&statement, statement.place, "a style made of other statements"});
}

/// Parts come to lie where nobody drew them where what sets their shapes into each other is none.
void AddFalseTransformation(const Statements& statements, const Statement& statement,
                            std::vector<StatementFault>& faults) {
    constexpr std::string_view mark = "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION";
    if (!statement.kind.empty()) return;
    const std::string_view text = TextOf(statements, statement);
    const std::size_t place = text.find(mark);
    if (place == text.npos) return;
    for (const Reference& reference : statements.ReferencesOf(statement)) {
        if (reference.place < statement.place + place) continue;
        const Statement* const one = statements.Find(reference.number);
        if (one == nullptr || one->kind == "ITEM_DEFINED_TRANSFORMATION" ||
            TextOf(statements, *one).find("CARTESIAN_TRANSFORMATION_OPERATOR") != text.npos)
            return;
        faults.push_back(
            {&statement, statement.place,
             "a transformation such as ITEM_DEFINED_TRANSFORMATION, found " +
                 (one->kind.empty() ? "#" + std::to_string(one->number) : std::string(one->kind))});
        return;
    }
}

/// The modeller takes a number beyond a double's range for a direction that isn't there, or computes with it
/// without end. Points and units are looked at elsewhere.
void AddInfiniteNumbers(const Statements& statements, std::vector<StatementFault>& faults) {
    constexpr std::size_t digits = 3;  // of an exponent that can be too high
    const std::string_view content = statements.Content();
    for (std::size_t at = content.find('E'); at != content.npos; at = content.find('E', at + 1)) {
        std::size_t end = at + 1;
        if (end < content.size() && content[end] == '+') ++end;
        const std::size_t from = end;
        while (end < content.size() && content[end] >= '0' && content[end] <= '9') ++end;
        if (end - from < digits) continue;
        const std::size_t start = content.find_last_not_of("-.0123456789", at - 1) + 1;
        double number = 0;
        const auto read = std::from_chars(content.data() + start, content.data() + end, number);
        if (start == at || read.ec != std::errc::result_out_of_range) continue;
        const auto all = statements.All();
        const auto behind = std::ranges::upper_bound(all, at, {}, &Statement::place);
        if (behind == all.begin() || std::prev(behind)->end < at) continue;
        const Statement& statement = *std::prev(behind);
        const std::string_view ahead = content.substr(statement.place, at - statement.place);
        const bool isText = std::ranges::count(ahead, '\'') % 2 != 0;
        if (isText || statement.kind == "CARTESIAN_POINT" ||
            statement.kind.find("UNIT") != statement.kind.npos)
            continue;
        faults.push_back(
            {&statement, start, "a finite number, found " + std::string(content.substr(start, end - start))});
    }
}

/// The modeller counts through a list for each of its entries, which never ends with a hundred thousand.
void AddLongPoint(const Statements& statements, const Statement& statement,
                  std::vector<StatementFault>& faults) {
    constexpr std::ptrdiff_t most = 1000;  // shorter ones are reported where they are used
    if (statement.end - statement.place <= most) return;
    if (statement.kind != "CARTESIAN_POINT" && statement.kind != "DIRECTION") return;
    const auto values = std::ranges::count(BehindName(TextOf(statements, statement)), ',');
    if (values > most)
        faults.push_back(
            {&statement, statement.place, "at most three coordinates, found " + std::to_string(values)});
}

void AddFaults(const Statements& statements, const Statement& statement,
               std::vector<StatementFault>& faults) {
    if (!statement.wellFormed) {
        faults.push_back({&statement, statement.place,
                          "well-formed STEP statements (#n = TYPE(...);), found \"" +
                              LineForMessage(statements.Content(), statement.place) + "\""});
        return;
    }
    if (statement.number == 0)
        faults.push_back(
            {&statement, statement.place, "statement numbers up to " + std::to_string(HighestStatement)});
    AddReferenceFaults(statements, statement, faults);
    AddEmptyList(statements, statement, faults);
    AddUnreadKind(statement, statements, faults);
    AddFalseColour(statements, statement, faults);
    AddStyleOfNothing(statements, statement, faults);
    AddLongPoint(statements, statement, faults);
    AddSolidsWithoutFaces(statements, statement, faults);
    if (const auto expected = FaultOfOperator(statements, statement))
        faults.push_back({&statement, statement.place, *expected});
    AddFalseTransformation(statements, statement, faults);
    if (const auto fault = FaultOfUnit(statements, statement))
        faults.push_back({&statement, fault->place, fault->expected});
    if (statement.kind != "ORIENTED_EDGE") return;
    StatementFault nested = OrientedEdgeFault(statements, statement);
    if (nested.statement != nullptr) faults.push_back(std::move(nested));
}

}  // namespace

std::vector<StatementFault> TextFaults(const Statements& statements) {
    std::vector<StatementFault> faults;
    for (const Statement& statement : statements.All()) AddFaults(statements, statement, faults);
    AddInfiniteNumbers(statements, faults);
    return faults;
}

}  // namespace brenvik::step
