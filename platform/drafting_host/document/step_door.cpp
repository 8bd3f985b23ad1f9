// Opened once, and never closed: the modeller keeps tables in its libraries until the program ends.
#include "drafting_host/document/step_door.h"

#include <dlfcn.h>

#include <string>
#include <string_view>

#include "drafting_host/document/host_failure.h"
#include "step_build.h"

namespace brenvik {

namespace {

/// The system puts the program's own folder in its place.
constexpr std::string_view ProgramFolder = "$ORIGIN/";

std::string ReasonOf(const char* told) {
    std::string_view reason = told != nullptr ? told : "it has no entry";
    if (reason.starts_with(ProgramFolder)) reason.remove_prefix(ProgramFolder.size());
    return std::string(reason);
}

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
    const std::string place = std::string(ProgramFolder) + step::ExchangeLibrary;
    void* const library = dlopen(place.c_str(), RTLD_NOW | RTLD_LOCAL);
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
