#ifdef VARNOLITE_HAS_TIFF

#include "tests/codecs/LibtiffMemory.h"

#include <algorithm>
#include <cstring>

namespace {

using File = LibtiffMemory;

struct Calls {
    static File& Of(thandle_t handle) { return *static_cast<File*>(handle); }

    static tmsize_t Read(thandle_t handle, void* target, tmsize_t size) {
        File& file = Of(handle);
        const std::size_t rest = file.bytes.size() - std::min(file.position, file.bytes.size());
        const std::size_t count = std::min(static_cast<std::size_t>(size), rest);
        if (count > 0)
            std::memcpy(target, file.bytes.data() + file.position, count);
        file.position += count;
        return static_cast<tmsize_t>(count);
    }
    static tmsize_t Write(thandle_t handle, void* source, tmsize_t size) {
        File& file = Of(handle);
        const auto count = static_cast<std::size_t>(size);
        file.bytes.resize(std::max(file.bytes.size(), file.position + count));
        std::memcpy(file.bytes.data() + file.position, source, count);
        file.position += count;
        return size;
    }
    static toff_t Seek(thandle_t handle, toff_t offset, int whence) {
        File& file = Of(handle);
        const std::size_t base = whence == SEEK_CUR ? file.position : whence == SEEK_END ? file.bytes.size() : 0;
        file.position = base + offset;
        return file.position;
    }
    static int Close(thandle_t) { return 0; }
    static toff_t Size(thandle_t handle) { return Of(handle).bytes.size(); }
};

} // namespace

Libtiff OpenLibtiff(LibtiffMemory& file, const char* mode) {
    // Its messages about damaged data are expected.
    TIFFSetErrorHandler(nullptr);
    TIFFSetWarningHandler(nullptr);
    file.position = 0;
    return Libtiff(TIFFClientOpen("memory", mode, &file, Calls::Read, Calls::Write, Calls::Seek, Calls::Close,
                                  Calls::Size, nullptr, nullptr),
                   &TIFFClose);
}

#endif
