// The box, and the note: many parts of a job are of one board.
#include "cnc/unknown_material.h"

#include <algorithm>

#include "cnc/run_template.h"
#include "session/message.h"
#include "settings/materials.h"

namespace brenvik {

void TellUnknownMaterial(const RunState& run) {
    ShowMessage(UnknownMaterialText(run.MaterialKeyText));
    std::vector<std::string>& noted = detail::ReportOfRun().unknownMaterials;
    if (std::ranges::find(noted, run.MaterialKeyText) == noted.end()) noted.push_back(run.MaterialKeyText);
}

}  // namespace brenvik
