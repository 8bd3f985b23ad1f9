// SOLPROF: the profile of solids as the entered viewport shows it, as blocks in model space.
#include "base/handle_text.h"
#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/command/session/view_frame.h"
#include "drafting_host/document/geometry/profile_curves.h"
#include "drafting_host/document/geometry/vectors.h"

namespace brenvik::host_commands {

using namespace vectors;

namespace {

/// The layer of the viewport's own profiles; other viewports don't show it.
HostLayer& ProfileLayer(HostDocument& document, const HostViewport& viewport, const std::string& prefix) {
    const std::string name = prefix + HandleToText(viewport.HandleNumber());
    if (HostLayer* known = document.LayerTable().Find(name)) return *known;
    auto& layer = dynamic_cast<HostLayer&>(*document.Layers().Add(name));
    if (prefix == "PH-" && document.HasLinetype("HIDDEN")) layer.SetLinetype("HIDDEN");
    for (HostViewport* other : ViewportsOf(document))
        if (other != &viewport && !other->LayerObject().Locked()) FreezeIn(*other, layer, true);
    return layer;
}

/// Anonymous blocks are numbered through.
std::string NewBlockName(const HostDocument& document) {
    for (int number = 1;; ++number) {
        std::string name = "*U" + std::to_string(number);
        if (document.FindBlock(name) == nullptr) return name;
    }
}

void InsertProfile(HostDocument& document, HostLayer& layer, std::vector<HostGeometry> curves) {
    if (curves.empty()) return;
    EntityLook look;
    look.layer = &layer;
    BlockData record;
    record.name = NewBlockName(document);
    constexpr int anonymous = 1;
    record.flags = anonymous;
    HostBlock& block = document.AddBlock(record);
    for (HostGeometry& curve : curves) block.Add(std::move(curve)).SetLook(look);
    document.Model().InsertBlock({}, record.name).SetLook(look);
}

std::vector<TopoDS_Shape> ShapesOf(const std::vector<HostEntity*>& chosen) {
    std::vector<TopoDS_Shape> shapes;
    for (const HostEntity* entity : chosen)
        if (const auto* solid = dynamic_cast<const HostSolid*>(entity)) shapes.push_back(solid->Shape());
    return shapes;
}

Asking<bool> AskYes(CommandSession& session, std::string_view prompt) {
    const Answered<std::string> answer = co_await session.AskKeyword(prompt, "Yes No", IfEmpty::Allowed);
    co_return !answer.Is("No");
}

}  // namespace

Asking<void> Solprof(CommandSession& session) {
    HostDocument& document = session.Document();
    if (document.CurrentViewport() == nullptr) {
        session.Refuse("SOLPROF works in model space seen through a viewport: MSPACE enters one.");
        co_return;
    }
    const std::vector<HostEntity*> chosen = co_await session.AskSelection(SelectFor::Changing);
    const std::vector<TopoDS_Shape> shapes = ShapesOf(chosen);
    if (shapes.empty()) {
        session.Refuse("No solids selected.");
        co_return;
    }
    ProfileOptions options;
    options.partHidden =
        co_await AskYes(session, "Display hidden profile lines on separate layer? [Yes/No] <Y>:");
    options.flat = co_await AskYes(session, "Project profile lines onto a plane? [Yes/No] <Y>:");
    options.withoutTangent = co_await AskYes(session, "Delete tangential edges? [Yes/No] <Y>:");
    // A transparent command may have left the viewport meanwhile.
    const HostViewport* viewport = document.CurrentViewport();
    if (viewport == nullptr) co_return;
    const SightPlane plane{document.ActiveUCS()[0], session.ViewDirection()};
    HostLayer& visible = ProfileLayer(document, *viewport, "PV-");
    if (options.partHidden) {
        ProfileCurves curves = ProfileOf(shapes, plane, options);
        HostLayer& hidden = ProfileLayer(document, *viewport, "PH-");
        InsertProfile(document, visible, std::move(curves.visible));
        InsertProfile(document, hidden, std::move(curves.hidden));
    } else {
        // If hidden lines aren't wanted, each solid makes a block of its own.
        for (const TopoDS_Shape& shape : shapes)
            InsertProfile(document, visible, ProfileOf({&shape, 1}, plane, options).visible);
    }
    session.Tell(std::to_string(shapes.size()) + " solids selected.");
}

}  // namespace brenvik::host_commands
