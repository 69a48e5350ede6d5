#include "codecs/DecodeWithFactory.h"
#include "data/MemoryStream.h"
#include "fuzz/FuzzContext.h"
#include "fuzz/Require.h"

#include <algorithm>

using namespace Quorvex;
using namespace ET::Img;

// The first byte asks for an image and for a name; the rest is the file. It is opened as the load driver does it: by
// the name, and when that fails by its content, which must leave index and image as they were if it fails too.

namespace {

bool ByName(const char* name, const SharedPtr<Stream>& stream, const LoadTarget& target, std::int32_t index) {
    try {
        SharedPtr<ImageBase> image;
        const SharedPtr<ImageFile> decoder = DecodeByExtension(name, stream, target, index, image);
        Require(decoder && image && index >= 1);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void ByContent(const SharedPtr<Stream>& stream, const LoadTarget& target, const std::int32_t wanted) {
    std::int32_t index = wanted;
    SharedPtr<ImageBase> image;
    try {
        const SharedPtr<ImageFile> decoder = DecodeByContent(stream, target, index, image);
        Require(decoder && image);
        // A GIF file may have no frame, and no last one then.
        const std::uint32_t count = decoder->GetCount();
        Require(decoder->GetDefaultIndex() < std::max(count, 1u));
        Require(index >= 1 || (count == 0 && index == 0));
    } catch (const std::exception&) {
        Require(!image && index == wanted);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const char* const names[] = {"a.bmp", "A.RLE", "a.raw", "a"};
    if (size == 0)
        return 0;
    LoadTarget target;
    target.context = MakeShared<FuzzContext>();
    const std::int32_t index = data[0] % 4 - 1;
    const auto stream = MakeShared<MemoryStream>(data + 1, static_cast<std::uint32_t>(size - 1));
    if (!ByName(names[data[0] / 4 % 4], stream, target, index)) {
        stream->seek(0);
        ByContent(stream, target, index);
    }
    return 0;
}
