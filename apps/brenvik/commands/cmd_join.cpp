// brenvik join: one run out of the shares that several calls have made of it. It is the run of these calls
// over the whole drawing, which takes what came of a part in the place of the work on it.
#include <filesystem>
#include <memory>
#include <system_error>

#include "commands/all_commands.h"
#include "file_roots/places.h"
#include "reports/teller.h"
#include "runs/cnc_call.h"
#include "runs/join_folder.h"
#include "runs/joined_shares.h"
#include "runs/share_text.h"

namespace brenvik::app {

namespace {

struct JoinOptions {
    std::vector<std::string> folders;
    std::string out, drawing;
    bool quiet = false;
};

[[noreturn]] void Refuse(const std::string& why) { throw CommandError(ExitStatus::WrongWords, why); }

std::string NameOf(const Share& share) {
    return "share " + std::to_string(share.number) + "/" + std::to_string(share.of);
}

/// Each of one job, and all of them.
std::vector<ShareInFolder> ReadShares(const std::vector<std::string>& folders) {
    std::vector<ShareInFolder> shares;
    for (const std::string& folder : folders) {
        shares.push_back({folder, ReadShare(folder)});
        const Share& share = shares.back().share;
        if (const auto difference = DifferenceOf(shares.front().share.job, share.job))
            Refuse(folder + ": expected a share of one job with " + folders.front() + "; " + *difference);
        if (share.done.partsOfRun != shares.front().share.done.partsOfRun)
            Refuse(folder + ": expected a share of " + std::to_string(shares.front().share.done.partsOfRun) +
                   " parts as " + folders.front() + ", found one of " +
                   std::to_string(share.done.partsOfRun));
        for (const ShareInFolder& other : shares)
            if (&other != &shares.back() && other.share.number == share.number)
                Refuse(folder + ": expected another share than " + other.folder + " has, found " +
                       NameOf(share) + " in both");
    }
    const std::size_t of = shares.front().share.of;
    for (std::size_t number = 1; number <= of; ++number) {
        bool isThere = false;
        for (const ShareInFolder& share : shares) isThere = isThere || share.share.number == number;
        if (!isThere)
            Refuse("expected all " + std::to_string(of) + " shares of the job of " + folders.front() +
                   "; share " + std::to_string(number) + "/" + std::to_string(of) + " is missing");
    }
    for (const ShareInFolder& share : shares) RequireFilesOf(share);
    return shares;
}

/// The drawing that the shares were made of: where the call says, or where they had it.
std::string DrawingOf(const ShareJob& job, const std::string& given) {
    const std::string content = job.Fact("content of the drawing");
    const std::vector<std::string> places =
        given.empty() ? std::vector<std::string>{job.drawing, job.place} : std::vector<std::string>{given};
    for (const std::string& place : places)
        if (DigestOfFile(place) == content) return place;
    // A run that saves its drawing may have changed it, as the join itself does at its end.
    const char* hint = job.Fact("setting CNCSave") == "0"
                           ? "; with CNCSave 0 a join saves it at its end, so that they can't be joined twice"
                           : "";
    throw CommandError(ExitStatus::Unreadable,
                       places.back() + ": expected the drawing that the shares were made of, " +
                           (DigestOfFile(places.back()) ? "found another one" : "found none") +
                           "; name it with --drawing" + hint);
}

/// A share with other files in it than its own would be no share any more.
void RequireOutside(const std::string& out, const std::vector<ShareInFolder>& shares) {
    namespace fs = std::filesystem;
    std::error_code unknown;
    const fs::path place = fs::weakly_canonical(AbsolutePath(PathFromText(out)), unknown);
    for (const ShareInFolder& share : shares)
        for (fs::path above = place; above.has_relative_path(); above = above.parent_path()) {
            std::error_code none;
            if (!fs::equivalent(above, PathFromText(share.folder), none)) continue;
            Refuse("--out: expected a folder outside the shares, found " + out +
                   (above == place ? ", which is " : ", which lies in ") + NameOf(share.share) + " (" +
                   share.folder + ")");
        }
}

ExitStatus JoinAll(const HeldHome& home, const JoinOptions& options) {
    const std::vector<ShareInFolder> shares = ReadShares(options.folders);
    RequireOutside(options.out, shares);
    JoinFolder folder(options.out, shares);
    folder.Require();
    const ShareJob& job = shares.front().share.job;
    CncOptions run = OptionsOf(job);
    run.drawing.drawing = DrawingOf(job, options.drawing);
    run.drawing.quiet = options.quiet;
    run.out = options.out;
    if (const auto difference = DifferenceOf(job, JobOf(home, run, shares.size())))
        Refuse("expected this program and home to be as those of " + options.folders.front() + "; " +
               *difference);
    Teller teller(options.quiet);
    for (const std::string& file : FilesOfNoShare(shares))
        teller.Loss(file +
                    (file.ends_with('/') ? " is no folder of its share" : " is none of its share's files") +
                    ", and was not taken");
    const ExitStatus status =
        CallCnc(home, run,
                {.workers = [&](FileRoots& files) { return std::make_unique<JoinedShares>(files, shares); },
                 .care = folder.Care()});
    if (folder.HasTakenPlace())
        teller.Tell(options.out + ": what an earlier join of these shares had left unfinished was replaced" +
                    folder.WhatElseHasGone());
    return status == ExitStatus::Done ? teller.Status() : status;
}

}  // namespace

Command JoinCommand() {
    auto options = std::make_shared<JoinOptions>();
    return {
        "join",
        "Put the shares of a CNC run together that cnc --shard has made: the files, lists and messages are "
        "those of one run over the whole drawing",
        {Argument("FOLDER", &options->folders, "The folders of all shares, in any order").Required(),
         Argument("--out", &options->out,
                  "Where the files go: a folder that is empty or isn't there, or what an ended join of these "
                  "shares left")
             .Required()
             .Named("DIR"),
         Argument("--drawing", &options->drawing, "The drawing, where it lies elsewhere than for the shares")
             .Named("FILE"),
         Argument("--quiet", &options->quiet,
                  "Leave out progress and remarks; errors and message boxes are still printed")},
        [options](const std::string& home) { return JoinAll(HoldHome(home), *options); },
        {}};
}

}  // namespace brenvik::app
