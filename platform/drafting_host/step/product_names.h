// Names of products as the file has them. The modeller gives a product whose name holds no ASCII letter
// its number instead; this finds the name back.
#pragma once

#include <Interface_InterfaceModel.hxx>
#include <map>
#include <string>

namespace brenvik::step {

/// The products of a model whose names the modeller passes over.
class ProductNames {
  public:
    explicit ProductNames(const Handle(Interface_InterfaceModel) & model);

    /// The product's own name for what the modeller calls `shown`; `shown` itself where it is right.
    std::string NameFor(const std::string& shown) const;

  private:
    std::map<std::string, std::string> mNameByNumber;
};

}  // namespace brenvik::step
