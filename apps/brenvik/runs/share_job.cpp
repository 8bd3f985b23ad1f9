// The boards are kept as they stand, so that a difference can be reported by the board and the line.
#include "runs/share_job.h"

#include <algorithm>
#include <map>

#include "base/first_of.h"
#include "base/letter_case.h"
#include "base/packed_text.h"
#include "base/sha256.h"
#include "base/text.h"
#include "base/text_lines.h"
#include "file_roots/file_content.h"
#include "file_roots/places.h"
#include "runs/cnc_call.h"
#include "runs/program_build.h"
#include "settings/materials.h"
#include "settings/setting_names.h"
#include "settings/settings_keys.h"
#include "settings_store/settings_text.h"
#include "settings_store/text_settings.h"

namespace brenvik::app {

namespace {

constexpr std::string_view Content = "content of the drawing", Boards = "boards", MaterialHead = "material=";

/// How windows stand and are called, and where a home's own files lie, is no matter of the files.
bool Matters(std::string_view setting) {
    const std::string name = FoldUpper(setting);
    return !name.starts_with("DIALOG") && !name.ends_with("_WIDTH") && !name.ends_with("PATH") &&
           !EqualsIgnoreCase(name, setting::MyWindowState) &&
           !EqualsIgnoreCase(name, setting::ApplicationVersion);
}

/// The settings as a run reads them: those of the system's own section, of a name that stands twice the
/// first.
void AddSettings(ShareJob& job, const std::string& settings) {
    const std::string section = SectionPath(SettingsRoot::LocalMachine, SettingsKeyPath);
    std::map<std::string, std::string, LessIgnoreCase> read;
    for (auto& [name, value] : SettingsText::Parse(settings, "settings.txt").ValuesUnder(section))
        if (Matters(name)) read.emplace(name, std::move(value));
    for (auto& [name, value] : read) {
        const SettingEntry* known = FindSetting(name);
        job.facts.emplace_back("setting " + (known == nullptr ? name : std::string(known->name)),
                               std::move(value));
    }
}

std::string YesNo(bool yes) { return yes ? "yes" : "no"; }

std::string Differing(const std::string& name, const std::string& wanted, const std::string& there) {
    return name + ": expected \"" + wanted + "\", found \"" + there + "\"";
}

struct Board {
    std::string name;
    std::vector<std::string> lines;
};

/// As runs read them: what ends a line, a byte order mark and blank lines between boards don't count.
std::vector<Board> BoardsOf(std::string_view library) {
    std::vector<Board> boards;
    const auto endBoard = [&boards] {
        if (boards.empty()) return;
        std::vector<std::string>& lines = boards.back().lines;
        while (lines.size() > MaterialFieldCount && IsBlank(lines.back())) lines.pop_back();
    };
    for (std::string& line : LinesOf(library)) {
        if (StartsWithIgnoreCase(line, MaterialHead)) {
            endBoard();
            boards.push_back({line.substr(MaterialHead.size()), {}});
        }
        if (!boards.empty()) boards.back().lines.push_back(std::move(line));
    }
    endBoard();
    return boards;
}

/// The library in the form in which two of them are compared.
std::string TextOfBoards(const std::string& library) {
    std::string text;
    for (const Board& board : BoardsOf(library)) text += Join(board.lines, "\n") + "\n";
    return text;
}

std::string DifferenceOfBoard(const Board& wanted, const Board& there) {
    const std::size_t lines = std::max(wanted.lines.size(), there.lines.size());
    const auto line = [](const Board& board, std::size_t at) {
        return at < board.lines.size() ? board.lines[at] : std::string();
    };
    for (std::size_t at = 0; at < lines; ++at)
        if (line(wanted, at) != line(there, at))
            return Differing("board " + wanted.name, line(wanted, at), line(there, at));
    return {};
}

const Board* BoardIn(const std::vector<Board>& boards, const std::string& name) {
    const auto found = std::ranges::find(boards, name, &Board::name);
    return found == boards.end() ? nullptr : &*found;
}

std::string TimesText(std::ptrdiff_t times) {
    return times == 1 ? "once" : times == 2 ? "twice" : std::to_string(times) + " times";
}

std::vector<std::string> DifferencesOfBoards(const std::string& expected, const std::string& found) {
    const std::vector<Board> wanted = BoardsOf(expected), there = BoardsOf(found);
    std::vector<std::string> differences;
    for (const Board& board : wanted) {
        const Board* other = BoardIn(there, board.name);
        std::string difference = other == nullptr ? "board " + board.name + ": expected it, found none"
                                                  : DifferenceOfBoard(board, *other);
        if (!difference.empty()) differences.push_back(std::move(difference));
    }
    for (const Board& board : there)
        if (BoardIn(wanted, board.name) == nullptr)
            differences.push_back("board " + board.name + ": expected none, found it");
    for (const Board& board : wanted) {
        const auto isThis = [&](const std::string& difference) {
            return difference.starts_with("board " + board.name + ": ");
        };
        const auto count = std::ranges::count(wanted, board.name, &Board::name),
                   others = std::ranges::count(there, board.name, &Board::name);
        if (count == others || std::ranges::any_of(differences, isThis)) continue;
        differences.push_back("board " + board.name + ": expected it to stand there " + TimesText(count) +
                              ", found it " + TimesText(others));
    }
    if (differences.empty()) differences.emplace_back("boards: the library has them in another order");
    return differences;
}

}  // namespace

std::string ShareJob::Fact(const std::string& name) const {
    const auto found = std::ranges::find(facts, name, &std::pair<std::string, std::string>::first);
    return found == facts.end() ? std::string() : found->second;
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
                 {"build of the program", BuildOfProgram()},
                 {"build of the modeller", BuildOfModeller()},
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
                 {std::string(Boards), TextOfBoards(home.boards.value_or(""))}};
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
    constexpr std::size_t most = 5;
    std::vector<std::string> differences;
    for (const auto& [name, value] : expected.facts) {
        const std::string other = found.Fact(name);
        if (other == value) continue;
        if (name == Boards)
            std::ranges::move(DifferencesOfBoards(value, other), std::back_inserter(differences));
        else
            differences.push_back(Differing(name, value, other));
    }
    for (const auto& [name, value] : found.facts)
        if (std::ranges::find(expected.facts, name, &std::pair<std::string, std::string>::first) ==
            expected.facts.end())
            differences.push_back(Differing(name, "", value));
    if (differences.empty()) return std::nullopt;
    return FirstOf(std::move(differences), most, "; ", "; and ");
}

std::string FingerprintOf(const ShareJob& job) {
    std::string packed;
    for (const auto& [name, value] : job.facts) PackTexts(packed, {name, value});
    return Sha256(packed);
}

}  // namespace brenvik::app
