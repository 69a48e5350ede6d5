#pragma once

#include "codecs/ImageInfo.h"
#include "data/ImageBase.h"
#include "foundation/SharedPtr.h"

#include <memory>

namespace Quorvex {
class CompositeOfProperties;
class ILogger;
} // namespace Quorvex

namespace ET::Img {

using Quorvex::SharedPtr;
using Quorvex::Data::ImageBase;

/// An image file with a decoder of its format: what the rest of the program calls a decoder. Made for one load; it
/// outlives the load for what it knows of the file, while the stream behind it is closed. One thread at a time.
class ImageFile {
public:
    class ImplBase;

    /// Takes the implementation over; null is for a file that has none, whose counts then raise.
    explicit ImageFile(std::unique_ptr<ImplBase> implementation);
    ImageFile(const ImageFile&) = delete;
    ImageFile& operator=(const ImageFile&) = delete;

    /// Who receives the decoder's messages from now on.
    virtual void SetLogger(SharedPtr<Quorvex::ILogger> logger) = 0;
    /// What the image with the zero-based index needs; reads headers only and raises Exception where they are bad.
    virtual ImageInfo GetInfo(std::uint32_t index) = 0;
    virtual ~ImageFile();
    /// Whether decoding stopped early, so that the image holds only a part.
    virtual bool IsIncomplete() const = 0;
    /// Number of images in the file. Exception with empty text without an implementation.
    virtual std::uint32_t GetCount() const = 0;
    /// Zero-based index of the image to show first. Exception with empty text without an implementation.
    virtual std::uint32_t GetDefaultIndex() const = 0;
    /// The header's fields as a tree; null for a format that shows none.
    virtual SharedPtr<Quorvex::CompositeOfProperties> GetProperties() const = 0;

    /// Decodes the image with the zero-based index into the target and returns it; with a null target reads the
    /// headers only and returns null. Raises Exception where the headers are bad; after that a failure sets Incomplete.
    virtual SharedPtr<ImageBase> Load(const SharedPtr<ImageBase>& target, std::uint32_t index) = 0;

    /// What the last pass over the headers said; still there when the stream is closed. All zero before the first.
    ImageInfo GetLoadedInfo() const;
    /// How the stored rows and columns lie on the screen, as the Exif tag Orientation numbers it, 1 to 8; 1: as stored.
    std::uint32_t GetOrientation() const { return m_orientation; }

    /// Set by the load driver when another decoder than the one its name suggests has decoded the file.
    bool WrongFilenameExtension = false;
    /// Set by the implementation when decoding stopped early.
    bool Incomplete = false;

protected:
    std::unique_ptr<ImplBase> Impl;
    std::uint32_t m_orientation = 1;
};

/// The worker of one format behind an ImageFile.
class ImageFile::ImplBase {
public:
    ImplBase() = default;
    ImplBase(const ImplBase&) = delete;
    ImplBase& operator=(const ImplBase&) = delete;
    virtual ~ImplBase();

    virtual std::uint32_t GetCount() const { return 1; }
    virtual std::uint32_t GetDefaultIndex() const { return 0; }
    /// As ImageFile::Load. Sets Info as soon as the headers are read, and returns null at that point for a null target.
    virtual SharedPtr<ImageBase> Load(const SharedPtr<ImageBase>& target, std::uint32_t index) = 0;
    /// Kept for the plug-in interface, where each slot has its number; the program does not ask.
    virtual std::uint32_t ReservedQuery() const { return 1; }
    virtual void SetLogger(SharedPtr<Quorvex::ILogger> logger);
    /// For implementations that know it without a pass over the headers.
    virtual ImageInfo GetInfo(std::uint32_t index);

    /// The result of the last pass over the headers.
    ImageInfo Info;
    /// The owner's flag; set by the owner as soon as it has this worker.
    bool* Incomplete = nullptr;
};

} // namespace ET::Img
