#include "tests/program/ProgramFixture.h"

#include <algorithm>
#include <cstring>

namespace Quorvex::App::Test {

namespace {

void AppendLittleEndian(std::string& bytes, std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<char>(value >> (8 * i)));
}

} // namespace

Pixel BitmapPixel(std::int32_t x, std::int32_t y) {
    return {static_cast<std::uint8_t>(x), static_cast<std::uint8_t>(y), static_cast<std::uint8_t>(x * 7 + y * 13), 255};
}

std::string MakeBitmap(std::int32_t width, std::int32_t height) {
    constexpr std::uint32_t headerBytes = 54;
    const auto rowBytes = static_cast<std::uint32_t>((width * 3 + 3) / 4 * 4);
    std::string bytes = "BM";
    AppendLittleEndian(bytes, headerBytes + rowBytes * static_cast<std::uint32_t>(height), 4);
    AppendLittleEndian(bytes, 0, 4);
    AppendLittleEndian(bytes, headerBytes, 4);
    AppendLittleEndian(bytes, 40, 4);
    AppendLittleEndian(bytes, static_cast<std::uint32_t>(width), 4);
    AppendLittleEndian(bytes, static_cast<std::uint32_t>(height), 4);
    AppendLittleEndian(bytes, 1, 2);
    AppendLittleEndian(bytes, 24, 2);
    bytes.append(24, '\0');
    for (std::int32_t y = height - 1; y >= 0; --y) {
        for (std::int32_t x = 0; x < width; ++x) {
            const Pixel pixel = BitmapPixel(x, y);
            for (const std::uint8_t channel : {pixel.blue, pixel.green, pixel.red})
                bytes.push_back(static_cast<char>(channel));
        }
        bytes.append(rowBytes - static_cast<std::uint32_t>(width) * 3, '\0');
    }
    return bytes;
}

ProgramTest::ProgramTest() : frame(new VarnoliteMainFrame(system)) {
    // Pixels as squares of one colour are what a test can foretell; smooth enlargement is tested where it is made.
    Application().GetSettings().InterpolationG100.Set(Platform::Video::EnumResamplingMode::Nearest);
    frame->Open();
    Settle();
}

ProgramTest::~ProgramTest() {
    frame.reset();
}

void ProgramTest::Settle() {
    for (;;) {
        system.RunUntilIdle([this] { frame->HandleGUIMessages(); });
        if (!Application().GetImageManager().IsBusy())
            return;
        system.DispatchNextMessage();
        frame->HandleGUIMessages();
    }
}

void ProgramTest::Open(const String& path) {
    Application().OpenFileOrExplain(path);
    Settle();
}

String ProgramTest::Write(const std::string& name, const std::string& bytes) {
    folder.Write(name, bytes);
    return folder.PathOf(name);
}

void ProgramTest::Resize(std::int32_t width, std::int32_t height) {
    user.Place(Window(), {0, 0, width, height});
    Settle();
}

void ProgramTest::TurnWheel(int notches) {
    const GUI::Rect rect = Window().GetClientRect();
    user.MoveMouse(rect.left + rect.Width() / 2, rect.top + rect.Height() / 2);
    for (int i = 0; i < std::abs(notches); ++i)
        user.TurnWheel(notches > 0 ? 120 : -120);
    Settle();
}

void ProgramTest::ZoomTo100Percent() {
    TurnWheel(-120);
    TurnWheel(32);
}

Pixel ProgramTest::ShownPixel(std::int32_t x, std::int32_t y) {
    const GUI::ShownPicture& picture = Window().GetPicture();
    const std::size_t offset = (static_cast<std::size_t>(y) * picture.width + static_cast<std::size_t>(x)) * 4;
    return {picture.bits.at(offset), picture.bits.at(offset + 1), picture.bits.at(offset + 2),
            picture.bits.at(offset + 3)};
}

void ProgramTest::ExpectMagnified(std::int32_t width, std::int32_t height, std::int32_t factor) {
    const auto [scrollX, scrollY] = View().ClampScroll(View().GetTransform().scrollX, View().GetTransform().scrollY);
    const auto rect = View().ComputeImageRect(scrollX, scrollY);
    ASSERT_EQ(rect.x1 - rect.x0, width * factor);
    ASSERT_EQ(rect.y1 - rect.y0, height * factor);
    const GUI::ShownPicture& picture = Window().GetPicture();
    std::vector<Pixel> row(picture.width);
    for (std::int32_t y = 0; y < static_cast<std::int32_t>(picture.height); ++y) {
        std::fill(row.begin(), row.end(), Pixel{138, 136, 136, 255});
        const std::int32_t end = std::min(rect.x1, static_cast<std::int32_t>(picture.width));
        for (std::int32_t x = std::max(rect.x0, 0); x < end && y >= rect.y0 && y < rect.y1; ++x)
            row[static_cast<std::size_t>(x)] = BitmapPixel((x - rect.x0) / factor, (y - rect.y0) / factor);
        const auto* shown = picture.bits.data() + static_cast<std::size_t>(y) * picture.width * 4;
        if (std::memcmp(shown, row.data(), row.size() * sizeof(Pixel)) == 0)
            continue;
        for (std::int32_t x = 0; x < static_cast<std::int32_t>(picture.width); ++x)
            ASSERT_TRUE(ShownPixel(x, y) == row[static_cast<std::size_t>(x)]) << "at " << x << "," << y;
    }
}

} // namespace Quorvex::App::Test
