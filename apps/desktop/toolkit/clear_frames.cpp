// The style below derives its frames from the window's colour, darker: on a dark window that is next to
// nothing.
#include "toolkit/clear_frames.h"

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace brenvik::desktop {

namespace {

/// Below it a ground counts as dark, of 255.
constexpr int Dark = 128;

QColor FrameOn(const QColor& ground, const QColor& text) {
    // More text than ground: a thin line needs it.
    constexpr int textShare = 2, groundShare = 1, shares = textShare + groundShare;
    return {(text.red() * textShare + ground.red() * groundShare) / shares,
            (text.green() * textShare + ground.green() * groundShare) / shares,
            (text.blue() * textShare + ground.blue() * groundShare) / shares};
}

}  // namespace

ClearFrames::ClearFrames() : QProxyStyle(QStyleFactory::create("Fusion")) {}

void ClearFrames::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool isBox = element == PE_IndicatorCheckBox;
    if (!isBox && element != PE_IndicatorRadioButton) return;
    const QColor ground = option->palette.color(QPalette::Window);
    if (ground.lightness() >= Dark) return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, !isBox);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(FrameOn(ground, option->palette.color(QPalette::WindowText)));
    const QRectF frame = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (isBox)
        painter->drawRect(frame);
    else
        painter->drawEllipse(frame);
    painter->restore();
}

}  // namespace brenvik::desktop
