// From the table of endings to the toolkit's "Words (*.one *.two);;Words (*.three)".
#include "windows/drawing_filters.h"

#include <QStringList>
#include <string_view>
#include <utility>
#include <vector>

#include "drafting_host/document/files/extension.h"
#include "toolkit/qt_text.h"

namespace brenvik::desktop {

namespace {

QString Pattern(const DrawingEnding& ending) { return "*" + ToQt(ending.text); }

}  // namespace

QString FilterForOpening() {
    QStringList patterns;
    for (const DrawingEnding& ending : DrawingEndings) patterns << Pattern(ending);
    for (const DrawingEnding& ending : DrawingEndings) patterns << Pattern(ending).toUpper();
    return QStringLiteral("Drawings (%1);;All files (*)").arg(patterns.join(' '));
}

QString FilterForSaving() {
    std::vector<std::pair<std::string_view, QStringList>> choices;
    for (const DrawingEnding& ending : DrawingEndings) {
        if (ending.choice.empty()) continue;
        if (choices.empty() || choices.back().first != ending.choice)
            choices.emplace_back(ending.choice, QStringList());
        choices.back().second << Pattern(ending);
    }
    QStringList filters;
    for (const auto& [words, patterns] : choices)
        filters << QStringLiteral("%1 (%2)").arg(ToQt(words), patterns.join(' '));
    return filters.join(QStringLiteral(";;"));
}

}  // namespace brenvik::desktop
