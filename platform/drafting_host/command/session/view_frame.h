// The frame of a view: which way is up, how far the view is turned about the line of sight, and the part of
// the model that it shows.
#pragma once

#include "drafting_host/document/host_document.h"

namespace brenvik {

/// The view's upward direction in the world, a unit vector square to the line of sight.
Point3 UpOf(const ViewportData& view);
/// The angle by which a view along `direction` is turned so that `up` is upward on the screen, radians.
double TwistOf(const Point3& direction, const Point3& up);
/// Lays the whole of model space into the middle of the view, with a little air around it. An empty model
/// leaves the view as it is.
void ShowModel(ViewportData& view, HostDocument& document);
/// The layer becomes visible or hidden in one viewport. Fails where the viewport's own layer is locked.
void FreezeIn(HostViewport& viewport, HostLayer& layer, bool freeze);
/// The viewports of the sheet in use, without the record of the sheet itself.
std::vector<HostViewport*> ViewportsOf(HostDocument& document);

/// What MVIEW Lock does: the view stays as it is.
bool ViewLocked(const HostViewport& viewport);

/// Bits of a viewport's status (group 90).
namespace view_status {
inline constexpr int FrontClipping = 0x2;
inline constexpr int BackClipping = 0x4;
inline constexpr int FrontClipAwayFromEye = 0x10;
inline constexpr int HidePlot = 0x800;
inline constexpr int Locked = 0x4000;
inline constexpr int Off = 0x20000;
}  // namespace view_status

}  // namespace brenvik
