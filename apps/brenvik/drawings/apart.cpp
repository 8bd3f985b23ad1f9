// A process is copied before any library of the modeller has started threads.
#include "drawings/apart.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>

#include "shell/reported.h"

namespace brenvik::app {

namespace {

/// A file without a name that takes the place of a stream.
class CapturedStream {
  public:
    CapturedStream() : mFile(std::tmpfile()) {
        if (mFile == nullptr)
            throw CommandError(ExitStatus::Incomplete,
                               std::string("no temporary file can be made: ") + std::strerror(errno));
    }
    ~CapturedStream() { std::fclose(mFile); }
    CapturedStream(const CapturedStream&) = delete;
    CapturedStream& operator=(const CapturedStream&) = delete;

    void TakePlaceOf(int descriptor) const { ::dup2(::fileno(mFile), descriptor); }
    std::string Text() const {
        std::string text;
        std::array<char, 4096> piece{};
        std::rewind(mFile);
        for (std::size_t count = 0; (count = std::fread(piece.data(), 1, piece.size(), mFile)) > 0;)
            text.append(piece.data(), count);
        return text;
    }

  private:
    std::FILE* mFile;
};

[[noreturn]] void WorkAndEnd(const std::function<ExitStatus()>& work) {
    const ExitStatus status = WithWrittenOutput(Reported(work));
    std::fflush(nullptr);
    // What this process shares with the one that it is a copy of isn't its to take down.
    ::_exit(static_cast<int>(status));
}

}  // namespace

WorkApart RunApart(const std::string& name, const std::function<ExitStatus()>& work) {
    const CapturedStream output, errors;
    std::cout.flush();
    std::cerr.flush();
    const pid_t child = ::fork();
    if (child < 0)
        throw CommandError(ExitStatus::Incomplete,
                           name + ": no process can be made for it: " + std::strerror(errno));
    if (child == 0) {
        output.TakePlaceOf(STDOUT_FILENO);
        errors.TakePlaceOf(STDERR_FILENO);
        WorkAndEnd(work);
    }
    int ended = 0;
    while (::waitpid(child, &ended, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(ended)) return {static_cast<ExitStatus>(WEXITSTATUS(ended)), output.Text(), errors.Text()};
    return {ExitStatus::Incomplete,
            {},
            errors.Text() + name + ": the program broke off over this drawing (signal " +
                std::to_string(WTERMSIG(ended)) + "), and its output is missing\n"};
}

}  // namespace brenvik::app
