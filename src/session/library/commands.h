// The work of the public methods that belongs to no other module.
#pragma once

namespace brenvik {

class AcadApplication;

namespace commands {

/// The grid as a modal dialog, then the run of the CNC target that was chosen in it.
void Show(AcadApplication& app);
/// The settings as a modal dialog.
void ShowSettings();

}  // namespace commands

}  // namespace brenvik
