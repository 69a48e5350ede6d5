#include "tests/codecs/JpgCoefficients.h"

#include "tests/codecs/JpgSegments.h"

#include <algorithm>
#include <random>

namespace JpgCoefficients {

using namespace JpgSegments;

namespace {

/// The entropy-coded data of one scan.
class ScanEncoder {
public:
    ScanEncoder(const Picture& encoded, std::uint8_t marker, const Scan& wanted)
        : picture(encoded), isProgressive(marker == 0xC2), scan(wanted) {}

    Bytes Encode(unsigned restartInterval) {
        std::size_t inInterval = 0;
        unsigned restart = 0;
        for (std::size_t i = 0; i < picture.BlockCount(); ++i) {
            if (restartInterval != 0 && inInterval == restartInterval) {
                PutEndOfBands();
                writer.PutRestart(restart++);
                predictors = {};
                inInterval = 0;
            }
            ++inInterval;
            for (const std::uint8_t component : scan.components)
                PutBlock(picture.components[component][i], predictors[component]);
        }
        PutEndOfBands();
        return writer.Take();
    }

private:
    void PutBlock(const Block& block, int& predictor) {
        if (!isProgressive) {
            PutDc(block[0], predictor);
            PutSequentialAc(block);
        } else if (scan.first == 0) {
            if (scan.high == 0)
                PutDc(block[0] >> scan.low, predictor);
            else
                writer.Put(static_cast<std::uint32_t>(block[0] >> scan.low), 1);
        } else if (scan.high == 0) {
            PutFirstBand(block);
        } else {
            PutRefinedBand(block);
        }
    }

    void PutSymbol(unsigned run, unsigned size) { writer.Put(run << 4 | size, 8); }

    void PutDc(int value, int& predictor) {
        PutSymbol(0, JpgBitWriter::SizeOf(value - predictor));
        writer.PutNumber(value - predictor);
        predictor = value;
    }

    void PutCoefficient(unsigned& run, int value) {
        for (; run > 15; run -= 16)
            PutSymbol(15, 0);
        PutSymbol(run, JpgBitWriter::SizeOf(value));
        writer.PutNumber(value);
        run = 0;
    }

    void PutSequentialAc(const Block& block) {
        unsigned run = 0;
        for (std::size_t place = 1; place < 64; ++place)
            if (block[place] == 0)
                ++run;
            else
                PutCoefficient(run, block[place]);
        if (run != 0)
            PutSymbol(0, 0);
    }

    /// A coefficient as the bits from the scan's lowest on tell it, without its sign.
    int Magnitude(const Block& block, std::size_t place) const { return std::abs(block[place]) >> scan.low; }

    void PutFirstBand(const Block& block) {
        unsigned run = 0;
        for (std::size_t place = scan.first; place <= scan.last; ++place) {
            const int magnitude = Magnitude(block, place);
            if (magnitude == 0) {
                ++run;
                continue;
            }
            PutEndOfBands();
            PutCoefficient(run, block[place] < 0 ? -magnitude : magnitude);
        }
        if (run != 0)
            CountEndOfBand();
    }

    void PutRefinedBand(const Block& block) {
        std::size_t lastNew = 0;
        for (std::size_t place = scan.first; place <= scan.last; ++place)
            if (Magnitude(block, place) == 1)
                lastNew = place;
        unsigned run = 0;
        std::vector<bool> corrections;
        for (std::size_t place = scan.first; place <= scan.last; ++place) {
            const int magnitude = Magnitude(block, place);
            if (magnitude == 0) {
                ++run;
                continue;
            }
            for (; run > 15 && place <= lastNew; run -= 16) {
                PutEndOfBands();
                PutSymbol(15, 0);
                PutBits(corrections);
            }
            if (magnitude > 1) {
                corrections.push_back((magnitude & 1) != 0);
                continue;
            }
            PutEndOfBands();
            PutSymbol(run, 1);
            writer.Put(block[place] < 0 ? 0 : 1, 1);
            PutBits(corrections);
            run = 0;
        }
        if (run == 0 && corrections.empty())
            return;
        pendingCorrections.insert(pendingCorrections.end(), corrections.begin(), corrections.end());
        CountEndOfBand();
    }

    void PutBits(std::vector<bool>& bits) {
        for (const bool bit : bits)
            writer.Put(bit ? 1 : 0, 1);
        bits.clear();
    }

    void CountEndOfBand() {
        if (++endOfBandRun == 0x7FFF)
            PutEndOfBands();
    }

    void PutEndOfBands() {
        if (endOfBandRun == 0)
            return;
        const unsigned size = JpgBitWriter::SizeOf(static_cast<int>(endOfBandRun)) - 1;
        PutSymbol(size, 0);
        writer.Put(endOfBandRun, size);
        PutBits(pendingCorrections);
        endOfBandRun = 0;
    }

    const Picture& picture;
    bool isProgressive;
    const Scan& scan;
    JpgBitWriter writer;
    std::array<int, 4> predictors{};
    unsigned endOfBandRun = 0;
    std::vector<bool> pendingCorrections;
};

int RandomCoefficient(std::mt19937& random, unsigned precision) {
    // Few are large; the largest has as many bits as fit in, and a quarter of their range.
    const int range = 1 << (1 + random() % precision);
    return static_cast<int>(random() % static_cast<unsigned>(range)) - range / 2;
}

} // namespace

Picture RandomPicture(std::uint16_t width, std::uint16_t height, unsigned precision, unsigned components,
                      unsigned seed) {
    std::mt19937 random(seed);
    Picture picture{width, height, precision, {}};
    picture.components.resize(components);
    for (std::vector<Block>& blocks : picture.components) {
        blocks.resize(picture.BlockCount());
        unsigned density = 0;
        for (Block& block : blocks) {
            if (random() % 4 == 0)
                density = std::array{0u, 0u, 2u, 10u, 80u, 100u}[random() % 6];
            block = {};
            block[0] = RandomCoefficient(random, precision);
            for (std::size_t place = 1; place < 64; ++place)
                if (random() % 100 < density)
                    block[place] = RandomCoefficient(random, precision);
        }
    }
    return picture;
}

std::vector<Scan> WholeScript(std::uint8_t components) {
    std::vector<std::uint8_t> all;
    for (std::uint8_t i = 0; i < components; ++i)
        all.push_back(i);
    std::vector<Scan> scans{{all, 0, 0, 0, 2}};
    for (std::uint8_t i = 0; i < components; ++i)
        scans.push_back({{i}, 1, 5, 0, 3});
    for (std::uint8_t i = 0; i < components; ++i)
        scans.push_back({{i}, 6, 63, 0, 3});
    for (std::uint8_t low = 3; low-- != 0;) {
        const auto high = static_cast<std::uint8_t>(low + 1);
        if (low < 2)
            scans.push_back({all, 0, 0, high, low});
        for (std::uint8_t i = 0; i < components; ++i)
            scans.push_back({{i}, 1, 63, high, low});
    }
    return scans;
}

Bytes Head(const Picture& picture, std::uint8_t marker, std::uint16_t restartInterval) {
    std::vector<FrameComponent> frame;
    for (std::size_t i = 0; i < picture.components.size(); ++i)
        frame.push_back({static_cast<std::uint8_t>(i + 1)});
    Bytes head =
        start + FlatQuantisation() + EightBitCodes(0x00) + EightBitCodes(0x10) +
        FrameHeader(marker, static_cast<std::uint8_t>(picture.precision), picture.width, picture.height, frame);
    return restartInterval != 0 ? head + RestartInterval(restartInterval) : head;
}

Bytes EncodedScan(const Picture& picture, std::uint8_t marker, const Scan& scan, std::uint16_t restartInterval) {
    Bytes identifiers;
    for (const std::uint8_t component : scan.components)
        identifiers.push_back(static_cast<std::uint8_t>(component + 1));
    return ScanHeader(identifiers, scan.first, scan.last, static_cast<std::uint8_t>(scan.high << 4 | scan.low)) +
           ScanEncoder(picture, marker, scan).Encode(restartInterval);
}

Bytes SequentialFile(const Picture& picture) {
    Scan scan{{}, 0, 63};
    for (std::size_t i = 0; i < picture.components.size(); ++i)
        scan.components.push_back(static_cast<std::uint8_t>(i));
    return Head(picture, 0xC0) + EncodedScan(picture, 0xC0, scan) + end;
}

Bytes ProgressiveFile(const Picture& picture, const std::vector<Scan>& scans, std::uint16_t restartInterval) {
    Bytes file = Head(picture, 0xC2, restartInterval);
    for (const Scan& scan : scans)
        file = file + EncodedScan(picture, 0xC2, scan, restartInterval);
    return file + end;
}

} // namespace JpgCoefficients
