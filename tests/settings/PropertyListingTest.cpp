#include "settings/PropertyListing.h"
#include "settings/Property.h"

#include <gmock/gmock.h>

using namespace Quorvex;

namespace {

struct Inner : CompositeOfProperties {
    explicit Inner(CompositeOfProperties* owner) : CompositeOfProperties("inner", owner) {}
    InitializedProperty<FixedPoint230> half{"half", this, FixedPoint230{1 << 29}};
    UninitializedProperty<std::uint16_t> unread{"unread", this};
};

struct Outer : CompositeOfProperties {
    Outer() : CompositeOfProperties("outer") {}
    InitializedProperty<std::int32_t> first{"first", this, -7};
    Inner inner{this};
    InitializedProperty<bool> last{"last", this, true};
};

} // namespace

TEST(PropertyListing, GivesPathsBelowTheRootInOrderAndLeavesOutWhatHasNoValue) {
    const Outer outer;
    EXPECT_THAT(ListProperties(outer), testing::ElementsAre("first = -7", "inner/half = 0.5", "last = true"));
}

TEST(PropertyListing, IsEmptyForAnEmptyComposite) {
    EXPECT_TRUE(ListProperties(CompositeOfProperties("empty")).empty());
}
