// A window that shows the chart of a price file.
//
//   quorvex_chart_window FOLDER FILE
//
// Left, Right, Page Up, Page Down, Home and End scroll, as the mouse wheel does; Plus and Minus or
// the wheel with Control zoom; L switches the price scale between linear and logarithmic. The
// header shows the values of the bar under the mouse. A click selects a chart or line, with Control
// more than one; Escape selects nothing.
#include <windows.h>
// After windows.h, on whose types it depends.
#include <windowsx.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "crossing_strategy.h"
#include "price_chart.h"

namespace {

const char* const kWindowClass = "QuorvexChart";
const int32_t kNarrowestBar = 1;
const int32_t kWidestBar = 60;
const int32_t kWheelBars = 3;  // bars for each notch of the wheel
const int32_t kNoBar = -1;
const CrossingParameters kParameters = {20, 50, 4.0, 10.0};

struct ChartWindow {
  qxBars bars;
  Averages averages;
  qxOrderSystem system;
  PriceChart chart;
  char title[256];  // header text while the mouse is elsewhere
  int32_t barUnderMouse;
  int32_t lineX;           // x of that bar
  int32_t mouseX, mouseY;  // where the mouse was last
  HDC memory;              // the painted chart, so that the window never flickers
  HBITMAP bitmap;
  HGDIOBJ originalBitmap;
};

// Runs the strategy over a price file and builds its chart.
int32_t loadChart(ChartWindow* window, const char* folder, const char* file) {
  int32_t status = readPrices(folder, file, &window->bars);
  if (status != QX_SUCCESS) return status;
  status = computeAverages(&window->bars, kParameters, &window->averages);
  if (status < 0) return status;
  status = openSystem(&window->system, "Crossing averages", &window->bars);
  if (status != QX_SUCCESS) return status;
  runStrategy(&window->system, window->averages, kParameters);
  status =
      buildPriceChart(&window->chart, window->bars, window->averages, kParameters, window->system);
  std::memcpy(window->title, window->chart.graph.headertext, sizeof window->title);
  return status;
}

void unloadChart(ChartWindow* window) {
  freePriceChart(&window->chart);
  qxOrderSystemClose(&window->system);
  freeAverages(&window->averages);
  qxFreeBars(&window->bars);
}

void releaseBitmap(ChartWindow* window) {
  if (window->memory == nullptr) return;
  SelectObject(window->memory, window->originalBitmap);
  DeleteObject(window->bitmap);
  DeleteDC(window->memory);
  window->memory = nullptr;
}

// Paints the chart into the bitmap. The width of the value axes, and with it the number of bars
// that fit, is known only after painting: when it has changed the chart is painted once more.
void paintChart(ChartWindow* window) {
  if (window->memory == nullptr) return;
  qxGraph* graph = &window->chart.graph;
  qxGraphPaint(graph, window->memory);
  const int32_t first = graph->firstshown;
  showBars(&window->chart, graph->lastshown);
  if (graph->firstshown != first) qxGraphPaint(graph, window->memory);
}

// The values of one bar for the header.
void describeBar(const ChartWindow& window, int32_t bar, char* text, size_t size) {
  const qxBars& bars = window.bars;
  char date[64];
  qxFormatDate(bars.date.data[bar], "yyyy-mm-dd", date);
  const int length =
      std::snprintf(text, size, "%s  %s  open %.2f  high %.2f  low %.2f  close %.2f  volume %.0f m",
                    bars.symbol, date, bars.open.data[bar], bars.high.data[bar], bars.low.data[bar],
                    bars.close.data[bar], window.chart.volume.data[bar]);
  const size_t used = std::min(static_cast<size_t>(std::max(length, 0)), size - 1);
  if (bar < window.averages.slow.firstvalid) return;
  std::snprintf(text + used, size - used, "  averages %.2f, %.2f", window.averages.fast.data[bar],
                window.averages.slow.data[bar]);
}

// Shows the values under the mouse in the header, which alone is painted again, and moves the line
// that follows the mouse.
void pointAt(ChartWindow* window, HWND handle, int32_t x, int32_t y) {
  qxGraph* graph = &window->chart.graph;
  window->mouseX = x;
  window->mouseY = y;
  qxGraphInfo info;
  qxGraphGetXYinfo(graph, window->memory, x, y, &info);
  // Beside the bars the answer names the first one, whose line is then far from the mouse.
  const bool overBars = x >= graph->bararea.left && x < graph->bararea.right &&
                        y >= graph->bararea.top && y < graph->datearea.bottom;
  auto bar = static_cast<int32_t>(info.bar);
  if (!overBars || bar < graph->firstshown || bar > graph->lastshown) bar = kNoBar;
  if (bar == window->barUnderMouse) return;
  window->barUnderMouse = bar;
  window->lineX = info.x;
  if (bar == kNoBar) {
    std::memcpy(graph->headertext, window->title, sizeof window->title);
  } else {
    describeBar(*window, bar, graph->headertext, sizeof graph->headertext);
  }
  qxGraphRefreshHeadFoot(graph, window->memory);
  InvalidateRect(handle, nullptr, FALSE);
}

// Paints everything again; another bar may then be under the mouse.
void repaint(ChartWindow* window, HWND handle) {
  std::memcpy(window->chart.graph.headertext, window->title, sizeof window->title);
  window->barUnderMouse = kNoBar;
  paintChart(window);
  pointAt(window, handle, window->mouseX, window->mouseY);
  InvalidateRect(handle, nullptr, FALSE);
}

void resize(ChartWindow* window, HWND handle, int32_t width, int32_t height) {
  releaseBitmap(window);
  if (width <= 0 || height <= 0) return;  // minimised
  const HDC device = GetDC(handle);
  window->memory = CreateCompatibleDC(device);
  window->bitmap = CreateCompatibleBitmap(device, width, height);
  window->originalBitmap = SelectObject(window->memory, window->bitmap);
  ReleaseDC(handle, device);
  placeChart(&window->chart, width, height);
  repaint(window, handle);
}

// Makes `last` the last bar in view, without leaving the data: the first bar stays at the left
// edge.
void scrollTo(ChartWindow* window, HWND handle, int32_t last) {
  const int32_t highest = window->bars.barsize - 1;
  const int32_t lowest = std::min(barsThatFit(window->chart) - 1, highest);
  last = std::clamp(last, lowest, highest);
  if (last == window->chart.graph.lastshown) return;
  showBars(&window->chart, last);
  repaint(window, handle);
}

void scrollBy(ChartWindow* window, HWND handle, int32_t bars) {
  scrollTo(window, handle, window->chart.graph.lastshown + bars);
}

// Changes the bar width; the last bar in view stays where it is.
void zoom(ChartWindow* window, HWND handle, int32_t steps) {
  qxGraph* graph = &window->chart.graph;
  int32_t width = graph->barwidth;
  // Wide bars change faster.
  for (; steps > 0; --steps) width += std::max(width / 6, 1);
  for (; steps < 0; ++steps) width -= std::max(width / 7, 1);
  width = std::clamp(width, kNarrowestBar, kWidestBar);
  if (width == graph->barwidth) return;
  graph->barwidth = width;
  showBars(&window->chart, graph->lastshown);
  repaint(window, handle);
}

void toggleLogarithmic(ChartWindow* window, HWND handle) {
  qxGraphSubwin pane;
  qxGraphGetSubwin(&window->chart.graph, &pane, 0);
  for (int32_t i = 0; i < pane.chartcount; ++i) {
    qxGraphChart chart;
    qxGraphGetChart(&window->chart.graph, &chart, 0, i);
    chart.scaleflags ^= QX_SCALE_LOG;
    qxGraphSetChart(&window->chart.graph, &chart, 0, i);
  }
  repaint(window, handle);
}

// A click on a chart, line or shape selects it; elsewhere it clears the selection.
void select(ChartWindow* window, HWND handle, int32_t x, int32_t y, bool keep) {
  qxGraphInfo info;
  qxGraphGetXYinfo(&window->chart.graph, window->memory, x, y, &info);
  const bool hit = info.kind >= QX_HIT_CHART && info.kind <= QX_HIT_SHAPE;
  if (!hit && keep) return;
  const int32_t kind = hit ? info.kind : QX_HIT_NOTHING;
  if (qxGraphSelectObject(&window->chart.graph, info.subwin, info.element, kind, keep ? 1 : 0)) {
    repaint(window, handle);
  }
}

void pressKey(ChartWindow* window, HWND handle, WPARAM key) {
  const int32_t page = barsThatFit(window->chart) - 1;
  switch (key) {
    case VK_LEFT:
      return scrollBy(window, handle, -1);
    case VK_RIGHT:
      return scrollBy(window, handle, 1);
    case VK_PRIOR:
      return scrollBy(window, handle, -page);
    case VK_NEXT:
      return scrollBy(window, handle, page);
    case VK_HOME:
      return scrollTo(window, handle, 0);
    case VK_END:
      return scrollTo(window, handle, window->bars.barsize - 1);
    case VK_ADD:
    case VK_OEM_PLUS:
      return zoom(window, handle, 1);
    case VK_SUBTRACT:
    case VK_OEM_MINUS:
      return zoom(window, handle, -1);
    case 'L':
      return toggleLogarithmic(window, handle);
    case VK_ESCAPE:
      qxGraphSelectObject(&window->chart.graph, 0, 0, QX_HIT_NOTHING, 0);
      return repaint(window, handle);
    default:
      return;
  }
}

void turnWheel(ChartWindow* window, HWND handle, WPARAM parameter) {
  const int32_t notches = GET_WHEEL_DELTA_WPARAM(parameter) / WHEEL_DELTA;
  if ((GET_KEYSTATE_WPARAM(parameter) & MK_CONTROL) != 0) {
    zoom(window, handle, notches);
  } else {
    scrollBy(window, handle, -notches * kWheelBars);
  }
}

void paintWindow(const ChartWindow& window, HWND handle) {
  PAINTSTRUCT paint;
  const HDC device = BeginPaint(handle, &paint);
  const qxGraph& graph = window.chart.graph;
  if (window.memory != nullptr) {
    BitBlt(device, 0, 0, graph.area.right, graph.area.bottom, window.memory, 0, 0, SRCCOPY);
  }
  if (window.barUnderMouse != kNoBar) {
    const HPEN pen = CreatePen(PS_DOT, 1, graph.axiscolour);
    const HGDIOBJ original = SelectObject(device, pen);
    SetBkMode(device, TRANSPARENT);
    MoveToEx(device, window.lineX, graph.bararea.top, nullptr);
    LineTo(device, window.lineX, graph.bararea.bottom);
    SelectObject(device, original);
    DeleteObject(pen);
  }
  EndPaint(handle, &paint);
}

LRESULT CALLBACK handleMessage(HWND handle, UINT message, WPARAM wide, LPARAM wider) {
  auto* window = reinterpret_cast<ChartWindow*>(GetWindowLongPtrA(handle, GWLP_USERDATA));
  if (message == WM_CREATE) {
    const auto* create = reinterpret_cast<const CREATESTRUCTA*>(wider);
    SetWindowLongPtrA(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    return 0;
  }
  if (window == nullptr) return DefWindowProcA(handle, message, wide, wider);
  switch (message) {
    case WM_SIZE:
      resize(window, handle, LOWORD(wider), HIWORD(wider));
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      paintWindow(*window, handle);
      return 0;
    case WM_KEYDOWN:
      pressKey(window, handle, wide);
      return 0;
    case WM_MOUSEWHEEL:
      turnWheel(window, handle, wide);
      return 0;
    case WM_MOUSEMOVE:
      pointAt(window, handle, GET_X_LPARAM(wider), GET_Y_LPARAM(wider));
      return 0;
    case WM_LBUTTONDOWN:
      select(window, handle, GET_X_LPARAM(wider), GET_Y_LPARAM(wider), (wide & MK_CONTROL) != 0);
      return 0;
    case WM_DESTROY:
      PostQuitMessage(0);
      return 0;
    default:
      return DefWindowProcA(handle, message, wide, wider);
  }
}

int runWindow(HINSTANCE instance, ChartWindow* window) {
  WNDCLASSA description = {};
  description.lpfnWndProc = handleMessage;
  description.hInstance = instance;
  description.hCursor = LoadCursor(nullptr, IDC_CROSS);
  description.lpszClassName = kWindowClass;
  if (RegisterClassA(&description) == 0) return 1;
  const HWND handle =
      CreateWindowA(kWindowClass, window->bars.symbol, WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                    CW_USEDEFAULT, 1000, 700, nullptr, nullptr, instance, window);
  if (handle == nullptr) return 1;
  ShowWindow(handle, SW_SHOW);
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  releaseBitmap(window);
  return 0;
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
  if (__argc != 3) {
    qxErrMessageBox(QX_ERR_INVALID_PARM, "- call it with a folder and a price file");
    return 2;
  }
  ChartWindow window = {};
  window.barUnderMouse = kNoBar;
  const int32_t status = loadChart(&window, __argv[1], __argv[2]);
  const int result = status == QX_SUCCESS ? runWindow(instance, &window) : 1;
  if (status != QX_SUCCESS) qxErrMessageBox(status, __argv[2]);
  unloadChart(&window);
  return result;
}
