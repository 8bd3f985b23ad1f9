// The settings dialog: the values of the settings table that a user may change.
#pragma once

#include <array>

#include "forms/form.h"

namespace brenvik {

class frmSettings : public Form {
  public:
    frmSettings();

  protected:
    /// Reads each switch by the strict rule: one that holds no number fails with 13, and the dialog stays
    /// closed.
    void OnLoad() override;

  private:
    void AddMeasuringPage();
    void AddCncPage();
    void AddButtons();
    void SetRunEventCaption();
    void ShowTab();
    void Apply();

    TabStripControl* mTabStrip1 = nullptr;
    std::array<CheckControl*, 4> mScaleOptions{};
};

}  // namespace brenvik
