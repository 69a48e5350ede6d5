#include "tests/codecs/TifLoad.h"

#include "data/Image.h"

#include <cstring>

TifLoad::TifLoad(const Bytes& file, std::uint32_t index, std::uint32_t workerCount, TestStream::Manner manner)
    : decoder(Quorvex::MakeShared<TestStream>(file, manner)) {
    decoder.SetWorkerCount(workerCount);
    info = decoder.GetInfo(index);
    image = Quorvex::Data::CreateImage(info.ColorType, info.Width, info.Height);
    // What the memory held before must not be seen.
    Quorvex::Data::Dispatch(info.ColorType, "", [&](auto tag) {
        const auto lock = decltype(tag)::Traits::LockIn(*image, Quorvex::Data::LockMode::ReadWrite);
        std::memset(static_cast<void*>(lock.Data), 0x5A,
                    std::size_t(lock.AllocatedWidth) * lock.AllocatedHeight * sizeof(*lock.Data));
    });
    image = decoder.Load(image, index);
}

TifLoad::Bytes TifLoad::Memory() const {
    Bytes bytes;
    Quorvex::Data::Dispatch(image->ColorType, "", [&](auto tag) {
        const auto lock = decltype(tag)::Traits::LockIn(*image, Quorvex::Data::LockMode::ReadWrite);
        for (std::uint32_t y = 0; y < lock.Height; ++y) {
            const auto* const row = reinterpret_cast<const std::uint8_t*>(lock.Row(y));
            bytes.insert(bytes.end(), row, row + lock.Width * sizeof(*lock.Data));
        }
    });
    return bytes;
}

std::string TifFailure(const TifLoad::Bytes& file) {
    try {
        const TifLoad load(file);
    } catch (const std::exception& failure) {
        return failure.what();
    }
    return "no exception";
}
