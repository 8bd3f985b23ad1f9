// The plain form has the values of the highest kind first (ISO 10303-21, internal mapping); the other one has
// the kinds by the alphabet, each with its own values.
#include "drafting_host/step/texts/plain_forms.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/ascii.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

constexpr std::size_t Nowhere = std::string_view::npos;

/// What stands above a kind, ahead of the kinds that its row names.
enum class Above { Nothing, Representation, Item, Geometry, Topology };

std::string_view KindsOf(Above above) {
    switch (above) {
        case Above::Nothing:
            return "";
        case Above::Representation:
            return "REPRESENTATION SHAPE_REPRESENTATION ";
        case Above::Item:
            return "REPRESENTATION_ITEM ";
        case Above::Geometry:
            return "REPRESENTATION_ITEM GEOMETRIC_REPRESENTATION_ITEM ";
        case Above::Topology:
            return "REPRESENTATION_ITEM TOPOLOGICAL_REPRESENTATION_ITEM ";
    }
    return "";
}

struct Row {
    Above above;
    std::string_view kinds;  ///< From the highest to the statement's own.
};

/// By the schemas of AP203, AP214 and AP242 (ISO 10303-41 to -44). A kind without values of its own may stand
/// anywhere in its row.
constexpr std::array Rows{
    Row{Above::Nothing, "MEASURE_WITH_UNIT LENGTH_MEASURE_WITH_UNIT"},
    Row{Above::Nothing, "MEASURE_WITH_UNIT PLANE_ANGLE_MEASURE_WITH_UNIT"},
    Row{Above::Nothing, "MEASURE_WITH_UNIT UNCERTAINTY_MEASURE_WITH_UNIT"},
    Row{Above::Nothing, "PRODUCT"},
    Row{Above::Nothing, "PRODUCT_DEFINITION"},
    Row{Above::Nothing, "PRODUCT_DEFINITION_FORMATION"},
    Row{Above::Nothing, "PRODUCT_DEFINITION_FORMATION PRODUCT_DEFINITION_FORMATION_WITH_SPECIFIED_SOURCE"},
    Row{Above::Nothing, "PROPERTY_DEFINITION PRODUCT_DEFINITION_SHAPE"},
    Row{Above::Nothing, "PROPERTY_DEFINITION_REPRESENTATION SHAPE_DEFINITION_REPRESENTATION"},
    Row{Above::Nothing, "REPRESENTATION_RELATIONSHIP SHAPE_REPRESENTATION_RELATIONSHIP"},
    Row{Above::Nothing,
        "PRODUCT_DEFINITION_RELATIONSHIP PRODUCT_DEFINITION_USAGE ASSEMBLY_COMPONENT_USAGE "
        "NEXT_ASSEMBLY_USAGE_OCCURRENCE"},
    Row{Above::Nothing, "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION"},
    Row{Above::Nothing, "ITEM_DEFINED_TRANSFORMATION"},
    Row{Above::Nothing, "REPRESENTATION_MAP"},
    Row{Above::Nothing, "PRESENTATION_LAYER_ASSIGNMENT"},
    Row{Above::Nothing, "PRESENTATION_STYLE_ASSIGNMENT"},
    Row{Above::Nothing, "COLOUR COLOUR_SPECIFICATION COLOUR_RGB"},
    Row{Above::Nothing, "REPRESENTATION SHAPE_REPRESENTATION"},
    Row{Above::Representation, "ADVANCED_BREP_SHAPE_REPRESENTATION"},
    Row{Above::Representation, "FACETED_BREP_SHAPE_REPRESENTATION"},
    Row{Above::Representation, "MANIFOLD_SURFACE_SHAPE_REPRESENTATION"},
    Row{Above::Item, "MAPPED_ITEM"},
    Row{Above::Item, "STYLED_ITEM"},
    Row{Above::Geometry, "PLACEMENT AXIS1_PLACEMENT"},
    Row{Above::Geometry, "PLACEMENT AXIS2_PLACEMENT_2D"},
    Row{Above::Geometry, "PLACEMENT AXIS2_PLACEMENT_3D"},
    Row{Above::Geometry, "POINT CARTESIAN_POINT"},
    Row{Above::Geometry, "DIRECTION"},
    Row{Above::Geometry, "VECTOR"},
    Row{Above::Geometry, "CURVE LINE"},
    Row{Above::Geometry, "CURVE CONIC CIRCLE"},
    Row{Above::Geometry, "CURVE CONIC ELLIPSE"},
    Row{Above::Geometry, "CURVE BOUNDED_CURVE B_SPLINE_CURVE B_SPLINE_CURVE_WITH_KNOTS"},
    Row{Above::Geometry, "SURFACE ELEMENTARY_SURFACE PLANE"},
    Row{Above::Geometry, "SURFACE ELEMENTARY_SURFACE CYLINDRICAL_SURFACE"},
    Row{Above::Geometry, "SURFACE ELEMENTARY_SURFACE CONICAL_SURFACE"},
    Row{Above::Geometry, "SURFACE ELEMENTARY_SURFACE SPHERICAL_SURFACE"},
    Row{Above::Geometry, "SURFACE ELEMENTARY_SURFACE TOROIDAL_SURFACE"},
    Row{Above::Geometry, "SURFACE BOUNDED_SURFACE B_SPLINE_SURFACE B_SPLINE_SURFACE_WITH_KNOTS"},
    Row{Above::Geometry, "SOLID_MODEL MANIFOLD_SOLID_BREP"},
    Row{Above::Geometry, "SOLID_MODEL MANIFOLD_SOLID_BREP BREP_WITH_VOIDS"},
    Row{Above::Geometry, "SOLID_MODEL MANIFOLD_SOLID_BREP FACETED_BREP"},
    Row{Above::Topology, "CONNECTED_FACE_SET CLOSED_SHELL"},
    Row{Above::Topology, "CONNECTED_FACE_SET OPEN_SHELL"},
    Row{Above::Topology, "GEOMETRIC_REPRESENTATION_ITEM FACE FACE_SURFACE"},
    Row{Above::Topology, "GEOMETRIC_REPRESENTATION_ITEM FACE FACE_SURFACE ADVANCED_FACE"},
    Row{Above::Topology, "FACE_BOUND"},
    Row{Above::Topology, "FACE_BOUND FACE_OUTER_BOUND"},
    Row{Above::Topology, "LOOP PATH EDGE_LOOP"},
    Row{Above::Topology, "EDGE ORIENTED_EDGE"},
    Row{Above::Topology, "GEOMETRIC_REPRESENTATION_ITEM EDGE EDGE_CURVE"},
    Row{Above::Topology, "GEOMETRIC_REPRESENTATION_ITEM VERTEX VERTEX_POINT"},
};

using Kinds = std::vector<std::string>;

Kinds WordsOf(const std::string& text) {
    Kinds words;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        words.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return words;
}

std::string KeyOf(Kinds kinds) {
    std::ranges::sort(kinds);
    std::string key;
    for (const std::string& kind : kinds) key += kind + ' ';
    return key;
}

/// The kinds from the highest on, by the key of all of them.
const std::unordered_map<std::string, Kinds>& Table() {
    static const std::unordered_map<std::string, Kinds> table = [] {
        std::unordered_map<std::string, Kinds> made;
        for (const Row& row : Rows) {
            Kinds kinds = WordsOf(std::string(KindsOf(row.above)) + std::string(row.kinds));
            std::string key = KeyOf(kinds);
            made.emplace(std::move(key), std::move(kinds));
        }
        return made;
    }();
    return table;
}

std::size_t BehindBlanks(std::string_view content, std::size_t place) {
    return std::min(content.find_first_not_of(" \t\r\n", place), content.size());
}

std::size_t BehindText(std::string_view content, std::size_t place) {
    const std::size_t end = content.find('\'', place + 1);
    return end == Nowhere ? content.size() : end + 1;
}

/// Behind the bracket that closes the one at `place`.
std::size_t BehindBrackets(std::string_view content, std::size_t place) {
    long depth = 0;
    while (place < content.size()) {
        const char c = content[place];
        if (c == ';') return Nowhere;
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        place = c == '\'' ? BehindText(content, place) : place + 1;
        if (depth == 0) return place;
    }
    return Nowhere;
}

/// The kinds of a statement with what each has in its brackets, and where it ends.
struct KindsWithValues {
    std::vector<std::pair<std::string, std::string_view>> parts;
    std::size_t end = 0;
};

/// Of the statement whose outer bracket stands at `open`; none where its form is another.
std::optional<KindsWithValues> PartsAt(std::string_view content, std::size_t open) {
    KindsWithValues found;
    std::size_t at = BehindBlanks(content, open + 1);
    while (at < content.size() && content[at] != ')') {
        std::size_t end = at;
        while (end < content.size() &&
               (IsAsciiLetter(content[end]) || IsDigit(content[end]) || content[end] == '_'))
            ++end;
        const std::size_t bracket = BehindBlanks(content, end);
        if (end == at || bracket == content.size() || content[bracket] != '(') return std::nullopt;
        const std::size_t behind = BehindBrackets(content, bracket);
        if (behind == Nowhere) return std::nullopt;
        found.parts.emplace_back(content.substr(at, end - at),
                                 content.substr(bracket + 1, behind - bracket - 2));
        at = BehindBlanks(content, behind);
    }
    if (at == content.size()) return std::nullopt;
    found.end = at + 1;
    const std::size_t stop = BehindBlanks(content, found.end);
    if (stop == content.size() || content[stop] != ';') return std::nullopt;
    return found;
}

std::optional<TextEdit> PlainFormAt(std::string_view content, std::size_t open) {
    const auto found = PartsAt(content, open);
    if (!found) return std::nullopt;
    Kinds kinds;
    for (const auto& part : found->parts) kinds.push_back(part.first);
    const auto row = Table().find(KeyOf(std::move(kinds)));
    if (row == Table().end()) return std::nullopt;
    std::string text = row->second.back() + "(";
    for (const std::string& kind : row->second) {
        const auto part = std::ranges::find(found->parts, kind, [](const auto& one) { return one.first; });
        if (BehindBlanks(part->second, 0) == part->second.size()) continue;
        if (text.back() != '(') text += ',';
        text += part->second;
    }
    text += ')';
    const auto lines = [](std::string_view piece) { return std::ranges::count(piece, '\n'); };
    const auto missing = lines(content.substr(open, found->end - open)) - lines(text);
    text.append(static_cast<std::size_t>(missing), '\n');
    return TextEdit{open, found->end - open, std::move(text)};
}

}  // namespace

std::string WithPlainForms(std::string content) {
    std::vector<TextEdit> edits;
    const std::string_view text = content;
    for (std::size_t at = text.find_first_of("'="); at < text.size(); at = text.find_first_of("'=", at)) {
        if (text[at] == '\'') {
            at = BehindText(text, at);
            continue;
        }
        at = BehindBlanks(text, at + 1);
        if (at == text.size() || text[at] != '(') continue;
        if (auto edit = PlainFormAt(text, at)) {
            at += edit->length;
            edits.push_back(std::move(*edit));
        }
    }
    return edits.empty() ? content : WithEdits(std::move(content), std::move(edits));
}

}  // namespace brenvik::step
