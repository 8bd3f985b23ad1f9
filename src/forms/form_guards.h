// What a form has to be left with, whatever ends the work on it.
#pragma once

#include "forms/form.h"

namespace brenvik {

/// The hourglass on a form for as long as something is under way.
class HourglassShown {
  public:
    explicit HourglassShown(Form& busyForm) : mForm(busyForm), mBefore(mForm.mousePointer) {
        mForm.mousePointer = MousePointer::Hourglass;
    }
    ~HourglassShown() { mForm.mousePointer = mBefore; }
    HourglassShown(const HourglassShown&) = delete;
    HourglassShown& operator=(const HourglassShown&) = delete;

  private:
    Form& mForm;
    MousePointer mBefore;
};

/// Unloads a dialog that is worked by code, also when a failure leaves it.
class UnloadAtEnd {
  public:
    explicit UnloadAtEnd(Form& openForm) : mForm(openForm) {}
    ~UnloadAtEnd() { mForm.Unload(); }
    UnloadAtEnd(const UnloadAtEnd&) = delete;
    UnloadAtEnd& operator=(const UnloadAtEnd&) = delete;

  private:
    Form& mForm;
};

}  // namespace brenvik
