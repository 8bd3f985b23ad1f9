// Keeps what isn't saved yet: behind a change where that costs little, and every few minutes.
#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "drafting_host/document/drawing_state.h"
#include "recovery/recovery_store.h"

namespace brenvik {
class HostDocument;
}

namespace brenvik::desktop {

class WorkKeeper {
  public:
    /// `atRest`: no command is halfway through a drawing. `tell` shows a message to the user.
    struct Surroundings {
        std::function<bool()> atRest;
        std::function<void(const std::string&)> tell;
    };
    WorkKeeper(const std::filesystem::path& home, Surroundings surroundings);
    WorkKeeper(const WorkKeeper&) = delete;
    WorkKeeper& operator=(const WorkKeeper&) = delete;

    /// The drawing is as its file is, having been read or saved; its kept copy is deleted.
    void Follow(const HostDocument& document);
    /// The drawing holds work from before that is not saved; `source` is the file that it began with.
    void FollowRecovered(const HostDocument& document, std::optional<FileStamp> source);
    /// A command may have changed it.
    void NoteChange(const HostDocument& document);
    /// The drawing is closed, and nobody wants its changes any more.
    void Forget(const HostDocument& document);
    /// Saves changes since the last copy now; false if the disk refuses, which is reported once.
    bool KeepNow();

    /// Minutes between two looks; 0 keeps nothing at all.
    static int Minutes();
    static void SetMinutes(int minutes);
    void TakeInterval();

  private:
    struct Followed {
        std::unique_ptr<WorkPlace> place;
        std::optional<FileStamp> source;
        /// The state last written to the file or the kept copy.
        DrawingState known;
        bool changed = false;
    };
    void Look();
    void Keep(const HostDocument& document, Followed& followed);

    std::filesystem::path mFolder;
    Surroundings mSurroundings;
    std::map<const HostDocument*, Followed> mFollowed;
    QTimer mRegular, mSoon;
    std::chrono::milliseconds mLastCost{0};
    bool mTroubleTold = false;
    /// Losses in DXF copies, each reported once.
    std::set<std::string> mToldProblems;
};

}  // namespace brenvik::desktop
