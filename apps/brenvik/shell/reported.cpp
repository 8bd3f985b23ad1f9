// Errors of commands, and streams that could not be written.
#include "shell/reported.h"

#include <iostream>

#include "base/failure.h"

namespace brenvik::app {

ExitStatus Reported(const std::function<ExitStatus()>& work) {
    try {
        return work();
    } catch (const CommandError& error) {
        std::cerr << "brenvik: " << error.what() << '\n';
        return error.Status();
    } catch (const Failure& failure) {
        std::cerr << "brenvik: " << failure.what() << '\n';
        return ExitStatus::Incomplete;
    }
}

ExitStatus WithWrittenOutput(ExitStatus status) {
    std::cout.flush();
    if (!std::cout) std::cerr << "brenvik: standard output can't be written\n";
    std::cerr.flush();
    if (std::cout && std::cerr) return status;
    return status == ExitStatus::Done ? ExitStatus::Incomplete : status;
}

}  // namespace brenvik::app
