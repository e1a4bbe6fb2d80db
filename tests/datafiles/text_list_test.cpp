#include <chrono>
#include <filesystem>
#include <string>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

std::string padded(std::string text, size_t width) {
  text.resize(width, ' ');
  return text + " ";
}

std::string today(const char* format) {
  const std::time_t now = std::time(nullptr);
  const std::tm* local = std::localtime(&now);
  char text[16];
  std::strftime(text, sizeof text, format, local);
  return text;
}

TEST(TextList, ListsByPatternAndLeavesTheLayoutOut) {
  const TemporaryFolder folder;
  for (const char* name : {"b.txt", "a.CSV", "x.dat", "TxtInfo.txt", "c.prn", "d.asc"}) {
    folder.write(name, "1\n");
  }
  std::filesystem::create_directory(folder.file("folder.csv"));
  const std::string out = folder.file("listing");
  const std::string header = padded("File Name", 12) + padded("Symbol", 16) +
                             padded("Description", 48) + "Frequency First Date Last Date \n" +
                             std::string(12, '-') + " " + std::string(16, '-') + " " +
                             std::string(48, '-') + " --------- ---------- ----------\n";
  ASSERT_EQ(qxTXTlist(folder, out.c_str(), 0), QX_SUCCESS);
  std::string expected = header;
  for (const std::string name : {"d.asc", "a.CSV", "c.prn", "b.txt"}) {
    expected += padded(name, 12) + padded(name.substr(0, 1), 16) + padded(name, 48) +
                "Unknown   Unknown    " + today("%Y/%m/%d") + "\n";
  }
  EXPECT_EQ(readFile(out), expected);

  ASSERT_EQ(qxTXTlist("no such folder", out.c_str(), -1), QX_SUCCESS);
  EXPECT_EQ(readFile(out), expected + header) << "appended, the header alone";

  // Long names are cut to their columns; the short name is the file system's.
  const TemporaryFolder other;
  other.write(std::string(60, 'n') + ".txt", "1\n");
  for (const int32_t order : {2, 3, -1}) qxSetDefaultDateFormat(order);
  ASSERT_EQ(qxTXTlist((" " + other.path + "\n").c_str(), out.c_str(), 0), QX_SUCCESS);
  qxSetDefaultDateFormat(0);
  const std::string row = readFile(out).substr(header.size());
  EXPECT_EQ(row.size(), 111u);
  EXPECT_EQ(row.substr(30),
            std::string(48, 'n') + " Unknown   Unknown    " + today("%d/%m/%Y") + "\n");
  expectNullsRefused("qxTXTlist", qxTXTlist, QX_ERR_INVALID_PARM, "", out.c_str(), 0);
}

TEST(TextWrite, ReplacesAndAppends) {
  const TemporaryFolder folder;
  const std::string out = folder.file("out.txt");
  EXPECT_EQ(qxTXTwriteline("first %s", out.c_str(), 0), QX_SUCCESS);
  EXPECT_EQ(qxTXTwrite("second", out.c_str(), -1), QX_SUCCESS);
  EXPECT_EQ(qxTXTwriteline("", out.c_str(), 1), QX_SUCCESS);
  EXPECT_EQ(readFile(out), "first %s\nsecond\n");
  for (auto* write : {qxTXTwrite, qxTXTwriteline}) {
    EXPECT_EQ(write("new", out.c_str(), 0), QX_SUCCESS);
    EXPECT_EQ(readFile(out), write == qxTXTwrite ? "new" : "new\n");
    EXPECT_EQ(write("x", "STDOUT/x", 0), QX_ERR_FILE_OPEN) << "longer than STDOUT";
    expectNullsRefused("write", write, QX_ERR_INVALID_PARM, "x", out.c_str(), 0);
  }

  ::testing::internal::CaptureStdout();
  EXPECT_EQ(qxTXTwriteline("to the screen", "stdOut", 0), QX_SUCCESS);
  EXPECT_EQ(qxTXTwrite("and again", "STDOUT", 1), QX_SUCCESS);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "to the screen\nand again");
}

}  // namespace
