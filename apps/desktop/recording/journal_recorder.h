// The journal of what a person does, written as it is done: what stands in the file when the program dies can
// be played.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace brenvik::desktop {

class JournalRecorder {
  public:
    /// Begins the file anew. Throws Failure if it can't be written. `tell` is called once, when later writing
    /// fails.
    JournalRecorder(std::filesystem::path file, std::function<void(const std::string&)> tell);
    JournalRecorder(const JournalRecorder&) = delete;
    JournalRecorder& operator=(const JournalRecorder&) = delete;

    /// Ahead of its being done. It takes the place of the last step where that begins with `replaces` and
    /// nothing has been answered since: letters that are typed are one text in the end.
    void Step(const std::string& step, std::string_view replaces = {});
    /// What was answered while the last step goes on. Answers are queued ahead of it.
    void Answer(const std::string& answer);
    /// What no step has a place for, as a comment.
    void Remark(std::string_view text);

  private:
    void Write(std::uintmax_t from, const std::string& text);

    std::filesystem::path mFile;
    std::function<void(const std::string&)> mTell;
    /// The last step with the remarks behind it, and where it begins, its answers before it.
    std::string mLast;
    std::uintmax_t mLastBegins = 0, mEnd = 0;
    bool mAnswered = false, mTroubleTold = false;
};

}  // namespace brenvik::desktop
