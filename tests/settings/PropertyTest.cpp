#include "settings/Property.h"
#include "tests/settings/TextOnlySetting.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Quorvex;
using Quorvex::Test::ExpectTextOnly;
using Quorvex::Test::IsLineText;

namespace {

/// A stream over bytes of the test; enough of one for properties.
class Bytes final : public Stream {
public:
    explicit Bytes(std::vector<std::uint8_t> bytes) : m_bytes(std::move(bytes)) {}
    std::uint64_t tell() const override { return m_position; }
    void read(void* destination, std::uint32_t byteCount) override {
        if (byteCount > m_bytes.size() - m_position)
            throw Exception("end");
        std::memcpy(destination, m_bytes.data() + m_position, byteCount);
        m_position += byteCount;
    }
    void seek(std::uint64_t position) override { m_position = position; }
    std::uint64_t size() const override { return m_bytes.size(); }
    StreamLock lock(std::uint32_t byteCount) override { return {this, nullptr, byteCount}; }
    std::unique_ptr<Stream> Clone() const override { return nullptr; }

private:
    std::vector<std::uint8_t> m_bytes;
    std::size_t m_position = 0;
};

class Listener {
public:
    void OnChange(const int& value) { heard.push_back(value); }
    std::vector<int> heard;
};

template <class Action>
std::string MessageOf(const Action& action) {
    try {
        action();
    } catch (const std::exception& exception) {
        return exception.what();
    }
    return "nothing was raised";
}

struct OneOfEach : CompositeOfProperties {
    OneOfEach() : CompositeOfProperties("Each") {}
    UninitializedProperty<bool> truth{"truth", this};
    UninitializedProperty<std::int16_t> int16{"int16", this};
    UninitializedProperty<std::int32_t> int32{"int32", this};
    UninitializedProperty<std::int64_t> int64{"int64", this};
    UninitializedProperty<std::uint8_t> uint8{"uint8", this};
    UninitializedProperty<std::uint16_t> uint16{"uint16", this};
    UninitializedProperty<std::uint32_t> uint32{"uint32", this};
    UninitializedProperty<FixedPoint230> fixed{"fixed", this};
};

const std::vector<std::uint8_t> oneOfEachBytes{
    0x02,                                           // truth
    0xFE, 0xFF,                                     // int16 -2
    0xFD, 0xFF, 0xFF, 0xFF,                         // int32 -3
    0xFC, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, // int64 -4
    0xFB,                                           // uint8 251
    0x42, 0x4D,                                     // uint16 "BM"
    0x28, 0x00, 0x00, 0x80,                         // uint32
    0x00, 0x00, 0x00, 0x60,                         // fixed 1.5
};

} // namespace

TEST(Property, ConstructionWithoutCompositeRaises) {
    const auto construct = [] { InitializedProperty<int> property("Width", nullptr, 1); };
    EXPECT_THROW(construct(), Exception);
    EXPECT_EQ(MessageOf(construct), "Property: composite is nullptr");
}

TEST(Property, SecondPropertyOfOneNameRaises) {
    CompositeOfProperties composite;
    InitializedProperty<int> first("Width", &composite, 1);
    const auto construct = [&] { InitializedProperty<bool> second("Width", &composite, true); };
    EXPECT_THROW(construct(), std::invalid_argument);
    EXPECT_EQ(MessageOf(construct), "key already exists");
    EXPECT_EQ(composite.GetEntries().size(), 1u);
}

TEST(Property, NestedCompositeSharesTheNamesOfItsOwner) {
    CompositeOfProperties composite;
    InitializedProperty<int> first("Width", &composite, 1);
    const auto construct = [&] { CompositeOfProperties nested("Width", &composite); };
    EXPECT_THROW(construct(), std::invalid_argument);
    EXPECT_EQ(MessageOf(construct), "key already exists");
}

TEST(Property, InitializedHasItsDefaultAndKeepsWhatIsSet) {
    CompositeOfProperties composite;
    InitializedProperty<int> property("Width", &composite, -7);
    EXPECT_EQ(property.Get(), -7);
    property.Set(9);
    EXPECT_EQ(property.Get(), 9);
    EXPECT_EQ(property + 1, 10);
    EXPECT_EQ(property.GetName(), "Width");
    EXPECT_TRUE(property.GetDescription().IsEmpty());
}

TEST(Property, GetOfWhatNothingHasReadRaises) {
    CompositeOfProperties composite;
    UninitializedProperty<std::uint32_t> property("biSize", &composite);
    EXPECT_FALSE(property.IsKnown());
    EXPECT_THROW(property.Get(), Exception);
    EXPECT_TRUE(IsLineText(MessageOf([&] { property.Get(); }))) << MessageOf([&] { property.Get(); });
    EXPECT_THROW(static_cast<void>(property + 1), Exception);
    EXPECT_THROW(composite.GetEntries()[0]->ToString(), Exception);
}

TEST(Property, SetMakesAnUninitializedPropertyKnown) {
    CompositeOfProperties composite;
    UninitializedProperty<std::uint32_t> property("biSize", &composite);
    property.Set(40);
    EXPECT_TRUE(property.IsKnown());
    EXPECT_EQ(property.Get(), 40u);
}

TEST(Property, StreamGivesLittleEndianValuesInOrderOfDeclaration) {
    OneOfEach composite;
    Bytes stream(oneOfEachBytes);
    composite.LoadValueFromStream(stream);
    EXPECT_EQ(stream.tell(), stream.size());
    RecordingWalker recorder;
    composite.Walk(recorder);
    EXPECT_EQ(recorder.text, "Each{ truth:bool=true int16:int16=-2 int32:int32=-3 int64:int64=-4 uint8:uint8=251 "
                             "uint16:uint16=19778 uint32:uint32=2147483688 fixed:fixed=1.5 }Each ");
}

TEST(Property, ShortStreamLeavesTheRestUnknown) {
    OneOfEach composite;
    Bytes stream(std::vector<std::uint8_t>(oneOfEachBytes.begin(), oneOfEachBytes.begin() + 5));
    EXPECT_THROW(composite.LoadValueFromStream(stream), Exception);
    EXPECT_TRUE(composite.int16.IsKnown());
    EXPECT_FALSE(composite.int32.IsKnown());
    EXPECT_FALSE(composite.fixed.IsKnown());
}

TEST(Property, WalkerPassesOverFieldsThatWereNeverRead) {
    OneOfEach composite;
    composite.uint16.Set(19778);
    RecordingWalker recorder;
    composite.Walk(recorder);
    EXPECT_EQ(recorder.text, "Each{ uint16:uint16=19778 }Each ");
}

TEST(Property, DescriptionBelongsToTheFieldAndTheEntry) {
    CompositeOfProperties composite("Header", "A header.");
    UninitializedPropertyWithDescription<std::uint16_t> planes("biPlanes", &composite, "The number of planes.");
    EXPECT_EQ(composite.GetDescription().ToStdString(), "A header.");
    EXPECT_EQ(planes.GetDescription().ToStdString(), "The number of planes.");
    EXPECT_EQ(composite.GetEntries()[0]->GetDescription().ToStdString(), "The number of planes.");
    Bytes stream({1, 0});
    planes.LoadValueFromStream(stream);
    EXPECT_EQ(planes.Get(), 1);
}

TEST(Property, TypeTellsTheClassOfAPropertyBehindItsBase) {
    CompositeOfProperties composite;
    InitializedProperty<int> initialized("a", &composite, 0);
    UninitializedProperty<int> uninitialized("b", &composite);
    UninitializedPropertyWithDescription<int> described("c", &composite, "text");
    PropertyWithNotification<int> notifying("d", &composite, 0);
    const auto typeOf = [](const Property<int>& property) -> const std::type_info& { return property.Type(); };
    EXPECT_EQ(typeOf(initialized), InitializedProperty<int>::ClassType());
    EXPECT_EQ(typeOf(uninitialized), UninitializedProperty<int>::ClassType());
    EXPECT_EQ(typeOf(described), UninitializedPropertyWithDescription<int>::ClassType());
    EXPECT_EQ(typeOf(notifying), PropertyWithNotification<int>::ClassType());
    EXPECT_NE(typeOf(initialized), typeOf(notifying));
}

TEST(Property, NotificationHearsEveryValueThatIsSet) {
    CompositeOfProperties composite;
    Listener listener;
    PropertyWithNotification<int> property("Zoom", &composite, 1);
    property.Notification.Bind(&listener, &Listener::OnChange);
    property.Set(5);
    property.Set(5);
    EXPECT_EQ(listener.heard, (std::vector<int>{5, 5}));
    EXPECT_EQ(property.Get(), 5);
}

TEST(Property, NotificationWithoutFunctionOnlyStores) {
    CompositeOfProperties composite;
    PropertyWithNotification<int> property("Zoom", &composite, 1);
    EXPECT_FALSE(property.Notification);
    property.Set(5);
    EXPECT_EQ(property.Get(), 5);
}

TEST(Property, AssignCopiesNameAndValueAndNotifies) {
    CompositeOfProperties source, target;
    Listener listener;
    PropertyWithNotification<int> from("Other", &source, 8);
    PropertyWithNotification<int> to("Zoom", &target, 1);
    to.Notification.Bind(&listener, &Listener::OnChange);
    to.Assign(from);
    EXPECT_EQ(to.Get(), 8);
    EXPECT_EQ(to.GetName(), "Other");
    EXPECT_EQ(listener.heard, std::vector<int>{8});
    EXPECT_EQ(target.GetEntries()[0]->GetName(), "Zoom");
}

TEST(Property, AssignWithoutFunctionOnlyCopies) {
    CompositeOfProperties source, target;
    PropertyWithNotification<int> from("Other", &source, 8), to("Zoom", &target, 1);
    to.Assign(from);
    EXPECT_EQ(to.Get(), 8);
}

TEST(Property, SettingsThatAreTextOnlyRaiseOnLoadAndWalk) {
    for (const std::uint32_t language : {0u, 0x44450000u, 0x454E0001u, 7u}) // The last one is none.
        ExpectTextOnly(static_cast<Locale::EnumLanguage>(language));
    ExpectTextOnly(Data::ColorBGRA<float>{});
}

TEST(Property, InitializedIntegerHasBothForms) {
    CompositeOfProperties composite("C");
    InitializedProperty<int> property("WindowX0", &composite, 3);
    Bytes stream({0xFF, 0xFF, 0xFF, 0xFF});
    property.LoadValueFromStream(stream);
    EXPECT_EQ(property.Get(), -1);
    RecordingWalker recorder;
    property.Walk(recorder);
    EXPECT_EQ(recorder.text, "WindowX0:int32=-1 ");
}
