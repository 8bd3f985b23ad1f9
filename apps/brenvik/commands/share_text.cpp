// The text begins with a line for people and the fingerprint of all that follows.
#include "commands/share_text.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/packed_text.h"
#include "base/sha256.h"
#include "base/text.h"
#include "cnc/output/output_claim.h"
#include "cnc/output/work_lists.h"
#include "cnc/part/run_state.h"
#include "commands/cnc_call.h"
#include "file_roots/file_content.h"
#include "file_roots/file_roots.h"
#include "file_roots/places.h"
#include "shell/exit_status.h"

namespace brenvik::app {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view HeadWords = "Brenvik: share ";
constexpr std::string_view Content = "content of the drawing";

/// Where windows stand and where a home's own files lie is no matter of the files.
bool Matters(std::string_view setting) {
    const std::string name = FoldUpper(setting);
    return !name.starts_with("DIALOG") && !name.ends_with("_WIDTH") && !name.ends_with("PATH");
}

void AddSettings(ShareJob& job, const std::string& settings) {
    std::vector<std::pair<std::string, std::string>> facts;
    for (const std::string& line : Split(settings, '\n')) {
        const HeadAndTail words = SplitAtFirst(line, '=');
        if (words.found && Matters(words.head)) facts.emplace_back("setting " + words.head, words.tail);
    }
    std::ranges::sort(facts);
    std::ranges::move(facts, std::back_inserter(job.facts));
}

std::string YesNo(bool yes) { return yes ? "yes" : "no"; }

void PackJob(std::string& packed, const ShareJob& job) {
    PackText(packed, job.drawing);
    PackText(packed, job.place);
    PackText(packed, std::to_string(job.facts.size()));
    for (const auto& [name, value] : job.facts) {
        PackText(packed, name);
        PackText(packed, value);
    }
}

ShareJob TakeJob(PackedTexts& packed) {
    ShareJob job;
    job.drawing = packed.Take();
    job.place = packed.Take();
    for (std::size_t left = packed.TakeCount(); left > 0; --left) {
        std::string name = packed.Take();
        job.facts.emplace_back(std::move(name), packed.Take());
    }
    return job;
}

std::string Pack(const Share& share) {
    std::string packed;
    PackText(packed, std::to_string(share.number));
    PackText(packed, std::to_string(share.of));
    PackJob(packed, share.job);
    PackText(packed, std::to_string(share.done.partsOfRun));
    PackText(packed, std::to_string(share.done.parts.size()));
    for (const SharedPart& part : share.done.parts) {
        PackText(packed, std::to_string(part.part));
        PackText(packed, part.drawing);
        PackText(packed, std::to_string(static_cast<int>(part.end.kind)));
        PackText(packed, part.end.text);
        PackTexts(packed, part.digests);
    }
    return packed;
}

Share Unpack(std::string_view text) {
    PackedTexts packed(text);
    Share share;
    share.number = packed.TakeCount();
    share.of = packed.TakeCount();
    share.job = TakeJob(packed);
    share.done.partsOfRun = packed.TakeCount();
    for (std::size_t left = packed.TakeCount(); left > 0; --left) {
        SharedPart part;
        part.part = packed.TakeCount();
        part.drawing = packed.Take();
        part.end.kind = static_cast<WorkerEnd::Kind>(packed.TakeCount());
        part.end.text = packed.Take();
        part.digests = packed.TakeAll();
        share.done.parts.push_back(std::move(part));
    }
    return share;
}

}  // namespace

std::string ShareJob::Fact(const std::string& name) const {
    const auto found = std::ranges::find(facts, name, &std::pair<std::string, std::string>::first);
    return found == facts.end() ? std::string() : found->second;
}

std::string FingerprintOf(const ShareJob& job) {
    std::string packed;
    PackJob(packed, {{}, {}, job.facts});
    return Sha256(packed);
}

std::optional<std::string> DigestOfFile(const std::string& file) {
    const std::optional<std::string> content = ContentIfAny(PathFromText(file));
    if (!content) return std::nullopt;
    return Sha256(*content);
}

ShareJob JobOf(const HeldHome& home, const CncOptions& options, std::size_t shares) {
    const DrawingOptions& drawing = options.drawing;
    ShareJob job{drawing.drawing, TextFromPath(AbsolutePath(PathFromText(drawing.drawing))), {}};
    job.facts = {{"program", "brenvik " BRENVIK_VERSION},
                 {std::string(Content), DigestOfFile(drawing.drawing).value_or("")},
                 {"target", FoldUpper(options.target)},
                 {"number of shares", std::to_string(shares)},
                 {"--from-grid", YesNo(options.fromGrid)},
                 {"--no-proof", YesNo(options.noProof)},
                 {"--letters", drawing.letters},
                 {"given letters", YesNo(drawing.lettersGiven)},
                 {"--unit", options.unit.word},
                 {"--material", drawing.material},
                 {"--select", Join(drawing.handles, ",")},
                 {"material library", Sha256(home.boards.value_or(""))}};
    AddSettings(job, home.settings.value_or(""));
    return job;
}

CncOptions OptionsOf(const ShareJob& job) {
    CncOptions options;
    options.target = job.Fact("target");
    options.fromGrid = job.Fact("--from-grid") == "yes";
    options.noProof = job.Fact("--no-proof") == "yes";
    options.drawing.letters = job.Fact("--letters");
    options.drawing.lettersGiven = job.Fact("given letters") == "yes";
    options.unit.word = job.Fact("--unit");
    options.drawing.material = job.Fact("--material");
    if (const std::string handles = job.Fact("--select"); !handles.empty())
        options.drawing.handles = Split(handles, ',');
    return options;
}

std::optional<std::string> DifferenceOf(const ShareJob& expected, const ShareJob& found) {
    const auto difference = [](const std::string& name, const std::string& wanted, const std::string& there) {
        return name + ": expected \"" + wanted + "\", found \"" + there + "\"";
    };
    for (const auto& [name, value] : expected.facts)
        if (found.Fact(name) != value) return difference(name, value, found.Fact(name));
    for (const auto& [name, value] : found.facts)
        if (expected.Fact(name) != value) return difference(name, expected.Fact(name), value);
    return std::nullopt;
}

void WriteShare(FileRoots& files, const Share& share) {
    const std::string packed = Pack(share);
    const std::string path = std::string(OutputFolder) + std::string(ShareText);
    const std::string draft = path + std::string(UnfinishedListEnding);
    files.WriteFile(draft, std::string(HeadWords) + std::to_string(share.number) + " of " +
                               std::to_string(share.of) + " of a CNC run; brenvik join puts them together\n" +
                               Sha256(packed) + "\n" + packed);
    files.MoveFileOver(draft, path);
}

Share ReadShare(const std::string& folder) {
    const fs::path place = PathFromText(folder) / PathFromText(ShareText);
    const std::optional<std::string> text = ContentIfAny(place);
    std::error_code unknown;
    if (!fs::is_directory(PathFromText(folder), unknown))
        throw CommandError(ExitStatus::Unreadable,
                           folder + ": expected a folder with a share of a run; there is " +
                               (fs::exists(PathFromText(folder), unknown) ? "something else" : "none"));
    if (!text)
        throw CommandError(
            ExitStatus::Unreadable,
            folder + ": expected a share of a run that has ended, found no " + std::string(ShareText));
    const HeadAndTail head = SplitAtFirst(*text, '\n'), body = SplitAtFirst(head.tail, '\n');
    try {
        if (head.head.starts_with(HeadWords) && Sha256(body.tail) == body.head) return Unpack(body.tail);
    } catch (const Failure&) {
        // Told below, as all that isn't a share.
    }
    throw CommandError(ExitStatus::Unreadable,
                       TextFromPath(place) +
                           ": expected the text of a share as it was written, found one "
                           "that is damaged or has been changed");
}

std::optional<Share> ShareIfAny(const std::string& folder) {
    std::error_code unknown;
    if (!fs::exists(PathFromText(folder) / PathFromText(ShareText), unknown)) return std::nullopt;
    try {
        return ReadShare(folder);
    } catch (const CommandError&) {
        return std::nullopt;
    }
}

}  // namespace brenvik::app
