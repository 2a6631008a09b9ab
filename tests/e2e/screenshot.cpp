#include "e2e/screenshot.h"

// The picture library's headers need the platform's whole set and its own min and max.
#include <objidl.h>

#include <algorithm>
#include <memory>
namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus
#include <gdiplus.h>

#include "e2e/drive_error.h"
#include "e2e/text.h"

namespace swiftpatch::e2e {
namespace {

/// Keeps the picture library in use as long as it lives.
class PictureLibrary {
public:
    PictureLibrary() {
        const Gdiplus::GdiplusStartupInput input;
        Gdiplus::GdiplusStartup(&token_, &input, nullptr);
    }
    ~PictureLibrary() { Gdiplus::GdiplusShutdown(token_); }
    PictureLibrary(const PictureLibrary&) = delete;
    PictureLibrary& operator=(const PictureLibrary&) = delete;

private:
    ULONG_PTR token_ = 0;
};

// {557CF406-1A04-11D3-9A73-0000F81EF32E}, the library's own writer of PNG files.
constexpr CLSID kPngWriter = {
    0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};

RECT AreaOf(HWND window) {
    RECT area = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    if (window != nullptr) {
        GetWindowRect(window, &area);
    }
    return area;
}

HBITMAP CopyOfScreen(const RECT& area) {
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP picture = CreateCompatibleBitmap(screen, width, height);
    const HGDIOBJ before = SelectObject(memory, picture);
    BitBlt(memory, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    SelectObject(memory, before);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return picture;
}

void SaveAsPng(HBITMAP picture, const std::filesystem::path& file) {
    const PictureLibrary library;
    Gdiplus::Bitmap bitmap(picture, nullptr);
    if (bitmap.Save(file.c_str(), &kPngWriter, nullptr) != Gdiplus::Ok) {
        throw DriveError("cannot write the picture " + PathText(file));
    }
}

}  // namespace

ScreenPicture::ScreenPicture() : picture_(CopyOfScreen(AreaOf(nullptr))) {}

ScreenPicture::~ScreenPicture() { DeleteObject(picture_); }

void ScreenPicture::Save(const std::filesystem::path& file) const { SaveAsPng(picture_, file); }

void SaveScreenshot(HWND window, const std::filesystem::path& file) {
    const std::unique_ptr<void, decltype(&DeleteObject)> picture(CopyOfScreen(AreaOf(window)),
                                                                 &DeleteObject);
    SaveAsPng(static_cast<HBITMAP>(picture.get()), file);
}

}  // namespace swiftpatch::e2e
