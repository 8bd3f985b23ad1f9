// A widget of its own over the picture, so that the picture needn't be drawn anew for it.
#include "drawing_view/snap_marker.h"

#include <QPainter>

#include "toolkit/qt_text.h"

namespace brenvik::desktop {

namespace {

/// From the glyph's middle to its rim, and around it.
constexpr int Half = 7, Margin = 3;
/// Seen on light boards and on the dark floor between them.
const QColor GlyphColor(200, 0, 110), WordColor(255, 255, 255), WordGround(40, 40, 40, 220);

void PaintGlyph(QPainter& painter, SnapKind kind, const QPoint& middle) {
    const QRect square(middle.x() - Half, middle.y() - Half, 2 * Half, 2 * Half);
    switch (kind) {
        case SnapKind::End:
            return painter.drawRect(square);
        case SnapKind::Middle:
            painter.drawPolygon(
                QPolygon({square.bottomLeft(), square.bottomRight(), QPoint(middle.x(), square.top())}));
            return;
        case SnapKind::Centre:
            return painter.drawEllipse(square);
        case SnapKind::Intersection:
            painter.drawLine(square.topLeft(), square.bottomRight());
            return painter.drawLine(square.bottomLeft(), square.topRight());
        case SnapKind::Perpendicular:
            painter.drawPolyline(QPolygon({square.topLeft(), square.bottomLeft(), square.bottomRight()}));
            painter.drawPolyline(
                QPolygon({QPoint(square.left(), middle.y()), middle, QPoint(middle.x(), square.bottom())}));
            return;
        case SnapKind::Face:
            painter.drawPolygon(
                QPolygon({QPoint(middle.x(), square.top()), QPoint(square.right(), middle.y()),
                          QPoint(middle.x(), square.bottom()), QPoint(square.left(), middle.y())}));
            return;
        case SnapKind::Free:
            painter.drawLine(QPoint(square.left(), middle.y()), QPoint(square.right(), middle.y()));
            return painter.drawLine(QPoint(middle.x(), square.top()), QPoint(middle.x(), square.bottom()));
    }
}

}  // namespace

SnapMarker::SnapMarker(QWidget& view) : QWidget(&view) {
    setObjectName("snapMarker");
    // The mouse belongs to the picture below.
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void SnapMarker::Show(SnapKind kind, const QPoint& place) {
    mKind = kind;
    // What screen readers say, and tests read.
    setAccessibleName(ToQt(WordsOf(kind)));
    const QSize word = fontMetrics().size(Qt::TextSingleLine, accessibleName());
    const int glyph = 2 * (Half + Margin);
    setGeometry(place.x() - Half - Margin, place.y() - Half - Margin, glyph + word.width() + 3 * Margin,
                std::max(glyph, word.height() + 2 * Margin));
    show();
    update();
}

void SnapMarker::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(GlyphColor, 2));
    PaintGlyph(painter, mKind, {Half + Margin, Half + Margin});
    const QRect word(2 * (Half + Margin), 0, width() - 2 * (Half + Margin),
                     fontMetrics().height() + 2 * Margin);
    painter.fillRect(word, WordGround);
    painter.setPen(WordColor);
    painter.drawText(word, Qt::AlignCenter, accessibleName());
}

}  // namespace brenvik::desktop
