#include "app/WindowTitle.h"

#include <string_view>

namespace Quorvex::App {

namespace {

String WithoutUnits(const String& text, std::uint32_t count) {
    return String(TextView(text.Wide() + count, text.length() - count, Encoding::Utf16));
}

} // namespace

String MakeWindowTitle(const String& path) {
    const String wide = path.ToWide();
    const std::u16string_view text(wide.Wide(), wide.length());
    const String name(programName);
    // \\?\UNC\server\share reads as \\server\share: one of the two separators is left where the prefix stood.
    constexpr std::u16string_view longNetworkPrefix = u"\\\\?\\UNC";
    constexpr std::u16string_view longPrefix = u"\\\\?\\";
    if (text.starts_with(longNetworkPrefix) && text.substr(longNetworkPrefix.size()).starts_with(u'\\'))
        return name + " - \\" + WithoutUnits(wide, longNetworkPrefix.size());
    if (text.starts_with(longPrefix))
        return name + " - " + WithoutUnits(wide, longPrefix.size());
    return name + " - " + wide;
}

} // namespace Quorvex::App
