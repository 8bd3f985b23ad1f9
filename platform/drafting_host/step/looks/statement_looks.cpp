// Styles stand in chains of statements down to a colour and a transparency.
#include "drafting_host/step/looks/statement_looks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <string>
#include <string_view>

#include "base/numbers.h"
#include "drafting_host/step/products/step_notes.h"

namespace brenvik::step {
namespace {

/// The numbers behind a statement's name.
std::vector<double> NumbersIn(std::string_view text) {
    const std::size_t quote = text.rfind('\'');
    text.remove_prefix(quote == text.npos ? text.find('(') : quote + 1);
    std::vector<double> numbers;
    for (std::size_t at = text.find_first_of("-.0123456789"); at != text.npos;
         at = text.find_first_of("-.0123456789", at)) {
        const std::size_t length = std::max<std::size_t>(NumberLength(text.substr(at)), 1);
        numbers.push_back(LenientNumber(std::string(text.substr(at, length))));
        at += length;
    }
    return numbers;
}

std::optional<Rgb> NamedColour(std::string_view text) {
    static const std::map<std::string_view, Rgb> colours = {
        {"red", {255, 0, 0}},      {"green", {0, 255, 0}},     {"blue", {0, 0, 255}},
        {"yellow", {255, 255, 0}}, {"magenta", {255, 0, 255}}, {"cyan", {0, 255, 255}},
        {"black", {0, 0, 0}},      {"white", {255, 255, 255}}};
    const std::size_t open = text.find('\''), close = text.rfind('\'');
    if (open == text.npos || open == close) return std::nullopt;
    const auto colour = colours.find(text.substr(open + 1, close - open - 1));
    return colour == colours.end() ? std::nullopt : std::optional(colour->second);
}

/// What a chain of styles comes to.
struct Found {
    std::optional<Rgb> colour;
    double transparency = 0;
};

void Gather(const Statements& statements, const Statement& statement, int depth, Found& found) {
    constexpr int deepest = 12;
    const std::string_view text = TextOf(statements, statement);
    if (statement.kind == "COLOUR_RGB" && !found.colour) {
        const std::vector<double> shares = NumbersIn(text);
        if (shares.size() == 3) found.colour = Rgb{ByteOf(shares[0]), ByteOf(shares[1]), ByteOf(shares[2])};
    } else if (statement.kind == "DRAUGHTING_PRE_DEFINED_COLOUR" && !found.colour) {
        found.colour = NamedColour(text);
    } else if (statement.kind == "SURFACE_STYLE_TRANSPARENT") {
        const std::vector<double> share = NumbersIn(text);
        if (share.size() == 1) found.transparency = share[0];
    }
    if (depth == deepest) return;
    for (const Reference& reference : statements.ReferencesOf(statement)) {
        const Statement* const next = statements.Find(reference.number);
        // A style that overrides another one names that too.
        if (next != nullptr && next->kind != "STYLED_ITEM" && RoleIn(statements, *next) == Role::Look)
            Gather(statements, *next, depth + 1, found);
    }
}

}  // namespace

StatementLooks::StatementLooks(const Statements& statements, CodePage codePage)
    : mStatements(statements), mCodePage(codePage) {
    for (const Statement& statement : statements.All()) Take(statement);
}

void StatementLooks::Take(const Statement& statement) {
    const auto references = mStatements.ReferencesOf(statement);
    if (statement.kind == "PRESENTATION_LAYER_ASSIGNMENT") {
        for (const Reference& item : references) {
            const Statement* const style = mStatements.Find(item.number);
            const bool isStyle =
                style != nullptr && style->kind == "STYLED_ITEM" && !mStatements.ReferencesOf(*style).empty();
            mLayers.emplace(isStyle ? mStatements.ReferencesOf(*style).back().number : item.number,
                            &statement);
        }
    } else if (statement.kind == "STYLED_ITEM" && references.size() > 1) {
        mStyles.emplace(references.back().number, &statement);
    } else if (statement.kind == "OVER_RIDING_STYLED_ITEM" && references.size() > 2) {
        mStyles[references[references.size() - 2].number] = &statement;
    } else if (statement.kind == "INVISIBILITY") {
        for (const Reference& item : references) mHidden.insert(item.number);
    }
}

PartLook StatementLooks::OfOne(int number) const {
    PartLook look;
    if (const auto layer = mLayers.find(number); layer != mLayers.end()) {
        look.layer = FirstTextOf(mStatements, *layer->second, mCodePage);
        look.layerVisible = !mHidden.contains(layer->second->number);
    }
    if (const auto style = mStyles.find(number); style != mStyles.end()) {
        look.color = ColourIn(*style->second);
        look.visible = !mHidden.contains(style->second->number);
    }
    return look;
}

std::optional<Rgb> StatementLooks::ColourIn(const Statement& style) const {
    Found found;
    Gather(mStatements, style, 0, found);
    if (found.colour) found.colour->opacity = ByteOf(1 - found.transparency);
    return found.colour;
}

/// Faces are named by the shell that a solid names first.
PartLook StatementLooks::OfFaces(int number) const {
    const auto referred = [&](int one) {
        const Statement* const statement = mStatements.Find(one);
        return statement == nullptr ? std::span<const Reference>() : mStatements.ReferencesOf(*statement);
    };
    const auto shells = referred(number);
    std::optional<PartLook> common;
    if (shells.empty()) return {};
    for (const Reference& face : referred(shells[0].number)) {
        const PartLook look = OfOne(face.number);
        if (!common) common = look;
        if (common->color != look.color) common->color.reset();
        if (common->layer != look.layer) common->layer.clear();
        common->visible = common->visible || look.visible;
    }
    return common.value_or(PartLook());
}

PartLook StatementLooks::Of(const std::vector<int>& chain) const {
    PartLook look;
    if (chain.empty()) return look;
    const auto isUse = [&](int number) {
        const Statement* const statement = mStatements.Find(number);
        return statement != nullptr &&
               (statement->kind == "MAPPED_ITEM" || statement->kind == "NEXT_ASSEMBLY_USAGE_OCCURRENCE");
    };
    for (std::size_t at = chain.size(); at-- > 0;)
        if (isUse(chain[at])) look.TakeMissing(OfOne(chain[at]));
    look.color.reset();
    look.TakeMissing(OfOne(chain.front()));
    look.TakeMissing(OfFaces(chain.front()));
    for (const int number : chain) look.TakeMissing(OfOne(number));
    return look;
}

}  // namespace brenvik::step
