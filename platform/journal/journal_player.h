// Plays a journal: does what each step says to the forms and commands of the system, and holds its checks
// against what is there. A form's modal call takes the next steps until that form is unloaded, so forms
// nest as they do for a person.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "forms/form.h"
#include "journal/journal_dialogs.h"
#include "journal/journal_step.h"

namespace brenvik {

class AcadApplication;
class FilesPort;
class JournalHands;
class SettingsPort;

/// What a journal acts on. All members but `takeRefusal` and `hands` must be set; what they point to outlives
/// the player.
struct JournalWorld {
    AcadApplication* host = nullptr;
    SettingsPort* settings = nullptr;
    FilesPort* files = nullptr;
    /// Makes the entities with these handles the host's previous selection, in this order.
    std::function<void(const std::vector<std::string>& handles)> select;
    /// Calls the public method of this name; false when there is none.
    std::function<bool(std::string_view method)> callCommand;
    /// Shows or hides an entity that is there, as one step that can be taken back.
    std::function<void(const std::string& handle, bool shown)> setVisible;
    /// Opens a drawing, and goes on in it. Throws Failure where it can't be read.
    std::function<void(const std::string& name)> open;
    /// Closes the drawing in front with what it holds unsaved; the one that was in front before is gone on
    /// in.
    std::function<void()> closeDrawing;
    /// Saves the drawing under this name; blank if it is saved. For a name that no writer knows, returns what
    /// was expected in its place. Throws Failure if it can't be saved.
    std::function<std::string(const std::string& name)> save;
    /// The oldest line with which the host's command line has refused something and that no step has looked
    /// at.
    std::function<std::optional<std::string>()> takeRefusal = [] { return std::nullopt; };
    /// Moves what the steps move; without one the models are acted on.
    JournalHands* hands = nullptr;
    std::ostream* output = nullptr;      ///< For the print steps.
    std::ostream* transcript = nullptr;  ///< For what a person should know but no step asked for.
};

class JournalPlayer {
  public:
    /// Hooks itself into `dialogs`.
    JournalPlayer(std::vector<JournalStep> steps, JournalDialogs& dialogs, JournalWorld world);
    ~JournalPlayer();
    JournalPlayer(const JournalPlayer&) = delete;
    JournalPlayer& operator=(const JournalPlayer&) = delete;

    /// Plays all steps. Throws JournalFailure at the first step that can't be done or doesn't hold; a Failure
    /// that a step lets through becomes one.
    void Play();
    /// The number of answers left over, and of forms that the end of the journal had to close. The transcript
    /// names each; a journal that ran as meant has none.
    int LooseEnds() const { return mLooseEnds; }
    /// Loads the form if need be and plays steps on it until it is unloaded. When the journal ends first,
    /// the form is asked to close, unloaded if it refuses, and the transcript says so.
    void PlayForm(Form& form);
    /// The line of the step that is being done; 0 ahead of the first.
    std::size_t PresentLine() const { return mNext == 0 ? 0 : mSteps[mNext - 1].line; }

  private:
    struct Works;
    void PlayNext();
    void Do(const JournalStep& step);
    void DoOnHost(const JournalStep& step);
    template <AnswerKind Kind>
    void Queue(const JournalStep& step);
    void SetVisible(const JournalStep& step);
    void DoMessageCheck(const JournalStep& step);
    void DoRefusalCheck(const JournalStep& step);
    void DoFormCheck(const JournalStep& step);
    void CheckTopForm(const JournalStep& step);
    void PrintFromTopForm(const JournalStep& step);
    void CheckOutsideForms(const JournalStep& step);
    void PrintFromOutsideForms(const JournalStep& step);
    Form& TopForm(const JournalStep& step) const;
    void DoOnForm(const JournalStep& step);
    void TellTypingLost(const JournalStep& step, const Form& form);
    void TellUntakenAnswers();
    void TellLooseEnd(const std::string& text);

    std::vector<JournalStep> mSteps;
    std::size_t mNext = 0;
    int mLooseEnds = 0;
    JournalDialogs& mDialogs;
    JournalWorld mWorld;
    std::vector<Form*> mOpenForms;
    /// The last line that typed something into a form and that nothing has taken yet.
    std::map<const Form*, std::size_t> mTyped;
};

}  // namespace brenvik
