// From the command table to the command line.
#include "home/typed_commands.h"

#include "base/text.h"
#include "drafting_host/command/commands/built_in_commands.h"
#include "drafting_host/document/drawing_history.h"
#include "session/library/brenvik_class.h"

namespace brenvik::app {

namespace {

/// Counts up for as long as it lives, whatever ends the call.
class Count {
  public:
    explicit Count(int& count) : mCount(count) { ++mCount; }
    ~Count() { --mCount; }
    Count(const Count&) = delete;
    Count& operator=(const Count&) = delete;

  private:
    int& mCount;
};

}  // namespace

TypedCommands::TypedCommands(HostApplication& application)
    : mApplication(application), mLine(application, FindBuiltInCommand) {
    for (const CommandEntry& entry : CommandTable()) {
        for (const std::string& name : Split(entry.hostCommands, ','))
            mLine.RegisterCommand(name, [this, method = entry.method] { Call(method); });
    }
    mApplication.SetCommandEndedHandler([this](HostDocument&, std::string_view) {
        const Count running(mRunning);
        cBrenvik().EventBrenvik(mApplication);
    });
}

bool TypedCommands::Call(std::string_view method) {
    constexpr std::string_view escape = "\x1b";
    HostDocument* document = mRunning == 0 ? mApplication.Active() : nullptr;
    if (document != nullptr && mLine.Busy(*document)) {
        mLine.Send(*document, escape);
        mApplication.TellRefusal("The open command was cancelled for " + std::string(method) + ".");
    }
    const Count running(mRunning);
    const OneStep step(document, std::string(method));
    return cBrenvik().Call(method, mApplication);
}

}  // namespace brenvik::app
