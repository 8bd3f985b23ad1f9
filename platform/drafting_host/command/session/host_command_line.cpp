// One session per document, kept from the first text typed to the document's closing.
#include "drafting_host/command/session/host_command_line.h"

#include "drafting_host/command/session/command_session.h"
#include "drafting_host/document/drawing_history.h"

namespace brenvik {

HostCommandLine::HostCommandLine(HostApplication& application, CommandFinder find)
    : mApplication(application), mFind(find) {
    mApplication.SetCommandLine(this);
}

HostCommandLine::~HostCommandLine() {
    if (mApplication.CommandLine() == this) mApplication.SetCommandLine(nullptr);
    ForgetHistories(mApplication);
}

CommandSession& HostCommandLine::SessionOf(HostDocument& document) {
    std::shared_ptr<CommandSession>& session = mSessions[&document];
    if (!session) session = std::make_shared<CommandSession>(*this, document);
    return *session;
}

void HostCommandLine::Send(HostDocument& document, std::string_view text) {
    document.RequireOpen();
    // The text may close the document, and with it the session, while the session is at work.
    SessionOf(document);
    const std::shared_ptr<CommandSession> session = mSessions.at(&document);
    session->Type(text);
}

void HostCommandLine::Forget(HostDocument& document) {
    mSessions.erase(&document);
    ForgetHistory(document);
}

void HostCommandLine::RegisterCommand(std::string_view name, std::function<void()> run) {
    mProduct[std::string(name)] = std::move(run);
}

const std::function<void()>* HostCommandLine::FindProductCommand(std::string_view name) const {
    const auto found = mProduct.find(name);
    return found == mProduct.end() ? nullptr : &found->second;
}

std::string HostCommandLine::Prompt(HostDocument& document) { return SessionOf(document).Prompt(); }

bool HostCommandLine::Busy(HostDocument& document) { return SessionOf(document).Busy(); }

PointedAt HostCommandLine::ByPointing(HostDocument& document) { return SessionOf(document).ByPointing(); }

std::optional<Point3> HostCommandLine::BasePoint(HostDocument& document) {
    return SessionOf(document).BasePoint();
}

HostView HostCommandLine::ViewOf(HostDocument& document) {
    const CommandSession& session = SessionOf(document);
    return {session.ViewDirection(), session.ViewUp()};
}

std::string HostCommandLine::NotEntered(HostDocument& document) { return SessionOf(document).NotEntered(); }

}  // namespace brenvik
