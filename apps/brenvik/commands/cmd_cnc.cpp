// brenvik cnc: the words of the call.
#include <charconv>
#include <memory>
#include <system_error>

#include "commands/all_commands.h"
#include "reports/run_teller.h"
#include "runs/cnc_call.h"
#include "shell/target_words.h"

namespace brenvik::app {

namespace {

/// The number without leading zeros, or what was expected.
std::string CheckJobs(std::string& word) {
    constexpr int most = 4096;
    int jobs = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), jobs);
    if (error != std::errc() || end != word.data() + word.size() || jobs < 1 || jobs > most)
        return "expected a number of processes from 1 to " + std::to_string(most) + "; found " + word;
    word = std::to_string(jobs);
    return {};
}

}  // namespace

Command CncCommand() {
    auto options = std::make_shared<CncOptions>();
    return {
        "cnc",
        "Write a DXF file per part and side, and a work list, for a CNC target",
        {options->drawing.DrawingWord(),
         Argument("--target", &options->target, "The CAM package: " + TargetNames() + "; in any case")
             .Required()
             .Checked(CheckTarget)
             .Named("T"),
         Argument("--out", &options->out,
                  "Where the files go, instead of drive_c/BV-DXF in the install folder; the run empties the "
                  "folder first")
             .Named("DIR"),
         Argument(
             "--from-grid", &options->fromGrid,
             "Take the parts by way of the grid, so that identical parts become one file and a quantity"),
         Argument("--jobs", &options->jobs,
                  "How many processes share the parts. Unless it is given: one for each processor, and one "
                  "for a run of few parts. The files and messages are the same")
             .Checked(CheckJobs)
             .Named("N"),
         Argument(
             "--shard", &options->shard,
             "Make only the I-th of N shares of the parts, into a folder of its own; brenvik join puts the "
             "shares together")
             .Checked(CheckShare)
             .Named("I/N"),
         Argument("--no-proof", &options->noProof, std::string(NoProofHelp)), options->drawing.Select(),
         options->drawing.Letters(), options->unit.Option(), options->drawing.Material(),
         options->drawing.Quiet()},
        [options](const std::string& home) { return CallCnc(HoldHome(home), *options); },
        {}};
}

}  // namespace brenvik::app
