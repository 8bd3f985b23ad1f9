// The open drawings as tabs above the picture.
#pragma once

#include <QTabBar>
#include <functional>
#include <vector>

namespace brenvik::desktop {

class DrawingTabs : public QTabBar {
  public:
    struct Tab {
        QString caption, place;
    };
    /// `mayTurn` says whether a user may choose and close tabs now.
    explicit DrawingTabs(std::function<bool()> mayTurn);
    /// From left to right; `front` is -1 where there are none.
    void Show(const std::vector<Tab>& tabs, int front);
    /// By the user.
    std::function<void(int tab)> onChosen, onCloseWished;

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    std::function<bool()> mMayTurn;
    int mFront = -1, mPressed = -1;
};

}  // namespace brenvik::desktop
