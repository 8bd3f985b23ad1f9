// A display of its own, drawn into memory, for as long as it lives.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

namespace brenvik {

class VirtualDisplay {
  public:
    VirtualDisplay() {
        int ends[2];
        if (::pipe(ends) != 0) return;
        mProgram = ::fork();
        if (mProgram == 0) {
            ::close(ends[0]);
            const std::string place = std::to_string(ends[1]);
            ::execlp("Xvfb", "Xvfb", "-displayfd", place.c_str(), "-screen", "0", "1400x1000x24", "-nolisten",
                     "tcp", static_cast<char*>(nullptr));
            ::_exit(127);
        }
        ::close(ends[1]);
        char digit = 0;
        while (::read(ends[0], &digit, 1) == 1 && digit != '\n') mNumber += digit;
        ::close(ends[0]);
    }
    ~VirtualDisplay() {
        if (mProgram <= 0) return;
        ::kill(mProgram, SIGTERM);
        ::waitpid(mProgram, nullptr, 0);
    }
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;
    /// Blank where there is no such program.
    std::string Name() const { return mNumber.empty() ? "" : ":" + mNumber; }

  private:
    ::pid_t mProgram = -1;
    std::string mNumber;
};

}  // namespace brenvik
