// A word as it is typed into a shell, for messages that say what to type.
#pragma once

#include <string>
#include <string_view>

namespace brenvik::app {

/// The word itself where no character of it means anything to a shell, else in quotes: double ones where
/// that is enough, as people write them. Names come from drawings of strangers, so nothing in them may be
/// executed.
std::string ShellWord(std::string_view word);

/// How the program is called for a home: "brenvik", or "brenvik --home DIR" for one that was named.
std::string ProgramWords(const std::string& homeOption);

}  // namespace brenvik::app
