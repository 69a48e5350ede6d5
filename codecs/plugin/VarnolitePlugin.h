#pragma once

// What a plug-in for Varnolite implements, and what it gets from the program. This file needs no other of the project;
// docs/plugins.md tells how a plug-in is made. The interfaces are binary: each is a pointer to a table of functions in
// the order below, as COM has it, and no type of a library crosses them.

#include <cstdint>

// Arguments are passed as the system's own interfaces pass them: on 32-bit Windows the called function takes them from
// the stack, everywhere else there is one way only.
#if defined(_M_IX86) || (defined(__i386__) && defined(__stdcall))
#define VARNOLITE_CALL __stdcall
#else
#define VARNOLITE_CALL
#endif

namespace VarnolitePlugin {

/// 0 for success; everything else is a failure.
using Result = std::int32_t;
inline constexpr Result Success = 0;
inline constexpr Result NotImplemented = static_cast<Result>(0x80004001);
inline constexpr Result NoInterface = static_cast<Result>(0x80004002);
inline constexpr Result Failure = static_cast<Result>(0x80004005);
inline constexpr Result ClassNotAvailable = static_cast<Result>(0x80040111);
inline constexpr Result NoAggregation = static_cast<Result>(0x80040110);

struct Identifier {
    std::uint32_t data1;
    std::uint16_t data2;
    std::uint16_t data3;
    std::uint8_t data4[8];

    friend constexpr bool operator==(const Identifier& a, const Identifier& b) {
        for (int i = 0; i < 8; ++i)
            if (a.data4[i] != b.data4[i])
                return false;
        return a.data1 == b.data1 && a.data2 == b.data2 && a.data3 == b.data3;
    }
};

/// The class that DllGetClassObject is asked for.
inline constexpr Identifier DecoderClass{0xFF892E85, 0x75C1, 0x4BEE, {0xA0, 0xB6, 0x99, 0xF3, 0x5F, 0x1A, 0xEE, 0x3D}};

/// Sample types of an image: grey, and from 10 on blue, green, red and alpha.
enum class ColorType : std::uint32_t {
    SInt8,
    SInt16,
    SInt32,
    SInt64,
    UInt8,
    UInt16,
    UInt32,
    UInt64,
    Float32,
    Float64,
    BGRASInt8,
    BGRASInt16,
    BGRASInt32,
    BGRASInt64,
    BGRAUInt8,
    BGRAUInt16,
    BGRAUInt32,
    BGRAUInt64,
    BGRAFloat32,
    BGRAFloat64
};

/// What image the program is to create.
struct ImageInfo {
    std::uint32_t width;           ///< Pixels.
    std::uint32_t height;          ///< Pixels.
    std::uint32_t bitsPerPixel;    ///< As stored in the file, for display only.
    std::uint32_t allocatedWidth;  ///< Row length that the decoder wants; 0: the image's own.
    std::uint32_t allocatedHeight; ///< Rows that the decoder wants; 0: the image's own.
    ColorType colorType;
};
static_assert(sizeof(ImageInfo) == 24);

class IUnknown {
public:
    static constexpr Identifier Id{0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

    virtual Result VARNOLITE_CALL QueryInterface(const Identifier& identifier, void** object) = 0;
    virtual std::uint32_t VARNOLITE_CALL AddRef() = 0;
    virtual std::uint32_t VARNOLITE_CALL Release() = 0;

protected:
    // Objects end themselves with their last user.
    ~IUnknown() = default;
};

class IClassFactory : public IUnknown {
public:
    static constexpr Identifier Id{1, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

    /// The program gives no outer object and asks for IDecoder.
    virtual Result VARNOLITE_CALL CreateInstance(IUnknown* outer, const Identifier& identifier, void** object) = 0;
    /// Not called.
    virtual Result VARNOLITE_CALL LockServer(std::int32_t isLocked) = 0;

protected:
    // Objects end themselves with their last user.
    ~IClassFactory() = default;
};

/// The file, given by the program. All functions fail once the image is loaded and the file is closed.
class IQuorvexStream : public IUnknown {
public:
    static constexpr Identifier Id{0x8FE7593A, 0x9D0B, 0x469D, {0x80, 0xC9, 0x7A, 0xD0, 0x07, 0xD0, 0x46, 0x0C}};

    /// Moves to a position in bytes from the start, given as its low and its high half.
    virtual Result VARNOLITE_CALL Seek(std::uint32_t low, std::uint32_t high) = 0;
    /// The number of bytes.
    virtual Result VARNOLITE_CALL Size(std::uint64_t* size) = 0;
    virtual Result VARNOLITE_CALL Tell(std::uint64_t* position) = 0;
    /// All of the bytes, or a failure.
    virtual Result VARNOLITE_CALL Read(void* buffer, std::uint32_t byteCount) = 0;
    /// An independent stream at the same position, which the caller releases.
    virtual Result VARNOLITE_CALL Clone(IQuorvexStream** stream) = 0;

protected:
    // Objects end themselves with their last user.
    ~IQuorvexStream() = default;
};

/// Takes messages for the user, given by the program. Texts end with a 0.
class ICOMLogger : public IUnknown {
public:
    static constexpr Identifier Id{0x76146C2A, 0x424D, 0x4043, {0xA1, 0xD6, 0xDD, 0xB7, 0xCA, 0x17, 0xF3, 0x3A}};

    virtual Result VARNOLITE_CALL Log(const char16_t* german, const char16_t* english) = 0;
    /// The same text in every language.
    virtual Result VARNOLITE_CALL LogText(const char16_t* text) = 0;

protected:
    // Objects end themselves with their last user.
    ~ICOMLogger() = default;
};

/// What a plug-in implements: a decoder for one file. It is used by one thread at a time; several decoders may be in
/// use at the same time.
class IDecoder : public IUnknown {
public:
    static constexpr Identifier Id{0xA99B742C, 0x4485, 0x470F, {0x99, 0x9A, 0x69, 0x00, 0x83, 0x44, 0x55, 0x66}};

    /// Comes first. A failure says that the file is not of the plug-in's format. Who keeps the stream adds a reference.
    virtual Result VARNOLITE_CALL Open(IQuorvexStream* stream) = 0;
    /// Indexes begin with 0.
    virtual Result VARNOLITE_CALL GetInfo(std::uint32_t index, ImageInfo* info) = 0;
    /// Not called. Returns NotImplemented.
    virtual Result VARNOLITE_CALL Reserved() = 0;
    virtual Result VARNOLITE_CALL GetCount(std::uint32_t* count) = 0;
    /// The index of the image to show first.
    virtual Result VARNOLITE_CALL GetDefaultIndex(std::uint32_t* index) = 0;
    /// Writes the samples of the image, its top row first, at the address. There is memory for that many rows of that
    /// many pixels, which are at least as many as GetInfo asked for; nothing may be written behind it.
    virtual Result VARNOLITE_CALL Load(std::uint32_t index, void* address, std::uint32_t rowLengthInPixels,
                                       std::uint32_t rows) = 0;
    /// Who keeps the logger adds a reference. Not called where nobody wants messages.
    virtual Result VARNOLITE_CALL SetLogger(ICOMLogger* logger) = 0;

protected:
    // Objects end themselves with their last user.
    ~IDecoder() = default;
};

/// What the library exports under the name "DllGetClassObject", without any decoration.
using GetClassObject = Result(VARNOLITE_CALL*)(const Identifier& classIdentifier, const Identifier& identifier,
                                               void** object);

} // namespace VarnolitePlugin
