#include "settings/CountPropertyWalker.h"
#include "settings/Property.h"

#include <gtest/gtest.h>

using namespace Quorvex;

namespace {

std::size_t CountOf(const CompositeOfProperties& composite) {
    CountPropertyWalker walker;
    composite.Walk(walker);
    return walker.GetCount();
}

} // namespace

TEST(CountPropertyWalker, CountsCompositesAtAnyDepthAndNoValues) {
    CompositeOfProperties root("Root");
    EXPECT_EQ(CountOf(root), 1u);
    InitializedProperty<int> value("Value", &root, 1);
    InitializedProperty<FixedPoint230> fraction("Fraction", &root, {});
    EXPECT_EQ(CountOf(root), 1u);
    CompositeOfProperties nested("Nested", &root);
    CompositeOfProperties innermost("Innermost", &nested);
    CompositeOfProperties beside("Beside", &root);
    EXPECT_EQ(CountOf(root), 4u);
}

TEST(CountPropertyWalker, StartsOnABitmapWithTwoHeaders) {
    CompositeOfProperties root("Root");
    root.add(MakeShared<CompositeOfProperties>("BITMAPFILEHEADER"));
    root.add(MakeShared<CompositeOfProperties>("BITMAPINFOHEADER"));
    EXPECT_EQ(CountOf(root), 3u);
}
