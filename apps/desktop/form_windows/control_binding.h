// One control and its widget: what the control says is shown, what the user does reaches the control.
#pragma once

#include <QString>
#include <QWidget>
#include <memory>
#include <string>
#include <string_view>

#include "forms/form.h"

namespace brenvik::desktop {

class FormDesk;

class ControlBinding {
  public:
    ControlBinding(Control& control, QWidget& widget) : mControl(control), mWidget(widget) {}
    virtual ~ControlBinding() = default;
    ControlBinding(const ControlBinding&) = delete;
    ControlBinding& operator=(const ControlBinding&) = delete;

    Control& Model() const { return mControl; }
    QWidget& Widget() const { return mWidget; }
    /// Brings the widget up to the control, without an event.
    virtual void Show();

    // What a user's hand does to the widget, for a journal that is played on it.

    virtual void Press() {}
    virtual void PressKey(std::string_view) {}
    virtual void Type(std::string_view) {}
    virtual void Pick(int) {}
    virtual void Unpick(int) {}
    virtual void DoubleClick() {}

  private:
    Control& mControl;
    QWidget& mWidget;
};

/// Makes the widget of a control and binds the two.
std::unique_ptr<ControlBinding> BindControl(Control& control, FormDesk& desk, QWidget* parent);

}  // namespace brenvik::desktop
