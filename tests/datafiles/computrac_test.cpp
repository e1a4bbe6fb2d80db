#include <cstring>

#include "tests/support/computrac_files.h"
#include "tests/support/test_support.h"

namespace {

using qxtest::BarSet;
using qxtest::dataFile;
using qxtest::expectNullsRefused;
using qxtest::master;
using qxtest::near;
using qxtest::put;
using qxtest::Series;
using qxtest::seriesOf;
using qxtest::sumOf;
using qxtest::TemporaryFolder;

constexpr double kFirst = 36164.0;  // 4 January 1999

// A folder with one instrument, S, whose data is F1.DAT: ten bars, and two that are not counted.
struct Instrument : TemporaryFolder {
  explicit Instrument(const std::string& data = dataFile(7, 12, 990104, 11), int fields = 7,
                      char period = 'D') {
    write("master", master({{1, fields, "N", "S", period}}));
    write("F1.DAT", data);
  }
};

struct Read : BarSet {
  int32_t status;
  Read(const char* folder, const char* file, int32_t start = 0, int32_t count = -1)
      : status(qxCTread(&record, folder, file, start, count)) {}
};

TEST(CompuTrac, AnInstrumentHasFiveNames) {
  TemporaryFolder folder;
  folder.write("master",
               master({{7, 7, "Alpha Beta", "ABC", 'D'}, {8, 5, "Gamma of 16 char", " G H", 'W'}}));
  folder.write("F7.DAT", dataFile(7, 3, 990104, 4));
  folder.write("f8.dat", dataFile(5, 2, 990104, 3));
  for (const char* name : {"F7.DAT", "f7.dat", "abc", "ABC@D", "abc@d", "alpha beta"}) {
    Read read(folder, name);
    ASSERT_EQ(read.status, QX_SUCCESS) << name;
    EXPECT_EQ(read->barsize, 3) << name;
    EXPECT_STREQ(read->name, "F7.DAT");
    EXPECT_STREQ(read->symbol, "ABC");
    EXPECT_STREQ(read->description, "Alpha Beta");
  }
  for (const char* name : {"G H", "g", "G H@W", "gamma of 16 char", "F8.DAT"}) {
    Read read(folder, name);
    EXPECT_EQ(read.status, QX_SUCCESS) << name;
    EXPECT_EQ(read->frequency, QX_FREQ_WEEKLY);
  }
  for (const char* name : {"AB", "ABC@W", "F7.MWD", "", "Alpha"}) {
    Read read(folder, name);
    EXPECT_EQ(read.status, QX_ERR_FILE_NOT_FOUND) << name;
    EXPECT_EQ(read->date.data, nullptr);
  }
}

TEST(CompuTrac, EntriesMarkedAsFoldersAreSkipped) {
  TemporaryFolder folder;
  std::string bytes = master(
      {{1, 7, "Name", "ABC", 'D'}, {2, 7, "Name", "ABC", 'D'}, {2, 7, "Name", "UNCOUNTED", 'D'}});
  bytes[0] = 2;
  put(bytes, 53 + 18, "<DIR>");
  put(bytes, 2 * 53 + 18, "<dir>");
  folder.write("MASTER", bytes);
  folder.write("F2.DAT", dataFile(7, 1, 990104, 2));
  Read read(folder, "ABC");
  EXPECT_EQ(read.status, QX_SUCCESS);
  EXPECT_STREQ(read->name, "F2.DAT");
  EXPECT_EQ(Read(folder, "UNCOUNTED").status, QX_ERR_FILE_NOT_FOUND);
  put(bytes, 0, "\xFF\xFF");
  folder.write("MASTER", bytes);
  EXPECT_EQ(Read(folder, "ABC").status, QX_ERR_FILE_NOT_FOUND) << "a negative count";
}

TEST(CompuTrac, FieldsFollowPeriodAndCount) {
  struct Case {
    char period;
    int fields;
    int place[6];  // fields of open, high, low, close, volume, open interest; 0 when absent
  };
  const std::string letters = "iIDWMQY";  // by the code of the frequency; i is no period
  const Case cases[] = {
      {'D', 5, {0, 2, 3, 4, 5, 0}}, {'W', 6, {2, 3, 4, 5, 6, 0}}, {'M', 7, {2, 3, 4, 5, 6, 7}},
      {'Q', 8, {2, 3, 4, 5, 6, 7}}, {'Y', 5, {0, 2, 3, 4, 5, 0}}, {'i', 6, {2, 3, 4, 5, 6, 0}},
      {'I', 4, {0, 0, 0, 3, 4, 0}}, {'I', 5, {0, 0, 0, 3, 4, 5}}, {'I', 6, {0, 3, 4, 5, 6, 0}},
      {'I', 7, {3, 4, 5, 6, 7, 0}}, {'I', 8, {3, 4, 5, 6, 7, 8}}};
  for (const auto& [period, fields, place] : cases) {
    SCOPED_TRACE(period + std::to_string(fields));
    Read read(Instrument(dataFile(fields, 2, 990104, 3), fields, period), "S");
    ASSERT_EQ(read.status, QX_SUCCESS);
    ASSERT_EQ(read->barsize, 2);
    const double time = period == 'I' ? 21.0 / 86400.0 : 0.0;  // field 2 of bar 1 reads 21
    EXPECT_TRUE(near(read->date.data[1], kFirst + 1 + time, 1e-15));
    for (size_t f = 0; f < 6; ++f) {
      const double* values = seriesOf(read.record)[f + 1]->data;
      EXPECT_EQ(values[0], 10.0 * place[f]) << f;
      EXPECT_EQ(values[1], place[f] == 0 ? 0.0 : 10.0 * place[f] + 1) << f;
    }
    EXPECT_EQ(qxDateDiff("D", read->begindate, kFirst), 0);
    EXPECT_EQ(qxDateDiff("D", read->enddate, 36532.0), 0);  // 7 January 2000
    EXPECT_EQ(read->filetype, QX_FILE_COMPUTRAC);
    EXPECT_EQ(read->frequency, static_cast<int32_t>(letters.find(period)));
    EXPECT_EQ(read->reccnt, 2);
  }
}

TEST(CompuTrac, ADescriptionFileReplacesTheTable) {
  TemporaryFolder folder;
  folder.write("master", master({{1, 4, "N", "FOUR", 'D'}, {2, 0, "N", "NONE", 'D'}}));
  folder.write("F1.DAT", dataFile(4, 2, 990104, 3));
  folder.write("F2.DAT", dataFile(4, 1, 990104, 2));
  folder.write("F2.DOP", "\"DATE\"\n\"CLOSE\"\n");
  EXPECT_EQ(Read(folder, "FOUR").status, QX_ERR_FILE_READ) << "no such combination";
  EXPECT_EQ(Read(folder, "NONE").status, QX_ERR_FILE_READ) << "no fields";
  folder.write("f1.dop", "\"DATE\",0\n\n\"junk\"\n \" Close\" ,1,2\r\n\"VOLUME\"\n\"LOW\"\n");
  Read described(folder, "FOUR");
  ASSERT_EQ(described.status, QX_SUCCESS);
  EXPECT_EQ(described->close.data[0], 30.0);
  EXPECT_EQ(described->volume.data[0], 40.0);
  EXPECT_EQ(described->low.data[0], 0.0) << "beyond the record";
  for (const char* incomplete : {"\"DATE\"\n\"OPEN\"\n", "\"CLOSE\"\n"}) {
    folder.write("f1.dop", incomplete);
    EXPECT_EQ(Read(folder, "FOUR").status, QX_ERR_FILE_READ) << incomplete;
  }
}

TEST(CompuTrac, CountsAreBoundedByTheFile) {
  const struct {
    const char* what;
    std::string bytes;
    int32_t status, bars, records;
  } cases[] = {{"a negative count", dataFile(7, 9, 990104, 0x8005), QX_SUCCESS, 9, 9},
               {"count too large", dataFile(7, 2, 990104, 30000), QX_SUCCESS, 2, 29999},
               {"a torn record", dataFile(7, 1, 990104, 2).substr(0, 28 * 2 - 1), QX_SUCCESS, 0, 1},
               {"a torn one among many", dataFile(7, 2000, 990104, 2001).substr(0, 28 * 2001 - 1),
                QX_SUCCESS, 1999, 2000},
               {"a torn one that the 8 bytes beyond the end complete",
                dataFile(7, 9, 990104, 0x8005).substr(0, 280 - 8), QX_SUCCESS, 8, 9},
               {"count smaller than the file", dataFile(7, 5, 990104, 3), QX_SUCCESS, 2, 2},
               {"no bars", dataFile(7, 0, 990104, 1), QX_ERR_RECORD_NOT_FOUND, 0, 0},
               {"count of 0", dataFile(7, 3, 990104, 0), QX_ERR_RECORD_NOT_FOUND, 0, 0},
               {"no header", std::string(3, '\0'), QX_ERR_FILE_READ, 0, 0},
               {"an empty file", "", QX_ERR_FILE_READ, 0, 0}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    Read read(Instrument(c.bytes), "S");
    EXPECT_EQ(read.status, c.status);
    EXPECT_EQ(read->barsize, c.bars);
    EXPECT_EQ(read->reccnt, c.records);
    if (c.bars > 0) {
      EXPECT_EQ(read->close.data[c.bars - 1], 50 + c.bars - 1);
    }
  }
  EXPECT_EQ(Read(Instrument(dataFile(7, 3, 990104, 0)), "S", -1).status, QX_SUCCESS)
      << "all of none";
}

TEST(CompuTrac, RangesOfBarsAndSeries) {
  const Instrument folder;
  const struct {
    int32_t start, count;
    std::vector<double> lows;
  } ranges[] = {{0, -1, {40, 41, 42, 43, 44, 45, 46, 47, 48, 49}},
                {-5, -1, {40, 41, 42, 43, 44, 45, 46, 47, 48, 49}},
                {4, -1, {44, 45, 46, 47, 48, 49}},
                {-1, 3, {47, 48, 49}},
                {-1, 12, {40, 41, 42, 43, 44, 45, 46, 47, 48, 49}},
                {8, 5, {48, 49}},
                {2, 3, {42, 43, 44}},
                {10, 1, {}}};
  for (const auto& [start, count, lows] : ranges) {
    const int32_t status = lows.empty() ? QX_ERR_RECORD_NOT_FOUND : QX_SUCCESS;
    Read read(folder, "S", start, count);
    Series series;
    EXPECT_EQ(read.status, status);
    EXPECT_EQ(qxCTreadarray(series, folder, "S", 5, start, count), status);
    EXPECT_EQ(qxtest::valuesOf(read->low), lows);
    EXPECT_EQ(series.values(), lows);
    if (count < 0) {
      EXPECT_EQ(read->datasize, read->barsize) << "no more is allocated than is read";
      EXPECT_EQ(series.record.datasize, read->barsize);
    }
  }
  Read empty(folder, "S", 0, 0);
  EXPECT_EQ(empty.status, QX_SUCCESS);
  EXPECT_EQ(empty->date.data, nullptr);
  EXPECT_STREQ(empty->symbol, "S");

  Series dates, refused;
  EXPECT_EQ(qxCTreadarray(dates, folder, "S", 1, 9, -1), QX_SUCCESS);
  EXPECT_EQ(dates.values(), std::vector<double>{kFirst + 9});
  for (const int32_t field : {0, 9, INT32_MIN}) {
    EXPECT_EQ(qxCTreadarray(refused, folder, "S", field, 0, -1), QX_ERR_INVALID_PARM);
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

  Read flagged(folder, "abc");
  ASSERT_EQ(flagged.status, QX_SUCCESS);
  EXPECT_STREQ(flagged->symbol, "ABC            ");
  EXPECT_EQ(flagged->date.data[0], 0.0);
  EXPECT_EQ(flagged->volume.data[0], 0.0);
  EXPECT_EQ(flagged->openint.data[0], 70.0);

  Read two(folder, "two");
  ASSERT_EQ(two.status, QX_SUCCESS);
  EXPECT_STREQ(two->description, "Two");
  EXPECT_EQ(two->begindate, 0.0);
  const std::string list = folder.file("list.txt");
  EXPECT_EQ(qxCTlist(folder, list.c_str(), 0), QX_SUCCESS);
  EXPECT_NE(qxtest::readFile(list).find("Daily                2000/01/07\n"), std::string::npos);
}

TEST(CompuTrac, SetsWithStorageLimitTheCount) {
  const Instrument folder;
  BarSet bars(std::vector<qxtest::Bar>(4));
  EXPECT_EQ(qxCTread(bars, folder, "S", -1, 6), QX_SUCCESS);
  EXPECT_EQ(bars->barsize, 4);
  EXPECT_EQ(bars->date.data[0], kFirst + 6) << "the last ones";
  EXPECT_EQ(qxCTread(bars, folder, "S", 0, 0), QX_SUCCESS);
  EXPECT_EQ(bars->barsize, 0);

  Series series{7, 7, 7};
  EXPECT_EQ(qxCTreadarray(series, folder, "S", 6, -1, 9), QX_SUCCESS);
  EXPECT_EQ(series.values(), (std::vector<double>{57, 58, 59}));
  series.record.datasize = INT32_MIN;  // damaged
  EXPECT_EQ(qxCTreadarray(series, folder, "S", 6, -1, 9), QX_SUCCESS);
  EXPECT_EQ(series.record.size, 3) << "nothing is read";
}

TEST(CompuTrac, RecordsAreFoundByDate) {
  const Instrument folder;
  const std::tuple<double, int32_t, double> cases[] = {
      {kFirst + 4, 4, kFirst + 4},
      {kFirst + 4.5, 5, kFirst + 5},
      {kFirst - 1, QX_ERR_RECORD_NOT_FOUND, -1.0},  // `found` is left alone
      {kFirst + 10, QX_ERR_RECORD_NOT_FOUND, -1.0}};
  for (const auto& [date, record, dateFound] : cases) {
    double found = -1.0;
    EXPECT_EQ(qxCTfindrec(folder, "S", date, &found), record);
    EXPECT_EQ(found, dateFound);
  }
}

TEST(CompuTrac, TheExtendedDirectoryComesSecond) {
  TemporaryFolder folder;
  folder.write("xmaster", qxtest::extendedMaster(300, 0xBF));  // all but open interest
  folder.write("F300.MWD", dataFile(7, 2, 990104, 3));
  for (const char* name : {"big", "F300.MWD", "a long instrument name", "BIG@I"}) {
    Read read(folder, name);
    ASSERT_EQ(read.status, QX_SUCCESS) << name;
    EXPECT_EQ(read->volume.data[1], 71.0);
    EXPECT_EQ(qxDateDiff("D", read->begindate, kFirst), 0);
    EXPECT_EQ(read->frequency, QX_FREQ_INTRADAY);
  }
  EXPECT_EQ(Read(folder, "F300.DAT").status, QX_ERR_FILE_NOT_FOUND);

  const std::string list = folder.file("list.txt");
  EXPECT_EQ(qxCTlist(folder, list.c_str(), 0), QX_SUCCESS);
  const std::string text = qxtest::readFile(list);
  EXPECT_EQ(text.substr(text.find("F300")),
            "F300.MWD     BIG              A long instrument name                           "
            "Intraday  1999/01/04 2000/01/07\n");

  folder.write("xmaster", "broken file\n");
  EXPECT_EQ(Read(folder, "big").status, QX_ERR_FILE_NOT_FOUND);
  EXPECT_EQ(qxCTlist(folder, list.c_str(), 0), QX_ERR_FILE_NOT_FOUND);
  EXPECT_EQ(qxtest::readFile(list).find("F300"), std::string::npos);
  EXPECT_EQ(qxCTlist(folder, folder.file("no/where").c_str(), 0), QX_ERR_FILE_OPEN);

  folder.write("xmaster", qxtest::extendedMaster(300, 0xBF));
  folder.write("master", master({{1, 7, "N", "BIG", 'D'}}));
  EXPECT_EQ(Read(folder, "BIG").status, QX_ERR_FILE_OPEN) << "the one of \"master\" has no data";
}

TEST(CompuTrac, MissingDataFileAndNulls) {
  constexpr int32_t kRefused = QX_ERR_INVALID_PARM;
  TemporaryFolder folder;
  folder.write("master", master({{1, 7, "N", "S", 'D'}}));
  BarSet bars;
  Series series;
  EXPECT_EQ(qxCTread(bars, folder, "S", 0, -1), QX_ERR_FILE_OPEN);
  expectNullsRefused("qxCTread", qxCTread, kRefused, bars, "a", "b", 0, 1);
  expectNullsRefused("qxCTreadarray", qxCTreadarray, kRefused, series, "a", "b", 1, 0, 1);
  expectNullsRefused("qxCTfindrec", qxCTfindrec, kRefused, "a", "b", 1.0, nullptr);
  expectNullsRefused("qxCTlist", qxCTlist, kRefused, "a", "b", 0);
}

TEST(CompuTrac, RealFoldersReadAsKnown) {
  if (qxtest::testDataPath("x").empty()) GTEST_SKIP() << "no real price files";
  const struct {
    const char *folder, *symbol;
    int32_t bars;
    double firstDate, lastDate, closes, volumes, openInterest;
  } files[] = {{"ether-daily", "F14.DAT", 387, 44235, 44802, 1171806, 703, 6607},
               {"ether-daily", "F29.DAT", 1, 44802, 44802, 1543.5, 0, 0},
               {"lumber-xmaster", "F1.DAT", 242, 29007, 29356, 51133.398788, 121507, 424374},
               {"lumber-xmaster", "F46.DAT", 207, 28935, 29235, 44485.098923, 91224, 309111},
               {"lumber-xmaster", "LB___2022N", 295, 44330, 44757, 234025.199585, 16107, 104634},
               {"bbfinance-mini", "US", 2, 31049, 31050, 5.2604, 76363, 0}};
  const auto path = [](const char* folder) {
    return qxtest::testDataPath(std::string("computrac/") + folder);
  };
  for (const auto& file : files) {
    SCOPED_TRACE(std::string(file.folder) + " " + file.symbol);
    Read read(path(file.folder).c_str(), file.symbol);
    ASSERT_EQ(read->barsize, file.bars);
    EXPECT_EQ(read->date.data[0], file.firstDate);
    EXPECT_EQ(read->date.data[file.bars - 1], file.lastDate);
    EXPECT_TRUE(near(sumOf(read->close), file.closes, 1e-6));
    EXPECT_TRUE(near(sumOf(read->volume), file.volumes, 1e-5));
    EXPECT_EQ(sumOf(read->openint), file.openInterest);
  }
  Read intraday(path("stooq-intraday").c_str(), "2HR.DE");
  ASSERT_EQ(intraday->barsize, 2);
  EXPECT_EQ(intraday->date.data[0], qxYMDtoDate(2013, 11, 15, 9, 5, 0));
  EXPECT_TRUE(near(intraday->close.data[1], 8.59, 1e-6));
}

TEST(OtherVendors, AreRecognisedButNotRead) {
  const struct {
    const char* index;
    decltype(&qxCTfindrec) find;
    decltype(&qxCTlist) list;
    decltype(&qxCTread) read;
  } vendors[] = {{"QMASTER", qxCSIfindrec, qxCSIlist, qxCSIread},
                 {"MapInfo.dat", qxDJfindrec, qxDJlist, qxDJread},
                 {"fsfracs.FIL", qxFSfindrec, qxFSlist, qxFSread},
                 {"stocks.ndx", qxTCfindrec, qxTClist, qxTCread},
                 {"GC.TTD", qxTTfindrec, qxTTlist, qxTTread},
                 {"ibm.DTA", qxAIQfindrec, qxAIQlist, qxAIQread}};
  for (const auto& vendor : vendors) {
    SCOPED_TRACE(vendor.index);
    TemporaryFolder folder;
    const std::string list = folder.file("list.out");
    double found = 5.0;
    BarSet bars;
    for (const int32_t status : {QX_ERR_FILE_NOT_FOUND, QX_ERR_UNKNOWN}) {
      EXPECT_EQ(vendor.find(folder, "x", 1.0, &found), status);
      EXPECT_EQ(vendor.read(bars, folder, "x", 0, -1), status);
      const bool listed = status == QX_ERR_UNKNOWN && vendor.list == qxCSIlist;
      EXPECT_EQ(vendor.list(folder, list.c_str(), 0), listed ? QX_SUCCESS : status);
      EXPECT_EQ(qxtest::readFile(list).substr(0, 19), "File Name    Symbol");
      folder.write(vendor.index, "");
    }
    EXPECT_EQ(found, 5.0);
    EXPECT_EQ(bars->date.data, nullptr);
    constexpr int32_t kRefused = QX_ERR_INVALID_PARM;
    expectNullsRefused("find", vendor.find, kRefused, folder, "x", 1.0, nullptr);
    expectNullsRefused("read", vendor.read, kRefused, bars, folder, "x", 0, 1);
    expectNullsRefused("list", vendor.list, kRefused, folder, list.c_str(), 0);
    EXPECT_EQ(vendor.list(folder, folder.file("no/where").c_str(), 0), QX_ERR_FILE_OPEN);
  }
}

TEST(OtherVendors, CsiDirectoriesAreListed) {
  TemporaryFolder folder;
  const auto record = [](const std::string& name, char type, const std::string& commodity,
                         const std::string& symbol) {
    std::string line = "0012" + std::string(60, ' ');
    put(line, 4, name);
    line[24] = type;
    put(line, 36, commodity);
    put(line, 45, symbol);
    return line;
  };
  folder.write("qmaster", record("SOYBEANS", 'D', "S", "S2") + std::string(64, ' ') +
                              record("COPPER", 'W', "HG", "") + "torn");
  const std::string text =
      qxtest::written([&](const char* path) { return qxCSIlist(folder, path, 0); });
  EXPECT_EQ(text.substr(text.find("F001")),
            "F001.DTA     S2               SOYBEANS" + std::string(41, ' ') +
                "Daily                \nF003.DTA     HG               COPPER" +
                std::string(43, ' ') + "Weekly               \n");
}

}  // namespace
