#include "foundation/Function.h"

#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using Quorvex::Test::RaisedText;

namespace {

struct Slider {
    int position = 0;
};

class Owner {
public:
    virtual ~Owner() = default;
    void OnClick() { ++clicks; }
    void OnSlide(Slider& slider) { slider.position += 10; }
    void OnRead(const int& value) { clicks = value; }
    virtual void OnVirtual() { ++clicks; }
    int clicks = 0;
};

class OtherBase {
public:
    virtual ~OtherBase() = default;
    int padding = 0;
};

class DerivedOwner : public OtherBase, public Owner {
public:
    void OnVirtual() override { clicks += 100; }
};

int plainCalls = 0;

void Plain() {
    ++plainCalls;
}

void PlainSlide(Slider& slider) {
    slider.position = -1;
}

TEST(FunctionTest, UnboundFunctionTestsFalse) {
    Function<void> function;
    EXPECT_FALSE(function);
}

TEST(FunctionTest, CallsTheMemberOfItsObject) {
    Owner owner;
    Function<void> function;
    function.Bind(&owner, &Owner::OnClick);
    ASSERT_TRUE(function);
    function();
    function();
    EXPECT_EQ(owner.clicks, 2);
}

TEST(FunctionTest, HandsTheArgumentOnByReference) {
    Owner owner;
    Slider slider;
    Function<Slider&> function;
    function.Bind(&owner, &Owner::OnSlide);
    function(slider);
    EXPECT_EQ(slider.position, 10);
    Function<const int&> reader;
    reader.Bind(&owner, &Owner::OnRead);
    reader(5);
    EXPECT_EQ(owner.clicks, 5);
}

TEST(FunctionTest, CallsVirtualMembersThroughASecondBase) {
    DerivedOwner derived;
    Function<void> function;
    function.Bind(static_cast<Owner*>(&derived), &Owner::OnVirtual);
    function();
    function.Bind(&derived, &DerivedOwner::OnVirtual);
    function();
    EXPECT_EQ(derived.clicks, 200);
}

TEST(FunctionTest, CallsPlainFunctions) {
    plainCalls = 0;
    Slider slider;
    Function<void> function;
    function.Bind(&Plain);
    function();
    EXPECT_EQ(plainCalls, 1);
    Function<Slider&> slide;
    slide.Bind(&PlainSlide);
    slide(slider);
    EXPECT_EQ(slider.position, -1);
}

TEST(FunctionTest, NullObjectRaisesAndKeepsTheFormerBinding) {
    Owner owner;
    Function<void> function;
    function.Bind(&owner, &Owner::OnClick);
    EXPECT_EQ(RaisedText([&] { function.Bind(static_cast<Owner*>(nullptr), &Owner::OnClick); }),
              "object pointer is nullptr");
    function();
    EXPECT_EQ(owner.clicks, 1);
}

TEST(FunctionTest, BindingAgainReplacesTheFormerBinding) {
    plainCalls = 0;
    Owner owner;
    Function<void> function;
    function.Bind(&owner, &Owner::OnClick);
    function.Bind(&Plain);
    function();
    EXPECT_EQ(owner.clicks, 0);
    EXPECT_EQ(plainCalls, 1);
    function.Unbind();
    EXPECT_FALSE(function);
}

TEST(FunctionTest, CopiesCallTheSameObject) {
    Owner owner;
    Function<void> function;
    function.Bind(&owner, &Owner::OnClick);
    const Function<void> copy(function);
    Function<void> assigned;
    assigned = function;
    const Function<void>& same = assigned;
    assigned = same;
    function.Unbind();
    copy();
    assigned();
    EXPECT_EQ(owner.clicks, 2);
    EXPECT_FALSE(Function<void>(function));
}

TEST(FunctionTest, MayBindItselfAnewWhileItIsCalled) {
    static Function<void> function;
    plainCalls = 0;
    function.Bind(+[] {
        ++plainCalls;
        function.Bind(&Plain);
    });
    function();
    function();
    EXPECT_EQ(plainCalls, 2);
}

} // namespace
