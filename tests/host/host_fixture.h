// A host with one empty drawing, and short ways to say what tests of the host say often.
#pragma once

#include <gtest/gtest.h>

#include <numbers>
#include <string>
#include <vector>

#include "base/failure.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/host_application.h"
#include "file_roots/whole_file.h"
#include "support/failure_of.h"

namespace brenvik {

inline void ExpectNear(const Point3& is, const Point3& wanted, double tolerance = 1e-12) {
    EXPECT_NEAR(is.x, wanted.x, tolerance);
    EXPECT_NEAR(is.y, wanted.y, tolerance);
    EXPECT_NEAR(is.z, wanted.z, tolerance);
}

inline void ExpectExact(const Point3& is, const Point3& wanted) {
    EXPECT_EQ(is.x, wanted.x);
    EXPECT_EQ(is.y, wanted.y);
    EXPECT_EQ(is.z, wanted.z);
}

inline void ExpectBox(const Box3& is, const Point3& min, const Point3& max, double tolerance = 1e-12) {
    ExpectNear(is.min, min, tolerance);
    ExpectNear(is.max, max, tolerance);
}

/// A value of part data as the system keeps it: one application per key, one text.
inline void SetText(AcadObject& object, const std::string& key, const std::string& value) {
    const std::vector<std::int16_t> types{1001, 1000};
    const std::vector<XDataValue> values{key, value};
    object.SetXData(types, values);
}

inline std::string TextOf(const AcadObject& object, const std::string& key) {
    std::vector<std::int16_t> types;
    std::vector<XDataValue> values;
    object.GetXData(key, types, values);
    return values.size() < 2 ? std::string() : std::get<std::string>(values[1]);
}

class HostTest : public ::testing::Test {
  protected:
    AcadBlock& Model() { return document.ModelSpace(); }
    HostLayer& NewLayer(const std::string& name) {
        return dynamic_cast<HostLayer&>(*document.Layers().Add(name));
    }
    std::vector<std::string> NamesIn(AcadBlock& block) {
        std::vector<std::string> names;
        block.ForEach([&](AcadEntity& entity) { names.emplace_back(entity.ObjectName()); });
        return names;
    }

    HostApplication application{WriteWholeFile};
    HostDocument& document = application.NewDocument();
};

}  // namespace brenvik
