#include "tests/codecs/JpgLossless.h"

#include "tests/codecs/JpgSegments.h"

#include <random>

namespace JpgLossless {

namespace {

class Encoder {
public:
    Encoder(const Recipe& wanted, const std::vector<Plane>& samples) : recipe(wanted), planes(samples) {}

    Bytes File() {
        using namespace JpgSegments;
        Bytes table{0x00, 0, 0, 0, 0, 0, 0, 0, 17, 0, 0, 0, 0, 0, 0, 0, 0};
        for (std::uint8_t size = 0; size <= 16; ++size)
            table.push_back(size);
        std::vector<FrameComponent> frame;
        for (unsigned i = 0; i < recipe.components; ++i)
            frame.push_back({static_cast<std::uint8_t>(i + 1)});
        Bytes file = start + Segment(0xC4, table) +
                     FrameHeader(0xC3, static_cast<std::uint8_t>(recipe.precision), recipe.width, recipe.height, frame);
        if (recipe.restartRows != 0)
            file = file + RestartInterval(static_cast<std::uint16_t>(recipe.restartRows * recipe.width));
        if (recipe.isInterleaved)
            return file + Scan(0, recipe.components) + end;
        for (unsigned i = 0; i < recipe.components; ++i)
            file = file + Scan(i, i + 1);
        return file + end;
    }

private:
    Bytes Scan(unsigned first, unsigned last) {
        using namespace JpgSegments;
        Bytes identifiers;
        for (unsigned i = first; i < last; ++i)
            identifiers.push_back(static_cast<std::uint8_t>(i + 1));
        unsigned restart = 0;
        for (unsigned y = 0; y < recipe.height; ++y) {
            if (recipe.restartRows != 0 && y != 0 && y % recipe.restartRows == 0)
                writer.PutRestart(restart++);
            for (unsigned x = 0; x < recipe.width; ++x)
                for (unsigned i = first; i < last; ++i)
                    Put(Sample(i, x, y) - Prediction(i, x, y));
        }
        return ScanHeader(identifiers, static_cast<std::uint8_t>(recipe.predictor), 0,
                          static_cast<std::uint8_t>(recipe.pointTransform)) +
               writer.Take();
    }

    int Sample(unsigned plane, unsigned x, unsigned y) const {
        return static_cast<int>(planes[plane][std::size_t(y) * recipe.width + x] >> recipe.pointTransform);
    }

    int Prediction(unsigned plane, unsigned x, unsigned y) const {
        const bool isFirstRow = recipe.restartRows != 0 ? y % recipe.restartRows == 0 : y == 0;
        if (isFirstRow)
            return x == 0 ? 1 << (recipe.precision - recipe.pointTransform - 1) : Sample(plane, x - 1, y);
        const int b = Sample(plane, x, y - 1);
        if (x == 0)
            return b;
        const int a = Sample(plane, x - 1, y), c = Sample(plane, x - 1, y - 1);
        const int table[] = {0, a, b, c, a + b - c, a + ((b - c) >> 1), b + ((a - c) >> 1), (a + b) / 2};
        return table[recipe.predictor];
    }

    void Put(int difference) {
        // Modulo 65536, from -32767 to 32768.
        difference = static_cast<std::int16_t>(difference);
        if (difference == -32768)
            difference = 32768;
        writer.Put(JpgBitWriter::SizeOf(difference), 8);
        if (difference != 32768)
            writer.PutNumber(difference);
    }

    Recipe recipe;
    const std::vector<Plane>& planes;
    JpgBitWriter writer;
};

} // namespace

std::vector<Plane> RandomPlanes(const Recipe& recipe) {
    std::mt19937 random(recipe.precision * 8 + recipe.predictor);
    std::vector<Plane> planes(recipe.components);
    for (Plane& plane : planes)
        for (std::size_t i = 0; i < std::size_t(recipe.width) * recipe.height; ++i) {
            // Noise of the whole range with the ends of it, and quiet parts.
            const std::uint32_t noise = i % 5 == 0 ? 0xFFFF : i % 7 == 0 ? 0 : random();
            const std::uint32_t sample = noise & ((1u << recipe.precision) - 1);
            plane.push_back(sample >> recipe.pointTransform << recipe.pointTransform);
        }
    return planes;
}

Bytes EncodedFile(const Recipe& recipe, const std::vector<Plane>& planes) {
    return Encoder(recipe, planes).File();
}

} // namespace JpgLossless
