// -LAYER: making, choosing and switching layers, by names and patterns.
#include <algorithm>
#include <functional>

#include "base/letter_case.h"
#include "base/text.h"
#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/commands/layer_names.h"
#include "drafting_host/command/session/answers.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/document/geometry/host_failure.h"

namespace brenvik::host_commands {
namespace {

using Layers = std::vector<HostLayer*>;

/// A change of one layer. A refusal by the drawing is reported, and the other layers are changed all the
/// same.
using Change = std::function<void(HostLayer&)>;

void ChangeAll(const CommandSession& session, const Layers& layers, const Change& change) {
    for (HostLayer* layer : layers) {
        try {
            change(*layer);
        } catch (const Failure& failure) {
            session.Refuse("Layer \"" + layer->Values().name + "\": " + failure.detail() + ".");
        }
    }
}

HostLayer* Made(CommandSession& session, const std::string& name) {
    try {
        return dynamic_cast<HostLayer*>(session.Document().Layers().Add(name));
    } catch (const Failure& failure) {
        session.Refuse(failure.description() + " (" + failure.detail() + ")");
        return nullptr;
    }
}

void MakeCurrent(CommandSession& session, HostLayer& layer) {
    try {
        session.Document().SetActiveLayer(layer);
    } catch (const Failure& failure) {
        session.Refuse("Layer \"" + layer.Values().name + "\": " + failure.detail() + ".");
    }
}

std::string CurrentName(const CommandSession& session) {
    return session.Document().CurrentLayer().Values().name;
}

/// The colour of an answer: a number or one of the seven names. 0 where it is none.
int ColorFrom(const std::string& answer) {
    constexpr std::string_view names = "Red Yellow Green Cyan Blue Magenta White";
    const std::string name = MatchKeyword(names, answer);
    if (!name.empty()) {
        const std::vector<std::string> all = Split(names, ' ');
        return static_cast<int>(std::ranges::find(all, name) - all.begin()) + 1;
    }
    const std::optional<int> number = ParseWhole(answer);
    return number && *number >= 1 && *number <= 255 ? *number : 0;
}

Asking<void> AskColor(CommandSession& session) {
    const Answered<std::string> color =
        co_await session.AskText("Color name or number (1-255):", IfEmpty::Allowed);
    if (color.Empty()) co_return;
    const int number = ColorFrom(*color.value);
    if (number == 0) {
        session.Refuse("\"" + *color.value + "\" is no color: a number from 1 to 255 or a name is expected.");
        co_return;
    }
    const std::string prompt =
        "Layers for color " + std::to_string(number) + " <" + CurrentName(session) + ">:";
    const Answered<std::string> list = co_await session.AskText(prompt, IfEmpty::Allowed);
    ChangeAll(session, LayersNamed(session, list.Or(CurrentName(session))),
              [&](HostLayer& layer) { layer.SetColor(number); });
}

Asking<void> AskLinetype(CommandSession& session) {
    const Answered<std::string> linetype =
        co_await session.AskText("Linetype name <Continuous>:", IfEmpty::Allowed);
    const std::string name = linetype.Or("Continuous");
    if (!session.Document().HasLinetype(name)) {
        session.Refuse("The drawing has no linetype \"" + name + "\".");
        co_return;
    }
    const std::string prompt = "Layers for linetype \"" + name + "\" <" + CurrentName(session) + ">:";
    const Answered<std::string> list = co_await session.AskText(prompt, IfEmpty::Allowed);
    ChangeAll(session, LayersNamed(session, list.Or(CurrentName(session))),
              [&](HostLayer& layer) { layer.SetLinetype(name); });
}

Asking<void> AskMake(CommandSession& session) {
    const std::string prompt =
        "Name for the new layer (becomes the current layer) <" + CurrentName(session) + ">:";
    const Answered<std::string> name = co_await session.AskText(prompt, IfEmpty::Allowed);
    if (name.Empty()) co_return;
    if (HostLayer* layer = Made(session, *name.value)) MakeCurrent(session, *layer);
}

Asking<void> AskSet(CommandSession& session) {
    const std::string prompt = "Layer to make current <" + CurrentName(session) + ">:";
    const Answered<std::string> name = co_await session.AskText(prompt, IfEmpty::Allowed);
    if (name.Empty()) co_return;
    HostLayer* layer = session.Document().LayerTable().Find(*name.value);
    if (layer == nullptr)
        session.Refuse("The drawing has no layer \"" + *name.value + "\".");
    else
        MakeCurrent(session, *layer);
}

Asking<void> AskNewLayers(CommandSession& session) {
    const Answered<std::string> list =
        co_await session.AskText("Names for the new layers:", IfEmpty::Allowed);
    for (const std::string& name : Split(list.Or({}), ',')) Made(session, name);
}

/// The six switches: what each does to a layer.
Change SwitchOf(const std::string& option) {
    if (option == "ON") return [](HostLayer& layer) { layer.SetLayerOn(true); };
    if (option == "OFF") return [](HostLayer& layer) { layer.SetLayerOn(false); };
    if (option == "Freeze") return [](HostLayer& layer) { layer.SetFreeze(true); };
    if (option == "Thaw") return [](HostLayer& layer) { layer.SetFreeze(false); };
    if (option == "LOck") return [](HostLayer& layer) { layer.SetLock(true); };
    return [](HostLayer& layer) { layer.SetLock(false); };
}

Asking<void> AskSwitch(CommandSession& session, std::string option) {
    const std::string prompt = "Layers to switch, " + option + ":";
    const Answered<std::string> list = co_await session.AskText(prompt, IfEmpty::Allowed);
    if (list.Empty()) co_return;
    Layers layers = LayersNamed(session, *list.value);
    const auto current = std::ranges::find(layers, &session.Document().CurrentLayer());
    if (option == "OFF" && current != layers.end()) {
        const std::string question =
            "Layer \"" + CurrentName(session) + "\" is the current one. Turn it off? [Yes/No] <N>:";
        const Answered<std::string> sure = co_await session.AskKeyword(question, "Yes No", IfEmpty::Allowed);
        if (!sure.Is("Yes")) std::erase(layers, &session.Document().CurrentLayer());
    }
    ChangeAll(session, layers, SwitchOf(option));
}

void ListLayers(const CommandSession& session) {
    for (const HostLayer* layer : session.Document().LayerTable().All()) {
        const LayerData& values = layer->Values();
        std::string line =
            "\"" + values.name + "\"  color " + std::to_string(values.color) + "  " + values.linetype;
        if (!values.on) line += "  off";
        if (values.frozen) line += "  frozen";
        if (values.locked) line += "  locked";
        session.Tell(line);
    }
}

}  // namespace

Asking<void> Layer(CommandSession& session) {
    for (;;) {
        session.Tell("Current layer: \"" + CurrentName(session) + "\"");
        const Answered<std::string> option = co_await session.AskKeyword(
            "Option [?/Make/Set/New/ON/OFF/Color/Ltype/Freeze/Thaw/LOck/Unlock]:",
            "? Make Set New ON OFF Color Ltype Freeze Thaw LOck Unlock", IfEmpty::Allowed);
        if (option.Empty()) co_return;
        if (option.Is("?"))
            ListLayers(session);
        else if (option.Is("Make"))
            co_await AskMake(session);
        else if (option.Is("Set"))
            co_await AskSet(session);
        else if (option.Is("New"))
            co_await AskNewLayers(session);
        else if (option.Is("Color"))
            co_await AskColor(session);
        else if (option.Is("Ltype"))
            co_await AskLinetype(session);
        else
            co_await AskSwitch(session, option.keyword);
    }
}

}  // namespace brenvik::host_commands
