// Opened once, and never closed: the modeller keeps tables in its libraries until the program ends.
#include "drafting_host/document/files/step_door.h"

#include <dlfcn.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "drafting_host/document/geometry/host_failure.h"
#include "step_build.h"

namespace brenvik {

namespace {

/// The program's folder as the system knows it, under whatever name or link the program was started. Without
/// that knowledge the loader's own word for it, which a sanitizer's loader would take for its own folder.
std::string BesideTheProgram() {
    std::error_code unknown;
    const std::filesystem::path own = std::filesystem::read_symlink("/proc/self/exe", unknown);
    const std::filesystem::path folder = unknown ? "$ORIGIN" : own.parent_path();
    return (folder / step::ExchangeLibrary).string();
}

std::string ReasonOf(const char* told) { return told != nullptr ? told : "it has no entry"; }

Failure CantOpen(const std::string& reason) {
    return host_failure::NotPossible(std::string("STEP files can't be read or written: the library ") +
                                     step::ExchangeLibrary + " " + reason);
}

void RequireOwnBuild(void* library) {
    void* const build = dlsym(library, step::ExchangeBuildName);
    const std::string_view found =
        build != nullptr ? reinterpret_cast<step::ExchangeBuild>(build)() : "one that doesn't say which";
    if (found != step::StepBuild)
        throw CantOpen("beside the program is of another build (expected " + std::string(step::StepBuild) +
                       ", found " + std::string(found) + "); take both from the same build");
}

const step::StepExchange& Open() {
    void* const library = dlopen(BesideTheProgram().c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const entry = library != nullptr ? dlsym(library, step::ExchangeEntryName) : nullptr;
    if (entry == nullptr) throw CantOpen("was expected beside the program (" + ReasonOf(dlerror()) + ")");
    RequireOwnBuild(library);
    return *reinterpret_cast<step::ExchangeEntry>(entry)();
}

}  // namespace

const step::StepExchange& OpenedStepExchange() {
    static const step::StepExchange& exchange = Open();
    return exchange;
}

}  // namespace brenvik
