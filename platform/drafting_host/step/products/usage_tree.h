// The tree of assemblies as the usages of a STEP file have it, before the modeller builds it.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {

/// An assembly's use of a component.
struct Usage {
    const Statement* statement = nullptr;
    int assembly = 0, component = 0;  ///< Product definitions.
    bool isPlaced = false;            ///< By a relationship of their shapes.
};

/// The usages of products in others, and of shapes in others.
class UsageTree {
  public:
    explicit UsageTree(const Statements& statements);

    const std::vector<Usage>& Usages() const { return mUsages; }
    /// The representations that are shapes of a product definition, by its number.
    std::vector<int> ShapesOf(int definition) const;

    /// Whether a product or shape is made of another one, at any depth.
    bool LeadsTo(int node, int other) const;
    /// Whether a product or shape holds a body, at any depth.
    bool HoldsBodies(int node) const;

    /// How many bodies and empty ends all trees have together, and the statement that the largest of them
    /// begins with. The number stops growing far beyond what any drawing holds.
    struct Size {
        std::uint64_t ends = 0;
        int root = 0;
    };
    Size Whole() const;  ///< Of all trees of the file.

  private:
    using Edges = std::unordered_map<int, std::vector<int>>;

    void TakeStatement(const Statement& statement);
    void TakeShape(const Statement& statement);
    void TakeRelationship(const Statement& statement);
    void TakePlacing(const Statement& statement);
    void TakeItems(const Statement& representation);
    void TieProducts();
    template <typename Predicate>
    bool AnyWithin(int node, Predicate predicate) const;
    std::uint64_t EndsAt(int node, const std::unordered_map<int, std::uint64_t>& known) const;

    const Statements& mStatements;
    std::vector<Usage> mUsages;
    std::vector<const Statement*> mPlacings,
        mTies;                               ///< Relationships of two shapes with and without a place.
    std::unordered_set<int> mPlacedByUsage;  ///< Those of them that belong to a usage.
    std::unordered_set<int> mPlacedShapes;   ///< What is said to be placed, by its definition of shape.
    Edges mShapes;                           ///< By product definition.
    Edges mEqual;   ///< Representations that a relationship without a place ties to each other.
    Edges mWithin;  ///< What a product definition or representation is made of, once for each use.
    std::unordered_map<int, std::uint64_t> mBodies;  ///< By representation.
};

}  // namespace brenvik::step
