// The dialog that asks for a router bit when none fits: the three bits of the material, each as a route and
// as a pocket, and the way out of the part.
#pragma once

#include <array>
#include <string>

#include "forms/form.h"
#include "settings/bit_choice.h"

namespace brenvik {

class frmChoice : public Form {
  public:
    frmChoice() : frmChoice("frmChoice") {}

    /// Shows the dialog modally for a part's material. The user's choice lands in `choice`; both must outlive
    /// the call.
    void Ask(BitChoice& choice, const MaterialRecord& material);
    /// The number of the option that is on, or 0.
    int ChosenOption() const;

  protected:
    explicit frmChoice(std::string name);
    void OnLoad() override;
    /// The user accepted this option.
    virtual void OnAccepted(int) {}

  private:
    void OfferAccepting();
    void Accept();
    void Exit();

    std::array<CheckControl*, ChoiceOptionCount> mOptions{};
    Control* mCmdAccept = nullptr;
    BitChoice* mChoice = nullptr;
    const MaterialRecord* mMaterial = nullptr;
};

/// Copies the material's diameters, raises `RouteSkip` and asks. It is false afterwards if the user accepted
/// a bit, which is the selected tool then.
void AskForBit(BitChoice& choice, const MaterialRecord& material, ChoiceDialog dialog);

}  // namespace brenvik
