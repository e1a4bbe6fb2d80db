// The message box off Windows, where a test can read it; on Windows it would wait for a click.
#include <string>

#include "tests/support/test_support.h"

namespace {

std::string shown(int32_t code, const std::string& text) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(qxErrMessageBox(code, text.c_str()), 1);
  return testing::internal::GetCapturedStderr();
}

TEST(ErrMessageBox, ShowsTheStatusAndAsMuchOfTheTextAsFits) {
  EXPECT_EQ(shown(QX_ERR_FILE_OPEN, "prices.txt"), "File Open prices.txt\n");
  EXPECT_EQ(shown(7, ""), "Unknown \n");
  const std::string fits(1023 - std::string("Malloc ").size(), 'x');
  EXPECT_EQ(shown(QX_ERR_MALLOC, fits), "Malloc " + fits + "\n");
  EXPECT_EQ(shown(QX_ERR_MALLOC, fits + "yz"), "Malloc " + fits + "\n");
  EXPECT_EQ(qxErrMessageBox(QX_SUCCESS, nullptr), 0);
}

}  // namespace
