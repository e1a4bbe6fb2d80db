// The message box on Windows: a second thread waits for it, reads it and presses its button.
#include <windows.h>  // defines "near"
#undef near

#include <string>
#include <thread>

#include "tests/support/test_support.h"

namespace {

constexpr DWORD kPause = 20;  // milliseconds between two looks for the box
constexpr int kLooks = 1500;

struct Box {
  HWND window = nullptr;
  std::string title, text;
  int buttons = 0;
};

std::string windowText(HWND window) {
  char text[2048] = "";
  GetWindowTextA(window, text, sizeof text);
  return text;
}

BOOL CALLBACK noteDialog(HWND window, LPARAM box) {
  char name[64] = "";
  GetClassNameA(window, name, sizeof name);
  const bool dialog = std::string(name) == "#32770" && IsWindowVisible(window) != 0;
  if (dialog) reinterpret_cast<Box*>(box)->window = window;
  return dialog ? FALSE : TRUE;
}

// Waits for a dialog of the thread, whatever its title, so that a wrong one does not stay open.
void readAndClose(DWORD thread, Box* box) {
  for (int look = 0; look < kLooks && box->window == nullptr; ++look) {
    Sleep(kPause);
    EnumThreadWindows(thread, noteDialog, reinterpret_cast<LPARAM>(box));
  }
  if (box->window == nullptr) return;
  box->title = windowText(box->window);
  const auto next = [&](HWND child, const char* kind) {
    return FindWindowExA(box->window, child, kind, nullptr);
  };
  for (HWND text = next(nullptr, "Static"); text != nullptr; text = next(text, "Static")) {
    box->text += windowText(text);
  }
  HWND pressed = nullptr;
  for (HWND button = next(nullptr, "Button"); button != nullptr; button = next(button, "Button")) {
    if (IsWindowVisible(button) == 0) continue;
    ++box->buttons;
    pressed = button;
  }
  PostMessageA(pressed, BM_CLICK, 0, 0);
}

Box shown(int32_t code, const std::string& text) {
  Box box;
  std::thread reader(readAndClose, GetCurrentThreadId(), &box);
  EXPECT_EQ(qxErrMessageBox(code, text.c_str()), IDOK);
  reader.join();
  return box;
}

TEST(ErrMessageBox, OpensABoxWithTheStatusAndAsMuchOfTheTextAsFits) {
  const Box box = shown(QX_ERR_FILE_OPEN, "prices.txt");
  EXPECT_EQ(box.title, "Error");
  EXPECT_EQ(box.text, "File Open prices.txt");
  EXPECT_EQ(box.buttons, 1);

  const std::string fits = "Malloc " + std::string(1023 - 7, 'x');
  EXPECT_EQ(shown(QX_ERR_MALLOC, fits.substr(7) + "yz").text, fits);
  EXPECT_EQ(qxErrMessageBox(QX_SUCCESS, nullptr), 0);
}

}  // namespace
