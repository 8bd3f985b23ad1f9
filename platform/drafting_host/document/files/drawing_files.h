// Drawings on disk. What a file is shows in its content: DXF, ASCII or binary, under whatever name, STEP,
// ACIS text or binary data.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"
#include "drafting_host/document/read_options.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "drafting_host/document/files/drawing_units.h"

namespace brenvik {

class HostApplication;
class HostDocument;

/// The kind of a file, by its content.
enum class DrawingKind { DxfText, DxfBinary, DwgBinary, Step, AcisText, AcisBinary, Unknown };

/// Looks at the beginning of a file.
DrawingKind KindOfContent(std::string_view head);

/// Reads a file into an empty document. Throws Failure naming the file, the place and what was expected;
/// what could be passed over stands in the document's notes.
void ReadDrawing(HostDocument& document, const std::filesystem::path& path, const ReadOptions& options);

/// Writes a document by the extension: ".dxf" and ".dwg" hold DXF text, ".step" and ".stp" STEP, ".sat"
/// ACIS text of all solids of model space. The file is replaced as a whole or not at all. Gives back
/// what could not be written, each with its handle and reason; everything else is written.
///
/// Throws Failure for another extension, and where the disk fails; the old file then stands.
std::vector<std::string> SaveDrawing(const HostDocument& document, const std::filesystem::path& path);

/// Throws Failure where another drawing of the host stands open under the name: each of the two would lose
/// what the other one saves.
void RequireNotOpen(const HostApplication& host, std::string_view fileName, const HostDocument& own);

/// ReadDrawing with the lengths of the file brought to the drawing's unit.
void ReadDrawingInUnit(HostDocument& document, const std::filesystem::path& path, const ReadOptions& options,
                       const UnitChoice& choice);

/// SaveDrawing to a file that names its unit: the drawing's own, or `unit` for a drawing that has none, or
/// else millimetres (STEP and ACIS text) and none (DXF).
std::vector<std::string> SaveDrawingInUnit(const HostDocument& document, const std::filesystem::path& path,
                                           std::optional<LengthUnit> unit);

}  // namespace brenvik
