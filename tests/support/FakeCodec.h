#pragma once

#include "codecs/CodecFactory.h"
#include "codecs/Decoder.h"

#include <atomic>
#include <condition_variable>
#include <map>
#include <mutex>
#include <string>

namespace Quorvex::App {

/// A format of the tests' own, registered for "*.fake" as long as the object lives. A file is a line of words:
/// "FAKE", then any of count=N, default=N (zero-based), orientation=N, memory (runs out of it), text=T (fails with that
/// text), silent (fails without one), strange (fails with no exception of a known kind), hold (waits for Release),
/// incomplete, forgetful (fails to tell its numbers once an image is decoded). Image n of a file is n pixels wide and 1
/// high.
class FakeCodec {
public:
    FakeCodec();
    ~FakeCodec();

    /// Lets all loads pass that wait, and those that come.
    void Release();
    /// How many decoders were made so far: by header passes of the name and of the content alike.
    int DecoderCount() const { return decoderCount; }

private:
    class Factory;
    class Worker;
    class FakeDecoder;

    void WaitUntilReleased();

    std::atomic<int> decoderCount = 0;
    std::mutex mutex;
    std::condition_variable released;
    bool isReleased = false;
};

} // namespace Quorvex::App
