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
    explicit FlagRaised(bool& raised) : flag(raised) { flag = true; }
    ~FlagRaised() { flag = false; }
    FlagRaised(const FlagRaised&) = delete;
    FlagRaised& operator=(const FlagRaised&) = delete;

  private:
    bool& flag;
};

}  // namespace

Form::Form(std::string name, std::string formCaption)
    : caption(std::move(formCaption)), formName(std::move(name)) {}

void Form::BeginAsDesigned() {
    if (!design) {
        design = Design{caption, left, top, width, height};
        for (const auto& control : controls) control->KeepDesign();
        return;
    }
    caption = design->caption;
    left = design->left;
    top = design->top;
    width = design->width;
    height = design->height;
    minimized = false;
    mousePointer = MousePointer::Normal;
    for (const auto& control : controls) control->RestoreDesign();
}

void Form::Load() {
    if (loaded) return;
    BeginAsDesigned();
    loaded = true;
    try {
        OnLoad();
    } catch (...) {
        loaded = false;
        throw;
    }
}

bool Form::RequestClose() {
    if (!loaded) return true;
    if (!OnQueryClose()) return false;
    Unload();
    return !loaded;
}

void Form::Unload() {
    if (!loaded || unloading) return;
    const FlagRaised raised(unloading);
    const auto finish = [this] {
        loaded = false;
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
    for (const auto& control : controls)
        if (EqualsIgnoreCase(control->Name(), ownName)) return control.get();
    return nullptr;
}

void Form::Adopt(std::unique_ptr<Control> control) {
    Invariant(Find(control->Name()) == nullptr, "control names of a form differ");
    if (auto* check = dynamic_cast<CheckControl*>(control.get());
        check && check->Kind() == ControlKind::OptionButton) {
        check->excludeOthers = [this](CheckControl& chosen) {
            for (const auto& other : controls) {
                auto* option = dynamic_cast<CheckControl*>(other.get());
                if (option && option != &chosen && option->Kind() == ControlKind::OptionButton &&
                    option->group == chosen.group)
                    option->value = 0;
            }
        };
    }
    controls.push_back(std::move(control));
}

void Form::MissingControl(std::string_view controlName) const {
    InvariantBroken("form " + formName + " has a control " + std::string(controlName) +
                    " of the kind asked for");
}

}  // namespace brenvik
