#include "core/line_reader.h"

#include <memory>
#include <string>
#include <vector>

#include "tests/support/test_support.h"

namespace {

// The lines of a file of these bytes; a blank line is shown as "<blank>".
std::vector<std::string> linesOf(const std::string& bytes, size_t maxLength) {
  const qxtest::TemporaryFolder folder;
  auto reader = std::make_unique<qx::LineReader>();
  EXPECT_EQ(qx::openLines(reader.get(), folder.write("lines", bytes).c_str(), maxLength),
            QX_SUCCESS);
  std::vector<std::string> lines;
  qx::Line line;
  while (qx::readLine(reader.get(), &line)) {
    lines.push_back(line.blank ? "<blank>" : std::string(line.text));
  }
  EXPECT_EQ(reader->status, QX_SUCCESS);
  qx::closeLines(reader.get());
  return lines;
}

using Lines = std::vector<std::string>;

TEST(LineReader, EndsOfLines) {
  EXPECT_EQ(linesOf("", 10), Lines{});
  EXPECT_EQ(linesOf("a\nb\r\nc", 10), (Lines{"a", "b", "c"}));
  EXPECT_EQ(linesOf("\n\r\n \n", 10), (Lines{"<blank>", "<blank>", " "}));
  EXPECT_EQ(linesOf("a\rb\r\r\nc\r", 10), (Lines{"a\rb\r", "c\r"})) << "a lone CR is a character";
  EXPECT_EQ(linesOf(std::string("a\0b\n\0\nc", 7), 10), (Lines{"a", "", "c"}));
  EXPECT_EQ(linesOf("a\nb\x1A\nc\n", 10), (Lines{"a", "b"}));
}

TEST(LineReader, LongLinesAreReadAsSeveral) {
  // At most five characters, the newline included.
  EXPECT_EQ(linesOf("1234\n", 5), Lines{"1234"});
  EXPECT_EQ(linesOf("1234\r\n", 5), Lines{"1234"});
  EXPECT_EQ(linesOf("12345\n6", 5), (Lines{"12345", "<blank>", "6"}));
  EXPECT_EQ(linesOf("12345\r\n6", 5), (Lines{"12345", "<blank>", "6"}));
  EXPECT_EQ(linesOf("123456\n", 5), (Lines{"12345", "6"}));
  EXPECT_EQ(linesOf("12345", 5), Lines{"12345"});
  EXPECT_EQ(linesOf("12345678901", 5), (Lines{"12345", "67890", "1"}));
  EXPECT_EQ(linesOf("1234\r", 5), Lines{"1234\r"});
}

TEST(LineReader, PositionsSurviveTheBuffer) {
  // Some 400 KB, so that the buffer is filled several times; every length of line up to 60.
  std::string bytes;
  std::vector<std::string> expected;
  for (int i = 0; i < 12000; ++i) {
    expected.push_back(std::to_string(i) + std::string(static_cast<size_t>(i % 60), 'x'));
    bytes += expected.back() + (i % 3 == 0 ? "\r\n" : "\n");
  }
  const qxtest::TemporaryFolder folder;
  auto reader = std::make_unique<qx::LineReader>();
  ASSERT_EQ(qx::openLines(reader.get(), folder.write("lines", bytes).c_str(), 254), QX_SUCCESS);
  std::vector<int64_t> positions;
  qx::Line line;
  for (const std::string& text : expected) {
    positions.push_back(qx::linePosition(*reader));
    ASSERT_TRUE(qx::readLine(reader.get(), &line));
    ASSERT_EQ(line.text, text);
  }
  EXPECT_FALSE(qx::readLine(reader.get(), &line));
  for (size_t i : {size_t{11999}, size_t{0}, size_t{7000}, size_t{6999}, size_t{1}}) {
    qx::seekLine(reader.get(), positions[i]);
    ASSERT_TRUE(qx::readLine(reader.get(), &line));
    EXPECT_EQ(line.text, expected[i]);
  }
  qx::dropLines(reader.get(), 10);
  ASSERT_TRUE(qx::readLine(reader.get(), &line));
  EXPECT_EQ(line.text, expected[12]);
  qx::dropLines(reader.get(), INT64_MAX);
  EXPECT_FALSE(qx::readLine(reader.get(), &line));
  qx::closeLines(reader.get());
}

TEST(LineReader, FilesThatCannotBeRead) {
  const qxtest::TemporaryFolder folder;
  auto reader = std::make_unique<qx::LineReader>();
  EXPECT_EQ(qx::openLines(reader.get(), folder.file("missing").c_str(), 254), QX_ERR_FILE_OPEN);
  EXPECT_EQ(qx::openLines(reader.get(), folder.path.c_str(), 254), QX_ERR_FILE_OPEN);
#if !defined(_WIN32)  // whose C library reports the end of the file instead
  // A file that is open for writing alone fails when it is read.
  const std::string path = folder.write("lines", "1\n");
  ASSERT_EQ(qx::openLines(reader.get(), path.c_str(), 254), QX_SUCCESS);
  qx::closeLines(reader.get());
  reader->file = std::fopen(path.c_str(), "ab");
  qx::Line line;
  EXPECT_FALSE(qx::readLine(reader.get(), &line));
  EXPECT_EQ(reader->status, QX_ERR_FILE_READ);
  qx::closeLines(reader.get());
#endif
}

}  // namespace
