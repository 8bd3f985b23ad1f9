// Prompts and coordinate systems of a document.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/ports/host_interface.h"

namespace brenvik {

class HostDocument;

/// Answers the host's prompts, for a journal or a person at the desk. An empty optional cancels
/// the prompt. Points are world coordinates.
class PromptPort {
  public:
    virtual ~PromptPort() = default;
    virtual std::optional<Point3> GetPoint(std::string_view prompt) = 0;
    virtual std::optional<double> GetReal(std::string_view prompt) = 0;
    /// With blanks not allowed, an answer ends at its first blank.
    virtual std::optional<std::string> GetString(bool blanksAllowed, std::string_view prompt) = 0;
    virtual std::optional<std::string> GetKeyword(std::string_view prompt) = 0;
    /// Entities of the document that the user points at.
    virtual std::optional<std::vector<AcadEntity*>> SelectOnScreen(AcadDocument& document) = 0;
    /// A text for the command line that wants no answer.
    virtual void Prompt(std::string_view text) = 0;
};

class HostUtility final : public AcadUtility {
  public:
    explicit HostUtility(HostDocument& document) : mDocument(document) {}
    Point3 GetPoint(std::string_view prompt) override;
    double GetReal(std::string_view prompt) override;
    std::string GetString(bool blanksAllowed, std::string_view prompt) override;
    std::string GetKeyword(std::string_view prompt) override;
    void Prompt(std::string_view text) override;
    Point3 TranslateCoordinates(const Point3& point, CoordinateSystem from, CoordinateSystem to) override;

  private:
    PromptPort& Port(std::string_view prompt) const;

    HostDocument& mDocument;
};

}  // namespace brenvik
