#include "drafting_host/dwg/header_checks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "base/handle_text.h"
#include "base/text.h"
#include "drafting_host/dwg/objects.h"
#include "drafting_host/dxf/texts/exact_numbers.h"

namespace brenvik::dwg {
namespace {

struct Range {
    std::string_view names;
    int low, high;
};
constexpr auto Ranges = std::to_array<Range>({
    {"PROXYGRAPHICS SHADOWMODE UNITMODE HIDETEXT INTERSECTIONDISPLAY SOLIDHIST", 0, 1},
    {"ATTMODE CMLJUST XCLIPFRAME DIMASSOC SHOWHIST DWFFRAME DGNFRAME TSTACKALIGN", 0, 2},
    {"DIMTFILL DIMARCSYM DIMFRAC DIMTMOVE DIMTOLJ", 0, 2},
    {"SHADEDGE INDEXCTL CEPSNTYPE CSHADOW DIMAZIN DIMATFIT DIMFIT", 0, 3},
    {"AUNITS DIMAUNIT DIMTAD DIMJUST", 0, 4},
    {"LUNITS DIMUNIT", 0, 5},
    {"DIMLUNIT SPLINETYPE LOFTNORMALS UCSORTHOVIEW PUCSORTHOVIEW", 0, 6},
    {"LUPREC AUPREC DIMALTD DIMDEC DIMTDEC DIMALTU DIMALTTD SURFTYPE", 0, 8},
    {"DIMADEC", -1, 8},
    {"OBSLTYPE", 0, 11},
    {"DIMZIN DIMTZIN DIMALTZ DIMALTTZ", 0, 15},
    {"INSUNITS", 0, 24},
    {"PDMODE", 0, 100},
    {"SHADEDIF HALOGAP TEXTQLTY", 0, 100},
    {"SORTENTS TSTACKSIZE", 0, 127},
    {"SURFU SURFV", 0, 200},
    {"DIMLWD DIMLWE", -3, 211},
    {"CECOLOR DIMCLRD DIMCLRE DIMCLRT DIMTFILLCLR INTERFERECOLOR", 0, 257},
    {"OBSCOLOR INTERSECTIONCOLOR", 0, 257},
    {"ISOLINES", 0, 2047},
    {"SURFTAB1 SURFTAB2 MAXACTVP", 0, 32767},
    {"TIMEZONE", -13000, 15000},
});
constexpr auto NeverNegative = std::to_array<std::string_view>(
    {"LTSCALE", "TEXTSIZE", "TRACEWID", "FILLETRAD", "PLINEWID", "CHAMFERA", "CHAMFERB", "CHAMFERC",
     "FACETRES", "CELTSCALE", "PSVPSCALE", "DIMTXT", "DIMTSZ", "LENSLENGTH", "STEPSIZE", "STEPSPERSEC"});

std::string Expected(const std::string& name, const std::string& found, const std::string& expected) {
    return "the variable $" + name + " is " + found + " where " + expected + " was expected: it is left out";
}

/// A day between those of the first drawings and a hundred years from now; a span of time begins at 0.
bool IsTime(const std::string& name, double days) {
    constexpr double first = 2440000, last = 2500000, longest = 100000;
    const bool isSpan = name == "TDINDWG" || name == "TDUSRTIMER";
    return days == 0 || (isSpan ? days > 0 && days < longest : days > first && days < last);
}

/// Why a value can't be; blank where it may.
std::string WhyNot(const std::string& name, const std::vector<double>& values) {
    for (const double value : values)
        if (IsAbsurd(value)) return "a number of a drawing's size";
    const double value = values.front();
    if (name.starts_with("TD") && !IsTime(name, value)) return "a time";
    if (name == "LATITUDE" && std::abs(value) > 90) return "-90 to 90";
    if (name == "LONGITUDE" && std::abs(value) > 180) return "-180 to 180";
    if (value < 0 && std::ranges::find(NeverNegative, name) != NeverNegative.end()) return "0 or more";
    return {};
}

bool AreAxes(const std::vector<double>& x, const std::vector<double>& y) {
    constexpr double tolerance = 1e-6;
    double xx = 0, yy = 0, xy = 0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        xx += x[i] * x[i];
        yy += y[i] * y[i];
        xy += x[i] * y[i];
    }
    return std::abs(xx - 1) < tolerance && std::abs(yy - 1) < tolerance && std::abs(xy) < tolerance;
}

void DropFalseAxes(std::map<std::string, std::vector<double>>& reals, std::vector<std::string>& doubts) {
    for (const std::string space : {"", "P"}) {
        const auto x = reals.find(space + "UCSXDIR"), y = reals.find(space + "UCSYDIR");
        if (x == reals.end() || y == reals.end() || AreAxes(x->second, y->second)) continue;
        doubts.push_back("the variables $" + x->first + " and $" + y->first +
                         " aren't at right angles or not of length 1: the axes of the world are taken");
        reals.erase(x);
        reals.erase(y);
    }
}

/// Digits of base 16 in groups, mostly in braces.
bool IsGuid(std::string_view text) {
    if (text.starts_with('{') && text.ends_with('}')) text = text.substr(1, text.size() - 2);
    constexpr std::string_view form = "XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX";
    constexpr std::string_view digits = "0123456789ABCDEFabcdef";
    return std::ranges::equal(text, form, [&](char found, char expected) {
        return expected == 'X' ? digits.find(found) != std::string_view::npos : found == expected;
    });
}

}  // namespace

std::vector<std::string> DropImpossible(Values& values) {
    std::vector<std::string> doubts;
    for (const Range& range : Ranges) {
        for (const std::string& name : Split(range.names, ' ')) {
            const auto found = values.whole.find(name);
            if (found == values.whole.end() || (found->second >= range.low && found->second <= range.high))
                continue;
            doubts.push_back(Expected(name, std::to_string(found->second),
                                      std::to_string(range.low) + " to " + std::to_string(range.high)));
            values.whole.erase(found);
        }
    }
    std::erase_if(values.reals, [&](const auto& real) {
        const std::string expected = real.first == "-" ? std::string() : WhyNot(real.first, real.second);
        const auto absurd = std::ranges::find_if(real.second, IsAbsurd);
        const double shown = absurd == real.second.end() ? real.second.front() : *absurd;
        if (!expected.empty()) doubts.push_back(Expected(real.first, RealText(shown), expected));
        return !expected.empty();
    });
    DropFalseAxes(values.reals, doubts);
    std::erase_if(values.texts, [&](const auto& text) {
        const bool isWrong = text.first.ends_with("GUID") && !text.second.empty() && !IsGuid(text.second);
        if (isWrong) doubts.push_back(Expected(text.first, ShownName(text.second), "an identifier"));
        return isWrong;
    });
    return doubts;
}

void CheckHandleSeed(HandleValue seed, const ObjectMap& map, Reading& reading) {
    HandleValue highest = 0;
    for (const ObjectMap::Entry& entry : map.Entries()) highest = std::max(highest, entry.handle);
    if (seed > highest) return;
    reading.Note(0, "the variable $HANDSEED is " + HandleToText(seed) + " where more than " +
                        HandleToText(highest) + ", the highest handle, was expected: the next one is taken");
}

namespace {

struct Target {
    std::string_view kind;
    std::string_view names;
    bool mayBeNone = false;
    bool isVariable = true;  ///< Otherwise one of what every drawing has.
};
constexpr auto Targets = std::to_array<Target>({
    {"LAYER", "CLAYER"},
    {"STYLE", "TEXTSTYLE"},
    {"LTYPE", "CELTYPE"},
    {"MATERIAL", "CMATERIAL", true},
    {"DIMSTYLE", "DIMSTYLE"},
    {"MLINESTYLE", "CMLSTYLE"},
    {"VISUALSTYLE", "INTERFEREOBJVS INTERFEREVPVS DRAGVS", true},
    {"BLOCK_CONTROL", "BLOCK_CONTROL", false, false},
    {"LAYER_CONTROL", "LAYER_CONTROL", false, false},
    {"STYLE_CONTROL", "STYLE_CONTROL", false, false},
    {"LTYPE_CONTROL", "LTYPE_CONTROL", false, false},
    {"VIEW_CONTROL", "VIEW_CONTROL", false, false},
    {"UCS_CONTROL", "UCS_CONTROL", false, false},
    {"VPORT_CONTROL", "VPORT_CONTROL", false, false},
    {"APPID_CONTROL", "APPID_CONTROL", false, false},
    {"DIMSTYLE_CONTROL", "DIMSTYLE_CONTROL", false, false},
    {"DICTIONARY", "GROUPS MLINESTYLES DICTIONARIES", false, false},
    {"DICTIONARY", "LAYOUTS PLOTSETTINGS PLOTSTYLES MATERIALS COLORS VISUALSTYLES", true, false},
    {"BLOCK_RECORD", "MODEL PAPER", false, false},
    {"LTYPE", "BYLAYER BYBLOCK CONTINUOUS", false, false},
});

bool IsOfKind(const ObjectMap::Entry& entry, std::string_view kind, const Sections& sections,
              const Texts& texts, const Kinds& kinds) {
    try {
        const std::string_view found = kinds.NameOf(OpenObject(sections, texts, entry).type);
        return found == kind || (kind == "DICTIONARY" && found == "ACDBDICTIONARYWDFLT");
    } catch (const Damage&) {
        return true;  // it is reported by itself
    }
}

}  // namespace

void CheckHandles(const Header& header, const Sections& sections, const Texts& texts, const ObjectMap& map,
                  const Kinds& kinds, Links& links) {
    constexpr auto lookedUpByName = std::to_array<std::string_view>({"CLAYER", "TEXTSTYLE", "CELTYPE"});
    for (const Target& target : Targets) {
        for (const std::string& name : Split(target.names, ' ')) {
            const auto found = header.handles.find(name);
            if (found == header.handles.end()) continue;
            const HandleValue handle = found->second;
            const bool isByName = std::ranges::find(lookedUpByName, name) != lookedUpByName.end();
            if (handle == 0 ? target.mayBeNone : isByName) continue;
            const ObjectMap::Entry* const entry = handle == 0 ? nullptr : map.Find(handle);
            if (entry != nullptr && IsOfKind(*entry, target.kind, sections, texts, kinds)) continue;
            const std::string holder = target.isVariable ? "$" + name : "the drawing's head";
            links.Drop("a " + std::string(target.kind), handle, {holder});
        }
    }
}

}  // namespace brenvik::dwg
