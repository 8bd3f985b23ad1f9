// The program's run through the shell.
#include "program.h"

#include <stdlib.h>
#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "checkout_paths.h"

namespace brenvik::cli_test {

namespace {

std::string Quote(const std::string& word) {
    std::string quoted = "'";
    for (const char character : word)
        quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
    return quoted + "'";
}

std::filesystem::path MakeFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "brenvik-cli-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder");
    return pattern;
}

/// The first call in a test makes its home, which is no test's business but those of homes.
std::string WithoutNewHome(std::string errors, const std::string& home) {
    for (const char* units : {"metric", "imperial"}) {
        const std::string line =
            "brenvik: made a new home, in " + std::string(units) + " units: " + home + "\n";
        if (const std::size_t at = errors.find(line); at != std::string::npos) errors.erase(at, line.size());
    }
    return errors;
}

struct FolderOfItsOwn {
    ~FolderOfItsOwn() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
    const std::filesystem::path folder = MakeFolder();
};

}  // namespace

std::string ReadFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

std::filesystem::path ShippedSample() {
    static const FolderOfItsOwn lent;
    const std::filesystem::path shipped =
        std::filesystem::path(BRENVIK_SOURCE_DIR) / "samples" / "base-cabinet.dxf";
    const std::filesystem::path copy = lent.folder / shipped.filename();
    // A test may have saved over it.
    if (ReadFile(copy) != ReadFile(shipped))
        std::filesystem::copy_file(shipped, copy, std::filesystem::copy_options::overwrite_existing);
    return copy;
}

ProgramTest::ProgramTest() : folder(MakeFolder()) {}

ProgramTest::~ProgramTest() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

Outcome ProgramTest::Run(const std::vector<std::string>& words) const {
    return RunInto(Path("stdout"), words);
}

Outcome ProgramTest::RunInto(const std::string& outputFile, const std::vector<std::string>& words) const {
    std::vector<std::string> all{"--home", Path("home")};
    all.insert(all.end(), words.begin(), words.end());
    return RunShell("", all, outputFile, Path("stderr"));
}

Outcome ProgramTest::RunBare(const std::string& environment, const std::vector<std::string>& words) const {
    return RunShell(environment, words, Path("stdout"), Path("stderr"));
}

Outcome ProgramTest::RunNamed(const std::string& name, const std::vector<std::string>& words,
                              const std::string& before) const {
    std::vector<std::string> all{"--home", Path("home")};
    all.insert(all.end(), words.begin(), words.end());
    Outcome outcome = RunShell(before, all, Path(name + ".out"), Path(name + ".err"));
    outcome.output = ReadFile(Path(name + ".out"));
    return outcome;
}

Outcome ProgramTest::RunShell(const std::string& environment, const std::vector<std::string>& words,
                              const std::string& outputFile, const std::string& errorFile) const {
    std::string command = "cd " + Quote(folder.string()) + " && " + environment + " ";
    command += Quote(BRENVIK_BINARY_DIR "/bin/brenvik");
    for (const std::string& word : words) command += " " + Quote(word);
    command += " >" + Quote(outputFile) + " 2>" + Quote(errorFile) + " </dev/null";
    const int status = std::system(command.c_str());
    Outcome outcome;
    // A signal would be a crash, which no test expects.
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
    if (outputFile == Path("stdout")) outcome.output = ReadFile(outputFile);
    outcome.errors = WithoutNewHome(ReadFile(errorFile), Path("home"));
    return outcome;
}

void ProgramTest::Write(const std::string& name, std::string_view content) const {
    std::ofstream(folder / name, std::ios::binary) << content;
}

std::string ProgramTest::Read(const std::string& name) const { return ReadFile(folder / name); }

Files ProgramTest::FilesBelow(const std::string& where) const {
    namespace fs = std::filesystem;
    Files files;
    std::error_code error;
    for (fs::recursive_directory_iterator entry(folder / where, error), end; !error && entry != end;
         entry.increment(error))
        if (entry->is_regular_file())
            files[fs::relative(entry->path(), folder / where).string()] = ReadFile(entry->path());
    return files;
}

void ProgramTest::WriteSample(const std::string& name) const {
    if (std::filesystem::path(name).extension() == ".dxf") {
        std::filesystem::copy_file(ShippedSample(), folder / name);
        return;
    }
    const Outcome outcome = Run({"sample", name});
    ASSERT_EQ(outcome.status, 0) << outcome.errors;
}

}  // namespace brenvik::cli_test
