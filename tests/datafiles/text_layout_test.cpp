#include <cstring>
#include <string>

#include "tests/support/test_support.h"

namespace {

qxTXTinfo readLayout(const std::string& bytes) {
  const qxtest::TemporaryFolder folder;
  folder.write("txtinfo.txt", bytes);
  qxTXTinfo info;
  std::memset(&info, 0x55, sizeof info);
  EXPECT_EQ(qxTXTreadinfo(folder.path.c_str(), "txtinfo.txt", &info), QX_SUCCESS);
  return info;
}

std::string delimiters(const qxTXTinfo& info) {
  return std::string(info.delimit, strnlen(info.delimit, sizeof info.delimit));
}

TEST(TextLayout, ReadsEveryKeyInAnyCase) {
  const qxTXTinfo info = readLayout(
      "delimit = ,\nSKIP = 2\n  dt=1\r\nTi = 2\nop = 3\nhi = 4\nlo = 5\ncl = 6\nvol = 7\noi = 8\n"
      "dtformat = mm_dd_ccyy");
  EXPECT_EQ(delimiters(info), ",");
  const int32_t fields[] = {info.skip, info.dt, info.ti,  info.op, info.hi,
                            info.lo,   info.cl, info.vol, info.oi};
  for (int32_t i = 1; i < 9; ++i) EXPECT_EQ(fields[i], i);
  EXPECT_EQ(info.skip, 2);
  EXPECT_EQ(info.dtformat, 1);
}

TEST(TextLayout, StartsWithABlankAndIgnoresWhatItDoesNotKnow) {
  qxTXTinfo info =
      readLayout("\n   \ncolour = red\nno equals sign\n= 5\ndtformat = XYZ\nopx = 4\n");
  EXPECT_EQ(delimiters(info), " ");
  qxTXTinfo expected = {};
  expected.delimit[0] = ' ';
  EXPECT_EQ(std::memcmp(&info, &expected, sizeof info), 0);

  info = readLayout("dt = 4\ndt = 5 and more = 7\nop = -3\nhi = 99999999999\nlo = x\n");
  EXPECT_EQ(info.dt, 5) << "a later line wins";
  EXPECT_EQ(info.op, -3);
  EXPECT_EQ(info.hi, INT32_MAX);
  EXPECT_EQ(info.lo, 0);
}

TEST(TextLayout, OrderNames) {
  const struct {
    const char* names;
    int32_t order;
  } groups[] = {{"N/A YMD YY_MM_DD YYMMDD CCYY_MM_DD CCYYMMDD ymd", 0},
                {"MDY MMDDYY MM_DD_YY MM_DD_CCYY MMDDCCYY Mdy", 1},
                {"DMY DDMMYY DD_MM_YY DD_MM_CCYY DDMMCCYY dd_mm_ccyy", 2}};
  for (const auto& group : groups) {
    std::string name;
    for (const char* at = group.names;; ++at) {
      if (*at != ' ' && *at != '\0') {
        name += *at;
        continue;
      }
      const std::string other = group.order == 1 ? "DMY" : "MDY";
      EXPECT_EQ(readLayout("dtformat=" + other + "\ndtformat= " + name + " \n").dtformat,
                group.order)
          << name;
      name.clear();
      if (*at == '\0') break;
    }
  }
  EXPECT_EQ(readLayout("dtformat = DMY\ndtformat = Y_M_D\n").dtformat, 2);
}

TEST(TextLayout, Delimiters) {
  EXPECT_EQ(delimiters(readLayout("delimit = \\t_,\n")), "\t ,");
  EXPECT_EQ(delimiters(readLayout("delimit =\n")), "");
  EXPECT_EQ(delimiters(readLayout("delimit = \\,\\x\n")), "\\,\\x");
  EXPECT_EQ(delimiters(readLayout("delimit = =;=\n")), "=;=");
  const std::string sixteen = "abcdefghijklmnop";
  EXPECT_EQ(delimiters(readLayout("delimit = " + sixteen + "qrs\n")), sixteen);
  // The cut counts source characters: the t of the last tab is beyond it.
  EXPECT_EQ(delimiters(readLayout("delimit = abcdefghijklmno\\t\n")), "abcdefghijklmno\\");
  EXPECT_EQ(delimiters(readLayout("delimit = \\t\\t\\t\\t\\t\\t\\t\\t,\n")), "\t\t\t\t\t\t\t\t");
}

TEST(TextLayout, LinesAreCutAtSeventyNineCharacters) {
  // The rest of the first line reads as a line of its own.
  const std::string padding(79 - std::strlen("dt = 1"), ' ');
  const qxTXTinfo info = readLayout("dt = 1" + padding + "op = 2\nhi = 3\n");
  EXPECT_EQ(info.dt, 1);
  EXPECT_EQ(info.op, 2);
  EXPECT_EQ(info.hi, 3);
}

TEST(TextLayout, WrittenFormReadsBack) {
  const qxtest::TemporaryFolder folder;
  qxTXTinfo info = {1, 2, 3, 4, 5, 6, 7, 8, 2, -9, "\t ,;"};
  ASSERT_EQ(qxTXTwriteinfo(folder.path.c_str(), "txtinfo.txt", &info), QX_SUCCESS);
  EXPECT_EQ(qxtest::readFile(folder.file("txtinfo.txt")),
            "delimit  = \\t_,;\n"
            "skip     = -9\n"
            "dt       = 1\n"
            "ti       = 2\n"
            "op       = 3\n"
            "hi       = 4\n"
            "lo       = 5\n"
            "cl       = 6\n"
            "vol      = 7\n"
            "oi       = 8\n"
            "dtformat = DMY\n");
  qxTXTinfo back;
  EXPECT_EQ(qxTXTreadinfo(folder.path.c_str(), "txtinfo.txt", &back), QX_SUCCESS);
  EXPECT_EQ(std::memcmp(&info, &back, sizeof info), 0);

  // A full set has no terminator; an order that does not exist is written as YMD.
  std::memcpy(info.delimit, "abcdefghijklmnop", 16);
  info.dtformat = 7;
  ASSERT_EQ(qxTXTwriteinfo(folder.path.c_str(), "txtinfo.txt", &info), QX_SUCCESS);
  const std::string text = qxtest::readFile(folder.file("txtinfo.txt"));
  EXPECT_TRUE(text.starts_with("delimit  = abcdefghijklmnop\nskip")) << text;
  EXPECT_TRUE(text.ends_with("dtformat = YMD\n")) << text;
}

TEST(TextLayout, FilesThatCannotBeOpened) {
  const qxtest::TemporaryFolder folder;
  qxTXTinfo info;
  std::memset(&info, 0x55, sizeof info);
  EXPECT_EQ(qxTXTreadinfo(folder.path.c_str(), "missing", &info), QX_ERR_FILE_OPEN);
  EXPECT_EQ(info.dt, 0) << "the record is cleared before the file is opened";
  EXPECT_EQ(delimiters(info), " ");
  EXPECT_EQ(qxTXTreadinfo(folder.path.c_str(), "", &info), QX_ERR_FILE_OPEN) << "a folder";
  EXPECT_EQ(qxTXTwriteinfo(folder.path.c_str(), "no\\such\\folder", &info), QX_ERR_FILE_OPEN);
  EXPECT_EQ(qxTXTreadinfo(nullptr, "x", &info), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxTXTreadinfo("x", nullptr, &info), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxTXTreadinfo("x", "y", nullptr), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxTXTwriteinfo("x", "y", nullptr), QX_ERR_INVALID_PARM);
}

}  // namespace
