// What every call of a public method begins with.
#pragma once

namespace brenvik {

class AcadApplication;

/// Takes the application and its active document for the session, and the install folder with a trailing
/// backslash. Fails as the host does when no document is open.
void BeginCall(AcadApplication& app);
/// The install folder alone, for the call that has no application.
void TakeInstallFolder();

}  // namespace brenvik
