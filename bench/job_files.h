// Drawings of jobs to measure on: many panels with a number of drilled holes, as DXF and as STEP, written by
// our own writers.
#pragma once

#include <filesystem>

namespace brenvik::bench {

enum class FileFormat { Dxf, Step };

/// The file of a job with so many panels and holes in each. It is made at the first call and kept until
/// the program ends.
std::filesystem::path JobFile(FileFormat format, int panels, int holesPerPanel);

}  // namespace brenvik::bench
