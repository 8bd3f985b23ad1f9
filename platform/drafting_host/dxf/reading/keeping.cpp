// Decides which groups of which records have a value in a drawing; the others are kept as text.
#include "drafting_host/dxf/reading/keeping.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>

#include "base/handle_text.h"
#include "drafting_host/dxf/data/kept_text.h"
#include "drafting_host/dxf/reading/reading.h"

namespace brenvik {
namespace {

/// Groups of a kind that have a value in a drawing; 0 fills up. Points stand with their X.
struct Understood {
    std::string_view kind;
    std::array<int, 18> values, points;
};

constexpr auto Kinds = std::to_array<Understood>({
    {"LINE", {39}, {10, 11, 210}},
    {"3DSOLID", {1, 3, 70, 290, 2}, {}},
    {"LWPOLYLINE", {90, 70, 43, 38, 39, 40, 41, 42}, {10, 210}},
    {"CIRCLE", {39, 40}, {10, 210}},
    {"ARC", {39, 40, 50, 51}, {10, 210}},
    {"INSERT", {2, 41, 42, 43, 44, 45, 50, 66, 70, 71}, {10, 210}},
    {"TEXT", {1, 7, 39, 40, 41, 50, 51, 71, 72, 73}, {10, 11, 210}},
    {"MTEXT", {1, 3, 7, 40, 41, 50, 71, 72}, {10, 11, 210}},
    {"POLYLINE", {39, 66, 70, 71, 72, 73, 74, 75}, {10, 210}},
    {"VERTEX", {40, 41, 42, 70, 71, 72, 73, 74}, {10}},
    {"SPLINE", {40, 41, 70, 71, 72, 73, 74}, {10, 11, 210}},
    {"ELLIPSE", {40, 41, 42}, {10, 11, 210}},
    {"POINT", {39}, {10, 210}},
    {"SOLID", {39}, {10, 11, 12, 13, 210}},
    {"TRACE", {39}, {10, 11, 12, 13, 210}},
    {"3DFACE", {70}, {10, 11, 12, 13}},
    {"VIEWPORT", {40, 41, 42, 43, 44, 45, 51, 68, 69, 90, 331, 341}, {10, 12, 16, 17}},
    {"REGION", {1, 3, 70, 290, 2}, {}},
    {"BODY", {1, 3, 70, 290, 2}, {}},
    {"SEQEND", {}, {}},
    {"LAYER", {2, 62, 6, 70, 290, 370}, {}},
    {"UCS", {2, 70}, {10, 11, 12}},
    {"BLOCK_RECORD", {2, 340}, {}},
});

constexpr auto Classes = std::to_array<std::string_view>({"AcDbLine",
                                                          "AcDbModelerGeometry",
                                                          "AcDbPolyline",
                                                          "AcDbCircle",
                                                          "AcDbArc",
                                                          "AcDbBlockReference",
                                                          "AcDbMInsertBlock",
                                                          "AcDbText",
                                                          "AcDbMText",
                                                          "AcDb2dPolyline",
                                                          "AcDb3dPolyline",
                                                          "AcDbPolygonMesh",
                                                          "AcDbPolyFaceMesh",
                                                          "AcDbVertex",
                                                          "AcDb2dVertex",
                                                          "AcDb3dPolylineVertex",
                                                          "AcDbFaceRecord",
                                                          "AcDbPolygonMeshVertex",
                                                          "AcDbPolyFaceMeshVertex",
                                                          "AcDbSpline",
                                                          "AcDbEllipse",
                                                          "AcDbPoint",
                                                          "AcDbTrace",
                                                          "AcDbFace",
                                                          "AcDbViewport",
                                                          "AcDbLayerTableRecord",
                                                          "AcDbUCSTableRecord",
                                                          "AcDbBlockTableRecord"});

const Understood* FindKind(std::string_view kind) {
    const auto found = std::ranges::find(Kinds, kind, &Understood::kind);
    return found == Kinds.end() ? nullptr : &*found;
}

bool Holds(const std::array<int, 18>& codes, int code) {
    for (const int one : codes) {
        if (one == 0) return false;
        if (one == code) return true;
    }
    return false;
}

bool HasValue(const Understood& kind, int code) {
    if (Holds(kind.values, code)) return true;
    for (const int step : {0, 10, 20})
        if (code - step >= 10 && Holds(kind.points, code - step)) return true;
    return false;
}

bool IsCommonValue(int code) {
    return code == 8 || code == 6 || code == 62 || code == 370 || code == 48 || code == 60 || code == 67;
}

/// Lets what has a value fall through and gathers the rest.
class Sieve {
  public:
    Sieve(const Understood& kind, KeptGroups& kept) : mKind(kind), mKept(kept) {}

    void Take(const Group& group) {
        if (mEmbedded || group.code == 101) {
            mEmbedded = true;
            return Keep(mKept.further, group);
        }
        if (mInBrackets || group.code == 102) {
            if (group.code == 102) mInBrackets = WithoutBlanks(group.value).starts_with('{');
            return Keep(Text(), group);
        }
        if (group.code == 100) return TakeClass(group);
        switch (mPart) {
            // Simple programs leave the marks of the classes out.
            case Part::Head:
                if (group.code == 5 || group.code == 330) return;
                [[fallthrough]];
            case Part::Common:
                if (!IsCommonValue(group.code) && !HasValue(mKind, group.code)) Keep(mKept.common, group);
                return;
            case Part::Own:
                // After the type of its columns, a paragraph uses the codes of its values for other things.
                mInColumns = mInColumns || (group.code == 75 && mKind.kind == "MTEXT");
                if (mInColumns || !HasValue(mKind, group.code)) TakeOwn(group);
                return;
            case Part::Further:
                Keep(mKept.further, group);
        }
    }

  private:
    enum class Part { Head, Common, Own, Further };

    static void Keep(std::string& text, const Group& group) { AppendGroup(text, group.code, group.value); }

    std::string& Text() {
        switch (mPart) {
            case Part::Head:
                return mKept.head;
            case Part::Common:
                return mKept.common;
            case Part::Own:
                return mKept.own;
            case Part::Further:
                break;
        }
        return mKept.further;
    }

    void TakeClass(const Group& group) {
        const std::string_view name = WithoutBlanks(group.value);
        if (name == "AcDbEntity" || name == "AcDbSymbolTableRecord") {
            mPart = Part::Common;
        } else if (std::ranges::find(Classes, name) != Classes.end()) {
            mPart = Part::Own;
        } else {
            mPart = Part::Further;
            Keep(mKept.further, group);
        }
    }

    void TakeOwn(const Group& group) {
        if (group.code == 91 && mKind.kind == "LWPOLYLINE")
            mKept.vertexNumbers.push_back(IntegerOf(group));
        else
            Keep(mKept.own, group);
    }

    const Understood& mKind;
    KeptGroups& mKept;
    Part mPart = Part::Head;
    bool mInBrackets = false, mEmbedded = false, mInColumns = false;
};

/// The group of a record's own handle; in a dimension style 5 was an arrow's name.
int HandleCodeOf(std::string_view kind) { return kind == "DIMSTYLE" ? 105 : 5; }

void TakeLeftovers(const Understood& kind, Groups groups, KeptGroups& kept) {
    Sieve sieve(kind, kept);
    const bool isBody = Holds(kind.values, 290) && Holds(kind.values, 3);
    for (const Group& group : groups) {
        if (group.code >= 1000) break;
        // A body's text is most of a file.
        if (isBody && (group.code == 1 || group.code == 3)) continue;
        sieve.Take(group);
    }
}

HandleValue OwnerIn(Groups groups) {
    bool inBrackets = false;
    for (const Group& group : groups) {
        if (group.code == 100) break;
        if (group.code == 102) inBrackets = WithoutBlanks(group.value).starts_with('{');
        if (group.code == 330 && !inBrackets) return HandleOf(group);
    }
    return 0;
}

}  // namespace

bool IsUnderstoodKind(std::string_view name) {
    const Understood* const kind = FindKind(name);
    return kind != nullptr && name != "VERTEX" && name != "SEQEND" && kind < FindKind("LAYER");
}

bool IsValueOfKind(std::string_view kind, int code) {
    const Understood* const understood = FindKind(kind);
    return understood != nullptr && (IsCommonValue(code) || HasValue(*understood, code));
}

std::string TextOfGroups(Groups groups) {
    std::size_t size = 0;
    for (const Group& group : groups) size += group.value.size() + 8;
    std::string text;
    text.reserve(size);
    for (const Group& group : groups) AppendGroup(text, group.code, group.value);
    return text;
}

KeptRecord KeptRecordOf(const Record& record) {
    KeptRecord kept;
    kept.name = record.name;
    if (const Group* const handle = FindGroup(record.groups, HandleCodeOf(record.name)))
        kept.handle = HandleOf(*handle);
    kept.owner = OwnerIn(record.groups);
    kept.groups = TextOfGroups(record.groups);
    return kept;
}

Kept<KeptGroups> LeftoversOfEntity(const Record& record) {
    const Understood* const kind = FindKind(record.name);
    if (kind == nullptr) return {};
    KeptGroups kept;
    TakeLeftovers(*kind, record.groups, kept);
    const bool isEmpty = kept.head.empty() && kept.common.empty() && kept.own.empty() &&
                         kept.further.empty() && kept.vertexNumbers.empty();
    if (isEmpty) return {};
    return {std::make_shared<const KeptGroups>(std::move(kept))};
}

KeptGroups::Vertex LeftoversOfVertex(const Record& record, std::string_view layer) {
    KeptGroups kept;
    TakeLeftovers(*FindKind(record.name), record.groups, kept);
    KeptGroups::Vertex vertex;
    vertex.head = std::move(kept.head);
    vertex.own = std::move(kept.own) + kept.further;
    for (const Group& group : record.groups) {
        if (group.code == 100 && WithoutBlanks(group.value) != "AcDbEntity") break;
        const bool isLayer = group.code == 8 && group.value != layer;
        vertex.hasLayer = vertex.hasLayer || isLayer;
        // A vertex has no values of this sort in a drawing.
        if (isLayer || (group.code != 8 && group.code != 67 && IsCommonValue(group.code)))
            AppendGroup(vertex.common, group.code, group.value);
    }
    vertex.common += kept.common;
    for (const Group& group : record.groups)
        if (group.code >= 1000) AppendGroup(vertex.own, group.code, group.value);
    return vertex;
}

KeptGroups LeftoversOfEntry(std::string_view table, Groups groups) {
    constexpr int ownFlags = 1 | 4;
    KeptGroups kept;
    TakeLeftovers(*FindKind(table), groups, kept);
    // Groups of an entry follow its class, whatever the table.
    kept.own = std::move(kept.common) + kept.own;
    kept.common.clear();
    if (table == "LAYER") {
        const Group* const flags = FindGroup(groups, 70);
        if (flags != nullptr) kept.flags = IntegerOf(*flags) & ~ownFlags;
    }
    for (const Group& group : groups)
        if (group.code >= 1000) AppendGroup(kept.further, group.code, group.value);
    return kept;
}

void CountLost(std::map<std::string, std::size_t>& lost, const std::string& kind, std::string_view groups) {
    constexpr int mark = 100, bracket = 102, sequenceFollows = 66;
    bool inBrackets = false;
    GroupWalk walk(groups);
    while (walk.Next()) {
        const int code = walk.Code();
        if (code == bracket) inBrackets = WithoutBlanks(walk.Value()).starts_with('{');
        if (inBrackets || code == bracket || code == mark || code == sequenceFollows || IsReference(code))
            continue;
        // The widths of a polyline go to its vertices.
        if (kind == "POLYLINE" && (code == 40 || code == 41)) continue;
        ++lost[kind + ", group " + std::to_string(code)];
    }
}

void ChangeOwnHandle(KeptRecord& record, HandleValue handle) {
    const int code = HandleCodeOf(record.name);
    std::string text;
    bool isChanged = false;
    GroupWalk walk(record.groups);
    while (walk.Next()) {
        if (!isChanged && walk.Code() == code) {
            AppendGroup(text, code, HandleToText(handle));
            isChanged = true;
        } else {
            text += walk.Text();
        }
    }
    record.groups.clear();
    if (!isChanged) AppendGroup(record.groups, code, HandleToText(handle));
    record.groups += text;
    record.handle = handle;
}

}  // namespace brenvik
