// What every control looks like in each of its states, among the platform's windows.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/base/HostServices.h"
#include "platform/win32/Win32Images.h"
#include "platform/win32/detail/Scale.h"
#include "platform/win32/detail/SystemCalls.h"
#include "tests/platform/win32/Win32Driver.h"
#include "tests/support/ControlStates.h"
#include "tests/support/HostServicesScope.h"
#include "tests/support/StateCards.h"

namespace tessalink::test {
namespace {

constexpr const char* cRefresh = "TESSALINK_REFRESH_PICTURES";
constexpr COLORREF cPaper = RGB(214, 224, 236);  // no control has it
constexpr int cDpi = 96;

/// What the screen shows in a rectangle, in pixels.
MemoryBitmap screenIn(const CRect& pixels) {
    MemoryBitmap bitmap(pixels.Width(), pixels.Height(), cDpi);
    const HDC screen = ::GetDC(nullptr);
    ::BitBlt(bitmap.Context(), 0, 0, pixels.Width(), pixels.Height(), screen, pixels.left,
             pixels.top, SRCCOPY);
    ::ReleaseDC(nullptr, screen);
    return bitmap;
}

PixelPicture numbersOf(const MemoryBitmap& bitmap) {
    return {bitmap.Width(), bitmap.Height(), bitmap.Pixels()};
}

/// A driver, a control beside its host, and what the parent answers.
struct Win32Look {
    using Picture = std::shared_ptr<MemoryBitmap>;

    class Card {
    public:
        explicit Card(int columns) : m_columns(columns) {}

        void Add(const char* caption, const Picture& picture) {
            m_captions.emplace_back(caption);
            m_pictures.push_back(picture);
        }
        Picture Whole() const {
            std::vector<CardLayout::Cell> cells;
            for (std::size_t i = 0; i < m_pictures.size(); ++i) {
                const CSize size(m_pictures[i]->Width(), m_pictures[i]->Height());
                cells.push_back({size, !m_captions[i].empty(), {}, {}});
            }
            const CardLayout layout(m_columns, std::move(cells));
            auto card = std::make_shared<MemoryBitmap>(layout.whole.cx, layout.whole.cy, cDpi);
            card->Draw([&](CDC& dc) {
                CFont font;
                font.CreateFont(-11, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
                dc.SelectObject(&font);
                dc.SetBkMode(TRANSPARENT);
                dc.FillSolidRect(0, 0, layout.whole.cx, layout.whole.cy, cPaper);
                for (std::size_t i = 0; i < m_captions.size(); ++i) {
                    const CPoint place = layout.cells[i].caption;
                    dc.TextOut(place.x, place.y, m_captions[i].c_str());
                }
                dc.SelectStockObject(SYSTEM_FONT);
            });
            for (std::size_t i = 0; i < m_pictures.size(); ++i) {
                const auto& [size, hasCaption, caption, place] = layout.cells[i];
                ::BitBlt(card->Context(), place.x, place.y, size.cx, size.cy,
                         m_pictures[i]->Context(), 0, 0, SRCCOPY);
            }
            return card;
        }

    private:
        int m_columns;
        std::vector<std::string> m_captions;
        std::vector<Picture> m_pictures;
    };

    class Stage {
    public:
        explicit Stage(CSize size) : m_size(size) {
            current = &m_driver;
            m_driver.answer = [this](const NMHDR& header) -> LRESULT {
                return m_refuses && header.code == static_cast<UINT>(DATAENTRY_CHANGING) ? 1 : 0;
            };
        }
        ~Stage() { current = nullptr; }
        void Show() { fill(); }
        void Resize(CSize size) {
            m_size = size;
            fill();
        }
        CWnd& Host() { return m_driver.Host(); }
        void FocusElsewhere() { m_driver.Leave(); }
        void Refuse() { m_refuses = true; }

    private:
        void fill() {
            m_driver.Host().GetChild(0)->MoveWindow(CRect(CPoint(), m_size));
            m_driver.Pump();
        }

        Win32Driver m_driver;
        CSize m_size;
        bool m_refuses = false;
    };

    static inline Win32Driver* current = nullptr;

    static void Settle() {
        if (current != nullptr) current->Pump();
    }
    static void Type(const char* text) {
        for (; *text != '\0'; ++text) current->Type(*text);
    }
    static void Press(UINT key, Held held = {}) { current->PressKey(key, held); }
    static Picture PictureOf(const CWnd& window, double = 1, const CRect& area = {}) {
        Settle();
        RECT outer = {};
        ::GetWindowRect(platformWindow(window), &outer);
        CRect shown(outer);
        if (!area.IsRectEmpty()) {
            const detail::Scale scale(detail::dpiOfWindow(platformWindow(window)));
            shown = scale.Edges(area);
            shown.OffsetRect(outer.left, outer.top);
        }
        AddTips(shown);
        return std::make_shared<MemoryBitmap>(screenIn(shown));
    }
    static void MovePointer(const CWnd& window, CPoint point) {
        window.ClientToScreen(&point);
        current->MoveMouse(point);
    }
    static Picture PictureWhileDragging(const CWnd& window, CPoint from, CPoint to) {
        Picture dragging;
        window.ClientToScreen(&from);
        window.ClientToScreen(&to);
        current->Queue([&] { current->MoveMouse(to); });
        current->Queue([&] { dragging = PictureOf(window); });
        current->Queue([&] { current->Release(to); });
        current->Press(from);
        return dragging;
    }

private:
    static void AddTips(CRect& shown) {
        ::EnumThreadWindows(
            ::GetCurrentThreadId(),
            [](HWND window, LPARAM around) {
                const auto* const tip = DYNAMIC_DOWNCAST(TipWindow, windowFromPlatform(window));
                if (tip == nullptr || ::IsWindowVisible(window) == 0) return TRUE;
                RECT place = {};
                ::GetWindowRect(window, &place);
                CRect& all = *reinterpret_cast<CRect*>(around);
                const CRect before = all;
                all.UnionRect(&before, &place);
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&shown));
    }
};

using Cards = states::ControlStates<Win32Look>;

std::string storedName(const char* name) {
    return std::string(TESSALINK_SOURCE_DIR "/tests/platform/win32/states/") + name + ".png";
}

void store(const std::string& path, const MemoryBitmap& picture) {
    const std::vector<BYTE> png = picture.Png();
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(png.data()), static_cast<std::streamsize>(png.size()));
    ASSERT_TRUE(file.good()) << path;
}

/// Fails when a picture is not like the stored one; the picture is in the folder then. With
/// TESSALINK_REFRESH_PICTURES set it becomes the stored one instead.
void expectStored(const char* name, const Win32Look::Picture& picture) {
    const std::string stored = storedName(name);
    if (std::getenv(cRefresh) != nullptr) return store(stored, *picture);
    std::ifstream file(stored, std::ios::binary);
    const std::vector<BYTE> png{std::istreambuf_iterator<char>(file), {}};
    ASSERT_FALSE(png.empty()) << stored;
    const PixelPicture reference = numbersOf(MemoryBitmap::OfPng(png));
    const PixelPicture shown = numbersOf(*picture);
    const bool isSameSize = reference.width == shown.width && reference.height == shown.height;
    if (isSameSize && worstDifference(reference, shown) <= cPictureTolerance) return;
    const std::string kept = std::string("states-") + name + ".png";
    store(kept, *picture);
    ADD_FAILURE() << "not like " << stored << ": see " << kept
                  << (isSameSize
                          ? "; differs by " + std::to_string(worstDifference(reference, shown))
                          : std::string("; another size"))
                  << ". If that is meant, run with " << cRefresh << "=1.";
}

void tellSettingsChanged() {
    ::SendMessageW(::FindWindowW(L"TessalinkListener", nullptr), WM_SETTINGCHANGE, 0, 0);
    HostFrame::PumpAll(nullptr);
}

/// While it lives, the user has chosen the dark theme.
class DarkTheme {
public:
    DarkTheme() { choose(0); }
    ~DarkTheme() { choose(1); }
    DarkTheme(const DarkTheme&) = delete;
    DarkTheme& operator=(const DarkTheme&) = delete;

private:
    static void choose(DWORD isLight) {
        ::RegSetKeyValueW(HKEY_CURRENT_USER,
                          L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                          L"AppsUseLightTheme", REG_DWORD, &isLight, sizeof(isLight));
        tellSettingsChanged();
    }
};

/// While it lives, windows have a scale of their own.
class OtherScale {
public:
    explicit OtherScale(int dpi) { use(dpi); }
    ~OtherScale() { use(0); }
    OtherScale(const OtherScale&) = delete;
    OtherScale& operator=(const OtherScale&) = delete;

private:
    static void use(int dpi) {
        detail::useDpi(dpi);
        tellSettingsChanged();
    }
};

HostServices quietServices() {
    useWin32();
    ::SetCaretBlinkTime(INFINITE);
    HostServices services = hostServices();
    services.beep = [](UINT) {};
    services.messageBox = [](const char*, UINT) { return IDOK; };
    services.localeValues = [] { return LocaleValues(); };
    return services;
}

class Win32States : public testing::Test {
private:
    HostServicesScope m_services{quietServices()};
};

TEST_F(Win32States, Forms) {
    expectStored("form-texts", Cards::cardOfItems(states::textKinds(), 236));
    expectStored("form-choices", Cards::cardOfItems(states::choiceKinds(), 338));
    expectStored("forms-100", Cards::cardOfForms(1));
}

TEST_F(Win32States, OtherScales) {
    for (const auto& [dpi, name] : {std::pair(144, "forms-150"), {192, "forms-200"}}) {
        const OtherScale scale(dpi);
        expectStored(name, Cards::cardOfForms(1));
    }
}

TEST_F(Win32States, Lists) {
    expectStored("item-lists", Cards::cardOfItemLists());
    expectStored("number-lists", Cards::cardOfNumberLists());
}

TEST_F(Win32States, ProfileGraphs) {
    expectStored("profile-graphs", Cards::cardOfGraphs());
}

TEST_F(Win32States, DarkTheme) {
    const DarkTheme dark;
    expectStored("dark-form-texts", Cards::cardOfItems(states::textKinds(), 236));
    expectStored("dark-form-choices", Cards::cardOfItems(states::choiceKinds(), 338));
    expectStored("dark-item-lists", Cards::cardOfItemLists());
    expectStored("dark-number-lists", Cards::cardOfNumberLists());
}

// What the parent has refused looks like what was there before, in the current item.
TEST_F(Win32States, RefusedItemsLookAsTheyWere) {
    constexpr states::State cCurrent = {"", true, false, true, false};
    constexpr states::State cRefused = {"", true, false, true, true, true};
    for (const states::Kind& kind : states::textKinds()) {
        const auto refused = numbersOf(*Cards::pictureOfItem(kind, cRefused, 236, 1));
        const auto before = numbersOf(*Cards::pictureOfItem(kind, cCurrent, 236, 1));
        EXPECT_EQ(refused.pixels, before.pixels) << kind.typed;
    }
}

}  // namespace
}  // namespace tessalink::test
