// The text begins with a line for people and the fingerprint of all that follows.
#include "runs/share_text.h"

#include <filesystem>

#include "base/failure.h"
#include "base/packed_text.h"
#include "base/sha256.h"
#include "base/text.h"
#include "cnc/output/output_claim.h"
#include "cnc/output/work_lists.h"
#include "cnc/part/run_state.h"
#include "file_roots/file_content.h"
#include "file_roots/file_roots.h"
#include "file_roots/places.h"
#include "shell/exit_status.h"

namespace brenvik::app {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view HeadWords = "Brenvik: share ";
/// How the text behind the first line is made. One of another form is from another version of the program.
constexpr std::string_view FormWords = "; form 2";

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

void WriteShare(FileRoots& files, const Share& share) {
    const std::string packed = Pack(share);
    const std::string path = std::string(OutputFolder) + std::string(ShareText);
    const std::string draft = path + std::string(UnfinishedListEnding);
    files.WriteFile(draft, std::string(HeadWords) + std::to_string(share.number) + " of " +
                               std::to_string(share.of) + " of a CNC run; brenvik join puts them together" +
                               std::string(FormWords) + "\n" + Sha256(packed) + "\n" + packed);
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
    if (head.head.starts_with(HeadWords) && head.head.ends_with('\r'))
        throw CommandError(
            ExitStatus::Unreadable,
            TextFromPath(place) +
                ": expected the text of a share as it was written, found one with other ends of "
                "its lines; copy the share again, byte for byte");
    if (head.head.starts_with(HeadWords) && !head.head.ends_with(FormWords))
        throw CommandError(ExitStatus::Unreadable,
                           TextFromPath(place) +
                               ": expected a share as this program writes it, found one by another version, "
                               "which says less of its job; make the share again with this program");
    try {
        if (head.head.starts_with(HeadWords) && Sha256(body.tail) == body.head) return Unpack(body.tail);
    } catch (const Failure&) {
        // Reported below, like anything that isn't a share.
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
