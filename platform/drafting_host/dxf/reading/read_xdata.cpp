// Extended data: per application a list of items, each a group with a code from 1000 on.
#include <algorithm>
#include <limits>

#include "base/text.h"
#include "drafting_host/dxf/reading/reading.h"
#include "parts/part_table.h"

namespace brenvik {
namespace {

constexpr int CodeApplication = 1001, CodeBracket = 1002, CodeBytes = 1004, CodeShort = 1070, CodeLong = 1071;

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

bool IsTextOrNumber(const XDataItem& item) {
    return item.code != CodeBracket && !std::holds_alternative<Point3>(item.value) &&
           !std::holds_alternative<std::vector<std::uint8_t>>(item.value);
}

/// True for the applications whose first item is a value of the cut list.
bool IsPartData(std::string_view app) {
    constexpr std::string_view keys = PartDataKeyList;
    for (std::size_t at = 0; at <= keys.size();) {
        const std::size_t end = std::min(keys.find(',', at), keys.size());
        if (EqualsIgnoreCase(keys.substr(at, end - at), app)) return true;
        at = end + 1;
    }
    return false;
}

XDataOfApp& AppOf(std::vector<XDataOfApp>& apps, std::string name) {
    const auto found = std::find_if(apps.begin(), apps.end(),
                                    [&](const XDataOfApp& a) { return EqualsIgnoreCase(a.app, name); });
    return found != apps.end() ? *found : apps.emplace_back(XDataOfApp{std::move(name), {}});
}

/// Reads the groups of one entity.
class XDataReader {
  public:
    XDataReader(Reading& reading, Groups groups, const std::string& entity)
        : mReading(reading), mGroups(groups), mEntity(entity) {}

    std::vector<XDataOfApp> Run() {
        for (mAt = 0; mAt < mGroups.size(); ++mAt) TakeGroup(mGroups[mAt]);
        if (!mGroups.empty()) EndApp(mGroups.back().line);
        return std::move(mApps);
    }

  private:
    void TakeGroup(const Group& group) {
        if (group.code == CodeApplication) {
            EndApp(group.line);
            mApp = &AppOf(mApps, TextOf(group));
            mAppLine = group.line;
            return;
        }
        if (mApp == nullptr) {
            Note(group.line, "extended data passed over: an application (group 1001) was expected first");
            return;
        }
        try {
            mApp->items.push_back({static_cast<std::int16_t>(group.code), ValueOf(group)});
        } catch (const EntityRefused& refused) {
            Note(refused.line, OfApp() + "an item was passed over, " + refused.reason);
        }
    }

    XDataValue ValueOf(const Group& group) {
        if (IsText(group.code)) return TextOf(group);
        if (group.code == CodeBracket) {
            std::string bracket = Trim(group.value);
            if (mBrackets.Take(bracket)) return bracket;
            throw EntityRefused{group.line, "a bracket \"{\" or its \"}\" was expected"};
        }
        if (group.code == CodeBytes) return BytesOf(group);
        if (IsPointStart(group.code)) return WholePointOf(group);
        if (IsReal(group.code)) return RealOf(group);
        if (group.code == CodeShort) return SignedShortOf(group);
        if (group.code == CodeLong) return static_cast<std::int32_t>(IntegerOf(group));
        throw EntityRefused{group.line, "group " + std::to_string(group.code) +
                                            " stands where a code of extended data was expected"};
    }

    Point3 WholePointOf(const Group& group) {
        constexpr std::size_t further = 2;
        const std::size_t before = mAt;
        const Point3 point = PointOf(mGroups, mAt);
        if (mAt - before < further)
            Note(group.line, OfApp() + "groups " + std::to_string(group.code + 10) + " and " +
                                 std::to_string(group.code + 20) + " were expected behind group " +
                                 std::to_string(group.code) + "; 0 is taken for what is missing");
        return point;
    }

    /// A number beyond the signed ones is taken as the bits that it has.
    std::int16_t SignedShortOf(const Group& group) {
        const std::int16_t value = ShortOf(group);
        if (value != IntegerOf(group))
            Note(group.line, OfApp() + "group 1070 holds " + ShownName(Trim(group.value)) +
                                 " where a number from -32768 to 32767 was expected; " +
                                 std::to_string(value) + " is taken");
        return value;
    }

    /// What the format doesn't take would stop every saving of the drawing, and tables know no zero
    /// character.
    std::string TextOf(const Group& group) {
        std::string text = mReading.Text(group);
        if (std::erase(text, '\0') > 0)
            Note(group.line, OfApp() + "a text with a zero character was read without it");
        const std::size_t units = TextUnits(text);
        if (units <= XDataTextLimit) return text;
        Note(group.line, OfApp() + "a text of " + std::to_string(units) + " characters was cut to the " +
                             std::to_string(XDataTextLimit) + " that a drawing takes");
        return std::string(FirstTextUnits(text, XDataTextLimit));
    }

    void EndApp(std::size_t line) {
        if (mApp == nullptr) return;
        if (mBrackets.depth > 0) Note(line, OfApp() + "a missing \"}\" was put in", false);
        for (; mBrackets.depth > 0; --mBrackets.depth) mApp->items.push_back({CodeBracket, std::string("}")});
        if (!IsPartData(mApp->app)) return;
        const XDataItem* const first = mApp->items.empty() ? nullptr : &mApp->items.front();
        if (first != nullptr && IsTextOrNumber(*first)) return NoteFurtherItems(*first);
        Note(mAppLine, OfApp() + "a text was expected behind it, found " +
                           (first == nullptr             ? "nothing"
                            : first->code == CodeBracket ? "a bracket"
                                                         : "a point or bytes"));
    }

    /// Part data are one text; whoever writes more means something that nobody reads.
    void NoteFurtherItems(const XDataItem& first) {
        const std::size_t further = mApp->items.size() - 1;
        if (further == 0) return;
        const auto* text = std::get_if<std::string>(&first.value);
        Note(mAppLine, OfApp() + "one value was expected, found " + std::to_string(further + 1) +
                           "; the first one counts" + (text == nullptr ? "" : ", " + ShownName(*text)));
    }

    std::string OfApp() const {
        return mApp == nullptr ? std::string() : "extended data of " + ShownName(mApp->app) + ": ";
    }
    void Note(std::size_t line, const std::string& text, bool dataLost = true) {
        mReading.Note(line, mEntity + ", " + text, dataLost);
    }

    Reading& mReading;
    Groups mGroups;
    const std::string& mEntity;
    std::vector<XDataOfApp> mApps;
    XDataOfApp* mApp = nullptr;
    Brackets mBrackets;
    std::size_t mAt = 0, mAppLine = 0;
};

}  // namespace

std::vector<XDataOfApp> ReadXData(Reading& reading, Groups groups, const std::string& entity) {
    return XDataReader(reading, groups, entity).Run();
}

}  // namespace brenvik
