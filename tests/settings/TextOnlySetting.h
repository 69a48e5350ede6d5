#pragma once

#include "data/MemoryStream.h"
#include "settings/Property.h"
#include "tests/settings/RecordingWalker.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

namespace Quorvex::Test {

/// "NNN ", as Exception(line, name) writes it.
inline bool IsLineText(const std::string& text) {
    return text.size() > 1 && text.back() == ' ' && text.find_first_not_of("0123456789") == text.size() - 1;
}

/// A setting of type T is kept as text alone: it has neither a binary form nor a slot of the walker, whatever its
/// value.
template <class T>
void ExpectTextOnly(const T& value) {
    CompositeOfProperties composite;
    InitializedProperty<T> property("Setting", &composite, value);
    const std::uint8_t bytes[sizeof(T)]{1};
    MemoryStream stream(bytes, sizeof(T));
    const auto loading = RaisedText([&] { property.LoadValueFromStream(stream); });
    EXPECT_TRUE(IsLineText(loading)) << loading;
    EXPECT_EQ(stream.tell(), 0u);
    EXPECT_EQ(std::memcmp(&property.Get(), &value, sizeof(T)), 0);
    RecordingWalker walker;
    const auto walking = RaisedText([&] { property.Walk(walker); });
    EXPECT_TRUE(IsLineText(walking)) << walking;
    EXPECT_EQ(walker.text, "");
}

} // namespace Quorvex::Test
