// Faults of a material library as a whole, beyond the values of its records: records that no part can find,
// and lines in another form of text.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/material_faults.h"
#include "settings/materials.h"

namespace brenvik {

/// Runs in millimetres write thicknesses with two decimals: the key that those of this home would ask for in
/// place of a finer one. Blank where the key is one that they ask for, and in a home in inches.
std::string KeyOfRunsFor(std::string_view key);

/// The lines that are no UTF-8 outside of the material that was found; all of them where none was. One of
/// them may have been meant as the very key that was asked for. Fails as reading the file does.
std::vector<MaterialFault> GuessedLinesBeside(const std::optional<CheckedMaterial>& found);

/// Keys that no run of this home asks for, records without a first tool, lines that are no UTF-8, and a
/// library without any record, in the order of lines. Fails as reading the file does.
std::vector<MaterialFault> FaultsOfLibrary();

}  // namespace brenvik
