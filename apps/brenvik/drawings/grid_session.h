// What the commands that go through the grid form share: opening and selecting, and work while it stands
// open.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "console/console_dialogs.h"
#include "drawings/drawing_io.h"
#include "drawings/drawing_unit.h"
#include "forms/form.h"
#include "home/workplace.h"

namespace brenvik::app {

struct OpenedInput {
    HostDocument& document;
    std::size_t selected = 0;
};

/// From here on, reading a setting with an impossible value makes the command incomplete. The teller must
/// outlive all reading.
void TellDamagedSettings(Workplace& workplace, Teller& teller);

/// Opens the drawing of the options in the unit of the home's drawings. Where runs scale what they write, the
/// drawing names no unit, since its parts would hand a false one down.
HostDocument& OpenInHome(Workplace& workplace, const DrawingOptions& options, const UnitOption& unit,
                         Teller& teller);

/// Opens the drawing of the options as OpenInHome does and selects what they name; a drawing without solids
/// is remarked on. Where the drawing isn't saved, solids in references to blocks are parts too.
OpenedInput OpenAndSelect(Workplace& workplace, const DrawingOptions& options, const UnitOption& unit,
                          Teller& teller);

/// Calls `Show` and hands each form that opens meanwhile to `work`, the grid form first. A CommandError of
/// the work ends the call when the forms have closed: the library lets none through.
void WhileGridIsOpen(HostApplication& host, ConsoleDialogs& dialogs, const std::function<void(Form&)>& work);

/// A line for each part that the scans since the last call could not take into the list, by handle and name;
/// one line for all of them where the part table could not be used.
struct DroppedPartLines {
    std::vector<std::string> lines;
    std::size_t parts = 0;
};
DroppedPartLines TakeDroppedPartLines();
/// Reports, through `line` or through the teller, losses in exports of lists that no message box has shown.
/// Reports without a loss that the adjustment file of the settings has changed sizes.
void TellExportTroubles(Teller& teller, const std::function<void(const std::string&)>& line = {});
/// A line for what lists and runs have taken from parts though it can't be right, since the last call, and
/// one for each default that they have taken.
struct PartTroubleLines {
    std::vector<std::string> lines, remarks;
    /// Of the lines.
    bool allToldInBoxes = true;
};
PartTroubleLines TakePartTroubleLines();
/// Reports the lines as losses and the remarks as remarks.
void TellPartTroubles(Teller& teller);

/// Reports them as losses. Returns the number of parts.
std::size_t TellDroppedParts(Teller& teller);

}  // namespace brenvik::app
