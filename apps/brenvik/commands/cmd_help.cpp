// brenvik help: pages that are made from what the program is made of.
#include <iostream>
#include <memory>

#include "commands/all_commands.h"
#include "commands/control_list.h"

namespace brenvik::app {

Command HelpCommand() {
    auto topic = std::make_shared<std::string>();
    return {"help",
            "Print a page of help: controls, the controls of the forms for writers of journals",
            {Argument("TOPIC", topic.get(), "What to print").OneOf({"controls"}).Required()},
            // Keeps alive what the argument points into.
            [topic](const std::string&) {
                std::cout << ControlList();
                return ExitStatus::Done;
            },
            {}};
}

}  // namespace brenvik::app
