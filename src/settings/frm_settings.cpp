// The controls of the settings dialog, made from the settings table, and its two ways out.
#include "settings/frm_settings.h"

#include <algorithm>
#include <string>

#include "base/invariant.h"
#include "base/numbers.h"
#include "base/quoted.h"
#include "session/message.h"
#include "settings/grid_layout.h"
#include "settings/settings_keys.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr std::string_view Advice =
    "Automatic updating will occur after the execution of these commands: Union, Slice, Intersect and "
    "Solidedit. The previous selection set will be reselected, automatically measured and the current "
    "measurements will be compared to the previous measurements of each solid. The ORIE letters of \"L\", "
    "\"W\" and \"T\" will be rearranged as necessary. You cannot see this process, but it takes time. The "
    "larger the previous selection set, the longer it will take. You should have this on most of the time. "
    "If you use BrenvikModeling to stretch your solids and this is not updating your ORIE letters for all "
    "you parts, then turn if off and type 33 when done stretching solids to update the ORIE letters. This is "
    "necessary due to a timing issue with ACAD and different PC platforms.";

constexpr SettingName ScaleName = setting::ExportScaleSetting;

const SettingEntry& EntryOfControl(std::string_view control) {
    const auto table = SettingTable();
    const auto found =
        std::ranges::find_if(table, [=](const SettingEntry& entry) { return entry.control == control; });
    Invariant(found != table.end(), "every control of the dialog has its setting");
    return *found;
}

}  // namespace

frmSettings::frmSettings() : Form("frmSettings", "Brenvik Settings") {
    width = 9600;
    height = 7200;
    Add<Control>(ControlKind::Label, "lblHeading", "Brenvik Settings");
    mTabStrip1 = &Add<TabStripControl>("TabStrip1", std::vector<std::string>{"Measuring", "CNC"});
    mTabStrip1->onClick = [this] { ShowTab(); };
    AddMeasuringPage();
    AddCncPage();
    AddButtons();
    ShowTab();
}

void frmSettings::AddMeasuringPage() {
    Add<Control>(ControlKind::Frame, "fraMeasuring");
    for (const char* name : {"chkWCS", "chkNoMeasure", "chkMeasureNonSolids", "chkRunEvent"})
        Add<CheckControl>(ControlKind::CheckBox, name, std::string(EntryOfControl(name).caption));
    Get<CheckControl>("chkRunEvent").onClick = [this] { SetRunEventCaption(); };
    Add<Control>(ControlKind::Label, "lblAdvice", std::string(Advice));
}

void frmSettings::AddCncPage() {
    Add<Control>(ControlKind::Frame, "FraCNC");
    for (int number = 1; number <= 12; ++number) {
        const std::string name = "Check" + std::to_string(number);
        Add<CheckControl>(ControlKind::CheckBox, name, std::string(EntryOfControl(name).caption));
    }
    for (std::size_t place = 0; place < mScaleOptions.size(); ++place)
        mScaleOptions[place] =
            &Add<CheckControl>(ControlKind::OptionButton, "Option" + std::to_string(place + 1),
                               std::string(ExportScaleCaptions()[place]), std::string(ScaleName));
    for (int number = 1; number <= 5; ++number) {
        const std::string name = "Text" + std::to_string(number);
        Add<Control>(ControlKind::TextBox, name);
        Add<Control>(ControlKind::Label, "lbl" + name, std::string(EntryOfControl(name).caption));
    }
}

void frmSettings::AddButtons() {
    Add<Control>(ControlKind::Button, "cmdApply", "Apply/Close").onClick = [this] { Apply(); };
    Add<Control>(ControlKind::Button, "cmdCancel", "Cancel").onClick = [this] { Unload(); };
    Add<Control>(ControlKind::Button, "cmdResetLayout", "Reset Grid Layout").onClick = ResetGridLayout;
}

void frmSettings::OnLoad() {
    mSeen.Forget();
    // Ahead of the controls: what changes in between was not seen, and is left alone.
    for (const SettingEntry& entry : SettingTable())
        if (!entry.control.empty() || entry.name == ScaleName.text)
            mSeen.NoteStored(entry.name, GetSettingText(SettingName(entry.name)));
    for (const SettingEntry& entry : SettingTable()) {
        if (entry.control.empty()) continue;
        if (entry.kind == SettingKind::Switch)
            Get<CheckControl>(entry.control)
                .SetValue(StrictNumberSetting(SettingName(entry.name)) == 1 ? 1 : 0);
        if (entry.kind == SettingKind::Number)
            Get<Control>(entry.control).SetText(GetSettingText(SettingName(entry.name)));
    }
    SetRunEventCaption();
    const double scale = NumberSetting(ScaleName);
    for (std::size_t place = 0; place < mScaleOptions.size(); ++place)
        if (scale == static_cast<double>(place + 1)) mScaleOptions[place]->SetValue(1);
    for (const Choice& choice : Choices()) mSeen.NoteShown(choice.name, choice.text);
}

void frmSettings::SetRunEventCaption() {
    auto& box = Get<CheckControl>("chkRunEvent");
    box.SetText(box.Value() == 1 ? RunEventOnCaption : RunEventOffCaption);
}

void frmSettings::ShowTab() {
    Get<Control>("fraMeasuring").visible = mTabStrip1->SelectedTab() == 0;
    Get<Control>("FraCNC").visible = mTabStrip1->SelectedTab() == 1;
}

std::vector<frmSettings::Choice> frmSettings::Choices() const {
    std::vector<Choice> choices;
    for (const SettingEntry& entry : SettingTable()) {
        if (entry.control.empty()) continue;
        if (entry.kind == SettingKind::Switch)
            choices.push_back(
                {SettingName(entry.name), Get<CheckControl>(entry.control).Value() == 1 ? "1" : "0"});
        if (entry.kind == SettingKind::Number)
            choices.push_back({SettingName(entry.name), Get<Control>(entry.control).Text()});
    }
    std::string scale;
    for (std::size_t place = 0; place < mScaleOptions.size(); ++place)
        if (mScaleOptions[place]->Value() == 1) scale = std::to_string(place + 1);
    choices.push_back({ScaleName, scale});
    return choices;
}

void frmSettings::Apply() {
    std::string told;
    ChangeSettingsTogether([&] {
        for (const Choice& choice : Choices()) {
            const std::string stored = GetSettingText(choice.name);
            const ValueChange change = mSeen.ChangeOf(choice.name, stored, choice.text);
            if (change == ValueChange::None || change == ValueChange::Elsewhere) continue;
            if (change == ValueChange::Both)
                told += "\r\n" + std::string(choice.name.text) + " was " + InQuotes(stored) +
                        " there, and is " + InQuotes(choice.text) + " now";
            SaveSettingText(choice.name, choice.text);
        }
    });
    if (!told.empty())
        ShowMessage(
            "Settings that you have changed have been changed elsewhere since this dialog was opened. "
            "Yours were taken:" +
                told,
            {}, MessageIcon::Exclamation);
    Unload();
}

}  // namespace brenvik
