// The commands' way to the drafting host's readers and writers.
#include "drawing_io.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <span>

#include "base/failure.h"
#include "base/letter_case.h"
#include "drafting_host/document/block_solids.h"
#include "file_roots/places.h"

namespace brenvik::app {

namespace {

constexpr std::array<std::string_view, 5> writableExtensions{".dxf", ".dwg", ".step", ".stp", ".sat"};

std::string AtLine(const std::string& file, std::size_t line) {
    return line == 0 ? file + ": " : file + ":" + std::to_string(line) + ": ";
}

void TellNotes(const std::string& file, std::span<const ReadNote> notes, Teller& teller) {
    for (const ReadNote& note : notes) {
        const std::string text = AtLine(file, note.line) + note.text;
        if (note.dataLost)
            teller.Loss(text);
        else
            teller.Remark(text);
    }
}

std::string InReferences(const std::string& drawing, long count, const std::string& block) {
    return drawing + ": " + std::to_string(count) +
           (count == 1 ? " solid in a reference" : " solids in references") + " to block \"" + block + "\" ";
}

/// Handles that were asked for leave nothing out that was wanted.
void TellLeft(const BlockSolids& block, const std::string& reason, const DrawingOptions& options,
              Teller& teller) {
    if (block.left == 0 || !options.handles.empty()) return;
    teller.Loss(InReferences(options.drawing, block.left, block.block) +
                (block.left == 1 ? "is left out: " : "are left out: ") + reason);
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

}  // namespace

HostDocument& OpenInput(HostApplication& host, const DrawingOptions& options, Teller& teller) {
    const std::filesystem::path path = PathFromText(options.drawing);
    std::error_code unknown;
    if (!std::filesystem::exists(path, unknown))
        throw CommandError(ExitStatus::Unreadable,
                           options.drawing + ": expected a drawing, found no file of this name");
    if (std::filesystem::is_directory(path, unknown))
        throw CommandError(ExitStatus::Unreadable, options.drawing + ": expected a drawing, found a folder");
    teller.Progress("reading " + options.drawing);
    try {
        HostDocument& document = host.OpenDrawing(path, {.letters = options.letters});
        TellNotes(options.drawing, document.Notes(), teller);
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

void RequireWritableFormat(const std::string& name) {
    const std::string extension = TextFromPath(PathFromText(name).extension());
    if (std::any_of(writableExtensions.begin(), writableExtensions.end(),
                    [&](std::string_view known) { return EqualsIgnoreCase(known, extension); }))
        return;
    throw CommandError(ExitStatus::WrongWords,
                       name + ": expected a name that ends in .dxf, .dwg, .step, .stp or .sat");
}

void SaveOutput(HostDocument& document, const std::string& name, Teller& teller) {
    RequireWritableFormat(name);
    teller.Progress("saving " + name);
    for (const std::string& loss : SaveDrawing(document, PathFromText(name))) teller.Loss(name + ": " + loss);
}

void TakeOutBlockSolids(HostDocument& document, const DrawingOptions& options, Teller& teller) {
    for (const BlockSolids& block : brenvik::TakeOutBlockSolids(document)) {
        if (block.taken > 0)
            teller.Remark(InReferences(options.drawing, block.taken, block.block) +
                          (block.taken == 1 ? "is a part of its own here" : "are parts of their own here") +
                          ", which can't be written back into the drawing");
        TellLeft(block, block.reason, options, teller);
    }
}

void TellBlockSolids(const HostDocument& document, const DrawingOptions& options, Teller& teller) {
    for (const BlockSolids& block : CountBlockSolids(document))
        TellLeft(block,
                 "expected solids that stand in the drawing itself, as exploding the reference gives them",
                 options, teller);
}

std::size_t SelectForCommand(HostDocument& document, const DrawingOptions& options) {
    std::vector<HostEntity*> entities = EntitiesWith(document, options.handles);
    if (options.handles.empty()) {
        document.ModelSpace().ForEach([&entities](AcadEntity& entity) {
            if (entity.ObjectName() == "AcDb3dSolid") entities.push_back(dynamic_cast<HostEntity*>(&entity));
        });
    } else {
        for (const std::string& handle : options.handles)
            if (EntitiesWith(document, {handle}).empty())
                throw CommandError(ExitStatus::WrongWords, "--select: expected the handle of an entity of " +
                                                               options.drawing + ", found " + handle);
    }
    document.SetPreviousSelection(entities);
    return entities.size();
}

void SelectHandles(HostDocument& document, const std::vector<std::string>& handles) {
    document.SetPreviousSelection(EntitiesWith(document, handles));
}

}  // namespace brenvik::app
