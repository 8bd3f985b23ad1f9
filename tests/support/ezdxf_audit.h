// An independent reader's opinion of a DXF file that we wrote: opens it with ezdxf and audits it, where
// ezdxf is installed for the system's Python. Header only, so that every test program can use it.
#pragma once

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

#include "checkout_paths.h"

namespace brenvik::test {

inline constexpr int ezdxfMissing = 77;  // the exit status of the script without ezdxf

struct CommandResult {
    int status = -1;
    std::string output;
};

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

inline std::string EzdxfCommand() {
    return "/usr/bin/python3 '" BRENVIK_SOURCE_DIR "/tests/tools/ezdxf_audit.py'";
}

/// Whether the audit can be run on this machine; tests skip where it can't.
inline bool HasEzdxf() {
    static const bool has = RunCommand(EzdxfCommand()).status == 0;
    return has;
}

/// The problems that ezdxf finds in the file, one a line; nothing when it opens without an error and
/// without anything mended, or when ezdxf is not installed (ask HasEzdxf).
inline std::optional<std::string> AuditWithEzdxf(const std::filesystem::path& path) {
    const CommandResult result = RunCommand(EzdxfCommand() + " '" + path.string() + "'");
    if (result.status == 0 || result.status == ezdxfMissing) return std::nullopt;
    return result.output.empty() ? "the audit ended with status " + std::to_string(result.status)
                                 : result.output;
}

}  // namespace brenvik::test
