#pragma once

#include "app/FileList.h"
#include "app/ImageSlot.h"

#include <list>
#include <memory>

namespace Quorvex::App {

/// Keeps a short list of image slots, most wanted first. Serves the image that the user asked for, and decodes the one
/// next in the user's direction ahead. GUI thread only; workers touch nothing but their own slot.
class ImageManager {
public:
    /// Builds the list of the files around a path when none is given to Open. Unset: no list.
    using FileListFactory = SharedPtr<FileList> (*)(const String& path);

    void SetFileListFactory(FileListFactory factory) { m_fileListFactory = factory; }

    /// Requests the default image of a file in the foreground. Raises Exception where the file cannot be opened,
    /// without having become busy.
    void Open(SharedPtr<Platform::Video::Context> context, GUI::IPlatformWindow& window, const String& path,
              SharedPtr<FileList> fileList);

    /// Finds or makes the slot for the key. In the foreground its message follows; otherwise it decodes ahead.
    ImageSlot& Request(const ImageRequest& key, bool isForeground);

    // Steps from a slot. All are empty while a foreground load runs. Without a file list they raise
    // "PrevFile: FileList==nullptr" and the like, which is a fault of the program. Those that count images raise the
    // failure of a source that could not be loaded; stepping by file goes on from it.
    void PrevFile(const ImageSlot& source, bool isForeground);
    void NextFile(const ImageSlot& source, bool isForeground);
    void NextImage(const ImageSlot& source, bool isForeground);
    void PrevImage(const ImageSlot& source, bool isForeground);
    void ArbitraryImageFromIndex(std::uint32_t indexOneBased, const ImageSlot& source, bool isForeground);

    /// Decodes ahead what the action says, seen from the source. A failing step forward does not keep the step back.
    /// Raises "Unknown prefetch action" for a value that is none. Without a file list there is nothing to fetch ahead.
    void CarryOut(PrefetchAction action, const ImageSlot& source);

    bool IsBusy() const { return m_busy; }
    void ClearBusy() { m_busy = false; }
    std::size_t GetSlotCount() const { return m_slots.size(); }

    /// Destroys all slots; each waits for its worker.
    void ClearSlots() { m_slots.clear(); }
    void ReleaseContext() { m_context.reset(); }

private:
    using Slots = std::list<std::unique_ptr<ImageSlot>>;

    ImageRequest MakeKey(const String& path, std::int32_t requestedImage, PrefetchAction action) const;
    void RequireFileList(const char* failure) const;
    ImageSlot& ServeFromList(Slots::iterator found, bool isForeground);
    ImageSlot& StartNew(const ImageRequest& key, bool isForeground);
    void Trim();

    GUI::IPlatformWindow* m_window = nullptr;
    bool m_busy = false;
    Slots m_slots;
    SharedPtr<Platform::Video::Context> m_context;
    SharedPtr<FileList> m_fileList;
    FileListFactory m_fileListFactory = nullptr;
};

} // namespace Quorvex::App
