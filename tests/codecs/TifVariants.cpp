#include "tests/codecs/TifVariants.h"

#include "tests/codecs/CcittWriter.h"
#include "tests/codecs/JpgSegments.h"
#include "tests/codecs/LzwWriter.h"

namespace {

using Bytes = TifRecipe::Bytes;
using Variants = std::vector<TifVariant>;
using Loss = TifVariant::Loss;

TifRecipe Base(std::uint32_t bits = 8, std::uint32_t samples = 1) {
    TifRecipe recipe;
    recipe.width = 11;
    recipe.height = 9;
    recipe.bits = bits;
    recipe.samples = samples;
    recipe.photometric = samples >= 3 ? 2 : 1;
    recipe.rowsPerStrip = 4;
    recipe.isDirectoryFirst = true;
    return recipe.Fill();
}

TifRecipe Planar() {
    TifRecipe recipe = Base(8, 3);
    recipe.isPlanar = true;
    return recipe;
}

TifRecipe Tiled(TifRecipe recipe) {
    recipe.tileWidth = recipe.tileHeight = 8;
    return recipe;
}

TifRecipe WithPredictor(TifRecipe recipe, std::uint32_t predictor) {
    recipe.predictor = predictor;
    return recipe;
}

TifRecipe WithPhotometric(TifRecipe recipe, std::uint32_t photometric) {
    recipe.photometric = photometric;
    return recipe;
}

TifRecipe WithTag(TifRecipe recipe, std::uint16_t tag, std::vector<std::uint32_t> values) {
    recipe.tags[tag] = {3, std::move(values)};
    return recipe;
}

TifRecipe Floats(std::uint32_t bits) {
    TifRecipe recipe = Base(bits);
    recipe.format = 3;
    return WithPredictor(recipe, 3);
}

void AddStored(Variants& variants) {
    variants.push_back({"grey", Base()});
    variants.push_back({"bits, white is 0", WithPhotometric(Base(1), 0)});
    variants.push_back({"colours of 12 bits", Base(12, 3)});
    variants.push_back({"premultiplied alpha", WithTag(Base(16, 4), 338, {1})});
    variants.push_back({"planes", Planar()});
    variants.push_back({"planes in tiles", Tiled(Planar())});
    variants.push_back({"tiles", Tiled(Base(8, 3))});
    variants.push_back({"differences of floats", Floats(32)});
    variants.push_back({"differences", WithPredictor(Base(16, 3), 2)});
    variants.push_back({"inks", WithPhotometric(Base(8, 4), 5)});
    variants.push_back({"L*a*b*", WithPhotometric(Base(8, 3), 8)});
    variants.push_back({"YCbCr", WithTag(WithPhotometric(Base(8, 3), 6), 530, {1, 1})});
    // Neighbouring entries differ, and none is black.
    std::vector<std::uint32_t> map;
    for (std::uint32_t i = 1; i <= 48; ++i)
        map.push_back(i * 1283);
    variants.push_back({"palette", WithTag(WithPhotometric(Base(4), 3), 320, map)});
    TifRecipe big = Base(64);
    big.order = TifRecipe::ByteOrder::Big;
    variants.push_back({"big-endian words of 64 bits", big});
    TifRecipe reversed = Base();
    reversed.isFillReversed = true;
    variants.push_back({"reversed bits", reversed});
}

/// For schemes that do not care what the bytes are.
std::vector<std::pair<std::string, TifRecipe>> Arrangements() {
    return {{"strips", Base()},
            {"planes", Planar()},
            {"tiles", Tiled(Base(8, 3))},
            {"differences in tiles", Tiled(WithPredictor(Base(16, 3), 2))}};
}

void AddPackBits(Variants& variants) {
    for (auto& [name, recipe] : Arrangements()) {
        recipe.compression = 32773;
        variants.push_back({"PackBits, " + name, recipe});
    }
}

void AddLzw(Variants& variants) {
    for (const bool isOld : {false, true})
        for (auto& [name, recipe] : Arrangements()) {
            LzwStyle style;
            style.format = {.isLowBitFirst = isOld, .earlyChange = isOld ? 0u : 1u};
            for (const Bytes& tile : recipe.TileData())
                recipe.tiles.push_back(WriteLzw(tile, 8, style));
            recipe.compression = 5;
            variants.push_back({(isOld ? "old LZW, " : "LZW, ") + name, recipe});
        }
}

/// A pattern of runs that is not the same in any two rows; none of them ends white, or begins so.
BilevelRows FaxRows(std::uint32_t left, std::uint32_t top, std::uint32_t width, std::uint32_t height) {
    BilevelRows rows;
    for (std::uint32_t y = top; y < top + height; ++y) {
        std::vector<std::uint8_t> row;
        for (std::uint32_t x = left; x < left + width; ++x)
            row.push_back(x == left || x + 1 == left + width || (x * x / 7 + y * 3) % 11 < 5 ? 1 : 0);
        rows.push_back(row);
    }
    return rows;
}

TifRecipe Fax(std::uint32_t compression, std::uint32_t t4Options, const CcittStyle& style, bool isTiled) {
    TifRecipe recipe;
    // Whole tiles: what hangs over at the end of a row would be missed without being seen.
    recipe.width = isTiled ? 32 : 37;
    recipe.height = 14;
    recipe.bits = 1;
    recipe.photometric = 0;
    recipe.compression = compression;
    recipe.isDirectoryFirst = true;
    recipe.rowsPerStrip = 5;
    if (isTiled)
        recipe.tileWidth = recipe.tileHeight = 16;
    if (style.isReversed)
        recipe.tags[266] = {3, {2}};
    if (t4Options != 0)
        recipe.tags[292] = {4, {t4Options}};
    const std::uint32_t columns = isTiled ? 16 : recipe.width, rows = isTiled ? 16 : recipe.rowsPerStrip;
    for (std::uint32_t y = 0; y < recipe.height; y += rows)
        for (std::uint32_t x = 0; x < recipe.width; x += columns)
            recipe.tiles.push_back(
                WriteCcitt(FaxRows(x, y, columns, isTiled ? rows : std::min(rows, recipe.height - y)), style));
    return recipe;
}

void AddFax(Variants& variants) {
    for (const bool isTiled : {false, true}) {
        // The fill order is that of all bytes: it needs no variants of its own.
        const auto add = [&](const std::string& name, std::uint32_t compression, std::uint32_t options,
                             CcittStyle style) {
            style.isReversed = isTiled;
            variants.push_back(
                {name + (isTiled ? " in reversed tiles" : ""), Fax(compression, options, style, isTiled), Loss::Rows});
        };
        add("modified Huffman", 2, 0, {.isByteAligned = true});
        add("Group 3", 3, 0, {});
        add("Group 3, ends of line", 3, 4, {.hasEndsOfLine = true, .isByteAligned = true});
        add("Group 3, two dimensions", 3, 1, {.hasEndsOfLine = true, .relativeRows = 2, .isTwoDimensional = true});
    }
}

using namespace JpgSegments;

const Bytes quantisation = FlatQuantisation(), dcCodes = FourBitCodes(0x00), acCodes = FourBitCodes(0x10);

/// The codes of blocks of a tile, none of which is black, and none like the one before.
Bytes Blocks(std::size_t count, std::size_t tile) {
    std::vector<int> differences;
    for (std::size_t i = 0; i < count; ++i)
        differences.push_back(static_cast<int>((i * 5 + tile * 3) % 17 * 16) - 100);
    return FlatBlocks(differences);
}

std::vector<FrameComponent> Components(std::size_t count, std::uint8_t factors) {
    std::vector<FrameComponent> components;
    for (std::size_t i = 1; i <= count; ++i)
        components.push_back({static_cast<std::uint8_t>(i), i == 1 ? factors : std::uint8_t{0x11}});
    return components;
}

Bytes Scan(std::size_t components) {
    return components == 1 ? ScanHeader({1}) : ScanHeader({1, 2, 3});
}

Bytes FrameAndScan(std::uint16_t width, std::uint16_t height, std::size_t components, std::uint8_t factors) {
    return FrameHeader(0xC0, 8, width, height, Components(components, factors)) + Scan(components);
}

TifRecipe JpegRecipe(std::uint32_t compression, std::uint32_t samples) {
    TifRecipe recipe = Base(8, samples);
    recipe.width = recipe.height = 16;
    recipe.rowsPerStrip = 8;
    recipe.compression = compression;
    return recipe;
}

void AddJpeg(Variants& variants) {
    const Bytes tables = start + quantisation + dcCodes + acCodes;
    TifRecipe strips = JpegRecipe(7, 1);
    for (const std::size_t i : {0u, 1u})
        strips.tiles.push_back(tables + FrameAndScan(16, 8, 1, 0x11) + Blocks(2, i) + end);
    variants.push_back({"JPEG", strips});
    TifRecipe tiles = JpegRecipe(7, 3);
    tiles.tileWidth = tiles.tileHeight = 8;
    for (const std::size_t i : {0u, 1u, 2u, 3u})
        tiles.tiles.push_back(start + FrameAndScan(8, 8, 3, 0x11) + Blocks(3, i) + end);
    const Bytes apart = tables + end;
    tiles.tags[347] = {7, std::vector<std::uint32_t>(apart.begin(), apart.end())};
    variants.push_back({"JPEG, tiles with tables apart", tiles});
    TifRecipe planes = JpegRecipe(7, 3);
    planes.isPlanar = true;
    for (const std::size_t i : {0u, 1u, 2u, 3u, 4u, 5u})
        planes.tiles.push_back(tables + FrameAndScan(16, 8, 1, 0x11) + Blocks(2, i) + end);
    variants.push_back({"JPEG, planes", planes});
    TifRecipe shared = JpegRecipe(7, 3);
    shared.height = 32;
    shared.rowsPerStrip = 16;
    shared.photometric = 6;
    shared.tags[530] = {3, {2, 2}};
    for (const std::size_t i : {0u, 1u})
        shared.tiles.push_back(tables + FrameAndScan(16, 16, 3, 0x22) + Blocks(6, i) + end);
    variants.push_back({"JPEG, shared chrominance", shared});
}

/// Tags of old JPEG that hold the places of the recipe's tiles.
void PlaceStrips(TifRecipe& recipe, std::size_t first) {
    const std::vector<Bytes> data = recipe.TileData();
    for (const bool isPlaced : {false, true}) {
        const std::vector<std::uint32_t> offsets =
            isPlaced ? recipe.TileOffsets() : std::vector<std::uint32_t>(data.size());
        std::vector<std::uint32_t> sizes;
        for (std::size_t i = first; i < data.size(); ++i)
            sizes.push_back(static_cast<std::uint32_t>(data[i].size()));
        recipe.tags[273] = {4, {offsets.begin() + static_cast<std::ptrdiff_t>(first), offsets.end()}};
        recipe.tags[279] = {4, sizes};
        if (first == 3)
            for (const std::uint16_t i : {std::uint16_t{0}, std::uint16_t{1}, std::uint16_t{2}})
                recipe.tags[static_cast<std::uint16_t>(519 + i)] = {4, {offsets[i]}};
        else
            recipe.tags[513] = {4, {offsets[0]}};
    }
}

void AddOldJpeg(Variants& variants) {
    const Bytes headers = start + quantisation + dcCodes + acCodes;
    TifRecipe interchange = JpegRecipe(6, 1);
    interchange.rowsPerStrip = 16;
    interchange.tiles = {headers + FrameAndScan(16, 16, 1, 0x11) + Blocks(4, 0) + end};
    PlaceStrips(interchange, 0);
    variants.push_back({"old JPEG, a whole file", interchange, Loss::Image});
    TifRecipe joined = JpegRecipe(6, 1);
    joined.tiles = {headers + FrameHeader(0xC0, 8, 16, 16, Components(1, 0x11)), Blocks(2, 0), Blocks(2, 1)};
    PlaceStrips(joined, 1);
    joined.tags[514] = {4, {static_cast<std::uint32_t>(joined.tiles[0].size())}};
    PlaceStrips(joined, 1);
    variants.push_back({"old JPEG, headers and strips", joined, Loss::Image, 1});
    TifRecipe tables = JpegRecipe(6, 1);
    // Without their markers, lengths and names.
    for (const Bytes& table : {quantisation, dcCodes, acCodes})
        tables.tiles.push_back({table.begin() + 5, table.end()});
    tables.tiles.insert(tables.tiles.end(), {Blocks(2, 0), Blocks(2, 1)});
    PlaceStrips(tables, 3);
    variants.push_back({"old JPEG, tables by tags", tables, Loss::Zeros, 3});
    TifRecipe files = JpegRecipe(6, 1);
    for (const std::size_t i : {0u, 1u})
        files.tiles.push_back(headers + FrameAndScan(16, 8, 1, 0x11) + Blocks(2, i) + end);
    variants.push_back({"old JPEG, strips that are files", files});
}

} // namespace

std::vector<TifVariant> TifVariants() {
    Variants variants;
    AddStored(variants);
    AddPackBits(variants);
    AddLzw(variants);
    AddFax(variants);
    AddJpeg(variants);
    AddOldJpeg(variants);
    return variants;
}
