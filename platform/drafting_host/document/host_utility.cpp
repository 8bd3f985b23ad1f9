// Prompts go to whoever answers them; coordinates go between the world and the user's system.
#include "drafting_host/document/host_utility.h"

#include "base/text.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/host_application.h"

namespace brenvik {

PromptPort& HostUtility::Port(std::string_view prompt) const {
    mDocument.RequireOpen();
    PromptPort* port = mDocument.Host().Prompts();
    if (port == nullptr) throw host_failure::Cancelled(prompt);
    return *port;
}

Point3 HostUtility::GetPoint(std::string_view prompt) {
    const std::optional<Point3> answer = Port(prompt).GetPoint(prompt);
    if (!answer) throw host_failure::Cancelled(prompt);
    return *answer;
}

double HostUtility::GetReal(std::string_view prompt) {
    const std::optional<double> answer = Port(prompt).GetReal(prompt);
    if (!answer) throw host_failure::Cancelled(prompt);
    return *answer;
}

std::string HostUtility::GetString(bool blanksAllowed, std::string_view prompt) {
    const std::optional<std::string> answer = Port(prompt).GetString(blanksAllowed, prompt);
    if (!answer) throw host_failure::Cancelled(prompt);
    return blanksAllowed ? *answer : SplitAtFirst(*answer, ' ').head;
}

std::string HostUtility::GetKeyword(std::string_view prompt) {
    const std::optional<std::string> answer = Port(prompt).GetKeyword(prompt);
    if (!answer) throw host_failure::Cancelled(prompt);
    return *answer;
}

void HostUtility::Prompt(std::string_view text) {
    mDocument.RequireOpen();
    if (PromptPort* port = mDocument.Host().Prompts()) port->Prompt(text);
}

Point3 HostUtility::TranslateCoordinates(const Point3& point, CoordinateSystem from, CoordinateSystem to) {
    mDocument.RequireOpen();
    if (from == to) return point;
    const Similarity toWorld = mDocument.UcsToWorld();
    return to == CoordinateSystem::World ? toWorld.Point(point) : toWorld.Inverse().Point(point);
}

}  // namespace brenvik
