// The commands' way to the drafting host's readers and writers.
#include "drawings/drawing_io.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <limits>
#include <set>
#include <span>

#include "base/failure.h"
#include "base/first_of.h"
#include "drafting_host/document/drawing_history.h"
#include "drafting_host/document/files/block_solids.h"
#include "drafting_host/document/files/drawing_files.h"
#include "drafting_host/document/files/extension.h"
#include "drafting_host/document/files/imported_parts.h"
#include "drafting_host/document/files/lost_data.h"
#include "drafting_host/document/files/lumps.h"
#include "file_roots/places.h"
#include "parts/doubled_places.h"

namespace brenvik::app {

namespace {

std::string AtLine(const std::string& file, std::size_t line) {
    return line == 0 ? file + ": " : file + ":" + std::to_string(line) + ": ";
}

/// `staysInFile`: nobody asks for more of the drawing than to be saved as a whole.
void TellNotes(const std::string& file, std::span<const ReadNote> notes, Teller& teller,
               bool staysInFile = false) {
    for (const ReadNote& note : notes) {
        const std::string text = AtLine(file, note.line) + note.text;
        if (note.dataLost && !(staysInFile && note.isKept))
            teller.Loss(text);
        else
            teller.Remark(text);
    }
}

/// Each entity once, however often it is named.
std::vector<HostEntity*> EntitiesWith(HostDocument& document, const std::vector<std::string>& handles) {
    std::vector<HostEntity*> entities;
    for (const std::string& handle : handles)
        if (auto* entity = dynamic_cast<HostEntity*>(document.HandleToObject(handle));
            entity != nullptr && std::ranges::find(entities, entity) == entities.end())
            entities.push_back(entity);
    return entities;
}

std::string SolidsOf(std::int64_t count) {
    return std::to_string(count) + (count == 1 ? " solid" : " solids");
}

/// What the references to one block show together.
struct BlockSolids {
    std::string block;
    std::int64_t taken = 0, left = 0;
    std::string reason;  ///< Why the first of these was left.

    std::string Shown(const DrawingOptions& options, std::int64_t count) const {
        return options.drawing + ": " + SolidsOf(count) +
               (count == 1 ? " in a reference" : " in references") + " to block \"" + block + "\" ";
    }
};

std::vector<BlockSolids> ByBlock(const std::vector<ReferenceSolids>& references) {
    std::vector<BlockSolids> blocks;
    std::map<std::string, std::size_t, LessIgnoreCase> placeOf;
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    for (const ReferenceSolids& reference : references) {
        const auto [place, fresh] = placeOf.try_emplace(reference.block, blocks.size());
        if (fresh) blocks.push_back({reference.block, 0, 0, {}});
        BlockSolids& block = blocks[place->second];
        std::int64_t& sum = reference.taken.empty() ? block.left : block.taken;
        sum = sum > most - reference.count ? most : sum + reference.count;
        if (block.reason.empty() && !reference.reason.empty())
            block.reason = reference.reason + " (reference " + reference.reference->Handle() + ")";
    }
    return blocks;
}

/// Handles that were asked for leave nothing out that was wanted, unless they name a reference or what was
/// taken out of it.
void DropUnasked(HostDocument& document, const DrawingOptions& options,
                 std::vector<ReferenceSolids>& references) {
    if (options.handles.empty()) return;
    const std::vector<HostEntity*> asked = EntitiesWith(document, options.handles);
    const std::set<const HostEntity*> known(asked.begin(), asked.end());
    std::erase_if(references, [&](const ReferenceSolids& reference) {
        return !known.contains(reference.reference) &&
               std::ranges::none_of(reference.taken,
                                    [&](const HostEntity* solid) { return known.contains(solid); });
    });
}

void TellReferences(const std::vector<ReferenceSolids>& references, const DrawingOptions& options,
                    Teller& teller) {
    for (const BlockSolids& block : ByBlock(references)) {
        if (block.taken > 0)
            teller.Remark(block.Shown(options, block.taken) +
                          (block.taken == 1 ? "is a part of its own here" : "are parts of their own here") +
                          ", which can't be written back into the drawing");
        if (block.left > 0)
            teller.Loss(block.Shown(options, block.left) +
                        (block.left == 1 ? "is left out: " : "are left out: ") + block.reason);
    }
}

/// A drawing of the host's own kind keeps the letters that it has.
void TellUnusedLetters(const DrawingOptions& options, const std::filesystem::path& path, Teller& teller) {
    if (!options.lettersGiven) return;
    std::string head(4096, '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(file.gcount()));
    const DrawingKind kind = KindOfContent(head);
    const bool isDxf = kind == DrawingKind::DxfText || kind == DrawingKind::DxfBinary;
    if (isDxf || kind == DrawingKind::DwgBinary)
        teller.Loss(options.drawing +
                    ": --letters was passed over: it is for STEP and SAT files, and this is a " +
                    (isDxf ? "DXF" : "DWG") + " drawing, whose parts keep the letters that they have");
}

void TellSheets(const HostDocument& document, const DrawingOptions& options, Teller& teller) {
    if (!options.handles.empty()) return;
    for (const SheetSolids& sheet : CountSheetSolids(document))
        teller.Loss(options.drawing + ": " + SolidsOf(sheet.count) + " on the layout \"" + sheet.layout +
                    (sheet.count == 1 ? "\" is" : "\" are") + " left out: expected the parts in model space");
}

}  // namespace

HostDocument& OpenInput(HostApplication& host, GuardedFiles& files, const UnitChoice& units,
                        const DrawingOptions& options, Teller& teller) {
    const std::filesystem::path path = PathFromText(options.drawing);
    std::error_code unknown;
    if (!std::filesystem::exists(path, unknown))
        throw CommandError(ExitStatus::Unreadable,
                           options.drawing + ": expected a drawing, found no file of this name");
    if (std::filesystem::is_directory(path, unknown))
        throw CommandError(ExitStatus::Unreadable, options.drawing + ": expected a drawing, found a folder");
    teller.Progress("reading " + options.drawing);
    files.Know(path);
    if (!options.save.empty()) files.Know(PathFromText(options.save));
    TellUnusedLetters(options, path, teller);
    try {
        HostDocument& document = host.NewDocument();
        ReadDrawingInUnit(document, path, {.letters = options.letters}, units);
        document.SetFile(path.string());
        document.SignSavings();
        TellNotes(options.drawing, document.Notes(), teller, options.onlySaves);
        return document;
    } catch (const Failure& failure) {
        const std::string& text = failure.detail().empty() ? failure.description() : failure.detail();
        throw CommandError(ExitStatus::Unreadable, text);
    }
}

void TellNotesSince(std::size_t known, const HostDocument& document, const std::string& drawing,
                    Teller& teller) {
    const std::span<const ReadNote> notes = document.Notes();
    TellNotes(drawing, notes.subspan(std::min(known, notes.size())), teller);
}

std::string WritableEndings() { return "a name that ends in " + EndingsOfWrittenDrawings(); }

bool IsWritableFormat(const std::string& name) {
    return IsEndingOfWrittenDrawing(ExtensionOf(PathFromText(name)));
}

bool IsDrawingName(const std::string& name) { return IsEndingOfDrawing(ExtensionOf(PathFromText(name))); }

bool IsDxfName(const std::string& name) { return IsDrawingExtension(ExtensionOf(PathFromText(name))); }

void RequireWritableFormat(const std::string& name) {
    if (!IsWritableFormat(name))
        throw CommandError(ExitStatus::WrongWords, name + ": expected " + WritableEndings());
}

void KeepDrawing(KeptFiles& kept, const DrawingOptions& options) {
    kept.Keep(PathFromText(options.drawing), "the drawing that is read", OutputKind::Drawing);
}

void TellSheetsLeftOut(const HostDocument& document, const DrawingOptions& options, Teller& teller) {
    if (!IsDxfName(options.save)) TellSheets(document, options, teller);
}

void SaveOutput(HostDocument& document, const std::string& name, std::optional<LengthUnit> unit,
                Teller& teller) {
    RequireWritableFormat(name);
    teller.Progress("saving " + name);
    TellLayerColors(document, name, teller);
    for (const std::string& loss : SaveDrawingInUnit(document, PathFromText(name), unit))
        teller.Loss(name + ": " + loss);
}

StandIns TakeOutBlockSolids(HostDocument& document, const DrawingOptions& options, Teller& teller) {
    std::vector<ReferenceSolids> references = brenvik::TakeOutBlockSolids(document);
    StandIns standIns;
    for (const ReferenceSolids& reference : references)
        if (!reference.taken.empty()) standIns.emplace(reference.reference, reference.taken);
    DropUnasked(document, options, references);
    TellReferences(references, options, teller);
    TellSheets(document, options, teller);
    return standIns;
}

void BringBlockSolids(HostDocument& document, const DrawingOptions& options, Teller& teller) {
    std::vector<ReferenceSolids> references = brenvik::TakeOutBlockSolids(document);
    TellReferences(references, options, teller);
    EraseEmptied(document, references);
    TellSheets(document, options, teller);
}

void TellLayerColors(const HostDocument& document, const std::string& name, Teller& teller) {
    if (!IsStepExtension(ExtensionOf(PathFromText(name)))) return;
    const std::size_t count = ColoredByLayer(document);
    if (count > 0)
        teller.Remark(name + ": the colour of the layer is that of the part itself for " +
                      std::to_string(count) + (count == 1 ? " part" : " parts") +
                      ": a STEP file has no colours of layers");
}

void TellBlockSolids(HostDocument& document, const DrawingOptions& options, Teller& teller) {
    std::vector<ReferenceSolids> references = CountBlockSolids(document);
    DropUnasked(document, options, references);
    TellReferences(references, options, teller);
    TellSheets(document, options, teller);
}

void RemarkOnLumps(const HostDocument& document, const DrawingOptions& options, Teller& teller) {
    for (const PartOfLumps& part : PartsOfSeveralLumps(document.PreviousSelection()))
        teller.Remark(options.drawing + ": the part " + part.handle +
                      (part.name.empty() ? "" : " \"" + part.name + "\"") + " holds " +
                      std::to_string(part.lumps) +
                      " bodies that don't touch, and is one part with the sizes of all together");
}

namespace {

std::string NameWithHandle(const HostEntity& part) {
    const std::string name = PartText(part, "PARTNAME");
    return part.Handle() + (name.empty() ? "" : " \"" + name + "\"");
}

/// The solids among the entities, and where each stands. The scan reports solids that can't be
/// measured.
std::pair<std::vector<const HostEntity*>, std::vector<PlacedSize>> MeasuredSolids(
    std::span<HostEntity* const> entities) {
    std::vector<const HostEntity*> solids;
    std::vector<PlacedSize> sizes;
    for (const HostEntity* entity : entities) {
        const auto* const solid = dynamic_cast<const Acad3DSolid*>(entity);
        if (solid == nullptr) continue;
        try {
            sizes.push_back({solid->GetBoundingBox(), [solid] { return solid->Volume(); },
                             [solid] { return solid->Centroid(); }});
            solids.push_back(entity);
        } catch (const Failure&) {
            continue;  // without a box it stands nowhere
        }
    }
    return {std::move(solids), std::move(sizes)};
}

}  // namespace

void RemarkOnDoubles(const HostDocument& document, const DrawingOptions& options, Teller& teller) {
    const auto [solids, sizes] = MeasuredSolids(document.PreviousSelection());
    const std::vector<DoubledPlace> doubled = DoubledPlaces(sizes);
    if (doubled.empty()) return;
    constexpr std::size_t most = 5;  // more names say no more than their number
    std::vector<std::string> names;
    for (const auto& [solid, first] : doubled)
        names.push_back(NameWithHandle(*solids[solid]) + " in " + NameWithHandle(*solids[first]));
    teller.Remark(
        options.drawing + ": " +
        (doubled.size() == 1
             ? std::string("a part stands in another one of the same size and counts")
             : std::to_string(doubled.size()) + " parts stand in others of the same size and count") +
        " like any other: " + FirstOf(std::move(names), most));
}

std::size_t SelectForCommand(HostDocument& document, const DrawingOptions& options,
                             const StandIns& standIns) {
    std::vector<HostEntity*> entities;
    if (options.handles.empty()) {
        document.ModelSpace().ForEach([&entities](AcadEntity& entity) {
            if (entity.ObjectName() == "AcDb3dSolid") entities.push_back(dynamic_cast<HostEntity*>(&entity));
        });
    } else {
        for (const std::string& handle : options.handles)
            if (EntitiesWith(document, {handle}).empty())
                throw CommandError(ExitStatus::WrongWords, "--select: expected the handle of an entity of " +
                                                               options.drawing + ", found " + handle);
        std::set<const HostEntity*> met;
        for (HostEntity* entity : EntitiesWith(document, options.handles)) {
            const auto others = standIns.find(entity);
            for (HostEntity* one : others == standIns.end() ? std::vector{entity} : others->second)
                if (met.insert(one).second) entities.push_back(one);
        }
    }
    document.SetPreviousSelection(entities);
    return entities.size();
}

void ShowEntity(HostDocument& document, const std::string& handle, bool shown) {
    auto* const entity = dynamic_cast<HostEntity*>(document.HandleToObject(handle));
    if (entity == nullptr) return;
    const OneStep step(&document, "Show and hide");
    entity->SetVisible(shown);
}

void SelectHandles(HostDocument& document, const std::vector<std::string>& handles) {
    document.SetPreviousSelection(EntitiesWith(document, handles));
}

}  // namespace brenvik::app
