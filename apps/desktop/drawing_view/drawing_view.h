// What the main window wants of a picture of the drawing, whoever makes it.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QWidget;

namespace brenvik {
class HostDocument;
}

namespace brenvik::desktop {

enum class ViewLook { Shaded, Wireframe };
enum class ViewSide { Isometric, Top, Bottom, Front, Back, Left, Right };

class DrawingView {
  public:
    virtual ~DrawingView() = default;
    virtual QWidget& Widget() = 0;
    /// Shows the solids of model space as they are now; null shows nothing. What has not changed since the
    /// last call costs nothing. Another drawing is looked at as it was when it was shown last.
    virtual void Show(HostDocument* document) = 0;
    /// The drawing is closed, or about to be: what is kept of its picture goes.
    virtual void Forget(const HostDocument& document) = 0;
    virtual void Mark(const std::vector<std::string>& handles) = 0;
    virtual void SetLook(ViewLook look) = 0;
    virtual void LookFrom(ViewSide side) = 0;
    virtual void Fit() = 0;
    /// The user has picked these, by click or by window.
    std::function<void(const std::vector<std::string>& handles)> onPicked;
    /// Called when no picture can be shown, with the reason.
    std::function<void(const std::string& reason)> onDead;
};

/// Null if the display can't carry one; then `reason` says why, for people.
std::unique_ptr<DrawingView> MakeModellerView(std::string& reason);

}  // namespace brenvik::desktop
