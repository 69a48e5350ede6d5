#include "tests/codecs/PluginLoad.h"

#include "foundation/platform/DynamicLibrary.h"
#include "foundation/platform/Files.h"
#include "foundation/platform/SpecialFolders.h"
#include "tests/codecs/TestStream.h"
#include "tests/support/RaisedText.h"

#include <string_view>

namespace PluginTest {

using namespace Quorvex;

String Plugins(const char* folder) {
    const String program = GetModulePath().ToWide();
    const std::u16string_view path(program.Wide(), program.length());
    const std::u16string beside(path.substr(0, path.find_last_of(u"/\\")));
    return Platform::JoinPath(Platform::JoinPath(String(beside.c_str()), "plugins"), folder);
}

String PathOf(const char* folder, const char* name) {
    return Platform::JoinPath(Plugins(folder), String(name) + Platform::DynamicLibrary::GetFileSuffix());
}

CodecRegistry RegistryOf(const char* folder) {
    CodecRegistry registry;
    AddPlugins(registry, Plugins(folder));
    return registry;
}

Bytes SampleFile(std::uint32_t width, std::uint32_t height, const std::vector<std::uint16_t>& samples,
                 std::uint32_t count) {
    Bytes file{'R', 'E', 'K', '1'};
    for (const std::uint32_t number : {width, height, count})
        for (int shift = 0; shift < 32; shift += 8)
            file.push_back(static_cast<std::uint8_t>(number >> shift));
    for (const std::uint16_t sample : samples)
        file.insert(file.end(), {static_cast<std::uint8_t>(sample), static_cast<std::uint8_t>(sample >> 8)});
    return file;
}

PluginLoad::PluginLoad(const CodecRegistry& registry, const Bytes& file, std::int32_t wanted, By by) : index(wanted) {
    LoadTarget target;
    target.context = MakeShared<TestContext>();
    target.logger = logger;
    target.registry = &registry;
    const auto stream = MakeShared<TestStream>(file);
    decoder = by == By::Name ? DecodeByExtension("a.rek", stream, target, index, image)
                             : DecodeByContent(stream, target, index, image);
}

std::vector<std::string> PluginLoad::Messages() const {
    std::vector<std::string> texts;
    for (const BilingualText& message : logger->GetMessages())
        for (const String& text : message)
            texts.push_back(text.ToANSI().ToStdString());
    return texts;
}

Bytes FileFor(char behaviour) {
    return {static_cast<std::uint8_t>(behaviour), 0};
}

std::string FailureOf(char behaviour, std::int32_t index) {
    const CodecRegistry registry = RegistryOf("misbehaving");
    return Test::RaisedText([&] { PluginLoad load(registry, FileFor(behaviour), index); });
}

} // namespace PluginTest
