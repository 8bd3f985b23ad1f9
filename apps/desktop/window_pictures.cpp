// A window has to have been through its events before it looks as it will.
#include "window_pictures.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPixmap>

#include "control_binding.h"

namespace brenvik::desktop {

namespace {

/// How long the shapes of a drawing may take to come, in milliseconds.
constexpr int Patience = 1500;

}  // namespace

void WindowPictures::Take(QWidget& window, const std::string& name) {
    QApplication::processEvents();
    if (mFolder.empty()) return;
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < Patience) QApplication::processEvents(QEventLoop::AllEvents, 50);
    const int number = ++mCount[name];
    window.grab().save(ToQt(mFolder + "/" + name + "-" + std::to_string(number) + ".png"));
}

}  // namespace brenvik::desktop
