// The command line of the drafting host: what is typed for a document is cut into answers, and each goes to
// the command that waits for it. Every document has a line of its own.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/letter_case.h"
#include "drafting_host/command/session/command_table.h"
#include "drafting_host/command/session/question.h"
#include "drafting_host/document/command_line_port.h"
#include "drafting_host/document/host_application.h"

namespace brenvik {

class CommandSession;

/// Where a view is looked at from, towards the eye, and what is up in it: unit vectors.
struct HostView {
    Point3 towardsEye, up;
};

/// A blank or a return ends an answer; inside double quotes or brackets a blank belongs to it. An empty
/// answer takes the default or closes a selection, and at a bare "Command:" is ignored. Escape cancels all
/// open commands. How the text is spread over calls makes no difference.
///
/// Failures of commands, and unknown words, are written to the application's transcript; bad input never
/// throws.
class HostCommandLine final : public CommandLinePort {
  public:
    /// The application's command line as long as it lives; the application outlives it. `find` gives the
    /// commands that are the host's own.
    HostCommandLine(HostApplication& application, CommandFinder find);
    ~HostCommandLine() override;
    HostCommandLine(const HostCommandLine&) = delete;
    HostCommandLine& operator=(const HostCommandLine&) = delete;

    void Send(HostDocument& document, std::string_view text) override;
    void Forget(HostDocument& document) override;

    /// A command of the product, typed by `name` in any case. It runs within the call that types it, with no
    /// other command open. Registered again, a name takes the new function; the host's own commands go first.
    void RegisterCommand(std::string_view name, std::function<void()> run);
    /// What the line shows to whoever types next: an open question's prompt, or "Command:".
    std::string Prompt(HostDocument& document);
    /// Whether a command waits for answers.
    bool Busy(HostDocument& document);
    /// What its question takes from somebody who points.
    PointedAt ByPointing(HostDocument& document);
    /// The point given last since that command began, or null.
    std::optional<Point3> BasePoint(HostDocument& document);
    /// The view that windows and picks go by.
    HostView ViewOf(HostDocument& document);
    /// What has been typed and neither a blank nor a return has ended: the line doesn't know of it yet.
    std::string NotEntered(HostDocument& document);

    // For the sessions.

    HostApplication& Host() const { return mApplication; }
    const HostCommand* FindHostCommand(std::string_view name) const { return mFind(name); }
    /// The product's command of that name, or nothing. The pointer is good until the next registration.
    const std::function<void()>* FindProductCommand(std::string_view name) const;
    /// Drawing variables that no drawing keeps: one value for all documents, as text.
    std::map<std::string, std::string, LessIgnoreCase>& ProfileVariables() { return mProfileVariables; }

  private:
    CommandSession& SessionOf(HostDocument& document);

    HostApplication& mApplication;
    CommandFinder mFind;
    std::map<HostDocument*, std::shared_ptr<CommandSession>> mSessions;
    std::map<std::string, std::function<void()>, LessIgnoreCase> mProduct;
    std::map<std::string, std::string, LessIgnoreCase> mProfileVariables;
};

}  // namespace brenvik
