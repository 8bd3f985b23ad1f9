// Opened once, and never closed: the modeller keeps tables in its libraries until the program ends.
#include "drafting_host/document/step_door.h"

#include <dlfcn.h>

#include <string>
#include <string_view>

#include "drafting_host/document/host_failure.h"

namespace brenvik {

namespace {

/// The system puts the program's own folder in its place.
constexpr std::string_view ProgramFolder = "$ORIGIN/";

std::string ReasonOf(const char* told) {
    std::string_view reason = told != nullptr ? told : "it has no entry";
    if (reason.starts_with(ProgramFolder)) reason.remove_prefix(ProgramFolder.size());
    return std::string(reason);
}

const step::StepExchange& Open() {
    const std::string place = std::string(ProgramFolder) + step::ExchangeLibrary;
    void* const library = dlopen(place.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const entry = library != nullptr ? dlsym(library, step::ExchangeEntryName) : nullptr;
    if (entry == nullptr)
        throw host_failure::NotPossible(std::string("STEP files can't be read or written: the library ") +
                                        step::ExchangeLibrary + " was expected beside the program (" +
                                        ReasonOf(dlerror()) + ")");
    return *reinterpret_cast<step::ExchangeEntry>(entry)();
}

}  // namespace

const step::StepExchange& OpenedStepExchange() {
    static const step::StepExchange& exchange = Open();
    return exchange;
}

}  // namespace brenvik
