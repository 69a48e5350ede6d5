#pragma once

#include "foundation/Log.h"
#include "foundation/platform/MessageBox.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace Quorvex::Test {

/// Keeps the log of the program, its copy on the desktop and its message boxes to one test, and tells what came there.
class LogCapture {
public:
    explicit LogCapture(const std::string& programName = "Varnolite")
        : m_name(programName), m_record(programName.c_str(), Below("local"), Below("desktop")) {
        Shown().clear();
        m_formerRecord = SetLogRecord(&m_record);
        m_formerPresenter = Platform::SetMessageBoxPresenter(&Show);
    }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
    ~LogCapture() {
        Platform::SetMessageBoxPresenter(m_formerPresenter);
        SetLogRecord(m_formerRecord);
    }

    LogRecord& Record() { return m_record; }
    const TemporaryFolder& Folder() const { return m_folder; }

    /// The whole log, empty if nothing was reported.
    std::string Text() const { return m_folder.Read("local/" + m_name + "/" + m_name + ".log"); }
    std::string DesktopText() const { return m_folder.Read("desktop/" + m_name + ".log"); }
    bool IsEmpty() const { return Text().empty(); }
    /// Whether some line of the log ends in the text.
    bool HasLineEndingIn(const std::string& text) const { return Text().find(text + "\r\n") != std::string::npos; }

    /// Title and text of each message box.
    std::vector<std::pair<std::string, std::string>> MessageBoxes() const {
        const std::lock_guard lock(Mutex());
        return Shown();
    }

private:
    String Below(const char* name) const {
        std::filesystem::create_directory(m_folder.Path() / name);
        return m_folder.PathOf(name);
    }
    static std::vector<std::pair<std::string, std::string>>& Shown() {
        static std::vector<std::pair<std::string, std::string>> shown;
        return shown;
    }
    static std::mutex& Mutex() {
        static std::mutex mutex;
        return mutex;
    }
    static void Show(const String& title, const String& text) {
        const std::lock_guard lock(Mutex());
        Shown().emplace_back(title.ToANSI().ToStdString(), text.ToANSI().ToStdString());
    }

    std::string m_name;
    TemporaryFolder m_folder;
    LogRecord m_record;
    LogRecord* m_formerRecord = nullptr;
    Platform::MessageBoxPresenter m_formerPresenter = nullptr;
};

} // namespace Quorvex::Test
