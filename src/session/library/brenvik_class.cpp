// The boundary of the library: every call enters here, and no failure leaves.
#include "session/library/brenvik_class.h"

#include "base/skip.h"
#include "session/call.h"
#include "session/message.h"

namespace brenvik {

void cBrenvik::Run(Command command, AcadApplication* app) {
    const CommandEntry& entry = CommandEntryOf(command);
    ShowAndResume(ShowFailure, [&] {
        switch (entry.start) {
            case CommandStart::TakesApplication:
                BeginCall(*app);
                return entry.work(*app);
            case CommandStart::SelfStarting:
                return entry.work(*app);
            case CommandStart::Plain:
                TakeInstallFolder();
                return entry.plainWork();
        }
    });
}

bool cBrenvik::Call(std::string_view method, AcadApplication& app) {
    const CommandEntry* entry = FindCommand(method);
    if (entry == nullptr) return false;
    Run(entry->command, &app);
    return true;
}

}  // namespace brenvik
