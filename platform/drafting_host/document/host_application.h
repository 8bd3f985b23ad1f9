// The drafting host as a whole: open documents, the measuring component, and what it is wired to.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "drafting_host/document/command_line_port.h"
#include "drafting_host/document/host_document.h"
#include "drafting_host/document/read_options.h"
#include "drafting_host/document/written_drawings.h"
#include "session/ports/measuring_port.h"
#include "session/ports/section_port.h"
#include "session/ports/whole_file_writer.h"

namespace brenvik {

class HostDocuments final : public AcadDocuments {
  public:
    explicit HostDocuments(HostApplication& application) : mApplication(application) {}
    int Count() const override;
    AcadDocument* Item(int index) override;
    AcadDocument* Open(std::string_view fileName) override;

  private:
    HostApplication& mApplication;
};

class HostApplication final : public AcadApplication, public MeasuringPort, public SectionPort {
  public:
    /// From a path as the system writes it ("c:\BV-DXF\Part_0.dwg") to one of this machine.
    using PathResolver = std::function<std::filesystem::path(std::string_view)>;

    /// What the drawings are saved with, and what work drawings are (by default the same); without a writer
    /// a host can read and work, but every saving fails.
    explicit HostApplication(WholeFileWriter writer = {}, WholeFileWriter scratchWriter = {});
    ~HostApplication() override;

    AcadDocument* ActiveDocument() override;
    AcadDocuments& Documents() override;
    WindowStateKind WindowState() const override;
    void SetWindowState(WindowStateKind state) override;
    void ZoomExtents() override;
    std::unique_ptr<SolidMeasurer> CreateMeasurer() override;
    std::unique_ptr<SolidSections> HoldSolid(std::int32_t objectId) override;

    /// An empty drawing without a name, made the active one.
    HostDocument& NewDocument();
    /// Reads a drawing by its content (files/drawing_files.h) and makes it the active one. Throws Failure
    /// naming the file, the place and what was expected. The document's full name is the path as given.
    HostDocument& OpenDrawing(const std::filesystem::path& path, const ReadOptions& options = {});
    /// The same for a path as the system writes it; the full name is that text.
    HostDocument& OpenNamed(std::string_view fileName);
    void Activate(HostDocument& document);
    void CloseDocument(HostDocument& document);
    const std::vector<std::unique_ptr<HostDocument>>& OpenDocuments() const { return mDocuments; }
    /// Null when no document is open.
    HostDocument* Active() const;

    void SetPathResolver(PathResolver resolver) { mResolver = std::move(resolver); }
    std::filesystem::path Resolve(std::string_view fileName) const;  ///< As it stands without a resolver.
    /// Replaces the file as a whole or not at all. Throws Failure where the disk refuses.
    void WriteFile(const std::filesystem::path& file, std::string_view content) const;
    /// The same for a drawing that is opened again and deleted.
    void WriteScratch(const std::filesystem::path& file, std::string_view content) const;
    /// Work drawings of this run, which open without being read.
    WrittenDrawings& Written() { return mWritten; }
    /// How much of the open drawings is there as shapes.
    ShapeKeeper& Shapes() { return mShapes; }
    /// Null detaches. The port outlives the application or is detached before it is destroyed.
    void SetPrompts(PromptPort* prompts) { mPrompts = prompts; }
    PromptPort* Prompts() const { return mPrompts; }
    /// Who carries out what is typed (the command line sets itself). Null detaches.
    void SetCommandLine(CommandLinePort* commandLine) { mCommandLine = commandLine; }
    CommandLinePort* CommandLine() const { return mCommandLine; }
    /// What the command line shows, a whole line at a time and without its line end: an answered prompt
    /// with its answer, or a message. Without a sink the lines are dropped.
    using TranscriptSink = std::function<void(std::string_view line)>;
    void SetTranscript(TranscriptSink sink) { mTranscript = std::move(sink); }
    void Tell(std::string_view line) const {
        if (mTranscript) mTranscript(line);
    }
    /// The same for a line that reports a refusal; the handler gets it before the transcript.
    void SetRefusalHandler(TranscriptSink handler) { mRefused = std::move(handler); }
    void TellRefusal(std::string_view line) const {
        if (mRefused) mRefused(line);
        Tell(line);
    }
    /// Called after a command that reshapes parts has ended and changed something: UNION, SLICE, INTERSECT
    /// and SOLIDEDIT. The changed solids are the previous selection by then.
    using CommandEndedHandler = std::function<void(HostDocument& document, std::string_view commandName)>;
    void SetCommandEndedHandler(CommandEndedHandler handler) { mCommandEnded = std::move(handler); }
    const CommandEndedHandler& CommandEnded() const { return mCommandEnded; }

    /// The id of an entity, given at the first call and never given again.
    std::int32_t ObjectIdOf(const HostEntity& entity);
    /// The living entity with this id in any open document, or null.
    HostEntity* FindByObjectId(std::int32_t objectId) const;
    void ForgetObjectsOf(const HostDocument& document);

  private:
    WholeFileWriter mWriter, mScratchWriter;
    ShapeKeeper mShapes;  ///< Ahead of the documents, which take leave of it.
    WrittenDrawings mWritten;
    HostDocuments mDocumentList;
    std::vector<std::unique_ptr<HostDocument>> mDocuments;
    std::vector<std::unique_ptr<HostDocument>> mClosed;
    std::vector<HostDocument*> mActivation;
    std::unordered_map<const HostEntity*, std::int32_t> mIds;
    std::unordered_map<std::int32_t, HostEntity*> mById;
    std::int32_t mNextId = 1000;
    WindowStateKind mWindowState = WindowStateKind::Maximized;
    PathResolver mResolver;
    PromptPort* mPrompts = nullptr;
    CommandLinePort* mCommandLine = nullptr;
    TranscriptSink mTranscript;
    TranscriptSink mRefused;
    CommandEndedHandler mCommandEnded;
};

}  // namespace brenvik
