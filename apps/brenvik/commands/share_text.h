// What a share of a run leaves in its folder beside its files: which job it is of, and what came of its
// parts.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cnc/run/run_share.h"
#include "home/held_home.h"

namespace brenvik {
class FileRoots;
}

namespace brenvik::app {

struct CncOptions;

/// What the shares of one job have in common.
struct ShareJob {
    /// The drawing as the call names it, and where it lies.
    std::string drawing, place;
    /// What the files hang on: program, content of the drawing, target, options, boards, settings. A name and
    /// a value each.
    std::vector<std::pair<std::string, std::string>> facts;

    std::string Fact(const std::string& name) const;
};

struct Share {
    std::size_t number = 1, of = 1;
    ShareJob job;
    SharedParts done;
};

/// The job that a call is of, which has so many shares.
ShareJob JobOf(const HeldHome& home, const CncOptions& options, std::size_t shares);
/// The options of the calls that the shares come from.
CncOptions OptionsOf(const ShareJob& job);
/// The first fact in which the jobs differ, in words: what was expected, and what was found.
std::optional<std::string> DifferenceOf(const ShareJob& expected, const ShareJob& found);

/// Tells jobs apart by their facts.
std::string FingerprintOf(const ShareJob& job);

/// Writes the text of a share into the output folder of the run, whole or not at all.
void WriteShare(FileRoots& files, const Share& share);
/// Reads that of a folder. Throws CommandError where there is none, or one that isn't as it was written.
Share ReadShare(const std::string& folder);
/// The same, where there is one that can be read.
std::optional<Share> ShareIfAny(const std::string& folder);

/// The content's fingerprint, or nothing for a file that can't be read.
std::optional<std::string> DigestOfFile(const std::string& file);

}  // namespace brenvik::app
