#include "gui/window/x11/ProgramIcon.h"

namespace Quorvex::GUI {

namespace {

/// The file that is the program's icon on the home platform too; the build writes its bytes as numbers.
constexpr std::uint8_t iconFile[]{
#include <ProgramIcon.inc>
};

// Window managers show it in title bars and lists; larger pictures would only make each window slower to open.
constexpr std::uint32_t largestSideShown = 48;

/// Little-endian numbers of a file; beyond its end all bytes are 0.
class IconBytes {
public:
    explicit IconBytes(std::span<const std::uint8_t> file) : m_file(file) {}

    bool Holds(std::uint64_t offset, std::uint64_t size) const {
        return offset <= m_file.size() && size <= m_file.size() - offset;
    }
    std::uint32_t Byte(std::uint64_t offset) const { return offset < m_file.size() ? m_file[offset] : 0; }
    std::uint32_t Word(std::uint64_t offset) const { return Byte(offset) | Byte(offset + 1) << 8; }
    std::uint32_t Long(std::uint64_t offset) const { return Word(offset) | Word(offset + 2) << 16; }

private:
    std::span<const std::uint8_t> m_file;
};

// An icon file is a directory and pictures. The directory has a head of 6 bytes, the count of pictures at 4, and 16
// bytes for each picture, with its place in the file at 12. A bitmap begins with a header of 40 bytes with the width at
// 4, the height of picture and mask together at 8 and the bits of a pixel at 14. Its rows follow from the bottom up.
constexpr std::uint64_t directoryHead = 6;
constexpr std::uint64_t directoryEntry = 16;
constexpr std::uint32_t bitmapHeader = 40;

void AppendBitmap(std::vector<unsigned long>& property, const IconBytes& bytes, std::uint64_t start,
                  std::uint32_t largestSide) {
    const std::uint32_t width = bytes.Long(start + 4);
    const std::uint32_t height = bytes.Long(start + 8) / 2;
    const bool isBitmap = bytes.Long(start) == bitmapHeader && bytes.Word(start + 14) == 32;
    if (!isBitmap || width == 0 || height == 0 || width > largestSide || height > largestSide ||
        !bytes.Holds(start + bitmapHeader, std::uint64_t{width} * height * 4))
        return;
    property.push_back(width);
    property.push_back(height);
    for (std::uint32_t y = height; y-- > 0;)
        for (std::uint32_t x = 0; x < width; ++x)
            property.push_back(bytes.Long(start + bitmapHeader + (std::uint64_t{y} * width + x) * 4));
}

} // namespace

std::vector<unsigned long> IconAsProperty(std::span<const std::uint8_t> file, std::uint32_t largestSide) {
    const IconBytes bytes(file);
    const std::uint32_t count = bytes.Word(4);
    std::vector<unsigned long> property;
    for (std::uint32_t i = 0; i < count && bytes.Holds(directoryHead + i * directoryEntry, directoryEntry); ++i)
        AppendBitmap(property, bytes, bytes.Long(directoryHead + i * directoryEntry + 12), largestSide);
    return property;
}

std::vector<unsigned long> GetProgramIcon() {
    return IconAsProperty(iconFile, largestSideShown);
}

} // namespace Quorvex::GUI
