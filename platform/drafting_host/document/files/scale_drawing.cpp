// Entities are scaled by their own transformation. What a drawing only keeps of its file (views, styles,
// layouts, variables) is text, so there the groups that are lengths are named by kind of record.
#include "drafting_host/document/files/scale_drawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "drafting_host/document/files/drawing_units.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/document/host_document.h"
#include "drafting_host/dxf/data/kept_text.h"

namespace brenvik {

using namespace vectors;

namespace {

using Codes = std::span<const int>;

constexpr std::array<int, 18> ViewportLengths = {12, 22, 13, 23, 14, 24,  15,  25,  17,
                                                 27, 37, 40, 43, 44, 110, 120, 130, 146};
constexpr std::array<int, 14> ViewLengths = {10, 20, 12, 22, 32, 40, 41, 43, 44, 110, 120, 130, 146, 147};
/// Of a dimension style; the scale and the factors among its values stay.
constexpr std::array<int, 13> DimensionSizes = {41, 42, 43, 44, 45, 46, 47, 48, 49, 140, 141, 142, 147};
constexpr std::array<int, 2> TextHeights = {40, 42};
constexpr std::array<int, 17> LayoutLengths = {10, 20, 11, 21, 12, 22, 32, 13, 23,
                                               33, 14, 24, 34, 15, 25, 35, 146};
constexpr std::array<int, 4> UcsLengths = {13, 23, 33, 146};
/// Of what a viewport on a sheet has besides its values: snap, grid, the coordinate system in it.
constexpr std::array<int, 10> SheetViewLengths = {13, 23, 14, 24, 15, 25, 110, 120, 130, 146};
constexpr std::array<int, 3> ViewDirection = {16, 26, 36};

bool Holds(Codes codes, int code) { return std::ranges::find(codes, code) != codes.end(); }

/// A length as its text; blank ends of a box ("nothing drawn") are no lengths.
std::string ScaledText(std::string_view text, double factor) {
    constexpr double nowhere = 1e19;
    const std::string trimmed = Trim(text);
    const double value = LenientNumber(trimmed);
    if (value == 0 || std::abs(value) > nowhere) return std::string(text);
    return ShortestRoundTrip(value * factor, true);
}

/// The groups with those of the codes scaled. With `section` only behind the class of that name.
std::string WithScaled(std::string_view groups, Codes codes, double factor, std::string_view section = {}) {
    std::string result;
    result.reserve(groups.size());
    bool isInside = section.empty(), isOfOthers = false;
    GroupWalk walk(groups);
    while (walk.Next()) {
        isOfOthers = isOfOthers || walk.Code() >= 1000;
        if (walk.Code() == 100 && !section.empty()) isInside = Trim(walk.Value()) == section;
        if (isInside && !isOfOthers && Holds(codes, walk.Code()))
            AppendGroup(result, walk.Code(), ScaledText(walk.Value(), factor));
        else
            result += walk.Text();
    }
    return result;
}

/// The first value of a code, or what stands for it.
double ValueOf(std::string_view groups, int code, double usual) {
    GroupWalk walk(groups);
    while (walk.Next())
        if (walk.Code() == code) return LenientNumber(Trim(walk.Value()));
    return usual;
}

bool HasBit(std::string_view groups, int code, int bit) {
    return (static_cast<int>(ValueOf(groups, code, 0)) & bit) != 0;
}

// --- Variables ---

/// Variables of a drawing that are lengths of the model.
constexpr auto LengthVariables = std::to_array<std::string_view>(
    {"$INSBASE",      "$EXTMIN",      "$EXTMAX",     "$LIMMIN",       "$LIMMAX",
     "$LTSCALE",      "$TEXTSIZE",    "$TRACEWID",   "$SKETCHINC",    "$FILLETRAD",
     "$ELEVATION",    "$THICKNESS",   "$CHAMFERA",   "$CHAMFERB",     "$CHAMFERC",
     "$PLINEWID",     "$CMLSCALE",    "$UCSORGTOP",  "$UCSORGBOTTOM", "$UCSORGLEFT",
     "$UCSORGRIGHT",  "$UCSORGFRONT", "$UCSORGBACK", "$PDSIZE",       "$VIEWCTR",
     "$VIEWSIZE",     "$SNAPBASE",    "$SNAPUNIT",   "$GRIDUNIT",     "$AXISUNIT",
     "$CAMERAHEIGHT", "$STEPSIZE",    "$PSOLWIDTH",  "$PSOLHEIGHT",   "$SHADOWPLANELOCATION"});
constexpr auto DimensionVariables = std::to_array<std::string_view>(
    {"$DIMASZ", "$DIMEXO", "$DIMDLI", "$DIMEXE", "$DIMRND", "$DIMDLE", "$DIMTP", "$DIMTM", "$DIMFXL",
     "$DIMTXT", "$DIMCEN", "$DIMTSZ", "$DIMGAP"});

bool IsOne(std::span<const std::string_view> names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

/// A size of points below 0 is a share of the view.
bool IsShare(std::string_view name, std::string_view text) {
    return name == "$PDSIZE" && LenientNumber(Trim(text)) < 0;
}

void ScaleKeptVariables(KeptFile& file, double factor) {
    const auto scale = std::ranges::find(file.header, "$DIMSCALE", [](const auto& one) { return one.first; });
    // Sizes of a scale of 0 are those on the sheet.
    const bool sizesAreOfSheets = scale != file.header.end() && ValueOf(scale->second, 40, 1) == 0;
    for (auto& [name, groups] : file.header) {
        const bool isDimension = !sizesAreOfSheets && IsOne(DimensionVariables, name);
        if (!isDimension && !IsOne(LengthVariables, name)) continue;
        std::string changed;
        GroupWalk walk(groups);
        while (walk.Next()) {
            const bool stays = walk.Code() < 10 || walk.Code() >= 60 || IsShare(name, walk.Value());
            if (stays)
                changed += walk.Text();
            else
                AppendGroup(changed, walk.Code(), ScaledText(walk.Value(), factor));
        }
        groups = std::move(changed);
    }
}

void ScaleVariables(DrawingData& tables, double factor) {
    for (auto& [name, values] : tables.headerVariables) {
        if (!IsOne(LengthVariables, name)) continue;
        for (auto& [code, text] : values)
            if (!IsShare(name, text)) text = ScaledText(text, factor);
    }
}

// --- Records that are kept as text ---

/// The sizes that a dimension style leaves out are those that every program takes for it; they grow too.
std::string WithDefaultSizes(const std::string& groups, double factor) {
    constexpr auto defaults = std::to_array<std::pair<int, double>>(
        {{42, 0.0625}, {43, 0.38}, {44, 0.18}, {41, 0.18}, {140, 0.18}, {141, 0.09}, {147, 0.09}});
    std::string missing;
    for (const auto& [code, size] : defaults)
        if (std::isnan(ValueOf(groups, code, std::nan(""))))
            AppendGroup(missing, code, ShortestRoundTrip(size * factor, true));
    std::string result;
    bool isDone = false;
    GroupWalk walk(groups);
    while (walk.Next()) {
        if (walk.Code() >= 1000 && !isDone) {
            result += missing;
            isDone = true;
        }
        result += walk.Text();
    }
    return isDone ? result : result + missing;
}

void ScaleEntry(std::string_view table, KeptRecord& entry, double factor) {
    constexpr int perspective = 1, onSheet = 1;
    std::string& groups = entry.groups;
    if (table == "VPORT") {
        // The distance of the eye counts in a perspective view only.
        if (HasBit(groups, 71, perspective)) groups = WithScaled(groups, ViewDirection, factor);
        groups = WithScaled(groups, ViewportLengths, factor);
    } else if (table == "VIEW" && !HasBit(groups, 70, onSheet)) {
        groups = WithScaled(groups, ViewLengths, factor);
    } else if (table == "DIMSTYLE" && ValueOf(groups, 40, 1) != 0) {
        groups = WithDefaultSizes(WithScaled(groups, DimensionSizes, factor), factor);
    }
}

/// The layout of model space has its limits; those of sheets have theirs.
void ScaleLayout(KeptRecord& object, double factor) {
    std::string layout;
    bool isInside = false;
    GroupWalk walk(object.groups);
    while (walk.Next()) {
        if (walk.Code() == 100) isInside = Trim(walk.Value()) == "AcDbLayout";
        if (isInside && walk.Code() == 1) layout = Trim(walk.Value());
    }
    if (!EqualsIgnoreCase(layout, "Model")) return;
    object.groups = WithScaled(object.groups, LayoutLengths, factor, "AcDbLayout");
}

void ScaleFile(DrawingData& tables, double factor) {
    if (!tables.file) return;
    auto file = std::make_shared<KeptFile>(*tables.file);
    ScaleKeptVariables(*file, factor);
    for (KeptTable& table : file->tables)
        for (KeptRecord& entry : table.entries) ScaleEntry(table.name, entry, factor);
    for (KeptRecord& object : file->objects)
        if (object.name == "LAYOUT") ScaleLayout(object, factor);
    tables.file = {std::move(file)};
}

void ScaleStyles(DrawingData& tables, double factor) {
    for (TextStyleData& style : tables.styles) {
        style.height *= factor;
        if (!style.kept) continue;
        KeptRecord record = *style.kept;
        record.groups = WithScaled(record.groups, TextHeights, factor);
        style.kept = {std::make_shared<const KeptRecord>(std::move(record))};
    }
}

Kept<KeptGroups> WithScaledOwn(const Kept<KeptGroups>& kept, Codes codes, double factor) {
    if (!kept || kept->own.empty()) return kept;
    KeptGroups changed = *kept;
    changed.own = WithScaled(kept->own, codes, factor);
    return {std::make_shared<const KeptGroups>(std::move(changed))};
}

void ScaleUcs(UcsData& ucs, double factor) {
    ucs.origin = ucs.origin * factor;
    ucs.kept = WithScaledOwn(ucs.kept, UcsLengths, factor);
}

// --- Entities ---

/// What a viewport shows lies in the model; its place and size are the sheet's.
void ScaleView(HostViewport& viewport, double factor) {
    ViewportData values = viewport.Values();
    values.viewTarget = values.viewTarget * factor;
    for (double& centre : values.viewCenter) centre *= factor;
    values.viewHeight *= factor;
    values.frontClip *= factor;
    values.backClip *= factor;
    viewport.SetValues(std::move(values));
    viewport.SetKeptGroups(WithScaledOwn(viewport.KeptGroupsOfFile(), SheetViewLengths, factor));
}

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

/// Up to release 2010 the columns of a paragraph, and the height to which its lines were set, stand among its
/// extended data: each number there is a length.
std::vector<XDataOfApp> WithScaledColumns(std::vector<XDataOfApp> data, double factor) {
    constexpr int number = 1040;
    for (XDataOfApp& app : data) {
        if (!EqualsIgnoreCase(app.app, "ACAD")) continue;
        for (XDataItem& item : app.items)
            if (auto* const value = std::get_if<double>(&item.value); value != nullptr && item.code == number)
                *value *= factor;
    }
    return data;
}

void ScaleEntities(HostDocument& document, double factor) {
    const Unlocked unlocked(document);
    const Similarity scale = Similarity::Scale({}, factor);
    for (HostEntity* entity : document.Model().Entities()) {
        entity->Transform(scale);
        if (!entity->ExtendedData().empty())
            entity->SetExtendedData(WithScaledLengths(entity->ExtendedData(), factor));
        if (dynamic_cast<HostMText*>(entity) != nullptr)
            entity->SetExtendedData(WithScaledColumns(entity->ExtendedData(), factor));
        if (dynamic_cast<HostSolid*>(entity) != nullptr)
            entity->SetExtendedData(WithScaledExtents(entity->ExtendedData(), factor, *entity));
    }
    for (const auto& block : document.AllBlocks()) {
        if (!block->IsPaperSpace()) continue;
        for (HostEntity* entity : block->Entities())
            if (auto* viewport = dynamic_cast<HostViewport*>(entity);
                viewport != nullptr && !viewport->IsSheet())
                ScaleView(*viewport, factor);
    }
}

}  // namespace

void ScaleDrawing(HostDocument& document, double factor) {
    ScaleEntities(document, factor);
    DrawingData& tables = document.Tables();
    ScaleUcs(tables.ucs, factor);
    for (UcsData& ucs : document.NamedUcs()) ScaleUcs(ucs, factor);
    ScaleStyles(tables, factor);
    ScaleVariables(tables, factor);
    ScaleFile(tables, factor);
}

}  // namespace brenvik
