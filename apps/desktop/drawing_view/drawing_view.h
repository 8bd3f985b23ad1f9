// What the main window wants of a picture of the drawing, whoever makes it.
#pragma once

#include <QPointF>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "snaps/snap.h"

class QWidget;

namespace brenvik {
class HostDocument;
}

namespace brenvik::desktop {

enum class ViewLook { Shaded, Wireframe };
enum class ViewSide { Isometric, Top, Bottom, Front, Back, Left, Right };

struct PointWish {
    /// The point given before, from which perpendiculars fall.
    std::optional<Point3> base;
    /// Whether ends, middles and so on are wanted, or only what lies under the mouse.
    bool snapping = true;
};

class DrawingView {
  public:
    virtual ~DrawingView() = default;
    virtual QWidget& Widget() = 0;
    /// Shows the solids of model space as they are now; null shows nothing. What has not changed since the
    /// last call costs nothing. Another drawing is looked at as it was when it was shown last.
    virtual void Show(HostDocument* document) = 0;
    /// The drawing is closed, or about to be: what is kept of its picture goes.
    virtual void Forget(const HostDocument& document) = 0;
    virtual void Mark(const std::vector<std::string>& handles) = 0;
    virtual void SetLook(ViewLook look) = 0;
    virtual void LookFrom(ViewSide side) = 0;
    /// From anywhere else, everything in sight.
    virtual void LookAlong(const Point3& towardsEye, const Point3& up) = 0;
    virtual void Fit() = 0;
    /// Where the user looks from: from the drawing towards the eye, a unit vector.
    virtual Point3 TowardsEye() const = 0;
    /// What is up in the picture, square to that.
    virtual Point3 Up() const = 0;
    /// Whether all that is to be shown is there: shapes come one after another.
    virtual bool Ready() const = 0;
    /// Where a point is seen, in pixels of the widget; null until there is a picture. Tests press the picture
    /// by it.
    virtual std::optional<QPointF> PlaceOf(const Point3& point) const = 0;
    /// From now on a click means a point of the drawing, which a marker shows under the mouse; null for
    /// clicks that select.
    virtual void AskForPoint(const PointWish* wish) = 0;
    /// The user has picked these, by click or by window.
    std::function<void(const std::vector<std::string>& handles)> onPicked;
    /// The user has pointed at this.
    std::function<void(const Snap& snap)> onPoint;
    /// Called when no picture can be shown, with the reason.
    std::function<void(const std::string& reason)> onDead;
};

/// Null if the display can't carry one; then `reason` says why, for people.
std::unique_ptr<DrawingView> MakeModellerView(std::string& reason);

}  // namespace brenvik::desktop
