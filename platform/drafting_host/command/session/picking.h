// What lies under a point that is picked on the screen: the line of sight runs along the present view.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>
#include <vector>

#include "session/ports/host_interface.h"

namespace brenvik {

class CommandSession;
class HostEntity;
struct SelectionWindow;

/// The object that a pick at the point takes, or null: one that the point lies on, otherwise the nearest to
/// the eye on the line of sight through the point. Of equal ones the later drawn counts. Hidden objects, and
/// those on a layer that is off or frozen, can't be picked.
HostEntity* EntityAt(const CommandSession& session, const Point3& point);

/// The objects whose boxes lie within a window of the view, or with `crossing` reach into it.
std::vector<HostEntity*> EntitiesInWindow(const CommandSession& session, const Point3& corner,
                                          const Point3& opposite, bool crossing);

/// Whether the view in which a window was drawn shows a point within it.
bool ShownWithin(const SelectionWindow& window, const Point3& point);

/// The faces of a solid that a pick at the point takes: all that the point lies on (two for an edge),
/// otherwise the one that the line of sight meets nearest to the eye. None where it misses.
std::vector<TopoDS_Face> FacesAt(const CommandSession& session, const TopoDS_Shape& solid,
                                 const Point3& point);

}  // namespace brenvik
