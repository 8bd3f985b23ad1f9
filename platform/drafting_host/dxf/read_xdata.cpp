// Extended data: per application a list of items, each a group with a code from 1000 on.
#include <algorithm>
#include <limits>

#include "base/text.h"
#include "drafting_host/dxf/reading.h"

namespace brenvik {
namespace {

constexpr int codeApplication = 1001, codeBracket = 1002, codeBytes = 1004, codeShort = 1070, codeLong = 1071;

bool IsText(int code) { return code == 1000 || code == 1003 || code == 1005; }
bool IsPointStart(int code) { return code >= 1010 && code <= 1013; }
bool IsReal(int code) { return code >= 1040 && code <= 1042; }

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

std::vector<std::uint8_t> BytesOf(const Group& group) {
    const std::string digits = Trim(group.value);
    std::vector<std::uint8_t> bytes;
    bytes.reserve(digits.size() / 2);
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        const int high = HexDigit(digits[i]);
        const int low = i + 1 < digits.size() ? HexDigit(digits[i + 1]) : -1;
        if (high < 0 || low < 0) throw EntityRefused{group.line, "pairs of hexadecimal digits were expected"};
        bytes.push_back(static_cast<std::uint8_t>(16 * high + low));
    }
    return bytes;
}

// Group values of 16 bits come with and without a sign.
std::int16_t ShortOf(const Group& group) {
    const int value = IntegerOf(group);
    if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::uint16_t>::max())
        throw EntityRefused{group.line, "a whole number of 16 bits was expected"};
    return static_cast<std::int16_t>(value);
}

// The point whose X stands at `at`; Y and Z follow with codes 10 and 20 higher. Moves `at` to its last group.
Point3 PointOf(Groups groups, std::size_t& at) {
    Point3 point;
    const int code = groups[at].code;
    point.x = RealOf(groups[at]);
    if (at + 1 < groups.size() && groups[at + 1].code == code + 10) point.y = RealOf(groups[++at]);
    if (at + 1 < groups.size() && groups[at + 1].code == code + 20) point.z = RealOf(groups[++at]);
    return point;
}

// Brackets must be balanced for other readers, so a stray end is dropped and a missing one put in.
struct Brackets {
    int depth = 0;
    bool Take(std::string_view text) {
        if (text == "{") {
            ++depth;
            return true;
        }
        if (text != "}" || depth == 0) return false;
        --depth;
        return true;
    }
};

std::optional<XDataValue> ValueOf(const Reading& reading, Groups groups, std::size_t& at,
                                  Brackets& brackets) {
    const Group& group = groups[at];
    if (IsText(group.code)) return reading.Text(group);
    if (group.code == codeBracket) {
        std::string bracket = Trim(group.value);
        if (brackets.Take(bracket)) return bracket;
        throw EntityRefused{group.line, "a bracket \"{\" or its \"}\" was expected"};
    }
    if (group.code == codeBytes) return BytesOf(group);
    if (IsPointStart(group.code)) return PointOf(groups, at);
    if (IsReal(group.code)) return RealOf(group);
    if (group.code == codeShort) return ShortOf(group);
    if (group.code == codeLong) return static_cast<std::int32_t>(IntegerOf(group));
    return std::nullopt;
}

void CloseBrackets(Reading& reading, XDataOfApp* app, Brackets& brackets, std::size_t line) {
    if (brackets.depth > 0)
        reading.Note(line, "extended data of " + ShownName(app->app) + ": a missing \"}\" was put in", false);
    for (; brackets.depth > 0; --brackets.depth) app->items.push_back({codeBracket, std::string("}")});
}

XDataOfApp& AppOf(std::vector<XDataOfApp>& apps, std::string name) {
    const auto found = std::find_if(apps.begin(), apps.end(),
                                    [&](const XDataOfApp& a) { return EqualsIgnoreCase(a.app, name); });
    return found != apps.end() ? *found : apps.emplace_back(XDataOfApp{std::move(name), {}});
}

}  // namespace

std::vector<XDataOfApp> ReadXData(Reading& reading, Groups groups) {
    std::vector<XDataOfApp> apps;
    XDataOfApp* app = nullptr;
    Brackets brackets;
    for (std::size_t at = 0; at < groups.size(); ++at) {
        const Group& group = groups[at];
        if (group.code == codeApplication) {
            CloseBrackets(reading, app, brackets, group.line);
            app = &AppOf(apps, reading.Text(group));
            continue;
        }
        if (app == nullptr) {
            reading.Note(group.line,
                         "extended data passed over: an application (group 1001) was expected first");
            continue;
        }
        try {
            if (auto value = ValueOf(reading, groups, at, brackets))
                app->items.push_back({static_cast<std::int16_t>(group.code), std::move(*value)});
        } catch (const EntityRefused& refused) {
            reading.Note(refused.line, "extended data of " + ShownName(app->app) +
                                           ": an item was passed over, " + refused.reason);
        }
    }
    if (!groups.empty()) CloseBrackets(reading, app, brackets, groups.back().line);
    return apps;
}

}  // namespace brenvik
