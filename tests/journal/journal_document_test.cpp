// The description of journals for users tells every step there is.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "base/text.h"
#include "checkout_paths.h"
#include "journal/journal_step.h"

namespace brenvik {
namespace {

/// The fixed words of a form: "expect file PATH line N TEXT" gives "expect file".
std::string FixedHead(std::string_view pattern) {
    std::string head;
    for (const std::string& word : Split(pattern, ' ')) {
        if (word[0] < 'a' || word[0] > 'z') break;
        head += (head.empty() ? "" : " ") + word;
    }
    return head;
}

TEST(JournalDocument, TellsEveryStep) {
    std::ostringstream content;
    content << std::ifstream(BRENVIK_SOURCE_DIR "/docs/journals.md").rdbuf();
    const std::string document = content.str();
    for (const StepForm& form : StepForms())
        EXPECT_NE(document.find("`" + FixedHead(form.pattern)), std::string::npos) << form.pattern;
}

}  // namespace
}  // namespace brenvik
