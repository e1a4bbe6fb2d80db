#include <windows.h>

#include <cstdio>

#include "chart_bitmap.h"

namespace {

BITMAPINFOHEADER describe(int32_t width, int32_t height) {
  BITMAPINFOHEADER header = {};
  header.biSize = sizeof header;
  header.biWidth = width;
  header.biHeight = height;
  header.biPlanes = 1;
  header.biBitCount = 24;
  header.biSizeImage = static_cast<DWORD>((width * 3 + 3) / 4 * 4) * static_cast<DWORD>(height);
  return header;
}

int32_t writeFile(const char* fileName, const BITMAPINFOHEADER& header, const void* pixels) {
  std::FILE* file = std::fopen(fileName, "wb");
  if (file == nullptr) return QX_ERR_FILE_OPEN;
  BITMAPFILEHEADER front = {};
  front.bfType = 0x4D42;  // "BM"
  front.bfOffBits = sizeof front + sizeof header;
  front.bfSize = front.bfOffBits + header.biSizeImage;
  bool written = std::fwrite(&front, sizeof front, 1, file) == 1;
  written = std::fwrite(&header, sizeof header, 1, file) == 1 && written;
  written = std::fwrite(pixels, header.biSizeImage, 1, file) == 1 && written;
  return std::fclose(file) == 0 && written ? QX_SUCCESS : QX_ERR_FILE_WRITE;
}

}  // namespace

int32_t writeChartBitmap(qxGraph* graph, const char* fileName) {
  const HDC device = CreateCompatibleDC(nullptr);
  if (device == nullptr) return QX_ERR_UNKNOWN;
  BITMAPINFO info = {};
  info.bmiHeader = describe(graph->area.right, graph->area.bottom);
  void* pixels = nullptr;
  const HBITMAP bitmap = CreateDIBSection(device, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
  int32_t status = QX_ERR_MALLOC;
  if (bitmap != nullptr) {
    const HGDIOBJ original = SelectObject(device, bitmap);
    status = qxGraphPaint(graph, device);
    GdiFlush();
    SelectObject(device, original);
    if (status == QX_SUCCESS) status = writeFile(fileName, info.bmiHeader, pixels);
    DeleteObject(bitmap);
  }
  DeleteDC(device);
  return status;
}
