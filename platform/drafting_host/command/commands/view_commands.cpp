// -VIEW, ZOOM and REGEN. Nothing is drawn here, but the direction of the view counts: picks look along it,
// and the user system can be laid into it.
#include <array>
#include <cmath>

#include "base/text.h"
#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/session/answers.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/command/session/variables.h"
#include "drafting_host/command/session/view_frame.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/document/host_application.h"

namespace brenvik::host_commands {

using namespace vectors;

namespace {

struct NamedView {
    std::string_view name;
    Point3 towardsEye;
    Point3 up;
    bool square;  ///< Looks along an axis, so that a user system belongs to it.
};

constexpr auto Views = std::to_array<NamedView>({
    {"Top", {0, 0, 1}, {0, 1, 0}, true},
    {"Bottom", {0, 0, -1}, {0, 1, 0}, true},
    {"Front", {0, -1, 0}, {0, 0, 1}, true},
    {"BAck", {0, 1, 0}, {0, 0, 1}, true},
    {"Left", {-1, 0, 0}, {0, 0, 1}, true},
    {"Right", {1, 0, 0}, {0, 0, 1}, true},
    {"SWiso", {-1, -1, 1}, {0, 0, 1}, false},
    {"SEiso", {1, -1, 1}, {0, 0, 1}, false},
    {"NEiso", {1, 1, 1}, {0, 0, 1}, false},
    {"NWiso", {-1, 1, 1}, {0, 0, 1}, false},
});

void TakeView(CommandSession& session, std::string_view name) {
    for (const NamedView& view : Views) {
        if (view.name != name) continue;
        const Point3 z = Unit(view.towardsEye);
        const Point3 x = Unit(Cross(view.up, z));
        const Point3 y = Unit(Cross(z, x));
        session.SetView(z, y);
        if (view.square && VariableNumber(session, "UCSORTHO") == 1) session.ChangeUcs({{}, x, y});
        return;
    }
}

/// "2", "2x" or "2xp".
bool IsZoomFactor(std::string_view answer) {
    if (answer.ends_with("xp") || answer.ends_with("XP")) answer.remove_suffix(2);
    if (answer.ends_with('x') || answer.ends_with('X')) answer.remove_suffix(1);
    const std::optional<double> factor = ParseLength(answer);
    return factor && *factor > 0;
}

/// A factor with its letters, which no plain number question takes.
class ZoomQuestion final : public ValueQuestion<std::string> {
  public:
    using ValueQuestion::ValueQuestion;

  private:
    std::optional<std::string> Parse(const std::string& answer) override {
        const std::optional<Point3> corner = Session().PointFrom(answer);
        if (!IsZoomFactor(answer) && !corner) return std::nullopt;
        if (corner) Session().SetLastPoint(*corner);
        return answer;
    }
    std::string Wanted() const override { return "a corner of a window or a scale factor"; }
};

/// In an entered viewport its own view, otherwise that of the window.
void ShowExtents(CommandSession& session) {
    if (session.Document().CurrentViewport() != nullptr) {
        ViewportData view = session.CurrentView();
        ShowModel(view, session.Document());
        session.ChangeView(view);
        return;
    }
    HostApplication& host = session.Document().Host();
    if (host.Active() == &session.Document()) host.ZoomExtents();
}

}  // namespace

Asking<void> View(CommandSession& session) {
    constexpr std::string_view sides = "Top Bottom Front BAck Left Right SWiso SEiso NEiso NWiso";
    Answered<std::string> option = co_await session.AskKeyword(
        "Option [Orthographic/Top/Bottom/Front/BAck/Left/Right/SWiso/SEiso/NEiso/NWiso]:",
        "Orthographic Top Bottom Front BAck Left Right SWiso SEiso NEiso NWiso", IfEmpty::Allowed);
    if (option.Is("Orthographic")) {
        option = co_await session.AskKeyword("Side [Top/Bottom/Front/BAck/Left/Right] <Top>:", sides,
                                             IfEmpty::Allowed);
        if (option.Empty()) option.keyword = "Top";
    }
    TakeView(session, option.keyword);
}

Asking<void> Zoom(CommandSession& session) {
    ZoomQuestion question(session,
                          "Corner of a window, a scale factor (nX or nXP), or "
                          "[All/Center/Extents/Previous/Scale/Window]:",
                          "All Center Extents Previous Scale Window", IfEmpty::Allowed);
    const Answered<std::string> answer = co_await question;
    if (answer.Is("All") || answer.Is("Extents")) {
        ShowExtents(session);
    } else if (answer.Is("Center")) {
        co_await session.AskPoint("Center of the view:");
        co_await session.AskDistance("Magnification or height <as it is>:", {}, IfEmpty::Allowed);
    } else if (answer.Is("Scale")) {
        ZoomQuestion factor(session, "Scale factor (nX or nXP):", {}, IfEmpty::Refused);
        co_await factor;
    } else if (answer.Is("Window")) {
        co_await session.AskPoint("First corner:");
        co_await session.AskPoint("Opposite corner:");
    } else if (answer.value && !IsZoomFactor(*answer.value)) {
        co_await session.AskPoint("Opposite corner:");
    }
}

Asking<void> Regen(CommandSession& session) {
    session.Tell("Regenerating the model.");
    co_return;
}

}  // namespace brenvik::host_commands
