// An independent reader's opinion of a DXF file that we wrote: opens it with ezdxf and audits it, where
// ezdxf is installed for the system's Python. Header only, so that every test program can use it.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "checkout_paths.h"
#include "support/shell_command.h"

namespace brenvik::test {

inline constexpr int ezdxfMissing = 77;  // the exit status of the script without ezdxf

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
