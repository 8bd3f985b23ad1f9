// The life of a form: made once, loaded and unloaded many times, each time from its design.
#include "forms/form.h"

#include <utility>

#include "base/invariant.h"
#include "base/letter_case.h"

namespace brenvik {

namespace {

/// Puts a flag back when the scope is left, by a failure too.
class FlagRaised {
  public:
    explicit FlagRaised(bool& raised) : mFlag(raised) { mFlag = true; }
    ~FlagRaised() { mFlag = false; }
    FlagRaised(const FlagRaised&) = delete;
    FlagRaised& operator=(const FlagRaised&) = delete;

  private:
    bool& mFlag;
};

}  // namespace

Form::Form(std::string name, std::string formCaption)
    : caption(std::move(formCaption)), mFormName(std::move(name)) {}

void Form::BeginAsDesigned() {
    if (!mDesign) {
        mDesign = Design{caption, left, top, width, height};
        for (const auto& control : mControls) control->KeepDesign();
        return;
    }
    caption = mDesign->caption;
    left = mDesign->left;
    top = mDesign->top;
    width = mDesign->width;
    height = mDesign->height;
    minimized = false;
    mousePointer = MousePointer::Normal;
    for (const auto& control : mControls) control->RestoreDesign();
}

void Form::Load() {
    if (mLoaded) return;
    BeginAsDesigned();
    mLoaded = true;
    try {
        OnLoad();
    } catch (...) {
        mLoaded = false;
        throw;
    }
}

bool Form::RequestClose() {
    if (!mLoaded) return true;
    if (!OnQueryClose()) return false;
    Unload();
    return !mLoaded;
}

void Form::Unload() {
    if (!mLoaded || mUnloading) return;
    const FlagRaised raised(mUnloading);
    const auto finish = [this] {
        mLoaded = false;
        if (onUnloaded) onUnloaded();
    };
    try {
        OnUnload();
    } catch (...) {
        finish();
        throw;
    }
    finish();
}

Control* Form::Find(std::string_view controlName) const {
    const std::string_view ownName = controlName.substr(0, controlName.find('.'));
    for (const auto& control : mControls)
        if (EqualsIgnoreCase(control->Name(), ownName)) return control.get();
    return nullptr;
}

void Form::Adopt(std::unique_ptr<Control> control) {
    Invariant(Find(control->Name()) == nullptr, "control names of a form differ");
    if (auto* check = dynamic_cast<CheckControl*>(control.get());
        check && check->Kind() == ControlKind::OptionButton) {
        check->excludeOthers = [this](CheckControl& chosen) {
            for (const auto& other : mControls) {
                auto* option = dynamic_cast<CheckControl*>(other.get());
                if (option && option != &chosen && option->Kind() == ControlKind::OptionButton &&
                    option->mGroup == chosen.mGroup)
                    option->mValue = 0;
            }
        };
    }
    mControls.push_back(std::move(control));
}

void Form::MissingControl(std::string_view controlName) const {
    InvariantBroken("form " + mFormName + " has a control " + std::string(controlName) +
                    " of the kind asked for");
}

}  // namespace brenvik
