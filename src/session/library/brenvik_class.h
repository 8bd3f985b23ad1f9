// The public class: what the host's commands call. It has no state; all state is the session's.
#pragma once

#include <string_view>

#include "session/library/command_table.h"

namespace brenvik {

/// The methods of the command list, in its order. Each takes the host application object, but for
/// `ShowSettings`, and returns nothing. No failure leaves a method: it is shown with its number, source and
/// description. A method that this build lacks says so and does nothing else.
class cBrenvik {
  public:
#define BRENVIK_METHOD(method, hostCommands, description, work) \
    void method(AcadApplication& app) { Run(Command::method, &app); }
#define BRENVIK_PLAIN_METHOD(method, hostCommands, description, work) \
    void method() { Run(Command::method, nullptr); }
    BRENVIK_COMMANDS(BRENVIK_METHOD, BRENVIK_METHOD, BRENVIK_PLAIN_METHOD)
#undef BRENVIK_METHOD
#undef BRENVIK_PLAIN_METHOD

    /// Calls the method of this name, compared without regard to case. Returns false, and does nothing, when
    /// there is none.
    bool Call(std::string_view method, AcadApplication& app);

  private:
    static void Run(Command command, AcadApplication* app);
};

}  // namespace brenvik
