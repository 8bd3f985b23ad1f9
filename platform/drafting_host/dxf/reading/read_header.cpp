// The section HEADER: the variables that have a place of their own in a drawing, and the others that
// release 2000 knows.
#include <algorithm>
#include <array>
#include <charconv>
#include <map>

#include "base/text.h"
#include "drafting_host/dxf/data/header_variables.h"
#include "drafting_host/dxf/reading/reading.h"
#include "drafting_host/dxf/texts/code_pages.h"

namespace brenvik {
namespace {

constexpr int OldestUnicode = 1021;
constexpr int OldestBinaryBodies = 1027;
constexpr int DefaultPage = 1252;

int VersionNumber(std::string_view version) {
    int number = 0;
    if (version.starts_with("AC"))
        std::from_chars(version.data() + 2, version.data() + version.size(), number);
    return number;
}

bool IsText(int code) { return code < 10; }
bool IsWhole(int code) { return (code >= 60 && code < 80) || (code >= 270 && code < 300) || code >= 370; }

// The values as they stand, in the order of their groups; null if one is missing or no number.
std::optional<std::vector<std::pair<int, std::string>>> ValuesOf(const Reading& reading,
                                                                 const HeaderVariable& variable,
                                                                 Groups groups) {
    const std::size_t count = variable.kind == VariableKind::Point       ? 3
                              : variable.kind == VariableKind::FlatPoint ? 2
                                                                         : 1;
    std::vector<std::pair<int, std::string>> values;
    for (std::size_t i = 0; i < count; ++i) {
        const int code = variable.code + 10 * static_cast<int>(i);
        const Group* const group = FindGroup(groups, code);
        if (group == nullptr) return std::nullopt;
        if (!IsText(code)) {
            if (IsWhole(code))
                IntegerOf(*group);
            else
                RealOf(*group);
        }
        values.emplace_back(code, IsText(code) ? reading.Text(*group) : Trim(reading.Text(*group)));
    }
    return values;
}

Point3 PointOf(Groups groups) {
    Point3 point;
    for (const Group& group : groups) TakePoint(group, 0, point);
    return point;
}

/// The releases that there are, by their numbers.
constexpr auto Releases =
    std::to_array({1001, 1002, 1003, 1004, 1006, 1009, 1012, 1014, 1015, 1018, 1021, 1024, 1027, 1032});

/// Nobody knows what a release holds that isn't one; it is read, and later saved, as the last one before it.
void MendRelease(Reading& reading, const Group& group) {
    const int number = VersionNumber(reading.data.version);
    if (std::ranges::find(Releases, number) != Releases.end() || number < Releases.front()) return;
    const int taken = *(std::ranges::upper_bound(Releases, number) - 1);
    const std::string known = "AC" + std::to_string(taken);
    reading.Note(group.line, "release " + ShownName(reading.data.version) +
                                 " is unknown: expected one up to AC" + std::to_string(Releases.back()) +
                                 "; the drawing is read as " + known);
    reading.data.version = known;
}

void TakeVersion(Reading& reading, Groups groups) {
    const Group* const group = FindGroup(groups, 1);
    if (group == nullptr) return;
    reading.data.version = Trim(group->value);
    MendRelease(reading, *group);
    reading.isUnicode = VersionNumber(reading.data.version) >= OldestUnicode;
    reading.isBinaryBodies = VersionNumber(reading.data.version) >= OldestBinaryBodies;
    reading.file.release = VersionNumber(reading.data.version);
}

void SetCodePage(Reading& reading, std::string_view name, std::size_t line) {
    const int page = CodePageNumber(name);
    const bool isUtf8 = reading.isUnicode || reading.hasByteOrderMark;
    if (IsSingleBytePage(page)) {
        reading.decoder = TextDecoder(isUtf8 ? TextDecoder::Bytes::Utf8 : TextDecoder::Bytes::Page, page);
    } else if (isUtf8) {
        reading.decoder = TextDecoder(TextDecoder::Bytes::Utf8, DefaultPage);
    } else if (MultiByteEscapeDigit(page)) {
        reading.decoder = TextDecoder(TextDecoder::Bytes::Page, page);
    } else {
        reading.Note(line, "code page " + ShownName(name) +
                               " is unknown: expected ANSI_1252 or another Windows page; " +
                               "texts are taken as UTF-8 or ANSI_1252");
    }
}

void TakeVariable(Reading& reading, std::string_view name, Groups groups) {
    DrawingData& data = reading.data;
    if (groups.empty()) return;
    const Group& first = groups.front();
    if (name == "$HANDSEED") {
        data.handleSeed = std::max<HandleValue>(HandleOf(first), 1);
    } else if (name == "$CLAYER") {
        data.currentLayer = LayerNameOf(reading, first);
    } else if (name == "$INSUNITS") {
        data.insertUnits = IntegerOf(first);
    } else if (name == "$MEASUREMENT") {
        data.measurement = IntegerOf(first) == 0 ? 0 : 1;
    } else if (name == "$UCSNAME") {
        data.ucs.name = reading.Text(first);
    } else if (name == "$UCSORG") {
        data.ucs.origin = PointOf(groups);
    } else if (name == "$UCSXDIR") {
        data.ucs.xAxis = PointOf(groups);
    } else if (name == "$UCSYDIR") {
        data.ucs.yAxis = PointOf(groups);
    } else if (const HeaderVariable* const variable = FindHeaderVariable(name)) {
        if (auto values = ValuesOf(reading, *variable, groups))
            data.headerVariables[std::string(name)] = std::move(*values);
    }
}

// Texts can be decoded only when the version and the code page are known, wherever they stand.
template <typename Take>
void ForEachVariable(Reading& reading, Groups groups, Take take) {
    for (std::size_t at = 0; at < groups.size();) {
        if (groups[at].code != 9) {
            ++at;
            continue;
        }
        std::size_t end = at + 1;
        while (end < groups.size() && groups[end].code != 9) ++end;
        const std::string name = Trim(groups[at].value);
        try {
            take(name, groups.subspan(at + 1, end - at - 1));
        } catch (const EntityRefused& refused) {
            reading.Note(refused.line,
                         "drawing variable " + ShownName(name) + " passed over: " + refused.reason);
        }
        at = end;
    }
}

/// A variable that stands twice, or has a value twice. The unit of all lengths may hang on it.
void TellDoubledVariables(Reading& reading, Groups groups) {
    std::map<std::string, Groups, std::less<>> seen;
    ForEachVariable(reading, groups, [&](std::string_view name, Groups values) {
        if (values.empty()) return;
        const auto shown = [](Groups all) { return ShownName(Trim(all.front().value)); };
        const auto [first, isNew] = seen.emplace(name, values);
        if (!isNew && TextOfGroups(first->second) != TextOfGroups(values))
            reading.Note(values.front().line, "drawing variable " + ShownName(name) + " stands twice, with " +
                                                  shown(first->second) + " and with " + shown(values) +
                                                  "; the last one counts");
        for (std::size_t i = 1; i < values.size(); ++i) {
            if (values[i].code != values[0].code || values[i].value == values[0].value) continue;
            reading.Note(values[i].line, "drawing variable " + ShownName(name) + " has two values, " +
                                             shown(values) + " and " + shown(values.subspan(i)) +
                                             "; the first one counts");
        }
    });
}

}  // namespace

void ReadHeader(Reading& reading, Groups groups) {
    const Group* page = nullptr;
    ForEachVariable(reading, groups, [&](std::string_view name, Groups values) {
        if (name == "$ACADVER") TakeVersion(reading, values);
        if (name == "$DWGCODEPAGE") page = FindGroup(values, 3);
    });
    if (page != nullptr) {
        reading.data.codePage = Trim(page->value);
        SetCodePage(reading, reading.data.codePage, page->line);
    } else if (reading.isUnicode) {
        reading.decoder = TextDecoder(TextDecoder::Bytes::Utf8, DefaultPage);
    }
    TellDoubledVariables(reading, groups);
    ForEachVariable(reading, groups, [&](std::string_view name, Groups values) {
        // A damaged one is refused here.
        TakeVariable(reading, name, values);
        reading.file.header.emplace_back(name, TextOfGroups(values));
    });
}

}  // namespace brenvik
