// The settings dialog: the values of the settings table that a user may change.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "forms/form.h"
#include "settings/seen_values.h"
#include "settings/setting_names.h"

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
    /// What the controls say: each setting of the dialog with its text, blank for a scale that none is on
    /// for.
    struct Choice {
        SettingName name;
        std::string text;
    };
    std::vector<Choice> Choices() const;
    /// Writes what was changed in this dialog. Changes of another program stay, except to values changed here
    /// as well: these are overwritten, and a message box reports them.
    void Apply();

    SeenValues mSeen;
    TabStripControl* mTabStrip1 = nullptr;
    std::array<CheckControl*, 4> mScaleOptions{};
};

}  // namespace brenvik
