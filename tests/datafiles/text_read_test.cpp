#include <cstring>
#include <string>
#include <vector>

#include "tests/support/test_support.h"

namespace {

using qxtest::BarSet;
using qxtest::Series;
using qxtest::TemporaryFolder;

// date, open, high, low, close, volume, open interest, by commas, year first.
qxTXTinfo dailyLayout(int32_t skip = 0) {
  return {1, 0, 2, 3, 4, 5, 6, 7, 0, skip, ","};
}

// Lines "2001-01-DD,N,..." whose closes are the day numbers.
std::string days(std::initializer_list<int> numbers) {
  std::string text;
  for (const int day : numbers) {
    text += "2001-01-" + std::to_string(day) + ",1,2,0.5," + std::to_string(day) + ",100,7\n";
  }
  return text;
}

struct Reading {
  TemporaryFolder folder;
  BarSet bars;
  int32_t status = QX_ERR_UNKNOWN;

  void read(const std::string& bytes, const qxTXTinfo& info, int32_t start, int32_t count) {
    folder.write("p.csv", bytes);
    status = qxTXTread(bars, folder.path.c_str(), "p.csv", &info, start, count);
  }
  std::vector<double> closes() {
    if (bars->close.data == nullptr) return {};
    return std::vector<double>(bars->close.data, bars->close.data + bars->barsize);
  }
};

using Closes = std::vector<double>;

TEST(TextRead, FillsBarsAndFileInformation) {
  Reading r;
  std::memset(r.bars->cusip, 'x', sizeof r.bars->cusip);
  r.bars->strikeprice = 9;
  r.bars->frequency = 2;
  r.read("header\n2001-01-02,10.5,11,9.25,10,1000,55\r\n\n 2001-01-03,+1e1,-2,x,.5\n",
         dailyLayout(1), 0, -1);
  ASSERT_EQ(r.status, QX_SUCCESS);
  ASSERT_EQ(r.bars->barsize, 2);
  EXPECT_EQ(r.bars->date.data[0], qxYMDtoDate(2001, 1, 2, 0, 0, 0));
  const double first[] = {r.bars->open.data[0],  r.bars->high.data[0],   r.bars->low.data[0],
                          r.bars->close.data[0], r.bars->volume.data[0], r.bars->openint.data[0]};
  const double expected[] = {10.5, 11, 9.25, 10, 1000, 55};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(first[i], expected[i]);
  const double second[] = {r.bars->open.data[1],  r.bars->high.data[1],   r.bars->low.data[1],
                           r.bars->close.data[1], r.bars->volume.data[1], r.bars->openint.data[1]};
  const double rest[] = {10, -2, 0, 0.5, 0, 0};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(second[i], rest[i]);
  EXPECT_EQ(r.bars->reccnt, 2);
  EXPECT_EQ(r.bars->path, r.folder.path);
  EXPECT_STREQ(r.bars->description, "p");
  EXPECT_STREQ(r.bars->symbol, "p");
  EXPECT_STREQ(r.bars->cusip, "");
  EXPECT_EQ(r.bars->filetype, QX_FILE_TEXT);
  EXPECT_EQ(r.bars->frequency, 0);
  EXPECT_EQ(r.bars->strikeprice, 0.0);
}

TEST(TextRead, NamesAreCutToTheirFields) {
  Reading r;
  const std::string name = std::string(60, 'n') + ".long.csv";
  r.folder.write(name, days({1}));
  const qxTXTinfo info = dailyLayout();
  const std::string folder = "  " + r.folder.path + " ";
  ASSERT_EQ(qxTXTread(r.bars, folder.c_str(), name.c_str(), &info, 0, -1), QX_SUCCESS);
  EXPECT_EQ(r.bars->path, folder) << "the folder as it was given";
  EXPECT_EQ(r.bars->description, std::string(47, 'n'));
  EXPECT_EQ(r.bars->symbol, std::string(15, 'n'));
  EXPECT_LE(std::strlen(r.bars->name), 15u);
}

struct RangeCase {
  int32_t start, count, status;
  Closes closes;
};

void expectRanges(const std::string& bytes, const std::vector<RangeCase>& cases) {
  for (const RangeCase& c : cases) {
    SCOPED_TRACE("start " + std::to_string(c.start) + ", count " + std::to_string(c.count));
    Reading r;
    r.read("h1\nh2\n" + bytes, dailyLayout(2), c.start, c.count);
    EXPECT_EQ(r.status, c.status);
    EXPECT_EQ(r.closes(), c.closes);
    EXPECT_EQ(r.bars->reccnt, c.status == QX_SUCCESS ? 5 : 0);
  }
}

TEST(TextRead, RangesOfAnAscendingFile) {
  expectRanges("\n" + days({1, 2}) + "\n\n" + days({3, 4, 5}),
               {{0, -1, 0, {1, 2, 3, 4, 5}},
                {0, 2, 0, {1, 2}},
                {2, -1, 0, {3, 4, 5}},
                {2, 2, 0, {3, 4}},
                {4, INT32_MIN, 0, {5}},
                {3, 10, 0, {4, 5}},
                {-1, 2, 0, {4, 5}},
                {INT32_MIN, 3, 0, {3, 4, 5}},
                {-1, -1, 0, {1, 2, 3, 4, 5}},
                {-1, 9, 0, {1, 2, 3, 4, 5}},
                {3, 0, 0, {}},
                {5, 1, QX_ERR_RECORD_NOT_FOUND, {}},
                {INT32_MAX, -1, QX_ERR_RECORD_NOT_FOUND, {}}});
}

TEST(TextRead, RangesOfADescendingFile) {
  expectRanges(days({5, 4}) + "\n" + days({3, 2, 1}) + "\n", {{0, -1, 0, {1, 2, 3, 4, 5}},
                                                              {-1, -1, 0, {1, 2, 3, 4, 5}},
                                                              {0, 2, 0, {1, 2}},
                                                              {-1, 2, 0, {4, 5}},
                                                              {2, -1, 0, {1, 2, 3}},
                                                              {2, 2, 0, {3, 4}},
                                                              {1, 4, 0, {2, 3, 4, 5}},
                                                              {4, 1, 0, {1}},
                                                              {3, 0, 0, {}},
                                                              {-1, 7, 0, {0, 0, 1, 2, 3, 4, 5}},
                                                              {5, 1, QX_ERR_RECORD_NOT_FOUND, {}}});
}

TEST(TextRead, PreallocatedSetsLimitTheCount) {
  const BarSet prototype({{1, 9, 9, 9, 9, 9, 9}, {2, 9, 9, 9, 9, 9, 9}, {3, 9, 9, 9, 9, 9, 9}});
  Reading up;
  qxCopyBars(&prototype.record, up.bars);
  up.read(days({1, 2, 3, 4, 5}), dailyLayout(), 1, -1);
  EXPECT_EQ(up.closes(), (Closes{2, 3, 4}));
  up.read(days({1, 2, 3, 4, 5}), dailyLayout(), 4, -1);
  EXPECT_EQ(up.closes(), Closes{5}) << "the size shrinks to what was read";
  up.read(days({1, 2}), dailyLayout(), 2, -1);
  EXPECT_EQ(up.status, QX_ERR_RECORD_NOT_FOUND);
  EXPECT_EQ(up.closes(), Closes{5}) << "nothing changed";
  up.read(days({1, 2, 3, 4, 5}), dailyLayout(), -1, -1);
  EXPECT_EQ(up.closes(), (Closes{3, 4, 5})) << "the last ones that fit";

  // A descending read neither grows nor shrinks the set, and leaves bars it does not reach.
  Reading down;
  qxCopyBars(&prototype.record, down.bars);
  qxReSizeBars(down.bars, 1);
  down.read(days({2, 1}), dailyLayout(), -1, 3);
  EXPECT_EQ(down.bars->barsize, 1);
  EXPECT_EQ(down.bars->close.data[0], 9.0);
  EXPECT_EQ(down.bars->close.data[1], 1.0);
  EXPECT_EQ(down.bars->close.data[2], 2.0);
  down.read(days({2, 1}), dailyLayout(), 0, 0);
  EXPECT_EQ(down.bars->barsize, 0);
}

TEST(TextRead, SeriesOfUnequalCapacityAreNotOverrun) {
  Reading r;
  ASSERT_EQ(qxAllocBars(r.bars, 4), QX_SUCCESS);
  r.bars->low.datasize = 2;
  r.read(days({1, 2, 3, 4}), dailyLayout(), 0, -1);
  EXPECT_EQ(r.closes(), (Closes{1, 2}));
}

TEST(TextRead, TheDateFieldDecidesTheOrder) {
  const struct {
    const char* what;
    std::string bytes;
    int32_t skip;
    Closes closes;
  } cases[] = {
      {"equal dates ascend", days({3, 3}) + "2001-01-3,1,2,1,9,0,0\n", 0, {3, 3, 9}},
      {"the first different date decides", days({3, 3, 2, 5}), 0, {5, 2, 3, 3}},
      {"a missing date does not take part", " ,\n" + days({3, 2}), 0, {2, 3, 0}},
      {"an unreadable one is 0.0", "x,1,2,1,7\n" + days({3, 2}), 0, {7, 3, 2}},
      {"an unreadable later one descends", days({3}) + "x,1,2,1,7\n" + days({4}), 0, {4, 7, 3}},
      // With n header lines the first n - 1 records are not looked at.
      {"two header lines", "h\nh\n" + days({1, 5, 4}), 2, {4, 5, 1}},
      {"one header line", "h\n" + days({1, 5, 4}), 1, {1, 5, 4}},
      {"blank header lines", "\n\n" + days({1, 5, 4}), 2, {4, 5, 1}},
      {"a negative skip counts as none", days({1, 5, 4}), INT32_MIN, {1, 5, 4}},
      {"skip beyond the file", days({1, 5, 4}), 3, {}},
  };
  for (const auto& c : cases) {
    Reading r;
    r.read(c.bytes, dailyLayout(c.skip), 0, -1);
    EXPECT_EQ(r.closes(), c.closes) << c.what;
  }
}

TEST(TextRead, BlankLines) {
  // A line of blanks counts as a record and is passed over when bars are read.
  Reading r;
  r.read(days({1}) + "   \n" + days({2}) + "\r\n\n" + days({3}), dailyLayout(), 0, -1);
  EXPECT_EQ(r.bars->reccnt, 4);
  EXPECT_EQ(r.closes(), (Closes{1, 2, 3}));
  Reading last;
  last.read(days({1}) + "   \n" + days({2}) + days({3}), dailyLayout(), 2, -1);
  EXPECT_EQ(last.closes(), (Closes{2, 3}));
  Reading negative;
  negative.read(days({1}) + "   \n" + days({2, 3}), dailyLayout(), -1, 3);
  EXPECT_EQ(negative.closes(), (Closes{2, 3})) << "the last three records hold two bars";
  Reading trailing;
  trailing.read(days({1}) + "   ", dailyLayout(), 0, -1);
  EXPECT_EQ(trailing.closes(), Closes{1});
  Reading nothing;
  nothing.read("\n\n\r\n", dailyLayout(), 0, -1);
  EXPECT_EQ(nothing.status, QX_ERR_RECORD_NOT_FOUND);
  EXPECT_EQ(nothing.bars->filetype, 0);
  nothing.read("\n\n\r\n", dailyLayout(), -1, -1);
  EXPECT_EQ(nothing.status, QX_SUCCESS);
  EXPECT_EQ(nothing.bars->barsize, 0);
  EXPECT_EQ(nothing.bars->filetype, QX_FILE_TEXT);
}

TEST(TextRead, OverLongLinesCountAsTwo) {
  const std::string start = "2001-01-01,1,2,0.5,1,100,7";
  const std::string longLine =
      start + std::string(254 - start.size(), ',') + "2001-01-02,1,1,1,2\n";
  Reading r;
  r.read(longLine + days({3}), dailyLayout(), 0, -1);
  EXPECT_EQ(r.bars->reccnt, 3);
  EXPECT_EQ(r.closes(), (Closes{1, 2, 3}));
  // 253 characters and the newline fit; with 254 the newline is a blank line of its own.
  for (const size_t length : {size_t{253}, size_t{254}}) {
    Reading fits;
    fits.read(start + std::string(length - start.size(), ',') + "\r\n" + days({3}), dailyLayout(),
              0, -1);
    EXPECT_EQ(fits.closes(), (Closes{1, 3})) << length;
  }
  // A header line of that length uses up two of the lines to skip.
  Reading header;
  header.read(std::string(300, 'h') + "\n" + days({1, 2}), dailyLayout(2), 0, -1);
  EXPECT_EQ(header.closes(), (Closes{1, 2}));
}

TEST(TextRead, DatesAndTimes) {
  const double noon = qxYMDtoDate(2001, 1, 2, 12, 0, 0);
  const struct {
    const char* what;
    qxTXTinfo info;
    const char* line;
    double date;
  } cases[] = {
      {"columns of their own", {1, 2, 0, 0, 0, 3, 0, 0, 0, 0, ","}, "2001-01-02,12:00,5", noon},
      {"time first", {2, 1, 0, 0, 0, 3, 0, 0, 0, 0, ","}, "12:00,2001-01-02,5", noon},
      {"one field for both", {1, 1, 0, 0, 0, 2, 0, 0, 0, 0, ","}, "2001-01-02 12:00,5", noon},
      {"month first", {1, 2, 0, 0, 0, 3, 0, 0, 1, 0, ", "}, "1/2/2001 12:00,5", noon},
      {"unreadable date", {1, 2, 0, 0, 0, 3, 0, 0, 0, 0, ","}, "2001-13-02,12:00,5", 0.5},
      {"unreadable time", {1, 2, 0, 0, 0, 3, 0, 0, 0, 0, ","}, "2001-01-02,25:00,5", noon - 0.5},
  };
  for (const auto& c : cases) {
    Reading r;
    r.read(c.line, c.info, 0, -1);
    ASSERT_EQ(r.bars->barsize, 1) << c.what;
    EXPECT_EQ(r.bars->date.data[0], c.date) << c.what;
    EXPECT_EQ(r.bars->close.data[0], 5.0) << c.what;
  }
}

TEST(TextRead, DelimitersAndFields) {
  const auto closeOf = [](const char* line, int32_t field, const char* delimiters) {
    qxTXTinfo info = {};
    info.cl = field;
    std::memcpy(info.delimit, delimiters, strnlen(delimiters, sizeof info.delimit));
    Reading r;
    r.read(line, info, 0, -1);
    return r.bars->barsize == 1 ? r.bars->close.data[0] : -1.0;
  };
  EXPECT_EQ(closeOf(",,1,,2,3", 2, ","), 2.0) << "runs of delimiters separate once";
  EXPECT_EQ(closeOf("1\t 2;3", 3, "\t ;"), 3.0);
  EXPECT_EQ(closeOf("12 34", 1, ""), 12.0) << "without delimiters the line is one field";
  EXPECT_EQ(closeOf("12 34", 2, ""), 0.0);
  // All sixteen characters of a full set separate, and nothing behind it does.
  EXPECT_EQ(closeOf("1a2b3c4d5e6f7g8h9i10j11k12l13m14n15o16p17q18", 17, "abcdefghijklmnopq"), 17.0);
  EXPECT_EQ(closeOf("1,2", INT32_MAX, ","), 0.0);
  EXPECT_EQ(closeOf("1,2", INT32_MIN, ","), 0.0);
  EXPECT_EQ(closeOf("1.5.2", 2, "."), 5.0);

  // One field may feed several series.
  const qxTXTinfo shared = {0, 0, 1, 1, 1, 1, 1, 0, 0, 0, ","};
  Reading r;
  r.read("42\n", shared, 0, -1);
  EXPECT_EQ(r.bars->open.data[0] + r.bars->low.data[0] + r.bars->volume.data[0], 126.0);
  EXPECT_EQ(r.bars->date.data[0], 0.0);
}

TEST(TextRead, HostileBytes) {
  std::string bytes;
  uint32_t state = 1;
  for (int i = 0; i < 200000; ++i) {
    state = state * 1664525u + 1013904223u;
    bytes += static_cast<char>(state >> 24);
  }
  for (const size_t length : {size_t{1}, size_t{300}, size_t{65536}, bytes.size()}) {
    Reading r;
    r.read(bytes.substr(0, length), dailyLayout(), -1, -1);
    EXPECT_EQ(r.status, QX_SUCCESS);
    EXPECT_LE(r.bars->barsize, std::max(r.bars->reccnt, 1));
  }
  // A control-Z ends the text, as it did in the files of older systems.
  Reading ended;
  ended.read(days({1, 2}) + "\x1A" + days({3}), dailyLayout(), 0, -1);
  EXPECT_EQ(ended.closes(), (Closes{1, 2}));
}

TEST(TextRead, RefusesNullsAndMissingFiles) {
  BarSet bars;
  const qxTXTinfo info = dailyLayout();
  EXPECT_EQ(qxTXTread(bars, "no such folder", "p.csv", &info, 0, -1), QX_ERR_FILE_OPEN);
  EXPECT_EQ(qxTXTread(bars, ".", "", &info, 0, -1), QX_ERR_FILE_OPEN);
  EXPECT_EQ(qxTXTread(nullptr, "", "", &info, 0, -1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxTXTread(bars, nullptr, "", &info, 0, -1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxTXTread(bars, "", nullptr, &info, 0, -1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxTXTread(bars, "", "", nullptr, 0, -1), QX_ERR_INVALID_PARM);
}

TEST(TextReadArray, ReadsOneFieldInFileOrder) {
  const TemporaryFolder folder;
  folder.write("v.txt", "head\n3,30\n\n2,20\n   \n1,10\n7\n");
  const char* path = folder.path.c_str();
  const auto read = [&](int32_t field, int32_t start, int32_t count) {
    Series values;
    EXPECT_EQ(qxTXTreadarray(values, path, "v.txt", ",", 1, field, start, count), QX_SUCCESS);
    return values.values();
  };
  using Values = std::vector<double>;
  EXPECT_EQ(read(1, 0, -1), (Values{3, 2, 1, 7})) << "five records, one of them blanks";
  EXPECT_EQ(read(2, 0, -1), (Values{30, 20, 10, 0}));
  EXPECT_EQ(read(0, 0, 2), (Values{0, 0}));
  EXPECT_EQ(read(1, 1, 1), Values{2});
  EXPECT_EQ(read(1, 3, -1), (Values{1, 7}));
  EXPECT_EQ(read(1, -1, 2), (Values{1, 7}));
  EXPECT_EQ(read(1, -1, -1), (Values{3, 2, 1, 7}));
  EXPECT_EQ(read(1, 1, 9), (Values{2, 1, 7}));

  Series room{9, 9};
  EXPECT_EQ(qxTXTreadarray(room, path, "v.txt", ",", 1, 1, 0, -1), QX_SUCCESS);
  EXPECT_EQ(room.values(), (Values{3, 2}));
  Series untouched;
  EXPECT_EQ(qxTXTreadarray(untouched, path, "v.txt", ",", 1, 1, 5, 1), QX_ERR_RECORD_NOT_FOUND);
  EXPECT_EQ(untouched.record.data, nullptr);
  EXPECT_EQ(qxTXTreadarray(untouched, path, "missing", ",", 1, 1, 0, 0), QX_SUCCESS);
  EXPECT_EQ(qxTXTreadarray(untouched, path, "missing", ",", 1, 1, 0, 1), QX_ERR_FILE_OPEN);
  EXPECT_EQ(qxTXTreadarray(untouched, path, "v.txt", nullptr, 1, 1, 0, 1), QX_ERR_INVALID_PARM);
}

// Real files, with sums computed from the files by other means.
struct RealFile {
  const char* name;
  qxTXTinfo info;
  int32_t bars;
  double closes, volume, openInterest;
};

TEST(TextRead, RealFiles) {
  const RealFile files[] = {
      {"orcl-daily-1995-2014.txt",
       {1, 0, 2, 3, 4, 5, 7, 0, 0, 1, ","},
       5036,
       91525.511962,
       208702294200.0,
       0},
      {"msft-daily-newest-first.csv",
       {1, 0, 2, 3, 4, 5, 6, 0, 0, 1, ","},
       4646,
       190537.7585,
       236994376092.0,
       0},
      {"tsla-newest-first-mdy.csv",
       {1, 0, 4, 5, 6, 2, 3, 0, 1, 1, ","},
       65,
       16255.42,
       725363757.0,
       0},
      {"estx50-5min-2006-01.txt", {1, 2, 3, 4, 5, 6, 7, 8, 0, 1, ","}, 2142, 7758977.51, 0, 0},
      {"fesx-1min-2006-01-extract.txt",
       {1, 2, 3, 4, 5, 6, 7, 8, 0, 1, ","},
       3603,
       13161241,
       2076654,
       0},
      {"fesx-daily-oi-2006.txt",
       {1, 0, 2, 3, 4, 5, 6, 7, 0, 1, ","},
       255,
       967019,
       198009439,
       486033850},
  };
  const std::string folder = qxtest::testDataPath("text");
  if (folder.empty()) GTEST_SKIP() << "QX_TEST_DATA is not set";
  for (const RealFile& file : files) {
    SCOPED_TRACE(file.name);
    BarSet bars;
    ASSERT_EQ(qxTXTread(bars, folder.c_str(), file.name, &file.info, 0, -1), QX_SUCCESS);
    EXPECT_EQ(bars->barsize, file.bars);
    EXPECT_EQ(bars->reccnt, file.bars);
    double closes = 0, volume = 0, openInterest = 0;
    for (int32_t i = 0; i < bars->barsize; ++i) {
      closes += bars->close.data[i];
      volume += bars->volume.data[i];
      openInterest += bars->openint.data[i];
      ASSERT_TRUE(i == 0 || bars->date.data[i - 1] < bars->date.data[i]) << i;
    }
    EXPECT_TRUE(qxtest::near(closes, file.closes));
    EXPECT_EQ(volume, file.volume);
    EXPECT_EQ(openInterest, file.openInterest);
  }
}

}  // namespace
