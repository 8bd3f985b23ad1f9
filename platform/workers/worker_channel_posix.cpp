// A copy dies with the process that has made it, and never writes to its streams.
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <new>

#include "workers/worker_channel.h"

namespace brenvik {

namespace {

/// Ahead of the text of an answer.
struct AnswerHead {
    WorkerEnd::Kind kind;
    std::size_t length;
};

bool SendAll(int descriptor, const void* bytes, std::size_t count) {
    const char* at = static_cast<const char*>(bytes);
    while (count > 0) {
        const ssize_t sent = ::send(descriptor, at, count, MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR) continue;
        if (sent <= 0) return false;
        at += sent;
        count -= static_cast<std::size_t>(sent);
    }
    return true;
}

bool ReceivePart(int descriptor, std::size_t& part) {
    ssize_t count = 0;
    do count = ::recv(descriptor, &part, sizeof part, MSG_WAITALL);
    while (count < 0 && errno == EINTR);
    return count == static_cast<ssize_t>(sizeof part);
}

/// Takes the place of standard output and errors.
class KeptStreams {
  public:
    KeptStreams() : mFile(std::tmpfile()) {
        if (mFile == nullptr) return;
        for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) ::dup2(::fileno(mFile), stream);
    }

    /// Whether anything was written since the last call. Where nothing can be kept, nobody knows.
    bool TakeAnything() {
        std::cout.flush();
        std::cerr.flush();
        std::fflush(nullptr);
        struct stat state {};
        if (mFile == nullptr || ::fstat(::fileno(mFile), &state) != 0) return true;
        if (state.st_size == 0) return false;
        if (::ftruncate(::fileno(mFile), 0) == 0) ::lseek(::fileno(mFile), 0, SEEK_SET);
        return true;
    }

  private:
    std::FILE* mFile;
};

WorkerEnd EndOf(const std::function<std::string(std::size_t)>& work, std::size_t part, KeptStreams& streams) {
    try {
        std::string result = work(part);
        if (streams.TakeAnything()) return {WorkerEnd::Kind::Talked, {}};
        return {WorkerEnd::Kind::Done, std::move(result)};
    } catch (const std::bad_alloc&) {
        return {WorkerEnd::Kind::Broken, "there is not enough memory for it"};
    } catch (const std::exception& error) {
        return {WorkerEnd::Kind::Broken, std::string("the program broke off over it: ") + error.what()};
    }
}

[[noreturn]] void WorkOff(int descriptor, const std::function<std::string(std::size_t)>& work) {
    KeptStreams streams;
    std::size_t part = 0;
    bool goesOn = true;
    while (goesOn && ReceivePart(descriptor, part)) {
        const WorkerEnd end = EndOf(work, part, streams);
        const AnswerHead head{end.kind, end.text.size()};
        // What is left in memory after an exception that nobody expected isn't worked with any more.
        goesOn = SendAll(descriptor, &head, sizeof head) &&
                 SendAll(descriptor, end.text.data(), end.text.size()) && end.kind != WorkerEnd::Kind::Broken;
    }
    // What this process shares with the one that it is a copy of isn't its to take down.
    ::_exit(0);
}

/// False where the process that this one is to go with has gone already.
bool GoesWith(pid_t maker) { return ::prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && ::getppid() == maker; }

std::string HowItEnded(int status) {
    constexpr std::string_view process = "the process that worked on it ";
    if (!WIFSIGNALED(status))
        return std::string(process) + "ended with status " + std::to_string(WEXITSTATUS(status));
    return std::string(process) + "was ended by signal " + std::to_string(WTERMSIG(status));
}

}  // namespace

std::unique_ptr<WorkerChannel> WorkerChannel::Open(const std::function<std::string(std::size_t)>& work,
                                                   std::span<const int> strange) {
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return nullptr;
    // What waits to be written is written once, by this process.
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
    const pid_t maker = ::getpid();
    const pid_t process = ::fork();
    if (process == 0) {
        ::close(ends[0]);
        for (const int descriptor : strange) ::close(descriptor);
        if (!GoesWith(maker)) ::_exit(0);
        WorkOff(ends[1], work);
    }
    ::close(ends[1]);
    if (process > 0) return std::unique_ptr<WorkerChannel>(new WorkerChannel(process, ends[0]));
    ::close(ends[0]);
    return nullptr;
}

WorkerChannel::~WorkerChannel() {
    ::close(mDescriptor);
    if (mProcess <= 0) return;
    ::kill(mProcess, SIGKILL);
    AwaitDeath();
}

bool WorkerChannel::IsGone() const {
    char next = 0;
    return ::recv(mDescriptor, &next, 1, MSG_PEEK | MSG_DONTWAIT) == 0;
}

void WorkerChannel::Send(std::size_t part) const { SendAll(mDescriptor, &part, sizeof part); }

bool WorkerChannel::Receive() {
    std::array<char, 65536> piece{};
    ssize_t count = 0;
    do count = ::recv(mDescriptor, piece.data(), piece.size(), 0);
    while (count < 0 && errno == EINTR);
    if (count > 0) mReceived.append(piece.data(), static_cast<std::size_t>(count));
    return count > 0;
}

std::optional<WorkerEnd> WorkerChannel::TakeAnswer() {
    AnswerHead head{};
    if (mReceived.size() < sizeof head) return std::nullopt;
    std::memcpy(&head, mReceived.data(), sizeof head);
    if (mReceived.size() - sizeof head < head.length) return std::nullopt;
    WorkerEnd end{head.kind, mReceived.substr(sizeof head, head.length)};
    mReceived.erase(0, sizeof head + head.length);
    return end;
}

std::string WorkerChannel::AwaitDeath() {
    int status = 0;
    while (::waitpid(mProcess, &status, 0) < 0 && errno == EINTR) {
    }
    mProcess = 0;
    return HowItEnded(status);
}

}  // namespace brenvik
