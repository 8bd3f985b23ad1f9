// Drawings of jobs to measure on: many panels with a number of drilled holes, as DXF and as STEP, written by
// our own writers. For the runs the panels have a dado and a cut-out besides.
#pragma once

#include <filesystem>

namespace brenvik::bench {

enum class FileFormat { Dxf, Step };

/// The file of a job with so many panels and holes in each. It is made at the first call and kept until
/// the program ends.
std::filesystem::path JobFile(FileFormat format, int panels, int holesPerPanel);

/// What a panel of a run has besides its holes.
enum class Machining {
    OneSide,    ///< A dado and a cut-out.
    BothSides,  ///< The same, and a recess in the lower face, so that it needs a second pass.
};

/// The DXF file of a job of such panels with so many holes in each, one in ten of them in an edge; made and
/// kept like the others.
std::filesystem::path MachinedJobFile(int panels, int holesPerPanel, Machining machining);

}  // namespace brenvik::bench
