// The table of drawing variables and the three places they are kept in.
#include "drafting_host/command/session/variables.h"

#include <array>
#include <vector>

#include "base/letter_case.h"
#include "base/noise.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "drafting_host/command/session/answers.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/command/session/host_command_line.h"
#include "drafting_host/command/session/view_frame.h"
#include "drafting_host/dxf/data/header_variables.h"

namespace brenvik {
namespace {

using Kind = HostVariable::Kind;
using Place = HostVariable::Place;

constexpr double Most16 = 32767;

constexpr auto Variables = std::to_array<HostVariable>({
    {"ANGBASE", Kind::Real, Place::Drawing, "0"},
    {"ANGDIR", Kind::Whole, Place::Drawing, "0", 0, 1},
    {"APERTURE", Kind::Whole, Place::Profile, "10", 1, 50},
    {"ATTDIA", Kind::Whole, Place::Profile, "0", 0, 1},
    {"ATTMODE", Kind::Whole, Place::Drawing, "1", 0, 2},
    {"ATTREQ", Kind::Whole, Place::Profile, "1", 0, 1},
    {"AUNITS", Kind::Whole, Place::Drawing, "0", 0, 4},
    {"AUPREC", Kind::Whole, Place::Drawing, "0", 0, 8},
    {"BLIPMODE", Kind::Whole, Place::Profile, "0", 0, 1},
    {"CELTSCALE", Kind::Real, Place::Drawing, "1", 1e-9, 1e9},
    {"CHAMFERA", Kind::Real, Place::Drawing, "0", 0, 1e9},
    {"CHAMFERB", Kind::Real, Place::Drawing, "0", 0, 1e9},
    {"CLAYER", Kind::Text, Place::Layer, "0"},
    {"CMDDIA", Kind::Whole, Place::Profile, "1", 0, 1},
    {"CMDECHO", Kind::Whole, Place::Profile, "1", 0, 1},
    {"CVPORT", Kind::Whole, Place::Viewport, "2", 1, Most16},
    {"DELOBJ", Kind::Whole, Place::Profile, "1", 0, 2},
    {"DISPSILH", Kind::Whole, Place::Drawing, "0", 0, 1},
    {"DWGNAME", Kind::Text, Place::Fixed, ""},
    {"ELEVATION", Kind::Real, Place::Drawing, "0"},
    {"EXPERT", Kind::Whole, Place::Profile, "0", 0, 5},
    {"FACETRES", Kind::Real, Place::Profile, "0.5", 0.01, 10},
    {"FILEDIA", Kind::Whole, Place::Profile, "1", 0, 1},
    {"FILLETRAD", Kind::Real, Place::Drawing, "0", 0, 1e9},
    {"FILLMODE", Kind::Whole, Place::Drawing, "1", 0, 1},
    {"GRIDMODE", Kind::Whole, Place::Profile, "0", 0, 1},
    {"HIGHLIGHT", Kind::Whole, Place::Profile, "1", 0, 1},
    {"INSBASE", Kind::Point, Place::Drawing, "0,0,0"},
    {"ISAVEBAK", Kind::Whole, Place::Profile, "1", 0, 1},
    {"ISOLINES", Kind::Whole, Place::Profile, "4", 0, 2047},
    {"LTSCALE", Kind::Real, Place::Drawing, "1", 1e-9, 1e9},
    {"LUNITS", Kind::Whole, Place::Drawing, "2", 1, 5},
    {"LUPREC", Kind::Whole, Place::Drawing, "4", 0, 8},
    {"LWDISPLAY", Kind::Whole, Place::Drawing, "0", 0, 1},
    {"MIRRTEXT", Kind::Whole, Place::Drawing, "1", 0, 1},
    {"ORTHOMODE", Kind::Whole, Place::Drawing, "0", 0, 1},
    {"OSMODE", Kind::Whole, Place::Profile, "0", 0, Most16},
    {"OSNAPCOORD", Kind::Whole, Place::Profile, "2", 0, 2},
    {"PDMODE", Kind::Whole, Place::Drawing, "0", 0, 100},
    {"PDSIZE", Kind::Real, Place::Drawing, "0"},
    {"PICKADD", Kind::Whole, Place::Profile, "1", 0, 1},
    {"PICKAUTO", Kind::Whole, Place::Profile, "1", 0, 1},
    {"PICKBOX", Kind::Whole, Place::Profile, "3", 0, Most16},
    {"PICKFIRST", Kind::Whole, Place::Profile, "1", 0, 1},
    {"PICKSTYLE", Kind::Whole, Place::Profile, "1", 0, 3},
    {"PLINEGEN", Kind::Whole, Place::Drawing, "0", 0, 1},
    {"PLINETYPE", Kind::Whole, Place::Profile, "2", 0, 2},
    {"PLINEWID", Kind::Real, Place::Drawing, "0", 0, 1e9},
    {"PROJMODE", Kind::Whole, Place::Profile, "1", 0, 2},
    {"PSLTSCALE", Kind::Whole, Place::Drawing, "1", 0, 1},
    {"QTEXTMODE", Kind::Whole, Place::Drawing, "0", 0, 1},
    {"REGENMODE", Kind::Whole, Place::Drawing, "1", 0, 1},
    {"SNAPMODE", Kind::Whole, Place::Profile, "0", 0, 1},
    {"SNAPUNIT", Kind::Real, Place::Profile, "0.5", 1e-9, 1e9},
    {"SPLINESEGS", Kind::Whole, Place::Drawing, "8", -Most16, Most16},
    {"SPLINETYPE", Kind::Whole, Place::Drawing, "6", 5, 6},
    {"SURFTAB1", Kind::Whole, Place::Drawing, "6", 2, Most16},
    {"SURFTAB2", Kind::Whole, Place::Drawing, "6", 2, Most16},
    {"TEXTSIZE", Kind::Real, Place::Drawing, "0.2", 1e-9, 1e9},
    {"THICKNESS", Kind::Real, Place::Drawing, "0"},
    {"TILEMODE", Kind::Whole, Place::Space, "1", 0, 1},
    {"UCSFOLLOW", Kind::Whole, Place::Profile, "0", 0, 1},
    {"UCSICON", Kind::Whole, Place::Profile, "3", 0, 3},
    {"UCSORTHO", Kind::Whole, Place::Profile, "1", 0, 1},
    {"USERI1", Kind::Whole, Place::Drawing, "0", -Most16, Most16},
    {"USERI2", Kind::Whole, Place::Drawing, "0", -Most16, Most16},
    {"USERI3", Kind::Whole, Place::Drawing, "0", -Most16, Most16},
    {"USERI4", Kind::Whole, Place::Drawing, "0", -Most16, Most16},
    {"USERI5", Kind::Whole, Place::Drawing, "0", -Most16, Most16},
    {"USERR1", Kind::Real, Place::Drawing, "0"},
    {"USERR2", Kind::Real, Place::Drawing, "0"},
    {"USERR3", Kind::Real, Place::Drawing, "0"},
    {"USERR4", Kind::Real, Place::Drawing, "0"},
    {"USERR5", Kind::Real, Place::Drawing, "0"},
    {"VISRETAIN", Kind::Whole, Place::Drawing, "1", 0, 1},
    {"WORLDVIEW", Kind::Whole, Place::Drawing, "1", 0, 1},
});

using Groups = std::vector<std::pair<int, std::string>>;

std::string HeaderName(const HostVariable& variable) { return "$" + std::string(variable.name); }

std::string DrawingText(const CommandSession& session, const HostVariable& variable) {
    const auto& header = session.Document().Tables().headerVariables;
    const auto found = header.find(HeaderName(variable));
    if (found == header.end() || found->second.empty()) return std::string(variable.initial);
    const Groups& groups = found->second;
    switch (variable.kind) {
        case Kind::Text:
            return groups.front().second;
        case Kind::Whole:
            return NumberToText(LenientNumber(groups.front().second));
        case Kind::Real:
            return LengthText(LenientNumber(groups.front().second));
        case Kind::Point: {
            std::array<double, 3> values{};
            for (std::size_t i = 0; i < groups.size() && i < values.size(); ++i)
                values[i] = LenientNumber(groups[i].second);
            return PointText({values[0], values[1], values[2]});
        }
    }
    return {};
}

void PutIntoDrawing(CommandSession& session, const HostVariable& variable, const std::string& value,
                    const Point3& point) {
    const HeaderVariable* header = FindHeaderVariable(HeaderName(variable));
    const int code = header == nullptr ? 70 : header->code;
    Groups groups{{code, value}};
    if (variable.kind == Kind::Point) {
        groups = {{code, ShortestRoundTrip(NoiseAsZero(point.x))},
                  {code + 10, ShortestRoundTrip(NoiseAsZero(point.y))},
                  {code + 20, ShortestRoundTrip(NoiseAsZero(point.z))}};
    }
    session.Document().Tables().headerVariables[HeaderName(variable)] = std::move(groups);
}

std::string WrongNumber(const HostVariable& variable) {
    const std::string kind = variable.kind == Kind::Whole ? "a whole number" : "a number";
    if (variable.least == variable.most) return kind + " is expected";
    return kind + " from " + NumberToText(variable.least) + " to " + NumberToText(variable.most) +
           " is expected";
}

bool Within(const HostVariable& variable, double value) {
    return variable.least == variable.most || (value >= variable.least && value <= variable.most);
}

/// The value as it is kept, or null for an answer of another kind.
std::optional<std::string> ValueToKeep(const HostVariable& variable, const std::string& answer) {
    switch (variable.kind) {
        case Kind::Text:
        case Kind::Point:
            return answer;
        case Kind::Whole: {
            const std::optional<int> whole = ParseWhole(answer);
            if (!whole || !Within(variable, *whole)) return std::nullopt;
            return std::to_string(*whole);
        }
        case Kind::Real: {
            const std::optional<double> real = ParseLength(answer);
            if (!real || !Within(variable, *real)) return std::nullopt;
            return ShortestRoundTrip(*real);
        }
    }
    return std::nullopt;
}

constexpr int SheetNumber = 1, ModelNumber = 2;

int ViewportNumber(const HostDocument& document) {
    if (document.ActiveSpace() == ActiveSpaceKind::ModelSpace) return ModelNumber;
    const HostViewport* viewport = document.CurrentViewport();
    return viewport == nullptr ? SheetNumber : viewport->Values().id;
}

std::string EnterViewport(HostDocument& document, int number) {
    if (number == ViewportNumber(document)) return {};
    if (document.ActiveSpace() == ActiveSpaceKind::ModelSpace) return "model space has one viewport, 2";
    if (number == SheetNumber) {
        document.SetMSpace(false);
        return {};
    }
    for (HostViewport* viewport : ViewportsOf(document)) {
        if (viewport->Values().id != number || !viewport->On()) continue;
        document.SetCurrentViewport(*viewport);
        document.SetMSpace(true);
        return {};
    }
    return "the sheet has no viewport of that number that is on";
}

std::string MakeLayerCurrent(HostDocument& document, const std::string& name) {
    HostLayer* layer = document.LayerTable().Find(name);
    if (layer == nullptr) return "the drawing has no layer \"" + name + "\"";
    document.SetActiveLayer(*layer);
    return {};
}

}  // namespace

std::span<const HostVariable> HostVariables() { return Variables; }

const HostVariable* FindHostVariable(std::string_view name) {
    for (const HostVariable& variable : Variables)
        if (EqualsIgnoreCase(variable.name, name)) return &variable;
    return nullptr;
}

std::string VariableText(const CommandSession& session, const HostVariable& variable) {
    const HostDocument& document = session.Document();
    switch (variable.place) {
        case Place::Drawing:
            return DrawingText(session, variable);
        case Place::Profile: {
            const auto& values = session.Line().ProfileVariables();
            const auto found = values.find(variable.name);
            return found == values.end() ? std::string(variable.initial) : found->second;
        }
        case Place::Fixed:
            return document.Name();
        case Place::Space:
            return document.ActiveSpace() == ActiveSpaceKind::ModelSpace ? "1" : "0";
        case Place::Layer:
            return document.CurrentLayer().Name();
        case Place::Viewport:
            return std::to_string(ViewportNumber(document));
    }
    return {};
}

double VariableNumber(const CommandSession& session, std::string_view name) {
    const HostVariable* variable = FindHostVariable(name);
    return variable == nullptr ? 0 : LenientNumber(VariableText(session, *variable));
}

std::string SetVariable(CommandSession& session, const HostVariable& variable, const std::string& answer) {
    if (variable.place == Place::Fixed) return "it can only be read";
    const std::optional<std::string> value = ValueToKeep(variable, answer);
    if (!value) return WrongNumber(variable);
    HostDocument& document = session.Document();
    switch (variable.place) {
        case Place::Fixed:
            break;
        case Place::Layer:
            return MakeLayerCurrent(document, *value);
        case Place::Viewport:
            return EnterViewport(document, static_cast<int>(LenientNumber(*value)));
        case Place::Space: {
            const ActiveSpaceKind space =
                *value == "1" ? ActiveSpaceKind::ModelSpace : ActiveSpaceKind::PaperSpace;
            // On the sheet already, an entered viewport stays entered.
            if (space != document.ActiveSpace()) document.SetActiveSpace(space);
            break;
        }
        case Place::Profile:
            session.Line().ProfileVariables()[std::string(variable.name)] = *value;
            break;
        case Place::Drawing: {
            const std::optional<Point3> point =
                variable.kind == Kind::Point ? session.PointFrom(answer) : Point3{};
            if (!point) return "a point as x,y or x,y,z is expected";
            PutIntoDrawing(session, variable, *value, *point);
            break;
        }
    }
    return {};
}

Asking<void> AskVariable(CommandSession& session, const HostVariable& variable) {
    const std::string name(variable.name);
    if (variable.place == HostVariable::Place::Fixed) {
        session.Tell(name + " = " + VariableText(session, variable) + " (it can only be read)");
        co_return;
    }
    for (;;) {
        const std::string old = VariableText(session, variable);
        const std::string prompt = "Enter new value for " + name + " <" + old + ">:";
        const Answered<std::string> answer = co_await session.AskText(prompt, IfEmpty::Allowed);
        if (answer.Empty()) co_return;
        const std::string wrong = SetVariable(session, variable, *answer.value);
        if (wrong.empty()) co_return;
        session.Refuse("\"" + *answer.value + "\" is no value of " + name + ": " + wrong + ".");
    }
}

}  // namespace brenvik
