// Full disks, failing reads, folders in place of files and a closed standard output: the status,
// and no open file left behind.
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <functional>

#include "tests/charting/reference_graphs.h"
#include "tests/support/computrac_files.h"
#include "tests/trading/simulation.h"

namespace {

using namespace qxtest;

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
  std::function<int32_t(const char* file)> write;
};

// Everything that the writers print.
struct Printed {
  TemporaryFolder folder;
  WorkedRun run;
  Series series = {1.0, 2.0, 3.0};
  PanesGraph panes;
  BarSet columns = {{1, 10, 13, 10, 13, 4, 1}, {2, 12, 12, 9, 9, 0, -1}};

  Printed() {
    folder.write("prices.txt", "1999/01/04 1\n");
    folder.write("master", master({{1, 5, "Alpha", "ABC", 'D'}}));
    folder.write("qmaster", std::string(64, 'x'));
    for (const char* name : {"mapinfo.dat", "fsfracs.fil", "a.NDX", "a.TTD", "a.DTA"}) {
      folder.write(name, "x");
    }
  }

  // Those that take "stdout" for standard output.
  std::vector<Writer> standardWriters() {
    const auto report = [this](auto function) {
      return [this, function](const char* file) { return function(run, file, 1); };
    };
    const auto delimited = [this](auto function) {
      return [this, function](const char* file) { return function(run, file, 0, ",", 1); };
    };
    const auto list = [this](auto function) {
      return [this, function](const char* file) { return function(folder, file, 1); };
    };
    return {{"qxTXTlist", list(qxTXTlist)},
            {"qxCTlist", list(qxCTlist)},
            {"qxCSIlist", list(qxCSIlist)},
            {"qxDJlist", list(qxDJlist)},
            {"qxFSlist", list(qxFSlist)},
            {"qxTClist", list(qxTClist)},
            {"qxTTlist", list(qxTTlist)},
            {"qxAIQlist", list(qxAIQlist)},
            {"qxProfitRpt", report(qxProfitRpt)},
            {"qxPrintTrades", report(qxPrintTrades)},
            {"qxPrintOrders", report(qxPrintOrders)},
            {"qxTradeRpt1", delimited(qxTradeRpt1)},
            {"qxOpenPosRpt1", delimited(qxOpenPosRpt1)},
            {"qxOrderRpt1", delimited(qxOrderRpt1)},
            {"qxFILElist", [this](const char* f) { return qxFILElist("TXT", folder, f, 0); }},
            {"qxFILEprintinfo", [this](const char* f) { return qxFILEprintinfo(columns, f, 0); }},
            {"qxTXTwrite", [](const char* f) { return qxTXTwrite("text", f, 0); }},
            {"qxTXTwriteline", [](const char* f) { return qxTXTwriteline("", f, 1); }},
            {"qxProfitRpt1", [this](const char* f) { return qxProfitRpt1(run, f, 0, ","); }}};
  }

  std::vector<Writer> writers() {
    static const qxTXTinfo info = {1, 0, 2, 3, 4, 5, 6, 7, QX_ORDER_YMD, 1, ","};
    const auto print = [this](const char* f) {
      return qxArrayPrintf(f, 1, 0, 9, "Header\n", "%8.2f\n", &series.record);
    };
    std::vector<Writer> all = standardWriters();
    all.push_back({"qxArrayPrintf", print});
    all.push_back({"qxTXTwriteinfo", [](const char* f) { return qxTXTwriteinfo("", f, &info); }});
    all.push_back(
        {"qxGraphPaintSVG", [this](const char* f) { return qxGraphPaintSVG(&panes.graph, f); }});
    all.push_back({"qxPNFchart", [this](const char* f) { return qxPNFchart(columns, 1.0, f, 0); }});
    return all;
  }
};

TEST(DiskFaults, WritersTellWhenTheirOutputIsLost) {
  Printed printed;
  const int64_t before = openFiles();
  for (const Writer& writer : printed.writers()) {
    SCOPED_TRACE(writer.name);
    EXPECT_EQ(writer.write(kFull), QX_ERR_FILE_WRITE);
    EXPECT_EQ(writer.write(printed.folder), QX_ERR_FILE_OPEN);
    EXPECT_EQ(writer.write(printed.folder.file("no/file").c_str()), QX_ERR_FILE_OPEN);
    EXPECT_EQ(openFiles(), before);
  }
}

// Runs in a child process, which ends with the number of the first writer (from 1) that does not
// report the loss of its standard output, or with 0.
[[noreturn]] void writeToLostOutput(const std::vector<Writer>& writers, bool closed) {
  const int full = open(kFull, O_WRONLY);
  dup2(full, STDOUT_FILENO);
  close(full);
  if (closed) close(STDOUT_FILENO);
  const int64_t before = openFiles();
  for (size_t i = 0; i < writers.size(); ++i) {
    const bool told = writers[i].write("stdOUT") == QX_ERR_FILE_WRITE;
    if (!told || openFiles() != before) _exit(static_cast<int>(i) + 1);
  }
  _exit(0);
}

TEST(DiskFaults, StandardOutputCanBeLostToo) {
  Printed printed;
  for (const bool closed : {true, false}) {
    EXPECT_EXIT(writeToLostOutput(printed.standardWriters(), closed), testing::ExitedWithCode(0),
                "");
  }
}

constexpr int32_t kRead = QX_ERR_FILE_READ, kOpen = QX_ERR_FILE_OPEN;

struct Reader {
  const char* name;
  std::function<int32_t()> read;
  int32_t isFolder = kOpen;    // status when a folder stands in place of the file
  int32_t unreadable = kRead;  // status when reading fails
};

struct ReadFaults : testing::Test {
  TemporaryFolder folder;
  BarSet bars;
  Series array;
  double found = 1.5;

  // Puts an unreadable file, then a folder, in the place of a file.
  void expectFaults(const char* file, const std::vector<Reader>& readers) {
    const std::string path = folder.file(file);
    for (const bool byFolder : {false, true}) {
      std::filesystem::remove(path);
      if (byFolder) std::filesystem::create_directory(path);
      if (!byFolder) std::filesystem::create_symlink(kUnreadable, path);
      const int64_t before = openFiles();
      for (const Reader& reader : readers) {
        SCOPED_TRACE(std::string(reader.name) + (byFolder ? " of a folder for " : " of ") + file);
        EXPECT_EQ(reader.read(), byFolder ? reader.isFolder : reader.unreadable);
        EXPECT_EQ(openFiles(), before);
      }
    }
    std::filesystem::remove(path);
  }
  void expectUntouched() const {
    EXPECT_EQ(bars.record.date.data, nullptr);
    EXPECT_EQ(array.record.data, nullptr);
    EXPECT_EQ(found, 1.5);
  }
};

TEST_F(ReadFaults, OfTextFilesAreTold) {
  const std::string path = folder.file("p.txt");
  qxTXTinfo info = {1, 0, 2, 3, 4, 5, 6, 7, QX_ORDER_YMD, 1, ","};
  folder.write("txtinfo.txt", "dt = 1\n");
  expectFaults(
      "p.txt",
      {{"qxTXT2Array", [&] { return qxTXT2Array(path.c_str(), array, ",", 0, 1); }},
       {"qxTXTread", [&] { return qxTXTread(bars, folder, "p.txt", &info, 0, -1); }},
       {"qxTXTreadarray", [&] { return qxTXTreadarray(array, folder, "p.txt", ",", 0, 1, 0, 5); }},
       {"qxTXTfindrec", [&] { return qxTXTfindrec(folder, "p.txt", &info, 1.0, &found); }},
       {"qxFILEread", [&] { return qxFILEread("TXT", bars, folder, "p.txt", 0, 5); }}});
  expectUntouched();
  expectFaults(
      "txtinfo.txt",
      {{"qxTXTreadinfo", [&] { return qxTXTreadinfo(folder, "txtinfo.txt", &info); }},
       {"qxFILEread", [&] { return qxFILEread("7", bars, folder, "p.txt", 0, -1); }},
       {"qxFILEfindrec", [&] { return qxFILEfindrec("7", folder, "p.txt", 1.0, nullptr); }}});
}

TEST_F(ReadFaults, OfCompuTracFilesAreTold) {
  const auto read = [&] { return qxCTread(bars, folder, "F1.DAT", 0, -1); };
  const auto readArray = [&] { return qxCTreadarray(array, folder, "F1.DAT", 6, 0, -1); };
  const auto find = [&] { return qxCTfindrec(folder, "F1.DAT", 36164.0, &found); };
  const auto list = [&] { return qxCTlist(folder, folder.file("list.out").c_str(), 0); };
  const std::string directory = master({{1, 5, "Alpha", "ABC", 'D'}});
  folder.write("master", directory);
  expectFaults("F1.DAT", {{"qxCTread", read}, {"qxCTreadarray", readArray}, {"qxCTfindrec", find}});
  for (const char* name : {"master", "xmaster"}) {
    expectFaults(name, {{"qxCTread", read, QX_ERR_FILE_NOT_FOUND},
                        {"qxCTreadarray", readArray, QX_ERR_FILE_NOT_FOUND},
                        {"qxCTfindrec", find, QX_ERR_FILE_NOT_FOUND},
                        {"qxCTlist", list, QX_ERR_FILE_NOT_FOUND}});
  }
  expectUntouched();

  // A description that cannot be read counts as none.
  folder.write("master", directory);
  folder.write("F1.DAT", dataFile(5, 3, 990104, 4));
  expectFaults("F1.DOP", {{"qxCTread", read, QX_SUCCESS, QX_SUCCESS}});
  EXPECT_EQ(bars->barsize, 3);
}

TEST_F(ReadFaults, OfOtherVendorsDirectories) {
  const auto list = [&] { return qxCSIlist(folder, folder.file("list.out").c_str(), 0); };
  const auto find = [&] { return qxCSIfindrec(folder, "a", 1.0, nullptr); };
  const auto other = [&] { return qxTTfindrec(folder, "a", 1.0, nullptr); };
  // The unreadable file has no size, and so no records to list.
  expectFaults("qmaster", {{"qxCSIlist", list, QX_ERR_FILE_NOT_FOUND, QX_SUCCESS},
                           {"qxCSIfindrec", find, QX_ERR_FILE_NOT_FOUND, QX_ERR_UNKNOWN}});
  expectFaults("a.TTD", {{"qxTTfindrec", other, QX_ERR_FILE_NOT_FOUND, QX_ERR_UNKNOWN}});
}

}  // namespace
