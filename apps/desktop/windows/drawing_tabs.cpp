// A tab bar that shows what it is told and asks for what the user wishes.
#include "windows/drawing_tabs.h"

#include <QMouseEvent>
#include <QSignalBlocker>
#include <utility>

namespace brenvik::desktop {

DrawingTabs::DrawingTabs(std::function<bool()> mayTurn) : mMayTurn(std::move(mayTurn)) {
    setObjectName("drawings");
    setDocumentMode(true);
    setExpanding(false);
    setElideMode(Qt::ElideMiddle);
    setTabsClosable(true);
    // A single drawing has its name in the window's title.
    setAutoHide(true);
    connect(this, &QTabBar::currentChanged, this, [this](int tab) {
        if (tab == mFront) return;
        if (tab >= 0 && mMayTurn()) return onChosen(tab);
        const QSignalBlocker quiet(this);
        setCurrentIndex(mFront);
    });
    connect(this, &QTabBar::tabCloseRequested, this, [this](int tab) {
        if (mMayTurn()) onCloseWished(tab);
    });
}

void DrawingTabs::Show(const std::vector<Tab>& tabs, int front) {
    const QSignalBlocker quiet(this);
    const int wanted = static_cast<int>(tabs.size());
    while (count() > wanted) removeTab(count() - 1);
    while (count() < wanted) addTab(QString());
    for (int tab = 0; tab < wanted; ++tab) {
        const Tab& shown = tabs[static_cast<std::size_t>(tab)];
        // A file's name has no key of its own.
        setTabText(tab, QString(shown.caption).replace("&", "&&"));
        setTabToolTip(tab, shown.place);
    }
    mFront = front;
    setCurrentIndex(front);
}

void DrawingTabs::mousePressEvent(QMouseEvent* event) {
    mPressed = event->button() == Qt::MiddleButton ? tabAt(event->position().toPoint()) : -1;
    if (mPressed < 0) QTabBar::mousePressEvent(event);
}

void DrawingTabs::mouseReleaseEvent(QMouseEvent* event) {
    const int pressed = std::exchange(mPressed, -1);
    if (pressed < 0) return QTabBar::mouseReleaseEvent(event);
    if (tabAt(event->position().toPoint()) == pressed && mMayTurn()) onCloseWished(pressed);
}

}  // namespace brenvik::desktop
