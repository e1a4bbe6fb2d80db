#include <cstring>
#include <string>

#include "tests/support/test_support.h"

namespace {

using qxtest::BarSet;
using qxtest::TemporaryFolder;

std::string printedInfo(const qxBars& bars) {
  const TemporaryFolder folder;
  const std::string path = folder.file("info.txt");
  EXPECT_EQ(qxFILEprintinfo(&bars, path.c_str(), 0), QX_SUCCESS);
  return qxtest::readFile(path);
}

TEST(FileInfo, OfATextFile) {
  const TemporaryFolder folder;
  folder.write("abc.csv", "2001-01-02,5\n2001-01-03,6\n");
  const qxTXTinfo layout = {1, 0, 0, 0, 0, 2, 0, 0, 0, 0, ","};
  BarSet bars;
  ASSERT_EQ(qxTXTread(bars, folder.path.c_str(), "abc.csv", &layout, 0, 1), QX_SUCCESS);
  EXPECT_EQ(printedInfo(bars.record),
            "barsize      1\n"
            "datasize     1\n"
            "reccnt       2\n"
            "path         " +
                folder.path +
                "\n"
                "name         abc.csv\n"
                "symbol       abc\n"
                "description  abc\n"
                "frequency    Unknown\n"
                "datatype     Unknown\n"
                "filetype     Text\n");
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
  bars.enddate = qxYMDtoDate(2001, 12, 31, 0, 0, 0);
  bars.deliverydate = qxYMDtoDate(2002, 1, 18, 0, 0, 0);
  bars.frequency = QX_FREQ_DAILY;
  bars.datatype = QX_DATA_OPTION;
  bars.optiontype = QX_OPTION_PUT;
  bars.strikeprice = 42.57;  // just below, so its decimals are cut to 57
  bars.filetype = QX_FILE_COMPUTRAC;
  qxSetDefaultDateFormat(2);
  const std::string text = printedInfo(bars);
  qxSetDefaultDateFormat(0);
  EXPECT_EQ(text,
            "barsize      -3\n"
            "datasize     2147483647\n"
            "reccnt       0\n"
            "path         C:\\data\n"
            "name         F7.DAT\n"
            "symbol       ABC\n"
            "description  Abc 50% off\n"
            "cusip        037833100\n"
            "begindate    15/03/1999\n"
            "enddate      31/12/2001\n"
            "frequency    Daily\n"
            "datatype     Option\n"
            "optiontype   Put\n"
            "deliverydate 18/01/2002\n"
            "strikeprice        42.57\n"
            "filetype     CompuTrac\n");
}

TEST(FileInfo, CodesOutsideTheirTablesAndFieldsWithoutEnd) {
  qxBars bars = {};
  std::memset(bars.path, 'p', sizeof bars.path);
  std::memset(bars.name, 'n', sizeof bars.name);
  std::memset(bars.symbol, 's', sizeof bars.symbol);
  std::memset(bars.description, 'd', sizeof bars.description);
  std::memset(bars.cusip, 'c', sizeof bars.cusip);
  bars.frequency = 7;
  bars.datatype = -1;
  bars.optiontype = INT32_MIN;
  bars.filetype = INT32_MAX;
  EXPECT_EQ(printedInfo(bars),
            "barsize      0\ndatasize     0\nreccnt       0\n"
            "path         " +
                std::string(256, 'p') +
                "\n"
                "name         " +
                std::string(16, 'n') +
                "\n"
                "symbol       " +
                std::string(16, 's') +
                "\n"
                "description  " +
                std::string(48, 'd') +
                "\n"
                "cusip        " +
                std::string(12, 'c') +
                "\n"
                "frequency    Unknown\ndatatype     Unknown\n"
                "optiontype    \n"
                "filetype     Unknown\n");
}

TEST(FileInfo, Outputs) {
  const qxBars bars = {};
  const TemporaryFolder folder;
  const std::string path = folder.write("info.txt", "before\n");
  EXPECT_EQ(qxFILEprintinfo(&bars, path.c_str(), 1), QX_SUCCESS);
  EXPECT_TRUE(qxtest::readFile(path).starts_with("before\nbarsize      0\n"));
  ::testing::internal::CaptureStdout();
  EXPECT_EQ(qxFILEprintinfo(&bars, "stdout", 0), QX_SUCCESS);
  EXPECT_TRUE(::testing::internal::GetCapturedStdout().starts_with("barsize      0\n"));
  EXPECT_EQ(qxFILEprintinfo(&bars, folder.path.c_str(), 0), QX_ERR_FILE_OPEN);
  EXPECT_EQ(qxFILEprintinfo(nullptr, path.c_str(), 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxFILEprintinfo(&bars, nullptr, 0), QX_ERR_INVALID_PARM);
}

}  // namespace
