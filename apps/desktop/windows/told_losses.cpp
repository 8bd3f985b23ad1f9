// The lines that the command line program writes to standard error, which nobody reads beside windows.
#include "windows/told_losses.h"

#include <algorithm>

#include "base/text.h"
#include "drawings/grid_session.h"
#include "export/adjustment_file.h"
#include "export/export_troubles.h"
#include "session/message.h"
#include "settings/frm_materials.h"

namespace brenvik::desktop {

namespace {

/// A box has to fit the screen; the history has the rest.
constexpr std::size_t MostShown = 12;

void Append(std::vector<std::string>& lines, const std::vector<std::string>& more) {
    lines.insert(lines.end(), more.begin(), more.end());
}

}  // namespace

ToldLosses TakeToldLosses() {
    ToldLosses told;
    const app::PartTroubleLines troubles = app::TakePartTroubleLines();
    told.lines = troubles.remarks;
    Append(told.lines, TakeAdjustedLines());
    if (troubles.allToldInBoxes)
        Append(told.lines, troubles.lines);
    else
        told.losses = troubles.lines;
    Append(told.losses, app::TakeDroppedPartLines().lines);
    Append(told.losses, TakeExportTroubles());
    for (const LibraryNote& note : TakeLibraryNotes())
        (note.isLoss ? told.losses : told.lines).push_back(note.text);
    Append(told.lines, told.losses);
    return told;
}

void ShowLosses(const std::vector<std::string>& losses) {
    if (losses.empty()) return;
    const std::size_t shown = std::min(losses.size(), MostShown);
    std::string text =
        Join({losses.begin(), losses.begin() + static_cast<std::ptrdiff_t>(shown)}, "\r\n\r\n");
    if (losses.size() > shown)
        text += "\r\n\r\nand " + std::to_string(losses.size() - shown) +
                " more, which the command line's history shows";
    ShowMessage(text, "Look at this", MessageIcon::Exclamation);
}

}  // namespace brenvik::desktop
