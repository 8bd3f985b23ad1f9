// Groups that occur twice in an entity: the format doesn't define which of them counts, and programs differ.
#include <algorithm>
#include <array>
#include <unordered_map>

#include "base/text.h"
#include "drafting_host/dxf/reading/reading.h"

namespace brenvik {
namespace {

/// Kinds with groups that stand there as often as the list is long.
struct Lists {
    std::string_view kind;
    std::array<int, 8> codes;
};
constexpr auto ListKinds = std::to_array<Lists>({
    {"LWPOLYLINE", {10, 20, 40, 41, 42}},
    {"SPLINE", {10, 20, 30, 11, 21, 31, 40, 41}},
    {"MTEXT", {3}},
    {"VIEWPORT", {331, 341}},
    {"3DSOLID", {1, 3}},
    {"REGION", {1, 3}},
    {"BODY", {1, 3}},
});

bool IsInList(std::string_view kind, int code) {
    const auto found = std::ranges::find(ListKinds, kind, &Lists::kind);
    return found != ListKinds.end() && std::ranges::find(found->codes, code) != found->codes.end();
}

bool AreSame(const Group& one, const Group& other) {
    if (one.value == other.value || Trim(one.value) == Trim(other.value)) return true;
    const auto a = ParseReal(one.value), b = ParseReal(other.value);
    return a && b && *a == *b;
}

/// What one point of a list has: everything from its X to the next one.
constexpr auto PointValues = std::to_array<Lists>({
    {"LWPOLYLINE", {10, 20, 40, 41, 42}},
    {"SPLINE", {20, 30, 21, 31}},
});

void TellDoubledInPoints(Reading& reading, const Lists& values, Groups groups) {
    constexpr int codeX = 10, codeFitX = 11;
    std::unordered_map<int, const Group*> seen;
    for (const Group& group : groups) {
        if (group.code == codeX)
            std::erase_if(seen, [](const auto& one) { return one.first % 10 != 1 || one.first == 41; });
        if (group.code == codeFitX)
            std::erase_if(seen, [](const auto& one) { return one.first == 21 || one.first == 31; });
        if (std::ranges::find(values.codes, group.code) == values.codes.end()) continue;
        const auto [first, isNew] = seen.emplace(group.code, &group);
        if (!isNew && !AreSame(*first->second, group))
            reading.Doubt("point " + std::to_string(group.code), group.line,
                          std::string(values.kind) + ": a point of its list has group " +
                              std::to_string(group.code) + " twice, " +
                              ShownName(Trim(first->second->value)) + " and " + ShownName(Trim(group.value)) +
                              ", where one was expected",
                          true);
    }
}

/// An X without its Y, or a Y without its X, leaves the point on an axis.
void TellHalfPoints(Reading& reading, std::string_view kind, Groups groups) {
    for (const Group& group : groups) {
        // Heights of columns and the like follow the values.
        if (kind == "MTEXT" && group.code == 75) break;
        const bool isX = (group.code >= 10 && group.code <= 18) || group.code == 210;
        const bool isY = (group.code >= 20 && group.code <= 28) || group.code == 220;
        if ((!isX && !isY) || !IsValueOfKind(kind, group.code) || IsInList(kind, group.code)) continue;
        const int other = group.code + (isX ? 10 : -10);
        if (FindGroup(groups, other) != nullptr) continue;
        reading.Doubt(std::string(kind) + "half" + std::to_string(group.code), group.line,
                      std::string(kind) + ": group " + std::to_string(other) + " was expected with group " +
                          std::to_string(group.code) + " and is missing",
                      true);
    }
}

}  // namespace

void TellDoubled(Reading& reading, std::string_view kind, Groups groups) {
    constexpr int codeHandle = 5, columnsOfText = 75;
    TellHalfPoints(reading, kind, groups);
    if (const auto values = std::ranges::find(PointValues, kind, &Lists::kind); values != PointValues.end())
        TellDoubledInPoints(reading, *values, groups);
    std::unordered_map<int, const Group*> seen;
    for (const Group& group : groups) {
        // What follows describes columns, the heights of each as group 50.
        if (kind == "MTEXT" && group.code == columnsOfText) break;
        const bool isOne = group.code == codeHandle || IsValueOfKind(kind, group.code);
        if (!isOne || IsInList(kind, group.code)) continue;
        const auto [first, isNew] = seen.emplace(group.code, &group);
        if (!isNew && !AreSame(*first->second, group))
            reading.Doubt(std::string(kind) + std::to_string(group.code), group.line,
                          std::string(kind) + ": group " + std::to_string(group.code) +
                              " stands twice, with " + ShownName(Trim(first->second->value)) + " and with " +
                              ShownName(Trim(group.value)) + ", where one was expected",
                          true);
    }
}

}  // namespace brenvik
