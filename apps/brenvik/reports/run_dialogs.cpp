// Message boxes that leave a run as good as it was, and the others.
#include "reports/run_dialogs.h"

#include "export/csv_export.h"
#include "reports/message_meaning.h"

namespace brenvik::app {

MessageAnswer RunDialogs::Show(const MessageRequest& request) {
    if (TellsOfTrouble(request)) mWentWrong = mTrouble = true;
    if (beforeExportComplete && request.text.starts_with(ListExportComplete)) beforeExportComplete();
    return ConsoleDialogs::Show(request);
}

MessageAnswer WatchedJournalDialogs::Show(const MessageRequest& request) {
    if (TellsOfTrouble(request)) mTrouble = true;
    if (beforeExportComplete && request.text.starts_with(ListExportComplete)) beforeExportComplete();
    return JournalDialogs::Show(request);
}

std::vector<MessageRequest> WatchedJournalDialogs::Overlooked() {
    std::vector<MessageRequest> overlooked;
    for (const ShownMessage& message : Messages())
        if (!message.answered && TellsOfTrouble(message)) overlooked.push_back(message);
    return overlooked;
}

}  // namespace brenvik::app
