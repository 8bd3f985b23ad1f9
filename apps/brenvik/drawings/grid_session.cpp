// The grid form without a person in front of it.
#include "drawings/grid_session.h"

#include <algorithm>
#include <exception>
#include <string>
#include <vector>

#include "drawings/given_material.h"
#include "export/adjustment_file.h"
#include "export/export_troubles.h"
#include "file_roots/places.h"
#include "parts/dropped_parts.h"
#include "parts/part_trouble.h"
#include "session/library/brenvik_class.h"

namespace brenvik::app {

namespace {

/// What a command keeps of the bodies that it has read: more than nearly every job has, and far less than the
/// largest. Bodies beyond that are made again when somebody asks for more than their sizes.
constexpr std::size_t ShapeBytes = std::size_t{64} << 20U;

}  // namespace

void TellDamagedSettings(Workplace& workplace, Teller& teller) {
    // Everything read so far has been reported already.
    if (workplace.toldSettings.DamageFound()) teller.MarkIncomplete();
    workplace.toldSettings.tell = [&teller](const std::string& text) { teller.Loss(text); };
}

HostDocument& OpenInHome(Workplace& workplace, const DrawingOptions& options, const UnitOption& unit,
                         Teller& teller) {
    KeepDrawing(workplace.kept, options);
    if (!options.save.empty())
        workplace.kept.RequireFree(PathFromText(options.save), OutputKind::Drawing, options.save);
    HostDocument& document =
        OpenInput(workplace.host, workplace.drawingFiles, unit.For(DrawingUnitOfHome()), options, teller);
    if (RunsScaleDrawings()) document.Tables().insertUnits = 0;
    return document;
}

OpenedInput OpenAndSelect(Workplace& workplace, const DrawingOptions& options, const UnitOption& unit,
                          Teller& teller) {
    TellDamagedSettings(workplace, teller);
    workplace.host.Shapes().SetLimit(ShapeBytes);
    HostDocument& document = OpenInHome(workplace, options, unit, teller);
    StandIns standIns;
    if (options.save.empty())
        standIns = TakeOutBlockSolids(document, options, teller);
    else
        TellBlockSolids(document, options, teller);
    const std::size_t selected = SelectForCommand(document, options, standIns);
    GiveMaterial(document, options.material, teller);
    if (selected == 0) teller.Remark(options.drawing + ": the drawing holds no solids");
    return {document, selected};
}

void WhileGridIsOpen(HostApplication& host, ConsoleDialogs& dialogs, const std::function<void(Form&)>& work) {
    std::exception_ptr refused;
    dialogs.whileOpen = [&](Form& form) {
        try {
            work(form);
        } catch (const CommandError&) {
            refused = std::current_exception();
        }
    };
    cBrenvik().Show(host);
    dialogs.whileOpen = nullptr;
    if (refused) std::rethrow_exception(refused);
}

DroppedPartLines TakeDroppedPartLines() {
    const std::vector<DroppedPart> dropped = TakeDroppedParts();
    DroppedPartLines told{{}, dropped.size()};
    std::size_t withTheTable = 0;
    for (const DroppedPart& part : dropped) {
        if (part.reason.empty())
            ++withTheTable;
        else
            told.lines.push_back("the part " + part.handle + " \"" + part.name +
                                 "\" is missing in the list: " + part.reason);
    }
    // The table's faults have been reported already, and are the same for each of them.
    if (withTheTable > 0)
        told.lines.push_back(std::to_string(withTheTable) + (withTheTable == 1 ? " part is" : " parts are") +
                             " missing in the list, since the part table can't be used");
    return told;
}

namespace {

/// Texts of other programs may hold line breaks.
std::string OnOneLine(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return text;
}

}  // namespace

PartTroubleLines TakePartTroubleLines() {
    PartTroubleLines told;
    for (const PartTrouble& trouble : TakePartTroubles()) {
        const bool aboutAPart = !trouble.handle.empty() || !trouble.name.empty();
        (trouble.isRemark ? told.remarks : told.lines)
            .push_back(OnOneLine(
                (aboutAPart ? "the part " + PartLabel(trouble.handle, trouble.name) + ": " : std::string()) +
                trouble.text));
        told.allToldInBoxes = told.allToldInBoxes && (trouble.toldInABox || trouble.isRemark);
    }
    return told;
}

void TellPartTroubles(Teller& teller) {
    const PartTroubleLines troubles = TakePartTroubleLines();
    for (const std::string& line : troubles.remarks) teller.Tell(line);
    for (const std::string& line : troubles.lines) teller.Loss(line);
}

std::size_t TellDroppedParts(Teller& teller) {
    const DroppedPartLines dropped = TakeDroppedPartLines();
    for (const std::string& line : dropped.lines) teller.Loss(line);
    return dropped.parts;
}

void TellExportTroubles(Teller& teller, const std::function<void(const std::string&)>& line) {
    for (const std::string& text : TakeExportTroubles()) {
        if (!line) {
            teller.Loss(text);
            continue;
        }
        line(text);
        teller.MarkIncomplete();
    }
    for (const std::string& text : TakeAdjustedLines()) {
        if (line)
            line(text);
        else
            teller.Tell(text);
    }
}

}  // namespace brenvik::app
