// The other ports in memory, and the library loaded on all of them.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "base/letter_case.h"
#include "core/fakes/fake_database.h"
#include "core/fakes/fake_host.h"
#include "forms/form.h"
#include "session/library/loading.h"
#include "session/ports/dialog_port.h"
#include "session/ports/files_port.h"
#include "session/ports/measuring_port.h"
#include "session/ports/settings_port.h"
#include "session/session.h"
#include "settings/settings_keys.h"

namespace brenvik::fakes {

class FakeSettings : public SettingsPort {
  public:
    /// Values by "path\name"; what is written is noted as "name=text".
    std::map<std::string, std::string, LessIgnoreCase> values;
    std::vector<std::string> writes;

    void Set(std::string_view name, std::string_view text) {
        values[std::string(SettingsKeyPath) + "\\" + std::string(name)] = text;
    }
    std::string Get(std::string_view name) const {
        const auto found = values.find(std::string(SettingsKeyPath) + "\\" + std::string(name));
        return found == values.end() ? "(absent)" : found->second;
    }
    std::string GetSetting(SettingsRoot, std::string_view path, std::string_view name) override {
        const auto found = values.find(std::string(path) + "\\" + std::string(name));
        return found == values.end() ? "" : found->second;
    }
    void SaveSetting(SettingsRoot, std::string_view path, std::string_view name,
                     std::string_view text) override {
        values[std::string(path) + "\\" + std::string(name)] = text;
        writes.push_back(std::string(name) + "=" + std::string(text));
    }
    void DeleteSetting(SettingsRoot, std::string_view path, std::string_view name) override {
        values.erase(std::string(path) + "\\" + std::string(name));
    }
    std::vector<std::pair<std::string, std::string>> EnumerateSettings(SettingsRoot,
                                                                       std::string_view path) override {
        std::vector<std::pair<std::string, std::string>> found;
        const std::string head = std::string(path) + "\\";
        for (const auto& [place, text] : values)
            if (place.starts_with(head) && place.find('\\', head.size()) == std::string::npos)
                found.emplace_back(place.substr(head.size()), text);
        return found;
    }
};

/// Files that a database may stand on: removing and copying one does the same to its database.
class FakeFiles : public FilesPort {
  public:
    explicit FakeFiles(FakeDatabase& fakeDatabase) : database(fakeDatabase) {}
    std::map<std::string, std::string, LessIgnoreCase> contents;
    std::string installFolder = "C:\\Brenvik";
    /// Set while another program is at work in the install folder.
    std::string workFolder;
    /// Removals and copies, in order.
    std::vector<std::string> acts;
    /// Runs ahead of a removal.
    std::function<void()> onRemove;
    /// What another program does ahead of a turn; and how many turns are being held.
    std::function<void()> onTurn;
    int turns = 0;
    std::optional<Failure> failOnCopy, failOnWrite;

    std::string InstallFolder() override { return installFolder; }
    std::string WorkFolder() override { return workFolder; }
    std::string PlaceOf(std::string_view path) override { return FoldLower(path); }
    bool FileExists(std::string_view path) override { return contents.contains(std::string(path)); }
    bool FolderExists(std::string_view) override { return true; }
    std::unique_ptr<FolderClaim> AwaitTurn(std::string_view) override {
        struct Turn : FolderClaim {
            explicit Turn(int& held) : turns(held) { ++turns; }
            ~Turn() override { --turns; }
            int& turns;
        };
        if (onTurn) std::exchange(onTurn, nullptr)();
        return std::make_unique<Turn>(turns);
    }
    void RemoveFile(std::string_view path) override {
        acts.push_back("remove " + std::string(path));
        if (onRemove) onRemove();
        if (database.openByPath[FoldLower(path)] > 0) throw PermissionDenied(std::string(path));
        if (contents.erase(std::string(path)) == 0) throw FileNotFound(std::string(path));
        database.databases.erase(FoldLower(path));
    }
    void CopyFileOver(std::string_view from, std::string_view to) override {
        acts.push_back("copy " + std::string(from) + " to " + std::string(to));
        if (failOnCopy) throw *failOnCopy;
        const auto found = contents.find(from);
        if (found == contents.end()) throw FileNotFound(std::string(from));
        const std::string content = found->second;
        contents[std::string(to)] = content;
        if (database.databases.contains(FoldLower(from)))
            database.databases[FoldLower(to)] = database.databases[FoldLower(from)];
    }
    void MakeFolder(std::string_view) override {}
    std::vector<std::string> ListFiles(std::string_view, std::string_view) override { return {}; }
    std::string ReadFile(std::string_view path) override {
        if (!FileExists(path)) throw FileNotFound(std::string(path));
        return contents.find(path)->second;
    }
    void WriteFile(std::string_view path, std::string_view content) override {
        if (failOnWrite) throw *failOnWrite;
        contents[std::string(path)] = content;
    }

  private:
    FakeDatabase& database;
};

class FakeDialogs : public DialogPort {
  public:
    std::vector<MessageRequest> messages;
    std::deque<MessageAnswer> answers;
    /// What the user does in a modal form; a form that is still there afterwards is closed.
    std::function<void(Form&)> onModal;
    std::vector<std::string> shownForms;
    /// Looks at the system while a message box stands.
    std::function<void()> onMessage;

    ScreenSize Screen() const override { return {20000, 15000}; }
    void ShowModal(Form& form) override {
        form.Load();
        shownForms.push_back(form.Name());
        if (onModal) onModal(form);
        if (form.Loaded()) form.Unload();
    }
    MessageAnswer Show(const MessageRequest& request) override {
        messages.push_back(request);
        if (onMessage) onMessage();
        if (request.buttons == MessageButtons::Ok || answers.empty()) return MessageAnswer::Ok;
        const MessageAnswer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    std::optional<std::string> ChooseFile(const FileRequest&) override { return std::nullopt; }
    void DoEvents() override { ++eventsRun; }
    int eventsRun = 0;
};

/// Notes what was printed: the settings of each job.
class FakePrinter : public PrintPort {
  public:
    std::vector<PrintJob> jobs;
    std::optional<Failure> failOnPrint;
    void PrintGrid(const GridControl&, const PrintJob& job) override {
        if (failOnPrint) throw *failOnPrint;
        jobs.push_back(job);
    }
};

/// A shell that answers with a number of the test's choice.
class FakeShell : public ShellPort {
  public:
    int result = 33;
    /// "folder|file|show" of each document.
    std::vector<std::string> documents;
    std::vector<std::string> programs;
    int OpenDocument(std::string_view folder, std::string_view file, int show) override {
        documents.push_back(std::string(folder) + "|" + std::string(file) + "|" + std::to_string(show));
        return result;
    }
    void RunProgram(std::string_view commandLine) override { programs.emplace_back(commandLine); }
};

struct Measured {
    double d1 = 0, d2 = 0, d3 = 0;
    int status = 1;
};

class FakeMeasuring : public MeasuringPort {
  public:
    /// Results by object id; a solid without one gives a status of 0.
    std::map<std::int32_t, Measured> results;
    std::optional<Failure> failOnCreate, failOnMeasure;
    int created = 0, alive = 0;

    std::unique_ptr<SolidMeasurer> CreateMeasurer() override {
        if (failOnCreate) throw *failOnCreate;
        ++created;
        return std::make_unique<Measurer>(*this);
    }

  private:
    class Measurer : public SolidMeasurer {
      public:
        explicit Measurer(FakeMeasuring& owner) : fake(owner) { ++fake.alive; }
        ~Measurer() override { --fake.alive; }
        void MeasureSolid(std::int32_t objectId, double& d1, double& d2, double& d3, int& status) override {
            if (fake.failOnMeasure) throw *fake.failOnMeasure;
            const auto found = fake.results.find(objectId);
            const Measured measured = found == fake.results.end() ? Measured{0, 0, 0, 0} : found->second;
            d1 = measured.d1;
            d2 = measured.d2;
            d3 = measured.d3;
            status = measured.status;
        }

      private:
        FakeMeasuring& fake;
    };
};

/// The library on fakes, with an empty drawing, a blank database beside it, and measuring switched on.
class LoadedSystem {
  public:
    LoadedSystem() : files(database) {
        LoadSystem({&dialogs, &settings, &database, &files, &measuring, &printer, &shell});
        database.CreateBlankPartDatabase(BlankPath);
        files.contents[BlankPath] = "blank";
        settings.Set("MeasureNonSolids", "0");
        settings.Set("NoMeasure", "0");
        settings.Set("WCSMeasure", "0");
    }
    ~LoadedSystem() { UnloadSystem(); }
    LoadedSystem(const LoadedSystem&) = delete;
    LoadedSystem& operator=(const LoadedSystem&) = delete;

    static constexpr const char* BlankPath = "C:\\Brenvik\\_db\\bv-back04.mdb";
    static constexpr const char* WorkPath = "C:\\Brenvik\\_db\\bv04.mdb";

    FakeDialogs dialogs;
    FakeSettings settings;
    FakeDatabase database;
    FakeFiles files;
    FakeMeasuring measuring;
    FakePrinter printer;
    FakeShell shell;
    FakeApplication app;

    FakeDocument& Document() { return *app.active; }
    /// A solid that measures to these extents.
    FakeEntity& AddSolid(const std::string& handle, double d1, double d2, double d3) {
        FakeEntity& solid = Document().AddEntity(handle);
        measuring.results[solid.ObjectID()] = {d1, d2, d3, 1};
        return solid;
    }
    /// The texts of all message boxes so far.
    std::vector<std::string> Messages() const {
        std::vector<std::string> texts;
        for (const MessageRequest& message : dialogs.messages) texts.push_back(message.text);
        return texts;
    }
};

}  // namespace brenvik::fakes
