// A part's files are known by the number in their names, its messages by the label that they begin with.
#include "cnc/output/run_outcome.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "base/letter_case.h"
#include "base/skip.h"
#include "cnc/part/part_file_name.h"
#include "cnc/part/run_state.h"
#include "session/ports/files_port.h"
#include "session/session.h"

namespace brenvik {

namespace {

std::map<int, std::string> FilesByNumber(std::string_view folder, std::string_view pattern) {
    std::vector<std::string> names;
    Skip([&] { names = ThePlatform().files->ListFiles(folder, pattern); });
    std::map<int, std::string> files;
    for (const std::string& name : names)
        if (const std::optional<int> number = PartNumberIn(name)) files[*number] = std::string(folder) + name;
    return files;
}

/// Whether the line begins with the part's label: "The part "Door" (2F) was skipped."
bool IsOf(std::string_view line, const std::string& label) {
    constexpr std::string_view Opening = "The part ";
    if (label.empty() || !line.starts_with(Opening)) return false;
    line.remove_prefix(Opening.size());
    if (!line.starts_with(label)) return false;
    line.remove_prefix(label.size());
    return line.empty() || line.front() == ' ' || line.front() == ':';
}

void DealOut(const std::vector<std::string>& lines, RunOutcome& outcome) {
    for (const std::string& line : lines) {
        const auto part = std::ranges::find_if(
            outcome.parts, [&](const OutcomePart& candidate) { return IsOf(line, candidate.label); });
        (part == outcome.parts.end() ? outcome.messages : part->messages).push_back(line);
    }
}

std::string NameIn(const std::string& path) { return path.substr(path.find_last_of('\\') + 1); }

}  // namespace

std::size_t RunOutcome::FileCount() const {
    std::size_t count = 0;
    for (const OutcomePart& part : parts)
        count += (part.firstSide.empty() ? 0U : 1U) + (part.secondSide.empty() ? 0U : 1U);
    return count;
}

std::size_t RunOutcome::PartsToldOf() const {
    return static_cast<std::size_t>(
        std::ranges::count_if(parts, [](const OutcomePart& part) { return !part.messages.empty(); }));
}

RunOutcomes::RunOutcomes() { AddRunListener(*this); }
RunOutcomes::~RunOutcomes() { RemoveRunListener(*this); }

bool RunOutcomes::TakeNews() { return std::exchange(mNews, false); }

void RunOutcomes::OnPass(const RunProgress& progress) { mLabels[progress.part - 1] = progress.name; }

void RunOutcomes::OnEnd(const RunReport& report) {
    mLast = {};
    mLast.complete = report.complete;
    mLast.unknownMaterials = report.unknownMaterials;
    std::map<int, OutcomePart> parts;
    for (auto& [number, label] : std::exchange(mLabels, {})) parts[number].label = std::move(label);
    for (auto& [number, path] : FilesByNumber(OutputFolder, FirstSideDxfFiles))
        parts[number].firstSide = path;
    for (auto& [number, path] : FilesByNumber(SecondSideFolder, SecondSideDxfFiles))
        parts[number].secondSide = path;
    for (auto& [number, part] : parts) {
        if (part.label.empty())
            part.label = NameIn(part.firstSide.empty() ? part.secondSide : part.firstSide);
        mLast.parts.push_back(std::move(part));
    }
    DealOut(report.skipped, mLast);
    DealOut(report.unexplained, mLast);
    DealOut(report.passedOver, mLast);
    DealOut(report.doubtfulMaterials, mLast);
    mNews = true;
}

}  // namespace brenvik
