// Message boxes by way of the dialog port.
#include "session/message.h"

#include <string>

#include "base/file_failure.h"
#include "session/session.h"

namespace brenvik {

void ShowMessage(std::string_view text, std::string_view title, MessageIcon icon) {
    ThePlatform().dialogs->Show({std::string(text), std::string(title), icon, MessageButtons::Ok});
}

void ShowFailure(const Failure& failure) {
    const bool named = IsOfFileSystem(failure);
    ShowMessage(std::to_string(failure.number()) + "\r\n" + failure.source() + "\r\n" +
                (named ? failure.what() : failure.description()));
}

void ShowFailureWithDetail(const Failure& failure) {
    ShowFailure(Failure(failure.number(), failure.source(), failure.what()));
}

void ShowNotAvailable(std::string_view method) {
    ShowMessage(std::string(method) + " is not available in this build.", "Brenvik");
}

}  // namespace brenvik
