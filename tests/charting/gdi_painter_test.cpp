// Painting on Windows devices: pictures against looked-at references, the device's state, graphics
// objects and the areas that devices give.
#include "charting/gdi_painter.h"

#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, on whose types it depends.
#include <ocidl.h>
#include <olectl.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

// windows.h still speaks of near and far pointers.
#undef near
#include "tests/charting/reference_graphs.h"

namespace {

using qxtest::PanesGraph;
using qxtest::StylesGraph;

// A bitmap of 32 bits per pixel and a device that paints into it, at first black.
struct Canvas {
  int32_t width, height;
  HDC device;
  HBITMAP bitmap;
  HGDIOBJ original;

  explicit Canvas(int32_t w = 300, int32_t h = 240)
      : width(w), height(h), device(CreateCompatibleDC(nullptr)) {
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof info.bmiHeader, w, -h, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    bitmap = CreateDIBSection(device, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    original = SelectObject(device, bitmap);
  }
  ~Canvas() {
    SelectObject(device, original);
    DeleteObject(bitmap);
    DeleteDC(device);
  }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  // The colours, as 0x00RRGGBB, from the top down.
  std::vector<uint32_t> pixels() const {
    GdiFlush();
    DIBSECTION section = {};
    GetObjectA(bitmap, sizeof section, &section);
    const auto* first = static_cast<const uint32_t*>(section.dsBm.bmBits);
    std::vector<uint32_t> colours(first, first + width * height);
    for (uint32_t& colour : colours) colour &= 0xFFFFFF;
    return colours;
  }
  uint32_t at(int32_t x, int32_t y) const { return pixels()[static_cast<size_t>(y * width + x)]; }

  // Draws the bitmap of a file.
  void load(const std::string& file) {
    const HANDLE picture = LoadImageA(nullptr, file.c_str(), IMAGE_BITMAP, 0, 0,
                                      LR_LOADFROMFILE | LR_CREATEDIBSECTION);
    ASSERT_NE(picture, nullptr) << file;
    EXPECT_TRUE(DrawStateA(device, nullptr, nullptr, reinterpret_cast<LPARAM>(picture), 0, 0, 0, 0,
                           0, DST_BITMAP));
    DeleteObject(picture);
  }
};

int32_t channelDistance(uint32_t a, uint32_t b) {
  int32_t most = 0;
  for (int shift = 0; shift < 24; shift += 8) {
    const int32_t difference =
        static_cast<int32_t>(a >> shift & 0xFF) - static_cast<int32_t>(b >> shift & 0xFF);
    most = std::max(most, std::abs(difference));
  }
  return most;
}

// Letters may be smoothed differently; everything else stands on its pixels.
void expectReference(qxGraph* graph, const std::string& name) {
  Canvas canvas, reference;
  ASSERT_EQ(qxGraphPaint(graph, canvas.device), QX_SUCCESS);
  reference.load(QX_REFERENCES_DIR "/" + name + ".bmp");
  const auto painted = canvas.pixels(), expected = reference.pixels();
  size_t differing = 0;
  for (size_t i = 0; i < painted.size(); ++i) {
    differing += channelDistance(painted[i], expected[i]) > 48;
  }
  if (differing * 100 <= painted.size()) return;
  const std::string file = name + ".actual.ppm";
  std::FILE* out = std::fopen(file.c_str(), "wb");
  std::fprintf(out, "P6 %d %d 255\n", canvas.width, canvas.height);
  for (const uint32_t colour : painted) {
    for (const int shift : {16, 8, 0}) std::fputc(static_cast<int>(colour >> shift & 0xFF), out);
  }
  std::fclose(out);
  ADD_FAILURE() << differing << " pixels differ; the picture is kept as " << file;
}

TEST(GdiPainter, PicturesLookAsTheirReferences) {
  expectReference(PanesGraph(), "panes");
  expectReference(StylesGraph(), "styles");
}

TEST(GdiPainter, EveryObjectIsDeleted) {
  StylesGraph styles;
  Canvas canvas;
  const auto expectDeleted = [&](int32_t status, int32_t least) {
    qx::GdiCounts counts = {};
    EXPECT_EQ(qx::paintOnDevice(styles, canvas.device, &counts), status);
    EXPECT_GE(counts.created, least);
    EXPECT_EQ(counts.created, counts.deleted);
  };
  expectDeleted(QX_SUCCESS, 11);
  // More colours than the painter keeps at once.
  for (int32_t i = 0; i < 30; ++i) {
    styles.addChart(0, QX_CHART_CANDLE, nullptr, static_cast<uint32_t>(i * 1000), 0xFFFFFF,
                    1 + i % 3);
  }
  expectDeleted(QX_SUCCESS, 41);
  // A picture that cannot be planned.
  styles->area = {0, 0, -1, 5};
  expectDeleted(QX_ERR_INVALID_PARM, 0);
}

TEST(GdiPainter, TwentyThousandPaintingsStillPaint) {
  PanesGraph panes;
  panes->area = {0, 0, 90, 100};
  Canvas first(90, 100), last(90, 100);
  ASSERT_EQ(qxGraphPaint(panes, first.device), QX_SUCCESS);
  for (int i = 0; i < 20000; ++i) {
    ASSERT_EQ(qxGraphPaint(panes, first.device), QX_SUCCESS) << i;
  }
  ASSERT_EQ(qxGraphPaint(panes, last.device), QX_SUCCESS);
  EXPECT_EQ(first.pixels(), last.pixels());
}

TEST(GdiPainter, TheDeviceIsLeftAsItWas) {
  PanesGraph panes;
  Canvas canvas;
  SetTextColor(canvas.device, 0x123456);
  SetTextAlign(canvas.device, TA_CENTER);
  SetROP2(canvas.device, R2_NOT);
  SetMapMode(canvas.device, MM_LOMETRIC);
  const HGDIOBJ pen = GetCurrentObject(canvas.device, OBJ_PEN);
  const HGDIOBJ font = GetCurrentObject(canvas.device, OBJ_FONT);
  // The caller's clip limits the painting and is still there afterwards.
  IntersectClipRect(canvas.device, 0, 0, 1, 1);
  const HRGN clip = CreateRectRgn(100, 100, 200, 200), after = CreateRectRgn(0, 0, 0, 0);
  SelectClipRgn(canvas.device, clip);
  EXPECT_EQ(qxGraphPaint(panes, canvas.device), QX_SUCCESS);
  EXPECT_EQ(GetTextColor(canvas.device), 0x123456U);
  EXPECT_EQ(GetTextAlign(canvas.device), static_cast<UINT>(TA_CENTER));
  EXPECT_EQ(GetROP2(canvas.device), R2_NOT);
  EXPECT_EQ(GetMapMode(canvas.device), MM_LOMETRIC);
  EXPECT_EQ(GetCurrentObject(canvas.device, OBJ_PEN), pen);
  EXPECT_EQ(GetCurrentObject(canvas.device, OBJ_FONT), font);
  EXPECT_EQ(GetClipRgn(canvas.device, after), 1);
  EXPECT_TRUE(EqualRgn(clip, after));
  EXPECT_EQ(canvas.at(50, 50), 0U);
  EXPECT_NE(canvas.at(150, 150), 0U);
  DeleteObject(clip);
  DeleteObject(after);
}

TEST(GdiPainter, AreasThatDevicesGive) {
  PanesGraph panes;
  const auto expectArea = [&](HDC device, int32_t width, int32_t height) {
    panes->area = {0, 0, 0, 0};
    EXPECT_EQ(qxGraphPaint(panes, device), QX_SUCCESS);
    EXPECT_EQ(panes->area.right, width);
    EXPECT_EQ(panes->area.bottom, height);
  };
  // A device of no window counts as a page.
  Canvas canvas;
  expectArea(canvas.device, GetDeviceCaps(canvas.device, HORZRES),
             GetDeviceCaps(canvas.device, VERTRES));
  const HWND window =
      CreateWindowA("STATIC", "", WS_POPUP, 10, 20, 123, 97, nullptr, nullptr, nullptr, nullptr);
  if (window != nullptr) {
    const HDC device = GetDC(window);
    expectArea(device, 123, 97);
    ReleaseDC(window, device);
    DestroyWindow(window);
  }
  EXPECT_EQ(qxGraphPaint(panes, nullptr), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphPaint(nullptr, canvas.device), QX_ERR_INVALID_PARM);
}

TEST(GdiPainter, HeaderAndFooterAlone) {
  PanesGraph panes;
  Canvas whole, canvas;
  ASSERT_EQ(qxGraphPaint(panes, whole.device), QX_SUCCESS);
  EXPECT_EQ(qxGraphRefreshHeadFoot(panes, canvas.device), QX_SUCCESS);
  EXPECT_EQ(canvas.at(250, 8), 0xD8D8D8U);
  EXPECT_EQ(canvas.at(250, 232), 0xD8D8D8U);
  EXPECT_EQ(canvas.at(150, 120), 0U);
  qxGraph fresh = {};
  EXPECT_EQ(qxGraphRefreshHeadFoot(&fresh, canvas.device), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphRefreshHeadFoot(panes, nullptr), QX_ERR_INVALID_PARM);
}

TEST(GdiPainter, PicturesAreOlePictures) {
  PanesGraph panes;
  panes->area = {100, 50, 400, 290};  // the picture shows the area wherever it lies
  auto* dispatch = static_cast<IDispatch*>(qxGraphPaintPicture(panes));
  ASSERT_NE(dispatch, nullptr);
  constexpr IID kPicture = {
      0x7BF80980, 0xBF32, 0x101A, {0x8B, 0xBB, 0x00, 0xAA, 0x00, 0x30, 0x0C, 0xAB}};
  void* found = nullptr;
  ASSERT_EQ(dispatch->QueryInterface(kPicture, &found), S_OK);
  auto* picture = static_cast<IPicture*>(found);
  SHORT type = 0;
  EXPECT_EQ(picture->get_Type(&type), S_OK);
  EXPECT_EQ(type, PICTYPE_BITMAP);
  OLE_HANDLE handle = 0;
  EXPECT_EQ(picture->get_Handle(&handle), S_OK);
  const auto bitmap = reinterpret_cast<HBITMAP>(static_cast<uintptr_t>(handle));
  BITMAP facts = {};
  EXPECT_NE(GetObjectA(bitmap, sizeof facts, &facts), 0);
  EXPECT_EQ(facts.bmWidth, 300);
  EXPECT_EQ(facts.bmHeight, 240);
  const HDC device = CreateCompatibleDC(nullptr);
  const HGDIOBJ original = SelectObject(device, bitmap);
  EXPECT_EQ(GetPixel(device, 250, 8), 0xD8D8D8U);
  SelectObject(device, original);
  DeleteDC(device);
  picture->Release();
  EXPECT_EQ(dispatch->Release(), 0U);

  for (const qxRect area : {qxRect{0, 0, 0, 0}, qxRect{0, 0, 1 << 23, 1 << 23}}) {
    panes->area = area;
    EXPECT_EQ(qxGraphPaintPicture(panes), nullptr);
  }
  EXPECT_EQ(qxGraphPaintPicture(nullptr), nullptr);
}

}  // namespace
