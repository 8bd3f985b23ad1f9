// The unit of a shop's drawings, and the option that names the unit of a file.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "drafting_host/document/files/drawing_units.h"
#include "shell/command_words.h"

namespace brenvik::app {

/// By the `ExportScaleSetting` of the loaded home: inches for 1 and 3, which are kept and scaled to
/// millimetres in a run, millimetres for 2 and 4. Null for any other value.
std::optional<LengthUnit> DrawingUnitOfHome();

/// Whether runs of the loaded home scale what they write.
bool RunsScaleDrawings();

/// The unit of the drawings of a home that isn't loaded. One that is to be made yet will be metric.
std::optional<LengthUnit> DrawingUnitOfHome(const std::filesystem::path& home);

/// --unit mm|inch
struct UnitOption {
    std::string word;

    Argument Option();
    UnitChoice For(std::optional<LengthUnit> drawing) const;
};

}  // namespace brenvik::app
