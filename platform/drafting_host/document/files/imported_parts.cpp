// Other systems know no part data: what they do know becomes part data here, and back again.
#include "drafting_host/document/files/imported_parts.h"

#include <cmath>

#include "base/handle_text.h"
#include "base/text.h"
#include "drafting_host/acis/acis_text.h"
#include "drafting_host/acis/unit_head.h"
#include "drafting_host/document/files/drawing_units.h"
#include "drafting_host/document/files/imported_layers.h"
#include "drafting_host/document/files/lost_data.h"
#include "drafting_host/document/files/step_door.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/host_document.h"
#include "drafting_host/dxf/data/aci_colors.h"
#include "drafting_host/dxf/data/kept_text.h"
#include "drafting_host/dxf/texts/dxf_text.h"
#include "drafting_host/solids/mass.h"
#include "drafting_host/solids/transform.h"

namespace brenvik {
namespace {

void SetPartData(std::vector<XDataOfApp>& data, HostDocument& document, std::string_view key,
                 std::string_view value) {
    const std::string_view fitting = FirstTextUnits(value, XDataTextLimit);
    if (fitting.size() < value.size()) {
        constexpr std::size_t enoughToKnow = 40;
        document.Tables().notes.push_back(
            {0, "part data " + std::string(key) + " \"" + std::string(FirstTextUnits(value, enoughToKnow)) +
                    "...\": a text of " + std::to_string(TextUnits(value)) + " characters was cut to the " +
                    std::to_string(XDataTextLimit) + " that a drawing takes"});
    }
    data.push_back({document.RegisterApplication(key), {{1000, std::string(fitting)}}});
}

/// The index that is nearest, and the colour itself where that is another one; how much it hides, unless all.
void TakeColor(const step::Rgb& color, EntityLook& look, HostSolid& solid) {
    const ScreenColor shown{color.red, color.green, color.blue};
    look.color = NearestColorIndex(shown);
    const ScreenColor nearest = ColorOfIndex(look.color);
    KeptGroups kept;
    if (nearest.red != shown.red || nearest.green != shown.green || nearest.blue != shown.blue)
        kept = *GroupsOfTrueColor(std::uint32_t{color.red} << 16U | std::uint32_t{color.green} << 8U |
                                  color.blue);
    if (color.opacity < 255) kept.common += GroupOfOpacity(color.opacity);
    if (!kept.common.empty()) solid.SetKeptGroups({std::make_shared<const KeptGroups>(std::move(kept))});
}

void AddPart(HostDocument& document, const step::StepSolid& part, const std::string& layerName,
             const ReadOptions& options) {
    HostSolid& solid = document.Model().AddSolid(part.shape);
    LayerData layer;
    layer.name = layerName;
    layer.on = part.layerVisible;
    EntityLook look;
    look.visible = part.visible;
    look.layer = &document.LayerTable().Put(std::move(layer));
    if (part.color) TakeColor(*part.color, look, solid);
    solid.SetLook(std::move(look));
    std::vector<XDataOfApp> data;
    if (!part.name.empty()) SetPartData(data, document, "PARTNAME", part.name);
    if (!part.assembly.empty()) SetPartData(data, document, "SUBASSEMBLY", part.assembly);
    const solids::Extents& extents = solid.Measures();
    if (!options.letters.empty() && extents.status > 0) {
        for (const auto& [key, value] : DataOfReading(options.letters, extents))
            SetPartData(data, document, key, value);
    }
    solid.SetExtendedData(std::move(data));
}

void SetUnit(HostDocument& document, LengthUnit unit) {
    document.Tables().insertUnits = InsertUnitsOf(unit);
    document.Tables().measurement = unit == LengthUnit::Inch ? 0 : 1;
}

step::StepSolid Scaled(step::StepSolid part, double factor) {
    if (factor != 1) part.shape = solids::Transformed(part.shape, Similarity::Scale({}, factor).Trsf());
    return part;
}

/// Reports the conversion of lengths, and returns the factor that is still to be applied: the reader went by
/// the file's own units, and for a file with one unit the user's choice overrides it.
double TakeStepUnits(HostDocument& document, const std::vector<double>& sizes, UnitChoice choice) {
    std::vector<ReadNote>& notes = document.Tables().notes;
    if (sizes.size() > 1 && choice.given) {
        notes.push_back({0, "--unit was passed over: lengths of this file are in several units"});
        choice.given.reset();
    }
    if (sizes.empty()) {
        const UnitStep step = StepToDrawing(choice, std::nullopt);
        notes.insert(notes.end(), step.notes.begin(), step.notes.end());
        return step.factor;
    }
    double factor = 1;
    for (const double own : sizes) {
        const UnitStep step = StepToDrawing(choice, own);
        notes.insert(notes.end(), step.notes.begin(), step.notes.end());
        if (choice.given && choice.drawing) factor = step.factor * MillimetresIn(*choice.drawing) / own;
    }
    return std::abs(factor - 1) < 1e-12 ? 1 : factor;
}

std::optional<step::Rgb> ColorOf(int index, std::optional<std::uint32_t> trueColor) {
    if (trueColor)
        return step::Rgb{static_cast<std::uint8_t>(*trueColor >> 16U),
                         static_cast<std::uint8_t>(*trueColor >> 8U), static_cast<std::uint8_t>(*trueColor)};
    if (index < 1 || index > 255) return std::nullopt;
    const ScreenColor color = ColorOfIndex(index);
    return step::Rgb{color.red, color.green, color.blue};
}

/// The colour in which a solid shows: its own, or that of its layer. The usual one of layers is none.
std::optional<step::Rgb> ShownColor(const HostEntity& entity) {
    constexpr int byLayer = 256, usual = 7;
    const Kept<KeptGroups>& own = entity.KeptGroupsOfFile();
    const auto color = ColorOf(entity.Look().color, own ? TrueColorIn(own->common) : std::nullopt);
    if (color || entity.Look().color != byLayer) return color;
    const LayerData& layer = entity.LayerObject().Values();
    const auto trueColor = layer.kept ? TrueColorIn(layer.kept->own) : std::nullopt;
    return layer.color == usual && !trueColor ? std::nullopt : ColorOf(layer.color, trueColor);
}

/// How much a solid hides of what stands behind it, by its own word or its layer's.
std::uint8_t ShownOpacity(const HostEntity& entity) {
    constexpr std::uint8_t all = 255;
    const Kept<KeptGroups>& own = entity.KeptGroupsOfFile();
    if (const auto opacity = own ? OpacityIn(own->common) : std::nullopt) return *opacity;
    const LayerData& layer = entity.LayerObject().Values();
    return layer.kept ? OpacityOfLayerIn(layer.kept->further).value_or(all) : all;
}

/// STEP has the one with the other: what lets something through without a colour is white there, as the usual
/// colour of layers is.
std::optional<step::Rgb> ColorOf(const HostEntity& entity) {
    std::optional<step::Rgb> color = ShownColor(entity);
    const std::uint8_t opacity = ShownOpacity(entity);
    if (!color && opacity < 255) color = step::Rgb{255, 255, 255};
    if (color) color->opacity = opacity;
    return color;
}

/// Solids of model space; what a file of solids can't hold is reported.
std::vector<const HostSolid*> SolidsOf(const HostDocument& document, std::string_view form,
                                       std::vector<std::string>& problems) {
    std::vector<const HostSolid*> solids;
    for (const HostEntity* entity : document.AllBlocks().front()->Entities()) {
        if (const auto* solid = dynamic_cast<const HostSolid*>(entity)) {
            solids.push_back(solid);
        } else {
            problems.push_back(std::string(entity->ObjectName()) + " " +
                               HandleToText(entity->HandleNumber()) + ": " + std::string(form) +
                               " holds solids only");
        }
    }
    return solids;
}

}  // namespace

void ImportStep(HostDocument& document, const std::filesystem::path& path, const ReadOptions& options,
                const UnitChoice& units) {
    const LengthUnit unit = units.drawing.value_or(LengthUnit::Millimetre);
    const step::StepDocument read = OpenedStepExchange().read(path, unit);
    document.MarkImported();
    if (!read.isWrittenHere) document.MarkOnlyRead(path);
    SetUnit(document, unit);
    const double factor = TakeStepUnits(document, read.millimetresPerUnit, units);
    std::vector<std::string> layerNames;
    for (const step::StepSolid& part : read.solids) layerNames.push_back(part.layer);
    const ImportedLayers layers(layerNames);
    for (const step::StepSolid& part : read.solids)
        AddPart(document, Scaled(part, factor), layers.NameOf(part.layer), options);
    for (const std::string& remark : layers.Remarks()) document.Tables().notes.push_back({0, remark, false});
    for (const step::StepNote& note : read.notes)
        document.Tables().notes.push_back({note.line, note.text, note.lost});
}

void ImportAcis(HostDocument& document, std::string_view content, const std::filesystem::path& path,
                const ReadOptions& options, const UnitChoice& units) {
    const acis::ReadResult read = acis::ReadText(content);
    if (read.bodies.empty()) {
        if (read.problems.empty())
            throw host_failure::InvalidFile(path.string(), 0, "ACIS text with a body", "none");
        const acis::Problem& first = read.problems.front();
        const std::string place = first.record < 0 ? "" : "record " + std::to_string(first.record) + ": ";
        throw host_failure::InvalidFile(path.string(), first.line, "an ACIS body that can be read",
                                        place + first.text);
    }
    document.MarkImported();
    const double own = read.header.millimetresPerUnit;
    const UnitStep step = StepToDrawing(units, own > 0 ? std::optional(AsNamedUnit(own)) : std::nullopt);
    document.Tables().notes = step.notes;
    if (!read.header.unreadableUnit.empty()) {
        constexpr std::size_t unitLine = 3;
        document.Tables().notes.push_back(
            {unitLine, "the head names no unit: expected millimetres per unit, found '" +
                           read.header.unreadableUnit + "'; lengths are taken as they are"});
    }
    if (units.drawing) SetUnit(document, *units.drawing);
    const std::string stem = path.stem().string();
    int number = 0;
    for (const TopoDS_Shape& body : read.bodies) {
        ++number;
        if (solids::LumpsOf(body) == 0) {
            document.Model().AddBody(body);
            document.Tables().notes.push_back(
                {0, "record " + std::to_string(read.bodyRecords[static_cast<std::size_t>(number) - 1]) +
                        ": a sheet that encloses nothing; it is no part"});
            continue;
        }
        step::StepSolid part;
        part.shape = body;
        part.name = read.bodies.size() == 1 ? stem : stem + " " + std::to_string(number);
        AddPart(document, Scaled(std::move(part), step.factor), "0", options);
    }
    for (const acis::Problem& problem : read.problems) {
        const std::string place = problem.record < 0 ? "" : "record " + std::to_string(problem.record) + ": ";
        document.Tables().notes.push_back({problem.line, place + problem.text, problem.lost});
    }
}

std::vector<step::StepSolid> StepSolidsOf(const HostDocument& document, std::vector<std::string>& problems) {
    std::vector<step::StepSolid> parts;
    const std::vector<const HostSolid*> solids = SolidsOf(document, "STEP", problems);
    TellLostPartData(document, solids, "a STEP file", {"PARTNAME", "SUBASSEMBLY"}, problems);
    for (const HostSolid* solid : solids) {
        if (const std::size_t lumps = solid->Lumps(); lumps > 1)
            problems.push_back("AcDb3dSolid " + HandleToText(solid->HandleNumber()) + ": its " +
                               std::to_string(lumps) + " lumps are parts of their own in a STEP file");
        step::StepSolid part;
        part.shape = solid->Shape();
        part.name = PartText(*solid, "PARTNAME");
        part.assembly = PartText(*solid, "SUBASSEMBLY");
        const LayerData& layer = solid->LayerObject().Values();
        part.layer = layer.name;
        part.layerVisible = layer.on && !layer.frozen;
        part.color = ColorOf(*solid);
        part.visible = solid->Look().visible;
        parts.push_back(std::move(part));
    }
    return parts;
}

std::size_t ColoredByLayer(const HostDocument& document) {
    constexpr int byLayer = 256;
    std::size_t count = 0;
    for (const HostEntity* entity : document.AllBlocks().front()->Entities()) {
        if (dynamic_cast<const HostSolid*>(entity) == nullptr || entity->Look().color != byLayer) continue;
        const Kept<KeptGroups>& own = entity->KeptGroupsOfFile();
        const bool hasOwn = own && TrueColorIn(own->common);
        if (!hasOwn && ShownColor(*entity)) ++count;
    }
    return count;
}

std::vector<std::string> AcisLinesOf(const HostDocument& document, LengthUnit unit,
                                     std::vector<std::string>& problems) {
    std::vector<TopoDS_Shape> bodies;
    const std::vector<const HostSolid*> solids = SolidsOf(document, "ACIS text", problems);
    TellLostPartData(document, solids, "ACIS text", {}, problems);
    TellLostLooks(solids, problems);
    for (const HostSolid* solid : solids) {
        try {
            bodies.push_back(acis::ProveBody(solid->Shape()).shape);
        } catch (const acis::WriteFailure& failure) {
            problems.push_back("AcDb3dSolid " + HandleToText(solid->HandleNumber()) + ": " + failure.what());
        }
    }
    if (bodies.empty()) throw host_failure::NotPossible("there is no solid that ACIS text can hold");
    std::vector<std::string> lines = acis::WriteBodies(bodies);
    acis::NameUnit(lines, MillimetresIn(unit));
    return lines;
}

}  // namespace brenvik
