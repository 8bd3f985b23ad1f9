// A board under the hands of the sample job's maker: drilled, grooved, notched, all through the host.
#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "session/ports/host_interface.h"

namespace brenvik::app {

enum class Axis { X, Y, Z };

/// One solid of model space. Lengths are drawing units; every operation throws Failure when the host refuses.
class Workpiece {
  public:
    /// A board by two opposite corners.
    Workpiece(AcadBlock& space, const Point3& min, const Point3& max, std::string_view layer);

    /// Takes away a box; it may reach beyond the board.
    void Cut(const Point3& min, const Point3& max);
    /// Drills from `mouth` on the board's surface along an axis; a negative depth drills towards smaller
    /// coordinates.
    void Drill(const Point3& mouth, Axis axis, double depth, double diameter);
    /// Cuts a window with rounded corners, square to Y: the rectangle in XZ between two opposite corners,
    /// through everything between their Y.
    void CutRoundedWindow(const Point3& min, const Point3& max, double cornerRadius);
    /// Turns the board about an upright axis; degrees, counter-clockwise from above.
    void TurnUpright(const Point3& base, double degrees);

    Acad3DSolid& Solid() { return *mSolid; }

  private:
    AcadBlock& mSpace;
    Acad3DSolid* mSolid;
};

}  // namespace brenvik::app
