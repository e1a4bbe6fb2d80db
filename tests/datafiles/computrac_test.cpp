#include <cstring>
#include <limits>

#include "tests/support/computrac_files.h"
#include "tests/support/test_support.h"

namespace {

using qxtest::dataFile;
using qxtest::little;
using qxtest::master;
using qxtest::near;
using qxtest::put;
using qxtest::Series;
using qxtest::TemporaryFolder;

struct Read {
  qxBars bars = {};
  int32_t status;
  Read(const std::string& folder, const char* file, int32_t start = 0, int32_t count = -1) {
    status = qxCTread(&bars, folder.c_str(), file, start, count);
  }
  ~Read() { qxFreeBars(&bars); }
  double at(const qxArray& series, int32_t i) const { return series.data[i]; }
};

const double kFirst = 36164.0;  // 4 January 1999

TEST(CompuTrac, AnInstrumentHasFiveNames) {
  TemporaryFolder folder;
  folder.write("master", master({{7, 7, "Alpha Beta", "ABC", 'D'}, {8, 5, "Gamma", "G H", 'W'}}));
  folder.write("F7.DAT", dataFile(7, 3, 990104, 4));
  folder.write("f8.dat", dataFile(5, 2, 990104, 3));
  for (const char* name : {"F7.DAT", "f7.dat", "abc", "ABC@D", "abc@d", "alpha beta"}) {
    Read read(folder.path, name);
    ASSERT_EQ(read.status, QX_SUCCESS) << name;
    EXPECT_EQ(read.bars.barsize, 3) << name;
    EXPECT_STREQ(read.bars.name, "F7.DAT");
    EXPECT_STREQ(read.bars.symbol, "ABC");
    EXPECT_STREQ(read.bars.description, "Alpha Beta");
  }
  for (const char* name : {"G H", "g", "G H@W", "Gamma", "F8.DAT"}) {
    Read read(folder.path, name);
    EXPECT_EQ(read.status, QX_SUCCESS) << name;
    EXPECT_EQ(read.bars.frequency, QX_FREQ_WEEKLY);
  }
  for (const char* name : {"AB", "ABC@W", "F7.MWD", "", "Alpha"}) {
    Read read(folder.path, name);
    EXPECT_EQ(read.status, QX_ERR_FILE_NOT_FOUND) << name;
    EXPECT_EQ(read.bars.date.data, nullptr);
  }
}

TEST(CompuTrac, EntriesMarkedAsFoldersAreSkipped) {
  TemporaryFolder folder;
  std::string bytes = master({{1, 7, "Name", "ABC", 'D'}, {2, 7, "Name", "ABC", 'D'}});
  put(bytes, 53 + 18, "<DIR>");
  folder.write("MASTER", bytes);
  folder.write("F2.DAT", dataFile(7, 1, 990104, 2));
  Read read(folder.path, "ABC");
  EXPECT_EQ(read.status, QX_SUCCESS);
  EXPECT_STREQ(read.bars.name, "F2.DAT");
}

TEST(CompuTrac, FieldsFollowPeriodAndCount) {
  struct Case {
    int fields;
    char period;
    int place[6];  // fields of open, high, low, close, volume, open interest; 0 when absent
  };
  const Case cases[] = {
      {5, 'D', {0, 2, 3, 4, 5, 0}}, {6, 'W', {2, 3, 4, 5, 6, 0}}, {7, 'M', {2, 3, 4, 5, 6, 7}},
      {8, 'D', {2, 3, 4, 5, 6, 7}}, {4, 'I', {0, 0, 0, 3, 4, 0}}, {5, 'I', {0, 0, 0, 3, 4, 5}},
      {6, 'I', {0, 3, 4, 5, 6, 0}}, {7, 'I', {3, 4, 5, 6, 7, 0}}, {8, 'I', {3, 4, 5, 6, 7, 8}}};
  for (const Case& c : cases) {
    TemporaryFolder folder;
    folder.write("master", master({{1, c.fields, "N", "S", c.period}}));
    folder.write("F1.DAT", dataFile(c.fields, 2, 990104, 3));
    Read read(folder.path, "S");
    SCOPED_TRACE(c.fields);
    ASSERT_EQ(read.status, QX_SUCCESS);
    ASSERT_EQ(read.bars.barsize, 2);
    const double time = c.period == 'I' ? 21.0 / 86400.0 : 0.0;  // field 2 of bar 1 reads 21
    EXPECT_TRUE(near(read.at(read.bars.date, 1), kFirst + 1 + time, 1e-15));
    const qxArray* series[] = {&read.bars.open,  &read.bars.high,   &read.bars.low,
                               &read.bars.close, &read.bars.volume, &read.bars.openint};
    for (int f = 0; f < 6; ++f) {
      const double expected = c.place[f] == 0 ? 0.0 : 10 * c.place[f] + 1;
      EXPECT_EQ(read.at(*series[f], 1), expected) << f;
    }
    EXPECT_EQ(read.at(series[0][0], 0), c.place[0] * 10.0);
    EXPECT_EQ(qxDateDiff("D", read.bars.begindate, kFirst), 0);
    EXPECT_EQ(qxDateDiff("D", read.bars.enddate, 36532.0), 0);  // 7 January 2000
    EXPECT_EQ(read.bars.filetype, QX_FILE_COMPUTRAC);
    EXPECT_EQ(read.bars.reccnt, 2);
  }
}

TEST(CompuTrac, ADescriptionFileReplacesTheTable) {
  TemporaryFolder folder;
  folder.write("master", master({{1, 4, "N", "FOUR", 'D'}, {2, 0, "N", "NONE", 'D'}}));
  folder.write("F1.DAT", dataFile(4, 1, 990104, 2));
  folder.write("F2.DAT", dataFile(4, 1, 990104, 2));
  EXPECT_EQ(Read(folder.path, "FOUR").status, QX_ERR_FILE_READ) << "no such combination";
  EXPECT_EQ(Read(folder.path, "NONE").status, QX_ERR_FILE_READ) << "no fields";
  folder.write("f1.dop", "\"DATE\",0\n\n\"junk\"\n \" Close\" ,1,2\r\n\"VOLUME\"\n\"LOW\"\n");
  Read described(folder.path, "FOUR");
  ASSERT_EQ(described.status, QX_SUCCESS);
  EXPECT_EQ(described.at(described.bars.close, 0), 30.0);
  EXPECT_EQ(described.at(described.bars.volume, 0), 40.0);
  EXPECT_EQ(described.at(described.bars.low, 0), 0.0) << "beyond the record";
  folder.write("f1.dop", "\"DATE\"\n\"OPEN\"\n");
  EXPECT_EQ(Read(folder.path, "FOUR").status, QX_ERR_FILE_READ) << "a description without close";
}

TEST(CompuTrac, CountsAreBoundedByTheFile) {
  TemporaryFolder folder;
  folder.write("master", master({{1, 7, "N", "S", 'D'}}));
  folder.write("F1.DAT", dataFile(7, 9, 990104, 0x8005));  // 280 bytes, a negative count
  EXPECT_EQ(Read(folder.path, "S").bars.barsize, 9);
  struct Case {
    const char* what;
    std::string bytes;
    int32_t status, bars, records;
  };
  const Case cases[] = {
      {"count too large", dataFile(7, 2, 990104, 30000), QX_SUCCESS, 2, 29999},
      {"a torn record", dataFile(7, 2, 990104, 3).substr(0, 28 * 3 - 1), QX_SUCCESS, 1, 2},
      {"count smaller than the file", dataFile(7, 5, 990104, 3), QX_SUCCESS, 2, 2},
      {"no bars", dataFile(7, 0, 990104, 1), QX_ERR_RECORD_NOT_FOUND, 0, 0},
      {"count of 0", dataFile(7, 3, 990104, 0), QX_ERR_RECORD_NOT_FOUND, 0, 0},
      {"no header", std::string(3, '\0'), QX_ERR_FILE_READ, 0, 0},
      {"an empty file", "", QX_ERR_FILE_READ, 0, 0}};
  for (const Case& c : cases) {
    folder.write("F1.DAT", c.bytes);
    Read read(folder.path, "S");
    EXPECT_EQ(read.status, c.status) << c.what;
    EXPECT_EQ(read.bars.barsize, c.bars) << c.what;
    EXPECT_EQ(read.bars.reccnt, c.records) << c.what;
  }
}

TEST(CompuTrac, RangesOfBarsAndSeries) {
  TemporaryFolder folder;
  folder.write("master", master({{1, 7, "N", "S", 'D'}}));
  folder.write("F1.DAT", dataFile(7, 10, 990104, 11));
  struct Range {
    int32_t start, count, status, bars;
    double firstClose;
  };
  const Range ranges[] = {{0, -1, 0, 10, 50},
                          {4, -1, 0, 6, 54},
                          {-1, 3, 0, 3, 57},
                          {8, 5, 0, 2, 58},
                          {2, 3, 0, 3, 52},
                          {-5, -1, 0, 10, 50},
                          {10, 1, QX_ERR_RECORD_NOT_FOUND, 0, 0}};
  for (const Range& r : ranges) {
    Read read(folder.path, "S", r.start, r.count);
    Series series;
    const int32_t status = qxCTreadarray(series, folder.path.c_str(), "S", 5, r.start, r.count);
    EXPECT_EQ(read.status, r.status);
    EXPECT_EQ(status, r.status);
    EXPECT_EQ(read.bars.barsize, r.bars);
    EXPECT_EQ(series.record.size, r.bars);
    if (r.bars > 0) {
      EXPECT_EQ(read.at(read.bars.low, 0), r.firstClose - 10);
      EXPECT_EQ(series[0], r.firstClose - 10);
    }
  }
  Read empty(folder.path, "S", 0, 0);
  EXPECT_EQ(empty.status, QX_SUCCESS);
  EXPECT_EQ(empty.bars.date.data, nullptr);
  EXPECT_STREQ(empty.bars.symbol, "S");

  Series dates;
  EXPECT_EQ(qxCTreadarray(dates, folder.path.c_str(), "S", 1, 9, -1), QX_SUCCESS);
  EXPECT_EQ(dates.values(), std::vector<double>{kFirst + 9});
  Series refused;
  for (int32_t field : {0, 9, INT32_MIN}) {
    EXPECT_EQ(qxCTreadarray(refused, folder.path.c_str(), "S", field, 0, -1), QX_ERR_INVALID_PARM);
  }
  EXPECT_EQ(qxCTreadarray(refused, "nowhere", "S", 1, 0, 0), QX_SUCCESS) << "nothing is opened";
}

// Bytes of a record that are no ordinary number or text.
TEST(CompuTrac, OddBytes) {
  TemporaryFolder folder;
  std::string entries = master({{1, 8, "N", "ABC", 'D'}, {2, 7, "N", "N", 'D'}});
  entries[53 + 51] = '*';  // a flag in the last bytes of the symbol
  put(entries, 2 * 53 + 7, std::string("Two\0junk", 8));
  put(entries, 2 * 53 + 25, "\xFF\xFF\x7F\x01");  // a date that is no number
  folder.write("master", entries);
  std::string data = dataFile(8, 1, 990104, 2);
  put(data, 32, "\xFF\xFF\x7F\x01");
  put(data, 32 + 5 * 4, std::string("\0\0\0\2", 4));  // zero, as some writers store it
  folder.write("F1.DAT", data);
  folder.write("F2.DAT", dataFile(7, 1, 990104, 2));

  Read flagged(folder.path, "abc");
  ASSERT_EQ(flagged.status, QX_SUCCESS);
  EXPECT_STREQ(flagged.bars.symbol, "ABC            ");
  EXPECT_EQ(flagged.at(flagged.bars.date, 0), 0.0);
  EXPECT_EQ(flagged.at(flagged.bars.volume, 0), 0.0);
  EXPECT_EQ(flagged.at(flagged.bars.openint, 0), 70.0);

  Read two(folder.path, "two");
  ASSERT_EQ(two.status, QX_SUCCESS);
  EXPECT_STREQ(two.bars.description, "Two");
  EXPECT_EQ(two.bars.begindate, 0.0);
}

TEST(CompuTrac, SetsWithStorageLimitTheCount) {
  TemporaryFolder folder;
  folder.write("master", master({{1, 7, "N", "S", 'D'}}));
  folder.write("F1.DAT", dataFile(7, 10, 990104, 11));
  qxBars bars = {};
  ASSERT_EQ(qxAllocBars(&bars, 4), QX_SUCCESS);
  EXPECT_EQ(qxCTread(&bars, folder.path.c_str(), "S", -1, 6), QX_SUCCESS);
  EXPECT_EQ(bars.barsize, 4);
  EXPECT_EQ(bars.date.data[0], kFirst + 6) << "the last ones";
  EXPECT_EQ(qxCTread(&bars, folder.path.c_str(), "S", 0, 0), QX_SUCCESS);
  EXPECT_EQ(bars.barsize, 0);
  qxFreeBars(&bars);

  Series series(std::vector<double>(3, 7.0));
  EXPECT_EQ(qxCTreadarray(series, folder.path.c_str(), "S", 6, -1, 9), QX_SUCCESS);
  EXPECT_EQ(series.values(), (std::vector<double>{57, 58, 59}));
  series.record.datasize = INT32_MIN;  // damaged
  EXPECT_EQ(qxCTreadarray(series, folder.path.c_str(), "S", 6, -1, 9), QX_SUCCESS);
  EXPECT_EQ(series.record.size, 3) << "nothing is read";
  series.record.datasize = 3;
}

TEST(CompuTrac, RecordsAreFoundByDate) {
  TemporaryFolder folder;
  folder.write("master", master({{1, 7, "N", "S", 'D'}}));
  folder.write("F1.DAT", dataFile(7, 10, 990104, 11));
  double found = -1.0;
  const auto find = [&](double date) {
    return qxCTfindrec(folder.path.c_str(), "S", date, &found);
  };
  EXPECT_EQ(find(kFirst + 4), 4);
  EXPECT_EQ(found, kFirst + 4);
  EXPECT_EQ(find(kFirst + 4.5), 5);
  EXPECT_EQ(found, kFirst + 5);
  EXPECT_EQ(find(kFirst - 1), QX_ERR_RECORD_NOT_FOUND);
  EXPECT_EQ(find(kFirst + 10), QX_ERR_RECORD_NOT_FOUND);
  EXPECT_EQ(found, kFirst + 5) << "left alone";
}

TEST(CompuTrac, TheExtendedDirectoryComesSecond) {
  TemporaryFolder folder;
  folder.write("xmaster", qxtest::extendedMaster(300, 0xBF));  // all but open interest
  folder.write("F300.MWD", dataFile(7, 2, 990104, 3));
  for (const char* name : {"big", "F300.MWD", "a long instrument name", "BIG@I"}) {
    Read read(folder.path, name);
    ASSERT_EQ(read.status, QX_SUCCESS) << name;
    EXPECT_EQ(read.at(read.bars.volume, 1), 71.0);
    EXPECT_EQ(qxDateDiff("D", read.bars.begindate, kFirst), 0);
    EXPECT_EQ(read.bars.frequency, QX_FREQ_INTRADAY);
  }
  EXPECT_EQ(Read(folder.path, "F300.DAT").status, QX_ERR_FILE_NOT_FOUND);

  const std::string list = folder.file("list.txt");
  EXPECT_EQ(qxCTlist(folder.path.c_str(), list.c_str(), 0), QX_SUCCESS);
  const std::string text = qxtest::readFile(list);
  EXPECT_EQ(text.substr(text.find("F300")),
            "F300.MWD     BIG              A long instrument name                           "
            "Intraday  1999/01/04 2000/01/07\n");

  folder.write("xmaster", "broken file\n");
  EXPECT_EQ(Read(folder.path, "big").status, QX_ERR_FILE_NOT_FOUND);
  EXPECT_EQ(qxCTlist(folder.path.c_str(), list.c_str(), 0), QX_ERR_FILE_NOT_FOUND);
  EXPECT_EQ(qxtest::readFile(list).find("F300"), std::string::npos);
  EXPECT_EQ(qxCTlist(folder.path.c_str(), folder.file("no/where").c_str(), 0), QX_ERR_FILE_OPEN);
}

TEST(CompuTrac, MissingDataFileAndNulls) {
  TemporaryFolder folder;
  folder.write("master", master({{1, 7, "N", "S", 'D'}}));
  EXPECT_EQ(Read(folder.path, "S").status, QX_ERR_FILE_OPEN);
  qxBars bars = {};
  EXPECT_EQ(qxCTread(nullptr, "a", "b", 0, 1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxCTread(&bars, nullptr, "b", 0, 1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxCTread(&bars, "a", nullptr, 0, 1), QX_ERR_INVALID_PARM);
  Series series;
  EXPECT_EQ(qxCTreadarray(nullptr, "a", "b", 1, 0, 1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxCTreadarray(series, nullptr, "b", 1, 0, 1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxCTfindrec("a", nullptr, 1.0, nullptr), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxCTlist(nullptr, "b", 0), QX_ERR_INVALID_PARM);
}

struct RealFile {
  const char *folder, *symbol;
  int32_t bars;
  double firstDate, lastDate, closes, volumes, openInterest;
};

TEST(CompuTrac, RealFoldersReadAsKnown) {
  if (qxtest::testDataPath("x").empty()) GTEST_SKIP() << "no real price files";
  const RealFile files[] = {
      {"ether-daily", "F14.DAT", 387, 44235, 44802, 1171806, 703, 6607},
      {"ether-daily", "F29.DAT", 1, 44802, 44802, 1543.5, 0, 0},
      {"lumber-xmaster", "F1.DAT", 242, 29007, 29356, 51133.398788, 121507, 424374},
      {"lumber-xmaster", "F46.DAT", 207, 28935, 29235, 44485.098923, 91224, 309111},
      {"lumber-xmaster", "LB___2022N", 295, 44330, 44757, 234025.199585, 16107, 104634},
      {"bbfinance-mini", "US", 2, 31049, 31050, 5.2604, 76363, 0}};
  for (const RealFile& file : files) {
    Read read(qxtest::testDataPath(std::string("computrac/") + file.folder), file.symbol);
    SCOPED_TRACE(std::string(file.folder) + " " + file.symbol);
    ASSERT_EQ(read.status, QX_SUCCESS);
    ASSERT_EQ(read.bars.barsize, file.bars);
    EXPECT_EQ(read.at(read.bars.date, 0), file.firstDate);
    EXPECT_EQ(read.at(read.bars.date, file.bars - 1), file.lastDate);
    double closes = 0, volumes = 0, openInterest = 0;
    int32_t zeros = 0;
    for (int32_t i = 0; i < file.bars; ++i) {
      closes += read.at(read.bars.close, i);
      volumes += read.at(read.bars.volume, i);
      openInterest += read.at(read.bars.openint, i);
      zeros += read.at(read.bars.volume, i) == 0.0 ? 1 : 0;
    }
    EXPECT_TRUE(near(closes, file.closes, 1e-6));
    EXPECT_TRUE(near(volumes, file.volumes, 1e-5));
    EXPECT_EQ(openInterest, file.openInterest);
    if (std::strcmp(file.symbol, "F14.DAT") == 0) {
      EXPECT_EQ(zeros, 343);
    }
  }
  Read intraday(qxtest::testDataPath("computrac/stooq-intraday"), "2HR.DE");
  ASSERT_EQ(intraday.status, QX_SUCCESS);
  ASSERT_EQ(intraday.bars.barsize, 2);
  EXPECT_EQ(intraday.at(intraday.bars.date, 0), qxYMDtoDate(2013, 11, 15, 9, 5, 0));
  EXPECT_TRUE(near(intraday.at(intraday.bars.close, 1), 8.59, 1e-6));
}

TEST(OtherVendors, AreRecognisedButNotRead) {
  using Find = int32_t (*)(const char*, const char*, double, double*);
  using List = int32_t (*)(const char*, const char*, int32_t);
  using ReadBars = int32_t (*)(qxBars*, const char*, const char*, int32_t, int32_t);
  struct Vendor {
    const char* index;
    Find find;
    List list;
    ReadBars read;
  };
  const Vendor vendors[] = {{"QMASTER", qxCSIfindrec, qxCSIlist, qxCSIread},
                            {"MapInfo.dat", qxDJfindrec, qxDJlist, qxDJread},
                            {"fsfracs.FIL", qxFSfindrec, qxFSlist, qxFSread},
                            {"stocks.ndx", qxTCfindrec, qxTClist, qxTCread},
                            {"GC.TTD", qxTTfindrec, qxTTlist, qxTTread},
                            {"ibm.DTA", qxAIQfindrec, qxAIQlist, qxAIQread}};
  for (const Vendor& vendor : vendors) {
    SCOPED_TRACE(vendor.index);
    TemporaryFolder folder;
    const char* path = folder.path.c_str();
    const std::string list = folder.file("list.out");
    for (int32_t status : {QX_ERR_FILE_NOT_FOUND, QX_ERR_UNKNOWN}) {
      double found = 5.0;
      qxBars bars = {};
      EXPECT_EQ(vendor.find(path, "x", 1.0, &found), status);
      EXPECT_EQ(vendor.read(&bars, path, "x", 0, -1), status);
      EXPECT_EQ(found, 5.0);
      EXPECT_EQ(bars.date.data, nullptr);
      const bool listed = status == QX_ERR_UNKNOWN && vendor.list == qxCSIlist;
      EXPECT_EQ(vendor.list(path, list.c_str(), 0), listed ? QX_SUCCESS : status);
      EXPECT_EQ(qxtest::readFile(list).substr(0, 19), "File Name    Symbol");
      folder.write(vendor.index, "");
    }
    EXPECT_EQ(vendor.find(nullptr, "x", 1.0, nullptr), QX_ERR_INVALID_PARM);
    EXPECT_EQ(vendor.read(nullptr, path, "x", 0, 1), QX_ERR_INVALID_PARM);
    EXPECT_EQ(vendor.list(path, nullptr, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(vendor.list(path, folder.file("no/where").c_str(), 0), QX_ERR_FILE_OPEN);
  }
}

TEST(OtherVendors, CsiDirectoriesAreListed) {
  TemporaryFolder folder;
  const auto record = [](const std::string& name, char type, const std::string& commodity,
                         const std::string& symbol) {
    std::string line(64, ' ');
    put(line, 0, "0012");
    put(line, 4, name);
    line[24] = type;
    put(line, 36, commodity);
    put(line, 45, symbol);
    return line;
  };
  folder.write("qmaster", record("SOYBEANS", 'D', "S", "S2") + std::string(64, ' ') +
                              record("COPPER", 'W', "HG", "") + "torn");
  const std::string list = folder.file("list.out");
  EXPECT_EQ(qxCSIlist(folder.path.c_str(), list.c_str(), 0), QX_SUCCESS);
  const std::string text = qxtest::readFile(list);
  const std::string soybeans =
      "F001.DTA     S2               SOYBEANS" + std::string(41, ' ') + "Daily                \n";
  const std::string copper =
      "F003.DTA     HG               COPPER" + std::string(43, ' ') + "Weekly               \n";
  EXPECT_EQ(text.substr(text.find("F001")), soybeans + copper);
}

}  // namespace
