// What is pointed at is found among the paths of the file, so that any zoom finds the same.
#include "part_pictures/part_file_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "part_pictures/part_painter.h"
#include "toolkit/qt_text.h"

namespace brenvik::desktop {

namespace {

constexpr double Border = 18, PointedWidth = 3.5;
/// How near to a line the pointer has to be, in points of the screen.
constexpr double Reach = 5;
constexpr double ZoomPerStep = 1.2, WheelStep = 120, LeastZoom = 1, MostZoom = 400;
const QColor Pointed(0xff, 0x8f, 0x00);

}  // namespace

PartFileView::PartFileView(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setObjectName("partFile");
}

void PartFileView::Show(PartPicture picture) {
    mPicture = std::move(picture);
    mPaths.clear();
    for (const PictureShape& shape : mPicture.shapes) mPaths.push_back(PathOf(shape));
    mWhyNone.clear();
    mMoved.reset();
    mPointed = -1;
    update();
}

void PartFileView::ShowNone(const QString& why) {
    Show({});
    mWhyNone = why;
}

QTransform PartFileView::ToPaper() const {
    return FitInto(QRectF(rect()).adjusted(Border, Border, -Border, -Border), mPicture) * mMoved;
}

QPointF PartFileView::PlaceOf(const PlanPoint& point) const {
    return ToPaper().map(QPointF(point.x, point.y));
}

int PartFileView::ShapeAt(const QPointF& place) const {
    const QTransform toPaper = ToPaper();
    const QRectF near(place.x() - Reach, place.y() - Reach, 2 * Reach, 2 * Reach);
    QPainterPathStroker lines;
    lines.setWidth(2 * Reach);
    // What is drawn last lies on top; a sheet lies below everything else, whose lines may be near.
    for (std::size_t at = mPaths.size(); at-- > 0;) {
        const QPainterPath path = toPaper.map(mPaths[at]);
        if (!path.boundingRect().adjusted(-Reach, -Reach, Reach, Reach).intersects(near)) continue;
        const PictureShape& shape = mPicture.shapes[at];
        const bool isFilled = shape.closed && StyleOf(shape.kind).fill != "none";
        if ((isFilled && path.contains(place)) || lines.createStroke(path).contains(place))
            return static_cast<int>(at);
    }
    return -1;
}

void PartFileView::Point(int shape) {
    if (shape == mPointed) return;
    mPointed = shape;
    const QString words =
        shape < 0 ? QString() : ToQt(mPicture.shapes[static_cast<std::size_t>(shape)].words);
    setToolTip(words);
    if (onPointed) onPointed(words);
    update();
}

void PartFileView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), Qt::white);
    if (!mWhyNone.isEmpty()) {
        painter.setPen(Qt::darkGray);
        painter.drawText(rect().adjusted(24, 24, -24, -24), Qt::AlignCenter | Qt::TextWordWrap, mWhyNone);
        return;
    }
    const QTransform toPaper = ToPaper();
    for (const PictureShape& shape : mPicture.shapes) PaintShape(painter, toPaper, shape);
    if (mPointed < 0) return;
    painter.setPen(QPen(Pointed, PointedWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(toPaper.map(mPaths[static_cast<std::size_t>(mPointed)]));
}

void PartFileView::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() == Qt::NoButton) {
        Point(ShapeAt(event->position()));
        if (mPointed >= 0) QToolTip::showText(event->globalPosition().toPoint(), toolTip(), this);
        return;
    }
    const QPointF way = event->position() - std::exchange(mDragFrom, event->position());
    mMoved *= QTransform::fromTranslate(way.x(), way.y());
    update();
}

void PartFileView::mousePressEvent(QMouseEvent* event) { mDragFrom = event->position(); }

void PartFileView::mouseDoubleClickEvent(QMouseEvent*) {
    mMoved.reset();
    update();
}

void PartFileView::wheelEvent(QWheelEvent* event) {
    const double wished = std::pow(ZoomPerStep, event->angleDelta().y() / WheelStep);
    const double zoom = std::clamp(mMoved.m11() * wished, LeastZoom, MostZoom) / mMoved.m11();
    const QPointF at = event->position();
    mMoved *= QTransform::fromTranslate(-at.x(), -at.y()) * QTransform::fromScale(zoom, zoom) *
              QTransform::fromTranslate(at.x(), at.y());
    if (mMoved.m11() <= LeastZoom) mMoved.reset();
    update();
    event->accept();
}

void PartFileView::leaveEvent(QEvent*) { Point(-1); }

}  // namespace brenvik::desktop
