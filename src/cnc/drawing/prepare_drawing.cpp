// The set-up that CNC runs and the export of parts share.
#include "cnc/drawing/prepare_drawing.h"

#include <string_view>

#include "base/numbers.h"
#include "base/skip.h"
#include "session/message.h"
#include "settings/settings_store.h"

namespace brenvik {

void PrepareDrawing(AcadDocument& drawing) {
    const bool save = ToInteger(NumberSetting("CNCSave")) == 0;
    drawing.SendCommand("_ucs\rw\r");
    if (save) ShowAndResume(ShowFailureWithDetail, [&] { drawing.Save(); });
    for (const std::string_view variable :
         {"plinetype\r2\r", "ucsfollow\r0\r", "ucsortho\r0\r", "isavebak\r0\r", "OSNAPCOORD\r2\r"})
        drawing.SendCommand(variable);
}

void ScaleForExport(AcadDocument& drawing, int ExportScaleSetting) {
    if (ExportScaleSetting == 3) drawing.SendCommand("scale\rall\r\r0\r25.4\r");
    if (ExportScaleSetting == 4) drawing.SendCommand("scale\rall\r\r0\r0.0393700787401575\r");
}

}  // namespace brenvik
