#include "settings/Property.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Quorvex;

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

/// Writes what it visits: "name:type=value ".
class Recorder final : public PropertyWalker {
public:
    void Visit(const std::string& name, bool value) override { Add(name, "bool", value); }
    void Visit(const std::string& name, std::int16_t value) override { Add(name, "int16", value); }
    void Visit(const std::string& name, std::int32_t value) override { Add(name, "int32", value); }
    void Visit(const std::string& name, std::int64_t value) override { Add(name, "int64", value); }
    void Visit(const std::string& name, std::uint8_t value) override { Add(name, "uint8", value); }
    void Visit(const std::string& name, std::uint16_t value) override { Add(name, "uint16", value); }
    void Visit(const std::string& name, std::uint32_t value) override { Add(name, "uint32", value); }
    void Visit(const std::string& name, FixedPoint230 value) override { Add(name, "fixed", value); }
    void BeginComposite(const std::string& name) override { text += name + "{ "; }
    void EndComposite(const std::string& name) override { text += "}" + name + " "; }

    std::string text;

private:
    template <class T>
    void Add(const std::string& name, const char* type, T value) {
        text += name + ":" + type + "=" + ValueText<T>::ToText(value).ToStdString() + " ";
    }
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

/// "NNN " as Exception(line, name) writes it.
bool IsLineMessage(const std::string& message) {
    return message.size() > 1 && message.back() == ' ' && message.find_first_not_of("0123456789") == message.size() - 1;
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
    EXPECT_TRUE(IsLineMessage(MessageOf([&] { property.Get(); }))) << MessageOf([&] { property.Get(); });
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
    Recorder recorder;
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
    Recorder recorder;
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

namespace {

/// A setting of type T has neither a binary form nor a slot of the walker.
template <class T>
void ExpectTextOnly(const T& value) {
    CompositeOfProperties composite;
    InitializedProperty<T> property("Setting", &composite, value);
    Bytes stream({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    EXPECT_THROW(property.LoadValueFromStream(stream), Exception);
    EXPECT_TRUE(IsLineMessage(MessageOf([&] { property.LoadValueFromStream(stream); })));
    EXPECT_EQ(stream.tell(), 0u);
    Recorder recorder;
    EXPECT_THROW(property.Walk(recorder), Exception);
    EXPECT_TRUE(IsLineMessage(MessageOf([&] { property.Walk(recorder); })));
    EXPECT_EQ(recorder.text, "");
}

} // namespace

TEST(Property, SettingsThatAreTextOnlyRaiseOnLoadAndWalk) {
    ExpectTextOnly(Locale::EnumLanguage::German);
    ExpectTextOnly(Data::ColorBGRA<float>{});
}

TEST(Property, InitializedIntegerHasBothForms) {
    CompositeOfProperties composite("C");
    InitializedProperty<int> property("WindowX0", &composite, 3);
    Bytes stream({0xFF, 0xFF, 0xFF, 0xFF});
    property.LoadValueFromStream(stream);
    EXPECT_EQ(property.Get(), -1);
    Recorder recorder;
    property.Walk(recorder);
    EXPECT_EQ(recorder.text, "WindowX0:int32=-1 ");
}
