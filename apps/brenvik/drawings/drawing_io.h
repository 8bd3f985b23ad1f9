// Reading and saving drawings for the commands, with what was lost on the way.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "drafting_host/document/files/drawing_units.h"
#include "drafting_host/document/host_application.h"
#include "file_roots/guarded_files.h"
#include "home/kept_files.h"
#include "reports/teller.h"
#include "shell/drawing_options.h"

namespace brenvik::app {

/// Opens the drawing that the options name and reports what could not be taken over. Throws CommandError with
/// Unreadable if the file can't be read. `files` guard the drawing from now on, and the file that the options
/// save to. Lengths are brought to the unit of the shop's drawings, and each change is reported.
HostDocument& OpenInput(HostApplication& host, GuardedFiles& files, const UnitChoice& units,
                        const DrawingOptions& options, Teller& teller);

/// Reports solids on sheets of paper space, which the files of other systems leave out. A DXF holds them.
void TellSheetsLeftOut(const HostDocument& document, const DrawingOptions& options, Teller& teller);

/// Saves by the extension of the name and reports what the format can't hold. The file of a drawing without a
/// unit of its own names `unit`. Throws CommandError for an extension that no writer knows, and for a file
/// that can't be written.
void SaveOutput(HostDocument& document, const std::string& name, std::optional<LengthUnit> unit,
                Teller& teller);

/// Reports what savings by the object model left out: the document's notes behind the first `known`.
void TellNotesSince(std::size_t known, const HostDocument& document, const std::string& drawing,
                    Teller& teller);

/// Expected in place of a name that no writer knows.
std::string WritableEndings();

/// Whether a writer knows the name's extension, whether it is that of any drawing, and whether of DXF text.
bool IsWritableFormat(const std::string& name);
bool IsDrawingName(const std::string& name);
bool IsDxfName(const std::string& name);

/// Keeps the drawing that a command reads from every output but a drawing.
void KeepDrawing(KeptFiles& kept, const DrawingOptions& options);

/// Fails for an extension that SaveOutput would refuse, so that a command can refuse it before its work.
void RequireWritableFormat(const std::string& name);

/// Entities that stand for others in a selection: the solids taken out of a block reference.
using StandIns = std::map<HostEntity*, std::vector<HostEntity*>>;

/// Makes parts of the solids in block references, for a command that doesn't save the drawing. Reports values
/// that can't be typed back into it, and solids that can't be taken out. Returns the solids by the references
/// that they were taken out of.
StandIns TakeOutBlockSolids(HostDocument& document, const DrawingOptions& options, Teller& teller);
/// The same for a form without blocks (STEP, SAT): references that have shown nothing else are gone then.
void BringBlockSolids(HostDocument& document, const DrawingOptions& options, Teller& teller);
/// For STEP files: remarks that colours of layers become the parts' own.
void TellLayerColors(const HostDocument& document, const std::string& name, Teller& teller);

/// Reports the solids in block references or on sheets, which are left out.
void TellBlockSolids(HostDocument& document, const DrawingOptions& options, Teller& teller);

/// Remarks on selected solids of several lumps, which are one part each with the sizes of all lumps together.
void RemarkOnLumps(const HostDocument& document, const DrawingOptions& options, Teller& teller);
/// Remarks in one line on selected solids that stand in others of the same size: each counts as a part.
void RemarkOnDoubles(const HostDocument& document, const DrawingOptions& options, Teller& teller);

/// Selects the entities of the options, or every solid of model space, as the host's previous selection.
/// Returns how many. Throws CommandError for a handle that is not in the drawing.
std::size_t SelectForCommand(HostDocument& document, const DrawingOptions& options,
                             const StandIns& standIns = {});

/// Shows or hides an entity, as a step that can be taken back; does nothing for an unknown handle.
void ShowEntity(HostDocument& document, const std::string& handle, bool shown);

/// Selects the entities with these handles, in this order; unknown ones are left out.
void SelectHandles(HostDocument& document, const std::vector<std::string>& handles);

}  // namespace brenvik::app
