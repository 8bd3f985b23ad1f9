#include "drafting_host/document/files/body_texts.h"

#include <BRep_Builder.hxx>
#include <TopoDS_Compound.hxx>
#include <memory>
#include <optional>
#include <utility>

#include "drafting_host/acis/acis_text.h"
#include "drafting_host/document/files/compressed_text.h"

namespace brenvik {

namespace {

/// The body whose text is made already, and the text.
std::pair<TopoDS_Shape, std::string>& NextText() {
    static std::pair<TopoDS_Shape, std::string> next;
    return next;
}

class BodyText final : public ShapeSource {
  public:
    explicit BodyText(std::string text) : mText(std::move(text)) {}
    TopoDS_Shape Make() const override {
        return OneShapeOf(acis::ReadText(mCompressed ? Uncompressed(*mCompressed) : mText).bodies);
    }
    std::size_t ShapeSize() const override { return mShapeSize; }
    void Rest() const override {
        if (mCompressed) return;
        mCompressed = Compressed(mText);
        std::string().swap(mText);
    }

  private:
    static constexpr std::size_t ShapePerText = 4;  // measured on drilled panels: 3.4

    mutable std::string mText;
    mutable std::optional<CompressedText> mCompressed;  ///< Of a body at rest, in the text's stead.
    std::size_t mShapeSize = ShapePerText * mText.size();
};

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

TopoDS_Shape OneShapeOf(const std::vector<TopoDS_Shape>& bodies) {
    if (bodies.empty()) return {};
    if (bodies.size() == 1) return bodies.front();
    const BRep_Builder builder;
    TopoDS_Compound all;
    builder.MakeCompound(all);
    for (const TopoDS_Shape& body : bodies) builder.Add(all, body);
    return all;
}

ShapeSourcePointer SourceOfText(std::string text) {
    return std::make_shared<const BodyText>(std::move(text));
}

}  // namespace brenvik
