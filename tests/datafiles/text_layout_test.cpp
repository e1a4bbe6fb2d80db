#include <cstring>
#include <string>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

qxTXTinfo readLayout(const std::string& bytes) {
  const TemporaryFolder folder;
  folder.write("txtinfo.txt", bytes);
  qxTXTinfo info;
  std::memset(&info, 0x55, sizeof info);
  EXPECT_EQ(qxTXTreadinfo(folder.path.c_str(), "txtinfo.txt", &info), QX_SUCCESS);
  return info;
}

TEST(TextLayout, ReadsEveryKeyInAnyCase) {
  const qxTXTinfo info = readLayout(
      "delimit = ,\nSKIP = 9\n  dt=1\r\nTi = 2\nop = 3\nhi = 4\nlo = 5\ncl = 6\nvol = 7\noi = 8\n"
      "dtformat = mm_dd_ccyy");
  const qxTXTinfo expected = {1, 2, 3, 4, 5, 6, 7, 8, 1, 9, ","};
  EXPECT_EQ(std::memcmp(&info, &expected, sizeof info), 0);
}

TEST(TextLayout, StartsWithABlankAndIgnoresWhatItDoesNotKnow) {
  const qxTXTinfo blank = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, " "};
  qxTXTinfo info = readLayout("\n   \ncolour = red\n= 5\ndtformat = XYZ\nopx = 4\n");
  EXPECT_EQ(std::memcmp(&info, &blank, sizeof info), 0);
  info = readLayout(
      "dt = 4\nno equals sign\ndt = 5 and more = 7\nop = -3\nhi = 99999999999\nlo = x\n");
  EXPECT_EQ(info.dt, 5) << "a later line wins";
  EXPECT_EQ(info.op, -3);
  EXPECT_EQ(info.hi, INT32_MAX);
  EXPECT_EQ(info.lo, 0);
}

TEST(TextLayout, OrderNames) {
  const std::vector<const char*> names[] = {
      {"N/A", "YMD", "YY_MM_DD", "YYMMDD", "CCYY_MM_DD", "CCYYMMDD", "ymd"},
      {"MDY", "MMDDYY", "MM_DD_YY", "MM_DD_CCYY", "MMDDCCYY", "Mdy"},
      {"DMY", "DDMMYY", "DD_MM_YY", "DD_MM_CCYY", "DDMMCCYY", "dd_mm_ccyy"}};
  for (int32_t order = 0; order < 3; ++order) {
    const std::string other = order == 1 ? "dtformat=DMY\n" : "dtformat=MDY\n";
    for (const char* name : names[order]) {
      EXPECT_EQ(readLayout(other + "dtformat= " + name + " \n").dtformat, order) << name;
    }
  }
  EXPECT_EQ(readLayout("dtformat = DMY\ndtformat = Y_M_D\n").dtformat, 2);
}

TEST(TextLayout, Delimiters) {
  const std::string sixteen = "abcdefghijklmnop";
  const std::pair<std::string, std::string> cases[] = {
      {"delimit = \\t_,", "\t ,"},
      {"delimit =", ""},
      {"delimit = \\,\\T", "\\,\\T"},
      {"delimit = \t", "\t"},
      {"delimit = =;=", "=;="},
      {"delimit = " + sixteen + "qrs", sixteen},
      // The cut counts source characters: the t of the last tab is beyond it.
      {"delimit = abcdefghijklmno\\t", "abcdefghijklmno\\"},
      {"delimit = \\t\\t\\t\\t\\t\\t\\t\\t,", "\t\t\t\t\t\t\t\t"}};
  for (const auto& [line, expected] : cases) {
    const qxTXTinfo info = readLayout(line + "\n");
    EXPECT_EQ(std::string(info.delimit, strnlen(info.delimit, sizeof info.delimit)), expected);
  }
}

TEST(TextLayout, LinesAreCutAtSeventyNineCharacters) {
  // The rest of the first line reads as a line of its own.
  const std::string padding(79 - std::strlen("dt =1"), ' ');
  const qxTXTinfo info = readLayout("dt =" + padding + "1op = 2\nhi = 3\n");
  const qxTXTinfo expected = {1, 0, 2, 3, 0, 0, 0, 0, 0, 0, " "};
  EXPECT_EQ(std::memcmp(&info, &expected, sizeof info), 0);
}

TEST(TextLayout, WrittenFormReadsBack) {
  const auto text = [](const qxTXTinfo& info) {
    return written([&](const char* path) {
      qxTXTwrite("replaced", path, 0);
      return qxTXTwriteinfo("", path, &info);
    });
  };
  qxTXTinfo info = {1, 2, 3, 4, 5, 6, 7, 8, 2, -9, "\t ,;"};
  EXPECT_EQ(text(info),
            "delimit  = \\t_,;\nskip     = -9\ndt       = 1\nti       = 2\nop       = 3\n"
            "hi       = 4\nlo       = 5\ncl       = 6\nvol      = 7\noi       = 8\n"
            "dtformat = DMY\n");
  const qxTXTinfo back = readLayout(text(info));
  EXPECT_EQ(std::memcmp(&info, &back, sizeof info), 0);

  // A full set has no terminator; an order that does not exist is written as YMD.
  std::memcpy(info.delimit, "abcdefghijklmnop", 16);
  info.dtformat = 7;
  EXPECT_TRUE(text(info).starts_with("delimit  = abcdefghijklmnop\nskip")) << text(info);
  EXPECT_TRUE(text(info).ends_with("dtformat = YMD\n")) << text(info);
}

TEST(TextLayout, FilesThatCannotBeOpened) {
  constexpr int32_t kRefused = QX_ERR_INVALID_PARM;
  const TemporaryFolder folder;
  const qxTXTinfo blank = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, " "};
  qxTXTinfo info;
  std::memset(&info, 0x55, sizeof info);
  EXPECT_EQ(qxTXTreadinfo(folder, "missing", &info), QX_ERR_FILE_OPEN);
  EXPECT_EQ(std::memcmp(&info, &blank, sizeof info), 0) << "cleared before the file is opened";
  EXPECT_EQ(qxTXTreadinfo(folder, "", &info), QX_ERR_FILE_OPEN) << "a folder";
  EXPECT_EQ(qxTXTwriteinfo(folder, "no\\such\\folder", &info), QX_ERR_FILE_OPEN);
  expectNullsRefused("qxTXTreadinfo", qxTXTreadinfo, kRefused, "x", "y", &info);
  expectNullsRefused("qxTXTwriteinfo", qxTXTwriteinfo, kRefused, "x", "y", &info);
}

}  // namespace
