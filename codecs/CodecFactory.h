#pragma once

#include "codecs/ImageFile.h"
#include "data/Stream.h"
#include "foundation/BilingualText.h"

#include <vector>

namespace ET::Img {

/// Makes the decoders of one format and tells how its files are called. Stateless; any thread.
class CodecFactory {
public:
    virtual ~CodecFactory() = default;
    /// Wildcard items separated by ";", lower-case, in UTF-16.
    virtual Quorvex::String GetFilePattern() const = 0;
    /// What the open dialog calls the format, in the current language, in UTF-16.
    virtual Quorvex::String GetFileTypeText() const = 0;
    /// A decoder on the stream, which must stand at its start. May read and reject the file at once: raises Exception.
    virtual SharedPtr<ImageFile> CreateDecoder(SharedPtr<Quorvex::Stream> stream) const = 0;
};

/// A factory for the decoder D, which is constructed from a stream. F, the concrete factory, names the files with its
/// constants filePattern, germanText and englishText.
template <class D, class F>
class DecoderFactory : public CodecFactory {
public:
    Quorvex::String GetFilePattern() const override { return Quorvex::String(F::filePattern); }
    Quorvex::String GetFileTypeText() const override {
        return Quorvex::InCurrentLanguage({Quorvex::String(F::germanText), Quorvex::String(F::englishText)});
    }
    SharedPtr<ImageFile> CreateDecoder(SharedPtr<Quorvex::Stream> stream) const override {
        return SharedPtr<D>(new D(std::move(stream)));
    }
};

using CodecRegistry = std::vector<SharedPtr<CodecFactory>>;

/// The factories of the process in the order of their priority. Plug-ins are added during start-up; after that the
/// registry is only read, by any thread, and needs no lock.
CodecRegistry& GetCodecRegistry();

/// Whether a file name ends as one of the pattern's items asks. An item is "*" and the tail that the name must have
/// when each of its characters is made lower-case; an empty tail matches every name.
bool MatchesPattern(const Quorvex::String& pattern, const Quorvex::String& fileName);

} // namespace ET::Img
