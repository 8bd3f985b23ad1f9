// The work is kept as the DXF text that a saving writes. It is made in the program's one thread, since the
// drawing must stand still meanwhile; so large drawings are kept less often.
#include "recovery/work_keeper.h"

#include <QDateTime>
#include <QSettings>
#include <utility>

#include "base/failure.h"
#include "drafting_host/document/host_application.h"
#include "drafting_host/document/host_document.h"
#include "drafting_host/dxf/writing/dxf_writer.h"
#include "file_roots/places.h"
#include "toolkit/qt_text.h"

namespace brenvik::desktop {

namespace {

using std::chrono::milliseconds;

constexpr const char* MinutesKey = "keepWorkMinutes";
constexpr const char* SecondsVariable = "BRENVIK_KEEP_SECONDS";
constexpr int DefaultMinutes = 3;
/// A pause of the hand that long is no interruption; a keeping that takes longer than that is one.
constexpr milliseconds Pause{700}, Unnoticed{250};
/// Keeping takes a twentieth of the time at most.
constexpr int LeastShare = 20;

milliseconds Interval() {
    bool given = false;
    const int seconds = qEnvironmentVariableIntValue(SecondsVariable, &given);
    if (given) return std::chrono::seconds(seconds);
    return std::chrono::minutes(WorkKeeper::Minutes());
}

std::string Now() { return FromQt(QDateTime::currentDateTime().toString("yyyy-MM-dd HH:mm:ss")); }

std::filesystem::path FileOf(const HostDocument& document) {
    return AbsolutePath(document.Host().Resolve(document.FullName())).lexically_normal();
}

}  // namespace

WorkKeeper::WorkKeeper(const std::filesystem::path& home, Surroundings surroundings)
    : mFolder(RecoveryFolder(home)), mSurroundings(std::move(surroundings)) {
    mSoon.setSingleShot(true);
    QObject::connect(&mRegular, &QTimer::timeout, &mRegular, [this] { Look(); });
    QObject::connect(&mSoon, &QTimer::timeout, &mSoon, [this] { Look(); });
    TakeInterval();
}

int WorkKeeper::Minutes() { return QSettings().value(MinutesKey, DefaultMinutes).toInt(); }

void WorkKeeper::SetMinutes(int minutes) { QSettings().setValue(MinutesKey, minutes); }

void WorkKeeper::TakeInterval() {
    const milliseconds interval = std::max(Interval(), mLastCost * LeastShare);
    if (Interval().count() > 0)
        mRegular.start(interval);
    else
        mRegular.stop();
}

void WorkKeeper::Follow(const HostDocument& document) {
    Forget(document);
    mFollowed.emplace(&document, Followed{std::make_unique<WorkPlace>(mFolder), StampOf(FileOf(document)),
                                          DrawingState(document)});
}

void WorkKeeper::FollowRecovered(const HostDocument& document, std::optional<FileStamp> source) {
    Follow(document);
    Followed& followed = mFollowed.at(&document);
    followed.source = source;
    followed.changed = true;
}

void WorkKeeper::NoteChange(const HostDocument& document) {
    const auto found = mFollowed.find(&document);
    if (found == mFollowed.end()) return;
    found->second.changed = true;
    if (mRegular.isActive() && mLastCost <= Unnoticed) mSoon.start(Pause);
}

void WorkKeeper::Forget(const HostDocument& document) {
    const auto found = mFollowed.find(&document);
    if (found == mFollowed.end()) return;
    found->second.place->Clear();
    mFollowed.erase(found);
}

void WorkKeeper::Look() {
    if (!mRegular.isActive()) return;
    if (!mSurroundings.atRest()) return mSoon.start(Pause);
    KeepNow();
}

bool WorkKeeper::KeepNow() {
    const auto begun = std::chrono::steady_clock::now();
    bool kept = false;
    try {
        for (auto& [document, followed] : mFollowed) {
            if (document->Closed()) continue;
            // Work in an open form reaches the drawing ahead of the end of its command.
            DrawingState present(*document);
            if (!followed.changed && present == followed.known) continue;
            Keep(*document, followed);
            followed.known = std::move(present);
            followed.changed = false;
            kept = true;
        }
    } catch (const Failure& failure) {
        if (!mTroubleTold)
            mSurroundings.tell("Unsaved work can't be kept: " +
                               (failure.detail().empty() ? failure.description()
                                                         : failure.description() + ": " + failure.detail()) +
                               ". Save more often.");
        mTroubleTold = true;
        return false;
    }
    mTroubleTold = mTroubleTold && !kept;
    if (!kept) return true;
    mLastCost = std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - begun);
    TakeInterval();
    return true;
}

void WorkKeeper::Keep(const HostDocument& document, Followed& followed) {
    std::vector<std::string> problems;
    const DrawingData data = document.ToData(problems);
    const std::string dxf = WriteDxf(data, problems);
    followed.place->Keep(dxf, {TextFromPath(FileOf(document)), Now(), followed.source});
    for (const std::string& problem : problems)
        if (mToldProblems.insert(problem).second) mSurroundings.tell("Not part of the kept work: " + problem);
}

}  // namespace brenvik::desktop
