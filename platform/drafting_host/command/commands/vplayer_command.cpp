// VPLAYER: layers that are shown in some viewports and not in others.
#include <algorithm>

#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/commands/layer_names.h"
#include "drafting_host/command/commands/stay_on_sheet.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/command/session/view_frame.h"

namespace brenvik::host_commands {

namespace {

void Apply(const std::vector<HostViewport*>& viewports, const std::vector<HostLayer*>& layers, bool freeze) {
    for (HostViewport* viewport : viewports)
        for (HostLayer* layer : layers) FreezeIn(*viewport, *layer, freeze);
}

void ListFrozen(const CommandSession& session, const HostViewport& viewport) {
    std::string names;
    for (const HostLayer* layer : session.Document().LayerTable().All()) {
        const auto& frozen = viewport.Values().frozenLayers;
        const HandleValue handle = layer->Values().handle;
        if (handle == 0 || std::ranges::find(frozen, handle) == frozen.end()) continue;
        names += (names.empty() ? "" : ", ") + layer->Values().name;
    }
    session.Tell("Viewport " + std::to_string(viewport.Values().id) +
                 (names.empty() ? " shows all layers." : " doesn't show " + names + "."));
}

/// The viewports that the answers name; none where the sheet itself is meant.
Asking<std::vector<HostViewport*>> AskViewports(CommandSession& session) {
    HostDocument& document = session.Document();
    const Answered<std::string> which = co_await session.AskKeyword(
        "Enter an option [All/Select/Current] <Current>:", "All Select Current", IfEmpty::Allowed);
    if (which.Is("All")) co_return ViewportsOf(document);
    if (which.Is("Select")) {
        const StayOnSheet stay(document);
        const std::vector<HostEntity*> chosen = co_await session.AskSelection(SelectFor::Changing);
        std::vector<HostViewport*> viewports;
        for (HostEntity* entity : chosen) {
            auto* viewport = dynamic_cast<HostViewport*>(entity);
            if (viewport != nullptr && !viewport->IsSheet()) viewports.push_back(viewport);
        }
        co_return viewports;
    }
    HostViewport* current = document.CurrentViewport();
    if (current == nullptr) session.Refuse("No viewport is entered: MSPACE enters one.");
    co_return current == nullptr ? std::vector<HostViewport*>{} : std::vector{current};
}

}  // namespace

Asking<void> Vplayer(CommandSession& session) {
    if (session.Document().ActiveSpace() == ActiveSpaceKind::ModelSpace) {
        session.Refuse("VPLAYER works in paper space alone: set TILEMODE to 0 first.");
        co_return;
    }
    for (;;) {
        const Answered<std::string> option = co_await session.AskKeyword(
            "Enter an option [?/Freeze/Thaw/Reset]:", "? Freeze Thaw Reset", IfEmpty::Allowed);
        if (option.Empty()) co_return;
        if (option.Is("?")) {
            for (const HostViewport* viewport : ViewportsOf(session.Document()))
                ListFrozen(session, *viewport);
            continue;
        }
        const bool freeze = option.Is("Freeze");
        const Answered<std::string> names = co_await session.AskText(
            freeze ? "Enter layer name(s) to freeze:" : "Enter layer name(s) to thaw:", IfEmpty::Allowed);
        const std::vector<HostLayer*> layers =
            names.Empty() ? std::vector<HostLayer*>{} : LayersNamed(session, *names.value);
        const std::vector<HostViewport*> viewports = co_await AskViewports(session);
        Apply(viewports, layers, freeze);
    }
}

}  // namespace brenvik::host_commands
