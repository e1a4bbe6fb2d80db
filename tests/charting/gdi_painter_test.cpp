// Painting on Windows devices: pictures against looked-at references, the device's state, graphics
// objects and the areas that devices give.
#include "charting/gdi_painter.h"

#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, on whose types it depends.
#include <ocidl.h>
#include <olectl.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

// windows.h still speaks of near and far pointers.
#undef near
#include "tests/charting/reference_graphs.h"

namespace {

using qxtest::PanesGraph;
using qxtest::StylesGraph;

// A bitmap of 32 bits per pixel and a device that paints into it.
struct Canvas {
  int32_t width, height;
  uint32_t* pixels = nullptr;
  HDC device;
  HBITMAP bitmap;
  HGDIOBJ original;

  Canvas(int32_t w, int32_t h) : width(w), height(h), device(CreateCompatibleDC(nullptr)) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = w;
    info.bmiHeader.biHeight = -h;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    bitmap = CreateDIBSection(device, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    pixels = static_cast<uint32_t*>(bits);
    original = SelectObject(device, bitmap);
  }
  ~Canvas() {
    SelectObject(device, original);
    DeleteObject(bitmap);
    DeleteDC(device);
  }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  uint32_t at(int32_t x, int32_t y) {
    GdiFlush();
    return pixels[y * width + x] & 0xFFFFFF;
  }
};

// The pixels of an uncompressed bitmap file with a palette of 16 colours, from the top down.
std::vector<uint32_t> readBitmap(const std::string& file, int32_t width, int32_t height) {
  const std::string bytes = qxtest::readFile(file, false);
  std::vector<uint32_t> pixels;
  if (bytes.size() < 54) return pixels;
  const auto number = [&](size_t at) {
    uint32_t value;
    std::memcpy(&value, bytes.data() + at, sizeof value);
    return value;
  };
  const size_t begin = number(10), palette = 14 + number(14);
  const size_t stride = (static_cast<size_t>(width) + 7) / 8 * 4;
  if (bytes.size() < begin + stride * static_cast<size_t>(height)) return pixels;
  for (int32_t y = height - 1; y >= 0; --y) {
    for (int32_t x = 0; x < width; ++x) {
      const size_t at = begin + static_cast<size_t>(y) * stride + static_cast<size_t>(x) / 2;
      const auto pair = static_cast<unsigned char>(bytes[at]);
      const unsigned index = x % 2 == 0 ? pair >> 4 : pair & 0xF;
      pixels.push_back(number(palette + 4 * size_t{index}) & 0xFFFFFF);
    }
  }
  return pixels;
}

int32_t channelDistance(uint32_t a, uint32_t b) {
  int32_t most = 0;
  for (int shift = 0; shift < 24; shift += 8) {
    const int32_t difference =
        static_cast<int32_t>(a >> shift & 0xFF) - static_cast<int32_t>(b >> shift & 0xFF);
    most = std::max(most, std::abs(difference));
  }
  return most;
}

void writePicture(const Canvas& canvas, const char* file) {
  std::FILE* out = std::fopen(file, "wb");
  if (out == nullptr) return;
  std::fprintf(out, "P6 %d %d 255\n", canvas.width, canvas.height);
  for (int32_t i = 0; i < canvas.width * canvas.height; ++i) {
    for (int shift = 16; shift >= 0; shift -= 8) {
      std::fputc(static_cast<int>(canvas.pixels[i] >> shift & 0xFF), out);
    }
  }
  std::fclose(out);
}

// Letters may be smoothed differently; everything else stands on its pixels.
void expectReference(qxGraph* graph, const char* name) {
  Canvas canvas(graph->area.right, graph->area.bottom);
  ASSERT_EQ(qxGraphPaint(graph, canvas.device), QX_SUCCESS);
  GdiFlush();
  const auto reference =
      readBitmap(std::string(QX_REFERENCES_DIR) + "/" + name + ".bmp", canvas.width, canvas.height);
  const size_t count = static_cast<size_t>(canvas.width) * static_cast<size_t>(canvas.height);
  size_t differing = reference.size() == count ? 0 : count;
  for (size_t i = 0; i < reference.size() && i < count; ++i) {
    differing += channelDistance(canvas.pixels[i] & 0xFFFFFF, reference[i]) > 48;
  }
  if (differing * 100 > count) writePicture(canvas, (std::string(name) + ".actual.ppm").c_str());
  EXPECT_LE(differing * 100, count) << name << ": " << differing << " of " << count << " pixels";
}

TEST(GdiPainter, PicturesLookAsTheirReferences) {
  PanesGraph panes;
  expectReference(&panes.graph, "panes");
  StylesGraph styles;
  expectReference(&styles.graph, "styles");
}

TEST(GdiPainter, EveryObjectIsDeleted) {
  StylesGraph styles;
  Canvas canvas(300, 240);
  qx::GdiCounts counts = {};
  EXPECT_EQ(qx::paintOnDevice(&styles.graph, canvas.device, &counts), QX_SUCCESS);
  EXPECT_GT(counts.created, 10);
  EXPECT_EQ(counts.created, counts.deleted);
  // More colours than the painter keeps at once.
  for (int32_t i = 0; i < 30; ++i) {
    styles.add(0, QX_CHART_CANDLE, nullptr, static_cast<uint32_t>(i * 1000), 0xFFFFFF, 1 + i % 3);
  }
  counts = {};
  EXPECT_EQ(qx::paintOnDevice(&styles.graph, canvas.device, &counts), QX_SUCCESS);
  EXPECT_GT(counts.created, 40);
  EXPECT_EQ(counts.created, counts.deleted);
  // A picture that cannot be planned.
  styles.graph.area = {0, 0, -1, 5};
  counts = {};
  EXPECT_EQ(qx::paintOnDevice(&styles.graph, canvas.device, &counts), QX_ERR_INVALID_PARM);
  EXPECT_EQ(counts.created, counts.deleted);
}

TEST(GdiPainter, TwentyThousandPaintingsStillPaint) {
  PanesGraph panes;
  panes.graph.area = {0, 0, 90, 100};
  Canvas canvas(90, 100);
  ASSERT_EQ(qxGraphPaint(&panes.graph, canvas.device), QX_SUCCESS);
  GdiFlush();
  const std::vector<uint32_t> first(canvas.pixels, canvas.pixels + 90 * 100);
  for (int i = 0; i < 20000; ++i) {
    ASSERT_EQ(qxGraphPaint(&panes.graph, canvas.device), QX_SUCCESS) << i;
  }
  std::memset(canvas.pixels, 0, 90 * 100 * sizeof(uint32_t));
  ASSERT_EQ(qxGraphPaint(&panes.graph, canvas.device), QX_SUCCESS);
  GdiFlush();
  EXPECT_EQ(std::vector<uint32_t>(canvas.pixels, canvas.pixels + 90 * 100), first);
}

TEST(GdiPainter, TheDeviceIsLeftAsItWas) {
  PanesGraph panes;
  Canvas canvas(300, 240);
  SetTextColor(canvas.device, 0x123456);
  SetTextAlign(canvas.device, TA_CENTER);
  SetROP2(canvas.device, R2_NOT);
  SetMapMode(canvas.device, MM_LOMETRIC);
  const HGDIOBJ pen = GetCurrentObject(canvas.device, OBJ_PEN);
  const HGDIOBJ font = GetCurrentObject(canvas.device, OBJ_FONT);
  // The caller's clip limits the painting and is still there afterwards.
  IntersectClipRect(canvas.device, 0, 0, 1, 1);
  const HRGN clip = CreateRectRgn(100, 100, 200, 200);
  SelectClipRgn(canvas.device, clip);
  const HRGN after = CreateRectRgn(0, 0, 0, 0);
  EXPECT_EQ(qxGraphPaint(&panes.graph, canvas.device), QX_SUCCESS);
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
  // A device of no window counts as a page.
  Canvas canvas(300, 240);
  panes.graph.area = {0, 0, 0, 0};
  EXPECT_EQ(qxGraphPaint(&panes.graph, canvas.device), QX_SUCCESS);
  EXPECT_EQ(panes.graph.area.right, GetDeviceCaps(canvas.device, HORZRES));
  EXPECT_EQ(panes.graph.area.bottom, GetDeviceCaps(canvas.device, VERTRES));

  const HWND window =
      CreateWindowA("STATIC", "", WS_POPUP, 10, 20, 123, 97, nullptr, nullptr, nullptr, nullptr);
  if (window != nullptr) {
    const HDC device = GetDC(window);
    panes.graph.area = {0, 0, 0, 0};
    EXPECT_EQ(qxGraphPaint(&panes.graph, device), QX_SUCCESS);
    EXPECT_EQ(panes.graph.area.right, 123);
    EXPECT_EQ(panes.graph.area.bottom, 97);
    ReleaseDC(window, device);
    DestroyWindow(window);
  }
  EXPECT_EQ(qxGraphPaint(&panes.graph, nullptr), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphPaint(nullptr, canvas.device), QX_ERR_INVALID_PARM);
}

TEST(GdiPainter, HeaderAndFooterAlone) {
  PanesGraph panes;
  Canvas canvas(300, 240);
  ASSERT_EQ(qxGraphPaint(&panes.graph, canvas.device), QX_SUCCESS);
  std::memset(canvas.pixels, 0, 300 * 240 * sizeof(uint32_t));
  EXPECT_EQ(qxGraphRefreshHeadFoot(&panes.graph, canvas.device), QX_SUCCESS);
  EXPECT_EQ(canvas.at(250, 8), 0xD8D8D8U);
  EXPECT_EQ(canvas.at(250, 232), 0xD8D8D8U);
  EXPECT_EQ(canvas.at(150, 120), 0U);
  qxGraph fresh = {};
  EXPECT_EQ(qxGraphRefreshHeadFoot(&fresh, canvas.device), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphRefreshHeadFoot(&panes.graph, nullptr), QX_ERR_INVALID_PARM);
}

TEST(GdiPainter, PicturesAreOlePictures) {
  PanesGraph panes;
  panes.graph.area = {100, 50, 400, 290};  // the picture shows the area wherever it lies
  auto* dispatch = static_cast<IDispatch*>(qxGraphPaintPicture(&panes.graph));
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

  panes.graph.area = {0, 0, 0, 0};
  EXPECT_EQ(qxGraphPaintPicture(&panes.graph), nullptr);
  panes.graph.area = {0, 0, 1 << 23, 1 << 23};
  EXPECT_EQ(qxGraphPaintPicture(&panes.graph), nullptr);
  EXPECT_EQ(qxGraphPaintPicture(nullptr), nullptr);
}

}  // namespace
