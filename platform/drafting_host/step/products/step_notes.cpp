// Names are those of the products that the bodies stand for, found through the statements, since what has
// fallen never reaches the modeller.
#include "drafting_host/step/products/step_notes.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "drafting_host/step/products/usage_tree.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

/// The product that a product definition leads to by its references.
const Statement* ProductBehind(const Statements& statements, int definition) {
    const Statement* at = statements.Find(definition);
    for (int step = 0; at != nullptr && step < 4; ++step) {
        if (at->kind == "PRODUCT") return at;
        const auto references = statements.ReferencesOf(*at);
        at = references.empty() ? nullptr : statements.Find(references[0].number);
    }
    return nullptr;
}

}  // namespace

std::string FirstTextOf(const Statements& statements, const Statement& statement, CodePage codePage) {
    const std::string_view text =
        statements.Content().substr(statement.place, statement.end - statement.place);
    const std::size_t open = text.find('\'');
    std::size_t close = open == text.npos ? open : text.find('\'', open + 1);
    while (close != text.npos && text.substr(close + 1).starts_with('\'')) close = text.find('\'', close + 2);
    if (close == text.npos) return {};
    const std::string name = DecodedText(text.substr(open + 1, close - open - 1), codePage);
    return name.find_first_not_of(' ') == std::string::npos ? std::string() : name;
}

std::string ProductName(const Statements& statements, int definition, CodePage codePage) {
    const Statement* product = ProductBehind(statements, definition);
    if (product == nullptr) return {};
    // The identifier comes first, then the name.
    Statement name = *product;
    const std::string_view content = statements.Content();
    const std::size_t comma = content.find("',", name.place);
    if (comma < name.end) name.place = comma + 1;
    return FirstTextOf(statements, name, codePage);
}

namespace {

/// Products and their shapes, as the statements connect them.
class ProductShapes {
  public:
    explicit ProductShapes(const Statements& statements) : mStatements(statements) {
        for (const Statement& statement : statements.All()) {
            if (statement.kind == "SHAPE_DEFINITION_REPRESENTATION") AddShape(statement);
            if (statement.kind == "SHAPE_REPRESENTATION_RELATIONSHIP") AddEqual(statement);
        }
    }

    /// The product definitions (numbers) that a representation is the shape of, or an equal one.
    std::set<int> ProductsOf(int representation) const {
        std::set<int> products, seen;
        std::vector<int> open{representation};
        while (!open.empty()) {
            const int one = open.back();
            open.pop_back();
            if (!seen.insert(one).second) continue;
            const auto [first, last] = mProducts.equal_range(one);
            for (auto it = first; it != last; ++it) products.insert(it->second);
            const auto [equal, end] = mEqual.equal_range(one);
            for (auto it = equal; it != end; ++it) open.push_back(it->second);
        }
        return products;
    }

    /// Whether a shape of `products` is none of this one's, though one of the two is known.
    bool HaveAnother(const std::set<int>& products, int product) const {
        if (products.contains(product)) return false;
        return !products.empty() ||
               std::ranges::any_of(mProducts, [&](const auto& entry) { return entry.second == product; });
    }

  private:
    void AddShape(const Statement& statement) {
        const auto references = mStatements.ReferencesOf(statement);
        if (references.size() < 2) return;
        const Statement* shape = mStatements.Find(references[0].number);
        if (shape == nullptr || mStatements.ReferencesOf(*shape).empty()) return;
        mProducts.emplace(references[1].number, mStatements.ReferencesOf(*shape)[0].number);
    }

    void AddEqual(const Statement& statement) {
        const auto references = mStatements.ReferencesOf(statement);
        if (references.size() < 2) return;
        mEqual.emplace(references[0].number, references[1].number);
        mEqual.emplace(references[1].number, references[0].number);
    }

    const Statements& mStatements;
    std::multimap<int, int> mProducts, mEqual;
};

/// The representations that hold these bodies, by the numbers of the bodies.
std::unordered_multimap<int, int> HoldersOf(const std::vector<LostBody>& bodies,
                                            const Statements& statements) {
    std::unordered_set<int> numbers;
    for (const LostBody& lost : bodies) numbers.insert(lost.body->number);
    std::unordered_multimap<int, int> holders;
    for (const Statement& statement : statements.All()) {
        if (!statement.kind.ends_with("REPRESENTATION")) continue;
        for (const Reference& item : statements.ReferencesOf(statement))
            if (numbers.contains(item.number)) holders.emplace(item.number, statement.number);
    }
    return holders;
}

void NoteBodies(const Quarantine& quarantine, const Statements& statements, CodePage codePage,
                StepDocument& document) {
    if (quarantine.LostBodies().empty()) return;
    const ProductShapes shapes(statements);
    const auto holders = HoldersOf(quarantine.LostBodies(), statements);
    const auto nameOf = [&](const Statement& body) {
        std::set<int> definitions;
        const auto [first, last] = holders.equal_range(body.number);
        for (auto holder = first; holder != last; ++holder)
            definitions.merge(shapes.ProductsOf(holder->second));
        for (const int definition : definitions)
            if (std::string name = ProductName(statements, definition, codePage); !name.empty()) return name;
        return FirstTextOf(statements, body, codePage);
    };
    for (const LostBody& lost : quarantine.LostBodies()) {
        const std::string name = nameOf(*lost.body);
        const std::string number = "#" + std::to_string(lost.body->number);
        document.notes.push_back(
            {(name.empty() ? "the body " + number : "part \"" + name + "\" (" + number + ")") +
                 " is left out: expected " + lost.fault.expected,
             statements.LineAt(lost.fault.place)});
    }
}

/// One note for many faults, with the place of the first one.
void NoteFaults(const std::vector<StatementFault>& faults, const std::string& what, bool lost,
                const Statements& statements, StepDocument& document) {
    if (faults.empty()) return;
    document.notes.push_back({std::to_string(faults.size()) + " " + what +
                                  " passed over, the first one: expected " + faults.front().expected,
                              statements.LineAt(faults.front().place), lost});
}

/// Whether the item that a shape loses is a body that the modeller doesn't know.
bool LosesBody(const Statements& statements, const StatementFault& fault, bool isMesh) {
    if (fault.statement == nullptr) return false;
    for (const Reference& reference : statements.ReferencesOf(*fault.statement)) {
        if (reference.place != fault.place) continue;
        const Statement* item = statements.Find(reference.number);
        if (item == nullptr) return false;
        if (isMesh) return item->kind.find("TESSELLATED") != std::string_view::npos;
        return std::ranges::any_of(statements.ReferencesOf(*item), [&](const Reference& piece) {
            const Statement* one = statements.Find(piece.number);
            return one != nullptr && (one->kind == "REPRESENTATION_MAP" || one->kind == "CLOSED_SHELL");
        });
    }
    return false;
}

}  // namespace

void NoteQuarantine(const Quarantine& quarantine, const Statements& statements, CodePage codePage,
                    StepDocument& document) {
    if (quarantine.Empty()) return;
    NoteBodies(quarantine, statements, codePage, document);
    NoteFaults(quarantine.LostGeometry(), "faulty statement(s) of shapes", true, statements, document);
    std::vector<StatementFault> meshes, bodies, others;
    for (const StatementFault& fault : quarantine.FalseItems()) {
        const bool isMesh = LosesBody(statements, fault, true);
        (isMesh ? meshes : LosesBody(statements, fault, false) ? bodies : others).push_back(fault);
    }
    NoteFaults(meshes, "body(s) made of triangles", true, statements, document);
    NoteFaults(bodies, "body(s) of unknown kinds", true, statements, document);
    NoteFaults(others, "false item(s) of shapes", false, statements, document);
    std::vector<StatementFault> looks = quarantine.LostLooks();
    std::erase_if(looks, IsOfContext);
    NoteFaults(looks, "faulty style(s) or layer(s)", false, statements, document);
    NoteFaults(quarantine.LostPapers(), "faulty statement(s) of persons, dates and the like", false,
               statements, document);
}

void NoteTail(const Statements& statements, StepDocument& document) {
    const auto tail = TailOf(statements);
    if (!tail) return;
    const std::string found = tail->holdsRecords ? "statements" : "text";
    document.notes.push_back({found + " behind the end of the file (END-ISO-10303-21) passed over",
                              statements.LineAt(tail->place), tail->holdsRecords});
}

void NoteCodePage(CodePage codePage, StepDocument& document) {
    switch (codePage) {
        case CodePage::Utf8:
            return;
        case CodePage::Cyrillic:
            document.notes.push_back({"names read as code page 1251", 0, false});
            return;
        case CodePage::Western:
            document.notes.push_back({"names read as code page 1252", 0, false});
            return;
        case CodePage::Japanese:
            document.notes.push_back({"names read as code page 932 (Shift-JIS)", 0, false});
            return;
    }
}

void NoteMendedTexts(const StandIns& texts, StepDocument& document) {
    if (texts.Mended().empty()) return;
    document.notes.push_back({std::to_string(texts.Mended().size()) +
                              " text(s) hold characters that don't exist, the first one is read as \"" +
                              texts.Mended().front() + "\""});
}

void NoteBrokenEscapes(const StandIns& texts, const Statements& statements, StepDocument& document) {
    std::size_t last = 0;  // They come in the order of the file.
    for (const std::string& text : texts.Broken()) {
        const std::size_t place = statements.Content().find("'" + text + "'", last);
        if (place != std::string_view::npos) last = place;
        document.notes.push_back({"text '" + text +
                                      "' has a broken escape and is taken as it stands: expected " +
                                      "\\X2\\ or \\X4\\ with groups of four or eight digits up to \\X0\\, or "
                                      "\\X\\ with two digits",
                                  place == std::string_view::npos ? 0 : statements.LineAt(place)});
    }
}

namespace {

/// The two representations of a relationship. A statement of several types may name the transformation first.
std::vector<int> RelatedShapes(const Statements& statements, const Statement& relationship) {
    std::vector<int> shapes;
    for (const Reference& reference : statements.ReferencesOf(relationship)) {
        const Statement* const statement = statements.Find(reference.number);
        if (statement != nullptr && statement->kind != "ITEM_DEFINED_TRANSFORMATION")
            shapes.push_back(reference.number);
    }
    return shapes;
}

}  // namespace

void NoteContradictingUsages(const Statements& statements, StepDocument& document) {
    const auto placesAComponent = [](const Statement& statement) {
        return statement.kind == "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION";
    };
    if (std::ranges::none_of(statements.All(), placesAComponent)) return;
    const ProductShapes shapes(statements);
    for (const Statement& statement : statements.All()) {
        if (!placesAComponent(statement)) continue;
        const auto ends = statements.ReferencesOf(statement);
        if (ends.size() < 2) continue;
        const Statement* relationship = statements.Find(ends[0].number);
        const Statement* shape = statements.Find(ends[1].number);
        if (relationship == nullptr || shape == nullptr) continue;
        const auto used = statements.ReferencesOf(*shape);
        const Statement* usage = used.empty() ? nullptr : statements.Find(used[0].number);
        const std::vector<int> related = RelatedShapes(statements, *relationship);
        if (usage == nullptr || related.size() < 2 || statements.ReferencesOf(*usage).size() < 2) continue;
        const int assembly = statements.ReferencesOf(*usage)[0].number;
        const int component = statements.ReferencesOf(*usage)[1].number;
        if (assembly == component) continue;
        // The component's shape stands first in the relationship, the assembly's second.
        const std::set<int> first = shapes.ProductsOf(related[0]), second = shapes.ProductsOf(related[1]);
        const bool isReversed = first.contains(assembly) && second.contains(component);
        const bool isOther = shapes.HaveAnother(first, component) || shapes.HaveAnother(second, assembly);
        if (!isReversed && !isOther) continue;
        document.notes.push_back(
            {"the assembly usage #" + std::to_string(usage->number) +
                 (isReversed ? " has as its component what" : " is of other products than") +
                 " the shapes' relationship #" + std::to_string(relationship->number) +
                 (isReversed ? " has as the assembly" : "") + ": parts, names and places may be wrong",
             statements.LineAt(usage->place)});
    }
}

void NoteUnplacedUsages(const Statements& statements, CodePage codePage, StepDocument& document) {
    const UsageTree tree(statements);
    // Some programs set the component's shape into the assembly's directly.
    const auto isMapped = [&](const Usage& usage) {
        const std::vector<int> shapes = tree.ShapesOf(usage.component);
        return std::ranges::any_of(tree.ShapesOf(usage.assembly), [&](int assembly) {
            return std::ranges::any_of(shapes, [&](int shape) { return tree.LeadsTo(assembly, shape); });
        });
    };
    for (const Usage& usage : tree.Usages()) {
        if (usage.isPlaced || !tree.HoldsBodies(usage.component) || isMapped(usage)) continue;
        const std::string name = ProductName(statements, usage.component, codePage);
        document.notes.push_back({"one more part" + (name.empty() ? "" : " \"" + name + "\"") +
                                      " is left out: its assembly usage #" +
                                      std::to_string(usage.statement->number) + " has no place",
                                  statements.LineAt(usage.statement->place)});
    }
}

void NoteLoosePieces(const Statements& statements, CodePage codePage, StepDocument& document) {
    // Products by their formations, formations by their definitions, and items by what holds them. A version
    // that supersedes another one defines neither.
    const auto relatesVersions = [](const Statement& statement) {
        return statement.kind == "PRODUCT_DEFINITION_FORMATION_RELATIONSHIP";
    };
    std::unordered_set<int> held;
    for (const Statement& statement : statements.All()) {
        if (relatesVersions(statement)) continue;
        const bool holds = statement.kind.empty() || statement.kind.starts_with("PRODUCT_DEFINITION") ||
                           statement.kind.ends_with("REPRESENTATION") || statement.kind.ends_with("_MODEL");
        // Documents are products too, and need no definition.
        if (!holds && statement.kind != "PRODUCT_RELATED_PRODUCT_CATEGORY") continue;
        if (!holds && FirstTextOf(statements, statement, codePage) != "document") continue;
        for (const Reference& reference : statements.ReferencesOf(statement)) held.insert(reference.number);
    }
    for (const Statement& statement : statements.All()) {
        if (held.contains(statement.number) || relatesVersions(statement)) continue;
        const bool isFormation = statement.kind.starts_with("PRODUCT_DEFINITION_FORMATION");
        if (isFormation || statement.kind == "PRODUCT")
            document.notes.push_back({"the product \"" + ProductName(statements, statement.number, codePage) +
                                          "\" (" + Shown(statement.number) + ") has no definition: a part " +
                                          "may bear another one's name, or be missing",
                                      statements.LineAt(statement.place)});
        if (statement.kind == "MAPPED_ITEM")
            document.notes.push_back(
                {"the mapped shape " + Shown(statement.number) + " is left out: no shape holds it",
                 statements.LineAt(statement.place)});
    }
}

}  // namespace brenvik::step
