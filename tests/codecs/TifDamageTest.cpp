#include "data/Image.h"
#include "tests/codecs/TifLoad.h"
#include "tests/codecs/TifVariants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

using namespace Quorvex;
using Bytes = TifRecipe::Bytes;

namespace {

/// A variant's file, what it shows, and where its tiles lie in both.
class Whole {
public:
    explicit Whole(const TifVariant& variant)
        : file(variant.recipe.Build()), m_variant(variant), m_recipe(variant.recipe), m_offsets(m_recipe.TileOffsets()),
          m_data(m_recipe.TileData()) {
        const TifLoad load(file);
        EXPECT_FALSE(load.decoder.IsIncomplete()) << variant.name;
        image = load.Memory();
        const bool isTiled = m_recipe.tileWidth != 0, isOne = variant.loss == TifVariant::Loss::Image;
        const std::uint32_t tileWidth = isTiled ? m_recipe.tileWidth : m_recipe.width;
        const std::uint32_t tileHeight = isTiled ? m_recipe.tileHeight : m_recipe.rowsPerStrip;
        const std::uint32_t across = (m_recipe.width + tileWidth - 1) / tileWidth;
        for (std::size_t i = 0; i < image.size(); ++i) {
            const std::size_t x = i / PixelBytes() % m_recipe.width, y = i / PixelBytes() / m_recipe.width;
            m_tileOf.push_back(isOne ? 0 : y / tileHeight * across + x / tileWidth);
        }
    }

    const Bytes file;
    Bytes image;

    std::size_t TileCount() const { return m_data.size() - m_variant.tableCount; }
    std::size_t Begin(std::size_t tile) const { return m_offsets[m_variant.tableCount + tile]; }
    std::size_t End(std::size_t tile) const { return Begin(tile) + m_data[m_variant.tableCount + tile].size(); }
    /// The tile of which this byte of the file is; the count where it is of none.
    std::size_t TileAt(std::size_t place) const {
        std::size_t tile = 0;
        while (tile < TileCount() && (place < Begin(tile) || place >= End(tile)))
            ++tile;
        return tile;
    }

    std::size_t PixelBytes() const { return image.size() / m_recipe.width / m_recipe.height; }
    std::uint32_t PlaneCount() const { return m_recipe.isPlanar ? m_recipe.samples : 1; }
    std::size_t TilesOfPlane() const { return TileCount() / PlaneCount(); }

    /// The number of the tile, in its plane, that shows this byte of the image.
    std::size_t TileOf(std::size_t place) const { return m_tileOf[place]; }
    /// Whether the byte comes from the plane; red is the first.
    bool IsOfPlane(std::size_t place, std::size_t plane) const {
        return PlaneCount() == 1 || place % PixelBytes() == 2 - plane;
    }

    /// What is shown where some tiles of some planes are missing.
    Bytes Without(const std::vector<bool>& isMissing) const {
        Bytes shown = image;
        for (std::size_t i = 0; i < shown.size(); ++i) {
            std::uint32_t missing = 0;
            bool isOfMissingPlane = false;
            for (std::uint32_t plane = 0; plane < PlaneCount(); ++plane)
                if (isMissing[plane * TilesOfPlane() + TileOf(i)]) {
                    ++missing;
                    isOfMissingPlane = isOfMissingPlane || IsOfPlane(i, plane);
                }
            if (isOfMissingPlane || missing == PlaneCount())
                shown[i] = 0;
        }
        return shown;
    }

private:
    const TifVariant& m_variant;
    const TifRecipe& m_recipe;
    std::vector<std::uint32_t> m_offsets;
    std::vector<Bytes> m_data;
    std::vector<std::size_t> m_tileOf; ///< Of each byte of the image.
};

const std::set<std::string> knownTexts = {
    "",
    "invalid byte order",
    "unknown tiff version",
    "compression scheme is not supported",
    "Deflate compression scheme is not supported",
    "Thunderscan compression scheme is not supported",
    "SGI Log Luminance RLE compression scheme is not supported",
    "SGI Log 24-bit packed compression scheme is not supported",
    "JPEG compression with BitsPerSample!=8 is not supported",
    "YCbCr with PlanarConfiguartion==2 is not supported",
    "YCbCr with BitsPerSample!=8 is not supported",
    "YCbCr with SamplesPerPixel!=3 is not supported",
    "different values of SampleFormat are not supported",
};

/// Rows as they are up to some pixel, and white from there on.
void ExpectRowsAndWhite(const Bytes& had, const Whole& whole, std::size_t tile, std::size_t cut) {
    bool isCut = false;
    for (std::size_t i = 0; i < had.size(); ++i) {
        if (whole.TileOf(i) != tile)
            continue;
        isCut = isCut || had[i] != whole.image[i];
        if (isCut) {
            ASSERT_EQ(had[i], 255) << "cut at " << cut;
        }
    }
}

/// Of a file that ends inside its data: the tiles before are there, and those behind are 0.
void ExpectTilesUpTo(std::size_t cut, const TifLoad& load, const Whole& whole, TifVariant::Loss loss) {
    const Bytes had = load.Memory();
    ASSERT_EQ(had.size(), whole.image.size());
    std::vector<bool> isMissing(whole.TilesOfPlane() * whole.PlaneCount());
    std::size_t cutTile = whole.TileCount();
    for (std::size_t tile = 0; tile < whole.TileCount(); ++tile) {
        const std::size_t target = loss == TifVariant::Loss::Image ? 0 : tile;
        if (whole.Begin(tile) >= cut)
            isMissing[target] = true;
        else if (whole.End(tile) > cut)
            cutTile = target;
    }
    Bytes wanted = whole.Without(isMissing);
    if (had != wanted && cutTile != whole.TileCount()) {
        // The last bytes of a tile may be of no use; otherwise it is lost as a whole.
        isMissing[cutTile] = true;
        wanted = whole.Without(isMissing);
    }
    if (had != wanted && (loss == TifVariant::Loss::Rows || loss == TifVariant::Loss::Zeros)) {
        if (loss == TifVariant::Loss::Rows)
            ASSERT_NO_FATAL_FAILURE(ExpectRowsAndWhite(had, whole, cutTile, cut));
        else
            ASSERT_LE(whole.End(cutTile) - cut, 2u);
        for (std::size_t i = 0; i < had.size(); ++i)
            wanted[i] = whole.TileOf(i) == cutTile ? had[i] : wanted[i];
    }
    ASSERT_EQ(had, wanted) << "cut at " << cut;
    ASSERT_EQ(load.decoder.IsIncomplete(), had != whole.image) << "cut at " << cut;
}

TEST(TifDamage, CutAtEveryByteAFileFailsOrShowsTheTilesBefore) {
    for (const TifVariant& variant : TifVariants()) {
        SCOPED_TRACE(variant.name);
        const Whole whole(variant);
        std::size_t failures = 0;
        for (std::size_t cut = 0; cut < whole.file.size(); ++cut) {
            const Bytes file(whole.file.begin(), whole.file.begin() + static_cast<std::ptrdiff_t>(cut));
            try {
                const TifLoad load(file, 0, 1, cut % 2 == 0 ? TestStream::Manner::File : TestStream::Manner::Memory);
                ASSERT_NO_FATAL_FAILURE(ExpectTilesUpTo(cut, load, whole, variant.loss));
            } catch (const Exception& failure) {
                ASSERT_STREQ(failure.what(), "") << "cut at " << cut;
                ASSERT_LT(cut, whole.Begin(0)) << "the pixels are no reason to fail";
                ++failures;
            }
        }
        EXPECT_GE(failures, 8u + 2 + 12 * 7) << "a directory is read whole or not at all";
    }
}

TEST(TifDamage, AFileThatEndsBeforeItsDirectoryDoesFails) {
    for (TifVariant variant : TifVariants()) {
        if (variant.tableCount != 0 || variant.loss == TifVariant::Loss::Image)
            continue;
        variant.recipe.isDirectoryFirst = false;
        const Bytes file = variant.recipe.Build();
        const TifLoad load(file);
        EXPECT_FALSE(load.decoder.IsIncomplete()) << variant.name;
        std::size_t directory = 8;
        for (const Bytes& tile : variant.recipe.TileData())
            directory += tile.size();
        for (std::size_t size = 0; size < directory + 2; ++size)
            ASSERT_EQ(TifFailure({file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size)}), "")
                << variant.name << ", " << size;
    }
}

/// Whether the damage to a byte of the data is seen outside of the tile that the byte belongs to.
void ExpectDamageInside(std::size_t tile, const TifLoad& load, const Whole& whole) {
    const Bytes had = load.Memory();
    ASSERT_EQ(had.size(), whole.image.size());
    const std::size_t plane = tile / whole.TilesOfPlane();
    for (std::size_t i = 0; i < had.size(); ++i)
        if (whole.TileOf(i) != tile % whole.TilesOfPlane() || !whole.IsOfPlane(i, plane)) {
            ASSERT_EQ(had[i], whole.image[i]) << "byte " << i << " of the image";
        }
}

constexpr std::size_t changes = 2000;

/// A damaged directory makes another image, or none.
void ExpectImageOrKnownText(const Bytes& file) {
    try {
        ET::Img::TIFDecoder decoder(MakeShared<TestStream>(file, TestStream::Manner::Memory));
        const ET::Img::ImageInfo info = decoder.GetInfo(0);
        // The memory of a test is not for images of any size.
        if (std::uint64_t(info.Width) * info.Height > 1 << 12)
            return;
        const auto image = Data::CreateImage(info.ColorType, info.Width, info.Height);
        ASSERT_EQ(decoder.Load(image, 0), image);
    } catch (const Exception& failure) {
        ASSERT_TRUE(knownTexts.contains(failure.what())) << failure.what();
    }
}

TEST(TifDamage, AByteThatIsChangedHarmsItsTileAlone) {
    std::mt19937 random(1);
    for (const TifVariant& variant : TifVariants()) {
        SCOPED_TRACE(variant.name);
        const Whole whole(variant);
        const bool hasOwnTiles = variant.loss != TifVariant::Loss::Image;
        for (std::size_t i = 0; i < changes; ++i) {
            Bytes file = whole.file;
            const std::size_t place = i % file.size();
            file[place] ^= static_cast<std::uint8_t>(1 + random() % 255);
            const std::size_t tile = whole.TileAt(place);
            if (tile == whole.TileCount() || !hasOwnTiles)
                ASSERT_NO_FATAL_FAILURE(ExpectImageOrKnownText(file)) << "byte " << place;
            else
                ASSERT_NO_FATAL_FAILURE(ExpectDamageInside(tile, TifLoad(file), whole)) << "byte " << place;
        }
    }
}

} // namespace
