#pragma once

#include "codecs/DecodeWithFactory.h"
#include "codecs/plugin/PluginFactory.h"
#include "foundation/LocalLogger.h"
#include "tests/codecs/TestContext.h"

#include <string>
#include <vector>

namespace PluginTest {

using namespace ET::Img;
using Quorvex::String;
using Bytes = std::vector<std::uint8_t>;

/// The folder of that name with the plug-ins made for these tests.
String Plugins(const char* folder);
/// The full path of a plug-in in the folder of that name; the name of the plug-in comes without its suffix.
String PathOf(const char* folder, const char* name);

CodecRegistry RegistryOf(const char* folder);

/// A file of the sample plug-in's format.
Bytes SampleFile(std::uint32_t width, std::uint32_t height, const std::vector<std::uint16_t>& samples,
                 std::uint32_t count = 1);

/// A file as the factories of the registry load it, by its name or by its content.
struct PluginLoad {
    enum class By { Name, Content };

    PluginLoad(const CodecRegistry& registry, const Bytes& file, std::int32_t wanted = 1, By by = By::Name);

    std::vector<std::string> Messages() const;

    std::int32_t index;
    SharedPtr<Quorvex::LocalLogger> logger = Quorvex::MakeShared<Quorvex::LocalLogger>();
    SharedPtr<ImageFile> decoder;
    SharedPtr<ImageBase> image;
};

/// A file that asks the misbehaving plug-in for one behaviour.
Bytes FileFor(char behaviour);
/// With what text the load of such a file fails, as RaisedText has it.
std::string FailureOf(char behaviour, std::int32_t index = 1);

} // namespace PluginTest
