#include <cstring>

#include "tests/support/computrac_files.h"
#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

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
    EXPECT_EQ(read->barsize, 3) << name;
    EXPECT_STREQ(read->name, "F7.DAT");
    EXPECT_STREQ(read->symbol, "ABC");
    EXPECT_STREQ(read->description, "Alpha Beta");
  }
  for (const char* name : {"G H", "g", "G H@W", "gamma of 16 char", "F8.DAT"}) {
    EXPECT_EQ(Read(folder, name)->frequency, QX_FREQ_WEEKLY) << name;
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
  EXPECT_STREQ(Read(folder, "ABC")->name, "F2.DAT");
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
  // LOW would be beyond the record.
  EXPECT_EQ(barsOf(Read(folder, "FOUR")),
            (std::vector<Bar>{{kFirst, 0, 0, 0, 30, 40, 0}, {kFirst + 1, 0, 0, 0, 31, 41, 0}}));
  for (const char* incomplete : {"\"DATE\"\n\"OPEN\"\n", "\"CLOSE\"\n"}) {
    folder.write("f1.dop", incomplete);
    EXPECT_EQ(Read(folder, "FOUR").status, QX_ERR_FILE_READ) << incomplete;
  }
}

TEST(CompuTrac, CountsAreBoundedByTheFile) {
  const auto expectCounts = [](const std::string& data, int32_t bars, int32_t records) {
    Read read(Instrument(data), "S");
    EXPECT_EQ(read.status, QX_SUCCESS);
    EXPECT_EQ(read->reccnt, records);
    ASSERT_EQ(read->barsize, bars);
    EXPECT_EQ(bars == 0 ? 49 : read->close.data[bars - 1], 49 + bars);
  };
  const std::string negative = dataFile(7, 9, 990104, 0x8005);
  expectCounts(negative, 9, 9);
  expectCounts(dataFile(7, 5, 990104, 3), 2, 2);
  expectCounts(dataFile(7, 2, 990104, 30000), 2, 29999);
  // Torn records, the last one completed by the 8 bytes that are read beyond the end.
  expectCounts(dataFile(7, 1, 990104, 2).substr(0, 28 * 2 - 1), 0, 1);
  expectCounts(dataFile(7, 2000, 990104, 2001).substr(0, 28 * 2001 - 1), 1999, 2000);
  expectCounts(negative.substr(0, 28 * 10 - 8), 8, 9);

  const auto status = [](const std::string& data, int32_t start = 0) {
    return Read(Instrument(data), "S", start).status;
  };
  EXPECT_EQ(status(dataFile(7, 0, 990104, 1)), QX_ERR_RECORD_NOT_FOUND);
  EXPECT_EQ(status(dataFile(7, 3, 990104, 0)), QX_ERR_RECORD_NOT_FOUND);
  EXPECT_EQ(status(dataFile(7, 3, 990104, 0), -1), QX_SUCCESS) << "all of none";
  EXPECT_EQ(status(std::string(3, '\0')), QX_ERR_FILE_READ);
  EXPECT_EQ(status(""), QX_ERR_FILE_READ);
}

TEST(CompuTrac, RangesOfBarsAndSeries) {
  const Instrument folder;
  // The low prices 40 .. 49 of bars and of a series alike.
  const auto lows = [&](int32_t start, int32_t count, int32_t status = QX_SUCCESS) {
    Read read(folder, "S", start, count);
    Series series;
    EXPECT_EQ(read.status, status);
    EXPECT_EQ(qxCTreadarray(series, folder, "S", 5, start, count), status);
    EXPECT_EQ(valuesOf(read->low), series.values());
    if (count < 0) {
      EXPECT_EQ(read->datasize, read->barsize) << "no more is allocated than is read";
      EXPECT_EQ(series.record.datasize, read->barsize);
    }
    return series.values();
  };
  using Lows = std::vector<double>;
  for (const auto& [start, count] : {std::pair{0, -1}, {-5, -1}, {-1, 12}}) {
    EXPECT_EQ(lows(start, count), (Lows{40, 41, 42, 43, 44, 45, 46, 47, 48, 49}));
  }
  EXPECT_EQ(lows(1, -1), (Lows{41, 42, 43, 44, 45, 46, 47, 48, 49}));
  EXPECT_EQ(lows(-1, 3), (Lows{47, 48, 49}));
  EXPECT_EQ(lows(8, 5), (Lows{48, 49}));
  EXPECT_EQ(lows(2, 3), (Lows{42, 43, 44}));
  EXPECT_EQ(lows(10, 1, QX_ERR_RECORD_NOT_FOUND), Lows{});
  EXPECT_EQ(lows(0, 0), Lows{});
  EXPECT_STREQ(Read(folder, "S", 0, 0)->symbol, "S");

  Series dates, refused;
  EXPECT_TRUE(gives(qxCTreadarray(dates, folder, "S", 1, 9, -1), dates, {kFirst + 9}));
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

  Read flagged(folder, "abc"), two(folder, "two");
  EXPECT_STREQ(flagged->symbol, "ABC            ");
  EXPECT_EQ(barsOf(flagged), (std::vector<Bar>{{0, 20, 30, 40, 50, 0, 70}}));
  EXPECT_STREQ(two->description, "Two");
  EXPECT_EQ(two->begindate, 0.0);
  const auto list = [&](const char* path) { return qxCTlist(folder, path, 0); };
  EXPECT_NE(written(list).find("Daily                2000/01/07\n"), std::string::npos);
}

TEST(CompuTrac, SetsWithStorageLimitTheCount) {
  const Instrument folder;
  BarSet bars(std::vector<Bar>(4));
  EXPECT_EQ(qxCTread(bars, folder, "S", -1, 6), QX_SUCCESS);
  EXPECT_EQ(valuesOf(bars->low), (std::vector<double>{46, 47, 48, 49})) << "the last ones";
  EXPECT_EQ(qxFILEread("CT", bars, folder, "S", 0, 0), QX_SUCCESS);
  EXPECT_EQ(bars->barsize, 0);

  Series series{7, 7, 7};
  EXPECT_TRUE(gives(qxCTreadarray(series, folder, "S", 6, -1, 9), series, {57, 58, 59}));
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
  EXPECT_EQ(qxFILEfindrec("CT", folder, "S", kFirst + 4, nullptr), 4);
}

TEST(CompuTrac, TheExtendedDirectoryComesSecond) {
  TemporaryFolder folder;
  folder.write("xmaster", extendedMaster(300, 0xBF));  // all but open interest
  folder.write("F300.MWD", dataFile(7, 2, 990104, 3));
  for (const char* name : {"big", "F300.MWD", "a long instrument name", "BIG@I"}) {
    Read read(folder, name);
    ASSERT_EQ(read->barsize, 2) << name;
    EXPECT_EQ(read->volume.data[1], 71.0);
    EXPECT_EQ(qxDateDiff("D", read->begindate, kFirst), 0);
    EXPECT_EQ(read->frequency, QX_FREQ_INTRADAY);
  }
  EXPECT_EQ(Read(folder, "F300.DAT").status, QX_ERR_FILE_NOT_FOUND);

  const std::string list = folder.file("list.txt");
  EXPECT_EQ(qxFILElist("2", folder, list.c_str(), 0), QX_SUCCESS);
  const std::string text = readFile(list);
  EXPECT_EQ(text.substr(text.find("F300")),
            "F300.MWD     BIG              A long instrument name                           "
            "Intraday  1999/01/04 2000/01/07\n");

  folder.write("xmaster", "broken file\n");
  EXPECT_EQ(Read(folder, "big").status, QX_ERR_FILE_NOT_FOUND);
  EXPECT_EQ(qxCTlist(folder, list.c_str(), 0), QX_ERR_FILE_NOT_FOUND);
  EXPECT_EQ(readFile(list).find("F300"), std::string::npos);

  folder.write("xmaster", extendedMaster(300, 0xBF));
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
  if (testDataPath("x").empty()) GTEST_SKIP() << "no real price files";
  const auto path = [](const char* folder) {
    return testDataPath(std::string("computrac/") + folder);
  };
  const auto expectRead = [&](const char* folder, const char* symbol, double firstDate,
                              double lastDate, size_t bars, double closes, double volumes,
                              double openInterest) {
    SCOPED_TRACE(symbol);
    Read read(path(folder).c_str(), symbol);
    const auto dates = valuesOf(read->date);
    ASSERT_EQ(dates.size(), bars);
    EXPECT_EQ(dates.front(), firstDate);
    EXPECT_EQ(dates.back(), lastDate);
    EXPECT_TRUE(near(sumOf(read->close), closes, 1e-6));
    EXPECT_TRUE(near(sumOf(read->volume), volumes, 1e-5));
    EXPECT_EQ(sumOf(read->openint), openInterest);
  };
  expectRead("ether-daily", "F14.DAT", 44235, 44802, 387, 1171806, 703, 6607);
  expectRead("ether-daily", "F29.DAT", 44802, 44802, 1, 1543.5, 0, 0);
  expectRead("lumber-xmaster", "F1.DAT", 29007, 29356, 242, 51133.398788, 121507, 424374);
  expectRead("lumber-xmaster", "F46.DAT", 28935, 29235, 207, 44485.098923, 91224, 309111);
  expectRead("lumber-xmaster", "LB___2022N", 44330, 44757, 295, 234025.199585, 16107, 104634);
  expectRead("bbfinance-mini", "US", 31049, 31050, 2, 5.2604, 76363, 0);
  Read intraday(path("stooq-intraday").c_str(), "2HR.DE");
  ASSERT_EQ(intraday->barsize, 2);
  EXPECT_EQ(intraday->date.data[0], qxYMDtoDate(2013, 11, 15, 9, 5, 0));
  EXPECT_TRUE(near(intraday->close.data[1], 8.59, 1e-6));
}

TEST(OtherVendors, AreRecognisedButNotRead) {
  const struct {
    const char *type, *index;
    decltype(&qxCTfindrec) find;
    decltype(&qxCTlist) list;
    decltype(&qxCTread) read;
  } vendors[] = {{"CSI", "QMASTER", qxCSIfindrec, qxCSIlist, qxCSIread},
                 {"DJ", "MapInfo.dat", qxDJfindrec, qxDJlist, qxDJread},
                 {"FS", "fsfracs.FIL", qxFSfindrec, qxFSlist, qxFSread},
                 {"TC", "stocks.ndx", qxTCfindrec, qxTClist, qxTCread},
                 {"TT", "GC.TTD", qxTTfindrec, qxTTlist, qxTTread},
                 {"AIQ", "ibm.DTA", qxAIQfindrec, qxAIQlist, qxAIQread}};
  for (const auto& [type, index, find, list, read] : vendors) {
    SCOPED_TRACE(type);
    TemporaryFolder folder;
    const std::string out = folder.file("list.out");
    BarSet bars;
    for (const int32_t status : {QX_ERR_FILE_NOT_FOUND, QX_ERR_UNKNOWN}) {
      double found = 5.0;
      EXPECT_EQ(find(folder, "x", 1.0, &found), status);
      EXPECT_EQ(found, 5.0);
      EXPECT_EQ(qxFILEfindrec(type, folder, "x", 1.0, &found), status);
      EXPECT_EQ(found, 0.0);
      EXPECT_EQ(read(bars, folder, "x", 0, -1), status);
      EXPECT_EQ(qxFILEread(type, bars, folder, "x", 0, -1), status);
      EXPECT_EQ(bars->date.data, nullptr);
      const bool listed = status == QX_ERR_UNKNOWN && list == qxCSIlist;
      EXPECT_EQ(list(folder, out.c_str(), 0), listed ? QX_SUCCESS : status);
      EXPECT_EQ(qxFILElist(type, folder, out.c_str(), 0), listed ? QX_SUCCESS : status);
      EXPECT_EQ(readFile(out).substr(0, 19), "File Name    Symbol");
      folder.write(index, "");
    }
    constexpr int32_t kRefused = QX_ERR_INVALID_PARM;
    expectNullsRefused("find", find, kRefused, folder, "x", 1.0, nullptr);
    expectNullsRefused("read", read, kRefused, bars, folder, "x", 0, 1);
    expectNullsRefused("list", list, kRefused, folder, out.c_str(), 0);
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
  const std::string text = written([&](const char* path) { return qxCSIlist(folder, path, 0); });
  EXPECT_EQ(text.substr(text.find("F001")),
            "F001.DTA     S2               SOYBEANS" + std::string(41, ' ') +
                "Daily                \nF003.DTA     HG               COPPER" +
                std::string(43, ' ') + "Weekly               \n");
}

}  // namespace
