#include "drafting_host/document/files/body_texts.h"

#include <utility>

#include "drafting_host/acis/acis_text.h"

namespace brenvik {

namespace {

/// The body whose text is made already, and the text.
std::pair<TopoDS_Shape, std::string>& NextText() {
    static std::pair<TopoDS_Shape, std::string> next;
    return next;
}

}  // namespace

std::string TextOfBody(const TopoDS_Shape& body) {
    std::string text;
    for (const std::string& line : acis::ProveBody(body).lines) (text += line) += '\n';
    return text;
}

std::optional<std::string> BodyTextOf(const TopoDS_Shape& body) {
    try {
        return TextOfBody(body);
    } catch (const acis::WriteFailure&) {
        return std::nullopt;
    }
}

void KeepBodyText(const TopoDS_Shape& body, std::string text) { NextText() = {body, std::move(text)}; }

std::optional<std::string> TakeBodyText(const TopoDS_Shape& body) {
    auto& [next, text] = NextText();
    if (next.IsNull() || !next.IsEqual(body)) return std::nullopt;
    next.Nullify();
    return std::exchange(text, {});
}

}  // namespace brenvik
