// Counting what is not shown.
#include "base/first_of.h"

#include "base/text.h"

namespace brenvik {

std::string FirstOf(std::vector<std::string> texts, std::size_t most, std::string_view separator,
                    std::string_view rest) {
    const std::size_t more = texts.size() > most ? texts.size() - most : 0;
    texts.resize(texts.size() - more);
    std::string list = Join(texts, separator);
    if (more > 0) list += std::string(rest) + std::to_string(more) + " more";
    return list;
}

}  // namespace brenvik
