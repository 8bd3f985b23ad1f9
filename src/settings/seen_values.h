// What a form has taken from a place that several programs change, so that it puts back what was changed in
// it and nothing else.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace brenvik {

/// Who has changed a value since a form has shown it.
enum class ValueChange {
    None,       ///< Nobody, or both to the same text.
    Here,       ///< The user of the form; also for a value that was never shown.
    Elsewhere,  ///< Another program.
    Both,       ///< Both, each to a text of its own.
};

class SeenValues {
  public:
    void Forget() { mValues.clear(); }
    /// A value as it was stored, and what the form's controls make of it, which may be written in another
    /// way.
    void NoteStored(std::string_view name, std::string_view stored);
    void NoteShown(std::string_view name, std::string_view shown);
    /// What has become of it: `stored` is what stands there now, `chosen` what the controls say.
    ValueChange ChangeOf(std::string_view name, std::string_view stored, std::string_view chosen) const;

  private:
    struct Seen {
        std::string stored, shown;
    };
    std::map<std::string, Seen, std::less<>> mValues;
};

}  // namespace brenvik
