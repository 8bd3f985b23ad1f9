// What a CNC run came to, for programs that call it: message boxes are for people, and some of what a run
// passes over has none.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace brenvik {

struct RunReport {
    /// How many part files the run was made of.
    int parts = 0;
    /// Every part had its turn. A part that was skipped with a message has had it.
    bool complete = false;
    /// The parts that a message box has skipped, one line each with the name, which the boxes don't give.
    std::vector<std::string> skipped;
    /// What the run passed over without a message box: lines of the grid's list, part files that vanished,
    /// the parts behind the one that ended the run. A line each.
    std::vector<std::string> passedOver;
    /// Parts with features that no operation was made for, parts that could not be worked on, and parts whose
    /// texts move the columns of the work list, a line each. The run has shown them in boxes.
    std::vector<std::string> unexplained;
    /// What of the materials was taken as it stands and can't be right, a line each: the file, the place and
    /// what was expected there.
    std::vector<std::string> doubtfulMaterials;
    /// Keys that are not in the material library, each once.
    std::vector<std::string> unknownMaterials;
};

struct RunProgress {
    int part = 0, parts = 0;  ///< From 1.
    bool secondSide = false;
    std::string name;
};

/// Sets the callback for the start of each pass; an empty one removes it, and so does unloading the library.
void ObserveRuns(std::function<void(const RunProgress&)> observer);

/// Sets the callback for the end of each run, whatever ended it; removed as above.
void ObserveRunEnds(std::function<void(const RunReport&)> observer);

namespace detail {

void TellRunObserver(const RunProgress& progress);
void TellRunEndObserver(const RunReport& report);

}  // namespace detail

}  // namespace brenvik
