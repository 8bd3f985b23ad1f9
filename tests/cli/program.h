// Runs the command line program as a user would: from a shell, with a home of its own, and keeps what it
// wrote.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik::cli_test {

struct Outcome {
    int status = -1;
    std::string output, errors;
};

/// Contents by their paths.
using Files = std::map<std::string, std::string>;

/// A folder of its own for each test, gone afterwards. The program runs in it, with its home in "home".
class ProgramTest : public ::testing::Test {
  protected:
    ProgramTest();
    ~ProgramTest() override;

    /// Runs brenvik with these words, `--home` put in front.
    Outcome Run(const std::vector<std::string>& words) const;
    /// The same with standard output going to `outputFile`.
    Outcome RunInto(const std::string& outputFile, const std::vector<std::string>& words) const;
    /// Without `--home`; `environment` is put before the program, as "NAME=value".
    Outcome RunBare(const std::string& environment, const std::vector<std::string>& words) const;

    /// Like Run, for programs that run at once: each keeps what it tells in files of its own name. `before`
    /// is put before the program, as in "sleep 0.1;".
    Outcome RunNamed(const std::string& name, const std::vector<std::string>& words,
                     const std::string& before = "") const;

    /// A path in the test's folder.
    std::string Path(const std::string& name) const { return (folder / name).string(); }
    void Write(const std::string& name, std::string_view content) const;
    std::string Read(const std::string& name) const;
    bool Exists(const std::string& name) const { return std::filesystem::exists(folder / name); }
    /// All files in a folder of the test's folder and below it, by their paths in it.
    Files FilesBelow(const std::string& where) const;
    /// The sample job as a drawing of this name, in the test's folder.
    void WriteSample(const std::string& name) const;

    std::filesystem::path folder;

  private:
    Outcome RunShell(const std::string& environment, const std::vector<std::string>& words,
                     const std::string& outputFile, const std::string& errorFile) const;
};

std::string ReadFile(const std::filesystem::path& file);
/// The drawing that ships with the project: a copy, since runs save the drawing they work on unless a setting
/// turns that off.
std::filesystem::path ShippedSample();

}  // namespace brenvik::cli_test
