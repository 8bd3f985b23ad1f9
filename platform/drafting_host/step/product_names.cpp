// Goes over the products of a model once.
#include "drafting_host/step/product_names.h"

#include <StepBasic_Product.hxx>
#include <TCollection_HAsciiString.hxx>
#include <set>

namespace brenvik::step {

ProductNames::ProductNames(const Handle(Interface_InterfaceModel) & model) {
    std::set<std::string> shownNames;
    for (int index = 1; index <= model->NbEntities(); ++index) {
        const Handle(StepBasic_Product) product = Handle(StepBasic_Product)::DownCast(model->Value(index));
        if (product.IsNull() || product->Name().IsNull() || product->Name()->Length() == 0) continue;
        const std::string name = product->Name()->ToCString();
        if (product->Name()->UsefullLength() > 0) {
            shownNames.insert(name);
        } else if (name.find_first_not_of(' ') != std::string::npos && !product->Id().IsNull()) {
            mNameByNumber.emplace(product->Id()->ToCString(), name);
        }
    }
    for (const std::string& name : shownNames) mNameByNumber.erase(name);
}

std::string ProductNames::NameFor(const std::string& shown) const {
    const auto found = mNameByNumber.find(shown);
    return found == mNameByNumber.end() ? shown : found->second;
}

}  // namespace brenvik::step
