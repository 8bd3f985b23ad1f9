// A part file painted: for the window that shows what a run has made, and as a PNG file.
#pragma once

#include <QPainterPath>
#include <QRectF>
#include <QTransform>
#include <string>

#include "cnc/picture/part_picture.h"

class QPainter;

namespace brenvik::desktop {

/// The shape in the coordinates of its file.
QPainterPath PathOf(const PictureShape& shape);

/// From the file's coordinates into a field of the paper: as large as it fits, in the middle, upright.
QTransform FitInto(const QRectF& field, const PartPicture& picture);

void PaintShape(QPainter& painter, const QTransform& toPaper, const PictureShape& shape);

/// The line and the filling that stand for a kind.
void PaintSwatch(QPainter& painter, const QRectF& field, PictureKind kind);

/// The picture under its title, with its legend below: the content of a PNG file.
std::string PictureAsPng(const PartPicture& picture, const std::string& title);

}  // namespace brenvik::desktop
