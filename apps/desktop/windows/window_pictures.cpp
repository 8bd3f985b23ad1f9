// A window has to have been through its events before it looks as it will.
#include "windows/window_pictures.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QPixmap>

#include "base/failure.h"

#include "toolkit/qt_text.h"
#include "windows/main_window.h"

namespace brenvik::desktop {

namespace {

/// How long windows take to settle, and how long the shapes of a drawing may take to come, in milliseconds.
constexpr int Settling = 1500, Patience = 120000;
/// The toolkit's word for the smallest file.
constexpr int Smallest = 0;

bool ShowsAll(const QWidget& window) {
    const auto* const main = dynamic_cast<const MainWindow*>(&window);
    return main == nullptr || main->View() == nullptr || main->View()->Ready();
}

}  // namespace

void WindowPictures::Take(QWidget& window, const std::string& name) {
    QApplication::processEvents();
    if (mFolder.empty()) return;
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < Settling || (!ShowsAll(window) && timer.elapsed() < Patience))
        QApplication::processEvents(QEventLoop::AllEvents, 50);
    const int number = ++mCount[name];
    const std::string file = mFolder + "/" + name + "-" + std::to_string(number) + ".png";
    if (!QDir().mkpath(ToQt(mFolder)) || !window.grab().save(ToQt(file), "PNG", Smallest))
        throw Failure(0, "pictures",
                      file + ": expected a place for the picture of a window; it can't be written");
}

}  // namespace brenvik::desktop
