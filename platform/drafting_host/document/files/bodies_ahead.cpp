// Bodies don't know of each other, so each thread takes the next one. What one throws is left to the turn of
// that body, which reads it once more.
#include "drafting_host/document/files/bodies_ahead.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

#include "drafting_host/document/files/reading_processors.h"

namespace brenvik {

namespace {

/// How much text is read at once: the shapes of so much may be in memory together, and take about four times
/// that.
constexpr std::size_t BytesInABatch = 8 << 20;
/// A drawing of fewer is read before a thread has begun.
constexpr std::size_t FewestAhead = 16;

int& Processors() {
    static int processors = 1;
    return processors;
}

const std::string* TextOf(const EntityData& entity) {
    const auto* body = std::get_if<AcisData>(&entity.geometry);
    return body == nullptr || body->text.empty() ? nullptr : &body->text;
}

/// Splines are read by parts of the modeller that nobody has promised for several threads.
bool IsPlain(const std::string& text) { return text.find("spline") == std::string::npos; }

/// 0 where the system doesn't say.
std::ptrdiff_t ThreadsOfTheProcess() {
    std::error_code error;
    const std::filesystem::directory_iterator threads("/proc/self/task", error), end;
    return error ? 0 : std::distance(threads, end);
}

/// The system takes a thread away a moment after it has ended, and a process can only be copied as the only
/// one.
void AwaitNoMoreThanBefore(std::ptrdiff_t before) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + std::chrono::seconds(5);
    while (ThreadsOfTheProcess() > before && Clock::now() < end)
        std::this_thread::sleep_for(std::chrono::microseconds(50));
}

/// A thread that the system doesn't give leaves its work to the others.
void WorkOnThreads(std::size_t threads, const std::function<void()>& work) {
    const std::ptrdiff_t before = ThreadsOfTheProcess();
    {
        std::vector<std::jthread> others;
        try {
            while (others.size() + 1 < threads) others.emplace_back(work);
        } catch (const std::system_error&) {
        }
        work();
    }
    AwaitNoMoreThanBefore(before);
}

}  // namespace

void ReadBodiesOn(int processors) { Processors() = std::max(processors, 1); }

acis::ReadResult BodiesAhead::Take(std::size_t entity) {
    auto found = mRead.find(entity);
    if (found == mRead.end() && entity >= mNext && Processors() > 1) {
        ReadFrom(entity);
        found = mRead.find(entity);
    }
    if (found == mRead.end()) {
        const std::string* text = TextOf(mEntities[entity]);
        return acis::ReadText(text == nullptr ? std::string_view() : *text);
    }
    acis::ReadResult result = std::move(found->second);
    mRead.erase(found);
    return result;
}

void BodiesAhead::ReadFrom(std::size_t entity) {
    std::vector<std::size_t> places;
    for (std::size_t bytes = 0; entity < mEntities.size() && bytes < BytesInABatch; ++entity)
        if (const std::string* text = TextOf(mEntities[entity]); text != nullptr && IsPlain(*text)) {
            places.push_back(entity);
            bytes += text->size();
        }
    mNext = entity;
    if (places.size() < FewestAhead) return;
    std::vector<std::optional<acis::ReadResult>> read(places.size());
    std::atomic<std::size_t> next = 0;
    WorkOnThreads(std::min(static_cast<std::size_t>(Processors()), places.size()), [&] {
        for (std::size_t at = next++; at < places.size(); at = next++) {
            try {
                read[at] = acis::ReadText(*TextOf(mEntities[places[at]]));
            } catch (...) {
                // Its own turn shows what it is.
            }
        }
    });
    for (std::size_t at = 0; at < places.size(); ++at)
        if (read[at]) mRead.emplace(places[at], std::move(*read[at]));
}

}  // namespace brenvik
