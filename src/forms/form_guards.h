// What a form has to be left with, whatever ends the work on it.
#pragma once

#include "forms/form.h"

namespace brenvik {

/// The hourglass on a form for as long as something is under way.
class HourglassShown {
  public:
    explicit HourglassShown(Form& busyForm) : form(busyForm), before(form.mousePointer) {
        form.mousePointer = MousePointer::Hourglass;
    }
    ~HourglassShown() { form.mousePointer = before; }
    HourglassShown(const HourglassShown&) = delete;
    HourglassShown& operator=(const HourglassShown&) = delete;

  private:
    Form& form;
    MousePointer before;
};

/// Unloads a dialog that is worked by code, also when a failure leaves it.
class UnloadAtEnd {
  public:
    explicit UnloadAtEnd(Form& openForm) : form(openForm) {}
    ~UnloadAtEnd() { form.Unload(); }
    UnloadAtEnd(const UnloadAtEnd&) = delete;
    UnloadAtEnd& operator=(const UnloadAtEnd&) = delete;

  private:
    Form& form;
};

}  // namespace brenvik
