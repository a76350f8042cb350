#include <cstdint>
#include <set>

#include "tests/component/test_container.h"

namespace sylvex::test {
namespace {

constexpr int kWidth = 200;
constexpr int kHeight = 150;

// What a device shows after something has been drawn on it, on a ground of pure magenta.
std::vector<std::uint32_t> Picture(const std::function<void(HDC)>& draw)
{
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, kWidth, -kHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HDC device = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = CreateDIBSection(device, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ before = SelectObject(device, bitmap);
    const HBRUSH magenta = CreateSolidBrush(RGB(255, 0, 255));
    const RECT all{0, 0, kWidth, kHeight};
    FillRect(device, &all, magenta);
    DeleteObject(magenta);
    draw(device);
    GdiFlush();
    const auto* const first = static_cast<const std::uint32_t*>(bits);
    std::vector<std::uint32_t> pixels(first, first + kWidth * kHeight);
    SelectObject(device, before);
    DeleteObject(bitmap);
    DeleteDC(device);
    for (std::uint32_t& pixel : pixels)
        pixel &= 0xFFFFFF;
    return pixels;
}

bool IsGround(const std::vector<std::uint32_t>& pixels, int x, int y)
{
    return pixels[static_cast<std::size_t>(y * kWidth + x)] == 0xFF00FF;
}

std::size_t ColoursOf(const std::vector<std::uint32_t>& pixels)
{
    return std::set<std::uint32_t>(pixels.begin(), pixels.end()).size();
}

HRESULT Draw(const Embedded& embedded, HDC device, const RECTL& bounds)
{
    return embedded.As<IViewObject>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, device, &bounds, nullptr,
                                            nullptr, 0);
}

class View : public InContainer {
protected:
    void SetUp() override
    {
        ASSERT_HRESULT_SUCCEEDED(embedded.SetSite());
        ASSERT_HRESULT_SUCCEEDED(embedded.InitNew());
    }
};

TEST_F(View, OfTheInactiveControlFillsItsPlaceInABitmap)
{
    const auto pixels = Picture([&](HDC device) {
        EXPECT_HRESULT_SUCCEEDED(Draw(embedded, device, {20, 10, 180, 140}));
    });
    // The window's ground, the label's text, the folder's picture.
    EXPECT_GE(ColoursOf(pixels), 4u);
    EXPECT_FALSE(IsGround(pixels, 21, 11));
    EXPECT_FALSE(IsGround(pixels, 178, 138));
    EXPECT_TRUE(IsGround(pixels, 19, 11));
    EXPECT_TRUE(IsGround(pixels, 181, 138));
}

TEST_F(View, GoesThroughMetafilesOldAndNew)
{
    const HDC recorder = CreateMetaFileW(nullptr);
    EXPECT_HRESULT_SUCCEEDED(Draw(embedded, recorder, {0, 0, kWidth, kHeight}));
    const HMETAFILE old = CloseMetaFile(recorder);
    EXPECT_GT(GetMetaFileBitsEx(old, 0, nullptr), kWidth * kHeight * sizeof(std::uint32_t)) << "the picture itself";
    const HDC enhanced = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    EXPECT_HRESULT_SUCCEEDED(Draw(embedded, enhanced, {0, 0, kWidth, kHeight}));
    const HENHMETAFILE file = CloseEnhMetaFile(enhanced);

    const RECT all{0, 0, kWidth, kHeight};
    for (const auto& replayed : {Picture([&](HDC device) { PlayMetaFile(device, old); }),
                                 Picture([&](HDC device) { PlayEnhMetaFile(device, file, &all); })}) {
        EXPECT_GE(ColoursOf(replayed), 4u);
        EXPECT_FALSE(IsGround(replayed, 1, 1));
        EXPECT_FALSE(IsGround(replayed, kWidth - 2, kHeight / 2));
    }
    DeleteMetaFile(old);
    DeleteEnhMetaFile(file);
}

// Counts the notices of one advise sink.
class Sink final : public TestObject<IAdviseSink> {
public:
    int views = 0;
    int closes = 0;

    STDMETHODIMP_(void) OnDataChange(FORMATETC*, STGMEDIUM*) override {}
    STDMETHODIMP_(void) OnViewChange(DWORD, LONG) override { ++views; }
    STDMETHODIMP_(void) OnRename(IMoniker*) override {}
    STDMETHODIMP_(void) OnSave() override {}
    STDMETHODIMP_(void) OnClose() override { ++closes; }
};

TEST_F(View, TellsItsSinkOfChangesAndOfTheEnd)
{
    Sink sink;
    const ComPtr<IViewObject2> view = embedded.As<IViewObject2>();
    ASSERT_HRESULT_SUCCEEDED(view->SetAdvise(DVASPECT_CONTENT, ADVF_PRIMEFIRST, &sink));
    EXPECT_EQ(sink.views, 1);
    embedded.control->put_BackColor(0xFF);
    EXPECT_EQ(sink.views, 2);
    ASSERT_HRESULT_SUCCEEDED(view->SetAdvise(DVASPECT_CONTENT, ADVF_ONLYONCE, &sink));
    embedded.control->put_BackColor(0xFF00);
    embedded.control->put_BackColor(0xFF0000);
    EXPECT_EQ(sink.views, 3);
    ComPtr<IAdviseSink> held;
    EXPECT_HRESULT_SUCCEEDED(view->GetAdvise(nullptr, nullptr, held.Put()));
    EXPECT_FALSE(held);

    DWORD connection = 0;
    ASSERT_HRESULT_SUCCEEDED(embedded.object->Advise(&sink, &connection));
    EXPECT_HRESULT_SUCCEEDED(embedded.object->Close(OLECLOSE_NOSAVE));
    EXPECT_EQ(sink.closes, 1);
    EXPECT_HRESULT_SUCCEEDED(embedded.object->Unadvise(connection));
    EXPECT_EQ(embedded.object->Unadvise(connection), OLE_E_NOCONNECTION);
}

}  // namespace
}  // namespace sylvex::test
