#include <string>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

TEST(FileTypes, Names) {
  const std::pair<const char*, int32_t> cases[] = {
      {"1", 1},    {"2", 2},   {"8", 8},   {"2 or so", 2}, {" 3", 3},     {"0", 7},
      {"9", 7},    {"-2", 7},  {"", 7},    {"XYZ", 7},     {"TXT", 7},    {"7", 7},
      {"ct", 2},   {"CT", 2},  {"csi", 1}, {"Dj", 3},      {"fs", 4},     {"TC", 5},
      {"tt", 6},   {"aiq", 8}, {"CTX", 7}, {"C", 7},       {"ct.txt", 7}, {"99999999999", 7},
      {nullptr, 0}};
  for (const auto& [type, code] : cases) {
    EXPECT_EQ(qxFILEtype(type), code) << (type == nullptr ? "null" : type);
  }
}

TEST(FileTypes, TextIsReadUnderTheNamedLayout) {
  const TemporaryFolder folder;
  folder.write("p.csv", "2001-01-02,5,6\n2001-01-03,7,8\n");
  folder.write("txtinfo.txt", "delimit = ,\ndt = 1\ncl = 2\n");
  folder.write("vendor.lay", "delimit = ,\ndt = 1\ncl = 3\n");
  const std::pair<const char*, double> closes[] = {{"7", 7}, {"txt", 7}, {"vendor.lay", 8}};
  for (const auto& [type, close] : closes) {
    BarSet bars;
    EXPECT_EQ(qxFILEread(type, bars, folder, "p.csv", 1, -1), QX_SUCCESS) << type;
    EXPECT_EQ(valuesOf(bars->close), std::vector{close}) << type;
  }
  BarSet bars;
  for (const char* type : {"missing.lay", "", "07", "7 "}) {
    EXPECT_EQ(qxFILEread(type, bars, folder, "p.csv", 0, -1), QX_ERR_FILE_OPEN) << type;
  }
  EXPECT_EQ(qxFILEread("TXT", bars, folder, "missing", 0, -1), QX_ERR_FILE_OPEN);
  EXPECT_EQ(qxFILEread("TXT", bars, folder, "p.csv", 9, -1), QX_ERR_RECORD_NOT_FOUND);

  // The date found is set to 0 first.
  const double date = dateOf(2001, 1, 3);
  const auto find = [&](const char* type, double target, int32_t record, double dateFound) {
    double found = 9.0;
    EXPECT_EQ(qxFILEfindrec(type, folder, "p.csv", target, &found), record);
    EXPECT_EQ(found, dateFound);
    EXPECT_EQ(qxFILEfindrec(type, folder, "p.csv", target, nullptr), record);
  };
  find("TXT", date, 1, date);
  find("TXT", 1e6, QX_ERR_RECORD_NOT_FOUND, 0.0);
  find("missing.lay", date, QX_ERR_FILE_OPEN, 0.0);

  const std::string list =
      written([&](const char* path) { return qxFILElist("anything", folder, path, 0); });
  EXPECT_NE(list.find("p.csv        p "), std::string::npos);
}

TEST(FileTypes, NullArguments) {
  constexpr int32_t kRefused = QX_ERR_INVALID_PARM;
  BarSet bars;
  double found = 9.0;
  expectNullsRefused("qxFILEread", qxFILEread, kRefused, "2", bars, "", "", 0, 1);
  expectNullsRefused("qxFILElist", qxFILElist, kRefused, "7", "", "x", 0);
  EXPECT_EQ(qxFILEfindrec("7", "", nullptr, 1.0, &found), kRefused);
  EXPECT_EQ(found, 9.0);
}

}  // namespace
