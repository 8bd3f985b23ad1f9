// The coroutines behind the host's commands, a file for each family.
#pragma once

#include "drafting_host/command/session/asking.h"

namespace brenvik {
class CommandSession;
}  // namespace brenvik

namespace brenvik::host_commands {

// make_solids.cpp
Asking<void> Box(CommandSession& session);
Asking<void> Cylinder(CommandSession& session);
Asking<void> Wedge(CommandSession& session);

// boolean_commands.cpp
Asking<void> Union(CommandSession& session);
Asking<void> Subtract(CommandSession& session);
Asking<void> Intersect(CommandSession& session);

// slice_command.cpp
Asking<void> Slice(CommandSession& session);

// solidedit_command.cpp
Asking<void> Solidedit(CommandSession& session);

// move_commands.cpp
Asking<void> Erase(CommandSession& session);
Asking<void> Move(CommandSession& session);
Asking<void> Copy(CommandSession& session);
Asking<void> Rotate(CommandSession& session);
Asking<void> Scale(CommandSession& session);
Asking<void> Select(CommandSession& session);

// stretch_command.cpp
Asking<void> Stretch(CommandSession& session);

// space_commands.cpp
Asking<void> Rotate3d(CommandSession& session);
Asking<void> Mirror3d(CommandSession& session);

// align_command.cpp
Asking<void> Align(CommandSession& session);

// undo_command.cpp
Asking<void> TakeBack(CommandSession& session);
Asking<void> Undo(CommandSession& session);
Asking<void> UndoOne(CommandSession& session);
Asking<void> Redo(CommandSession& session);

// explode_command.cpp
Asking<void> Explode(CommandSession& session);

// pedit_command.cpp
Asking<void> Pedit(CommandSession& session);

// ucs_command.cpp
Asking<void> Ucs(CommandSession& session);

// ucs_face.cpp
/// Asks for a face and lays the user coordinate system onto it.
Asking<void> UcsOnFace(CommandSession& session);

// layer_command.cpp
Asking<void> Layer(CommandSession& session);

// group_command.cpp
Asking<void> Group(CommandSession& session);

// view_commands.cpp
Asking<void> View(CommandSession& session);
Asking<void> Zoom(CommandSession& session);
Asking<void> Regen(CommandSession& session);

// viewport_commands.cpp
Asking<void> Mview(CommandSession& session);
Asking<void> Mspace(CommandSession& session);
Asking<void> Pspace(CommandSession& session);
Asking<void> Hide(CommandSession& session);

// profile_command.cpp
Asking<void> Solprof(CommandSession& session);

// dview_command.cpp
Asking<void> Dview(CommandSession& session);

// vplayer_command.cpp
Asking<void> Vplayer(CommandSession& session);

// variable_commands.cpp
Asking<void> SetVar(CommandSession& session);
Asking<void> Snap(CommandSession& session);
Asking<void> Ortho(CommandSession& session);

}  // namespace brenvik::host_commands
