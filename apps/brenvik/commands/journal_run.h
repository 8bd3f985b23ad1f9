// A journal played on a drawing: by the command line on the models, by a program with windows on what it
// shows.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "drawings/drawing_unit.h"
#include "session/ports/dialog_port.h"
#include "shell/drawing_options.h"

namespace brenvik {
class JournalHands;
}

namespace brenvik::app {

class Workplace;

struct RunOptions {
    DrawingOptions drawing;
    UnitOption unit;
    std::string journal;
    std::string transcript;
    bool noProof = false;
};

/// Where a journal is watched. Empty members are left to the models.
struct JournalStage {
    JournalHands* hands = nullptr;
    /// The drawing is open, and nothing has been played; and the journal has ended well.
    std::function<void(Workplace&)> opened;
    std::function<void()> closed;
    /// Calls the public method of this name; false when there is none.
    std::function<bool(std::string_view method)> callCommand;
    /// Shows a form for as long as `play` plays it.
    std::function<void(Form&, const std::function<void()>& play)> showForm;
    /// Shows a box that the journal has answered so.
    std::function<void(const MessageRequest&, MessageAnswer)> showBox;
};

/// Throws CommandError where the journal can't be read or a step of it fails.
ExitStatus RunJournal(const std::string& home, const RunOptions& options, const JournalStage& stage);

}  // namespace brenvik::app
