// Solids that come from and go to files of other systems: with names and assemblies as part data.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "drafting_host/document/files/drawing_files.h"
#include "drafting_host/document/files/drawing_units.h"
#include "drafting_host/step/texts/step_document.h"

namespace brenvik {

/// Fills an empty document from a STEP file, in the unit that `units` asks for, or else in millimetres.
/// Each solid gets its name, assembly, layer and colour, and, where the options give letters, the letters and
/// its measured extents as the saved ones.
void ImportStep(HostDocument& document, const std::filesystem::path& path, const ReadOptions& options,
                const UnitChoice& units);

/// Fills an empty document from ACIS text. Names are the file's own, numbered where there are several.
void ImportAcis(HostDocument& document, std::string_view content, const std::filesystem::path& path,
                const ReadOptions& options, const UnitChoice& units);

/// The solids of model space for a STEP file; other entities are reported in `problems`.
std::vector<step::StepSolid> StepSolidsOf(const HostDocument& document, std::vector<std::string>& problems);

/// How many solids of model space show in the colour of their layer, which STEP has as their own.
std::size_t ColoredByLayer(const HostDocument& document);

/// One ACIS text of all solids of model space, whose head names `unit`. Solids that it can't hold and other
/// entities are reported in `problems`. Throws Failure if no solid is left.
std::vector<std::string> AcisLinesOf(const HostDocument& document, LengthUnit unit,
                                     std::vector<std::string>& problems);

}  // namespace brenvik
