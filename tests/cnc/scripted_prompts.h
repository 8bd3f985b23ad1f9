// A user who answers the host's prompts by script and notes what was asked; out of answers, every prompt is
// cancelled.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "drafting_host/document/host_utility.h"

namespace brenvik {

class ScriptedPrompts final : public PromptPort {
  public:
    std::deque<Point3> points;
    std::deque<double> reals;
    std::deque<std::string> keywords;
    std::vector<std::string> asked;

    std::optional<Point3> GetPoint(std::string_view prompt) override { return Next(points, prompt); }
    std::optional<double> GetReal(std::string_view prompt) override { return Next(reals, prompt); }
    std::optional<std::string> GetString(bool, std::string_view prompt) override {
        return Next(keywords, prompt);
    }
    std::optional<std::string> GetKeyword(std::string_view prompt) override { return Next(keywords, prompt); }
    std::optional<std::vector<AcadEntity*>> SelectOnScreen(AcadDocument&) override { return std::nullopt; }
    void Prompt(std::string_view) override {}

  private:
    template <class Answer>
    std::optional<Answer> Next(std::deque<Answer>& answers, std::string_view prompt) {
        asked.emplace_back(prompt);
        if (answers.empty()) return std::nullopt;
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

}  // namespace brenvik
