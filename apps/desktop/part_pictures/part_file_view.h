// One part file on the screen: the pointer over an operation gets its words, the wheel zooms, a drag slides,
// a double click shows everything.
#pragma once

#include <QPainterPath>
#include <QTransform>
#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

#include "cnc/picture/part_picture.h"

namespace brenvik::desktop {

class PartFileView : public QWidget {
  public:
    explicit PartFileView(QWidget* parent = nullptr);

    void Show(PartPicture picture);
    /// Shows this text in place of a picture.
    void ShowNone(const QString& why);
    /// The operation at this place of the widget, the topmost of several; -1 for none.
    int ShapeAt(const QPointF& place) const;
    /// Where a point of the file is seen. Tests press the picture by it.
    QPointF PlaceOf(const PlanPoint& point) const;
    const PartPicture& Picture() const { return mPicture; }
    /// The words of what the pointer is over, blank for nothing.
    std::function<void(const QString& words)> onPointed;

    QSize sizeHint() const override { return {640, 420}; }
    QSize minimumSizeHint() const override { return {280, 200}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    QTransform ToPaper() const;
    void Point(int shape);

    PartPicture mPicture;
    std::vector<QPainterPath> mPaths;
    QString mWhyNone;
    /// What the user has turned the fitted picture by.
    QTransform mMoved;
    QPointF mDragFrom;
    int mPointed = -1;
};

}  // namespace brenvik::desktop
