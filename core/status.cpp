// Status texts and the message box.
#include "core/status.h"

#include <algorithm>
#include <cstring>

#include "platform/platform.h"
#include "quorvex.h"

namespace qx {
namespace {

// Indexed by the negated code.
constexpr const char* kStatusTexts[] = {
    "Sucessfull",  // Kept: the word is misspelled; callers compare it.
    "Invalid Parm", "File Open",   "Malloc",         "File Read",        "File Write",
    "File Seek",    "File Exists", "File Not Found", "Record Not Found", "Unknown"};

constexpr size_t kMessageSize = 1024;

}  // namespace

const char* statusText(int32_t code) {
  return kStatusTexts[code <= 0 && code >= QX_ERR_UNKNOWN ? -code : -QX_ERR_UNKNOWN];
}

}  // namespace qx

int32_t qxErrDesc(int32_t code, char* buffer) {
  if (buffer == nullptr) return 0;
  const char* text = qx::statusText(code);
  const size_t length = std::strlen(text);
  std::memcpy(buffer, text, length + 1);
  return static_cast<int32_t>(length);
}

int32_t qxErrMessageBox(int32_t code, const char* text) {
  if (text == nullptr) return 0;
  char message[qx::kMessageSize];
  size_t length = static_cast<size_t>(qxErrDesc(code, message));
  message[length++] = ' ';
  const size_t room = std::min(std::strlen(text), sizeof message - 1 - length);
  std::memcpy(message + length, text, room);
  message[length + room] = '\0';
  return qx::showErrorMessage(message);
}
