// The controls of the choice dialog and its two ways out.
#include "settings/frm_choice.h"

#include <utility>

#include "base/number_text.h"
#include "base/skip.h"
#include "session/message.h"
#include "session/module_state.h"
#include "session/ports/dialog_port.h"
#include "session/session.h"
#include "settings/frm_choicetherm.h"

namespace brenvik {

namespace {

constexpr std::string_view Statement =
    "It is possible that one of your bits may work for this task. If you are sure that one will work, you "
    "may "
    "select the bit and continue. Otherwise, you should skip this part and adjust your material library.";

constexpr std::string_view RouteCaption = "Use this bit and route path";
constexpr std::string_view PocketCaption = "Use this bit and pocket path";

std::string BitLabelName(std::size_t tool) { return "lblBit" + std::to_string(tool + 1); }

}  // namespace

frmChoice::frmChoice(std::string name) : Form(std::move(name), "Router Bit Choices") {
    width = 7200;
    height = 5400;
    Add<Control>(ControlKind::Label, "lblStatement", std::string(Statement));
    int number = 0;
    for (std::size_t tool = 0; tool < MaterialToolCount; ++tool) {
        Add<Control>(ControlKind::Label, BitLabelName(tool));
        for (const std::string_view optionCaption : {RouteCaption, PocketCaption}) {
            auto& option = Add<CheckControl>(ControlKind::OptionButton, "Option" + std::to_string(number + 1),
                                             std::string(optionCaption), "bit");
            option.onClick = [this] { OfferAccepting(); };
            mOptions[static_cast<std::size_t>(number)] = &option;
            ++number;
        }
    }
    mCmdAccept = &Add<Control>(ControlKind::Button, "cmdAccept", "Accept and use select bit");
    mCmdAccept->onClick = [this] { ShowAndResume(ShowFailure, [this] { Accept(); }); };
    Add<Control>(ControlKind::Button, "cmdExit", "Exit and skip this part").onClick = [this] { Exit(); };
}

void frmChoice::Ask(BitChoice& partChoice, const MaterialRecord& partMaterial) {
    mChoice = &partChoice;
    mMaterial = &partMaterial;
    ThePlatform().dialogs->ShowModal(*this);
    mChoice = nullptr;
    mMaterial = nullptr;
}

int frmChoice::ChosenOption() const {
    for (std::size_t place = 0; place < mOptions.size(); ++place)
        if (mOptions[place]->Value() == 1) return static_cast<int>(place) + 1;
    return 0;
}

void frmChoice::OnLoad() {
    for (std::size_t tool = 0; mChoice != nullptr && tool < MaterialToolCount; ++tool)
        Get<Control>(BitLabelName(tool))
            .SetText(NumberToText(mChoice->SavedToolDiameters[tool]) + " Diameter Tool");
    for (std::size_t place = 0; mMaterial != nullptr && place < mOptions.size(); ++place) {
        BitChoice trial;
        mOptions[place]->enabled = TakeOption(trial, *mMaterial, static_cast<int>(place) + 1);
    }
    OfferAccepting();
}

/// With no bit chosen there is nothing to accept: the part would go on with the tool of another path.
void frmChoice::OfferAccepting() { mCmdAccept->enabled = ChosenOption() != 0; }

void frmChoice::Accept() {
    const int option = ChosenOption();
    if (mChoice != nullptr && TakeOption(*mChoice, *mMaterial, option)) {
        mChoice->RouteSkip = false;
        OnAccepted(option);
    }
    Unload();
}

void frmChoice::Exit() {
    if (mChoice != nullptr) mChoice->RouteSkip = true;
    Unload();
}

void AskForBit(BitChoice& choice, const MaterialRecord& material, ChoiceDialog dialog) {
    for (std::size_t tool = 0; tool < MaterialToolCount; ++tool)
        choice.SavedToolDiameters[tool] = material.tools[tool].diameter;
    choice.RouteSkip = true;
    switch (dialog) {
        case ChoiceDialog::Plain:
            return StateOf<frmChoice>().Ask(choice, material);
        case ChoiceDialog::WithStandingAnswer:
            return StateOf<frmChoicetherm>().Ask(choice, material);
    }
}

}  // namespace brenvik
