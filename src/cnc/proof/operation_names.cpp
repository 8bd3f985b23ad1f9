// A reader for each form that names have. Fields are found by the marks around them, so that tools, speeds
// and feeds may be any text of the material library.
#include "cnc/proof/operation_names.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "base/ascii.h"
#include "base/numbers.h"
#include "base/text.h"

namespace brenvik {

namespace {

/// The rest of a name, eaten from the left.
class Reader {
  public:
    explicit Reader(std::string_view name) : mRest(name) {}

    bool Take(std::string_view mark) {
        if (!mRest.starts_with(mark)) return false;
        mRest.remove_prefix(mark.size());
        return true;
    }
    /// The text before the next such mark; the mark itself is consumed.
    std::optional<std::string> Until(std::string_view mark) {
        const std::size_t at = mRest.find(mark);
        if (at == std::string_view::npos) return std::nullopt;
        std::string text(mRest.substr(0, at));
        mRest.remove_prefix(at + mark.size());
        return text;
    }
    std::string All() { return std::string(std::exchange(mRest, {})); }
    bool AtEnd() const { return mRest.empty(); }
    std::string_view Rest() const { return mRest; }

  private:
    std::string_view mRest;
};

/// Nothing stands before the mark or behind it that the number could do without: "p5", "12", "0".
bool IsShortest(std::string_view plain) {
    if (plain.starts_with('-')) plain.remove_prefix(1);
    if (plain.size() > 1 && plain.starts_with('0')) return false;
    return plain.find('.') == std::string_view::npos || !(plain.ends_with('0') || plain.ends_with('.'));
}

/// A number of a name: digits with one decimal mark at the most. Receivers that look for the name as it is
/// written find no other form of the same number.
std::optional<double> NumberOf(std::string_view text, std::string_view mark) {
    if (text.empty() || text.find_first_of(".eEdD+ \t") != std::string_view::npos) return std::nullopt;
    const std::string plain = ReplaceAll(text, mark, ".");
    if (!IsNumeric(plain) || !IsShortest(plain)) return std::nullopt;
    return LenientNumber(plain);
}

double HalfStep(int digits) { return 0.5 * std::pow(10.0, -digits); }

/// A name under the reader's hands. A number that should be there and isn't one makes it no name.
struct Reading {
    const NameContext& context;
    Reader text;
    OperationName name = {};
    bool good = true;

    /// Blank where the run had no scale to round by.
    std::optional<double> Number(std::string_view field, std::string_view mark = "p") {
        if (field.empty()) return std::nullopt;
        const std::optional<double> number = NumberOf(field, mark);
        good = good && number.has_value();
        return number;
    }
    std::optional<double> Required(const std::optional<std::string>& field, std::string_view mark = "p") {
        good = good && field && !field->empty();
        return field ? Number(*field, mark) : std::nullopt;
    }
    void RoundedTo(int metric, int imperial) { name.rounding = HalfStep(context.metric ? metric : imperial); }
    std::optional<OperationName> Done() const {
        return good && text.AtEnd() ? std::optional(name) : std::nullopt;
    }
};

using Answer = std::optional<OperationName>;

Answer Of(Reading& reading, OperationKind kind) {
    reading.name.kind = kind;
    return reading.Done();
}

// Paths.

/// The kinds of the first family, by the first field.
std::optional<OperationKind> TakeKind(Reader& text) {
    constexpr auto kinds =
        std::to_array<std::pair<std::string_view, OperationKind>>({{"RT_Z", OperationKind::Route},
                                                                   {"PKC_Z", OperationKind::Pocket},
                                                                   {"PKS_Z", OperationKind::Pocket},
                                                                   {"OT_Z", OperationKind::Outline}});
    for (const auto& [mark, kind] : kinds)
        if (text.Take(mark)) return kind;
    return std::nullopt;
}

/// "C0_12": the compensation and, but for the outline, the counter.
bool TakeCounted(Reading& reading) {
    const std::string rest = reading.text.All();
    const auto [compensation, counter, found] = SplitAtFirst(rest, '_');
    reading.name.compensation = compensation;
    if (!found) return true;
    if (!IsDigitsAlone(counter) || !IsShortest(counter)) return false;
    reading.name.counter = ToInteger(LenientNumber(counter));
    return true;
}

bool TakeToolFields(Reading& reading) {
    const std::optional<std::string> tool = reading.text.Until("_D"), diameter = reading.text.Until("_S"),
                                     speed = reading.text.Until("_F");
    if (!tool || !diameter || !speed) return false;
    reading.name.tool = *tool;
    reading.name.diameter = reading.Required(diameter);
    reading.name.speed = *speed;
    return true;
}

Answer FirstFamilyPath(Reading reading) {
    const std::optional<OperationKind> kind = TakeKind(reading.text);
    const std::optional<std::string> depth = kind ? reading.text.Until("_T") : std::nullopt;
    if (!depth || !TakeToolFields(reading)) return std::nullopt;
    const Target target = reading.context.target;
    const bool depthInName = target == Target::C2C || target == Target::ATP;
    if (depthInName != !depth->empty()) return std::nullopt;
    if (depthInName) reading.name.depth = reading.Number(*depth);
    if (depthInName) reading.RoundedTo(5, 5);
    const std::string_view behindFeed = target == Target::C2C ? "_R_C" : target == Target::RCIM ? "_C" : "";
    if (behindFeed.empty()) {
        reading.name.feed = reading.text.All();
        return Of(reading, *kind);
    }
    const std::optional<std::string> feed = reading.text.Until(behindFeed);
    if (!feed) return std::nullopt;
    reading.name.feed = *feed;
    if (target == Target::C2C ? !TakeCounted(reading) : false) return std::nullopt;
    if (target == Target::RCIM) reading.name.compensation = reading.text.All();
    return Of(reading, *kind);
}

Answer PathOfTHERM(Reading reading) {
    reading.RoundedTo(2, 4);
    if (reading.text.Take("outline ")) {
        reading.name.depth = reading.Number(reading.text.All());
        return Of(reading, OperationKind::Outline);
    }
    const bool pocket = reading.text.Take("pocket ");
    if (!pocket && !reading.text.Take("dado ")) return std::nullopt;
    reading.name.diameter = reading.Required(reading.text.Until(" "));
    reading.name.depth = reading.Number(reading.text.All());
    return Of(reading, pocket ? OperationKind::Pocket : OperationKind::Route);
}

Answer Rotor(Reading reading) {
    reading.RoundedTo(2, 4);
    if (!reading.text.Take("ROTOR")) return std::nullopt;
    reading.name.depth = reading.Number(reading.text.All());
    return Of(reading, OperationKind::Path);
}

/// The tool and right behind it the depth: "318p3" is 18.3 deep with tool 3.
Answer ToolThenDepth(Reading reading) {
    reading.RoundedTo(2, 4);
    const std::string_view whole = reading.text.Rest();
    Answer found;
    double off = 0;
    for (const std::string& tool : reading.context.tools) {
        if (tool.empty() || !whole.starts_with(tool)) continue;
        const std::string_view field = whole.substr(tool.size());
        const std::optional<double> depth = field.empty() ? std::nullopt : NumberOf(field, "p");
        if (!field.empty() && !depth) continue;
        const double apart = std::abs(depth.value_or(0) - reading.context.depthOfEntity.value_or(0));
        if (found && off <= apart) continue;
        off = apart;
        found = reading.name;
        found->kind = OperationKind::Path;
        found->tool = tool;
        found->depth = depth;
    }
    return found;
}

Answer PathOfWOP4(Reading reading) {
    reading.RoundedTo(3, 4);
    const std::optional<std::string> depth = reading.text.Take("FK") ? reading.text.Until("T") : std::nullopt;
    if (!depth) return std::nullopt;
    reading.name.depth = reading.Number(*depth, "_");
    reading.name.tool = reading.text.All();
    if (!reading.name.tool.ends_with('N')) return std::nullopt;
    reading.name.tool.pop_back();
    return Of(reading, OperationKind::Path);
}

Answer PathOfWOP5(Reading reading) {
    reading.RoundedTo(3, 4);
    const std::optional<std::string> depth =
        reading.text.Take("V_Trim_") ? reading.text.Until("T") : std::nullopt;
    if (!depth) return std::nullopt;
    reading.name.depth = reading.Number(*depth, "_");
    reading.name.tool = reading.text.All();
    return Of(reading, OperationKind::Path);
}

/// Hundredths of a millimetre, or ten-thousandths of an inch.
std::optional<double> Whole(Reading& reading, std::string_view field, int metric, int imperial) {
    reading.RoundedTo(metric, imperial);
    reading.good = reading.good && std::ranges::all_of(field, IsDigit);
    const std::optional<double> steps = reading.Number(field);
    if (!steps) return std::nullopt;
    return *steps / std::pow(10.0, reading.context.metric ? metric : imperial);
}

Answer PathOfBW(Reading reading) {
    const std::optional<std::string> tool =
        reading.text.Take("TCHB1W0TCD$") ? reading.text.Until("$S") : std::nullopt;
    const std::optional<std::string> speed = tool ? reading.text.Until("F") : std::nullopt;
    if (!speed) return std::nullopt;
    std::string rest = reading.text.All();
    const std::size_t depth = rest.rfind('D');
    if (depth == std::string::npos) return std::nullopt;
    reading.name.depth = Whole(reading, std::string_view(rest).substr(depth + 1), 2, 4);
    rest.resize(depth);
    for (const std::string_view ending : {"TC2DIR1", "TC2", "TC1"}) {
        if (!rest.ends_with(ending)) continue;
        rest.resize(rest.size() - ending.size());
        reading.name.compensation = ending;
        break;
    }
    reading.name.tool = *tool;
    reading.name.speed = *speed;
    reading.name.feed = rest;
    return Of(reading, OperationKind::Path);
}

Answer ReadPath(const Reading& reading) {
    switch (reading.context.target) {
        case Target::C2C:
        case Target::ATP:
        case Target::Enroute:
        case Target::ABC:
        case Target::RCIM:
            return FirstFamilyPath(reading);
        case Target::THERM:
            return PathOfTHERM(reading);
        case Target::ASP:
        case Target::CNI:
            return Rotor(reading);
        case Target::ROV:
            return ToolThenDepth(reading);
        case Target::WOP4:
            return PathOfWOP4(reading);
        case Target::WOP5:
            return PathOfWOP5(reading);
        case Target::BW:
            return PathOfBW(reading);
    }
    return std::nullopt;
}

// Sheets.

Answer SheetBehind(Reading reading, std::string_view head, std::string_view mark = "p") {
    if (!reading.text.Take(head)) return std::nullopt;
    reading.name.depth = reading.Number(reading.text.All(), mark);
    return Of(reading, OperationKind::Sheet);
}

Answer ReadSheet(Reading reading) {
    switch (reading.context.target) {
        case Target::C2C:
        case Target::ATP:
        case Target::Enroute:
        case Target::RCIM:
            reading.RoundedTo(6, 6);
            return SheetBehind(reading, "PL_");
        case Target::ABC:
        case Target::THERM:
            return std::nullopt;
        case Target::ASP:
        case Target::CNI:
        case Target::ROV:
            reading.RoundedTo(2, 4);
            return SheetBehind(reading, "PANEL");
        case Target::WOP4:
            reading.RoundedTo(3, 4);
            return SheetBehind(reading, "S_", "_");
        case Target::WOP5:
            reading.RoundedTo(3, 4);
            return SheetBehind(reading, "ProcPart_", "_");
        case Target::BW:
            if (!reading.text.Take("TCHB8W0D")) return std::nullopt;
            reading.name.depth = Whole(reading, reading.text.All(), 4, 4);
            return Of(reading, OperationKind::Sheet);
    }
    return std::nullopt;
}

// Vertical holes.

Answer DepthAndDiameter(Reading reading) {
    reading.RoundedTo(6, 6);
    if (reading.text.Take("VD_Z")) {
        reading.name.depth = reading.Required(reading.text.Until("_T_D"));
        reading.name.diameter = reading.Required(reading.text.All());
        return Of(reading, OperationKind::Hole);
    }
    if (reading.context.target != Target::ATP || !reading.text.Take("VD_T")) return std::nullopt;
    reading.name.diameter = reading.Required(reading.text.Until("_D"));
    reading.name.depth = reading.Required(reading.text.All());
    return Of(reading, OperationKind::Hole);
}

Answer DiameterAlone(Reading reading) {
    if (!reading.text.Take("VD_Z_T_D")) return std::nullopt;
    reading.name.diameter = reading.Required(reading.text.All());
    reading.RoundedTo(6, 6);
    return Of(reading, OperationKind::Hole);
}

Answer HoleBehind(Reading reading, std::string_view head, int metric, int imperial,
                  std::string_view mark = "p") {
    reading.RoundedTo(metric, imperial);
    if (!reading.text.Take(head)) return std::nullopt;
    reading.name.depth = reading.Number(reading.text.All(), mark);
    return Of(reading, OperationKind::Hole);
}

/// Less than one has a zero in front, and so has what is rounded up to one.
Answer HoleOfTHERM(Reading reading) {
    if (!reading.text.Take("drill z")) return std::nullopt;
    const bool hasZero = reading.text.Take("0");
    reading.RoundedTo(2, 4);
    reading.name.depth = reading.Number(reading.text.All());
    if (hasZero && reading.name.depth.value_or(0) > 1) return std::nullopt;
    return Of(reading, OperationKind::Hole);
}

Answer HoleOfWOP(Reading reading) {
    const bool four = reading.context.target == Target::WOP4;
    if (!four && reading.text.Rest() == "V_DrillSFS") {
        reading.text.All();
        reading.name.through = true;
        return Of(reading, OperationKind::Hole);
    }
    reading.name.through = four && reading.text.Rest().starts_with("ZD");
    return HoleBehind(reading, !four ? "V_DrillSF_" : reading.name.through ? "ZD" : "ZF", 3, 4, "_");
}

Answer ReadHole(Reading reading) {
    switch (reading.context.target) {
        case Target::C2C:
        case Target::ATP:
            return DepthAndDiameter(reading);
        case Target::Enroute:
        case Target::ABC:
        case Target::RCIM:
            return DiameterAlone(reading);
        case Target::THERM:
            return HoleOfTHERM(reading);
        case Target::ASP:
            // The depth travels in the thickness alone.
            if (reading.text.All() != "0") return std::nullopt;
            return Of(reading, OperationKind::Hole);
        case Target::CNI:
            return HoleBehind(reading, "VERTICAL", 2, 4);
        case Target::ROV:
            return HoleBehind(reading, "VERT", 2, 4);
        case Target::WOP4:
        case Target::WOP5:
            return HoleOfWOP(reading);
        case Target::BW:
            if (!reading.text.Take("TCHB2W0D")) return std::nullopt;
            reading.name.depth = Whole(reading, reading.text.All(), 2, 4);
            return Of(reading, OperationKind::Hole);
    }
    return std::nullopt;
}

// Edge bores.

/// The heads that name the four sides, in the order of `Sides()`.
bool TakeSide(Reading& reading, const std::array<std::string_view, 4>& heads) {
    for (std::size_t i = 0; i < heads.size(); ++i) {
        if (!reading.text.Take(heads[i])) continue;
        reading.name.side = Sides()[i].side;
        return true;
    }
    return false;
}

constexpr std::array<std::string_view, 4> SideLayers{"HF_T", "HB_T", "HL_T", "HR_T"};

Answer DiameterThenDepth(Reading& reading, std::string_view between) {
    // Printed in full: no digit is rounded away.
    reading.name.diameter = reading.Required(reading.text.Until(between));
    reading.name.depth = reading.Required(reading.text.All());
    return Of(reading, OperationKind::Bore);
}

Answer BoreBehindHeight(Reading& reading, std::string_view mark) {
    reading.RoundedTo(2, 4);
    reading.name.height = reading.Number(reading.text.All(), mark);
    return Of(reading, OperationKind::Bore);
}

Answer BoreOfROV(Reading& reading) {
    reading.RoundedTo(2, 4);
    const std::optional<std::string> height = reading.text.Until("_"), diameter = reading.text.Until("_");
    if (!height || !diameter) return std::nullopt;
    reading.name.height = reading.Number(*height);
    reading.name.diameter = reading.Number(*diameter);
    reading.name.depth = reading.Number(reading.text.All());
    return Of(reading, OperationKind::Bore);
}

Answer ReadBore(Reading reading) {
    switch (reading.context.target) {
        case Target::C2C:
            return TakeSide(reading, SideLayers) ? Of(reading, OperationKind::Bore) : std::nullopt;
        case Target::ATP:
        case Target::Enroute:
        case Target::ABC:
        case Target::RCIM:
            return TakeSide(reading, SideLayers) ? DiameterThenDepth(reading, "_D") : std::nullopt;
        case Target::THERM:
            return reading.text.Take("hbore ") ? DiameterThenDepth(reading, " ") : std::nullopt;
        case Target::ASP:
        case Target::CNI:
            return TakeSide(reading, {"FRONT", "BACK", "LEFT", "RIGHT"}) ? BoreBehindHeight(reading, "p")
                                                                         : std::nullopt;
        case Target::ROV:
            return TakeSide(reading, {"SIDEB0_", "SIDED0_", "SIDEA0_", "SIDEC0_"}) ? BoreOfROV(reading)
                                                                                   : std::nullopt;
        case Target::WOP4:
            return reading.text.Take("HO") ? BoreBehindHeight(reading, "_") : std::nullopt;
        case Target::WOP5:
            return reading.text.Take("H_Drill_") ? BoreBehindHeight(reading, "_") : std::nullopt;
        case Target::BW:
            if (!TakeSide(reading, {"TCHB2W2D", "TCHB2W4D", "TCHB2W1D", "TCHB2W3D"})) return std::nullopt;
            reading.name.depth = Whole(reading, reading.text.All(), 2, 4);
            return Of(reading, OperationKind::Bore);
    }
    return std::nullopt;
}

}  // namespace

std::optional<OperationName> ReadOperationName(const NameContext& context, std::string_view layer) {
    const Reading reading{context, Reader(layer)};
    // Paths come last: one target's begin with its tool, which may be any text.
    if (Answer sheet = ReadSheet(reading)) return sheet;
    if (Answer hole = ReadHole(reading)) return hole;
    if (Answer bore = ReadBore(reading)) return bore;
    return ReadPath(reading);
}

}  // namespace brenvik
