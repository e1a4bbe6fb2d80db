#include <string>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

double day(int32_t number, int32_t hour = 0) {
  return dateOf(2001, 1, number, hour);
}

struct FindCase {
  double target;
  int32_t record = QX_ERR_RECORD_NOT_FOUND;
  double found = -1;
};

void expectFinds(const std::string& bytes, const qxTXTinfo& info,
                 const std::vector<FindCase>& cases) {
  const TemporaryFolder folder;
  folder.write("f.txt", bytes);
  for (const FindCase& c : cases) {
    double found = -1;
    EXPECT_EQ(qxTXTfindrec(folder, "f.txt", &info, c.target, &found), c.record) << c.target;
    EXPECT_EQ(found, c.found) << c.target;
    EXPECT_EQ(qxTXTfindrec(folder, "f.txt", &info, c.target, nullptr), c.record);
  }
}

TEST(TextFind, FilesInEitherOrder) {
  const qxTXTinfo ascending = {1, 0, 0, 0, 0, 2, 0, 0, 0, 1, ","};
  const std::vector<FindCase> up = {{day(2), 0, day(2)},
                                    {day(4), 1, day(4)},
                                    {day(7), 2, day(7)},
                                    {day(3), 1, day(4)},
                                    {day(1)},
                                    {day(8)},
                                    {kNaN},
                                    {day(4) + 0.001, 2, day(7)}};
  expectFinds("head\n\n  2001-01-02,1\n   \n2001-01-04,1\n\n2001-01-07,1\n", ascending, up);
  const qxTXTinfo descending = {1, 0, 0, 0, 0, 2, 0, 0, 0, 0, ","};
  const std::vector<FindCase> down = {{day(7), 0, day(7)},
                                      {day(2), 2, day(2)},
                                      {day(5), 0, day(7)},
                                      {day(3), 1, day(4)},
                                      {day(8)},
                                      {day(1)}};
  expectFinds("2001-01-07,1\r\n2001-01-04,1\r\n2001-01-02,1", descending, down);
  expectFinds("4/1/2001,1\n", {1, 0, 0, 0, 0, 2, 0, 0, 2, 0, ","}, {{day(4), 0, day(4)}});
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
              {{day(3), 1, day(3)}, {day(3, 12)}});
}

TEST(TextFind, NullArguments) {
  const qxTXTinfo info = {1, 0, 0, 0, 0, 2, 0, 0, 0, 0, ","};
  expectNullsRefused("qxTXTfindrec", qxTXTfindrec, QX_ERR_INVALID_PARM, "", "f.txt", &info, 1.0,
                     nullptr);
}

}  // namespace
