#pragma once

#include "codecs/LoadFile.h"
#include "data/ImageBase.h"
#include "foundation/LocalLogger.h"
#include "foundation/Thread.h"
#include "gui/window/PlatformWindow.h"
#include "video/Context.h"

#include <atomic>

namespace Quorvex::App {

/// What is fetched ahead after a slot was shown; travels as the first parameter of the slot's message.
enum class PrefetchAction : std::uint32_t {
    NextImage = 0,
    PrevImage = 1,
    NextFile = 2,
    PrevFile = 3,
    NextAndPrevImage = 4,
    Nothing = 5,
};

/// What a slot is asked to load. Two requests for the same thing are served by one slot.
struct ImageRequest {
    SharedPtr<Platform::Video::Context> context;
    String path;
    std::int32_t requestedImage = ET::Img::ImageIndex::Default; ///< From 1, or one of ET::Img::ImageIndex.
    PrefetchAction action = PrefetchAction::Nothing;
    std::uint64_t lastWriteTime = 0; ///< 100 ns units, as FileStream gives it.
    GUI::IPlatformWindow* window = nullptr;
};

/// One request to decode one image of one file, with a thread of its own. The worker writes only its own slot and posts
/// the slot to the window when it is done, whether it succeeded or not; the GUI thread reads the results only after
/// Join. No field has a lock.
class ImageSlot {
public:
    /// A slot that serves as a key, or is run later; the thread is not started.
    explicit ImageSlot(ImageRequest request);
    ImageSlot(const ImageSlot&) = delete;
    ImageSlot& operator=(const ImageSlot&) = delete;
    /// Waits for the worker.
    ~ImageSlot();

    /// Starts the worker: at idle priority for a prefetch, at normal priority when the user waits.
    void Run(bool isForeground);
    /// The user waits for this slot now: its worker goes to normal priority.
    void PromoteToForeground();
    /// Waits for the worker; its results can be read afterwards.
    void Join();
    void PostToWindow();

    /// Whether this slot answers a request for what the key asks for.
    bool Serves(const ImageRequest& key) const;

    const ImageRequest& GetRequest() const { return m_request; }
    bool IsFinished() const { return m_finished; }
    bool IsForeground() const { return m_foreground; }
    void SetForeground(bool isForeground) { m_foreground = isForeground; }

    // Results. Before the join they raise Exception("ImageManager", line). A slot whose load failed raises what the
    // worker caught, and one that has neither result nor failure the former with another line.
    const SharedPtr<Data::ImageBase>& GetImage() const;
    const SharedPtr<ET::Img::ImageFile>& GetDecoder() const;
    /// The 1-based number of the image that was really loaded.
    std::uint32_t GetLoadedImage() const;

    /// The lines of the last decode; null before the worker started.
    const SharedPtr<LocalLogger>& GetLogger() const { return m_logger; }
    /// 1 while in the list, plus 1 while its message is awaited, plus 1 as the current slot.
    std::int32_t& GetCounterRef() { return m_counter; }

private:
    static void RunWorker(void* slot);
    void Load();
    void LoadByContentAfterFailure();
    void PostFromWorker();
    void RaiseUnlessFinished(int line) const;
    [[noreturn]] void RaiseFailure(int line) const;

    ImageRequest m_request;
    SharedPtr<LocalLogger> m_logger;
    std::int32_t m_loadedImage = 0;
    std::uint64_t m_loadedWriteTime = 0;
    PAL::Threading::Thread m_thread;
    // Changed by the GUI thread while the worker runs; the worker reads it once at its start.
    std::atomic<bool> m_foreground = false;
    bool m_finished = false;
    SharedPtr<Data::ImageBase> m_image;
    SharedPtr<ET::Img::ImageFile> m_decoder;
    std::int32_t m_counter = 1;
};

} // namespace Quorvex::App
