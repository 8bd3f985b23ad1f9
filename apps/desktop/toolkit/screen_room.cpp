// The screen that the window is on, without what panels of the desktop take of it.
#include "toolkit/screen_room.h"

#include <QScreen>
#include <QStyle>
#include <QWidget>

namespace brenvik::desktop {

QRect RoomFor(const QWidget& window) {
    const QScreen* const screen = window.screen();
    if (screen == nullptr) return {0, 0, 1280, 1024};
    const int titleBar = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    return screen->availableGeometry().adjusted(0, titleBar, 0, 0);
}

}  // namespace brenvik::desktop
