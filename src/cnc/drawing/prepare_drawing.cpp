// The set-up that CNC runs and the export of parts share.
#include "cnc/drawing/prepare_drawing.h"

#include <algorithm>
#include <string_view>

#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/work_layers.h"
#include "session/message.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

/// In any case, as the host compares names.
bool IsWorkLayer(std::string_view name) {
    return std::ranges::any_of(layers::All,
                               [name](std::string_view own) { return EqualsIgnoreCase(name, own); }) ||
           std::ranges::any_of(layers::ProjectionPrefixes, [name](std::string_view prefix) {
               return StartsWithIgnoreCase(name, prefix);
           });
}

}  // namespace

void PrepareDrawing(AcadDocument& drawing, DrawingSave saving) {
    drawing.SendCommand("_ucs\rw\r");
    if (saving == DrawingSave::AsSet) SaveAsSet(drawing);
    for (const std::string_view variable :
         {"plinetype\r2\r", "ucsfollow\r0\r", "ucsortho\r0\r", "isavebak\r0\r", "OSNAPCOORD\r2\r"})
        drawing.SendCommand(variable);
}

void SaveAsSet(AcadDocument& drawing) {
    if (ToInteger(NumberSetting(setting::CNCSave)) != 0) return;
    ShowAndResume(ShowFailureWithDetail, [&] { drawing.Save(); });
}

void BringWithinReach(AcadDocument& partDrawing) {
    AcadLayer& neutral = AddLayer(partDrawing, layers::Zero);
    neutral.SetFreeze(false);
    neutral.SetLayerOn(true);
    bool left = false;
    for (Acad3DSolid* solid : All<Acad3DSolid>(partDrawing)) {
        if (!solid->Visible()) solid->SetVisible(true);
        const AcadLayer& layer = *partDrawing.Layers().Item(solid->Layer());
        if (!layer.Freeze() && layer.LayerOn() && !IsWorkLayer(layer.Name())) continue;
        solid->SetLayer(layers::Zero);
        left = true;
    }
    // A work layer begins as a new one, which no lock has reached.
    if (left) partDrawing.PurgeAll();
}

void ScaleForExport(AcadDocument& drawing, int ExportScaleSetting) {
    if (ExportScaleSetting == 3) drawing.SendCommand("scale\rall\r\r0\r25.4\r");
    if (ExportScaleSetting == 4) drawing.SendCommand("scale\rall\r\r0\r0.0393700787401575\r");
}

}  // namespace brenvik
