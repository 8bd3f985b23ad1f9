// brenvik materials: the material library as a run reads it, and the look-up of one key in it.
#include <algorithm>
#include <array>
#include <functional>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "commands/all_commands.h"
#include "console/console_dialogs.h"
#include "file_roots/places.h"
#include "home/workplace.h"
#include "session/call.h"
#include "settings/library_check.h"
#include "settings/material_faults.h"
#include "settings/material_keys.h"
#include "settings/materials.h"
#include "settings/settings_store.h"
#include "shell/shell_word.h"

namespace brenvik::app {

namespace {

constexpr std::array<std::string_view, MaterialFieldCount> Captions{
    "Material",  "Grain",       "Direction",  "Tool1", "Tool1 Dia", "Tool1 Speed", "Tool1 Feed", "Tool2",
    "Tool2 Dia", "Tool2 Speed", "Tool2 Feed", "Tool3", "Tool3 Dia", "Tool3 Speed", "Tool3 Feed"};

using Cells = std::array<std::string, MaterialFieldCount>;

void PrintTable(const std::vector<MaterialTexts>& materials) {
    std::vector<Cells> rows(1);
    std::copy(Captions.begin(), Captions.end(), rows.front().begin());
    rows.insert(rows.end(), materials.begin(), materials.end());
    std::array<std::size_t, MaterialFieldCount> widths{};
    for (const Cells& row : rows)
        for (std::size_t field = 0; field < row.size(); ++field)
            widths[field] = std::max(widths[field], CharacterCount(row[field]));
    for (const Cells& row : rows) {
        std::string line;
        for (std::size_t field = 0; field < row.size(); ++field)
            line += row[field] + std::string(widths[field] - CharacterCount(row[field]) + 2, ' ');
        std::cout << TrimRight(line) << '\n';
    }
}

/// Where the library really lies: the system writes its path with a backslash.
std::string LibraryFile(const Workplace& workplace) {
    return TextFromPath(workplace.files.Resolve(MaterialsPath()));
}

/// Prints the faults, a line each. True if there are none.
template <typename Faults>
bool TellFaults(const Workplace& workplace, const Faults& faults) {
    for (const auto& fault : faults)
        std::cerr << "brenvik: " << LibraryFile(workplace) << ":" << fault.line << ": " << fault.text << '\n';
    return faults.empty();
}

/// What the file's failures mean for the one who asked: an input that can't be read.
ExitStatus Reading(const Workplace& workplace, const std::function<ExitStatus()>& work) {
    try {
        return work();
    } catch (const Failure& failure) {
        throw CommandError(ExitStatus::Unreadable,
                           ReplaceAll(failure.what(), MaterialsPath(), LibraryFile(workplace)));
    }
}

ExitStatus ListMaterials(const std::string& home) {
    ConsoleDialogs dialogs(std::cerr);
    Workplace workplace(home, dialogs);
    TakeInstallFolder();
    return Reading(workplace, [&workplace] {
        const MaterialLibrary library = ReadMaterials();
        PrintTable(library.materials);
        const bool whole = TellFaults(workplace, library.damages);
        std::vector<MaterialFault> faults = library.faults;
        std::ranges::copy(FaultsOfLibrary(), std::back_inserter(faults));
        std::ranges::stable_sort(faults, {}, &MaterialFault::line);
        const bool right = TellFaults(workplace, faults);
        return whole && right && !workplace.toldSettings.DamageFound() ? ExitStatus::Done
                                                                       : ExitStatus::Incomplete;
    });
}

/// The near keys of the library as typed words; blank if there are none.
std::string NearKeys(const MaterialLibrary& library, const std::string& key) {
    constexpr std::size_t enoughToChooseFrom = 5;
    std::vector<std::string> words = NearMaterials(library, key, enoughToChooseFrom);
    std::ranges::transform(words, words.begin(), ShellWord);
    return Join(words, ", ");
}

ExitStatus FindOne(const std::string& home, const std::string& key) {
    ConsoleDialogs dialogs(std::cerr);
    Workplace workplace(home, dialogs);
    TakeInstallFolder();
    return Reading(workplace, [&] {
        const std::optional<CheckedMaterial> found = FindCheckedMaterial(key);
        TellFaults(workplace, GuessedLinesBeside(found));
        // A material without a first tool is none for a run either.
        if (!found || !MaterialFromTexts(found->texts).Found()) {
            const std::string near = NearKeys(ReadMaterials(), key);
            throw CommandError(ExitStatus::Incomplete, "you do not have the material " + key +
                                                           " in the material database" +
                                                           (near.empty() ? "" : "; the nearest are " + near));
        }
        std::cout << MaterialsText(std::span(&found->texts, 1), "\n");
        std::vector<MaterialFault> faults = found->guessed;
        std::ranges::copy(found->faults, std::back_inserter(faults));
        if (const std::string asked = KeyOfRunsFor(key); !asked.empty()) {
            std::cerr << "brenvik: no part finds " << ShellWord(key) << ": runs of this home ask for "
                      << ShellWord(asked) << '\n';
            TellFaults(workplace, faults);
            return ExitStatus::Incomplete;
        }
        return TellFaults(workplace, faults) ? ExitStatus::Done : ExitStatus::Incomplete;
    });
}

/// Whether two keys can be meant in one unit: no shop's boards are this many times as thick as others, and
/// the tools of one would be of no use for the other.
bool AreOfOneUnit(std::string_view key, std::string_view other) {
    constexpr double mostTimes = 15;
    const double a = LenientNumber(key), b = LenientNumber(other);
    return a <= b * mostTimes && b <= a * mostTimes;
}

/// Fails for words that can't make a record.
void RequireAddable(const MaterialLibrary& library, const std::string& file, const std::string& key,
                    const std::string& like) {
    if (const std::string expected = NewMaterialKeyFault(key); !expected.empty())
        throw CommandError(ExitStatus::WrongWords, "KEY: expected " + expected + "; found \"" + key + "\"");
    if (const std::string expected = KeyOfRunsFor(key); !expected.empty())
        throw CommandError(ExitStatus::WrongWords, "KEY: expected the thickness as runs write it: \"" +
                                                       expected + "\"; found \"" + key + "\"");
    if (const MaterialTexts* present = FindMaterialIn(library, key))
        throw CommandError(ExitStatus::WrongWords,
                           "KEY: expected one that is new; " + file + " has \"" + present->front() +
                               "\" already" +
                               (HasFirstTool(*present) ? "" : ", without a first tool: fill it in there"));
    const MaterialTexts* copied = FindMaterialIn(library, like);
    if (copied && !AreOfOneUnit(key, like))
        throw CommandError(ExitStatus::WrongWords,
                           "--like: expected a board of about the same thickness, found \"" + like +
                               "\" for \"" + key +
                               "\", which are as far apart as millimetres and inches; tools are copied as "
                               "they stand");
    if (copied && HasFirstTool(*copied)) return;
    const std::string near = NearKeys(library, like);
    throw CommandError(ExitStatus::WrongWords, "--like: expected a material of " + file +
                                                   (near.empty() ? "" : ", such as " + near) + "; found \"" +
                                                   like + "\"" + (copied ? ", which has no first tool" : ""));
}

ExitStatus AddOne(const std::string& home, const std::string& key, const std::string& like) {
    ConsoleDialogs dialogs(std::cerr);
    Workplace workplace(home, dialogs);
    TakeInstallFolder();
    MaterialTexts added;
    // From reading to writing, or two programs that add would each write the library without the other's
    // record, and so would one that adds and one that edits.
    auto turn = workplace.files.AwaitTurn(MaterialsPath());
    Reading(workplace, [&] {
        RequireAddable(ReadMaterials(), LibraryFile(workplace), key, like);
        // Fails, with its line, for a record that breaks off.
        const CheckedMaterial found = *FindCheckedMaterial(like);
        added = found.texts;
        for (const MaterialFault& fault : found.faults)
            throw CommandError(ExitStatus::Unreadable,
                               LibraryFile(workplace) + ":" + std::to_string(fault.line) + ": " + fault.text);
        return ExitStatus::Done;
    });
    const std::string copied = std::exchange(added.front(), key);
    AppendMaterial(added);
    turn.reset();
    std::cout << "added " << key << ", cut as " << copied << '\n';
    // Runs in other units than the library's are reported where they begin, and here, where a board is added.
    GetSettingText(setting::ExportScaleSetting);
    return workplace.toldSettings.DamageFound() ? ExitStatus::Incomplete : ExitStatus::Done;
}

}  // namespace

Command MaterialsCommand() {
    auto key = std::make_shared<std::string>();
    auto like = std::make_shared<std::string>();
    return {
        "materials",
        "List the material library, look in it, or add to it",
        {},
        {},
        {{"list", "Print every material with its tools", {}, ListMaterials, {}},
         {"find",
          "Print the material that a part of this key is cut by",
          {Argument("KEY", key.get(), "Thickness, a blank and the name: \"18 birch ply\"").Required()},
          [key](const std::string& home) { return FindOne(home, *key); },
          {}},
         {"add",
          "Copy the record of a material under a new key; the library's other lines stay as they are",
          {Argument("KEY", key.get(), "Thickness, a blank and the name of the new material: \"18 oak\"")
               .Required(),
           Argument("--like", like.get(), "The key of the material whose grain, direction and tools it gets")
               .Named("KEY")
               .Required()},
          [key, like](const std::string& home) { return AddOne(home, *key, *like); },
          {}}}};
}

}  // namespace brenvik::app
