#include "data/FileStream.h"
#include "data/MemoryStream.h"
#include "data/StreamBuffer.h"
#include "foundation/Exception.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

// The input is a recipe in text: letters, each with an optional decimal number behind it; everything else is blank.
//   m N  a stream over N bytes of memory        f N  a stream over a file of N bytes
//   r N  read N bytes                           s N  seek to N
//   l N  lock N bytes and refill the buffer     n    a new buffer
//   b    next byte of the buffer                t N  take N bytes of the buffer
//   k N  seek in the buffer                     e    the rest of the buffer as a stream, read whole
//   c    go on with a clone (of a file)         x    close (a file)
// Every step is done on the program's stream and on a plain vector of bytes; they must agree.

using namespace Quorvex;

namespace {

constexpr std::uint32_t mostBytes = 5000;
constexpr std::uint8_t guard = 0xEE;

void Check(bool isRight, const char* what) {
    if (isRight)
        return;
    std::fprintf(stderr, "StreamFuzzer: %s\n", what);
    std::abort();
}

std::vector<std::uint8_t> Content(std::uint32_t byteCount) {
    std::vector<std::uint8_t> bytes(byteCount);
    for (std::uint32_t i = 0; i < byteCount; ++i)
        bytes[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
    return bytes;
}

/// A file with the content of the size last asked for; one for the whole process, gone at its end.
class ContentFile {
public:
    ContentFile()
        : m_path(std::filesystem::temp_directory_path() /
                 ("varnolite-stream-fuzzer-" + std::to_string(std::random_device()()))) {}
    ContentFile(const ContentFile&) = delete;
    ContentFile& operator=(const ContentFile&) = delete;
    ~ContentFile() {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }

    String Of(std::uint32_t byteCount) {
        if (m_byteCount != byteCount) {
            const std::vector<std::uint8_t> bytes = Content(byteCount);
            std::ofstream file(m_path, std::ios::binary);
            file.write(reinterpret_cast<const char*>(bytes.data()), byteCount);
            m_byteCount = byteCount;
        }
        return String(m_path.u16string().c_str());
    }

private:
    std::filesystem::path m_path;
    std::optional<std::uint32_t> m_byteCount;
};

ContentFile& TheFile() {
    static ContentFile file;
    return file;
}

/// True where the action raises the program's exception.
template <class Action>
bool Raises(const Action& action) {
    try {
        action();
    } catch (const Exception&) {
        return true;
    }
    return false;
}

class Run {
public:
    void Step(char letter, std::uint64_t number) {
        const auto low = static_cast<std::uint32_t>(number);
        switch (letter) {
        case 'm':
            return OpenMemory(low % (mostBytes + 1));
        case 'f':
            return OpenFile(low % (mostBytes + 1));
        case 'r':
            return Read(low);
        case 's':
            return Seek(number);
        case 'l':
            return LockBlock(low);
        case 'n':
            return NewBuffer();
        case 'b':
            return BufferByte();
        case 't':
            return BufferTake(low);
        case 'k':
            return BufferSeek(low);
        case 'e':
            return BufferRest();
        case 'c':
            return CloneFile();
        case 'x':
            return CloseFile();
        default:
            return;
        }
    }

private:
    void OpenMemory(std::uint32_t byteCount) {
        NewBuffer();
        m_file.reset();
        m_content = Content(byteCount);
        m_memory.emplace(m_content.data(), byteCount);
        m_stream = &*m_memory;
        m_position = 0;
    }

    void OpenFile(std::uint32_t byteCount) {
        NewBuffer();
        m_memory.reset();
        m_file.reset();
        m_content = Content(byteCount);
        m_file = std::make_unique<FileStream>(TheFile().Of(byteCount));
        m_stream = m_file.get();
        m_position = 0;
        m_isClosed = false;
    }

    std::uint64_t Left() const { return m_position < m_content.size() ? m_content.size() - m_position : 0; }
    bool IsClosed() const { return m_file != nullptr && m_isClosed; }

    void Read(std::uint32_t byteCount) {
        if (m_stream == nullptr)
            return;
        // As large as any read that can succeed: one that fails must not write behind what the stream holds.
        std::vector<std::uint8_t> bytes(mostBytes + 16, guard);
        if (IsClosed() || byteCount > Left()) {
            Check(Raises([&] { m_stream->read(bytes.data(), byteCount); }), "a read past the end succeeded");
            Check(bytes[Left()] == guard, "a failed read wrote behind the end");
            return AfterFailure();
        }
        m_stream->read(bytes.data(), byteCount);
        Check(std::equal(bytes.begin(), bytes.begin() + byteCount, At(m_position)), "a read gave other bytes");
        Check(bytes[byteCount] == guard, "a read wrote too much");
        m_position += byteCount;
        CheckPosition();
    }

    void Seek(std::uint64_t position) {
        if (m_stream == nullptr)
            return;
        if (IsClosed())
            return Check(Raises([&] { m_stream->seek(position); }), "a closed stream moved");
        // File systems end long before 64 bits, a stream over memory keeps 32 bits and tells them with their sign.
        m_position = m_file != nullptr ? position & 0xFF'FFFF'FFFF : position & 0x7FFF'FFFF;
        m_stream->seek(m_file != nullptr ? m_position : (position & ~0x8000'0000ull));
        CheckPosition();
    }

    void LockBlock(std::uint32_t byteCount) {
        if (m_stream == nullptr)
            return;
        const bool isPossible = !IsClosed() && byteCount <= Left();
        StreamLock lock;
        if (Raises([&] { lock = m_stream->lock(byteCount); })) {
            // Memory and a closed file refuse at once, and the buffer keeps its block.
            Check(!isPossible && (m_memory || IsClosed()), "a lock was refused");
            return CheckBuffer();
        }
        const bool isRefused = Raises([&] { m_buffer->Refill(lock); });
        Check(isRefused != isPossible, "a block past the end was given, or one before it refused");
        m_blockPosition = 0;
        m_block.clear();
        if (isRefused) {
            CheckBuffer();
            return AfterFailure();
        }
        m_block.assign(At(m_position), At(m_position + byteCount));
        m_position += byteCount;
        CheckPosition();
        CheckBuffer();
        Check(m_buffer->GetOwnedSize() == (m_file != nullptr ? byteCount : 0), "a block has the wrong owner");
        Check(std::equal(m_block.begin(), m_block.end(), m_buffer->GetData()), "a block holds other bytes");
    }

    void NewBuffer() {
        m_buffer.emplace();
        m_block.clear();
        m_blockPosition = 0;
    }

    void BufferByte() {
        const bool isEnd = m_blockPosition == m_block.size();
        std::uint8_t byte = 0;
        Check(Raises([&] { byte = m_buffer->ReadByte(); }) == isEnd, "the buffer ends elsewhere");
        if (!isEnd)
            Check(byte == m_block[m_blockPosition++], "the buffer gave another byte");
        CheckBuffer();
    }

    void BufferTake(std::uint32_t byteCount) {
        const bool isTooMuch = byteCount > m_block.size() - m_blockPosition;
        const std::uint8_t* bytes = nullptr;
        Check(Raises([&] { bytes = m_buffer->Take(byteCount); }) == isTooMuch, "the buffer ends elsewhere");
        if (!isTooMuch) {
            const auto expected = m_block.begin() + m_blockPosition;
            Check(std::equal(expected, expected + byteCount, bytes), "the buffer gave other bytes");
            m_blockPosition += byteCount;
        }
        CheckBuffer();
    }

    void BufferSeek(std::uint32_t position) {
        const bool isOutside = position > m_block.size();
        Check(Raises([&] { m_buffer->Seek(position); }) == isOutside, "the buffer ends elsewhere");
        if (!isOutside)
            m_blockPosition = position;
        CheckBuffer();
    }

    void BufferRest() {
        if (m_blockPosition == m_block.size())
            return Check(Raises([&] { m_buffer->GetRemainingAsStream(); }), "a stream over nothing");
        MemoryStream rest = m_buffer->GetRemainingAsStream();
        const std::size_t left = m_block.size() - m_blockPosition;
        Check(rest.size() == left, "the rest has another size");
        std::vector<std::uint8_t> bytes(left);
        rest.read(bytes.data(), static_cast<std::uint32_t>(left));
        Check(std::equal(bytes.begin(), bytes.end(), m_block.begin() + m_blockPosition), "the rest has other bytes");
        Check(Raises([&] { rest.read(bytes.data(), 1); }), "the rest does not end");
    }

    void CloneFile() {
        if (m_file == nullptr)
            return;
        if (m_isClosed)
            return Check(Raises([&] { m_file->Clone(); }), "a closed stream was cloned");
        std::unique_ptr<Stream> clone = m_file->Clone();
        CheckPosition();
        m_file.reset(static_cast<FileStream*>(clone.release()));
        m_stream = m_file.get();
        CheckPosition();
    }

    void CloseFile() {
        if (m_file == nullptr)
            return;
        m_file->Close();
        m_isClosed = true;
        Check(Raises([&] { m_stream->tell(); }) && Raises([&] { m_stream->size(); }), "a closed stream answered");
    }

    /// A failed read of a file leaves it where it was or at its end; memory stays.
    void AfterFailure() {
        if (IsClosed())
            return;
        const std::uint64_t position = m_stream->tell();
        const bool isAtEnd = m_file != nullptr && position == m_content.size() && m_position <= position;
        Check(position == m_position || isAtEnd, "a failed read moved the stream");
        m_position = position;
    }

    void CheckPosition() const {
        Check(m_stream->tell() == m_position, "the stream tells another position");
        Check(m_stream->size() == m_content.size(), "the stream tells another size");
    }

    void CheckBuffer() const {
        Check(m_buffer->GetSize() == m_block.size(), "the buffer has another size");
        Check(m_buffer->GetPosition() == m_blockPosition, "the buffer stands elsewhere");
        Check(m_buffer->GetRemaining() == m_block.size() - m_blockPosition, "the buffer has another rest");
    }

    /// What lies at the position; outside, where no byte is compared, the end.
    std::vector<std::uint8_t>::const_iterator At(std::uint64_t position) const {
        const std::uint64_t inside = std::min<std::uint64_t>(position, m_content.size());
        return m_content.begin() + static_cast<std::ptrdiff_t>(inside);
    }

    std::vector<std::uint8_t> m_content;
    std::optional<MemoryStream> m_memory;
    std::unique_ptr<FileStream> m_file;
    Stream* m_stream = nullptr;
    std::uint64_t m_position = 0;
    bool m_isClosed = false;
    std::optional<StreamBuffer> m_buffer{std::in_place};
    std::vector<std::uint8_t> m_block;
    std::uint32_t m_blockPosition = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view recipe(reinterpret_cast<const char*>(data), size);
    Run run;
    for (std::size_t i = 0; i < recipe.size();) {
        const char letter = recipe[i++];
        if (letter < 'a' || letter > 'z')
            continue;
        while (i < recipe.size() && recipe[i] == ' ')
            ++i;
        std::uint64_t number = 0;
        for (; i < recipe.size() && recipe[i] >= '0' && recipe[i] <= '9'; ++i)
            number = number * 10 + static_cast<std::uint64_t>(recipe[i] - '0');
        run.Step(letter, number);
    }
    return 0;
}
