// Changes of kept groups. The texts are shared, so each change makes new ones.
#include "drafting_host/document/kept_groups.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <functional>
#include <map>
#include <numbers>
#include <span>
#include <string_view>

#include "drafting_host/document/geometry/host_geometry.h"
#include "drafting_host/dxf/data/kept_text.h"

namespace brenvik {
namespace {

constexpr std::string_view HistoryClass = "AcDb3dSolid";

std::string Without(const std::string& groups, const std::function<bool(int)>& isUnwanted) {
    std::string result;
    GroupWalk walk(groups);
    while (walk.Next())
        if (!isUnwanted(walk.Code())) result += walk.Text();
    return result;
}

/// Without the lists in brackets in front of a whole record.
std::string WithoutLists(const std::string& groups) {
    std::string result;
    bool inBrackets = false, isHead = true;
    GroupWalk walk(groups);
    while (walk.Next()) {
        if (walk.Code() == 100) isHead = false;
        if (isHead && walk.Code() == 102) {
            inBrackets = walk.Value().find('{') != std::string_view::npos;
            continue;
        }
        if (!isHead || !inBrackets) result += walk.Text();
    }
    return result;
}

std::string WithoutHistory(const std::string& further) {
    if (further.find(HistoryClass) == std::string::npos) return further;
    std::string result;
    GroupWalk walk(further);
    while (walk.Next()) {
        if (walk.Code() == 350)
            AppendGroup(result, 350, "0");
        else
            result += walk.Text();
    }
    return result;
}

bool IsTrueColor(int code) { return code == 420 || code == 430; }
bool IsPreview(int code) { return code == 92 || code == 160 || code == 310; }

double RealOf(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    double value = 0;
    if (first != std::string_view::npos)
        std::from_chars(text.data() + first, text.data() + text.size(), value);
    return value;
}

std::string TextOf(double value) {
    std::array<char, 32> digits;
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    return {digits.data(), written.ptr};
}

/// Values of groups by code, the first of each, and a text with some of them changed.
class Values {
  public:
    explicit Values(std::string_view groups, bool inClassOnly) : mGroups(groups), mInClassOnly(inClassOnly) {
        ForEach([this](const GroupWalk& walk) { mRead.emplace(walk.Code(), RealOf(walk.Value())); });
    }

    bool Has(int code) const { return mRead.contains(code); }
    double Of(int code, double usual = 0) const {
        const auto found = mRead.find(code);
        return found == mRead.end() ? usual : found->second;
    }
    Point3 PointAt(int code) const { return {Of(code), Of(code + 10), Of(code + 20)}; }
    void Set(int code, double value) {
        if (!Has(code) || Of(code) != value) mNew[code] = value;
    }
    void SetPoint(int code, const Point3& point) {
        Set(code, point.x);
        Set(code + 10, point.y);
        Set(code + 20, point.z);
    }

    /// The groups with what was set, new ones behind those that were there.
    std::string Changed() {
        if (mNew.empty()) return std::string(mGroups);
        std::string result;
        bool isDone = false;
        const auto addNew = [&] {
            for (const auto& [code, value] : mNew) AppendGroup(result, code, TextOf(value));
            mNew.clear();
            isDone = true;
        };
        bool wasInside = false;
        GroupWalk walk(mGroups);
        while (walk.Next()) {
            const bool isInside = Inside(walk);
            if (wasInside && !isInside && !isDone) addNew();
            wasInside = isInside;
            const auto changed = isInside && !isDone ? mNew.find(walk.Code()) : mNew.end();
            if (changed == mNew.end()) {
                result += walk.Text();
                continue;
            }
            AppendGroup(result, walk.Code(), TextOf(changed->second));
            mNew.erase(changed);
        }
        if (!isDone) addNew();
        return result;
    }

  private:
    /// An attribute's place stands in its class for texts; the classes around it use the same groups
    /// otherwise.
    bool Inside(const GroupWalk& walk) {
        if (!mInClassOnly) return true;
        if (walk.Code() == 100) mInside = walk.Value().find("AcDbText") != std::string_view::npos;
        return mInside && walk.Code() != 100;
    }
    void ForEach(const std::function<void(const GroupWalk&)>& visit) {
        GroupWalk walk(mGroups);
        while (walk.Next())
            if (Inside(walk)) visit(walk);
        mInside = false;
    }

    std::string_view mGroups;
    bool mInClassOnly, mInside = false;
    std::map<int, double> mRead, mNew;
};

/// An attribute is a text in the plane of its own.
std::string MovedAttribute(const std::string& groups, const Similarity& move) {
    constexpr double degree = std::numbers::pi / 180;
    Values values(groups, true);
    TextData text;
    text.insertion = values.PointAt(10);
    if (values.Has(11)) text.alignment = values.PointAt(11);
    text.height = values.Of(40, 1);
    text.rotation = values.Of(50) * degree;
    text.thickness = values.Of(39);
    text.generation = static_cast<int>(values.Of(71));
    if (values.Has(210)) text.normal = values.PointAt(210);
    const TextData before = text;
    Transform(text, move);
    values.SetPoint(10, text.insertion);
    if (text.alignment) values.SetPoint(11, *text.alignment);
    values.Set(40, text.height);
    if (text.rotation != before.rotation) values.Set(50, text.rotation / degree);
    if (text.thickness != before.thickness) values.Set(39, text.thickness);
    if (text.generation != before.generation) values.Set(71, text.generation);
    if (values.Has(210) || text.normal != before.normal) values.SetPoint(210, text.normal);
    return values.Changed();
}

/// Lengths among the groups of a kind that are no values of it here.
struct KeptLengths {
    std::string_view kind;
    std::array<int, 5> codes{};
};

/// Of an old polyline the widths that its vertices have by default; of a spline the tolerances of its points;
/// of a paragraph the size that it takes, the height to which its lines were set, its columns' width and gap.
constexpr auto Lengths = std::to_array<KeptLengths>({{"AcDb2dPolyline", {40, 41}},
                                                     {"AcDb3dPolyline", {40, 41}},
                                                     {"AcDbPolygonMesh", {40, 41}},
                                                     {"AcDbPolyFaceMesh", {40, 41}},
                                                     {"AcDbSpline", {43, 44}},
                                                     {"AcDbMText", {42, 43, 46, 48, 49}}});

std::span<const int> LengthsOf(std::string_view kind) {
    const auto* const found = std::ranges::find(Lengths, kind, &KeptLengths::kind);
    return found == Lengths.end() ? std::span<const int>() : std::span<const int>(found->codes);
}

void ScaleLengths(std::string_view kind, Values& values, const Similarity& move) {
    for (const int code : LengthsOf(kind))
        if (values.Of(code) != 0) values.Set(code, values.Of(code) * move.ScaleFactor());
}

/// The tangents of a spline at its ends, and what is long among the rest.
std::string MovedOwn(std::string_view kind, const std::string& own, const Similarity& move) {
    Values values(own, false);
    for (const int code : {12, 13})
        if (values.Has(code)) values.SetPoint(code, move.Direction(values.PointAt(code)));
    ScaleLengths(kind, values, move);
    return values.Changed();
}

/// Programs that leave the marks of the classes out have the kind's own groups among the common ones.
std::string MovedCommon(std::string_view kind, const std::string& common, const Similarity& move) {
    Values values(common, false);
    ScaleLengths(kind, values, move);
    return values.Changed();
}

/// Release 2018 has the line, the place and the sizes of a paragraph once more, behind its other groups.
std::string MovedParagraph(const std::string& further, const Similarity& move) {
    constexpr int mark = 101, line = 10, place = 11, firstLength = 40, lastLength = 46;
    const std::size_t name = further.find("Embedded Object");
    if (name == std::string::npos) return further;
    Values values(std::string_view(further).substr(std::min(further.find('\n', name) + 1, further.size())),
                  false);
    std::map<int, double> moved;
    const auto put = [&](int code, const Point3& point) {
        moved.insert({{code, point.x}, {code + 10, point.y}, {code + 20, point.z}});
    };
    if (values.Has(line)) put(line, move.Direction(values.PointAt(line)));
    if (values.Has(place)) put(place, move.Point(values.PointAt(place)));
    std::string result;
    bool isInside = false;
    GroupWalk walk(further);
    while (walk.Next()) {
        isInside = isInside || walk.Code() == mark;
        const bool isLength = walk.Code() >= firstLength && walk.Code() <= lastLength;
        const auto coordinate = moved.find(walk.Code());
        if (isInside && isLength)
            AppendGroup(result, walk.Code(), TextOf(RealOf(walk.Value()) * move.ScaleFactor()));
        else if (isInside && coordinate != moved.end())
            AppendGroup(result, walk.Code(), TextOf(coordinate->second));
        else
            result += walk.Text();
    }
    return result;
}

Kept<KeptGroups> Shared(KeptGroups kept) { return {std::make_shared<const KeptGroups>(std::move(kept))}; }

}  // namespace

Kept<KeptGroups> WithoutTrueColor(const Kept<KeptGroups>& kept) {
    if (!kept || kept->common.empty()) return kept;
    KeptGroups changed = *kept;
    changed.common = Without(kept->common, IsTrueColor);
    return Shared(std::move(changed));
}

Kept<KeptGroups> WithoutTrueColorOfLayer(const Kept<KeptGroups>& kept) {
    if (!kept || kept->own.empty()) return kept;
    KeptGroups changed = *kept;
    changed.own = Without(kept->own, IsTrueColor);
    return Shared(std::move(changed));
}

Kept<KeptGroups> WithColors(const Kept<KeptGroups>& kept, std::optional<std::uint32_t> trueColor,
                            std::optional<std::uint8_t> opacity) {
    constexpr int transparency = 440;
    KeptGroups changed;
    if (kept) changed = *kept;
    changed.common =
        Without(changed.common, [](int code) { return IsTrueColor(code) || code == transparency; });
    if (trueColor) changed.common += GroupsOfTrueColor(*trueColor)->common;
    if (opacity) changed.common += GroupOfOpacity(*opacity);
    return Shared(std::move(changed));
}

Kept<KeptGroups> OfCopy(const Kept<KeptGroups>& kept) {
    if (!kept) return kept;
    KeptGroups changed = *kept;
    changed.head.clear();
    changed.further = WithoutHistory(kept->further);
    for (KeptRecord& part : changed.parts) part.groups = WithoutLists(part.groups);
    for (KeptGroups::Vertex& vertex : changed.vertices) vertex.head.clear();
    return Shared(std::move(changed));
}

Kept<KeptGroups> OfOtherDrawing(const Kept<KeptGroups>& kept) {
    if (!kept) return kept;
    KeptGroups changed;
    changed.common = Without(kept->common, [](int code) { return IsReference(code) || code == 102; });
    return Shared(std::move(changed));
}

Kept<KeptGroups> AfterReshaping(const Kept<KeptGroups>& kept) {
    if (!kept) return kept;
    KeptGroups changed = *kept;
    changed.common = Without(kept->common, IsPreview);
    changed.further = WithoutHistory(kept->further);
    return Shared(std::move(changed));
}

Kept<KeptGroups> AfterMove(const Kept<KeptGroups>& kept, std::string_view kind, const Similarity& move) {
    if (!kept) return kept;
    KeptGroups changed = *AfterReshaping(kept);
    if (!move.OnlyShifts()) {
        changed.own = MovedOwn(kind, kept->own, move);
        changed.common = MovedCommon(kind, changed.common, move);
    }
    if (kind == "AcDbMText") changed.further = MovedParagraph(changed.further, move);
    for (KeptRecord& part : changed.parts)
        if (part.name == "ATTRIB") part.groups = MovedAttribute(part.groups, move);
    return Shared(std::move(changed));
}

}  // namespace brenvik
