// A journal that didn't hold: a check that failed, a control that isn't there. It passes through the
// system's own handlers, which catch its failures only, and ends the journal.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace brenvik {

/// what() is "line N: STEP: expected ..., found ..."; the one who knows the file's name puts it in front.
class JournalFailure : public std::runtime_error {
  public:
    /// `step` is the step as written and may be blank where only the line is known.
    JournalFailure(std::size_t stepLine, const std::string& step, const std::string& expected,
                   const std::string& found)
        : std::runtime_error("line " + std::to_string(stepLine) + ": " + step + (step.empty() ? "" : ": ") +
                             "expected " + expected + ", found " + found),
          mLine(stepLine) {}
    std::size_t Line() const { return mLine; }

  private:
    std::size_t mLine;
};

}  // namespace brenvik
