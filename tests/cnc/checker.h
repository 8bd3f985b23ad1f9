// Puts the operations of a part's files back onto the part: every cylinder and contour has to lie in air, and
// together they have to take away all that the part's blank has more than the part. The files are read as a
// CAM package gets them, the part is laid flat once more as the run lays it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cnc/cnc_fixture.h"
#include "cnc/run/runs.h"

namespace brenvik {

/// One operation as a body: what it cuts, in the frame of the first side, top face on Z 0.
struct Cut {
    std::string layer;
    bool secondSide = false;
    Acad3DSolid* body = nullptr;
    Box3 box;
    /// Where it stands and how wide, for telling two of one kind apart.
    Drawn drawn;
};

struct CheckOptions {
    /// The volume that no operation takes away although the part lacks it: bevels, slanted holes. In cubes of
    /// the unit that the run works in.
    double uncovered = 0;
    /// Layers (by their beginning) of which two may cut the same air by the run's own rules.
    std::vector<std::string> twice;
};

class CheckedRunTest : public CncTest {
  protected:
    /// Runs the target over all solids of the drawing, form A.
    void RunAll(Target target = Target::C2C);
    /// The same over the previous selection.
    void RunOnly(Target target = Target::C2C);

    /// The entities of a part's first or second file; none where there is no file.
    std::optional<std::vector<Drawn>> FirstSide(int index = 0) {
        return FileOf(OutputFolder, "Part_", index);
    }
    std::optional<std::vector<Drawn>> SecondSide(int index = 0) {
        return FileOf(SecondSideFolder, "BPart_", index);
    }

    /// What is wrong with the files of the part at this index of the selection; empty when all is right. For
    /// targets that keep the depth in the thickness.
    std::vector<std::string> Faults(Acad3DSolid& part, int index = 0, const CheckOptions& options = {});

  private:
    std::optional<std::vector<Drawn>> FileOf(std::string_view folder, const std::string& prefix, int index);
    /// The part as the first pass lays it, top face on Z 0, in the drawing of the trial.
    Acad3DSolid* LayFlat(Acad3DSolid& part, HostDocument*& trial);

    Target mLastTarget = Target::C2C;
};

}  // namespace brenvik
