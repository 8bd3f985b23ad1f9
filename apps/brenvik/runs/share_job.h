// The job that shares of a run belong to: all that the bytes of its files hang on, so that shares of two jobs
// are never put together.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "home/held_home.h"

namespace brenvik::app {

struct CncOptions;

/// What the shares of one job have in common.
struct ShareJob {
    /// The drawing as the call names it, and where it lies.
    std::string drawing, place;
    /// What the files hang on: program and its build, content of the drawing, target, options, boards,
    /// settings. A name and a value each.
    std::vector<std::pair<std::string, std::string>> facts;

    std::string Fact(const std::string& name) const;
};

/// The job that a call is of, which has so many shares.
ShareJob JobOf(const HeldHome& home, const CncOptions& options, std::size_t shares);
/// The options of the calls that the shares come from.
CncOptions OptionsOf(const ShareJob& job);
/// The facts in which the jobs differ, in words: what was expected, and what was found. Of many the first.
std::optional<std::string> DifferenceOf(const ShareJob& expected, const ShareJob& found);
/// Identifies a job by its facts.
std::string FingerprintOf(const ShareJob& job);

/// The content's fingerprint, or null for a file that can't be read.
std::optional<std::string> DigestOfFile(const std::string& file);

}  // namespace brenvik::app
