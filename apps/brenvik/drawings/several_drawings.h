// One command on several drawings: each in a process of its own, so that a drawing that brings the program
// down costs only itself, and none sees what another has left in memory.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "shell/command_words.h"

namespace brenvik::app {

/// The words behind the usual ones of a command that takes several drawings.
struct FurtherWords {
    std::vector<std::string> more;
    /// `last` says what the last one is then.
    Argument Words(const std::string& last);
};

/// The drawings that the words name. A folder stands for the drawings in it, recognised by their endings, in
/// the order of their names. A drawing that is named twice counts once. Drawings in folders below a folder
/// are left out; standard error reports how many. Throws CommandError with Unreadable for a folder without
/// any.
std::vector<std::string> DrawingsOf(const std::vector<std::string>& words);

/// Whether the words ask for more than one drawing: several of them, or a folder.
bool AreSeveral(const std::vector<std::string>& words);

/// The words of a command whose last one is where its output goes.
struct SeveralWords {
    bool areSeveral = false;
    std::vector<std::string> drawings;
    std::string last;
};
/// `second` is the word behind the drawing's. Folders are looked into only
/// where there are several drawings.
SeveralWords WordsOf(const std::string& drawing, const std::string& second, const FurtherWords& further);

/// Where the output of each drawing goes.
class OutputPlaces {
  public:
    /// Its name in the folder, with this ending. `what` they are to the command. Throws CommandError with
    /// WrongWords where none is left because others would be the same file.
    OutputPlaces(const std::string& folder, const std::vector<std::string>& drawings,
                 const std::string& ending, const std::string& what = "output");
    /// Throws CommandError with Incomplete for a drawing whose output would be that of another one too: which
    /// of the two is meant isn't known.
    const std::string& At(std::size_t drawing) const;

  private:
    std::vector<std::string> mPlaces, mRefusals;
};

/// Makes the folder for outputs. Throws CommandError with WrongWords where something else stands there.
void MakeOutputFolder(const std::string& folder);

/// Fails for an option that means one drawing alone, where it was given.
void RefuseForSeveral(bool given, const std::string& option);

/// What is done with one drawing of several, by its place among them.
struct WorkOnEach {
    std::function<ExitStatus(std::size_t place)> work;
    /// Takes what the work has written to standard output; blank where it came to nothing.
    std::function<void(std::size_t place, const std::string& output)> print;
};

/// Hands the output through as it is.
void PrintOutput(std::size_t place, const std::string& output);

/// Works on each drawing in turn. What one reports on standard error stands below a line with its name.
/// Returns the worst status.
ExitStatus RunEach(const std::vector<std::string>& drawings, const WorkOnEach& each, bool quiet);

}  // namespace brenvik::app
