#pragma once

#include "codecs/LoadFile.h"
#include "video/Context.h"

#include <exception>
#include <new>

namespace Quorvex::Tools {

/// A file as the viewer would show it.
struct LoadedFile {
    SharedPtr<ET::Img::ImageFile> decoder;
    SharedPtr<Data::ImageBase> image;
    std::int32_t index = ET::Img::ImageIndex::Default; ///< Of the image that was loaded, from 1.
};

inline LoadedFile LoadByContent(const String& path, std::int32_t index,
                                const SharedPtr<Platform::Video::Context>& context) {
    LoadedFile file{{}, {}, index};
    file.decoder = ET::Img::LoadFileByContent(path, {context, {}}, file.index, file.image);
    return file;
}

/// The program's way: by name, and only if that fails by content; the first failure is the one that is told.
inline LoadedFile Load(const String& path, std::int32_t index, const SharedPtr<Platform::Video::Context>& context) {
    try {
        LoadedFile file{{}, {}, index};
        file.decoder = ET::Img::LoadFileByExtension(path, {context, {}}, file.index, file.image);
        return file;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        const std::exception_ptr firstFailure = std::current_exception();
        try {
            LoadedFile file = LoadByContent(path, index, context);
            file.decoder->WrongFilenameExtension = true;
            return file;
        } catch (const std::exception&) {
            std::rethrow_exception(firstFailure);
        }
    }
}

} // namespace Quorvex::Tools
