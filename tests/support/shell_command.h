// A line as it is typed in a shell, and what came of it.
#pragma once

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

namespace brenvik::test {

struct CommandResult {
    int status = -1;
    std::string output;
};

/// Output and errors are one text.
inline CommandResult RunCommand(const std::string& command) {
    CommandResult result;
    FILE* const pipe = popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) return result;
    std::array<char, 4096> buffer;
    for (std::size_t count; (count = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
        result.output.append(buffer.data(), count);
    const int status = pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

}  // namespace brenvik::test
