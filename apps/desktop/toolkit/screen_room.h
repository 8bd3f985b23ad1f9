// The room that a screen has for a window: at twice the size of everything, a small one has little.
#pragma once

#include <QRect>

class QWidget;

namespace brenvik::desktop {

/// Where the window may lie, below its title bar.
QRect RoomFor(const QWidget& window);

}  // namespace brenvik::desktop
