// From a call to the session's application, document and folder.
#include "session/call.h"

#include <string>
#include <utility>

#include "session/ports/files_port.h"
#include "session/ports/host_interface.h"
#include "session/session.h"
#include "session/session_drawing.h"

namespace brenvik {

void TakeInstallFolder() {
    std::string folder = ThePlatform().files->InstallFolder();
    if (!folder.ends_with('\\')) folder += '\\';
    TheSession().InstallFolder = std::move(folder);
}

void BeginCall(AcadApplication& app) {
    Session& session = TheSession();
    session.AcadApp = &app;
    // The document of the call before may have been closed since.
    GoToDrawing(nullptr);
    GoToDrawing(app.ActiveDocument());
    TakeInstallFolder();
}

}  // namespace brenvik
