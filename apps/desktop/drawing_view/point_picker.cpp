// A press without a drag is a click; a drag turns the view as it always does.
#include "drawing_view/point_picker.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

#include "drawing_view/snap_marker.h"

namespace brenvik::desktop {

namespace {

/// How far from the mouse a point is snapped to, in pixels as the user sees them.
constexpr double Reach = 10;

}  // namespace

PointPicker::PointPicker(QWidget& view) : mView(view), mMarker(new SnapMarker(view)) {}
PointPicker::~PointPicker() = default;

void PointPicker::Ask(const PointWish* wish) {
    mWish.reset();
    if (wish != nullptr) mWish = *wish;
    mPressed.reset();
    mMarker->hide();
    if (mWish)
        mView.setCursor(Qt::CrossCursor);
    else
        mView.unsetCursor();
}

bool PointPicker::TakePress(const QMouseEvent& event) {
    mPressed.reset();
    if (!mWish || event.button() != Qt::LeftButton || event.modifiers() != Qt::NoModifier) return false;
    mPressed = event.position();
    return true;
}

std::optional<QPointF> PointPicker::TakeDrag(const QMouseEvent& event) {
    if (!mPressed) return std::nullopt;
    const QPointF way = event.position() - *mPressed;
    if (way.manhattanLength() < QApplication::startDragDistance()) return std::nullopt;
    mMarker->hide();
    return std::exchange(mPressed, std::nullopt);
}

std::optional<Snap> PointPicker::TakeRelease(const QMouseEvent& event, const Sight& sight, bool seeThrough) {
    if (!mPressed || event.button() != Qt::LeftButton) return std::nullopt;
    return At(*std::exchange(mPressed, std::nullopt), sight, seeThrough);
}

void PointPicker::Show(const QPointF& place, const Sight& sight, bool seeThrough) {
    if (!mWish) return;
    const Snap snap = At(place, sight, seeThrough);
    const ScreenPlace at = sight.PlaceOf(snap.point);
    const double ratio = mView.devicePixelRatioF();
    mMarker->Show(snap.kind, QPointF(at.x / ratio, at.y / ratio).toPoint());
}

void PointPicker::Hide() { mMarker->hide(); }

Snap PointPicker::At(const QPointF& place, const Sight& sight, bool seeThrough) const {
    const double ratio = mView.devicePixelRatioF();
    SnapWishes wishes;
    wishes.base = mWish->base;
    wishes.snapping = mWish->snapping;
    wishes.seeThrough = seeThrough;
    wishes.reach = Reach * ratio;
    return mFinder.Find(sight, {place.x() * ratio, place.y() * ratio}, wishes);
}

}  // namespace brenvik::desktop
