#include <cstddef>
#include <cstring>
#include <string>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

std::string printedInfo(const qxBars& bars) {
  return written([&](const char* path) { return qxFILEprintinfo(&bars, path, 0); });
}

TEST(FileInfo, OfATextFile) {
  const TemporaryFolder folder;
  folder.write("abc.csv", "2001-01-02,5\n2001-01-03,6\n");
  const qxTXTinfo layout = {1, 0, 0, 0, 0, 2, 0, 0, 0, 0, ","};
  BarSet bars;
  ASSERT_EQ(qxTXTread(bars, folder, "abc.csv", &layout, 0, 1), QX_SUCCESS);
  EXPECT_EQ(printedInfo(bars.record),
            "barsize      1\ndatasize     1\nreccnt       2\n"
            "path         " +
                folder.path +
                "\nname         abc.csv\nsymbol       abc\ndescription  abc\n"
                "frequency    Unknown\ndatatype     Unknown\nfiletype     Text\n");
}

TEST(FileInfo, PrintsEveryFieldThatIsSet) {
  qxBars bars = {};
  bars.barsize = -3;
  bars.datasize = INT32_MAX;
  std::strcpy(bars.path, "C:\\data");
  std::strcpy(bars.name, "F7.DAT");
  std::strcpy(bars.symbol, "ABC");
  std::strcpy(bars.description, "Abc 50% off");
  std::strcpy(bars.cusip, "037833100");
  bars.begindate = qxYMDtoDate(1999, 3, 15, 10, 0, 0);
  bars.enddate = dateOf(2001, 12, 31);
  bars.deliverydate = dateOf(2002, 1, 18);
  bars.frequency = QX_FREQ_DAILY;
  bars.datatype = QX_DATA_OPTION;
  bars.optiontype = QX_OPTION_PUT;
  bars.strikeprice = 42.57;  // just below, so its decimals are cut to 57
  bars.filetype = QX_FILE_COMPUTRAC;
  qxSetDefaultDateFormat(2);
  const std::string text = printedInfo(bars);
  qxSetDefaultDateFormat(0);
  EXPECT_EQ(text,
            "barsize      -3\ndatasize     2147483647\nreccnt       0\n"
            "path         C:\\data\nname         F7.DAT\n"
            "symbol       ABC\ndescription  Abc 50% off\ncusip        037833100\n"
            "begindate    15/03/1999\nenddate      31/12/2001\n"
            "frequency    Daily\ndatatype     Option\noptiontype   Put\n"
            "deliverydate 18/01/2002\nstrikeprice        42.57\nfiletype     CompuTrac\n");
}

TEST(FileInfo, CodesOutsideTheirTablesAndFieldsWithoutEnd) {
  qxBars bars = {};
  std::memset(bars.path, 'x', offsetof(qxBars, begindate) - offsetof(qxBars, path));
  bars.frequency = 7;
  bars.datatype = -1;
  bars.optiontype = INT32_MIN;
  bars.filetype = INT32_MAX;
  const auto filled = [](size_t length) { return std::string(length, 'x') + "\n"; };
  EXPECT_EQ(
      printedInfo(bars),
      "barsize      0\ndatasize     0\nreccnt       0\n"
      "path         " +
          filled(256) + "name         " + filled(16) + "symbol       " + filled(16) +
          "description  " + filled(48) + "cusip        " + filled(12) +
          "frequency    Unknown\ndatatype     Unknown\noptiontype    \nfiletype     Unknown\n");
}

TEST(FileInfo, NullArguments) {
  const qxBars bars = {};
  expectNullsRefused("qxFILEprintinfo", qxFILEprintinfo, QX_ERR_INVALID_PARM, &bars, "x", 0);
}

}  // namespace
