#include "core/line_reader.h"

#include <string>
#include <vector>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

using Lines = std::vector<std::string>;

// A reader of a file of these bytes.
struct Reader {
  TemporaryFolder folder;
  std::string path;
  qx::LineReader lines;

  Reader(const std::string& bytes, size_t maxLength) : path(folder.write("lines", bytes)) {
    EXPECT_EQ(qx::openLines(&lines, path.c_str(), maxLength), QX_SUCCESS);
  }
  ~Reader() { qx::closeLines(&lines); }
  std::string next() {
    qx::Line line;
    if (!qx::readLine(&lines, &line)) return "<end>";
    return line.blank ? "<blank>" : std::string(line.text);
  }
};

Lines linesOf(const std::string& bytes, size_t maxLength) {
  Reader reader(bytes, maxLength);
  Lines lines;
  for (std::string line; (line = reader.next()) != "<end>";) lines.push_back(line);
  EXPECT_EQ(reader.lines.status, QX_SUCCESS);
  return lines;
}

TEST(LineReader, EndsOfLines) {
  EXPECT_EQ(linesOf("", 10), Lines{});
  EXPECT_EQ(linesOf("a\nb\r\nc", 10), (Lines{"a", "b", "c"}));
  EXPECT_EQ(linesOf("\n\r\n \n", 10), (Lines{"<blank>", "<blank>", " "}));
  EXPECT_EQ(linesOf("a\rb\r\r\nc\r", 10), (Lines{"a\rb\r", "c\r"})) << "a lone CR is a character";
  EXPECT_EQ(linesOf(std::string("a\0b\n\0\nc", 7), 10), (Lines{"a", "", "c"}));
  EXPECT_EQ(linesOf("a\nb\x1A\nc\n" + std::string(70000, '\n'), 10), (Lines{"a", "b"}));
}

TEST(LineReader, LongLinesAreReadAsSeveral) {
  // At most five characters, the newline included.
  for (const char* end : {"\n", "\r\n"}) {
    EXPECT_EQ(linesOf(std::string("1234") + end, 5), Lines{"1234"});
    EXPECT_EQ(linesOf(std::string("12345") + end + "6", 5), (Lines{"12345", "<blank>", "6"}));
  }
  EXPECT_EQ(linesOf("123456\n", 5), (Lines{"12345", "6"}));
  EXPECT_EQ(linesOf("12345", 5), Lines{"12345"});
  EXPECT_EQ(linesOf("12345678901", 5), (Lines{"12345", "67890", "1"}));
  EXPECT_EQ(linesOf("1234\r", 5), Lines{"1234\r"});
}

TEST(LineReader, PositionsSurviveTheBuffer) {
  // Some 400 KB, so that the buffer is filled several times; every length of line up to 60.
  std::string bytes;
  Lines expected;
  for (int i = 0; i < 12000; ++i) {
    expected.push_back(std::to_string(i) + std::string(static_cast<size_t>(i % 60), 'x'));
    bytes += expected.back() + (i % 3 == 0 ? "\r\n" : "\n");
  }
  Reader reader(bytes, 254);
  std::vector<int64_t> positions;
  for (const std::string& text : expected) {
    positions.push_back(qx::linePosition(reader.lines));
    ASSERT_EQ(reader.next(), text);
  }
  EXPECT_EQ(reader.next(), "<end>");
  for (const size_t i : {11999U, 0U, 7000U, 6999U, 1U}) {
    qx::seekLine(&reader.lines, positions[i]);
    EXPECT_EQ(qx::linePosition(reader.lines), positions[i]);
    EXPECT_EQ(reader.next(), expected[i]);
  }
  qx::dropLines(&reader.lines, 10);
  EXPECT_EQ(reader.next(), expected[12]);
  qx::dropLines(&reader.lines, INT64_MAX);
  EXPECT_EQ(reader.next(), "<end>");
}

TEST(LineReader, ZeroBytesSurviveTheBuffer) {
  // The zero stands at the end of what is read first, its line ends in what is read next.
  EXPECT_EQ(linesOf(std::string(65530, '\n') + '1' + '\0' + "2345678", 10).back(), "1");
}

TEST(LineReader, FilesThatCannotBeRead) {
  Reader reader("1\n", 254);
  qx::LineReader unopened;
  for (const std::string& path : {reader.folder.file("missing"), reader.folder.path}) {
    EXPECT_EQ(qx::openLines(&unopened, path.c_str(), 254), QX_ERR_FILE_OPEN);
  }
#if !defined(_WIN32)  // whose C library reports the end of the file instead
  // A file that is open for writing alone fails when it is read.
  std::fclose(std::exchange(reader.lines.file, std::fopen(reader.path.c_str(), "ab")));
  EXPECT_EQ(reader.next(), "<end>");
  EXPECT_EQ(reader.lines.status, QX_ERR_FILE_READ);
#endif
}

}  // namespace
