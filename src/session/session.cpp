// Loading and unloading of the library, and the values that live in between.
#include "session/session.h"

#include <functional>
#include <optional>
#include <vector>

#include "base/invariant.h"
#include "forms/form.h"
#include "session/module_state.h"
#include "session/ports/database_port.h"

namespace brenvik {

namespace {

struct LoadedLibrary {
    std::optional<Platform> platform;
    std::unique_ptr<Session> session;
};

LoadedLibrary& Library() {
    static LoadedLibrary library;
    return library;
}

std::vector<std::function<void()>>& Resets() {
    static std::vector<std::function<void()>> resets;
    return resets;
}

}  // namespace

Session::Session() = default;

Session::~Session() = default;

Session& TheSession() {
    LoadedLibrary& library = Library();
    if (!library.session) library.session = std::make_unique<Session>();
    return *library.session;
}

Platform& ThePlatform() {
    LoadedLibrary& library = Library();
    Invariant(library.platform.has_value(), "the library is loaded before its platform is used");
    return *library.platform;
}

void StartSession(const Platform& platform) {
    Invariant(platform.dialogs != nullptr && platform.settings != nullptr && platform.database != nullptr &&
                  platform.files != nullptr && platform.measuring != nullptr,
              "a platform has all the ports that are required");
    Library().platform = platform;
    Library().session = std::make_unique<Session>();
}

void EndSession() {
    LoadedLibrary& library = Library();
    // The forms go first: their data controls stand on connections of their own.
    if (library.session) library.session->GridForm.reset();
    ResetModules();
    library.session.reset();
    library.platform.reset();
}

void AtUnload(std::function<void()> reset) { Resets().push_back(std::move(reset)); }

void ResetModules() {
    const std::vector<std::function<void()>>& resets = Resets();
    for (std::size_t left = resets.size(); left > 0; --left) resets[left - 1]();
}

}  // namespace brenvik
