// The options that the commands which read a drawing have in common.
#pragma once

#include <string>
#include <vector>

#include "shell/command_words.h"

namespace brenvik::app {

/// The options of commands that read a drawing.
struct DrawingOptions {
    std::string drawing;
    std::string letters = "LWT";
    bool lettersGiven = false;  ///< By the user, not by default.
    std::string material;
    std::string save;
    std::vector<std::string> handles;
    bool quiet = false;
    bool onlySaves = false;  ///< The command saves the drawing as a whole and asks nothing else of it.

    Argument DrawingWord();
    /// The drawing to write, as a word by its place.
    Argument OutWord();
    Argument Letters();
    Argument Material();
    Argument Save();
    Argument Select();
    Argument Quiet();
};

}  // namespace brenvik::app
