// The work of the public methods that belongs to no other module, and what every call begins with.
#pragma once

namespace brenvik {

class AcadApplication;

/// Takes the application and its active document for the session, and the install folder with a trailing
/// backslash. Fails as the host does when no document is open.
void BeginCall(AcadApplication& app);
/// The install folder alone, for the call that has no application.
void TakeInstallFolder();

namespace commands {

/// The grid as a modal dialog, then the run of the CNC target that was chosen in it.
void Show(AcadApplication& app);
/// The settings as a modal dialog.
void ShowSettings();

}  // namespace commands

}  // namespace brenvik
