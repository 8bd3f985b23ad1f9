// Lines keep their width at any size, so the paths are turned ahead of the pen.
#include "part_pictures/part_painter.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "cnc/picture/picture_legend.h"
#include "toolkit/qt_text.h"

namespace brenvik::desktop {

namespace {

constexpr double LineWidth = 1.5;
/// Of a PNG file, in points of a picture that is drawn twice as fine.
constexpr double Fineness = 2, SwatchWidth = 22, SwatchHeight = 14, TextSize = 15, TitleSize = 18;
constexpr double Margin = PictureLayout::Margin, FieldWidth = PictureLayout::FieldWidth;
/// Sides with a flatter arch than this are straight to every eye.
constexpr double NoArch = 1e-9;

QColor ColourOf(std::string_view name) {
    return QColor(QLatin1String(name.data(), static_cast<int>(name.size())));
}

void AddSide(QPainterPath& path, const PlanSide& side) {
    const QPointF to(side.to.x, side.to.y);
    const double width = side.to.x - side.from.x, height = side.to.y - side.from.y;
    const double chord = std::hypot(width, height);
    if (std::abs(side.bulge) < NoArch || chord == 0) return path.lineTo(to);
    const double radius = chord * (1 + side.bulge * side.bulge) / (4 * std::abs(side.bulge));
    // From the middle of the chord, across it.
    const double away = chord * (1 - side.bulge * side.bulge) / (4 * side.bulge);
    const QPointF centre((side.from.x + side.to.x) / 2 - height / chord * away,
                         (side.from.y + side.to.y) / 2 + width / chord * away);
    // The toolkit counts angles for a height that grows downwards.
    constexpr double Degrees = 180 / std::numbers::pi;
    const double start = -std::atan2(side.from.y - centre.y(), side.from.x - centre.x()) * Degrees;
    path.arcTo(QRectF(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius), start,
               -4 * std::atan(side.bulge) * Degrees);
}

QPen PenOf(const PictureStyle& style) {
    QPen pen(ColourOf(style.line), LineWidth);
    pen.setJoinStyle(Qt::MiterJoin);
    return pen;
}

QBrush BrushOf(const PictureStyle& style) {
    return style.fill == "none" ? QBrush(Qt::NoBrush) : QBrush(ColourOf(style.fill));
}

void PaintTitle(QPainter& painter, const QString& title) {
    QFont font = painter.font();
    font.setPixelSize(static_cast<int>(TitleSize));
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::black);
    const QRectF line(Margin, Margin, FieldWidth, PictureLayout::TitleHeight);
    painter.drawText(
        line, Qt::AlignLeft | Qt::AlignTop,
        painter.fontMetrics().elidedText(title, Qt::ElideMiddle, static_cast<int>(line.width())));
}

void PaintLegend(QPainter& painter, const std::vector<LegendEntry>& legend, double top) {
    QFont font = painter.font();
    font.setPixelSize(static_cast<int>(TextSize));
    font.setBold(false);
    painter.setFont(font);
    double at = top;
    for (const LegendEntry& entry : legend) {
        PaintSwatch(painter, QRectF(Margin, at, SwatchWidth, SwatchHeight), entry.kind);
        painter.setPen(Qt::black);
        painter.drawText(QRectF(Margin + SwatchWidth + 12, at - 4, FieldWidth, SwatchHeight + 8),
                         Qt::AlignLeft | Qt::AlignVCenter,
                         QString("%1 x %2").arg(entry.count).arg(ToQt(entry.words)));
        at += PictureLayout::LegendLine;
    }
}

}  // namespace

QPainterPath PathOf(const PictureShape& shape) {
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    PlanPoint pen;
    for (const PlanSide& side : shape.sides) {
        if (path.isEmpty() || side.from.x != pen.x || side.from.y != pen.y)
            path.moveTo(side.from.x, side.from.y);
        AddSide(path, side);
        pen = side.to;
    }
    if (shape.closed && !path.isEmpty()) path.closeSubpath();
    return path;
}

QTransform FitInto(const QRectF& field, const PartPicture& picture) {
    const double width = std::max(picture.high.x - picture.low.x, 1e-6),
                 height = std::max(picture.high.y - picture.low.y, 1e-6);
    const double scale = std::min(field.width() / width, field.height() / height);
    const double left = field.center().x() - width * scale / 2,
                 bottom = field.center().y() + height * scale / 2;
    return {scale, 0, 0, -scale, left - picture.low.x * scale, bottom + picture.low.y * scale};
}

void PaintShape(QPainter& painter, const QTransform& toPaper, const PictureShape& shape) {
    const PictureStyle& style = StyleOf(shape.kind);
    painter.setPen(PenOf(style));
    painter.setBrush(shape.closed ? BrushOf(style) : QBrush(Qt::NoBrush));
    painter.drawPath(toPaper.map(PathOf(shape)));
}

void PaintSwatch(QPainter& painter, const QRectF& field, PictureKind kind) {
    painter.setPen(PenOf(StyleOf(kind)));
    painter.setBrush(BrushOf(StyleOf(kind)));
    painter.drawRect(field);
}

std::string PictureAsPng(const PartPicture& picture, const std::string& title) {
    const std::vector<LegendEntry> legend = LegendOf(picture);
    const PictureLayout layout = LayoutOf(picture, legend);
    const QSizeF size(layout.sheetWidth, layout.sheetHeight);
    QImage image((size * Fineness).toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(Fineness, Fineness);
        PaintTitle(painter, ToQt(TitleOf(picture, title)));
        const QTransform toPaper =
            FitInto(QRectF(Margin, layout.partTop, layout.partWidth, layout.partHeight), picture);
        for (const PictureShape& shape : picture.shapes) PaintShape(painter, toPaper, shape);
        PaintLegend(painter, legend, layout.legendTop);
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes.toStdString();
}

}  // namespace brenvik::desktop
