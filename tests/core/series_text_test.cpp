#include <string>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

using Values = std::vector<double>;

Values columnOf(const std::string& bytes, const char* delimiters, int32_t skip, int32_t column) {
  const TemporaryFolder folder;
  const std::string path = folder.write("column.txt", bytes);
  Series series;
  EXPECT_EQ(qxTXT2Array(path.c_str(), series, delimiters, skip, column), QX_SUCCESS);
  EXPECT_EQ(series.record.firstvalid, 0);
  return series.values();
}

TEST(SeriesText, ReadsAColumn) {
  const std::string bytes = "a,b\r\n1,2.5\r\n\r\n3,,x\r\n  \n 5;6,7";
  EXPECT_EQ(columnOf(bytes, ",", 1, 1), (Values{1, 3, 0, 5}));
  EXPECT_EQ(columnOf(bytes, ",;", 1, 2), (Values{2.5, 0, 0, 6}));
  EXPECT_EQ(columnOf(bytes, ",", 2, 1), (Values{3, 0, 5})) << "the third line is empty";
  EXPECT_EQ(columnOf(bytes, ",", -3, 2), (Values{0, 2.5, 0, 0, 7}));
  EXPECT_EQ(columnOf(bytes, ",", 1, 0), (Values{0, 0, 0, 0}));
  EXPECT_EQ(columnOf(bytes, ",", 99, 1), Values{});
  EXPECT_EQ(columnOf("\n\n", ",", 0, 1), Values{});
  EXPECT_EQ(columnOf({'\0', '\n', '1'}, ",", 0, 1), (Values{0, 1})) << "not an empty line";
  // A line beyond 254 characters goes on as a further line.
  EXPECT_EQ(columnOf("1" + std::string(253, ',') + "2\n3\n", ",", 0, 1), (Values{1, 2, 3}));
}

TEST(SeriesText, NullArgumentsOfTheReader) {
  Series series;
  expectNullsRefused("qxTXT2Array", qxTXT2Array, QX_ERR_INVALID_PARM, "x", series, ",", 0, 1);
}

// What a format prints of the series, all indexes.
template <typename... Arrays>
std::string printed(const std::string& format, Arrays&... series) {
  return written([&](const char* path) {
    return qxArrayPrintf(path, 0, 0, INT32_MAX, nullptr, format.c_str(), &series.record...);
  });
}

TEST(SeriesText, PrintsSeriesSideBySide) {
  Series a{1.5, 2.5, 3.5}, b{10, 20, 30};
  qxReSizeArray(b, 2);
  EXPECT_EQ(printed("%r: %6.2f|%-5.0f|\n", a, b),
            "0:   1.50|10   |\n1:   2.50|20   |\n2:   3.50||\n");
  EXPECT_EQ(printed("%f%%, ", a), "1.500000%, 2.500000%, 3.500000%, ");
  EXPECT_EQ(printed("%+05i/%u ", a, b), "+0001/10 +0002/20 +0003/ ");
  EXPECT_EQ(printed("text\n", a), "");
  EXPECT_EQ(printed("%d;%d ", b, b), "10;10 20;20 ");
  const auto printNone = [](const char* path) {
    return qxArrayPrintf(path, 0, 0, 9, nullptr, "%03r\n", static_cast<qxArray*>(nullptr));
  };
  EXPECT_EQ(written(printNone), "") << "no series, no line";
}

TEST(SeriesText, PrintsARangeUnderAHeader) {
  Series a{1, 2, 3, 4};
  const TemporaryFolder folder;
  const std::string path = folder.file("out.txt");
  const auto print = [&](int32_t append, int32_t start, int32_t end) {
    EXPECT_EQ(
        qxArrayPrintf(path.c_str(), append, start, end, "100%% %s %n %\n", "%.0f ", &a.record),
        QX_SUCCESS);
    return readFile(path);
  };
  EXPECT_EQ(print(0, 1, 2), "100% %s %n %\n2 3 ");
  EXPECT_EQ(print(-1, 3, INT32_MAX), "100% %s %n %\n2 3 100% %s %n %\n4 ");
  EXPECT_EQ(print(0, INT32_MIN, 0), "100% %s %n %\n1 ");
  EXPECT_EQ(print(0, 2, 1), "100% %s %n %\n");
  EXPECT_EQ(print(0, INT32_MAX, INT32_MAX), "100% %s %n %\n");
  EXPECT_EQ(qxArrayPrintf(nullptr, 0, 0, 1, nullptr, "%f", &a.record), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxArrayPrintf(path.c_str(), 0, 0, 1, nullptr, nullptr), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxArrayPrintf(path.c_str(), 0, 0, 1, nullptr, "%f", static_cast<qxArray*>(nullptr)),
            QX_ERR_INVALID_PARM);
}

TEST(SeriesText, PrintsDatesAndTimes) {
  const double date = dateOf(1999, 3, 15) + 0.765625;  // 18:22:30
  Series dates{date};
  // Only the first three letters choose an order, and the fourth is the whole code's all the same;
  // upper-case letters decide nothing; HM prints seconds, HMS does not.
  const std::pair<const char*, const char*> cases[] = {
      {"%YMDi", "99/03/15"},    {"%YMD-i", "990315"},     {"%CYMDi", "1999/03/15"},
      {"%CYMD-i", "19990315"},  {"%MDYu", "03/15/99"},    {"%MDYxu", "031599"},
      {"%MDCYi", "03/15/1999"}, {"%MDCY i", "03151999"},  {"%DMYi", "15/03/99"},
      {"%DMY.u", "150399"},     {"%dmcyi", "15/03/1999"}, {"%DMCYxi", "15031999"},
      {"%CYMi", "19990315"},    {"%CYMXi", "1999/03/15"}, {"%MDCi", "03151999"},
      {"%YMDIi", "990315"},     {"%YMDUi", "990315"},     {"%YMDd", "990315"},
      {"%HMi", "18:22:30"},     {"%HMSi", "18:22"},       {"%HMxi", "182230"},
      {"%HMSxi", "1822"},       {"%hmsu", "18:22"},       {"%HMd", "182230"},
      {"%Hi", "36234"},         {"%f", "36234.765625"},   {"%YMDf", "36234.765625"}};
  for (const auto& [format, text] : cases) EXPECT_EQ(printed(format, dates), text) << format;
}

TEST(SeriesText, HostileFormatsAreSafe) {
  Series a{1.25, kNaN, -1e300};
  Series b{7};
  const std::pair<std::string, std::string> cases[] = {
      {"%*.*f;", "7.000000;"},   // no argument but the series is read
      {"%s%n%f;", "7.000000;"},  // one conversion, up to the f
      {"%llhhi;", "7;"},
      {"%.1f %", "7.0 %"},
      {"%.1f %x", "7.0 %x"},  // a conversion that never ends
      {"%300.2f", std::string(296, ' ') + "7.00"},
      {"%.2000f", "7." + std::string(2000, '0')},
      {"%" + std::string(100000, 'x') + "f", "7.000000"}};
  for (const auto& [format, text] : cases) EXPECT_EQ(printed(format, b), text) << format;
  EXPECT_EQ(printed("%99999999999f", b).size(), 4096u);
  EXPECT_EQ(printed("%i,", a), "1,0,-9223372036854775808,");
  const std::string large = printed("%f ", a);
  EXPECT_TRUE(large.starts_with("1.250000 nan -1000000000000000052504760255204420248704468581108"))
      << large;
}

}  // namespace
