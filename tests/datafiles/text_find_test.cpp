#include <string>

#include "tests/support/test_support.h"

namespace {

using qxtest::TemporaryFolder;

double day(int32_t number, int32_t hour = 0) {
  return qxYMDtoDate(2001, 1, number, hour, 0, 0);
}

struct FindCase {
  double target;
  int32_t record;
  double found;
};

void expectFinds(const std::string& bytes, const qxTXTinfo& info,
                 std::initializer_list<FindCase> cases) {
  const TemporaryFolder folder;
  folder.write("f.txt", bytes);
  for (const FindCase& c : cases) {
    double found = -1;
    EXPECT_EQ(qxTXTfindrec(folder.path.c_str(), "f.txt", &info, c.target, &found), c.record)
        << c.target;
    EXPECT_EQ(found, c.record < 0 ? -1 : c.found) << c.target;
    EXPECT_EQ(qxTXTfindrec(folder.path.c_str(), "f.txt", &info, c.target, nullptr), c.record);
  }
}

TEST(TextFind, AscendingFile) {
  const qxTXTinfo info = {1, 0, 0, 0, 0, 2, 0, 0, 0, 1, ","};
  expectFinds("head\n\n2001-01-02,1\n   \n2001-01-04,1\n\n2001-01-07,1\n", info,
              {{day(2), 0, day(2)},
               {day(4), 1, day(4)},
               {day(7), 2, day(7)},
               {day(3), 1, day(4)},
               {day(4) + 0.001, 2, day(7)},
               {day(1), QX_ERR_RECORD_NOT_FOUND, 0},
               {day(8), QX_ERR_RECORD_NOT_FOUND, 0},
               {__builtin_nan(""), QX_ERR_RECORD_NOT_FOUND, 0}});
}

TEST(TextFind, DescendingFile) {
  const qxTXTinfo info = {1, 0, 0, 0, 0, 2, 0, 0, 0, 0, ","};
  expectFinds("2001-01-07,1\r\n2001-01-04,1\r\n2001-01-02,1", info,
              {{day(7), 0, day(7)},
               {day(2), 2, day(2)},
               {day(5), 0, day(7)},
               {day(3), 1, day(4)},
               {day(8), QX_ERR_RECORD_NOT_FOUND, 0},
               {day(1), QX_ERR_RECORD_NOT_FOUND, 0}});
}

TEST(TextFind, Times) {
  const std::string bytes = "2001-01-02 10:00\n2001-01-02 12:00\n2001-01-03 10:00\n";
  const qxTXTinfo apart = {1, 2, 0, 0, 0, 0, 0, 0, 0, 0, " "};
  expectFinds(bytes, apart, {{day(2, 12), 1, day(2, 12)}, {day(2, 11), 1, day(2, 12)}});
  const qxTXTinfo together = {1, 1, 0, 0, 0, 0, 0, 0, 0, 0, ","};
  expectFinds(bytes, together, {{day(2, 12), 1, day(2, 12)}});
  // A time that stands before its date is lost.
  const qxTXTinfo reversed = {2, 1, 0, 0, 0, 0, 0, 0, 0, 0, " "};
  expectFinds("10:00 2001-01-02\n12:00 2001-01-03\n", reversed,
              {{day(3), 1, day(3)}, {day(3, 12), QX_ERR_RECORD_NOT_FOUND, 0}});
}

TEST(TextFind, Statuses) {
  const qxTXTinfo info = {1, 0, 0, 0, 0, 2, 0, 0, 0, 0, ","};
  double found = -1;
  EXPECT_EQ(qxTXTfindrec("nowhere", "f.txt", &info, 1.0, &found), QX_ERR_FILE_OPEN);
  EXPECT_EQ(qxTXTfindrec(nullptr, "f.txt", &info, 1.0, &found), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxTXTfindrec("", nullptr, &info, 1.0, &found), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxTXTfindrec("", "f.txt", nullptr, 1.0, &found), QX_ERR_INVALID_PARM);
  EXPECT_EQ(found, -1);
}

}  // namespace
