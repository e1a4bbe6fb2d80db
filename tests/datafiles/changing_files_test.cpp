// Files that shrink, or whose reading fails, after the pass that counts their records.
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

#include "tests/support/computrac_files.h"
#include "tests/support/failing_memory.h"
#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

constexpr int32_t kRecords = 20000;  // far more than what is read at once
constexpr int32_t kLeft = 100;
constexpr size_t kLineLength = 17;

// The file, open by then, becomes one whose reading fails when its records have been counted.
void failAfterCounting(const std::string& path) {
  beforeNextAllocation([path] {
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

// Lines "<date> <price>" of equal length, forwards or backwards in time, which change or fail when
// their records have been counted.
struct ChangingFile {
  TemporaryFolder folder;
  std::string path;

  explicit ChangingFile(bool descending = false) {
    std::string text;
    for (int32_t k = 0; k < kRecords; ++k) {
      const int32_t day = descending ? kRecords - k : k;
      char line[64];
      const int32_t length = qxFormatDate(20000.0 + day, "yyyy/mm/dd", line);
      std::snprintf(line + length, sizeof line - 10, " %05d\n", day);
      text += line;
    }
    path = folder.write("prices.txt", text);
  }
  // Only the first kLeft lines stay.
  ChangingFile& shrinking() {
    beforeNextAllocation([this] { std::filesystem::resize_file(path, kLeft * kLineLength); });
    return *this;
  }
  ChangingFile& failing() {
    failAfterCounting(path);
    return *this;
  }
  int32_t readBars(qxBars* bars, int32_t start = 0, int32_t count = -1) const {
    const qxTXTinfo layout = {1, 0, 2, 2, 2, 2, 0, 0, QX_ORDER_YMD, 0, " "};
    return qxTXTread(bars, folder, "prices.txt", &layout, start, count);
  }
  int32_t readColumn(qxArray* column) const {
    return qxTXTreadarray(column, folder, "prices.txt", " ", 0, 2, 0, -1);
  }
  int32_t readWholeColumn(qxArray* column) const {
    return qxTXT2Array(path.c_str(), column, " ", 0, 2);
  }
};

TEST(ChangingFiles, AShorterFileGivesTheBarsThatAreLeft) {
  BarSet bars, none;
  EXPECT_EQ(ChangingFile().shrinking().readBars(bars), QX_SUCCESS);
  EXPECT_EQ(bars->barsize, kLeft);
  EXPECT_EQ(bars->datasize, kRecords);
  EXPECT_EQ(bars->reccnt, kRecords);
  EXPECT_EQ(bars->close.data[kLeft - 1], kLeft - 1.0);
  EXPECT_EQ(ChangingFile().shrinking().readBars(none, kRecords / 2, 5), QX_SUCCESS);
  EXPECT_EQ(none->barsize, 0);
}

TEST(ChangingFiles, AShorterDescendingFileLeavesTheOldestBarsEmpty) {
  BarSet bars;
  EXPECT_EQ(ChangingFile(true).shrinking().readBars(bars), QX_SUCCESS);
  EXPECT_EQ(bars->barsize, kRecords);
  EXPECT_EQ(bars->close.data[kRecords - 1], kRecords);
  EXPECT_EQ(bars->close.data[kRecords - kLeft], kRecords - kLeft + 1.0);
  EXPECT_EQ(bars->close.data[kRecords - kLeft - 1], 0.0);
}

TEST(ChangingFiles, ColumnsOfAShorterFile) {
  Series column, whole;
  EXPECT_EQ(ChangingFile().shrinking().readColumn(column), QX_SUCCESS);
  EXPECT_EQ(column.record.size, kLeft);
  EXPECT_EQ(column[kLeft - 1], kLeft - 1.0);
  EXPECT_EQ(ChangingFile().shrinking().readWholeColumn(whole), QX_SUCCESS);
  EXPECT_EQ(whole.record.size, kRecords);
  EXPECT_EQ(whole[kLeft - 1], kLeft - 1.0);
  EXPECT_EQ(whole[kLeft], 0.0);
}

TEST(ChangingFiles, AReadErrorOfTheSecondPassIsTold) {
  BarSet bars;
  Series column, whole;
  EXPECT_EQ(ChangingFile().failing().readBars(bars), QX_ERR_FILE_READ);
  EXPECT_EQ(bars->barsize, 0);
  EXPECT_EQ(bars->reccnt, kRecords);
  EXPECT_EQ(ChangingFile().failing().readColumn(column), QX_ERR_FILE_READ);
  EXPECT_EQ(column.record.size, 0);
  EXPECT_EQ(ChangingFile().failing().readWholeColumn(whole), QX_ERR_FILE_READ);

  const TemporaryFolder folder;
  BarSet records;
  folder.write("master", master({{1, 7, "N", "S", 'D'}}));
  failAfterCounting(folder.write("F1.DAT", dataFile(7, 10, 990104, 11)));
  EXPECT_EQ(qxCTread(records, folder, "S", 0, -1), QX_ERR_FILE_READ);
  EXPECT_EQ(records->barsize, 0);
}

}  // namespace
