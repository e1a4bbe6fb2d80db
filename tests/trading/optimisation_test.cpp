// Sweeps over variables, their values and texts; and the markers of trades for charts.
#include <cmath>

#include "tests/trading/simulation.h"

namespace {

qxOptVar variable(double from, double to, double step, double value = 0) {
  return {from, to, step, 0, value};
}

TEST(Optimisation, CountsAndValues) {
  qxOptVar vars[] = {variable(1, 10, 1), variable(0.5, 1.0, 0.25)};
  const auto expectValues = [&](uint32_t combination, int32_t status, double first, double second) {
    EXPECT_EQ(qxOptVarValue(vars, 2, combination), status) << combination;
    EXPECT_EQ(vars[0].value, first) << combination;
    EXPECT_EQ(vars[1].value, second) << combination;
  };
  EXPECT_EQ(qxOptVarCount(vars, 2), 30u);
  expectValues(11, QX_SUCCESS, 1.0, 0.75);
  expectValues(30, QX_SUCCESS, 10.0, 1.0);
  for (const uint32_t outside : {0u, 31u, UINT32_MAX}) {
    expectValues(outside, QX_ERR_INVALID_PARM, 10.0, 1.0);
  }
  EXPECT_EQ(qxOptVarValue(nullptr, 2, 1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxOptVarCount(nullptr, 2), 0u);
}

TEST(Optimisation, CountsOfOneVariable) {
  const struct {
    double from, to, step;
    int32_t count;
    uint32_t combinations;
  } rows[] = {{0, 1, 0.3, 4, 4},   {0, 2, 0.01, 201, 201},
              {0, 0.3, 0.1, 3, 3}, {5, 9, 0, 1, 1},
              {10, 1, -3, 4, 4},   {1, 10, -1, -8, 0},
              {3, 2, 1, 0, 0},     {3, 2.5, 1, 0, 0},
              {2, 2, 1, 1, 1},     {0, 1e300, 1, INT32_MAX, INT32_MAX},
              {0, NAN, 1, 0, 0},   {0, INFINITY, 1, INT32_MAX, INT32_MAX}};
  for (const auto& row : rows) {
    qxOptVar var = variable(row.from, row.to, row.step);
    EXPECT_EQ(qxOptVarCount(&var, 1), row.combinations) << row.from << " to " << row.to;
    EXPECT_EQ(var.count, row.count) << row.from << " to " << row.to;
  }
  // Beyond 32 bits the product saturates, and combinations still unfold variable by variable.
  qxOptVar large[] = {variable(1, 1e6, 1), variable(1, 1e6, 1), variable(1, 1e6, 1)};
  EXPECT_EQ(qxOptVarCount(large, 3), UINT32_MAX);
  EXPECT_EQ(qxOptVarValue(large, 3, UINT32_MAX), QX_SUCCESS);
  EXPECT_EQ(large[0].value, 967295.0) << "4294967294 = 4294 * 1000000 + 967294";
  EXPECT_EQ(large[1].value, 4295.0);
  EXPECT_EQ(large[2].value, 1.0);
  large[2].to = 0;
  EXPECT_EQ(qxOptVarCount(large, 3), 0u);
  EXPECT_EQ(qxOptVarValue(large, 3, 1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(large[1].value, 4295.0);
}

TEST(Optimisation, LinesHaveOneWidth) {
  const struct {
    qxOptVar var;
    const char* text;
  } rows[] = {
      {variable(1, 10, 1, 3), " 3"},         {variable(1, 9, 1, 3), " 3"},  // 10 would be printed
      {variable(0.5, 1, 0.25, 0.5), "0.50"}, {variable(0.5, 0.75, 0.125, 0.75), "0.750"},
      {variable(-5, 5, 0.5, -2.5), "-2.5"},  {variable(-5, 5, 0.5, -0.5), " 0.5"},  // sign is lost
      {variable(9, 0, -3, 6), " 6"},         {variable(5, -5, -0.5, 2.5), " 2.5"},
      {variable(0, 100, 25, 0), "  0"},      {variable(10, 10, 0.1, 10.1), "10.09999999"},
      {variable(0, 0, 0, 0), "0"},           {variable(1, 2, 1, 12345), "12345"}};
  for (const auto& row : rows) {
    char text[64];
    EXPECT_EQ(qxOptVarString(&row.var, 1, ",", text), QX_SUCCESS);
    EXPECT_STREQ(text, row.text);
    EXPECT_EQ(qxOptVarStringLen(&row.var, 1, ","), static_cast<int32_t>(std::strlen(text)) + 1);
  }
  qxOptVar vars[] = {variable(1, 10, 1), variable(0.5, 1.0, 0.25), variable(-1, 1, 1)};
  qxOptVarValue(vars, 3, 61);
  char line[] = " 1 | 0.50 |  1 and what was there";
  EXPECT_EQ(qxOptVarStringLen(vars, 3, " | "), 2 + 3 + 4 + 3 + 2 + 1);
  qxOptVarString(vars, 3, " | ", line);
  EXPECT_STREQ(line, " 1 | 0.50 |  1");
  EXPECT_EQ(qxOptVarStringLen(vars, 0, ","), 1);
  qxOptVarString(vars, -1, ",", line);
  EXPECT_STREQ(line, "");
  EXPECT_EQ(qxOptVarString(vars, 1, nullptr, line), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxOptVarString(vars, 1, ",", nullptr), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxOptVarStringLen(nullptr, 1, ","), 0);
}

TEST(TradeMarkers, SumTheFlagsOfEachBar) {
  qxtest::WorkedRun run;
  qxtest::Series markers;
  markers.record.firstvalid = 7;
  EXPECT_EQ(qxCreateTradeGraph(run, markers), QX_SUCCESS);
  EXPECT_EQ(markers.values(), (std::vector<double>{0, 1, 8, 8, 2, 4, 1 + 4, 0, 8, 0, 0, 0}));
  EXPECT_EQ(markers.record.firstvalid, 0) << "as allocation sets it";
  // An entry and an exit on the same bar; bars outside the markers are passed over.
  qxtest::Series shorter({9, 9, 9, 9}, 2);
  run->trades[0].exit.bar = 1;
  run->trades[1].entry.bar = INT32_MIN;
  EXPECT_EQ(qxCreateTradeGraph(run, shorter), QX_SUCCESS);
  EXPECT_EQ(shorter.values(), (std::vector<double>{0, 9, 0, 8}));
  EXPECT_EQ(shorter.record.firstvalid, 2);
  qxOrderSystem empty = {};
  EXPECT_EQ(qxCreateTradeGraph(&empty, markers), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxCreateTradeGraph(nullptr, markers), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxCreateTradeGraph(run, nullptr), QX_ERR_INVALID_PARM);
}

}  // namespace
