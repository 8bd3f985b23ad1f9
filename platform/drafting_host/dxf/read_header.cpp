// The section HEADER: the variables that have a place of their own in a drawing, and the others that
// release 2000 knows.
#include <algorithm>
#include <charconv>

#include "base/text.h"
#include "drafting_host/dxf/code_pages.h"
#include "drafting_host/dxf/header_variables.h"
#include "drafting_host/dxf/reading.h"

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

// The values as they stand, in the order of their groups; nothing when one is missing or no number.
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
            if (IsWhole(code)) {
                IntegerOf(*group);
            } else {
                RealOf(*group);
            }
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

void TakeVersion(Reading& reading, Groups groups) {
    const Group* const group = FindGroup(groups, 1);
    if (group == nullptr) return;
    reading.data.version = Trim(group->value);
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
        reading.Note(line, "code page " + ShownName(name) + ": its characters are kept as \\M+nXXXX", false);
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
    ForEachVariable(reading, groups, [&](std::string_view name, Groups values) {
        // A damaged one is refused here.
        TakeVariable(reading, name, values);
        reading.file.header.emplace_back(name, TextOfGroups(values));
    });
}

}  // namespace brenvik
