#include "settings/standing_answer.h"

#include <string>
#include <string_view>

#include "base/skip.h"
#include "session/module_state.h"
#include "session/ports/files_port.h"
#include "session/session.h"
#include "settings/bit_choice.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr SettingName StandingSwitch = setting::Skipandcontinue,
                      StandingOption = setting::skipandcontinuevalue;

/// The answer of the run that goes on.
struct StandingAnswers {
    bool inRun = false;
    StandingAnswer answer;
};

int StoredOption() {
    const double stored = NumberSetting(StandingOption);
    for (int option = 1; option <= ChoiceOptionCount; ++option)
        if (stored == option) return option;
    return 0;
}

/// What one of several programs in a home writes to the settings may be meant for another one's parts.
bool SettingsAreOwn() { return ThePlatform().files->WorkFolder().empty(); }

void StoreStandingAnswer(int option, std::string_view isOn) {
    ChangeSettingsTogether([&] {
        SaveSettingText(StandingOption, std::to_string(option));
        SaveSettingText(StandingSwitch, isOn);
    });
}

}  // namespace

StandingAnswer CurrentStandingAnswer() {
    const StandingAnswers& ofRun = StateOf<StandingAnswers>();
    return ofRun.inRun ? ofRun.answer : StandingAnswer{SwitchIsOn(StandingSwitch), StoredOption()};
}

StandingAnswersOfRun::StandingAnswersOfRun() {
    StandingAnswers answers{true, {}};
    Skip([&] {
        if (SwitchIsOn(StandingSwitch) && SettingsAreOwn()) answers = {true, {true, StoredOption()}};
    });
    StateOf<StandingAnswers>() = answers;
}

StandingAnswersOfRun::~StandingAnswersOfRun() { StateOf<StandingAnswers>() = {}; }

void KeepStandingAnswer(int option) {
    StandingAnswers& answers = StateOf<StandingAnswers>();
    if (answers.inRun) {
        answers = {true, {true, option}};
        if (!SettingsAreOwn()) return;
    }
    StoreStandingAnswer(option, "1");
}

void ForgetStandingAnswer() { StoreStandingAnswer(0, "0"); }

}  // namespace brenvik
