// A copy of this process that works on one part after the other, and the line to it.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "session/ports/workers_port.h"

namespace brenvik {

class WorkerChannel {
  public:
    /// Makes a copy of this process that answers each part sent to it with the result of `work`. It closes
    /// `strange`, the lines to others. Null where the system gives no process.
    static std::unique_ptr<WorkerChannel> Open(const std::function<std::string(std::size_t)>& work,
                                               std::span<const int> strange);
    /// Ends the copy.
    ~WorkerChannel();
    WorkerChannel(const WorkerChannel&) = delete;
    WorkerChannel& operator=(const WorkerChannel&) = delete;

    int Descriptor() const { return mDescriptor; }
    /// Whether a copy that has nothing to answer has died.
    bool IsGone() const;
    void Send(std::size_t part) const;
    /// Reads what has come; false when nothing will come any more.
    bool Receive();
    /// The answer, when all of it has come.
    std::optional<WorkerEnd> TakeAnswer();
    /// Waits for the end of a copy that answers no more, and says how it came.
    std::string AwaitDeath();

  private:
    WorkerChannel(pid_t process, int descriptor) : mProcess(process), mDescriptor(descriptor) {}

    pid_t mProcess;
    int mDescriptor;
    std::string mReceived;
};

}  // namespace brenvik
