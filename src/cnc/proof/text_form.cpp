// Sections, the layers' records and the entities, group by group.
#include "cnc/proof/text_form.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <initializer_list>
#include <map>
#include <optional>
#include <set>
#include <span>

#include "base/letter_case.h"
#include "base/quoted.h"
#include "base/text.h"
#include "base/trimmed.h"
#include "cnc/proof/written_text.h"

namespace brenvik {

namespace {

constexpr std::string_view Version = "AC1015", ModelLayout = "Model";
constexpr std::array<std::string_view, 6> SectionNames{"HEADER", "CLASSES",  "TABLES",
                                                       "BLOCKS", "ENTITIES", "OBJECTS"};
/// Of $INSUNITS.
constexpr int NoUnit = 0, Inches = 1, Millimetres = 4;
/// Flags of layers and polylines.
constexpr int Frozen = 1, Closed = 1, InSpace = 8, LinetypeRunsOn = 128, VertexInSpace = 32;
/// The colour of an entity that has its layer's.
constexpr int ByLayer = 256;
/// A run leaves its layers the colour of new ones.
constexpr int ColorOfLayers = 7;
/// From here on groups belong to other programs.
constexpr int ExtendedData = 1000, LastGroup = 1071;

/// Directions are written with six decimals at the least.
constexpr double SameLength = 1e-5;

namespace group {
constexpr int Type = 0, Name = 2, Handle = 5, Layer = 8, X = 10, Y = 20, Z = 30, Elevation = 38,
              Thickness = 39, Radius = 40, StartWidth = 40, EndWidth = 41, Bulge = 42, Width = 43,
              Hidden = 60, Color = 62, HasVertices = 66, InPaper = 67, Flags = 70, Count = 90,
              VertexNumber = 91, NormalX = 210, NormalY = 220, NormalZ = 230, Layout = 410, TrueColor = 420;
}

/// What says nothing of shape: handles, owners, classes, reactors, line styles, weights and plot styles.
constexpr std::array Harmless{5, 6, 48, 100, 102, 330, 360, 370, 390};
/// Groups that every entity may have, each once.
constexpr std::array OfEntities{group::Layer, group::Color, group::Hidden, group::InPaper, group::Layout};

/// What an entity of a type may say once, and what it must.
struct TypeRules {
    std::string_view type;
    std::span<const int> once, required;
};
constexpr std::array PathOnce{group::Elevation, group::Thickness, group::Width,   group::Flags,
                              group::Count,     group::NormalX,   group::NormalY, group::NormalZ};
constexpr std::array PathNeeds{group::Layer, group::Count, group::Flags, group::X, group::Y};
constexpr std::array CircleOnce{group::X,         group::Y,       group::Z,       group::Radius,
                                group::Thickness, group::NormalX, group::NormalY, group::NormalZ};
constexpr std::array CircleNeeds{group::Layer, group::X, group::Y, group::Z, group::Radius};
constexpr std::array SheetOnce{group::HasVertices, group::X,         group::Y,
                               group::Z,           group::Thickness, group::Flags,
                               group::NormalX,     group::NormalY,   group::NormalZ};
constexpr std::array SheetNeeds{group::Layer, group::HasVertices, group::Flags};
constexpr std::array VertexOnce{group::X, group::Y, group::Z, group::Flags};
constexpr std::array VertexNeeds{group::Layer, group::X, group::Y, group::Z, group::Flags};
constexpr std::array<int, 0> Nothing{};
constexpr std::array EndNeeds{group::Layer};
constexpr std::array AllRules{
    TypeRules{"LWPOLYLINE", PathOnce, PathNeeds}, TypeRules{"CIRCLE", CircleOnce, CircleNeeds},
    TypeRules{"POLYLINE", SheetOnce, SheetNeeds}, TypeRules{"VERTEX", VertexOnce, VertexNeeds},
    TypeRules{"SEQEND", Nothing, EndNeeds}};

/// What a vertex of a path says, in this order: its place first.
constexpr std::array OfVertices{group::X,        group::Y,     group::StartWidth,
                                group::EndWidth, group::Bulge, group::VertexNumber};

bool Holds(std::span<const int> codes, int code) { return std::ranges::find(codes, code) != codes.end(); }

bool IsReal(int code) { return (code >= 10 && code < 60) || (code >= 210 && code < 240); }
bool IsWhole(int code) { return (code >= 60 && code < 100); }

template <class Number>
std::optional<Number> Read(std::string_view text) {
    if (text.starts_with('+')) text.remove_prefix(1);
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

/// Whether a text has a character by its number that needs none.
bool SpellsPlainCharacters(std::string_view text) {
    constexpr std::size_t mark = 3, digits = 4;
    for (std::size_t at = text.find('\\'); at != std::string_view::npos; at = text.find('\\', at + 1)) {
        const std::string_view escape = text.substr(at);
        if (escape.size() < mark + digits || FoldUpper(escape.substr(0, mark)) != "\\U+") continue;
        unsigned unit = 0;
        const char* const first = escape.data() + mark;
        const auto [end, error] = std::from_chars(first, first + digits, unit, 16);
        const bool printable = unit >= ' ' && unit <= '~' && unit != '\\';
        if (error == std::errc() && end == first + digits && printable) return true;
    }
    return false;
}

struct Group {
    int code = 0;
    std::string_view value;
    std::size_t line = 0;
    /// Without the blanks that numbers may stand among.
    std::string_view Number() const { return Trimmed(value); }
};

/// An entity or a record of a table: its type and what follows up to the next.
struct Record {
    std::string_view type;
    std::size_t line = 0;
    std::span<const Group> groups;

    const Group* Find(int code) const {
        const auto found = std::ranges::find(groups, code, &Group::code);
        return found == groups.end() ? nullptr : &*found;
    }
    std::ptrdiff_t CountOf(int code) const { return std::ranges::count(groups, code, &Group::code); }
    std::string LayerName() const {
        const Group* const layer = Find(group::Layer);
        return layer == nullptr ? std::string() : std::string(layer->value);
    }
    std::optional<int> Whole(int code) const {
        const Group* const found = Find(code);
        return found == nullptr ? std::nullopt : Read<int>(found->Number());
    }
};

class FormCheck {
  public:
    FormCheck(std::string_view content, const RunUnits& units) : mUnits(units) { ReadGroups(content); }

    TextForm Check() {
        if (mForm.faults.empty()) LookAtSections();
        return std::move(mForm);
    }

  private:
    void Fault(std::size_t line, const std::string& what) {
        mForm.faults.push_back("line " + std::to_string(line) + ": " + what);
    }
    static std::string OnLayer(const Record& record) {
        return "the " + std::string(record.type) + " on layer " + record.LayerName();
    }

    // Lines, sections and records.

    void ReadGroups(std::string_view content) {
        TextGroups groups(content);
        while (const std::optional<TextGroup> next = groups.Next()) {
            const std::optional<int> code = Read<int>(Trimmed(next->code));
            if (!code)
                return Fault(next->line,
                             "expected the number of a group, found \"" + std::string(next->code) + "\"");
            constexpr int comment = 999;
            if (*code == comment) continue;
            mGroups.push_back({*code, next->value, next->line});
            if (*code == group::Type && next->value == "EOF") return;
        }
    }

    void LookAtSections() {
        std::map<std::string_view, int> met;
        std::span<const Group> rest(mGroups);
        while (!rest.empty()) {
            if (rest.front().code == group::Type && rest.front().value == "EOF") break;
            const bool begins = rest.size() > 1 && rest[0].code == group::Type &&
                                rest[0].value == "SECTION" && rest[1].code == group::Name;
            if (!begins) return Fault(rest.front().line, "something that is in no section");
            const auto end = std::ranges::find_if(rest.subspan(2), [](const Group& each) {
                return each.code == group::Type &&
                       (each.value == "ENDSEC" || each.value == "SECTION" || each.value == "EOF");
            });
            const std::size_t length = static_cast<std::size_t>(end - rest.begin());
            if (length == rest.size() || end->value != "ENDSEC")
                return Fault(rest.front().line, "the section " + std::string(rest[1].value) + " has no end");
            ++met[rest[1].value];
            LookAtSection(rest[1].value, rest.subspan(2, length - 2));
            rest = rest.subspan(length + 1);
        }
        for (const std::string_view name : SectionNames)
            if (met[name] != 1)
                mForm.faults.push_back("the section " + std::string(name) +
                                       (met[name] == 0 ? " is missing" : " stands more than once"));
    }

    void LookAtSection(std::string_view name, std::span<const Group> groups) {
        if (name == "HEADER")
            LookAtHeader(groups);
        else
            LookAtHandles(groups);
        if (name == "TABLES") {
            ExpectPairs(groups, "TABLE", "ENDTAB");
            ReadLayers(RecordsOf(groups));
        }
        if (name == "BLOCKS") ExpectPairs(groups, "BLOCK", "ENDBLK");
        if (name == "ENTITIES") LookAtEntities(RecordsOf(groups));
    }

    /// Of two objects of one handle a reader keeps one.
    void LookAtHandles(std::span<const Group> groups) {
        for (const Group& each : groups)
            if (each.code == group::Handle && !mHandles.insert(each.Number()).second)
                Fault(each.line, "the handle " + std::string(each.Number()) + " stands twice");
    }

    void ExpectPairs(std::span<const Group> groups, std::string_view begin, std::string_view end) {
        const auto countOf = [groups](std::string_view type) {
            return std::ranges::count_if(
                groups, [type](const Group& each) { return each.code == group::Type && each.value == type; });
        };
        if (countOf(begin) != countOf(end))
            mForm.faults.push_back("it has not as many " + std::string(end) + " as " + std::string(begin));
    }

    static std::vector<Record> RecordsOf(std::span<const Group> groups) {
        std::vector<Record> records;
        for (std::size_t i = 0; i < groups.size(); ++i) {
            if (groups[i].code == group::Type)
                records.push_back({groups[i].value, groups[i].line, groups.subspan(i + 1, 0)});
            else if (!records.empty())
                records.back().groups = {records.back().groups.data(), records.back().groups.size() + 1};
        }
        return records;
    }

    // The head, and the layers.

    void LookAtHeader(std::span<const Group> groups) {
        constexpr int variable = 9;
        std::map<std::string_view, int> met;
        for (std::size_t i = 0; i + 1 < groups.size(); ++i) {
            if (groups[i].code != variable) continue;
            const Group& value = groups[i + 1];
            if (++met[groups[i].value] > 1)
                Fault(groups[i].line, std::string(groups[i].value) + " stands more than once");
            if (groups[i].value == "$ACADVER" && value.value != Version)
                Fault(value.line, "the file is of the version " + std::string(value.value) +
                                      ", and the run's files are of " + std::string(Version));
            if (groups[i].value == "$INSUNITS") LookAtUnit(value);
            if (groups[i].value == "$MEASUREMENT" && mUnits.head)
                LookAtNumber("$MEASUREMENT", value, mUnits.head->measurement);
        }
        if (!met.contains("$ACADVER")) mForm.faults.emplace_back("the head names no version");
        if (!mUnits.head) return;
        if (mUnits.head->insertUnits != 0 && !met.contains("$INSUNITS"))
            mForm.faults.emplace_back("the head has no $INSUNITS");
        if (mUnits.head->measurement != 0 && !met.contains("$MEASUREMENT"))
            mForm.faults.emplace_back("the head has no $MEASUREMENT");
    }

    void LookAtNumber(const std::string& name, const Group& value, int wanted) {
        if (Read<int>(value.Number()) != wanted)
            Fault(value.line, name + " is " + std::string(value.Number()) + ", and the run writes " +
                                  std::to_string(wanted));
    }

    void LookAtUnit(const Group& value) {
        const std::optional<int> unit = Read<int>(value.Number());
        if (mUnits.head && unit == mUnits.head->insertUnits) return;
        if (unit == NoUnit || unit == (mUnits.metric ? Millimetres : Inches)) {
            if (mUnits.head) LookAtNumber("$INSUNITS", value, mUnits.head->insertUnits);
            return;
        }
        Fault(value.line, "$INSUNITS is " + std::string(value.Number()) + ", and the run's lengths are in " +
                              (mUnits.metric ? "millimetres (4)" : "inches (1)"));
    }

    void ReadLayers(const std::vector<Record>& records) {
        for (const Record& record : records) {
            if (record.type != "LAYER") continue;
            const Group* const name = record.Find(group::Name);
            if (name == nullptr) {
                Fault(record.line, "a layer without a name");
                continue;
            }
            // To some receivers they are one layer, and to others two.
            const auto [other, isNew] = mFolded.emplace(FoldUpper(name->value), name->value);
            if (!isNew && other->second != name->value)
                Fault(record.line, "the layers " + std::string(other->second) + " and " +
                                       std::string(name->value) + " differ in the case of letters alone");
            if (!mLayers.emplace(name->value, record).second)
                Fault(record.line, "the layer " + std::string(name->value) + " stands twice in the table");
        }
    }

    /// Receivers pass over what can't be seen.
    void LookAtLayer(const Record& entity) {
        const std::string name = entity.LayerName();
        if (!mLooked.insert(name).second) return;
        // Some receivers read the name to its last letter, others without the blank.
        if (Trimmed(name) != name)
            Fault(entity.line, "the layer " + InQuotes(name) + " begins or ends with a blank");
        if (SpellsPlainCharacters(name))
            Fault(entity.line, "the layer " + InQuotes(name) +
                                   " has characters as \\U+XXXX that stand for themselves, which some "
                                   "receivers take as they are written");
        const auto layer = mLayers.find(name);
        if (layer == mLayers.end())
            return Fault(entity.line, "the layer " + name + " is not in the table of layers");
        const Record& record = layer->second;
        const std::optional<int> flags = record.Whole(group::Flags), color = record.Whole(group::Color);
        if (!flags || (*flags & Frozen) != 0) Fault(record.line, "the layer " + name + " is frozen");
        if (record.Find(group::Color) == nullptr)
            Fault(record.line, "the layer " + name + " has no colour (group 62)");
        else if (!color || *color < 0)
            Fault(record.line, "the layer " + name + " is turned off");
        if (record.CountOf(group::Color) > 1)
            Fault(record.line, "the layer " + name + " has the group 62 twice");
        if (record.Find(group::TrueColor) != nullptr)
            Fault(record.line,
                  "the layer " + name + " has a true colour (group 420), and the run's have none");
    }

    /// What is by its layer has the layer's colour, and some receivers tell outlines and holes by it.
    void LookAtColorOfLayer(const Record& entity) {
        const auto layer = mLayers.find(entity.LayerName());
        if (layer == mLayers.end() || entity.Whole(group::Color).value_or(ByLayer) != ByLayer) return;
        const std::optional<int> color = layer->second.Whole(group::Color);
        if (!color || std::abs(*color) == ColorOfLayers || !mColored.insert(layer->first).second) return;
        Fault(layer->second.line, "the layer " + entity.LayerName() + " has the colour " +
                                      std::to_string(std::abs(*color)) + " and not " +
                                      std::to_string(ColorOfLayers) + ", and " + OnLayer(entity) +
                                      " has its layer's colour");
    }

    // Entities.

    void LookAtEntities(const std::vector<Record>& records) {
        const Record* polyline = nullptr;
        for (const Record& record : records) {
            const bool ofPolyline = record.type == "VERTEX" || record.type == "SEQEND";
            if (ofPolyline != (polyline != nullptr))
                Fault(record.line, ofPolyline ? std::string(record.type) + " without a POLYLINE"
                                              : "a POLYLINE that SEQEND doesn't close");
            if (!ofPolyline) ++mForm.entities;
            const auto rules = std::ranges::find(AllRules, record.type, &TypeRules::type);
            // Whatever else the drawing holds is reported when its entities are read.
            if (rules != AllRules.end()) LookAtEntity(record, *rules, polyline);
            if (record.type == "POLYLINE")
                polyline = &record;
            else if (record.type != "VERTEX")
                polyline = nullptr;
        }
        if (polyline != nullptr) Fault(polyline->line, "a POLYLINE that SEQEND doesn't close");
    }

    void LookAtEntity(const Record& record, const TypeRules& rules, const Record* polyline) {
        for (const Group& each : record.groups) LookAtGroup(record, rules, each);
        for (const int code : rules.required)
            if (record.Find(code) == nullptr) Miss(record, code);
        const std::ptrdiff_t normals =
            record.CountOf(group::NormalX) + record.CountOf(group::NormalY) + record.CountOf(group::NormalZ);
        if (normals != 0 && normals != 3) Fault(record.line, OnLayer(record) + " has half a direction");
        if (normals == 3) LookAtDirection(record);
        Expect(record, group::Hidden, {0}, "is hidden");
        Expect(record, group::InPaper, {0}, "lies in paper space");
        if (record.type == "LWPOLYLINE") LookAtPath(record);
        if (record.type == "POLYLINE") {
            Expect(record, group::Flags, {Closed | InSpace, Closed | InSpace | LinetypeRunsOn},
                   "is no closed line in space");
            Expect(record, group::HasVertices, {1}, "has no vertices behind it");
        }
        if (record.type == "VERTEX") Expect(record, group::Flags, {VertexInSpace}, "is no vertex in space");
        if (polyline != nullptr) {
            if (record.LayerName() != polyline->LayerName())
                Fault(record.line, OnLayer(record) + " belongs to a line on layer " + polyline->LayerName());
            return;
        }
        LookAtLayer(record);
        LookAtColorOfLayer(record);
    }

    /// What a direction of another length than 1 stands for each reader answers its own way.
    void LookAtDirection(const Record& record) {
        double squares = 0;
        for (const int code : {group::NormalX, group::NormalY, group::NormalZ}) {
            const double along = Read<double>(record.Find(code)->Number()).value_or(0);
            squares += along * along;
        }
        if (std::abs(squares - 1) > SameLength)
            Fault(record.line, OnLayer(record) + " has a direction that is not 1 long");
    }

    void Miss(const Record& record, int code) {
        Fault(record.line, OnLayer(record) + " has no group " + std::to_string(code));
    }

    void LookAtGroup(const Record& record, const TypeRules& rules, const Group& each) {
        if ((each.code >= ExtendedData && each.code <= LastGroup) || Holds(Harmless, each.code)) return;
        const bool ofVertex = record.type == "LWPOLYLINE" && Holds(OfVertices, each.code);
        const bool known = ofVertex || Holds(OfEntities, each.code) || Holds(rules.once, each.code);
        if (!known)
            return Fault(each.line, OnLayer(record) + " has a group " + std::to_string(each.code) +
                                        ", which says nothing there");
        if (!ofVertex && &each != record.Find(each.code))
            return Fault(each.line,
                         OnLayer(record) + " has the group " + std::to_string(each.code) + " twice");
        const bool isNumber = IsReal(each.code)    ? Read<double>(each.Number()).has_value()
                              : IsWhole(each.code) ? Read<int>(each.Number()).has_value()
                                                   : true;
        if (!isNumber)
            Fault(each.line, OnLayer(record) + " has \"" + std::string(each.value) + "\" in its group " +
                                 std::to_string(each.code) + ", which is no number");
        if (each.code == group::Color && !IsColor(each))
            Fault(each.line, OnLayer(record) + " has " + std::string(each.Number()) +
                                 " for its colour, and colours are 0 to " + std::to_string(ByLayer));
        const bool stays = record.type == "POLYLINE" &&
                           (each.code == group::X || each.code == group::Y || each.code == group::Z);
        if ((stays || IsWidth(record, each.code)) && Read<double>(each.Number()) != 0.0)
            Fault(each.line, OnLayer(record) + " has " + std::string(each.Number()) + " in its group " +
                                 std::to_string(each.code) + ", which has to be 0");
        if (each.code == group::Layout && each.value != ModelLayout)
            Fault(each.line, OnLayer(record) + " lies in another layout");
    }

    /// Text that is not a number is reported as such.
    static bool IsColor(const Group& group) {
        const std::optional<int> color = Read<int>(group.Number());
        return !color || (*color >= 0 && *color <= ByLayer);
    }

    /// A path with a width of its own is another shape to some.
    static bool IsWidth(const Record& record, int code) {
        return record.type == "LWPOLYLINE" &&
               (code == group::Width || code == group::StartWidth || code == group::EndWidth);
    }

    void Expect(const Record& record, int code, std::initializer_list<int> wanted,
                const std::string& otherwise) {
        const std::optional<int> found = record.Whole(code);
        if (found && std::ranges::find(wanted, *found) == wanted.end())
            Fault(record.Find(code)->line, OnLayer(record) + " " + otherwise);
    }

    /// A closed path: as many vertices as it says, each with its place first and the rest once.
    void LookAtPath(const Record& record) {
        const std::optional<int> flags = record.Whole(group::Flags);
        if (flags && (*flags & ~(Closed | LinetypeRunsOn)) != 0)
            Fault(record.Find(group::Flags)->line, OnLayer(record) + " has flags that no path has");
        const std::ptrdiff_t vertices = record.CountOf(group::X);
        const std::optional<int> count = record.Whole(group::Count);
        if (count && *count != vertices)
            Fault(record.Find(group::Count)->line,
                  OnLayer(record) + " says that it has " + std::to_string(*count) +
                      " vertices (group 90), and has " + std::to_string(vertices));
        std::vector<int> met;
        for (const Group& each : record.groups) {
            if (!Holds(OfVertices, each.code)) continue;
            const bool isNext = each.code == group::X;
            const bool isWhole = Holds(met, group::X) && Holds(met, group::Y);
            const bool fits = isNext                  ? met.empty() || isWhole
                              : each.code == group::Y ? met == std::vector<int>{group::X}
                                                      : isWhole && !Holds(met, each.code);
            if (!fits)
                return Fault(each.line, OnLayer(record) + " has a group " + std::to_string(each.code) +
                                            " where none belongs: a vertex is 10, 20 and what follows of it");
            if (isNext) met.clear();
            met.push_back(each.code);
        }
        if (!met.empty() && !Holds(met, group::Y)) Miss(record, group::Y);
    }

    RunUnits mUnits;
    std::vector<Group> mGroups;
    std::map<std::string_view, Record> mLayers;
    std::map<std::string, std::string_view> mFolded;
    std::set<std::string> mLooked;
    std::set<std::string_view> mHandles, mColored;
    TextForm mForm;
};

}  // namespace

TextForm FormOfText(std::string_view content, const RunUnits& units) {
    if (HoldsBinaryGroups(content)) return {{"it is a binary drawing, and the run's files are text"}, 0};
    return FormCheck(content, units).Check();
}

}  // namespace brenvik
