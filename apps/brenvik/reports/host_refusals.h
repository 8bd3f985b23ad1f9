// What the host's command line has refused while a journal was played, be it typed by a step or by the system
// for it: nobody would see it in a quiet run, and the steps behind it work on another drawing than they were
// written for.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>
#include <string>

#include "home/typed_commands.h"
#include "reports/teller.h"

namespace brenvik::app {

class HostRefusals {
  public:
    /// Listens for as long as it lives; host and commands outlive it.
    HostRefusals(HostApplication& application, const TypedCommands& typedCommands);
    ~HostRefusals();
    HostRefusals(const HostRefusals&) = delete;
    HostRefusals& operator=(const HostRefusals&) = delete;

    /// The line of the journal that is being played; set by whoever plays it.
    std::function<std::size_t()> presentLine;

    /// The oldest one that nobody has looked at: it was meant to come.
    std::optional<std::string> TakeOldest();
    /// Reports all that nobody has looked at. Equal words on one line of the journal are reported once.
    void TellOverlooked(const std::string& journal, Teller& teller);

  private:
    struct Refusal {
        std::size_t line = 0;
        std::string text;
        bool operator==(const Refusal&) const = default;
    };

    HostApplication& mHost;
    std::deque<Refusal> mRefusals;
};

}  // namespace brenvik::app
