// Each copy has a socket to this process: the number of a part goes there, its result comes back.
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "workers/worker_channel.h"
#include "workers/worker_processes.h"

namespace brenvik {

namespace {

struct Worker {
    std::unique_ptr<WorkerChannel> channel;
    std::optional<std::size_t> part;
};

class Crew {
  public:
    Crew(int processes, const SpreadWork& spreadWork) : mWork(spreadWork) {
        const std::size_t most = std::min(static_cast<std::size_t>(std::max(processes, 1)), mWork.parts);
        mWorkers.resize(most);
    }

    void Run() {
        while (mTaken < mWork.parts) {
            for (Worker& worker : mWorkers) GiveWork(worker);
            if (!TakeReady()) return;
            if (mTaken < mWork.parts) Await();
        }
    }

  private:
    /// One that is free gets the next part, one that has died a successor.
    void GiveWork(Worker& worker) {
        if (worker.part || mNext == mWork.parts) return;
        if (worker.channel != nullptr && worker.channel->IsGone()) worker.channel.reset();
        if (worker.channel == nullptr) worker.channel = WorkerChannel::Open(mWork.work, Descriptors());
        if (worker.channel == nullptr) return;
        worker.part = mNext++;
        // One that dies now is noticed by the end of its answers.
        worker.channel->Send(*worker.part);
    }

    std::vector<int> Descriptors() const {
        std::vector<int> descriptors;
        for (const Worker& worker : mWorkers)
            if (worker.channel != nullptr) descriptors.push_back(worker.channel->Descriptor());
        return descriptors;
    }

    bool TakeReady() {
        for (auto found = mReady.find(mTaken); found != mReady.end(); found = mReady.find(mTaken)) {
            const WorkerEnd end = std::move(found->second);
            mReady.erase(found);
            if (!mWork.take(mTaken++, end)) return false;
            // The others aren't kept waiting by a part that was worked on here.
            ReadAnswers(0);
            for (Worker& worker : mWorkers) GiveWork(worker);
        }
        return true;
    }

    bool AnyoneWorks() const {
        return std::ranges::any_of(mWorkers, [](const Worker& worker) { return worker.part.has_value(); });
    }

    void Await() {
        if (AnyoneWorks()) return ReadAnswers(-1);
        // The system gives no more processes: the caller's own is left.
        if (mNext < mWork.parts) mReady[mNext++] = {WorkerEnd::Kind::Talked, {}};
    }

    void ReadAnswers(int timeout) {
        std::vector<pollfd> descriptors;
        std::vector<Worker*> workers;
        for (Worker& worker : mWorkers) {
            if (!worker.part) continue;
            descriptors.push_back({worker.channel->Descriptor(), POLLIN, 0});
            workers.push_back(&worker);
        }
        if (descriptors.empty() || ::poll(descriptors.data(), descriptors.size(), timeout) <= 0) return;
        for (std::size_t place = 0; place < workers.size(); ++place)
            if (descriptors[place].revents != 0) ReadAnswer(*workers[place]);
    }

    void ReadAnswer(Worker& worker) {
        const bool goesOn = worker.channel->Receive();
        if (std::optional<WorkerEnd> end = worker.channel->TakeAnswer()) {
            // A copy that has come through such an end doesn't go on, and makes no mark by going.
            const bool isSpent = end->kind == WorkerEnd::Kind::Broken;
            mReady[*worker.part] = std::move(*end);
            worker.part.reset();
            if (isSpent) worker.channel.reset();
            return;
        }
        if (goesOn) return;
        mReady[*worker.part] = {WorkerEnd::Kind::Broken, worker.channel->AwaitDeath()};
        worker = {};
    }

    const SpreadWork& mWork;
    std::vector<Worker> mWorkers;
    std::size_t mNext = 0, mTaken = 0;
    std::map<std::size_t, WorkerEnd> mReady;
};

}  // namespace

void SpreadOverProcesses(int processes, const SpreadWork& work) { Crew(processes, work).Run(); }

}  // namespace brenvik
