// The one control that this dialog has more.
#include "settings/frm_choicetherm.h"
#include "settings/standing_answer.h"

#include <string>
#include <string_view>

namespace brenvik {

namespace {

constexpr std::string_view SkipCaption =
    "Do not prompt me again during this feature recognition session and use this selected bit and operation "
    "for all of the remaining parts. Be careful using this setting. Only use this setting if you are 100% "
    "sure that all of your parts will still be cut correctly with this bit when the shortest line is too "
    "small.";

}  // namespace

frmChoicetherm::frmChoicetherm()
    : frmChoice("frmChoicetherm"),
      mSkip(Add<CheckControl>(ControlKind::CheckBox, "skip", std::string(SkipCaption))) {}

void frmChoicetherm::OnAccepted(int option) {
    if (mSkip.Value() == 1) KeepStandingAnswer(option);
}

}  // namespace brenvik
