// Looking and writing in one turn, asking between two.
#include "session/shared_file.h"

#include "session/ports/dialog_port.h"
#include "session/ports/files_port.h"
#include "session/session.h"

namespace brenvik {

std::optional<std::string> ContentOf(const std::string& path) {
    FilesPort& files = *ThePlatform().files;
    if (!files.FileExists(path)) return std::nullopt;
    return files.ReadFile(path);
}

bool WriteUnlessChanged(LookedAtFile file, const std::string& boxTitle, const std::function<void()>& write) {
    for (;;) {
        {
            const auto turn = ThePlatform().files->AwaitTurn(file.path);
            std::optional<std::string> present = ContentOf(file.path);
            if (!present || present == file.content) {
                write();
                return true;
            }
            file.content = std::move(present);
        }
        const std::string question =
            file.path +
            " has been changed elsewhere since it was opened here, and what was changed would be lost. Leave "
            "it as it is?";
        if (ThePlatform().dialogs->Show({question, boxTitle, MessageIcon::Question, MessageButtons::YesNo}) ==
            MessageAnswer::Yes)
            return false;
    }
}

std::string ChangedElsewhere(const std::string& path) {
    return path + " was not written: it has been changed elsewhere since it was opened; open it anew";
}

}  // namespace brenvik
