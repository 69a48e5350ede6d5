#include "codecs/CodecFactory.h"

#include "codecs/bmp/BMPDecoder.h"
#include "codecs/gif/GIFDecoder.h"
#include "codecs/ico/ICODecoder.h"
#include "codecs/jpg/JPGDecoder.h"
#include "codecs/png/PNGDecoder.h"
#include "codecs/tif/TIFDecoder.h"

namespace ET::Img {

CodecRegistry& GetCodecRegistry() {
    static CodecRegistry registry{
        SharedPtr<BMPDecoderFactory>(new BMPDecoderFactory()), SharedPtr<GIFDecoderFactory>(new GIFDecoderFactory()),
        SharedPtr<ICODecoderFactory>(new ICODecoderFactory()), SharedPtr<JPGDecoderFactory>(new JPGDecoderFactory()),
        SharedPtr<PNGDecoderFactory>(new PNGDecoderFactory()), SharedPtr<TIFDecoderFactory>(new TIFDecoderFactory())};
    return registry;
}

} // namespace ET::Img
