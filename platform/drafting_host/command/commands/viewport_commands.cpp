// MVIEW, MSPACE, PSPACE and HIDE: viewports on the sheet, and the way into the model through one of them.
#include <optional>

#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/commands/stay_on_sheet.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/command/session/view_frame.h"
#include "drafting_host/document/geometry/vectors.h"

namespace brenvik::host_commands {

using namespace vectors;

namespace {

/// The sheet of a drawing that was never set up for a printer, by its file.
constexpr double SheetWidth = 420, SheetHeight = 297;

bool InPaperSpace(const CommandSession& session, std::string_view command) {
    if (session.Document().ActiveSpace() == ActiveSpaceKind::PaperSpace) return true;
    session.Refuse(std::string(command) + " works in paper space alone: set TILEMODE to 0 first.");
    return false;
}

void AddViewport(CommandSession& session, const Point3& corner, const Point3& opposite) {
    HostDocument& document = session.Document();
    const double width = std::abs(opposite.x - corner.x), height = std::abs(opposite.y - corner.y);
    if (width < PointTolerance || height < PointTolerance) {
        session.Refuse("A viewport needs a width and a height.");
        return;
    }
    const Point3 center{(corner.x + opposite.x) / 2, (corner.y + opposite.y) / 2, 0};
    auto& viewport = dynamic_cast<HostViewport&>(*document.Paper().AddPViewport(center, width, height));
    ViewportData values = viewport.Values();
    ShowModel(values, document);
    viewport.SetValues(std::move(values));
    session.Tell("Regenerating the model.");
}

/// Sets one switch of the chosen viewports.
void SwitchViewports(const std::vector<HostEntity*>& chosen, int bit, bool on) {
    for (HostEntity* entity : chosen) {
        auto* viewport = dynamic_cast<HostViewport*>(entity);
        if (viewport == nullptr || viewport->IsSheet()) continue;
        ViewportData values = viewport->Values();
        values.statusFlags = on ? values.statusFlags | bit : values.statusFlags & ~bit;
        viewport->SetValues(std::move(values));
    }
}

void ShowViewports(const std::vector<HostEntity*>& chosen, bool on) {
    for (HostEntity* entity : chosen) {
        auto* viewport = dynamic_cast<HostViewport*>(entity);
        if (viewport != nullptr && !viewport->IsSheet()) viewport->Display(on);
    }
    SwitchViewports(chosen, view_status::Off, !on);
}

}  // namespace

Asking<void> Mview(CommandSession& session) {
    if (!InPaperSpace(session, "MVIEW")) co_return;
    const StayOnSheet stay(session.Document());
    const Answered<Point3> corner = co_await session.AskPoint(
        "Specify corner of viewport or [ON/OFF/Fit/Hideplot/Lock] <Fit>:", "ON OFF Fit Hideplot Lock",
        IfEmpty::Allowed);
    if (corner.value) {
        const Answered<Point3> opposite = co_await session.AskPoint("Specify opposite corner:");
        AddViewport(session, *corner.value, *opposite.value);
    } else if (corner.Empty() || corner.Is("Fit")) {
        AddViewport(session, {0, 0, 0}, {SheetWidth, SheetHeight, 0});
    } else if (corner.Is("ON") || corner.Is("OFF")) {
        const bool on = corner.Is("ON");
        ShowViewports(co_await session.AskSelection(SelectFor::Changing), on);
    } else {
        const bool hide = corner.Is("Hideplot");
        const Answered<std::string> on = co_await session.AskKeyword(
            hide ? "Hidden line removal for plotting [ON/OFF]:" : "Viewport view locking [ON/OFF]:",
            "ON OFF");
        const std::vector<HostEntity*> chosen = co_await session.AskSelection(SelectFor::Changing);
        SwitchViewports(chosen, hide ? view_status::HidePlot : view_status::Locked, on.Is("ON"));
    }
}

Asking<void> Mspace(CommandSession& session) {
    if (!InPaperSpace(session, "MSPACE")) co_return;
    const auto* viewport = dynamic_cast<const HostViewport*>(session.Document().ActivePViewport());
    if (viewport == nullptr || !viewport->On()) {
        session.Refuse("There are no active viewports of model space.");
        co_return;
    }
    session.Document().SetMSpace(true);
}

Asking<void> Pspace(CommandSession& session) {
    if (!InPaperSpace(session, "PSPACE")) co_return;
    if (!session.Document().MSpace()) session.Tell("Already in paper space.");
    session.Document().SetMSpace(false);
}

Asking<void> Hide(CommandSession& session) {
    // A picture without hidden lines is a matter of the screen; the drawing stays as it is.
    session.Tell("Regenerating the model.");
    co_return;
}

}  // namespace brenvik::host_commands
