// The letter update done once more, on the solid as it is.
#include "parts/letters_in_use.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <utility>

#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/skip.h"
#include "base/text.h"
#include "parts/extents.h"
#include "parts/mautocad.h"
#include "parts/orie_update.h"
#include "parts/part_data_faults.h"
#include "parts/part_trouble.h"
#include "session/module_state.h"
#include "session/ports/host_interface.h"
#include "session/session.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

struct GuessedLetters {
    std::map<std::string, std::string, std::less<>> byHandle;
};

std::optional<mAutoCAD::MeasuredExtents> ExtentsOf(const AcadEntity& solid,
                                                   const std::array<std::string_view, 3>& saved) {
    mAutoCAD::MeasuringChoice choice;
    choice.WCSMeasure = SwitchIsOn(setting::WCSMeasure);
    choice.NoMeasure = ToInteger(NumberSetting(setting::NoMeasure));
    std::unique_ptr<SolidMeasurer> measurer;
    mAutoCAD::MeasuredExtents extents;
    bool measured = false;
    if (ThePlatform().measuring == nullptr ||
        !Skip([&] { measured = mAutoCAD::ObtainExtents(solid, choice, saved, measurer, extents); }) ||
        !measured)
        return std::nullopt;
    return extents;
}

/// Null if the letters are right.
std::optional<std::string> StaleLetters(const AcadEntity& solid, const std::string& letters,
                                        const std::array<std::string_view, 3>& saved) {
    const std::optional<mAutoCAD::MeasuredExtents> extents = ExtentsOf(solid, saved);
    if (!extents) return std::nullopt;
    const std::string now = mAutoCAD::UpdateOrie({letters, saved, *extents}).letters;
    if (EqualsIgnoreCase(now, letters)) return std::nullopt;
    return "it was worked on by its letters " + letters +
           ", but its sizes have changed since these were saved" +
           (now.empty() ? std::string(", and nobody can tell which of them would be right now")
                        : ", and " + now + " would be right now") +
           "; expected letters that were applied to its present sizes from the list";
}

}  // namespace

std::optional<std::string> FaultOfLettersInUse(const AcadEntity& solid) {
    std::string letters;
    std::array<std::string, 3> saved;
    const bool read = Skip([&] {
        letters = mAutoCAD::PartDataOf(solid, "ORIE");
        for (std::size_t i = 0; i < saved.size(); ++i)
            saved[i] = mAutoCAD::PartDataOf(solid, "OLDVALUE" + std::to_string(i + 1));
    });
    if (!read || IsBlank(letters) || LettersFault(letters)) return std::nullopt;
    // Letters from another program come without saved sizes, so they can't be checked.
    if (std::ranges::all_of(saved, [](const std::string& value) { return IsBlank(value); }))
        return std::nullopt;
    const std::array<std::string_view, 3> values{saved[0], saved[1], saved[2]};
    if (const auto fault = SavedExtentsFault(values))
        return "it was worked on by its letters " + letters + ", but " + *fault +
               ", so nobody can tell whether they still name its sizes";
    return StaleLetters(solid, letters, values);
}

void NoteMissingLetters(const AcadEntity& solid) {
    std::string handle, name, letters;
    const bool read = Skip([&] {
        handle = solid.Handle();
        letters = mAutoCAD::PartDataOf(solid, "ORIE");
    });
    if (!read || !IsBlank(letters)) return;
    Skip([&] { name = mAutoCAD::PartDataOf(solid, "PartName"); });
    NotePartTrouble(
        {handle, name,
         "it has no letters (ORIE) and is taken for LWT, its longest size being the length and its "
         "shortest the thickness; expected L, W and T in some order",
         true, true});
}

void ForgetGuessedLetters() { StateOf<GuessedLetters>().byHandle.clear(); }

void NoteGuessedLetters(std::string_view handle, std::string_view letters) {
    StateOf<GuessedLetters>().byHandle.insert_or_assign(std::string(handle), std::string(letters));
}

bool AreGuessedLetters(std::string_view handle, std::string_view letters) {
    const auto& guessed = StateOf<GuessedLetters>().byHandle;
    const auto found = guessed.find(handle);
    return found != guessed.end() && EqualsIgnoreCase(found->second, letters);
}

}  // namespace brenvik
