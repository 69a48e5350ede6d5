#include "codecs/CodecFactory.h"

#include "codecs/bmp/BMPDecoder.h"

namespace ET::Img {

CodecRegistry& GetCodecRegistry() {
    static CodecRegistry registry{SharedPtr<BMPDecoderFactory>(new BMPDecoderFactory())};
    return registry;
}

} // namespace ET::Img
