// The choice dialog of the targets C2C, THERM and ABC: its answer can stand for the rest of a run.
#pragma once

#include "settings/frm_choice.h"

namespace brenvik {

class frmChoicetherm : public frmChoice {
  public:
    frmChoicetherm();

  protected:
    /// Keeps the answer if the box is ticked.
    void OnAccepted(int option) override;

  private:
    CheckControl& mSkip;
};

}  // namespace brenvik
