#include "codecs/plugin/PluginFactory.h"

#include "codecs/plugin/PluginDecoder.h"
#include "foundation/Report.h"
#include "foundation/platform/Files.h"
#include "foundation/platform/SpecialFolders.h"

#include <algorithm>
#include <string_view>

namespace ET::Img {

using Quorvex::String;
namespace Platform = Quorvex::Platform;

namespace {

bool HasLibrary(const CodecRegistry& registry, const String& path) {
    return std::any_of(registry.begin(), registry.end(), [&](const SharedPtr<CodecFactory>& factory) {
        const auto plugin = factory.DynamicCast<IDecoderCOMAsCPPWrapperFactory>();
        return plugin && plugin->GetLibraryPath() == path;
    });
}

void AddPlugin(CodecRegistry& registry, const String& path) {
    SharedPtr<Plugin::PluginLibrary> library(new Plugin::PluginLibrary(path));
    registry.push_back(
        SharedPtr<IDecoderCOMAsCPPWrapperFactory>(new IDecoderCOMAsCPPWrapperFactory(std::move(library))));
}

std::vector<String> FindLibraryNames(const String& folder) {
    std::vector<String> names =
        Platform::FindFileNames(folder, String("Varnolite*") + Platform::DynamicLibrary::GetFileSuffix());
    std::sort(names.begin(), names.end(), [](const String& a, const String& b) { return a.compare(b) < 0; });
    return names;
}

/// Up to the last separator, without it.
String FolderOf(const String& path) {
    const String wide = path.ToWide();
    const std::u16string_view units(wide.Wide(), wide.length());
    const std::size_t end = units.rfind(static_cast<char16_t>(*Platform::GetPathSeparator()));
    return String(std::u16string(units.substr(0, end)).c_str());
}

} // namespace

String IDecoderCOMAsCPPWrapperFactory::GetFilePattern() const {
    return String(u"*.raw;*.rek");
}

String IDecoderCOMAsCPPWrapperFactory::GetFileTypeText() const {
    return Quorvex::InCurrentLanguage({String(u"REK-Dateien (*.raw;*.rek)"), String(u"REK files (*.raw;*.rek)")});
}

SharedPtr<ImageFile> IDecoderCOMAsCPPWrapperFactory::CreateDecoder(SharedPtr<Quorvex::Stream> stream) const {
    return SharedPtr<IDecoderCOMAsCPPWrapper>(new IDecoderCOMAsCPPWrapper(m_library, std::move(stream)));
}

void AddPlugins(CodecRegistry& registry, const String& folder) {
    for (const String& name : FindLibraryNames(folder)) {
        const String path = Platform::JoinPath(folder, name);
        try {
            if (!HasLibrary(registry, path))
                AddPlugin(registry, path);
        } catch (const std::exception& failure) {
            // One bad file beside the program is not to stop it from starting.
            Quorvex::ReportProblem(__LINE__, name, String(": ") + failure.what());
        } catch (...) {
            // A library may raise anything while it is loaded.
            Quorvex::ReportProblem(__LINE__, name, ": unknown failure");
        }
    }
}

void AddPluginsBesideProgram(CodecRegistry& registry) {
    try {
        AddPlugins(registry, FolderOf(Quorvex::GetModulePath()));
    } catch (const std::exception& failure) {
        Quorvex::ReportProblem(__LINE__, "AddPluginsBesideProgram: ", failure.what());
    }
}

} // namespace ET::Img
