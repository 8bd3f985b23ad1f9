// Pointing at the drawing: the snap under the mouse, its marker, and the click that takes it.
#pragma once

#include <QPointF>
#include <memory>
#include <optional>
#include <vector>

#include "drawing_view/drawing_view.h"
#include "snaps/snap_finder.h"

class QMouseEvent;
class QWidget;

namespace brenvik::desktop {

class SnapMarker;

class PointPicker {
  public:
    /// The marker lies on `view`.
    explicit PointPicker(QWidget& view);
    ~PointPicker();

    void Ask(const PointWish* wish);
    bool Asked() const { return mWish.has_value(); }
    void SetBodies(const std::vector<TopoDS_Shape>& shapes) { mFinder.SetBodies(shapes); }

    /// True for a press that may become a click on a point.
    bool TakePress(const QMouseEvent& event);
    /// Where that press was, once the mouse has gone so far from it that the user drags.
    std::optional<QPointF> TakeDrag(const QMouseEvent& event);
    /// The point that a released button has clicked on.
    std::optional<Snap> TakeRelease(const QMouseEvent& event, const Sight& sight, bool seeThrough);
    /// Shows what a click at the place would mean.
    void Show(const QPointF& place, const Sight& sight, bool seeThrough);
    void Hide();

  private:
    Snap At(const QPointF& place, const Sight& sight, bool seeThrough) const;

    QWidget& mView;
    SnapMarker* mMarker;
    SnapFinder mFinder;
    std::optional<PointWish> mWish;
    std::optional<QPointF> mPressed;
};

}  // namespace brenvik::desktop
