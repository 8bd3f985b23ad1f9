// Tests that play a short journal of their own on the sample job.
#pragma once

#include <string>
#include <vector>

#include "program.h"

namespace brenvik::cli_test {

class PlayedJournal : public ProgramTest {
  protected:
    /// Plays a journal of this text as "a.journal", with further words behind.
    Outcome Play(const std::string& journal, const std::vector<std::string>& more = {}) const {
        Write("a.journal", journal);
        std::vector<std::string> words{"run", ShippedSample().string(), "--journal", "a.journal"};
        words.insert(words.end(), more.begin(), more.end());
        return Run(words);
    }
};

}  // namespace brenvik::cli_test
