// The program's style: tick boxes and option buttons that are seen on dark colours without a tick too.
#pragma once

#include <QProxyStyle>

namespace brenvik::desktop {

class ClearFrames : public QProxyStyle {
  public:
    ClearFrames();
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

}  // namespace brenvik::desktop
