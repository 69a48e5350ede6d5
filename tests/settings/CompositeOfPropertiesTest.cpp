#include "settings/Property.h"

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>

using namespace Quorvex;

namespace {

class Names final : public PropertyWalker {
public:
    void Visit(const std::string& name, bool) override { text += name + " "; }
    void Visit(const std::string& name, std::int16_t) override { text += name + " "; }
    void Visit(const std::string& name, std::int32_t) override { text += name + " "; }
    void Visit(const std::string& name, std::int64_t) override { text += name + " "; }
    void Visit(const std::string& name, std::uint8_t) override { text += name + " "; }
    void Visit(const std::string& name, std::uint16_t) override { text += name + " "; }
    void Visit(const std::string& name, std::uint32_t) override { text += name + " "; }
    void Visit(const std::string& name, FixedPoint230) override { text += name + " "; }
    void BeginComposite(const std::string& name) override { text += name + "( "; }
    void EndComposite(const std::string& name) override { text += ")" + name + " "; }
    std::string text;
};

class TextWriter final : public PropertyWriter {
public:
    void Write(const std::string& name, const String& value) override {
        text += "[" + name + "]" + value.ToStdString() + ";";
    }
    std::string text;
};

class TextReader final : public PropertyReader {
public:
    explicit TextReader(std::map<std::string, std::string> values) : m_values(std::move(values)) {}
    String ReadString(const std::string& name) override {
        asked += name + " ";
        return String(m_values[name].c_str());
    }
    std::string asked;

private:
    std::map<std::string, std::string> m_values;
};

struct Point : CompositeOfProperties {
    Point(std::string name, CompositeOfProperties* owner) : CompositeOfProperties(std::move(name), owner, "A point.") {}
    InitializedProperty<int> x{"X", this, 0};
    InitializedProperty<int> y{"Y", this, 0};
};

struct Settings : CompositeOfProperties {
    Settings() : CompositeOfProperties("Settings") {}
    InitializedProperty<bool> ruler{"Ruler", this, false};
    Point point{"Point", this};
    PropertyWithNotification<int> zoom{"Zoom", this, 100};
};

class Listener {
public:
    void OnZoom(const int& value) { heard += std::to_string(value) + " "; }
    std::string heard;
};

} // namespace

TEST(CompositeOfProperties, WalkFollowsTheOrderOfDeclarationAndNests) {
    Settings settings;
    Names names;
    settings.Walk(names);
    EXPECT_EQ(names.text, "Settings( Ruler Point( X Y )Point Zoom )Settings ");
}

TEST(CompositeOfProperties, WithoutEntriesThereIsNothingBetweenBeginAndEnd) {
    CompositeOfProperties composite("Empty");
    Names names;
    composite.Walk(names);
    EXPECT_EQ(names.text, "Empty( )Empty ");
    TextWriter writer;
    composite.Write(writer);
    EXPECT_EQ(writer.text, "");
}

TEST(CompositeOfProperties, EntriesTellCompositesFromValues) {
    Settings settings;
    const auto& entries = settings.GetEntries();
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_FALSE(entries[0]->IsComposite());
    EXPECT_EQ(entries[0]->ToString().ToStdString(), "false");
    EXPECT_TRUE(entries[1]->IsComposite());
    EXPECT_EQ(entries[1]->GetName(), "Point");
    EXPECT_EQ(entries[1]->GetDescription().ToStdString(), "A point.");
    EXPECT_TRUE(entries[1]->ToString().IsEmpty());
    const auto nested = entries[1].DynamicCast<CompositeOfProperties::AbstractCompositeInfo>();
    ASSERT_TRUE(nested);
    EXPECT_EQ(&nested->GetComposite(), &settings.point);
    EXPECT_EQ(entries[2]->ToString().ToStdString(), "100");
}

TEST(CompositeOfProperties, NestingIsNotWritten) {
    Settings settings;
    settings.point.x.Set(-5);
    TextWriter writer;
    settings.Write(writer);
    EXPECT_EQ(writer.text, "[Ruler]false;[X]-5;[Y]0;[Zoom]100;");
}

TEST(CompositeOfProperties, ReadingAsksInWalkingOrderAndFiresNotifications) {
    Settings settings;
    Listener listener;
    settings.zoom.Notification.Bind(&listener, &Listener::OnZoom);
    TextReader reader({{"Zoom", "250"}, {"Y", "-2"}, {"X", "7"}, {"Ruler", "true"}, {"Unknown", "1"}});
    settings.Read(reader);
    EXPECT_EQ(reader.asked, "Ruler X Y Zoom ");
    EXPECT_TRUE(settings.ruler.Get());
    EXPECT_EQ(settings.point.x.Get(), 7);
    EXPECT_EQ(settings.point.y.Get(), -2);
    EXPECT_EQ(listener.heard, "250 ");
}

TEST(CompositeOfProperties, ReadingStopsAtAMissingKeyAndKeepsWhatWasRead) {
    Settings settings;
    TextReader reader({{"Ruler", "true"}, {"X", "7"}, {"Zoom", "250"}});
    EXPECT_THROW(settings.Read(reader), Exception);
    EXPECT_TRUE(settings.ruler.Get());
    EXPECT_EQ(settings.point.x.Get(), 7);
    EXPECT_EQ(settings.point.y.Get(), 0);
    EXPECT_EQ(settings.zoom.Get(), 100);
}

TEST(CompositeOfProperties, AddedCompositeIsKeptAliveAndWalked) {
    CompositeOfProperties root("Root");
    auto header = MakeShared<CompositeOfProperties>("BITMAPFILEHEADER", String("The file header."));
    auto field = std::make_unique<InitializedProperty<int>>("cbSize", header.get(), 54);
    root.add(header);
    header.reset();
    Names names;
    root.Walk(names);
    EXPECT_EQ(names.text, "Root( BITMAPFILEHEADER( cbSize )BITMAPFILEHEADER )Root ");
    EXPECT_EQ(root.GetEntries()[0]->GetDescription().ToStdString(), "The file header.");
}

TEST(CompositeOfProperties, SecondCompositeOfOneNameRaises) {
    CompositeOfProperties root("Root");
    root.add(MakeShared<CompositeOfProperties>("Header"));
    EXPECT_THROW(root.add(MakeShared<CompositeOfProperties>("Header")), std::invalid_argument);
    EXPECT_EQ(root.GetEntries().size(), 1u);
}

TEST(CompositeOfProperties, NullCompositeOrOwnerRaises) {
    CompositeOfProperties root("Root");
    const auto messageOf = [](const auto& action) -> std::string {
        try {
            action();
        } catch (const Exception& exception) {
            return exception.what();
        }
        return "nothing was raised";
    };
    EXPECT_EQ(messageOf([&] { root.add(SharedPtr<CompositeOfProperties>()); }), "Property: composite is nullptr");
    EXPECT_EQ(messageOf([] { CompositeOfProperties nested("Name", nullptr); }), "Property: composite is nullptr");
}
