// A form as a real window: made from its layout, each widget bound to its control by the control's name.
#pragma once

#include <QDialog>
#include <memory>
#include <vector>

#include "form_windows/form_layouts.h"
#include "forms/form.h"

class QBoxLayout;
class QMenuBar;

namespace brenvik::desktop {

class ControlBinding;
class FormDesk;

class FormWindow : public QDialog {
  public:
    FormWindow(Form& form, FormDesk& desk, QWidget* parent);
    ~FormWindow() override;

    Form& Shown() const { return mForm; }
    /// Brings the widgets up to what the controls say.
    void ShowModel();
    /// Of a control that the layout places, or null.
    ControlBinding* BindingOf(const Control& control) const;
    /// Puts the window where the form wants it, as far as the screen has room.
    void PlaceAsForm();
    /// With all controls in sight, or the screen's size where that is less: then the window scrolls.
    QSize minimumSizeHint() const override;

  protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

  private:
    QWidget* MakeControl(const Place& place);
    QWidget* MakeBox(const Place& place);
    void Fill(QBoxLayout& layout, const std::vector<Place>& places);
    void Add(QBoxLayout& layout, const Place& place);
    void AddTable(QBoxLayout& layout, const Place& place);
    QMenuBar* MakeMenus(const std::vector<MenuPlace>& menus);
    void TakeKeys(const FormLayout& layout);
    void TellPlace();

    Form& mForm;
    FormDesk& mDesk;
    QWidget* mContent = nullptr;
    QMenuBar* mMenus = nullptr;
    std::vector<std::unique_ptr<ControlBinding>> mBindings;
    bool mPlaced = false;
    QRect mAsPlaced;
};

}  // namespace brenvik::desktop
