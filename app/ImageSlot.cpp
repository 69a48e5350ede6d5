#include "app/ImageSlot.h"

#include <chrono>
#include <new>
#include <thread>
#include <utility>

namespace Quorvex::App {

using PAL::Threading::ThreadPriority;

ImageSlot::ImageSlot(ImageRequest request) : m_request(std::move(request)) {}

ImageSlot::~ImageSlot() {
    m_thread.Wait();
}

void ImageSlot::Run(bool isForeground) {
    m_foreground = isForeground;
    m_thread.Run(&ImageSlot::RunWorker, this);
}

void ImageSlot::PromoteToForeground() {
    m_thread.SetPriority(ThreadPriority::Normal);
}

void ImageSlot::Join() {
    m_thread.Wait();
    // The file may have changed between the request and its load; what was decoded is what this slot serves.
    if (m_loadedWriteTime != 0)
        m_request.lastWriteTime = m_loadedWriteTime;
    m_finished = true;
}

void ImageSlot::PostToWindow() {
    m_request.window->Post(GUI::UserMessage::LoadFinished, static_cast<std::uintptr_t>(m_request.action),
                           reinterpret_cast<std::intptr_t>(this));
}

bool ImageSlot::Serves(const ImageRequest& key) const {
    if (m_request.lastWriteTime != key.lastWriteTime || !(m_request.path == key.path))
        return false;
    if (m_request.requestedImage == key.requestedImage)
        return true;
    if (!m_finished || !m_decoder)
        return false;
    // The loaded number is known now, so a reserved number can be compared with what it came to mean. A plug-in that
    // cannot tell its numbers any more decodes its file anew.
    try {
        switch (key.requestedImage) {
        case ET::Img::ImageIndex::Last:
            return GetLoadedImage() == m_decoder->GetCount();
        case ET::Img::ImageIndex::Default:
            return GetLoadedImage() == m_decoder->GetDefaultIndex() + 1;
        default:
            return key.requestedImage == m_loadedImage;
        }
    } catch (const std::exception&) {
        return false;
    }
}

// The slot posts its message in every outcome, so that the GUI never waits for a slot that has failed. The exception
// goes on to the thread's entry routine, which keeps it for whoever reads the results.
void ImageSlot::RunWorker(void* slot) {
    auto* const self = static_cast<ImageSlot*>(slot);
    if (!self->m_foreground)
        PAL::Threading::SetCurrentThreadPriority(ThreadPriority::Idle);
    try {
        self->Load();
    } catch (...) {
        self->PostFromWorker();
        throw;
    }
    self->PostFromWorker();
}

void ImageSlot::Load() {
    try {
        m_loadedImage = m_request.requestedImage;
        m_logger = MakeShared<LocalLogger>();
        m_decoder = ET::Img::LoadFileByExtension(m_request.path, {m_request.context, m_logger}, m_loadedImage, m_image,
                                                 &m_loadedWriteTime);
        m_image->PaintBorder();
    } catch (const std::bad_alloc&) {
        // Whichever decoder is tried next would need the memory too.
        throw;
    } catch (const std::exception&) {
        LoadByContentAfterFailure();
        throw;
    }
}

// What is short of memory goes on failing, but a message is small and others give memory back: this load's own has gone
// already. Without the message the GUI would wait for the slot for ever.
void ImageSlot::PostFromWorker() {
    constexpr std::chrono::milliseconds untilTheNextTry(1);
    for (;;) {
        try {
            PostToWindow();
            return;
        } catch (const std::bad_alloc&) {
            std::this_thread::sleep_for(untilTheNextTry);
        }
    }
}

void ImageSlot::LoadByContentAfterFailure() {
    m_image.reset();
    try {
        m_loadedImage = m_request.requestedImage;
        m_logger = MakeShared<LocalLogger>();
        const auto decoder = ET::Img::LoadFileByContent(m_request.path, {m_request.context, m_logger}, m_loadedImage,
                                                        m_image, &m_loadedWriteTime);
        decoder->WrongFilenameExtension = true;
        m_image->PaintBorder();
        m_decoder = decoder;
    } catch (const std::exception&) {
        // The failure of the decoder that the name asked for says more than that of the last one tried.
        m_image.reset();
    }
}

const SharedPtr<Data::ImageBase>& ImageSlot::GetImage() const {
    RaiseUnlessFinished(__LINE__);
    if (!m_image)
        RaiseFailure(__LINE__);
    return m_image;
}

const SharedPtr<ET::Img::ImageFile>& ImageSlot::GetDecoder() const {
    RaiseUnlessFinished(__LINE__);
    if (!m_decoder)
        RaiseFailure(__LINE__);
    return m_decoder;
}

std::uint32_t ImageSlot::GetLoadedImage() const {
    RaiseUnlessFinished(__LINE__);
    if (!m_decoder)
        RaiseFailure(__LINE__);
    return static_cast<std::uint32_t>(m_loadedImage);
}

void ImageSlot::RaiseUnlessFinished(int line) const {
    if (!m_finished)
        throw Exception("ImageManager", static_cast<std::uint32_t>(line));
}

// The worker's own failure says most; a slot that has no result for no reason is a fault of the program.
void ImageSlot::RaiseFailure(int line) const {
    m_thread.RethrowThreadException();
    throw Exception("ImageManager", static_cast<std::uint32_t>(line));
}

} // namespace Quorvex::App
