// A dialog as a plain model: named controls, a size and a place, and what happens when it is loaded,
// asked to close, and unloaded. A dialog platform shows it; code and journals drive it the same way.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "forms/control.h"

namespace brenvik {

/// Mouse pointers by the numbers that the forms' toolkit gives them.
enum class MousePointer { Normal = 0, Hourglass = 11 };

class Form {
  public:
    Form(std::string name, std::string caption);
    virtual ~Form() = default;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    const std::string& Name() const { return mFormName; }

    std::string caption;
    /// Place and size in twips (1440 to the inch).
    double left = 0, top = 0, width = 0, height = 0;
    bool minimized = false;
    MousePointer mousePointer = MousePointer::Normal;

    bool Loaded() const { return mLoaded; }
    /// Runs `OnLoad` unless the form is loaded already. From the second time on, the form and its controls
    /// go back to their design first. A failure of `OnLoad` leaves the form unloaded.
    void Load();
    /// The user's wish to close: `OnQueryClose` may refuse it. Then the form unloads.
    /// Returns whether the form is unloaded.
    bool RequestClose();
    /// Unloads without asking: runs `OnUnload`, and a modal call that shows the form returns. The controls
    /// keep what they show until the next load. A failure of `OnUnload` reaches the caller when the form
    /// is unloaded.
    void Unload();
    /// For the platform that shows the form: it has been unloaded.
    std::function<void()> onUnloaded;

    /// All controls in the order in which they were made; the tab order follows it.
    const std::vector<std::unique_ptr<Control>>& Controls() const { return mControls; }
    /// The control of this name, compared without regard to case, or null. "tbMain.SORT" finds "tbMain".
    Control* Find(std::string_view controlName) const;
    /// The same for controls that must be there: a missing one, or one of another kind, is a defect.
    template <class T>
    T& Get(std::string_view controlName) const;

    /// The size or minimised state changed.
    virtual void OnResize() {}

  protected:
    virtual void OnLoad() {}
    virtual bool OnQueryClose() { return true; }
    virtual void OnUnload() {}

    template <class T, class... Args>
    T& Add(Args&&... args) {
        auto owned = std::make_unique<T>(std::forward<Args>(args)...);
        T& control = *owned;
        Adopt(std::move(owned));
        return control;
    }

  private:
    void Adopt(std::unique_ptr<Control> control);
    [[noreturn]] void MissingControl(std::string_view controlName) const;

    struct Design {
        std::string caption;
        double left = 0, top = 0, width = 0, height = 0;
    };
    void BeginAsDesigned();

    std::string mFormName;
    std::vector<std::unique_ptr<Control>> mControls;
    std::optional<Design> mDesign;
    bool mLoaded = false;
    bool mUnloading = false;
};

template <class T>
T& Form::Get(std::string_view controlName) const {
    if (auto* control = dynamic_cast<T*>(Find(controlName))) return *control;
    MissingControl(controlName);
}

}  // namespace brenvik
