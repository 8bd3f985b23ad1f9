// A STEP file on the disk that a test damages, and what reading it gives.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "base/failure.h"
#include "drafting_host/step/step_reader.h"
#include "solids/parts.h"
#include "step/write_step.h"

namespace brenvik::step {

class StepInput : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        mPath =
            std::filesystem::path(::testing::TempDir()) / ("brenvik_" + std::string(test->name()) + ".step");
    }
    void TearDown() override { std::filesystem::remove(mPath); }

    void Put(const std::string& content) const { std::ofstream(mPath, std::ios::binary) << content; }

    std::string Good() const {
        WriteStep(mPath, std::vector<StepSolid>{
                             {solids::test::Board(600, 400, 18), "Board", "Job", "", std::nullopt}});
        return Content();
    }

    /// The failure's text, or what went wrong instead.
    std::string FailureText() const {
        try {
            ReadStep(mPath);
        } catch (const Failure& failure) {
            return failure.what();
        }
        return "no failure";
    }

    /// The content of the file as it lies there.
    std::string Content() const {
        std::ifstream file(mPath, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    StepDocument Read(const std::string& content) const {
        Put(content);
        return ReadStep(mPath);
    }

    /// A part that stands in no assembly.
    std::string Root() const {
        WriteStep(mPath,
                  std::vector<StepSolid>{{solids::test::Board(600, 400, 18), "Board", "", "", std::nullopt}});
        return Content();
    }

    static std::string WithData(std::string content, const std::string& statements) {
        content.insert(content.rfind("ENDSEC;"), statements);
        return content;
    }

    /// The number ("#5") of the first statement of a kind, and its references.
    static std::string NumberOf(const std::string& content, const std::string& kind) {
        const std::size_t place = content.find(" = " + kind + "(");
        EXPECT_NE(place, std::string::npos) << kind;
        const std::size_t at = content.rfind('#', place);
        return content.substr(at, place - at);
    }
    static std::vector<std::string> ReferencesOf(const std::string& content, const std::string& kind) {
        const std::size_t place = content.find(" = " + kind + "("), end = content.find(';', place);
        std::vector<std::string> numbers;
        for (std::size_t at = content.find('#', place); at < end; at = content.find('#', at + 1))
            numbers.push_back(content.substr(at, content.find_first_not_of("0123456789", at + 1) - at));
        return numbers;
    }

    std::filesystem::path mPath;
};

inline void ExpectMentions(const std::string& text, const std::string& part) {
    EXPECT_NE(text.find(part), std::string::npos) << text;
}

/// The line (from 1) of a place.
inline std::string LineAt(const std::string& content, std::size_t place) {
    const auto breaks =
        std::count(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(place), '\n');
    return std::to_string(1 + breaks);
}

/// The notes of reading a file, a line each.
inline std::string NotesOf(const StepDocument& document) {
    std::string all;
    for (const StepNote& note : document.notes)
        all += std::to_string(note.line) + (note.lost ? ": " : ", nothing lost: ") + note.text + "\n";
    return all;
}

}  // namespace brenvik::step
