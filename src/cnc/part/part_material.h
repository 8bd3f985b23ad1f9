// The material of the part that a run works on: its name and key, looked up, reported where the library lacks
// it, and refused where its record can't be what was meant.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cnc/part/run_state.h"
#include "settings/materials.h"

namespace brenvik {

/// The material of parts that name none.
inline constexpr std::string_view UnnamedMaterial = "UnknownMaterial";

/// The name that the part's data give its material, in upper case. A part without one is of a material that a
/// shop may have in its library under a name of its own.
std::string MaterialNameOf(const Acad3DSolid& solid);

/// Reads the part's material into `Material`, by the thickness and the name that the run has taken of the
/// part, and its key into `MaterialKeyText`. The record is blank where the library has none, so that no part
/// is cut with the bits of another one's material. Returns what was found, with its faults.
std::optional<CheckedMaterial> ReadMaterial(PartState& part);

/// The same for a pass: returns false, after a message, if the library has none with a first tool. Fails with
/// 13 for a record with a value that nobody can cut by, naming the file, the line, the value and what was
/// expected. Doubtful values are noted for the run's report.
bool TakeMaterial(RunState& run);

}  // namespace brenvik
