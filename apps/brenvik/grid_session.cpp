// The grid form without a person in front of it.
#include "grid_session.h"

#include <exception>
#include <string>

#include "session/brenvik_class.h"

namespace brenvik::app {

OpenedInput OpenAndSelect(Workplace& workplace, const DrawingOptions& options, Teller& teller) {
    HostDocument& document = OpenInput(workplace.host, options, teller);
    if (options.save.empty()) {
        TakeOutBlockSolids(document, options, teller);
    } else {
        TellBlockSolids(document, options, teller);
    }
    const std::size_t selected = SelectForCommand(document, options);
    if (selected == 0) teller.Remark(options.drawing + ": the drawing holds no solids");
    return {document, selected};
}

void WhileGridIsOpen(HostApplication& host, ConsoleDialogs& dialogs, const std::function<void(Form&)>& work) {
    std::exception_ptr refused;
    dialogs.whileOpen = [&](Form& form) {
        try {
            work(form);
        } catch (const CommandError&) {
            refused = std::current_exception();
        }
    };
    cBrenvik().Show(host);
    dialogs.whileOpen = nullptr;
    if (refused) std::rethrow_exception(refused);
}

}  // namespace brenvik::app
