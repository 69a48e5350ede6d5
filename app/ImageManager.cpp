#include "app/ImageManager.h"

#include "data/FileStream.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Quorvex::App {

namespace ImageIndex = ET::Img::ImageIndex;

namespace {

/// The five most wanted slots stay in memory, besides those in use.
constexpr std::size_t keptSlots = 5;

std::uint64_t LastWriteTimeOf(const String& path) {
    return FileStream(path.ToWide()).GetLastWriteTime();
}

} // namespace

void ImageManager::Open(SharedPtr<Platform::Video::Context> context, GUI::IPlatformWindow& window, const String& path,
                        SharedPtr<FileList> fileList) {
    m_window = &window;
    m_context = std::move(context);
    const ImageRequest key = MakeKey(path, ImageIndex::Default, PrefetchAction::NextAndPrevImage);
    Request(key, true);
    if (!fileList && m_fileListFactory != nullptr)
        fileList = m_fileListFactory(path);
    m_fileList = std::move(fileList);
}

// The time of the last change goes into the key: a file that has changed on disk matches no slot and is loaded anew.
ImageRequest ImageManager::MakeKey(const String& path, std::int32_t requestedImage, PrefetchAction action) const {
    return {m_context, path, requestedImage, action, LastWriteTimeOf(path), m_window};
}

ImageSlot& ImageManager::Request(const ImageRequest& key, bool isForeground) {
    // While the user waits no other request is taken. A failure on the way leaves the manager free again.
    const bool wasBusy = std::exchange(m_busy, m_busy || isForeground);
    try {
        const auto found =
            std::find_if(m_slots.begin(), m_slots.end(), [&](const auto& slot) { return slot->Serves(key); });
        ImageSlot& slot = found != m_slots.end() ? ServeFromList(found, isForeground) : StartNew(key, isForeground);
        Trim();
        return slot;
    } catch (...) {
        m_busy = wasBusy;
        throw;
    }
}

ImageSlot& ImageManager::ServeFromList(Slots::iterator found, bool isForeground) {
    ImageSlot& slot = **found;
    if (!isForeground) {
        // Second place: behind what is shown, before everything older. A first entry that is asked for stays first.
        if (found != m_slots.begin())
            m_slots.splice(std::next(m_slots.begin()), m_slots, found);
        return slot;
    }
    m_slots.splice(m_slots.begin(), m_slots, found);
    slot.SetForeground(true);
    if (slot.IsFinished()) {
        slot.PostToWindow();
        ++slot.GetCounterRef();
    } else {
        slot.PromoteToForeground();
    }
    return slot;
}

ImageSlot& ImageManager::StartNew(const ImageRequest& key, bool isForeground) {
    const auto place = isForeground || m_slots.empty() ? m_slots.begin() : std::next(m_slots.begin());
    const auto inserted = m_slots.insert(place, std::make_unique<ImageSlot>(key));
    ImageSlot& slot = **inserted;
    ++slot.GetCounterRef();
    try {
        slot.Run(isForeground);
    } catch (...) {
        m_slots.erase(inserted);
        throw;
    }
    return slot;
}

void ImageManager::Trim() {
    if (m_slots.size() <= keptSlots)
        return;
    for (auto slot = std::next(m_slots.begin(), keptSlots); slot != m_slots.end();) {
        const bool isUnused = (*slot)->GetCounterRef() == 1;
        slot = isUnused ? m_slots.erase(slot) : std::next(slot);
    }
}

void ImageManager::RequireFileList(const char* failure) const {
    if (!m_fileList)
        throw Exception(failure);
}

void ImageManager::PrevFile(const ImageSlot&, bool isForeground) {
    if (m_busy)
        return;
    RequireFileList("PrevFile: FileList==nullptr");
    Request(MakeKey(m_fileList->Step(-1, !isForeground), ImageIndex::Default, PrefetchAction::PrevFile), isForeground);
}

void ImageManager::NextFile(const ImageSlot&, bool isForeground) {
    if (m_busy)
        return;
    RequireFileList("NextFile: FileList==nullptr");
    Request(MakeKey(m_fileList->Step(+1, !isForeground), ImageIndex::Default, PrefetchAction::NextFile), isForeground);
}

void ImageManager::NextImage(const ImageSlot& source, bool isForeground) {
    if (m_busy)
        return;
    RequireFileList("NextImage: FileList==nullptr");
    const std::uint32_t loaded = source.GetLoadedImage();
    const bool isInside = loaded < source.GetDecoder()->GetCount();
    const String path = isInside ? source.GetRequest().path : m_fileList->Step(+1, !isForeground);
    const auto image = isInside ? static_cast<std::int32_t>(loaded + 1) : 1;
    Request(MakeKey(path, image, PrefetchAction::NextImage), isForeground);
}

void ImageManager::PrevImage(const ImageSlot& source, bool isForeground) {
    if (m_busy)
        return;
    RequireFileList("PrevImage: FileList==nullptr");
    const std::uint32_t loaded = source.GetLoadedImage();
    const bool isInside = loaded > 1;
    // The previous file is entered at its last image, whose number is not known before it is decoded.
    const String path = isInside ? source.GetRequest().path : m_fileList->Step(-1, !isForeground);
    const auto image = isInside ? static_cast<std::int32_t>(loaded - 1) : ImageIndex::Last;
    Request(MakeKey(path, image, PrefetchAction::PrevImage), isForeground);
}

void ImageManager::ArbitraryImageFromIndex(std::uint32_t indexOneBased, const ImageSlot& source, bool isForeground) {
    if (m_busy)
        return;
    RequireFileList("ArbitraryImageFromIndex: FileList==nullptr");
    if (indexOneBased < 1)
        throw Exception("ArbitraryImageFromIndex: indexOneBased<1");
    if (indexOneBased > source.GetDecoder()->GetCount())
        throw Exception("ArbitraryImageFromIndex: indexOneBased>SourceSlot.GetDecoder()->GetCount()");
    Request(
        MakeKey(source.GetRequest().path, static_cast<std::int32_t>(indexOneBased), PrefetchAction::NextAndPrevImage),
        isForeground);
}

void ImageManager::CarryOut(PrefetchAction action, const ImageSlot& source) {
    if (action > PrefetchAction::Nothing)
        throw Exception("Unknown prefetch action");
    if (!m_fileList)
        return;
    switch (action) {
    case PrefetchAction::NextImage:
        return NextImage(source, false);
    case PrefetchAction::PrevImage:
        return PrevImage(source, false);
    case PrefetchAction::NextFile:
        return NextFile(source, false);
    case PrefetchAction::PrevFile:
        return PrevFile(source, false);
    case PrefetchAction::NextAndPrevImage:
        try {
            NextImage(source, false);
        } catch (...) {
            PrevImage(source, false);
            throw;
        }
        return PrevImage(source, false);
    case PrefetchAction::Nothing:
        return;
    }
}

} // namespace Quorvex::App
