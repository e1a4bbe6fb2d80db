// Files that shrink, or whose reading fails, after the pass that counts their records.
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

#include "tests/support/failing_memory.h"
#include "tests/support/test_support.h"

namespace {

using qxtest::TemporaryFolder;

constexpr int32_t kRecords = 20000;  // far more than what is read at once
constexpr int32_t kLeft = 100;

// Lines "<date> <price>" of equal length, forwards or backwards in time.
std::string manyLines(bool descending) {
  std::string text;
  for (int32_t k = 0; k < kRecords; ++k) {
    const int32_t day = descending ? kRecords - k : k;
    char date[32], line[64];
    qxFormatDate(20000.0 + day, "yyyy/mm/dd", date);
    std::snprintf(line, sizeof line, "%s %05d\n", date, day);
    text += line;
  }
  return text;
}

constexpr size_t kLineLength = 17;
const qxTXTinfo kLayout = {1, 0, 2, 2, 2, 2, 0, 0, QX_ORDER_YMD, 0, " "};

struct ChangingFile {
  TemporaryFolder folder;
  std::string path;
  explicit ChangingFile(bool descending = false) {
    path = folder.write("prices.txt", manyLines(descending));
  }
  void shrinkAfterCounting(uintmax_t lines) {
    qxtest::beforeNextAllocation(
        [this, lines] { std::filesystem::resize_file(path, lines * kLineLength); });
  }
  // The file that is open from now on is one whose reading fails.
  void failAfterCounting() {
    qxtest::beforeNextAllocation([this] {
      for (int file = 3; file < 256; ++file) {
        std::error_code none;
        const std::string link = "/proc/self/fd/" + std::to_string(file);
        if (std::filesystem::read_symlink(link, none) != path) continue;
        const int unreadable = open("/proc/self/mem", O_RDONLY);
        dup2(unreadable, file);
        close(unreadable);
      }
    });
  }
};

int32_t readBars(const ChangingFile& file, qxBars* bars, int32_t start = 0, int32_t count = -1) {
  return qxTXTread(bars, file.folder.path.c_str(), "prices.txt", &kLayout, start, count);
}

TEST(ChangingFiles, AShorterFileGivesTheBarsThatAreLeft) {
  ChangingFile file;
  qxtest::BarSet bars;
  file.shrinkAfterCounting(kLeft);
  EXPECT_EQ(readBars(file, bars), QX_SUCCESS);
  EXPECT_EQ(bars->barsize, kLeft);
  EXPECT_EQ(bars->datasize, kRecords);
  EXPECT_EQ(bars->reccnt, kRecords);
  EXPECT_EQ(bars->close.data[kLeft - 1], kLeft - 1.0);

  ChangingFile gone;
  qxtest::BarSet none;
  gone.shrinkAfterCounting(kLeft);
  EXPECT_EQ(readBars(gone, none, kRecords / 2, 5), QX_SUCCESS);
  EXPECT_EQ(none->barsize, 0);
}

TEST(ChangingFiles, AShorterDescendingFileLeavesTheOldestBarsEmpty) {
  ChangingFile file(true);
  qxtest::BarSet bars;
  file.shrinkAfterCounting(kLeft);
  EXPECT_EQ(readBars(file, bars), QX_SUCCESS);
  EXPECT_EQ(bars->barsize, kRecords);
  EXPECT_EQ(bars->close.data[kRecords - 1], kRecords);
  EXPECT_EQ(bars->close.data[kRecords - kLeft], kRecords - kLeft + 1.0);
  EXPECT_EQ(bars->close.data[kRecords - kLeft - 1], 0.0);
}

TEST(ChangingFiles, ColumnsOfAShorterFile) {
  ChangingFile file;
  qxtest::Series column;
  file.shrinkAfterCounting(kLeft);
  EXPECT_EQ(qxTXTreadarray(column, file.folder.path.c_str(), "prices.txt", " ", 0, 2, 0, -1),
            QX_SUCCESS);
  EXPECT_EQ(column.record.size, kLeft);
  EXPECT_EQ(column[kLeft - 1], kLeft - 1.0);

  ChangingFile other;
  qxtest::Series whole;
  other.shrinkAfterCounting(kLeft);
  EXPECT_EQ(qxTXT2Array(other.path.c_str(), whole, " ", 0, 2), QX_SUCCESS);
  EXPECT_EQ(whole.record.size, kRecords);
  EXPECT_EQ(whole[kLeft - 1], kLeft - 1.0);
  EXPECT_EQ(whole[kLeft], 0.0);
}

TEST(ChangingFiles, AReadErrorOfTheSecondPassIsTold) {
  ChangingFile bars, columns, whole;
  qxtest::BarSet set;
  bars.failAfterCounting();
  EXPECT_EQ(readBars(bars, set), QX_ERR_FILE_READ);
  EXPECT_EQ(set->barsize, 0);
  EXPECT_EQ(set->reccnt, kRecords);

  qxtest::Series column, all;
  columns.failAfterCounting();
  EXPECT_EQ(qxTXTreadarray(column, columns.folder.path.c_str(), "prices.txt", " ", 0, 2, 0, -1),
            QX_ERR_FILE_READ);
  EXPECT_EQ(column.record.size, 0);
  whole.failAfterCounting();
  EXPECT_EQ(qxTXT2Array(whole.path.c_str(), all, " ", 0, 2), QX_ERR_FILE_READ);
}

}  // namespace
