// The words, the names of outputs, and the turn of each drawing.
#include "drawings/several_drawings.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <map>
#include <set>
#include <system_error>

#include "base/letter_case.h"
#include "drafting_host/document/files/extension.h"
#include "drawings/apart.h"
#include "file_roots/places.h"
#include "reports/teller.h"

namespace brenvik::app {

namespace {

namespace fs = std::filesystem;

bool IsFolder(const std::string& word) {
    std::error_code unknown;
    return fs::is_directory(PathFromText(word), unknown);
}

/// The drawings in the folders below one, as far as they can be looked into.
std::size_t CountDrawingsBelow(const std::string& folder) {
    std::size_t count = 0;
    std::error_code error;
    fs::recursive_directory_iterator entry(PathFromText(folder),
                                           fs::directory_options::skip_permission_denied, error);
    for (const fs::recursive_directory_iterator end; !error && entry != end; entry.increment(error)) {
        std::error_code unknown;
        if (entry.depth() > 0 && entry->is_regular_file(unknown) &&
            IsEndingOfDrawing(ExtensionOf(entry->path())))
            ++count;
    }
    return count;
}

/// What somebody who names a folder has to know: only the drawings that lie in it itself are taken.
std::string DrawingsLeftBelow(const std::string& folder) {
    const std::size_t count = CountDrawingsBelow(folder);
    if (count == 0) return {};
    return std::to_string(count) + (count == 1 ? " drawing" : " drawings") + " in the folders below it " +
           (count == 1 ? "is" : "are") + " left out; name these folders too";
}

std::vector<std::string> DrawingsIn(const std::string& folder) {
    std::vector<std::string> drawings;
    std::error_code error;
    for (fs::directory_iterator entry(PathFromText(folder), error), end; !error && entry != end;
         entry.increment(error)) {
        // What has a drawing's name and is none (a link to a server that is away, a folder) is reported when
        // it is opened. A pipe would be waited for without end.
        std::error_code unknown;
        const bool canOpen =
            entry->is_regular_file(unknown) || entry->is_directory(unknown) || !entry->exists(unknown);
        if (canOpen && IsEndingOfDrawing(ExtensionOf(entry->path())))
            drawings.push_back(TextFromPath(entry->path()));
    }
    if (error)
        throw CommandError(ExitStatus::Unreadable, folder + ": the folder can't be read: " + error.message());
    const std::string below = DrawingsLeftBelow(folder);
    if (drawings.empty())
        throw CommandError(ExitStatus::Unreadable,
                           folder + ": expected a drawing, found a folder without one: a name that ends in " +
                               EndingsOfDrawings() + (below.empty() ? "" : "; " + below));
    if (!below.empty()) std::cerr << folder << ": " << below << '\n';
    std::ranges::sort(drawings, LessIgnoreCase());
    return drawings;
}

}  // namespace

Argument FurtherWords::Words(const std::string& last) {
    return {"MORE", &more,
            "With several drawings, or folders of drawings, in place of DRAWING: the others" + last +
                ". Each is worked on by itself, and the exit status is the worst"};
}

std::vector<std::string> DrawingsOf(const std::vector<std::string>& words) {
    std::vector<std::string> drawings;
    std::set<fs::path> known;
    const auto add = [&](const std::string& drawing) {
        // A link under another name is a drawing by itself: its outputs have that name.
        std::error_code unknown;
        const fs::path path = PathFromText(drawing).lexically_normal(),
                       folder =
                           fs::weakly_canonical(path.has_parent_path() ? path.parent_path() : ".", unknown);
        if (known.insert(unknown ? path : folder / path.filename()).second) drawings.push_back(drawing);
    };
    for (const std::string& word : words) {
        if (IsFolder(word))
            std::ranges::for_each(DrawingsIn(word), add);
        else
            add(word);
    }
    return drawings;
}

bool AreSeveral(const std::vector<std::string>& words) {
    return words.size() > 1 || std::ranges::any_of(words, IsFolder);
}

SeveralWords WordsOf(const std::string& drawing, const std::string& second, const FurtherWords& further) {
    std::vector<std::string> words{drawing, second};
    words.insert(words.end(), further.more.begin(), further.more.end());
    std::string last = std::move(words.back());
    words.pop_back();
    const bool areSeveral = AreSeveral(words);
    return {areSeveral, areSeveral ? DrawingsOf(words) : words, std::move(last)};
}

void PrintOutput(std::size_t, const std::string& output) { std::cout << output; }

OutputPlaces::OutputPlaces(const std::string& folder, const std::vector<std::string>& drawings,
                           const std::string& ending, const std::string& what)
    : mRefusals(drawings.size()) {
    std::map<std::string, std::size_t, LessIgnoreCase> drawingOf;
    for (std::size_t drawing = 0; drawing < drawings.size(); ++drawing) {
        const fs::path name = PathFromText(TextFromPath(PathFromText(drawings[drawing]).stem()) + ending);
        mPlaces.push_back(TextFromPath(PathFromText(folder) / name));
        const auto [first, isNew] = drawingOf.try_emplace(mPlaces.back(), drawing);
        if (isNew) continue;
        mRefusals[drawing] = "the " + what + " of " + drawings[first->second] + " and of " +
                             drawings[drawing] + " would both be " + mPlaces.back() +
                             ": expected drawings of different names";
        std::string& ofFirst = mRefusals[first->second];
        if (ofFirst.empty()) ofFirst = mRefusals[drawing];
    }
    if (!mRefusals.empty() &&
        std::ranges::none_of(mRefusals, [](const std::string& refusal) { return refusal.empty(); }))
        throw CommandError(ExitStatus::WrongWords, mRefusals.front());
}

const std::string& OutputPlaces::At(std::size_t drawing) const {
    if (!mRefusals[drawing].empty())
        throw CommandError(ExitStatus::Incomplete, mRefusals[drawing] + "; this one was left out");
    return mPlaces[drawing];
}

void MakeOutputFolder(const std::string& folder) {
    std::error_code error;
    const fs::path place = PathFromText(folder);
    if (fs::is_directory(place, error)) return;
    if (fs::exists(place, error))
        throw CommandError(ExitStatus::WrongWords,
                           folder + ": expected a folder for the outputs of several drawings, found a file");
    // A list or a drawing was meant, and the words for it belong to one drawing.
    if (IsEndingOfDrawing(ExtensionOf(place)) || EqualsIgnoreCase(TextFromPath(place.extension()), ".csv"))
        throw CommandError(
            ExitStatus::WrongWords,
            folder + ": expected a folder for the outputs of several drawings, found a name of a file");
    fs::create_directories(place, error);
    if (error)
        throw CommandError(ExitStatus::Incomplete, folder + ": the folder can't be made: " + error.message());
}

void RefuseForSeveral(bool given, const std::string& option) {
    if (given)
        throw CommandError(ExitStatus::WrongWords,
                           option + ": expected one drawing with this option, found several");
}

ExitStatus RunEach(const std::vector<std::string>& drawings, const WorkOnEach& each, bool quiet) {
    Teller teller(quiet);
    ExitStatus worst = ExitStatus::Done;
    for (std::size_t place = 0; place < drawings.size(); ++place) {
        teller.Progress("drawing " + std::to_string(place + 1) + " of " + std::to_string(drawings.size()) +
                        ", " + drawings[place]);
        const WorkApart turn = RunApart(drawings[place], [&] { return each.work(place); });
        teller.Wipe();
        if (!turn.errors.empty()) std::cerr << drawings[place] << ":\n" << turn.errors;
        each.print(place, turn.output);
        worst = std::max(worst, turn.status);
    }
    return worst;
}

}  // namespace brenvik::app
