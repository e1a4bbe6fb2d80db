// Full disks, failing reads, folders in place of files and a closed standard output: the status,
// and no open file left behind.
#include <fcntl.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <functional>

#include "tests/charting/reference_graphs.h"
#include "tests/support/computrac_files.h"
#include "tests/trading/simulation.h"

namespace {

using qxtest::TemporaryFolder;

// A file that opens, and whose reading fails at once.
constexpr char kUnreadable[] = "/proc/self/mem";
constexpr char kFull[] = "/dev/full";

// Open files of this process.
int64_t openFiles() {
  int64_t count = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    ++count;
  }
  return count;
}

struct Writer {
  const char* name;
  bool standard;  // "STDOUT" is standard output
  std::function<int32_t(const char* file)> write;
};

// Everything that the writers print.
struct Printed {
  TemporaryFolder folder;
  qxtest::WorkedRun run;
  qxtest::Series series = {1.0, 2.0, 3.0};
  qxtest::PanesGraph panes;
  qxtest::BarSet columns = {{1, 10, 13, 10, 13, 4, 1}, {2, 12, 12, 9, 9, 0, -1}};

  Printed() {
    folder.write("prices.txt", "1999/01/04 1\n");
    folder.write("master", qxtest::master({{1, 5, "Alpha", "ABC", 'D'}}));
    folder.write("qmaster", std::string(64, 'x'));
    folder.write("mapinfo.dat", "x");
    folder.write("fsfracs.fil", "x");
    folder.write("a.NDX", "x");
    folder.write("a.TTD", "x");
    folder.write("a.DTA", "x");
  }

  std::vector<Writer> writers() {
    const char* in = folder.path.c_str();
    const auto report = [this](auto function) {
      return [this, function](const char* file) { return function(run, file, 1); };
    };
    const auto delimited = [this](auto function) {
      return [this, function](const char* file) { return function(run, file, 0, ",", 1); };
    };
    const auto list = [in](auto function) {
      return [in, function](const char* file) { return function(in, file, 1); };
    };
    return {
        {"qxArrayPrintf", false,
         [this](const char* f) {
           return qxArrayPrintf(f, 1, 0, 9, "Header\n", "%8.2f\n", &series.record);
         }},
        {"qxFILEprintinfo", true, [this](const char* f) { return qxFILEprintinfo(columns, f, 0); }},
        {"qxTXTwrite", true, [](const char* f) { return qxTXTwrite("text", f, 0); }},
        {"qxTXTwriteline", true, [](const char* f) { return qxTXTwriteline("", f, 1); }},
        {"qxTXTlist", true, list(qxTXTlist)},
        {"qxCTlist", true, list(qxCTlist)},
        {"qxCSIlist", true, list(qxCSIlist)},
        {"qxDJlist", true, list(qxDJlist)},
        {"qxFSlist", true, list(qxFSlist)},
        {"qxTClist", true, list(qxTClist)},
        {"qxTTlist", true, list(qxTTlist)},
        {"qxAIQlist", true, list(qxAIQlist)},
        {"qxFILElist", true, [in](const char* f) { return qxFILElist("TXT", in, f, 0); }},
        {"qxTXTwriteinfo", false,
         [](const char* f) {
           const qxTXTinfo info = {1, 0, 2, 3, 4, 5, 6, 7, QX_ORDER_YMD, 1, ","};
           return qxTXTwriteinfo("", f, &info);
         }},
        {"qxProfitRpt", true, report(qxProfitRpt)},
        {"qxProfitRpt1", true, [this](const char* f) { return qxProfitRpt1(run, f, 0, ","); }},
        {"qxPrintTrades", true, report(qxPrintTrades)},
        {"qxPrintOrders", true, report(qxPrintOrders)},
        {"qxTradeRpt1", true, delimited(qxTradeRpt1)},
        {"qxOpenPosRpt1", true, delimited(qxOpenPosRpt1)},
        {"qxOrderRpt1", true, delimited(qxOrderRpt1)},
        {"qxGraphPaintSVG", false,
         [this](const char* f) { return qxGraphPaintSVG(&panes.graph, f); }},
        {"qxPNFchart", false, [this](const char* f) { return qxPNFchart(columns, 1.0, f, 0); }}};
  }
};

TEST(DiskFaults, WritersTellWhenTheirOutputIsLost) {
  Printed printed;
  const int64_t before = openFiles();
  for (const Writer& writer : printed.writers()) {
    SCOPED_TRACE(writer.name);
    EXPECT_EQ(writer.write(kFull), QX_ERR_FILE_WRITE);
    EXPECT_EQ(writer.write(printed.folder.path.c_str()), QX_ERR_FILE_OPEN);
    EXPECT_EQ(writer.write(printed.folder.file("no/file").c_str()), QX_ERR_FILE_OPEN);
    EXPECT_EQ(openFiles(), before);
  }
}

// Runs in a child process, which ends with the number of the first writer (from 1) that does not
// report the loss of its standard output, or with 0.
[[noreturn]] void writeToLostOutput(const std::vector<Writer>& writers, bool closed) {
  const int full = open(kFull, O_WRONLY);
  if (closed) {
    close(full);
    close(STDOUT_FILENO);
  } else {
    dup2(full, STDOUT_FILENO);
    close(full);
  }
  const int64_t before = openFiles();
  int failed = 0;
  for (size_t i = 0; i < writers.size() && failed == 0; ++i) {
    if (!writers[i].standard) continue;
    const bool told = writers[i].write("stdOUT") == QX_ERR_FILE_WRITE;
    if (!told || openFiles() != before) failed = static_cast<int>(i) + 1;
  }
  _exit(failed);
}

TEST(DiskFaults, StandardOutputCanBeLostToo) {
  Printed printed;
  const auto writers = printed.writers();
  EXPECT_EXIT(writeToLostOutput(writers, true), testing::ExitedWithCode(0), "");
  EXPECT_EXIT(writeToLostOutput(writers, false), testing::ExitedWithCode(0), "");
}

struct Reader {
  const char* name;
  std::function<int32_t()> read;
  int32_t unreadable;  // status when reading fails
  int32_t isFolder;    // status when a folder stands in place of the file
};

// Puts an unreadable file, or a folder, in the place of a file.
void replaceFile(const std::string& path, bool byFolder) {
  std::filesystem::remove(path);
  if (byFolder) {
    std::filesystem::create_directory(path);
  } else {
    std::filesystem::create_symlink(kUnreadable, path);
  }
}

void expectFaults(const TemporaryFolder& folder, const char* file,
                  const std::vector<Reader>& readers) {
  for (const bool byFolder : {false, true}) {
    replaceFile(folder.file(file), byFolder);
    const int64_t before = openFiles();
    for (const Reader& reader : readers) {
      SCOPED_TRACE(std::string(reader.name) + (byFolder ? " of a folder for " : " of ") + file);
      EXPECT_EQ(reader.read(), byFolder ? reader.isFolder : reader.unreadable);
      EXPECT_EQ(openFiles(), before);
    }
  }
}

TEST(DiskFaults, TextReadersTellWhenReadingFails) {
  TemporaryFolder folder;
  const char* in = folder.path.c_str();
  const std::string path = folder.file("prices.txt");
  qxTXTinfo info = {1, 0, 2, 3, 4, 5, 6, 7, QX_ORDER_YMD, 1, ","};
  qxtest::BarSet bars;
  qxtest::Series array;
  double found = 1.5;
  constexpr int32_t kRead = QX_ERR_FILE_READ, kOpen = QX_ERR_FILE_OPEN;
  folder.write("txtinfo.txt", "dt = 1\n");
  expectFaults(
      folder, "prices.txt",
      {{"qxTXT2Array", [&] { return qxTXT2Array(path.c_str(), array, ",", 0, 1); }, kRead, kOpen},
       {"qxTXTread", [&] { return qxTXTread(bars, in, "prices.txt", &info, 0, -1); }, kRead, kOpen},
       {"qxTXTreadarray", [&] { return qxTXTreadarray(array, in, "prices.txt", ",", 0, 1, 0, 5); },
        kRead, kOpen},
       {"qxTXTfindrec", [&] { return qxTXTfindrec(in, "prices.txt", &info, 1.0, &found); }, kRead,
        kOpen},
       {"qxFILEread", [&] { return qxFILEread("TXT", bars, in, "prices.txt", 0, 5); }, kRead,
        kOpen}});
  EXPECT_EQ(bars->date.data, nullptr);
  EXPECT_EQ(array.record.data, nullptr);
  EXPECT_EQ(found, 1.5);

  expectFaults(
      folder, "txtinfo.txt",
      {{"qxTXTreadinfo", [&] { return qxTXTreadinfo(in, "txtinfo.txt", &info); }, kRead, kOpen},
       {"qxFILEread", [&] { return qxFILEread("7", bars, in, "prices.txt", 0, -1); }, kRead, kOpen},
       {"qxFILEfindrec", [&] { return qxFILEfindrec("7", in, "prices.txt", 1.0, nullptr); }, kRead,
        kOpen}});
}

TEST(DiskFaults, CompuTracReadersTellWhenReadingFails) {
  TemporaryFolder folder;
  const char* in = folder.path.c_str();
  qxtest::BarSet bars;
  qxtest::Series array;
  double found = 1.5;
  const auto read = [&] { return qxCTread(bars, in, "F1.DAT", 0, -1); };
  const auto readArray = [&] { return qxCTreadarray(array, in, "F1.DAT", 6, 0, -1); };
  const auto find = [&] { return qxCTfindrec(in, "F1.DAT", 36164.0, &found); };
  const auto list = [&] { return qxCTlist(in, folder.file("list.out").c_str(), 0); };
  const std::string directory = qxtest::master({{1, 5, "Alpha", "ABC", 'D'}});
  folder.write("master", directory);
  constexpr int32_t kRead = QX_ERR_FILE_READ, kOpen = QX_ERR_FILE_OPEN;
  expectFaults(folder, "F1.DAT",
               {{"qxCTread", read, kRead, kOpen},
                {"qxCTreadarray", readArray, kRead, kOpen},
                {"qxCTfindrec", find, kRead, kOpen}});
  for (const char* name : {"master", "xmaster"}) {
    expectFaults(folder, name,
                 {{"qxCTread", read, kRead, QX_ERR_FILE_NOT_FOUND},
                  {"qxCTreadarray", readArray, kRead, QX_ERR_FILE_NOT_FOUND},
                  {"qxCTfindrec", find, kRead, QX_ERR_FILE_NOT_FOUND},
                  {"qxCTlist", list, kRead, QX_ERR_FILE_NOT_FOUND}});
  }
  EXPECT_EQ(bars->date.data, nullptr);
  EXPECT_EQ(array.record.data, nullptr);
  EXPECT_EQ(found, 1.5);

  // A description that cannot be read counts as none.
  std::filesystem::remove(folder.file("master"));
  std::filesystem::remove(folder.file("F1.DAT"));
  folder.write("master", directory);
  folder.write("F1.DAT", qxtest::dataFile(5, 3, 990104, 4));
  expectFaults(folder, "F1.DOP", {{"qxCTread", read, QX_SUCCESS, QX_SUCCESS}});
  EXPECT_EQ(bars->barsize, 3);
}

TEST(DiskFaults, AFolderIsNoVendorDirectory) {
  TemporaryFolder folder;
  const char* in = folder.path.c_str();
  const std::string list = folder.file("list.out");
  std::filesystem::create_directory(folder.file("qmaster"));
  std::filesystem::create_directory(folder.file("a.TTD"));
  const int64_t before = openFiles();
  EXPECT_EQ(qxCSIlist(in, list.c_str(), 0), QX_ERR_FILE_NOT_FOUND);
  EXPECT_EQ(qxCSIfindrec(in, "a", 1.0, nullptr), QX_ERR_FILE_NOT_FOUND);
  EXPECT_EQ(qxTTlist(in, list.c_str(), 0), QX_ERR_FILE_NOT_FOUND);
  EXPECT_EQ(openFiles(), before);
}

}  // namespace
