// -GROUP: named groups of objects.
#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/session/answers.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/command/session/group_names.h"
#include "drafting_host/document/host_layers.h"

namespace brenvik::host_commands {
namespace {

/// The name of a group.
class GroupNameQuestion final : public ValueQuestion<std::string> {
  public:
    using ValueQuestion::ValueQuestion;

    bool BlankBelongsTo(std::string_view typed) const override {
        return GroupNameGoesOn(Session().Document(), typed);
    }

  private:
    std::optional<std::string> Parse(const std::string& answer) override { return Unquoted(answer); }
    std::string Wanted() const override { return "the name of a group"; }
};

std::vector<AcadEntity*> AsItems(const std::vector<HostEntity*>& entities) {
    return {entities.begin(), entities.end()};
}

/// Asks for a name and returns its group; null, after a message, if there is none.
Asking<HostGroup*> AskGroup(CommandSession& session) {
    GroupNameQuestion question(session, "Group name:", {}, IfEmpty::Allowed);
    const Answered<std::string> name = co_await question;
    if (name.Empty()) co_return nullptr;
    HostGroup* group = session.Document().GroupTable().Find(*name.value);
    if (group == nullptr) session.Refuse("The drawing has no group \"" + *name.value + "\".");
    co_return group;
}

Asking<void> Create(CommandSession& session) {
    GroupNameQuestion question(session, "Name of the new group:", {}, IfEmpty::Allowed);
    const Answered<std::string> name = co_await question;
    if (name.Empty()) co_return;
    RequireTableName(*name.value, "group");
    if (session.Document().GroupTable().Find(*name.value) != nullptr) {
        session.Refuse("The drawing has a group \"" + *name.value + "\" already.");
        co_return;
    }
    const std::vector<HostEntity*> chosen = co_await session.AskSelection(SelectFor::Looking);
    if (chosen.empty()) {
        session.Refuse("A group needs objects.");
        co_return;
    }
    session.Document().GroupTable().Add(*name.value)->AppendItems(AsItems(chosen));
}

/// Members that are in the group already stay in it once.
Asking<void> AddTo(CommandSession& session) {
    HostGroup* group = co_await AskGroup(session);
    if (group == nullptr) co_return;
    const std::string name = group->Name();
    const std::vector<HostEntity*> chosen = co_await session.AskSelection(SelectFor::Looking);
    // The group may have been exploded between two calls.
    group = session.Document().GroupTable().Find(name);
    if (group != nullptr && !chosen.empty()) group->AppendItems(AsItems(chosen));
}

void ListGroups(const CommandSession& session) {
    if (session.Document().GroupTable().All().empty()) session.Tell("The drawing has no groups.");
    for (const HostGroup* group : session.Document().GroupTable().All())
        session.Tell("\"" + group->Name() + "\"  " + std::to_string(group->Count()) + " objects");
}

}  // namespace

Asking<void> Group(CommandSession& session) {
    const Answered<std::string> option = co_await session.AskKeyword(
        "Group option [?/Add/Explode/Create] <Create>:", "? Add Explode Create", IfEmpty::Allowed);
    if (option.Is("?")) {
        ListGroups(session);
    } else if (option.Is("Add")) {
        co_await AddTo(session);
    } else if (option.Is("Explode")) {
        HostGroup* group = co_await AskGroup(session);
        if (group != nullptr) group->Delete();
    } else {
        co_await Create(session);
    }
}

}  // namespace brenvik::host_commands
