#include "tests/codecs/GifCorpus.h"

#include "tests/codecs/GifLoad.h"
#include "tests/codecs/GifReference.h"

#include <map>

using namespace Quorvex;

namespace {

using Bytes = std::vector<std::uint8_t>;

/// Good files that end otherwise here than in other programs.
const std::map<std::string, std::string> otherOutcomes = {
    // A global colour table is required.
    {"gif/valid/Pillow/missing_background.gif", "fails: 250 missing global color map"},
    {"gif/valid/commons-imaging/test.gif", "fails: 324 missing global color map"},
    {"gif/valid/wuffs/empty-palette.gif", "fails: 324 missing global color map"},
    // Frames without pixels and without data: the trailer is read as their code size, and the file ends.
    {"gif/valid/pygif/image-zero-size.gif", "fails: "},
    {"gif/valid/pygif/image-zero-width.gif", "fails: "},
    {"gif/valid/pygif/no-data.gif", "has no frames"},
    {"gif/valid/pygif/zero-size.gif", "has no frames"},
    // Codes that stand for nothing, and code sizes beyond all codes.
    {"gif/valid/pygif/invalid-code.gif", "frame 1 is incomplete"},
    {"gif/valid/pygif/overflow-codes-max.gif", "fails: CodeSize>LZ_BITS"},
};

} // namespace

std::string GifOutcome(const Bytes& file) {
    try {
        const std::uint32_t count = GifLoad(file).decoder->GetCount();
        for (std::uint32_t i = 0; i < count; ++i)
            if (GifLoad(file, static_cast<std::int32_t>(i + 1)).decoder->IsIncomplete())
                return "frame " + std::to_string(i + 1) + " is incomplete";
        return count > 0 ? "decodes" : "has no frames";
    } catch (const Exception& failure) {
        return std::string("fails: ") + failure.what();
    }
}

TEST_F(GifCorpus, ValidFilesDecode) {
    for (const Corpus::File& file : Corpus::Files("gif")) {
        if (!file.isValid)
            continue;
        const auto other = otherOutcomes.find(file.path);
        EXPECT_EQ(GifOutcome(Corpus::Content(file.path)), other != otherOutcomes.end() ? other->second : "decodes")
            << file.path;
    }
}

TEST_F(GifCorpus, EveryFileDecodesAsInThePlainDecoder) {
    for (const Corpus::File& file : Corpus::Files("gif")) {
        const Bytes bytes = Corpus::Content(file.path);
        const GifReference reference = DecodeGifPlainly(bytes);
        for (const auto manner : {TestStream::Manner::File, TestStream::Manner::Memory})
            ExpectGif(bytes, reference, manner, file.path);
    }
}

TEST_F(GifCorpus, CodeSizesAboveEightGiveTheSamePicture) {
    const auto pixels = [](const char* name) {
        return GifLoad(Corpus::Content(std::string("gif/valid/pygif/") + name)).Pixels();
    };
    EXPECT_TRUE(pixels("max-codes.gif") == pixels("4095-codes.gif"));
}
