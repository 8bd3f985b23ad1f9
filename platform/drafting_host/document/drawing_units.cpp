// Units of files, and a drawing brought from one to another.
#include "drafting_host/document/drawing_units.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "drafting_host/document/host_document.h"
#include "drafting_host/document/vectors.h"

namespace brenvik {

using namespace vectors;

namespace {

/// Millimetres of the numbers of $INSUNITS, from 0. Beyond hectometres nothing is built.
constexpr std::array<double, 17> insertUnitTable = {
    0, 25.4, 304.8, 1609344, 1, 10, 1000, 1e6, 25.4e-6, 0.0254, 914.4, 1e-7, 1e-6, 1e-3, 100, 1e4, 1e5};

/// Heads of ACIS text hold their unit with four digits.
bool AreSame(double one, double other) { return std::abs(one / other - 1) < 1e-4; }

std::string NameOf(double millimetres) {
    constexpr std::array<std::pair<double, const char*>, 6> names = {{{1, "millimetres"},
                                                                      {10, "centimetres"},
                                                                      {1000, "metres"},
                                                                      {25.4, "inches"},
                                                                      {304.8, "feet"},
                                                                      {914.4, "yards"}}};
    for (const auto& [size, name] : names)
        if (AreSame(millimetres, size)) return name;
    return "units of " + NumberToText(millimetres) + " mm";
}

/// Variables of a drawing that are lengths of the model.
constexpr std::array<std::string_view, 22> lengthVariables = {
    "$INSBASE",     "$LIMMIN",      "$LIMMAX",     "$LTSCALE",   "$TEXTSIZE",     "$TRACEWID",
    "$SKETCHINC",   "$FILLETRAD",   "$ELEVATION",  "$THICKNESS", "$CHAMFERA",     "$CHAMFERB",
    "$CHAMFERC",    "$PLINEWID",    "$CMLSCALE",   "$UCSORGTOP", "$UCSORGBOTTOM", "$UCSORGLEFT",
    "$UCSORGRIGHT", "$UCSORGFRONT", "$UCSORGBACK", "$PDSIZE"};

void ScaleVariables(DrawingData& tables, double factor) {
    for (const std::string_view name : lengthVariables) {
        const auto found = tables.headerVariables.find(std::string(name));
        if (found == tables.headerVariables.end()) continue;
        for (auto& [code, text] : found->second) {
            const double value = LenientNumber(text);
            // A size of points below 0 is a share of the view.
            if (name == "$PDSIZE" && value < 0) continue;
            text = ShortestRoundTrip(value * factor, true);
        }
    }
}

/// What a viewport shows lies in the model; its place and size are the sheet's.
void ScaleView(HostViewport& viewport, double factor) {
    ViewportData values = viewport.Values();
    values.viewTarget = values.viewTarget * factor;
    for (double& centre : values.viewCenter) centre *= factor;
    values.viewHeight *= factor;
    values.frontClip *= factor;
    values.backClip *= factor;
    viewport.SetValues(std::move(values));
}

void ScaleUcs(UcsData& ucs, double factor) { ucs.origin = ucs.origin * factor; }

/// Locks are for people at the drawing, not for its unit.
class Unlocked {
  public:
    explicit Unlocked(HostDocument& document) {
        for (HostLayer* layer : document.LayerTable().All()) {
            if (!layer->Locked()) continue;
            mLayers.push_back(layer);
            layer->SetLock(false);
        }
    }
    ~Unlocked() {
        for (HostLayer* layer : mLayers) layer->SetLock(true);
    }
    Unlocked(const Unlocked&) = delete;
    Unlocked& operator=(const Unlocked&) = delete;

  private:
    std::vector<HostLayer*> mLayers;
};

void ScaleDrawing(HostDocument& document, double factor) {
    const Unlocked unlocked(document);
    const Similarity scale = Similarity::Scale({}, factor);
    for (HostEntity* entity : document.Model().Entities()) {
        entity->Transform(scale);
        if (dynamic_cast<HostSolid*>(entity) != nullptr)
            entity->SetExtendedData(WithScaledExtents(entity->ExtendedData(), factor));
    }
    for (const auto& block : document.AllBlocks()) {
        if (!block->IsPaperSpace()) continue;
        for (HostEntity* entity : block->Entities())
            if (auto* viewport = dynamic_cast<HostViewport*>(entity);
                viewport != nullptr && !viewport->IsSheet())
                ScaleView(*viewport, factor);
    }
    ScaleUcs(document.Tables().ucs, factor);
    for (UcsData& ucs : document.NamedUcs()) ScaleUcs(ucs, factor);
    ScaleVariables(document.Tables(), factor);
}

}  // namespace

int InsertUnitsOf(LengthUnit unit) { return unit == LengthUnit::Inch ? 1 : 4; }

std::optional<double> MillimetresOfInsertUnits(int insertUnits) {
    if (insertUnits < 1 || static_cast<std::size_t>(insertUnits) >= insertUnitTable.size())
        return std::nullopt;
    return insertUnitTable[static_cast<std::size_t>(insertUnits)];
}

std::optional<LengthUnit> UnitOfInsertUnits(int insertUnits) {
    for (const LengthUnit unit : {LengthUnit::Millimetre, LengthUnit::Inch})
        if (InsertUnitsOf(unit) == insertUnits) return unit;
    return std::nullopt;
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
    step.factor = AreSame(source, 25.4) ? 25.4 / target : source / target;
    step.notes.push_back({0,
                          "lengths in " + NameOf(source) + " brought to " + NameOf(target) +
                              ", the unit of this shop's drawings",
                          false});
    return step;
}

void BringToUnit(HostDocument& document, const UnitChoice& choice) {
    if (!choice.drawing) return;
    DrawingData& tables = document.Tables();
    const UnitStep step = StepToDrawing(choice, MillimetresOfInsertUnits(tables.insertUnits));
    for (const ReadNote& note : step.notes) tables.notes.push_back(note);
    if (step.factor != 1) {
        const bool keeps = std::ranges::any_of(tables.notes, &ReadNote::isKept);
        ScaleDrawing(document, step.factor);
        if (keeps)
            tables.notes.push_back(
                {0,
                 "what goes through as it stood in the file, such as dimensions, keeps its lengths there"});
    }
    // What the file calls its unit is wrong or gone by now; where it has none it stays without.
    if (step.factor == 1 && step.notes.empty()) return;
    tables.insertUnits = InsertUnitsOf(*choice.drawing);
    tables.measurement = *choice.drawing == LengthUnit::Inch ? 0 : 1;
}

std::vector<XDataOfApp> WithScaledExtents(std::vector<XDataOfApp> data, double factor) {
    constexpr int extentDecimals = 5;
    for (XDataOfApp& app : data)
        for (const std::string_view key : {"OLDVALUE1", "OLDVALUE2", "OLDVALUE3"}) {
            if (!EqualsIgnoreCase(app.app, key) || app.items.empty()) continue;
            auto* text = std::get_if<std::string>(&app.items.front().value);
            if (text != nullptr && IsNumeric(*text))
                *text = NumberToText(RoundHalfEven(StrictNumber(*text) * factor, extentDecimals));
        }
    return data;
}

}  // namespace brenvik
