#include <algorithm>
#include <cstddef>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

// date, open, high, low, close, volume, open interest, by commas, year first.
qxTXTinfo dailyLayout(int32_t skip = 0) {
  return {1, 0, 2, 3, 4, 5, 6, 7, 0, skip, ","};
}

// A line for each digit N, "2001-01-N,1,2,0.5,N,100,7": the closes are the days.
std::string days(const std::string& digits) {
  std::string text;
  for (const char day : digits) {
    text += std::string("2001-01-") + day + ",1,2,0.5," + day + ",100,7\n";
  }
  return text;
}

struct Reading {
  TemporaryFolder folder;
  BarSet bars;
  int32_t status = QX_ERR_UNKNOWN;

  Reading() = default;
  Reading(const std::string& bytes, const qxTXTinfo& info, int32_t start = 0, int32_t count = -1) {
    read(bytes, info, start, count);
  }
  std::string read(const std::string& bytes, const qxTXTinfo& info, int32_t start, int32_t count) {
    folder.write("p.csv", bytes);
    status = qxTXTread(bars, folder, "p.csv", &info, start, count);
    return closes();
  }
  // One digit for each close.
  std::string closes() const {
    std::string digits;
    for (const Bar& bar : barsOf(&bars.record)) digits += std::to_string(bar.close)[0];
    return digits;
  }
};

std::string closesOf(const std::string& bytes, int32_t skip = 0, int32_t start = 0,
                     int32_t count = -1) {
  return Reading(bytes, dailyLayout(skip), start, count).closes();
}

TEST(TextRead, FillsBarsAndFileInformation) {
  Reading r;
  constexpr size_t kRest = offsetof(qxBars, cusip);
  auto* const bytes = reinterpret_cast<char*>(&r.bars.record);
  std::fill(bytes + kRest, bytes + sizeof(qxBars), 'x');
  r.read("header\n2001-01-02,10.5,11,9.25,10,1000,55\r\n\n 2001-01-03,+1e1,-2,x,.5\n",
         dailyLayout(1), 0, -1);
  ASSERT_EQ(r.status, QX_SUCCESS);
  const double second = dateOf(2001, 1, 2);
  EXPECT_EQ(barsOf(r.bars), (std::vector<Bar>{{second, 10.5, 11, 9.25, 10, 1000, 55},
                                              {second + 1, 10, -2, 0, 0.5, 0, 0}}));
  EXPECT_EQ(r.bars->reccnt, 2);
  EXPECT_EQ(r.bars->path, r.folder.path);
  EXPECT_STREQ(r.bars->description, "p");
  EXPECT_STREQ(r.bars->symbol, "p");
  qxBars expected = {};
  expected.filetype = QX_FILE_TEXT;
  EXPECT_TRUE(std::equal(bytes + kRest, bytes + sizeof(qxBars),
                         reinterpret_cast<const char*>(&expected) + kRest))
      << "the rest is cleared";
}

TEST(TextRead, NamesAreCutToTheirFields) {
  Reading r;
  const std::string name = std::string(60, 'n') + ".long.csv";
  r.folder.write(name, days("1"));
  const qxTXTinfo info = dailyLayout();
  const std::string folder = "  " + r.folder.path + " ";
  ASSERT_EQ(qxTXTread(r.bars, folder.c_str(), name.c_str(), &info, 0, -1), QX_SUCCESS);
  EXPECT_EQ(r.bars->path, folder) << "the folder as it was given";
  EXPECT_EQ(r.bars->description, std::string(47, 'n'));
  EXPECT_EQ(r.bars->symbol, std::string(15, 'n'));
  EXPECT_LE(std::strlen(r.bars->name), 15u);
  r.folder.write("p.csv", days("1"));
  EXPECT_EQ(qxTXTread(r.bars, "", r.folder.file("p.csv").c_str(), &info, 0, -1), QX_SUCCESS);
  EXPECT_STREQ(r.bars->name, "p.csv") << "without its folder";
}

struct RangeCase {
  int32_t start, count;
  const char* closes;
};

// Reads ranges of a file of five bars after two header lines; those without closes but of a count
// other than 0 are not found.
void expectRanges(const std::string& bytes, const std::vector<RangeCase>& cases) {
  for (const auto& [start, count, closes] : cases) {
    SCOPED_TRACE("start " + std::to_string(start) + ", count " + std::to_string(count));
    const bool found = *closes != '\0' || count == 0;
    const Reading r("h1\nh2\n" + bytes, dailyLayout(2), start, count);
    EXPECT_EQ(r.status, found ? QX_SUCCESS : QX_ERR_RECORD_NOT_FOUND);
    EXPECT_EQ(r.closes(), closes);
    EXPECT_EQ(r.bars.record.reccnt, found ? 5 : 0);
    const int32_t allocated = count < 0 ? static_cast<int32_t>(std::strlen(closes)) : count;
    EXPECT_EQ(r.bars.record.datasize, found ? allocated : 0);
  }
}

TEST(TextRead, RangesOfAnAscendingFile) {
  const std::vector<RangeCase> cases = {
      {0, -1, "12345"},    {0, 2, "12"},       {2, -1, "345"}, {2, 2, "34"},
      {-1, 9, "12345"},    {3, 10, "45"},      {-1, 2, "45"},  {5, 1, ""},
      {-1, -1, "12345"},   {1, -1, "2345"},    {3, 0, ""},     {INT32_MIN, 3, "345"},
      {4, INT32_MIN, "5"}, {INT32_MAX, -1, ""}};
  expectRanges("\n" + days("12") + "\n\n" + days("345"), cases);
}

TEST(TextRead, RangesOfADescendingFile) {
  const std::vector<RangeCase> cases = {{0, -1, "12345"}, {-1, -1, "12345"},  {0, 2, "12"},
                                        {-1, 2, "45"},    {1, -1, "12"},      {2, 2, "34"},
                                        {3, -1, "1234"},  {1, 4, "2345"},     {4, 1, "1"},
                                        {3, 0, ""},       {-1, 7, "0012345"}, {5, 1, ""}};
  expectRanges(days("54") + "\n" + days("321") + "\n", cases);
}

TEST(TextRead, PreallocatedSetsLimitTheCount) {
  const BarSet prototype({{1, 9, 9, 9, 9, 9, 9}, {2, 9, 9, 9, 9, 9, 9}, {3, 9, 9, 9, 9, 9, 9}});
  Reading up, down;
  qxCopyBars(&prototype.record, up.bars);
  EXPECT_EQ(up.read(days("12345"), dailyLayout(), 1, -1), "234");
  EXPECT_EQ(up.read(days("12345"), dailyLayout(), 4, -1), "5") << "shrinks to what was read";
  EXPECT_EQ(up.read(days("12"), dailyLayout(), 2, -1), "5") << "nothing changes";
  EXPECT_EQ(up.status, QX_ERR_RECORD_NOT_FOUND);
  EXPECT_EQ(up.read(days("12345"), dailyLayout(), -1, -1), "345") << "the last ones that fit";
  up.bars->low.datasize = 2;
  EXPECT_EQ(up.read(days("1234"), dailyLayout(), 0, -1), "12") << "unequal series";

  // A descending read neither grows nor shrinks the set, and leaves bars it does not reach.
  qxCopyBars(&prototype.record, down.bars);
  qxReSizeBars(down.bars, 1);
  EXPECT_EQ(down.read(days("21"), dailyLayout(), -1, 3), "9");
  qxReSizeBars(down.bars, 3);
  EXPECT_EQ(down.closes(), "912");
  EXPECT_EQ(down.read(days("21"), dailyLayout(), 0, 0), "");
}

TEST(TextRead, TheDateFieldDecidesTheOrder) {
  EXPECT_EQ(closesOf(days("33") + "2001-01-3,1,2,1,9,0,0\n"), "339") << "equal dates ascend";
  EXPECT_EQ(closesOf(days("3325")), "5233") << "the first different date decides";
  const qxTXTinfo dayFirst = {1, 0, 0, 0, 0, 2, 0, 0, 2, 0, ","};
  EXPECT_EQ(Reading("01/02/01,1\n02/01/01,2\n", dayFirst).closes(), "21");
  EXPECT_EQ(closesOf(" ,\n" + days("32")), "230") << "a missing date does not take part";
  EXPECT_EQ(closesOf("x,1,2,1,7\n" + days("32")), "732") << "an unreadable one is 0.0";
  EXPECT_EQ(closesOf(days("3") + "x,1,2,1,7\n" + days("4")), "473") << "and descends later";
  // With n header lines the first n - 1 records are not looked at.
  EXPECT_EQ(closesOf("h\nh\n" + days("154"), 2), "451");
  EXPECT_EQ(closesOf("h\n" + days("154"), 1), "154");
  EXPECT_EQ(closesOf("\n\n" + days("154"), 2), "451");
  EXPECT_EQ(closesOf(days("154"), INT32_MIN), "154") << "a negative skip counts as none";
  EXPECT_EQ(closesOf(days("154"), 3), "");
}

TEST(TextRead, BlankLines) {
  // A line of blanks counts as a record and is passed over when bars are read.
  const Reading r(days("1") + "   \n" + days("2") + "\r\n\n" + days("3"), dailyLayout());
  EXPECT_EQ(r.bars.record.reccnt, 4);
  EXPECT_EQ(r.closes(), "123");
  EXPECT_EQ(closesOf(days("1") + "   \n" + days("23"), 0, 2), "23");
  EXPECT_EQ(closesOf(days("1") + "   \n" + days("23"), 0, -1, 3), "23") << "three records";
  EXPECT_EQ(closesOf(days("1") + "   "), "1");
  EXPECT_EQ(closesOf(days("1") + "\t\n" + days("2")), "201") << "a tab is no blank";
  Reading nothing("\n\n\r\n", dailyLayout());
  EXPECT_EQ(nothing.status, QX_ERR_RECORD_NOT_FOUND);
  EXPECT_EQ(nothing.bars->filetype, 0);
  EXPECT_EQ(nothing.read("\n\n\r\n", dailyLayout(), -1, -1), "");
  EXPECT_EQ(nothing.status, QX_SUCCESS);
  EXPECT_EQ(nothing.bars->filetype, QX_FILE_TEXT);
}

TEST(TextRead, OverLongLinesCountAsTwo) {
  std::string line = "2001-01-01,1,2,0.5,1,100,7";
  line.resize(253, ',');
  EXPECT_EQ(closesOf(line + ",2001-01-02,1,1,1,2\n" + days("3")), "123");
  // 253 characters and the newline fit; with 254 the newline is a blank line of its own.
  EXPECT_EQ(closesOf(line + "\r\n" + days("3")), "13");
  EXPECT_EQ(closesOf(line + ",\r\n" + days("3")), "13");
  // A header line of that length uses up two of the lines to skip.
  EXPECT_EQ(closesOf(std::string(300, 'h') + "\n" + days("12"), 2), "12");
}

TEST(TextRead, DatesAndTimes) {
  const auto dateOn = [](const char* line, const qxTXTinfo& info) {
    Reading r(line, info);
    EXPECT_EQ(r.closes(), "5") << line;
    return sumOf(r.bars->date);
  };
  const double noon = dateOf(2001, 1, 2, 12);
  const qxTXTinfo apart = {1, 2, 0, 0, 0, 3, 0, 0, 0, 0, ","};
  EXPECT_EQ(dateOn("2001-01-02,12:00,5", apart), noon);
  EXPECT_EQ(dateOn("2001-13-02,12:00,5", apart), 0.5) << "unreadable date";
  EXPECT_EQ(dateOn("2001-01-02,25:00,5", apart), noon - 0.5) << "unreadable time";
  EXPECT_EQ(dateOn("12:00,2001-01-02,5", {2, 1, 0, 0, 0, 3, 0, 0, 0, 0, ","}), noon);
  EXPECT_EQ(dateOn("2001-01-02 12:00,5", {1, 1, 0, 0, 0, 2, 0, 0, 0, 0, ","}), noon);
  EXPECT_EQ(dateOn("1/2/2001 12:00,5", {1, 2, 0, 0, 0, 3, 0, 0, 1, 0, ", "}), noon);
}

TEST(TextRead, DelimitersAndFields) {
  const auto closeOf = [](const char* line, int32_t field, const char* delimiters) {
    qxTXTinfo info = {};
    info.cl = field;
    std::memcpy(info.delimit, delimiters, strnlen(delimiters, sizeof info.delimit));
    return sumOf(Reading(line, info).bars->close);
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
  std::string ones;
  for (int i = 0; i < 127; ++i) ones += "1,";
  EXPECT_EQ(closeOf(ones.c_str(), 127, ","), 1.0) << "as many fields as a line can have";
  // What stands behind the end of a set does not separate.
  const qxTXTinfo ended = {0, 0, 0, 0, 0, 2, 0, 0, 0, 0, {',', '\0', '5'}};
  EXPECT_EQ(sumOf(Reading("1,253\n", ended).bars->close), 253.0);
  // One field may feed several series.
  const Reading r("42\n", {0, 0, 1, 1, 1, 1, 1, 0, 0, 0, ","});
  EXPECT_EQ(barsOf(&r.bars.record), (std::vector<Bar>{{0, 42, 42, 42, 42, 42, 0}}));
}

TEST(TextRead, AControlZEndsTheText) {
  EXPECT_EQ(closesOf(days("12") + "\x1A" + days("3")), "12");
}

TEST(TextRead, NullArguments) {
  BarSet bars;
  const qxTXTinfo info = dailyLayout();
  expectNullsRefused("qxTXTread", qxTXTread, QX_ERR_INVALID_PARM, bars, "", "", &info, 0, -1);
}

TEST(TextReadArray, ReadsOneFieldInFileOrder) {
  const TemporaryFolder folder;
  folder.write("v.txt", "head\n3,30\n\n ,2,20\n   \n1,10\n7\n");
  const auto read = [&](int32_t field, int32_t start, int32_t count) {
    Series values;
    EXPECT_EQ(qxTXTreadarray(values, folder, "v.txt", ",", 1, field, start, count), QX_SUCCESS);
    return values.values();
  };
  using Values = std::vector<double>;
  EXPECT_EQ(read(1, 0, -1), (Values{3, 2, 1, 7})) << "five records, one of them blanks";
  EXPECT_EQ(read(2, 0, -1), (Values{30, 20, 10, 0}));
  EXPECT_EQ(read(0, 0, 2), (Values{0, 0}));
  EXPECT_EQ(read(1, 1, 1), Values{2});
  EXPECT_EQ(read(1, 3, -1), (Values{1, 7}));
  EXPECT_EQ(read(1, -1, 3), (Values{1, 7}));
  EXPECT_EQ(read(1, INT32_MIN, -1), (Values{3, 2, 1, 7}));
  EXPECT_EQ(read(1, 1, 9), (Values{2, 1, 7}));

  Series room{9, 9}, untouched;
  EXPECT_EQ(qxTXTreadarray(room, folder, "v.txt", ",", 1, 1, 0, -1), QX_SUCCESS);
  EXPECT_EQ(room.values(), (Values{3, 2}));
  EXPECT_EQ(qxTXTreadarray(untouched, folder, "v.txt", ",", 1, 1, 5, 1), QX_ERR_RECORD_NOT_FOUND);
  EXPECT_EQ(qxTXTreadarray(untouched, folder, "missing", ",", 1, 1, 0, 0), QX_SUCCESS);
  EXPECT_EQ(qxTXTreadarray(untouched, folder, "missing", ",", 1, 1, 0, 1), QX_ERR_FILE_OPEN);
  EXPECT_EQ(untouched.record.data, nullptr);
  expectNullsRefused("qxTXTreadarray", qxTXTreadarray, QX_ERR_INVALID_PARM, untouched, folder,
                     "v.txt", ",", 1, 1, 0, 1);
}

// A file whose bars and sums of closes, volumes and open interest are known by other means.
void expectRealFile(const std::string& name, const qxTXTinfo& info, int32_t count, double closes,
                    double volume, double openInterest) {
  SCOPED_TRACE(name);
  BarSet bars;
  ASSERT_EQ(qxTXTread(bars, testDataPath("text").c_str(), name.c_str(), &info, 0, -1), 0);
  EXPECT_EQ(bars->barsize, count);
  EXPECT_EQ(bars->reccnt, count);
  EXPECT_TRUE(near(sumOf(bars->close), closes));
  EXPECT_EQ(sumOf(bars->volume), volume);
  EXPECT_EQ(sumOf(bars->openint), openInterest);
  const auto dates = valuesOf(bars->date);
  EXPECT_EQ(std::adjacent_find(dates.begin(), dates.end(), std::greater_equal<>()), dates.end());
}

TEST(TextRead, RealFiles) {
  if (testDataPath("text").empty()) GTEST_SKIP() << "QX_TEST_DATA is not set";
  const qxTXTinfo withTime = {1, 2, 3, 4, 5, 6, 7, 8, 0, 1, ","};
  expectRealFile("estx50-5min-2006-01.txt", withTime, 2142, 7758977.51, 0, 0);
  expectRealFile("fesx-1min-2006-01-extract.txt", withTime, 3603, 13161241, 2076654, 0);
  expectRealFile("fesx-daily-oi-2006.txt", dailyLayout(1), 255, 967019, 198009439, 486033850);
  expectRealFile("orcl-daily-1995-2014.txt", {1, 0, 2, 3, 4, 5, 7, 0, 0, 1, ","}, 5036,
                 91525.511962, 208702294200.0, 0);
  expectRealFile("msft-daily-newest-first.csv", {1, 0, 2, 3, 4, 5, 6, 0, 0, 1, ","}, 4646,
                 190537.7585, 236994376092.0, 0);
  expectRealFile("tsla-newest-first-mdy.csv", {1, 0, 4, 5, 6, 2, 3, 0, 1, 1, ","}, 65, 16255.42,
                 725363757.0, 0);
}

}  // namespace
