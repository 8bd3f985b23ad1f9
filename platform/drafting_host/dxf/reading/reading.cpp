// Taking the values of groups.
#include "drafting_host/dxf/reading/reading.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "base/text.h"
#include "base/western_text.h"

namespace brenvik {
namespace {

[[noreturn]] void RefuseValue(const Group& group, std::string_view expected) {
    throw EntityRefused{group.line, "group " + std::to_string(group.code) + " holds " +
                                        ShownName(group.value) + " where " + std::string(expected) +
                                        " was expected"};
}

}  // namespace

std::string ShownName(std::string_view name) {
    constexpr std::size_t longest = 60;
    std::string shown = "\"";
    for (const char c : name.substr(0, longest)) shown += static_cast<unsigned char>(c) < ' ' ? '?' : c;
    return shown + (name.size() > longest ? "...\"" : "\"");
}

std::string LayerNameOf(Reading& reading, const Group& group) {
    constexpr std::size_t longestName = 255;
    std::string name = reading.Text(group);
    if (name.empty() || IsAllowedLayerName(name)) return name;
    std::string allowed = Left(name, longestName);
    for (char& c : allowed)
        if (!IsAllowedLayerName(std::string_view(&c, 1)) && static_cast<unsigned char>(c) < 0x80) c = '_';
    if (reading.changedLayerNames.insert(name).second)
        reading.Note(group.line, "layer " + ShownName(name) + " is called " + ShownName(allowed) +
                                     ": a name without any of " + std::string(ForbiddenInNames) +
                                     " was expected");
    return allowed;
}

double RealOf(const Group& group) {
    const auto value = ParseReal(group.value);
    if (!value || !std::isfinite(*value)) RefuseValue(group, "a finite number");
    return *value;
}

LongReal LongRealOf(const Group& group) {
    const auto value = ParseLongReal(group.value);
    if (!value || !std::isfinite(static_cast<double>(*value))) RefuseValue(group, "a finite number");
    return *value;
}

int IntegerOf(const Group& group) {
    const std::string_view text = group.value;
    const std::size_t first = text.find_first_not_of(" \t+");
    if (first == std::string_view::npos) RefuseValue(group, "a whole number");
    int value = 0;
    const auto read = std::from_chars(text.data() + first, text.data() + text.size(), value);
    if (read.ec == std::errc{} &&
        text.find_first_not_of(" \t", static_cast<std::size_t>(read.ptr - text.data())) ==
            std::string_view::npos)
        return value;
    // Some programs write flags as numbers with decimals.
    const auto real = ParseReal(text);
    if (!real || std::abs(*real) > std::numeric_limits<int>::max() || *real != std::floor(*real))
        RefuseValue(group, "a whole number");
    return static_cast<int>(*real);
}

int IntegerWithin(Reading& reading, const Group& group, int low, int high, std::string_view what, int taken) {
    const int value = IntegerOf(group);
    if (value >= low && value <= high) return value;
    reading.Doubt(std::to_string(group.code) + std::string(what), group.line,
                  "group " + std::to_string(group.code) + " holds " + std::to_string(value) + " where " +
                      std::string(what) + " from " + std::to_string(low) + " to " + std::to_string(high) +
                      " was expected; " + std::to_string(taken) + " is taken",
                  false);
    return taken;
}

int FlagsOf(Reading& reading, const Group& group, int mask) {
    const int flags = IntegerOf(group);
    if ((flags & ~mask) != 0)
        reading.Doubt("flags " + std::to_string(group.code) + std::to_string(mask), group.line,
                      "group " + std::to_string(group.code) + " holds " + std::to_string(flags) +
                          " where flags among the bits of " + std::to_string(mask) + " were expected; " +
                          std::to_string(flags & mask) + " is taken",
                      false);
    return flags & mask;
}

void Reading::Doubt(const std::string& what, std::size_t line, std::string text, bool dataLost) {
    const auto [doubt, isNew] = doubts.try_emplace(what);
    if (isNew) doubt->second.note = {line, std::move(text), dataLost};
    ++doubt->second.count;
}

std::string Reading::Text(const Group& group) const { return Text(group.value, group.line); }

std::string Reading::Text(std::string_view text, std::size_t line) const {
    if (decoder.ExpectsUtf8() && !IsUtf8(text) && guessedTexts++ == 0) firstGuessed = line;
    std::string decoded = decoder.Decode(text);
    if (HoldsPageEscape(decoded) && escapedTexts++ == 0) firstEscaped = line;
    if (HoldsFiveDigitEscape(text) && fiveDigitTexts++ == 0) firstFiveDigits = line;
    return decoded;
}

void Reading::TellDoubts() {
    if (escapedTexts > 0) Note(firstEscaped, KeptEscapesNote(escapedTexts, "here"));
    escapedTexts = 0;
    if (fiveDigitTexts > 0) Note(firstFiveDigits, FiveDigitsNote(fiveDigitTexts));
    fiveDigitTexts = 0;
    if (guessedTexts > 0)
        Note(firstGuessed, "expected text in UTF-8, as releases from 2007 on have it; " +
                               std::to_string(guessedTexts) +
                               " text(s) are read by the code page, the first one here");
    guessedTexts = 0;
    for (auto& [what, doubt] : doubts) {
        const std::size_t others = doubt.count - 1;
        if (others > 0)
            doubt.note.text +=
                "; so it is with " + std::to_string(others) + (others == 1 ? " other" : " others");
        Note(doubt.note.line, std::move(doubt.note.text), doubt.note.dataLost);
    }
    doubts.clear();
}

HandleValue HandleOf(const Group& group) {
    const std::string_view text = group.value;
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return 0;
    HandleValue handle = 0;
    const auto read = std::from_chars(text.data() + first, text.data() + text.size(), handle, 16);
    const bool whole = text.find_first_not_of(" \t", static_cast<std::size_t>(read.ptr - text.data())) ==
                       std::string_view::npos;
    return read.ec == std::errc{} && whole && handle <= HighestHandle ? handle : 0;
}

double AngleOf(const Group& group) { return RadiansOfDegrees(LongRealOf(group)); }

bool TakePoint(const Group& group, int index, Point3& point) {
    switch (group.code - index) {
        case 10:
            point.x = RealOf(group);
            return true;
        case 20:
            point.y = RealOf(group);
            return true;
        case 30:
            point.z = RealOf(group);
            return true;
        default:
            return false;
    }
}

bool TakeNormal(const Group& group, Point3& normal) { return TakePoint(group, 200, normal); }

const Group* FindGroup(Groups groups, int code) {
    const auto found =
        std::find_if(groups.begin(), groups.end(), [code](const Group& g) { return g.code == code; });
    return found == groups.end() ? nullptr : &*found;
}

void RequireGroups(Groups groups, std::initializer_list<int> codes, std::size_t line) {
    for (const int code : codes) {
        if (FindGroup(groups, code) == nullptr)
            throw EntityRefused{line, "group " + std::to_string(code) + " was expected and is missing"};
    }
}

void DropBrackets(std::vector<Group>& groups) {
    bool inBrackets = false, embedded = false;
    std::erase_if(groups, [&](const Group& group) {
        // Extended data ends whatever stood open, so that a lost bracket doesn't swallow it.
        if (group.code >= 1000) {
            inBrackets = embedded = false;
            return false;
        }
        if (group.code == 101) embedded = true;
        if (group.code != 102) return inBrackets || embedded;
        const std::size_t first = group.value.find_first_not_of(' ');
        inBrackets = first != std::string_view::npos && group.value[first] == '{';
        return true;
    });
}

}  // namespace brenvik
