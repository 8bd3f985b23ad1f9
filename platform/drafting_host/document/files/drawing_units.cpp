// Units of files, and a drawing brought from one to another.
#include "drafting_host/document/files/drawing_units.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/skip.h"
#include "drafting_host/document/files/scale_drawing.h"
#include "drafting_host/document/files/unscaled_lengths.h"
#include "drafting_host/document/host_document.h"
#include "drafting_host/document/host_solids.h"

namespace brenvik {

namespace {

struct NamedUnit {
    double millimetres;
    std::string_view name;
};

/// The units of $INSUNITS by their numbers; 0 is none. A surveyor's foot is 1200/3937 of a metre.
constexpr std::array<NamedUnit, 25> InsertUnitTable = {{{0, "no unit"},
                                                        {25.4, "inches"},
                                                        {304.8, "feet"},
                                                        {1609344, "miles"},
                                                        {1, "millimetres"},
                                                        {10, "centimetres"},
                                                        {1000, "metres"},
                                                        {1e6, "kilometres"},
                                                        {25.4e-6, "microinches"},
                                                        {0.0254, "mils"},
                                                        {914.4, "yards"},
                                                        {1e-7, "angstroms"},
                                                        {1e-6, "nanometres"},
                                                        {1e-3, "micrometres"},
                                                        {100, "decimetres"},
                                                        {1e4, "decametres"},
                                                        {1e5, "hectometres"},
                                                        {1e12, "gigametres"},
                                                        {1.495978707e14, "astronomical units"},
                                                        {9.4607304725808e18, "light years"},
                                                        {3.0856775814913673e19, "parsecs"},
                                                        {1200e3 / 3937, "US survey feet"},
                                                        {100e3 / 3937, "US survey inches"},
                                                        {3600e3 / 3937, "US survey yards"},
                                                        {6336e6 / 3937, "US survey miles"}}};

/// Nothing that is built reaches a million kilometres.
constexpr double LongestUnit = 1e12;

/// A surveyor's inch differs from the other by two millionths.
bool AreSame(double one, double other) { return std::abs(one / other - 1) < 1e-6; }

const NamedUnit* UnitOfSize(double millimetres, bool (*isIt)(double, double)) {
    const auto found =
        std::ranges::find_if(InsertUnitTable.begin() + 1, InsertUnitTable.end(),
                             [&](const NamedUnit& unit) { return isIt(millimetres, unit.millimetres); });
    return found == InsertUnitTable.end() ? nullptr : &*found;
}

std::string NameOf(double millimetres) {
    const NamedUnit* const unit = UnitOfSize(millimetres, AreSame);
    return unit != nullptr ? std::string(unit->name) : "units of " + NumberToText(millimetres) + " mm";
}

/// What a drawing's number stands for, in words.
std::string ShownUnit(int insertUnits) {
    const bool isKnown = insertUnits > 0 && static_cast<std::size_t>(insertUnits) < InsertUnitTable.size();
    const std::string number = "$INSUNITS " + std::to_string(insertUnits);
    if (!isKnown) return number + ": a unit that is unknown (0 to 24 are known)";
    return number + ": " + std::string(InsertUnitTable[static_cast<std::size_t>(insertUnits)].name) +
           ", in which no part is drawn";
}

/// What a unit of $INSUNITS measures; null for none (0), for numbers beyond 24 or below 0, and for units
/// in which no part is drawn (gigametres to parsecs).
std::optional<double> MillimetresOfInsertUnits(int insertUnits) {
    if (insertUnits < 1 || static_cast<std::size_t>(insertUnits) >= InsertUnitTable.size())
        return std::nullopt;
    const double size = InsertUnitTable[static_cast<std::size_t>(insertUnits)].millimetres;
    return size < LongestUnit ? std::optional(size) : std::nullopt;
}

constexpr int ExtentDecimals = 5;

/// The extent of the solid, in its own frame or in the world's, that was rounded ahead of its growth by this
/// factor; the given one where there is none.
double ExtentOfSolid(const HostEntity& entity, double extent, double factor) {
    constexpr double roundedBy = 0.5e-5;
    // Room for the noise of scaling, which is far below what anybody saves.
    constexpr double room = 1.001;
    const auto* const solid = dynamic_cast<const HostSolid*>(&entity);
    if (solid == nullptr) return extent;
    const solids::Extents& own = solid->Measures();
    Box3 box;
    Skip([&] { box = solid->GetBoundingBox(); });
    for (const double now :
         {own.d1, own.d2, own.d3, box.max.x - box.min.x, box.max.y - box.min.y, box.max.z - box.min.z})
        if (std::abs(now - extent) <= roundedBy * factor * room) return now;
    return extent;
}

}  // namespace

int InsertUnitsOf(LengthUnit unit) { return unit == LengthUnit::Inch ? 1 : 4; }

std::optional<LengthUnit> UnitOfInsertUnits(int insertUnits) {
    for (const LengthUnit unit : {LengthUnit::Millimetre, LengthUnit::Inch})
        if (InsertUnitsOf(unit) == insertUnits) return unit;
    return std::nullopt;
}

double AsNamedUnit(double millimetres) {
    const NamedUnit* const unit = UnitOfSize(millimetres, AreAlikeUnits);
    return unit == nullptr ? millimetres : unit->millimetres;
}

UnitStep StepToDrawing(const UnitChoice& choice, std::optional<double> fileMillimetres) {
    UnitStep step;
    if (!choice.drawing) return step;
    const double target = MillimetresIn(*choice.drawing);
    double source = fileMillimetres.value_or(target);
    if (choice.given) {
        const double given = MillimetresIn(*choice.given);
        if (fileMillimetres && !AreSame(given, source))
            step.notes.push_back({0,
                                  "lengths taken as " + NameOf(given) +
                                      ", as --unit says, though the file calls them " + NameOf(source),
                                  false});
        source = given;
    }
    if (AreSame(source, target)) return step;
    if (const NamedUnit* const unit = UnitOfSize(source, AreSame)) source = unit->millimetres;
    step.factor = source / target;
    step.notes.push_back({0,
                          "lengths in " + NameOf(source) + " brought to " + NameOf(target) +
                              ", the unit of this shop's drawings",
                          false});
    return step;
}

void BringToUnit(HostDocument& document, const UnitChoice& choice) {
    DrawingData& tables = document.Tables();
    const std::optional<double> own = MillimetresOfInsertUnits(tables.insertUnits);
    const bool isUnknown = tables.insertUnits != 0 && !own;
    if (isUnknown && !choice.given)
        tables.notes.push_back({0, ShownUnit(tables.insertUnits) + "; its lengths are taken as " +
                                       (choice.drawing ? NameOf(MillimetresIn(*choice.drawing)) +
                                                             ", the unit of this shop's drawings"
                                                       : "they stand")});
    if (!choice.drawing) return;
    const UnitStep step = StepToDrawing(choice, own);
    for (const ReadNote& note : step.notes) tables.notes.push_back(note);
    if (step.factor != 1) {
        const bool keeps = std::ranges::any_of(tables.notes, &ReadNote::isKept);
        ScaleDrawing(document, step.factor);
        if (keeps)
            tables.notes.push_back(
                {0,
                 "what goes through as it stood in the file, such as dimensions, keeps its lengths there"});
        if (const std::string unscaled = UnscaledLengths(document); !unscaled.empty())
            tables.notes.push_back({0, "lengths that stay as they stood in the file: " + unscaled, false});
    }
    // What the file calls its unit is wrong or gone by now; where it has none it stays without.
    if (step.factor == 1 && step.notes.empty() && !isUnknown) return;
    tables.insertUnits = InsertUnitsOf(*choice.drawing);
    tables.measurement = *choice.drawing == LengthUnit::Inch ? 0 : 1;
}

std::vector<XDataOfApp> WithScaledExtents(std::vector<XDataOfApp> data, double factor,
                                          const HostEntity& grown) {
    for (XDataOfApp& app : data)
        for (const std::string_view key : {"OLDVALUE1", "OLDVALUE2", "OLDVALUE3"}) {
            if (!EqualsIgnoreCase(app.app, key) || app.items.empty()) continue;
            auto* text = std::get_if<std::string>(&app.items.front().value);
            if (text == nullptr || !IsNumeric(*text)) continue;
            const double extent = ExtentOfSolid(grown, StrictNumber(*text) * factor, factor);
            *text = NumberToText(RoundHalfEven(extent, ExtentDecimals));
        }
    return data;
}

std::vector<XDataOfApp> WithScaledLengths(std::vector<XDataOfApp> data, double factor) {
    constexpr int place = 1011, displacement = 1012, distance = 1041, scale = 1042;
    for (XDataOfApp& app : data)
        for (XDataItem& item : app.items) {
            auto* const number = std::get_if<double>(&item.value);
            if (number != nullptr && (item.code == distance || item.code == scale)) *number *= factor;
            auto* const point = std::get_if<Point3>(&item.value);
            if (point != nullptr && (item.code == place || item.code == displacement))
                *point = {point->x * factor, point->y * factor, point->z * factor};
        }
    return data;
}

}  // namespace brenvik
