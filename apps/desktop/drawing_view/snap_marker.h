// The glyph and the word at the point that a click would take.
#pragma once

#include <QWidget>

#include "snaps/snap.h"

namespace brenvik::desktop {

class SnapMarker : public QWidget {
  public:
    explicit SnapMarker(QWidget& view);
    /// With the glyph's middle at `place` of the view.
    void Show(SnapKind kind, const QPoint& place);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    SnapKind mKind = SnapKind::Free;
};

}  // namespace brenvik::desktop
