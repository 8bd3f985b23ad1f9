// Earlier states of an open drawing, a step for each command that has changed something. Shapes are shared,
// and so is whatever a step has left as it was.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace brenvik {

class HostApplication;
class HostDocument;

class DrawingHistory {
  public:
    /// Begins with the drawing as it is.
    explicit DrawingHistory(HostDocument& document);
    ~DrawingHistory();
    DrawingHistory(const DrawingHistory&) = delete;
    DrawingHistory& operator=(const DrawingHistory&) = delete;

    /// Takes back the last step and gives the name of its command; null if none is left, and while a
    /// command is at work. Entities that the step has changed or erased are new objects with their old
    /// handles; what stood behind them in drawing order is so too.
    std::optional<std::string> Undo();
    /// The same forwards, until something else changes the drawing.
    std::optional<std::string> Redo();
    /// The command that `Undo` would take back, and that `Redo` would bring; null for none.
    const std::string* NextUndo() const { return mPast.empty() ? nullptr : &mPast.back().command; }
    const std::string* NextRedo() const { return mFuture.empty() ? nullptr : &mFuture.back().command; }

  private:
    friend class OneStep;
    struct Image;
    struct Step {
        std::string command;
        std::shared_ptr<const Image> state;
        /// How many entities it has changed or made.
        std::size_t entities = 0;
    };
    /// Counts the entities that are not as they were.
    std::shared_ptr<const Image> Taken(std::size_t& changed) const;
    void Restore(const Image& image);
    void NoteStep(const std::string& command);
    void ForgetOldest();
    std::optional<std::string> Go(std::vector<Step>& from, std::vector<Step>& to);

    HostDocument& mDocument;
    std::shared_ptr<const Image> mPresent;
    std::vector<Step> mPast, mFuture;
    int mCommandsAtWork = 0;
};

/// Keeps the history of a drawing from now on, for as long as it is open.
void KeepHistory(HostDocument& document);
/// Null for a drawing whose history isn't kept, as that of a part of a run.
DrawingHistory* HistoryOf(const HostDocument& document);
void ForgetHistory(const HostDocument& document);
/// Of all drawings of this host.
void ForgetHistories(const HostApplication& application);

/// The length of a command: what it changes is one step, whatever other commands it is made of. Does nothing
/// for a drawing whose history isn't kept.
class OneStep {
  public:
    OneStep(const HostDocument* document, std::string command);
    ~OneStep();
    OneStep(const OneStep&) = delete;
    OneStep& operator=(const OneStep&) = delete;

  private:
    const HostDocument* mDocument;  ///< May have been closed meanwhile, which its history knows.
    std::string mCommand;
    bool mCounted = false;
};

}  // namespace brenvik
