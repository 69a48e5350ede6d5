#include "tests/codecs/TifRecipe.h"

#include <algorithm>
#include <random>

namespace {

using Bytes = TifRecipe::Bytes;
using Entry = TifRecipe::Entry;

constexpr std::uint32_t headBytes = 8;

std::uint64_t Mask(std::uint32_t bits) {
    return bits == 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << bits) - 1;
}

/// Each stretch of up to 128 bytes as a run where its bytes are equal, and as it is otherwise.
Bytes PackBits(const Bytes& plain) {
    Bytes packed;
    for (std::size_t i = 0; i < plain.size();) {
        std::size_t run = 1;
        while (run < 128 && i + run < plain.size() && plain[i + run] == plain[i])
            ++run;
        if (run >= 2) {
            packed.push_back(static_cast<std::uint8_t>(257 - run));
            packed.push_back(plain[i]);
            i += run;
            continue;
        }
        std::size_t length = 1;
        while (length < 128 && i + length < plain.size() && plain[i + length] != plain[i + length - 1])
            ++length;
        packed.push_back(static_cast<std::uint8_t>(length - 1));
        packed.insert(packed.end(), plain.begin() + static_cast<std::ptrdiff_t>(i),
                      plain.begin() + static_cast<std::ptrdiff_t>(i + length));
        i += length;
    }
    return packed;
}

std::uint8_t Reversed(std::uint8_t byte) {
    unsigned reversed = 0;
    for (unsigned bit = 0; bit < 8; ++bit)
        reversed |= (byte >> bit & 1u) << (7 - bit);
    return static_cast<std::uint8_t>(reversed);
}

/// The bytes of the floats of a row, the highest of all of them first, as differences.
Bytes FloatDifferences(const std::vector<std::uint64_t>& row, std::uint32_t bits, std::size_t stride) {
    Bytes bytes;
    for (std::uint32_t shift = bits; shift != 0; shift -= 8)
        for (const std::uint64_t value : row)
            bytes.push_back(static_cast<std::uint8_t>(value >> (shift - 8)));
    for (std::size_t i = bytes.size(); i-- > stride;)
        bytes[i] = static_cast<std::uint8_t>(bytes[i] - bytes[i - stride]);
    return bytes;
}

unsigned BytesOfType(std::uint16_t type) {
    return type == 3 ? 2 : type == 4 || type == 5 || type == 13 ? 4 : 1;
}

/// A directory at an even place, without a link, and behind it the values that its entries have no room for.
Bytes DirectoryBytes(TifRecipe::ByteOrder order, std::size_t place, const std::map<std::uint16_t, Entry>& entries) {
    Bytes bytes, behind;
    PutNumber(bytes, order, entries.size(), 2);
    const std::size_t placeBehind = place + 2 + 12 * entries.size() + 4;
    for (const auto& [tag, entry] : entries) {
        PutNumber(bytes, order, tag, 2);
        PutNumber(bytes, order, entry.type, 2);
        PutNumber(bytes, order, entry.values.size() / (entry.type == 5 ? 2 : 1), 4);
        Bytes values;
        for (const std::uint32_t value : entry.values)
            PutNumber(values, order, value, BytesOfType(entry.type));
        if (values.size() > 4) {
            PutNumber(bytes, order, placeBehind + behind.size(), 4);
            behind.insert(behind.end(), values.begin(), values.end());
            behind.resize((behind.size() + 1) / 2 * 2);
        } else {
            values.resize(4);
            bytes.insert(bytes.end(), values.begin(), values.end());
        }
    }
    PutNumber(bytes, order, 0, 4);
    bytes.insert(bytes.end(), behind.begin(), behind.end());
    return bytes;
}

} // namespace

void PutNumber(Bytes& bytes, TifRecipe::ByteOrder order, std::uint64_t number, unsigned byteCount) {
    for (unsigned i = 0; i < byteCount; ++i)
        bytes.push_back(
            static_cast<std::uint8_t>(number >> 8 * (order == TifRecipe::ByteOrder::Big ? byteCount - 1 - i : i)));
}

TifRecipe& TifRecipe::Fill(std::uint32_t seed) {
    std::mt19937_64 random(seed);
    values.resize(std::size_t(width) * height * samples);
    for (std::uint64_t& value : values)
        value = random() & Mask(bits);
    values.front() = 0;
    values.back() = Mask(bits);
    return *this;
}

std::uint32_t TifRecipe::TileRows() const {
    return tileHeight != 0 ? tileHeight : rowsPerStrip != 0 ? std::min(rowsPerStrip, height) : height;
}

Bytes TifRecipe::PackedRow(std::vector<std::uint64_t> row) const {
    const std::size_t stride = isPlanar ? 1 : samples;
    if (predictor == 3)
        return FloatDifferences(row, bits, stride);
    if (predictor == 2)
        for (std::size_t i = row.size(); i-- > stride;)
            row[i] = (row[i] - row[i - stride]) & Mask(bits);
    Bytes bytes;
    if (bits % 8 == 0) {
        for (const std::uint64_t value : row)
            PutNumber(bytes, order, value, bits / 8);
        return bytes;
    }
    std::size_t place = 0;
    bytes.resize((row.size() * bits + 7) / 8);
    for (const std::uint64_t value : row)
        for (std::uint32_t bit = bits; bit-- != 0; ++place)
            bytes[place / 8] = static_cast<std::uint8_t>(bytes[place / 8] | (value >> bit & 1) << (7 - place % 8));
    return bytes;
}

// Whole tiles hang over the image; strips end with it.
Bytes TifRecipe::PackedTile(std::uint32_t left, std::uint32_t top, std::uint32_t plane) const {
    Bytes bytes;
    const std::uint32_t rows = tileHeight != 0 ? tileHeight : std::min(TileRows(), height - top);
    for (std::uint32_t y = top; y < top + rows; ++y) {
        std::vector<std::uint64_t> row;
        for (std::uint32_t x = left; x < left + TileColumns(); ++x)
            for (std::uint32_t s = isPlanar ? plane : 0; s < (isPlanar ? plane + 1 : samples); ++s)
                row.push_back(x < width && y < height ? At(x, y, s) : Mask(bits) / 3);
        const Bytes packed = PackedRow(row);
        bytes.insert(bytes.end(), packed.begin(), packed.end());
    }
    return bytes;
}

std::vector<Bytes> TifRecipe::TileData() const {
    if (!tiles.empty())
        return tiles;
    std::vector<Bytes> made;
    for (std::uint32_t plane = 0; plane < (isPlanar ? samples : 1); ++plane)
        for (std::uint32_t y = 0; y < height; y += TileRows())
            for (std::uint32_t x = 0; x < width; x += TileColumns()) {
                Bytes tile = PackedTile(x, y, plane);
                if (compression == 32773)
                    tile = PackBits(tile);
                if (isFillReversed)
                    std::transform(tile.begin(), tile.end(), tile.begin(), Reversed);
                made.push_back(tile);
            }
    return made;
}

std::map<std::uint16_t, Entry> TifRecipe::Tags(const std::vector<Bytes>& data, std::uint32_t firstOffset) const {
    Entry offsets{4}, counts{4};
    for (const Bytes& tile : data) {
        offsets.values.push_back(firstOffset);
        counts.values.push_back(static_cast<std::uint32_t>(tile.size()));
        firstOffset += static_cast<std::uint32_t>(tile.size());
    }
    std::map<std::uint16_t, Entry> made{{256, {4, {width}}},
                                        {257, {4, {height}}},
                                        {258, {3, std::vector<std::uint32_t>(samples, bits)}},
                                        {259, {3, {compression}}},
                                        {262, {3, {photometric}}},
                                        {277, {3, {samples}}},
                                        {284, {3, {isPlanar ? 2u : 1u}}}};
    if (format != 1)
        made[339] = {3, std::vector<std::uint32_t>(samples, format)};
    if (predictor != 1)
        made[317] = {3, {predictor}};
    if (isFillReversed)
        made[266] = {3, {2}};
    if (tileWidth != 0) {
        made[322] = {4, {tileWidth}};
        made[323] = {4, {tileHeight}};
    } else {
        made[278] = {4, {TileRows()}};
    }
    made[tileWidth != 0 ? 324 : 273] = offsets;
    made[tileWidth != 0 ? 325 : 279] = counts;
    for (const auto& [tag, entry] : tags)
        made[tag] = entry;
    for (const std::uint16_t tag : without)
        made.erase(tag);
    return made;
}

std::vector<std::uint32_t> TifRecipe::TileOffsets() const {
    const std::vector<Bytes> data = TileData();
    const auto directoryBytes = static_cast<std::uint32_t>(DirectoryBytes(order, 0, Tags(data, 0)).size());
    std::vector<std::uint32_t> offsets{headBytes + (isDirectoryFirst ? directoryBytes : 0)};
    for (const Bytes& tile : data)
        offsets.push_back(offsets.back() + static_cast<std::uint32_t>(tile.size()));
    offsets.pop_back();
    return offsets;
}

Bytes TifRecipe::Build() const {
    return Build({*this});
}

Bytes TifRecipe::Build(const std::vector<TifRecipe>& images) {
    const ByteOrder order = images.front().order;
    Bytes file(2, order == ByteOrder::Big ? 'M' : 'I');
    PutNumber(file, order, 42, 2);
    std::size_t linkPlace = file.size();
    PutNumber(file, order, 0, 4);
    for (const TifRecipe& image : images) {
        const std::vector<Bytes> data = image.TileData();
        const auto putData = [&] {
            for (const Bytes& tile : data)
                file.insert(file.end(), tile.begin(), tile.end());
            file.resize((file.size() + 1) / 2 * 2);
        };
        auto dataPlace = static_cast<std::uint32_t>(file.size());
        if (image.isDirectoryFirst)
            dataPlace += static_cast<std::uint32_t>(DirectoryBytes(order, 0, image.Tags(data, 0)).size());
        else
            putData();
        Bytes link;
        PutNumber(link, order, file.size(), 4);
        std::copy(link.begin(), link.end(), file.begin() + static_cast<std::ptrdiff_t>(linkPlace));
        const std::map<std::uint16_t, Entry> entries = image.Tags(data, dataPlace);
        linkPlace = file.size() + 2 + 12 * entries.size();
        const Bytes directory = DirectoryBytes(order, file.size(), entries);
        file.insert(file.end(), directory.begin(), directory.end());
        if (image.isDirectoryFirst)
            putData();
    }
    return file;
}
