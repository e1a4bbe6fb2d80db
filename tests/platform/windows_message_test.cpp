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
  HWND button = nullptr;
};

std::string windowText(HWND window) {
  char text[2048] = "";
  GetWindowTextA(window, text, sizeof text);
  return text;
}

std::string windowClass(HWND window) {
  char name[64] = "";
  GetClassNameA(window, name, sizeof name);
  return name;
}

BOOL CALLBACK noteDialog(HWND window, LPARAM box) {
  const bool dialog = windowClass(window) == "#32770" && IsWindowVisible(window) != 0;
  if (dialog) reinterpret_cast<Box*>(box)->window = window;
  return dialog ? FALSE : TRUE;
}

BOOL CALLBACK noteChild(HWND child, LPARAM address) {
  Box* box = reinterpret_cast<Box*>(address);
  if (windowClass(child) == "Static") box->text += windowText(child);
  if (windowClass(child) == "Button" && IsWindowVisible(child) != 0) {
    ++box->buttons;
    box->button = child;
  }
  return TRUE;
}

// Waits for a dialog of the thread, whatever its title, so that a wrong one does not stay open.
void readAndClose(DWORD thread, Box* box) {
  for (int look = 0; look < kLooks && box->window == nullptr; ++look) {
    Sleep(kPause);
    EnumThreadWindows(thread, noteDialog, reinterpret_cast<LPARAM>(box));
  }
  if (box->window == nullptr) return;
  box->title = windowText(box->window);
  EnumChildWindows(box->window, noteChild, reinterpret_cast<LPARAM>(box));
  PostMessageA(box->button, BM_CLICK, 0, 0);
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

  const std::string head = "Malloc ";
  const std::string fits(1023 - head.size(), 'x');
  EXPECT_EQ(shown(QX_ERR_MALLOC, fits + "yz").text, head + fits);
  EXPECT_EQ(qxErrMessageBox(QX_SUCCESS, nullptr), 0);
}

}  // namespace
