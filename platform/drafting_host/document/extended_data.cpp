// Checking, merging and listing extended data.
#include "drafting_host/document/extended_data.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>
#include <string>

#include "base/handle_text.h"
#include "base/letter_case.h"
#include "base/text.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/dxf/texts/dxf_text.h"

namespace brenvik {
namespace {

constexpr std::int16_t ApplicationCode = 1001;
constexpr std::size_t ByteChunkLimit = 127;

Failure BadItem(std::size_t index, const std::string& expected) {
    return host_failure::InvalidArgument("extended data, item " + std::to_string(index) + ": " + expected);
}

std::string TextItem(std::size_t index, std::int16_t code, const XDataValue& value) {
    const std::string* text = std::get_if<std::string>(&value);
    if (text == nullptr) throw BadItem(index, "code " + std::to_string(code) + " takes a text");
    if (const std::size_t units = TextUnits(*text); units > XDataTextLimit) {
        throw BadItem(index, "a text of " + std::to_string(units) + " characters, at most " +
                                 std::to_string(XDataTextLimit) + " are allowed");
    }
    if (code == 1002 && *text != "{" && *text != "}") throw BadItem(index, "code 1002 takes \"{\" or \"}\"");
    if (code == 1005 && !HandleFromText(*text)) throw BadItem(index, "code 1005 takes a handle");
    return *text;
}

std::optional<double> Number(const XDataValue& value) {
    if (const double* real = std::get_if<double>(&value)) return *real;
    if (const std::int16_t* small = std::get_if<std::int16_t>(&value)) return *small;
    if (const std::int32_t* large = std::get_if<std::int32_t>(&value)) return *large;
    return std::nullopt;
}

template <class Integer>
Integer IntegerItem(std::size_t index, const XDataValue& value) {
    const std::optional<double> number = Number(value);
    if (!number || *number != std::floor(*number) || *number < std::numeric_limits<Integer>::min() ||
        *number > std::numeric_limits<Integer>::max()) {
        throw BadItem(index, "an integer of " + std::to_string(8 * sizeof(Integer)) + " bits is expected");
    }
    return static_cast<Integer>(*number);
}

Point3 PointItem(std::size_t index, const XDataValue& value) {
    const Point3* point = std::get_if<Point3>(&value);
    if (point == nullptr || !std::isfinite(point->x) || !std::isfinite(point->y) ||
        !std::isfinite(point->z)) {
        throw BadItem(index, "a point with finite coordinates is expected");
    }
    return *point;
}

XDataValue CheckedItem(std::size_t index, std::int16_t code, const XDataValue& value) {
    switch (code) {
        case 1000:
        case 1002:
        case 1003:
        case 1005:
            return TextItem(index, code, value);
        case 1004: {
            const auto* bytes = std::get_if<std::vector<std::uint8_t>>(&value);
            if (bytes == nullptr || bytes->size() > ByteChunkLimit)
                throw BadItem(index, "at most 127 bytes are expected");
            return *bytes;
        }
        case 1010:
        case 1011:
        case 1012:
        case 1013:
            return PointItem(index, value);
        case 1040:
        case 1041:
        case 1042: {
            const std::optional<double> number = Number(value);
            if (!number || !std::isfinite(*number)) throw BadItem(index, "a finite number is expected");
            return *number;
        }
        case 1070:
            return IntegerItem<std::int16_t>(index, value);
        case 1071:
            return IntegerItem<std::int32_t>(index, value);
        default:
            throw BadItem(index, "there is no extended data of code " + std::to_string(code));
    }
}

/// Bytes of an item without its code: texts carry their length and code page, points three reals.
struct ItemSize {
    std::size_t operator()(const std::string& text) const { return text.size() + 3; }
    std::size_t operator()(double) const { return 8; }
    std::size_t operator()(std::int16_t) const { return 2; }
    std::size_t operator()(std::int32_t) const { return 4; }
    std::size_t operator()(const Point3&) const { return 24; }
    std::size_t operator()(const std::vector<std::uint8_t>& bytes) const { return bytes.size() + 1; }
};

void CheckBraces(const XDataOfApp& data) {
    int open = 0;
    for (const XDataItem& item : data.items) {
        if (item.code != 1002) continue;
        open += std::get<std::string>(item.value) == "{" ? 1 : -1;
        if (open < 0) break;
    }
    if (open != 0)
        throw host_failure::InvalidArgument("the braces in extended data of " + data.app + " don't pair");
}

std::size_t SizeOf(const XDataOfApp& app) {
    constexpr std::size_t codeBytes = 1, applicationBytes = 9;
    std::size_t size = applicationBytes;
    for (const XDataItem& item : app.items) size += codeBytes + std::visit(ItemSize{}, item.value);
    return size;
}

auto IsOfApp(std::string_view name) {
    return [name](const XDataOfApp& app) { return EqualsIgnoreCase(app.app, name); };
}

/// What the data would take with the changes made, of which the last for an application counts. Nothing is
/// copied for it: an Apply sets every key of every part.
std::size_t MergedSize(const std::vector<XDataOfApp>& data, const std::vector<XDataOfApp>& changes) {
    std::size_t size = 0;
    for (const XDataOfApp& app : data)
        if (std::ranges::none_of(changes, IsOfApp(app.app))) size += SizeOf(app);
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        const bool last = std::none_of(std::next(change), changes.end(), IsOfApp(change->app));
        if (last && !change->items.empty()) size += SizeOf(*change);
    }
    return size;
}

}  // namespace

std::vector<XDataOfApp> ParseXData(std::span<const std::int16_t> types, std::span<const XDataValue> values) {
    if (types.size() != values.size())
        throw host_failure::InvalidArgument("extended data needs as many values as codes");
    if (types.empty() || types.front() != ApplicationCode)
        throw host_failure::InvalidArgument("extended data has to begin with an application entry (1001)");
    std::vector<XDataOfApp> result;
    for (std::size_t i = 0; i < types.size(); ++i) {
        if (types[i] != ApplicationCode) {
            result.back().items.push_back({types[i], CheckedItem(i, types[i], values[i])});
            continue;
        }
        const std::string name = TextItem(i, types[i], values[i]);
        if (IsBlank(name)) throw BadItem(i, "the name of an application is expected");
        result.push_back({name, {}});
    }
    for (const XDataOfApp& app : result) CheckBraces(app);
    return result;
}

void MergeXData(std::vector<XDataOfApp>& data, const std::vector<XDataOfApp>& changes) {
    if (MergedSize(data, changes) > XdataTotalLimit)
        throw host_failure::InvalidArgument("extended data of one object may take 16 kB at most");
    for (const XDataOfApp& change : changes) {
        const auto same = std::ranges::find_if(data, IsOfApp(change.app));
        if (same == data.end()) {
            if (!change.items.empty()) data.push_back(change);
        } else if (change.items.empty()) {
            data.erase(same);
        } else {
            same->items = change.items;
        }
    }
}

bool IsSameXData(const std::vector<XDataOfApp>& a, const std::vector<XDataOfApp>& b) {
    return std::ranges::is_permutation(a, b);
}

void ListXData(const std::vector<XDataOfApp>& data, std::string_view app, std::vector<std::int16_t>& types,
               std::vector<XDataValue>& values) {
    types.clear();
    values.clear();
    for (const XDataOfApp& one : data) {
        if (!app.empty() && !EqualsIgnoreCase(one.app, app)) continue;
        types.push_back(ApplicationCode);
        values.emplace_back(one.app);
        for (const XDataItem& item : one.items) {
            types.push_back(item.code);
            values.push_back(item.value);
        }
    }
}

}  // namespace brenvik
