// An entity besides its shape: layer, line type, colour and extended data, by the drawing's names.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "drafting_host/dwg/entities.h"
#include "drafting_host/dwg/links.h"
#include "drafting_host/dwg/names.h"
#include "drafting_host/dxf/reading/reading.h"

namespace brenvik::dwg {

class CommonValues {
  public:
    /// All of these outlive it.
    struct Source {
        const Sections& sections;
        const Texts& texts;
        const ObjectMap& map;
        const Kinds& kinds;
        const Header& header;
        const Names& names;
        Links& links;
        Reading& reading;
    };
    explicit CommonValues(const Source& source) : mSource(source) {}

    EntityData EntityOf(std::string_view kind, const Object& object, const Common& common) const;
    /// What shows of an entity besides its values, and what its kind has besides its shape.
    void KeepFurther(EntityData& entity, std::string_view kind, const Common& common,
                     const Further& further) const;
    /// Extended data with the names of applications and layers.
    std::vector<XDataOfApp> XDataOf(std::string_view what, HandleValue handle,
                                    const std::vector<RawXData>& data) const;

  private:
    void CheckHandles(std::string_view what, HandleValue handle, const XDataOfApp& app) const;
    void CheckItems(std::string_view what, HandleValue handle, const RawXData& raw,
                    const std::string& application) const;
    RecordColor TrueColorOf(const Common& common, const Holder& holder) const;

    Source mSource;
};

}  // namespace brenvik::dwg
