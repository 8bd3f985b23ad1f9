// brenvik materials: the material library as a run reads it, and the look-up of one key in it.
#include <algorithm>
#include <array>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"
#include "base/text.h"
#include "command_line.h"
#include "console/console_dialogs.h"
#include "session/commands.h"
#include "settings/materials.h"
#include "workplace.h"

namespace brenvik::app {

namespace {

constexpr std::array<std::string_view, MaterialFieldCount> captions{
    "Material",  "Grain",       "Direction",  "Tool1", "Tool1 Dia", "Tool1 Speed", "Tool1 Feed", "Tool2",
    "Tool2 Dia", "Tool2 Speed", "Tool2 Feed", "Tool3", "Tool3 Dia", "Tool3 Speed", "Tool3 Feed"};

using Cells = std::array<std::string, MaterialFieldCount>;

void PrintTable(const std::vector<MaterialTexts>& materials) {
    std::vector<Cells> rows(1);
    std::copy(captions.begin(), captions.end(), rows.front().begin());
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

/// What the file's failures mean for the one who asked: an input that can't be read.
ExitStatus Reading(const std::function<ExitStatus()>& work) {
    try {
        return work();
    } catch (const Failure& failure) {
        throw CommandError(ExitStatus::Unreadable, failure.what());
    }
}

ExitStatus ListMaterials(const std::string& home) {
    ConsoleDialogs dialogs(std::cerr);
    Workplace workplace(home, dialogs);
    TakeInstallFolder();
    return Reading([] {
        const MaterialLibrary library = ReadMaterials();
        PrintTable(library.materials);
        for (const MaterialDamage& damage : library.damages)
            std::cerr << "brenvik: " << MaterialsPath() << ":" << damage.line << ": " << damage.text << '\n';
        return library.damages.empty() ? ExitStatus::Done : ExitStatus::Incomplete;
    });
}

ExitStatus FindOne(const std::string& home, const std::string& key) {
    ConsoleDialogs dialogs(std::cerr);
    Workplace workplace(home, dialogs);
    TakeInstallFolder();
    return Reading([&key] {
        const std::optional<MaterialTexts> found = FindMaterial(key);
        // A material without a first tool is none for a run either.
        if (!found || !MaterialFromTexts(*found).Found())
            throw CommandError(ExitStatus::Incomplete,
                               "you do not have the material " + key + " in the material database");
        std::cout << MaterialsText(std::span(&*found, 1), "\n");
        return ExitStatus::Done;
    });
}

}  // namespace

Command MaterialsCommand() {
    auto key = std::make_shared<std::string>();
    return {"materials",
            "List the material library, or look in it",
            {},
            {},
            {{"list", "Print every material with its tools", {}, ListMaterials, {}},
             {"find",
              "Print the material that a part of this key is cut by",
              {Argument("KEY", key.get(), "Thickness, a blank and the name: \"18 birch ply\"").Required()},
              [key](const std::string& home) { return FindOne(home, *key); },
              {}}}};
}

}  // namespace brenvik::app
