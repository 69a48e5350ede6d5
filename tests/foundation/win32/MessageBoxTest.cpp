#include "foundation/platform/MessageBox.h"

#include "foundation/Version.h"
#include "foundation/platform/win32/WideText.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <atomic>
#include <thread>

using namespace Quorvex;
using namespace Quorvex::Platform;

namespace {

constexpr const wchar_t* boxTitle = L"Varnolite test \u00FC";

/// Reads the message box with the title above as soon as one is shown, and closes it with its button.
class Reader {
public:
    Reader() : m_thread([this] { Run(); }) {}
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;
    ~Reader() { Finish(); }

    void Finish() {
        m_isFinished = true;
        if (m_thread.joinable())
            m_thread.join();
    }

    String text;
    bool hasOwner = false;
    int buttons = 0;

private:
    void Run() {
        // Until the box is gone: a press that comes while it is still being made is lost.
        for (; !m_isFinished; Sleep(5)) {
            const HWND box = FindWindowW(L"#32770", boxTitle);
            if (box == nullptr || !IsWindowVisible(box))
                continue;
            Read(box);
            PostMessageW(box, WM_COMMAND, IDOK, 0);
        }
    }

    void Read(HWND box) {
        hasOwner = GetWindow(box, GW_OWNER) != nullptr;
        buttons = 0;
        for (HWND child = GetWindow(box, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
            wchar_t name[16] = {};
            wchar_t units[256] = {};
            GetClassNameW(child, name, 16);
            GetWindowTextW(child, units, 256);
            const bool isButton = lstrcmpiW(name, L"Button") == 0;
            buttons += isButton && IsWindowVisible(child) ? 1 : 0;
            if (!isButton && units[0] != 0)
                text = FromWideUnits(units);
        }
    }

    std::atomic<bool> m_isFinished = false;
    std::thread m_thread;
};

class PlainMessageBoxTest : public testing::TestWithParam<bool> {
protected:
    void SetUp() override {
        if (GetSystemMetrics(SM_CXSCREEN) == 0)
            GTEST_SKIP() << "no desktop: the message box stays untested";
    }

    ScopedSystemVersion m_version{{GetParam() ? 5u : 4u, 10, 0}};
};

INSTANTIATE_TEST_SUITE_P(Forms, PlainMessageBoxTest, testing::Bool(),
                         [](const auto& form) { return form.param ? "Wide" : "Narrow"; });

TEST_P(PlainMessageBoxTest, ShowsItsTextWithOneButtonAndNoOwnerUntilItIsRead) {
    Reader reader;
    ShowPlainMessageBox(FromWideUnits(boxTitle), u"Gr\u00FC\u00DFe \u20AC \u4E2D");
    reader.Finish();
    // What the narrow system's code page lacks is a question mark there.
    EXPECT_EQ(reader.text, GetParam() ? u"Gr\u00FC\u00DFe \u20AC \u4E2D" : u"Gr\u00FC\u00DFe \u20AC ?");
    EXPECT_FALSE(reader.hasOwner);
    EXPECT_EQ(reader.buttons, 1);
}

TEST_P(PlainMessageBoxTest, TakesNarrowTexts) {
    Reader reader;
    ShowPlainMessageBox("Varnolite test \xFC", "\xE4");
    reader.Finish();
    EXPECT_EQ(reader.text, u"\u00E4");
}

} // namespace
