#pragma once

#include <cstdint>

namespace Quorvex::Data {

class ImageBase;

/// Any value other than ReadOnly counts as a write lock.
enum class LockMode : std::uint8_t { ReadWrite = 0, ReadOnly = 1 };

/// A scoped view of an image's pixels, named "Image::Lock" in messages. Any number of read-only views may live at once;
/// a write view excludes everything else. Never stored beyond the function that took it. The counters behind it are
/// plain: one thread takes the lock and hands row spans to its workers.
class LockBase {
public:
    LockBase(const LockBase&) = delete;
    LockBase& operator=(const LockBase&) = delete;
    ~LockBase();

    const LockMode Mode;
    const ImageBase* const Owner;
    const std::uint32_t Width;           ///< Visible pixels per row.
    const std::uint32_t Height;          ///< Visible rows.
    const std::uint32_t AllocatedWidth;  ///< Row stride in pixels.
    const std::uint32_t AllocatedHeight; ///< Rows in memory.

protected:
    /// Raises Exception with empty text, after a report under "Image::Lock", where a living view excludes this one.
    LockBase(const ImageBase& owner, LockMode mode);
    /// Raises Exception with empty text for a pixel outside the allocated size.
    void CheckIndex(std::uint32_t x, std::uint32_t y) const;
};

template <class T>
class Lock final : public LockBase {
public:
    Lock(const ImageBase& owner, LockMode mode, T* data) : LockBase(owner, mode), Data(data) {}

    /// First pixel of row 0. The caller has asked for the image's own sample type: the lock itself does not compare.
    T* const Data;

    /// Checked access; loops over rows use Row instead.
    T& operator()(std::uint32_t x, std::uint32_t y) const {
        CheckIndex(x, y);
        return Row(y)[x];
    }
    T* Row(std::uint32_t y) const { return Data + static_cast<std::uint64_t>(y) * AllocatedWidth; }
};

} // namespace Quorvex::Data
