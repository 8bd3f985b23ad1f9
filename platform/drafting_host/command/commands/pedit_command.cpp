// PEDIT: lines and arcs become polylines, chains of them become one, polylines open and close.
#include <algorithm>

#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/commands/polyline_chain.h"
#include "drafting_host/command/session/answers.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/command/session/picking.h"
#include "drafting_host/document/geometry/host_failure.h"

namespace brenvik::host_commands {
namespace {

using Entities = std::vector<HostEntity*>;

HostLWPolyline* PolylineOf(HostEntity* entity) { return dynamic_cast<HostLWPolyline*>(entity); }

bool LineOrArc(const HostEntity* entity) {
    return dynamic_cast<const HostLine*>(entity) != nullptr ||
           dynamic_cast<const HostArc*>(entity) != nullptr;
}

struct PickedObject {
    HostEntity* entity = nullptr;
    bool many = false;
};

/// "Select polyline or [Multiple]:". Of several objects it takes one: the first line or arc in drawing
/// order, where there is none the first open polyline, then the first closed one. So a chain that can't be
/// closed doesn't stand in the way of the next one.
class PolylineQuestion final : public Question {
  public:
    using Question::Question;
    std::string Prompt() const override { return "Select polyline or [Multiple]:"; }
    bool Take(const std::string& answer) override;
    PickedObject await_resume() const { return mPicked; }

  private:
    Entities Found(const std::string& answer) const;
    bool WithinReach(const HostEntity& entity) const;

    PickedObject mPicked;
};

bool PolylineQuestion::WithinReach(const HostEntity& entity) const {
    return &entity.Owner() == &Session().Document().CurrentSpace() && !entity.Erased() &&
           entity.Look().visible && !entity.LayerObject().Values().frozen && !entity.LayerObject().Locked();
}

Entities PolylineQuestion::Found(const std::string& answer) const {
    HostDocument& document = Session().Document();
    const std::string word = MatchKeyword("ALL Previous Last", answer);
    std::span<HostEntity* const> found = document.CurrentSpace().Entities();
    if (word == "Previous") found = document.PreviousSelection();
    Entities result;
    if (!word.empty()) {
        std::ranges::copy_if(found, std::back_inserter(result),
                             [&](const HostEntity* entity) { return WithinReach(*entity); });
        if (word == "Last" && !result.empty()) result = {result.back()};
    } else if (const std::optional<Point3> point = Session().PointFrom(answer)) {
        Session().SetLastPoint(*point);
        HostEntity* entity = EntityAt(Session(), *point);
        if (entity != nullptr && WithinReach(*entity)) result.push_back(entity);
    }
    return result;
}

bool PolylineQuestion::Take(const std::string& answer) {
    if (answer.empty()) return true;
    if (MatchKeyword("Multiple", answer) == "Multiple") {
        mPicked.many = true;
        return true;
    }
    const Entities found = Found(answer);
    const auto first = [&](auto&& fits) {
        const auto at = std::ranges::find_if(found, fits);
        if (mPicked.entity == nullptr && at != found.end()) mPicked.entity = *at;
    };
    first(&LineOrArc);
    first([](HostEntity* entity) { return PolylineOf(entity) != nullptr && !PolylineOf(entity)->Closed(); });
    first([](HostEntity* entity) { return PolylineOf(entity) != nullptr; });
    if (mPicked.entity != nullptr) return true;
    Session().Refuse("\"" + answer + "\" selects no line, arc or polyline.");
    return false;
}

/// A new entity in the place of an old one, with its look and data.
HostLWPolyline& Replace(HostEntity& old, LWPolylineData data) {
    HostEntity& made = old.Owner().Add(std::move(data));
    made.SetLook(old.Look());
    made.SetExtendedData(old.ExtendedData());
    old.EraseAnyway();
    return dynamic_cast<HostLWPolyline&>(made);
}

/// Gives a polyline new vertices; it stays the same object as long as its plane does.
HostLWPolyline& Reshape(HostLWPolyline& polyline, const LWPolylineData& data) {
    if (!(polyline.Normal() == data.normal)) return Replace(polyline, data);
    std::vector<double> coordinates;
    for (const LWPolylineData::Vertex& vertex : data.vertices) {
        coordinates.push_back(vertex.x);
        coordinates.push_back(vertex.y);
    }
    polyline.SetCoordinates(coordinates);
    for (std::size_t i = 0; i < data.vertices.size(); ++i)
        polyline.SetBulge(static_cast<int>(i), data.vertices[i].bulge);
    polyline.SetElevation(data.elevation);
    polyline.SetClosed(data.closed);
    return polyline;
}

/// A chain that would stay open by the rounding of a file closes.
JoinedChain ChainOf(const std::vector<HostGeometry>& objects, double fuzz) {
    JoinedChain chain = JoinChain(objects, 0, fuzz);
    if (chain.polyline.closed || fuzz >= ClosingFuzz) return chain;
    JoinedChain wider = JoinChain(objects, 0, ClosingFuzz);
    return wider.polyline.closed ? wider : chain;
}

/// Joins what of the chosen objects connects to the polyline.
HostLWPolyline& Join(const CommandSession& session, HostLWPolyline& subject, const Entities& chosen,
                     double fuzz) {
    std::vector<HostGeometry> objects{subject.Geometry()};
    Entities entities{&subject};
    for (HostEntity* entity : chosen) {
        if (entity == &subject || entity->Erased() || !(LineOrArc(entity) || PolylineOf(entity))) continue;
        entity->RequireChangeable();
        objects.push_back(entity->Geometry());
        entities.push_back(entity);
    }
    const JoinedChain chain = ChainOf(objects, fuzz);
    if (chain.parts.size() < 2 && chain.twins.empty() && chain.polyline == subject.Values()) {
        session.Tell("0 segments added to polyline.");
        return subject;
    }
    for (const std::size_t part : chain.parts)
        if (part != 0) entities[part]->EraseAnyway();
    for (const std::size_t twin : chain.twins) entities[twin]->EraseAnyway();
    HostLWPolyline& result = Reshape(subject, chain.polyline);
    session.Tell(std::to_string(chain.parts.size() - 1) + " segments added to polyline.");
    for (const Point3& branch : chain.branches)
        session.Tell("More than one object goes on from " + PointText(branch) + ": the first was taken.");
    return result;
}

Asking<void> EditOne(CommandSession& session, HostEntity* picked) {
    HostLWPolyline* subject = PolylineOf(picked);
    if (subject == nullptr) {
        session.Tell("Object selected is not a polyline");
        const Answered<std::string> turn =
            co_await session.AskKeyword("Do you want to turn it into one? <Y>", "Yes No", IfEmpty::Allowed);
        if (turn.Is("No")) co_return;
        picked->RequireChangeable();
        subject = &Replace(*picked, *AsPolyline(picked->Geometry()));
    }
    for (;;) {
        const char* first = subject->Closed() ? "Open" : "Close";
        const Answered<std::string> option = co_await session.AskKeyword(
            "Enter an option [" + std::string(first) + "/Join/eXit]:", std::string(first) + " Join eXit",
            IfEmpty::Allowed);
        if (option.Empty() || option.Is("eXit")) co_return;
        subject->RequireChangeable();
        if (option.Is("Join")) {
            const Entities chosen = co_await session.AskSelection(SelectFor::Changing);
            subject->RequireChangeable();
            subject = &Join(session, *subject, chosen, JoinFuzz);
        } else {
            subject->SetClosed(option.Is("Close"));
        }
    }
}

void JoinAll(const CommandSession& session, Entities& chosen, double fuzz) {
    for (HostEntity*& entity : chosen) {
        if (entity->Erased() || PolylineOf(entity) == nullptr) continue;
        entity = &Join(session, *PolylineOf(entity), chosen, fuzz);
    }
    std::erase_if(chosen, [](const HostEntity* entity) { return entity->Erased(); });
}

Asking<void> EditMany(CommandSession& session) {
    Entities chosen = co_await session.AskSelection(SelectFor::Changing);
    if (std::ranges::any_of(chosen, &LineOrArc)) {
        const Answered<std::string> turn = co_await session.AskKeyword(
            "Convert Lines and Arcs to polylines [Yes/No]? <Y>", "Yes No", IfEmpty::Allowed);
        for (const HostEntity* entity : chosen) entity->RequireChangeable();
        for (HostEntity*& entity : chosen) {
            if (turn.Is("No") || !LineOrArc(entity)) continue;
            entity = &Replace(*entity, *AsPolyline(entity->Geometry()));
        }
    }
    std::erase_if(chosen, [](HostEntity* entity) { return PolylineOf(entity) == nullptr; });
    while (!chosen.empty()) {
        const Answered<std::string> option = co_await session.AskKeyword(
            "Enter an option [Close/Open/Join/eXit]:", "Close Open Join eXit", IfEmpty::Allowed);
        if (option.Empty() || option.Is("eXit")) co_return;
        if (option.Is("Join")) {
            const Answered<double> typed =
                co_await session.AskDistance("Enter fuzz distance <0>:", {}, IfEmpty::Allowed);
            if (typed.Or(0) < 0) throw host_failure::InvalidArgument("a fuzz distance can't be below 0");
            JoinAll(session, chosen, std::max(JoinFuzz, typed.Or(0)));
            continue;
        }
        for (HostEntity* entity : chosen) PolylineOf(entity)->SetClosed(option.Is("Close"));
    }
}

}  // namespace

Asking<void> Pedit(CommandSession& session) {
    const PickedObject picked = co_await PolylineQuestion(session);
    if (picked.many)
        co_await EditMany(session);
    else if (picked.entity != nullptr)
        co_await EditOne(session, picked.entity);
}

}  // namespace brenvik::host_commands
