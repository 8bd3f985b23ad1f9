// The table of the host's commands.
#include "drafting_host/command/commands/built_in_commands.h"

#include <array>
#include <string>

#include "base/letter_case.h"
#include "base/text.h"
#include "drafting_host/command/commands/commands.h"

namespace brenvik {
namespace {

namespace run = host_commands;

// Commands that open a dialog in a host with windows ("layer", "view") are here what their plain forms
// with the dash are: there is no dialog to open.
constexpr auto Commands = std::to_array<HostCommand>({
    {"BOX", "", &run::Box},
    {"CYLINDER", "", &run::Cylinder},
    {"WEDGE", "WE", &run::Wedge},
    {"UNION", "UNI", &run::Union, false, true},
    {"SUBTRACT", "SU", &run::Subtract},
    {"INTERSECT", "IN", &run::Intersect, false, true},
    {"SLICE", "SL", &run::Slice, false, true},
    {"SOLIDEDIT", "", &run::Solidedit, false, true},
    {"ERASE", "E", &run::Erase},
    {"MOVE", "M", &run::Move},
    {"COPY", "CO CP", &run::Copy},
    {"ROTATE", "RO", &run::Rotate},
    {"SCALE", "SC", &run::Scale},
    {"SELECT", "", &run::Select},
    {"STRETCH", "S", &run::Stretch, false, true},
    {"ROTATE3D", "3R", &run::Rotate3d},
    {"MIRROR3D", "", &run::Mirror3d},
    {"ALIGN", "AL", &run::Align},
    {"EXPLODE", "X", &run::Explode},
    {"PEDIT", "PE", &run::Pedit},
    {"UNDO", "", &run::Undo},
    {"U", "", &run::UndoOne},
    {"REDO", "", &run::Redo},
    {"OOPS", "", &run::TakeBack},
    {"UCS", "", &run::Ucs},
    {"-LAYER", "-LA LAYER LA", &run::Layer, true},
    {"-GROUP", "-G GROUP G", &run::Group},
    {"SNAP", "SN", &run::Snap, true},
    {"ORTHO", "", &run::Ortho, true},
    {"-VIEW", "-V VIEW V", &run::View},
    {"MVIEW", "MV", &run::Mview},
    {"MSPACE", "MS", &run::Mspace},
    {"PSPACE", "PS", &run::Pspace},
    {"HIDE", "HI", &run::Hide},
    {"SOLPROF", "", &run::Solprof},
    {"DVIEW", "DV", &run::Dview, true},
    {"VPLAYER", "", &run::Vplayer},
    {"ZOOM", "Z", &run::Zoom, true},
    {"REGEN", "RE", &run::Regen},
    {"SETVAR", "SET", &run::SetVar, true},
});

}  // namespace

const HostCommand* FindBuiltInCommand(std::string_view name) {
    for (const HostCommand& command : Commands) {
        if (EqualsIgnoreCase(command.name, name)) return &command;
        for (const std::string& alias : Split(command.aliases, ' '))
            if (EqualsIgnoreCase(alias, name)) return &command;
    }
    return nullptr;
}

}  // namespace brenvik
