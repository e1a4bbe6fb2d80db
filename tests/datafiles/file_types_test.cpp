#include <string>

#include "tests/support/test_support.h"

namespace {

using qxtest::BarSet;
using qxtest::TemporaryFolder;

TEST(FileTypes, Names) {
  const struct {
    const char* type;
    int32_t code;
  } cases[] = {{"1", 1},   {"2", 2},  {"8", 8},      {"2 or so", 2},    {" 3", 3},
               {"0", 7},   {"9", 7},  {"-2", 7},     {"", 7},           {"XYZ", 7},
               {"TXT", 7}, {"7", 7},  {"ct", 2},     {"CT", 2},         {"csi", 1},
               {"Dj", 3},  {"fs", 4}, {"TC", 5},     {"tt", 6},         {"aiq", 8},
               {"CTX", 7}, {"C", 7},  {"ct.txt", 7}, {"99999999999", 7}};
  for (const auto& c : cases) EXPECT_EQ(qxFILEtype(c.type), c.code) << c.type;
  EXPECT_EQ(qxFILEtype(nullptr), 0);
}

TEST(FileTypes, TextIsReadUnderTheNamedLayout) {
  const TemporaryFolder folder;
  const char* path = folder.path.c_str();
  folder.write("p.csv", "2001-01-02,5,6\n2001-01-03,7,8\n");
  folder.write("txtinfo.txt", "delimit = ,\ndt = 1\ncl = 2\n");
  folder.write("vendor.lay", "delimit = ,\ndt = 1\ncl = 3\n");
  const auto closeUnder = [&](const char* type) {
    BarSet bars;
    EXPECT_EQ(qxFILEread(type, bars, path, "p.csv", 1, -1), QX_SUCCESS) << type;
    return bars->barsize == 1 ? bars->close.data[0] : -1.0;
  };
  EXPECT_EQ(closeUnder("7"), 7.0);
  EXPECT_EQ(closeUnder("txt"), 7.0);
  EXPECT_EQ(closeUnder("vendor.lay"), 8.0);

  BarSet bars;
  for (const char* type : {"missing.lay", "", "07", "7 "}) {
    EXPECT_EQ(qxFILEread(type, bars, path, "p.csv", 0, -1), QX_ERR_FILE_OPEN) << type;
  }
  EXPECT_EQ(qxFILEread("TXT", bars, path, "missing", 0, -1), QX_ERR_FILE_OPEN);
  EXPECT_EQ(qxFILEread("TXT", bars, path, "p.csv", 9, -1), QX_ERR_RECORD_NOT_FOUND);

  double found = 9.0;
  const double date = qxYMDtoDate(2001, 1, 3, 0, 0, 0);
  EXPECT_EQ(qxFILEfindrec("TXT", path, "p.csv", date, &found), 1);
  EXPECT_EQ(found, date);
  EXPECT_EQ(qxFILEfindrec("TXT", path, "p.csv", date, nullptr), 1);
  EXPECT_EQ(qxFILEfindrec("TXT", path, "p.csv", 1e6, &found), QX_ERR_RECORD_NOT_FOUND);
  EXPECT_EQ(found, 0.0) << "set to 0 first";
  found = 9.0;
  EXPECT_EQ(qxFILEfindrec("missing.lay", path, "p.csv", date, &found), QX_ERR_FILE_OPEN);
  EXPECT_EQ(found, 0.0);

  const std::string out = folder.file("listing");
  EXPECT_EQ(qxFILElist("anything", path, out.c_str(), 0), QX_SUCCESS);
  EXPECT_NE(qxtest::readFile(out).find("p.csv        p "), std::string::npos);
}

TEST(FileTypes, EachFormatIsForwardedTo) {
  const TemporaryFolder folder;  // without any vendor's directory file
  const char* path = folder.path.c_str();
  const std::string out = folder.file("listing");
  for (const char* type : {"1", "CT", "DJ", "FS", "TC", "TT", "AIQ"}) {
    BarSet bars;
    double found = 9.0;
    EXPECT_EQ(qxFILEread(type, bars, path, "ABC", 0, -1), QX_ERR_FILE_NOT_FOUND) << type;
    EXPECT_EQ(bars->date.data, nullptr) << type;
    EXPECT_EQ(qxFILEfindrec(type, path, "ABC", 1.0, &found), QX_ERR_FILE_NOT_FOUND) << type;
    EXPECT_EQ(found, 0.0) << type;
    EXPECT_EQ(qxFILElist(type, path, folder.path.c_str(), 0), QX_ERR_FILE_OPEN) << type;
  }
}

TEST(FileTypes, NullArguments) {
  BarSet bars;
  double found = 9.0;
  EXPECT_EQ(qxFILEread(nullptr, bars, "", "", 0, 1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxFILEread("2", nullptr, "", "", 0, 1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxFILEread("2", bars, nullptr, "", 0, 1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxFILEread("2", bars, "", nullptr, 0, 1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxFILEfindrec("7", "", nullptr, 1.0, &found), QX_ERR_INVALID_PARM);
  EXPECT_EQ(found, 9.0);
  EXPECT_EQ(qxFILElist("7", "", nullptr, 0), QX_ERR_INVALID_PARM);
}

}  // namespace
