// The reports of the worked run to the letter, and what happens to the files they are written to.
#include <algorithm>
#include <functional>
#include <type_traits>

#include "tests/trading/simulation.h"

namespace {

using qxtest::Simulation;
using qxtest::TemporaryFolder;
using qxtest::WorkedRun;

// What a report writes into a file.
template <typename... Options>
std::string written(int32_t (*report)(const qxOrderSystem*, const char*, int32_t, Options...),
                    const Simulation& run, std::type_identity_t<Options>... options) {
  TemporaryFolder folder;
  const std::string path = folder.file("report.txt");
  EXPECT_EQ(report(&run.record, path.c_str(), 0, options...), QX_SUCCESS);
  return qxtest::readFile(path);
}

// A file of the references folder, whose numbers were found by hand.
std::string reference(const std::string& name) {
  return qxtest::readFile(QX_REPORTS_DIR "/" + name);
}

TEST(Reports, ReadAsTheirReferences) {
  WorkedRun run;
  EXPECT_EQ(written(qxProfitRpt, run), reference("profit.txt"));
  EXPECT_EQ(written(qxProfitRpt1, run, ";,"), reference("profit-codes.txt"));
  EXPECT_EQ(written(qxPrintTrades, run), reference("trades.txt"));
  EXPECT_EQ(written(qxTradeRpt1, run, " ", 1), reference("trade-columns.txt"));
  EXPECT_EQ(written(qxTradeRpt1, run, ";", -1), reference("trade-fields.txt"));
  EXPECT_EQ(written(qxOpenPosRpt1, run, " ", 1), reference("open-columns.txt"));
  EXPECT_EQ(written(qxOpenPosRpt1, run, "||", 1), reference("open-fields.txt"));
  EXPECT_EQ(written(qxOrderRpt1, run, " ", 1), reference("order-columns.txt"));
  EXPECT_EQ(written(qxOrderRpt1, run, ";", 1), reference("order-fields.txt"));
  for (const int32_t unknown : {INT32_MIN, 0, QX_ORDER_CLOSE + 1}) {
    run->orders[0].ordertype = unknown;
    EXPECT_NE(written(qxOrderRpt1, run, ";", 0).find(";guard;;44.5"), std::string::npos);
  }
  run.buy("all", 4000000000u).cover("x", "S2", 1, 51, QX_ORDER_LIMIT);
  run->orders[0].ordertype = QX_ORDER_CLOSE;
  EXPECT_EQ(written(qxPrintOrders, run), reference("orders.txt"));
}

TEST(Reports, CodesAreDelimitedByTabsUnlessTold) {
  WorkedRun run;
  std::string expected = written(qxProfitRpt1, run, ";");
  std::replace(expected.begin(), expected.end(), ';', '\t');
  EXPECT_EQ(written(qxProfitRpt1, run, ""), expected);
  EXPECT_EQ(written(qxProfitRpt1, run, nullptr), expected);
}

TEST(Reports, HeadersAreOptional) {
  WorkedRun run;
  for (const auto& report : {qxTradeRpt1, qxOpenPosRpt1, qxOrderRpt1}) {
    const std::string whole = written(report, run, " ", 1), rows = written(report, run, " ", 0);
    EXPECT_TRUE(whole.starts_with("System ") && rows.starts_with("Test "));
    EXPECT_TRUE(whole.ends_with("-\n" + rows));
    EXPECT_TRUE(written(report, run, "  ", 0).starts_with("Test  SYM  ")) << "no single blank";
  }
}

// A short position is marked by a buy; a system stopped early is marked at its own bar.
TEST(Reports, OpenPositionsAreMarkedAtTheCurrentBar) {
  Simulation shorted(qxtest::workedBars());
  shorted.advance(0).sell("S", 2).advance(1);
  EXPECT_EQ(written(qxOpenPosRpt1, shorted, ",", 0),
            "Test,,2009/07/07 00:00:00,1,S,S,51.000,2,2009/07/07 00:00:00,1,B,53.000,2,-4.000\n");
}

// Numbers that fill their columns push them apart; the blanks of the format stay.
TEST(Reports, WideAndSignedMoney) {
  Simulation run({});
  run->netstats.netprofit = -1234567890.999;
  run->longstats.netprofit = -0.5;
  run->shortstats.netprofit = 1e300;
  run->netstats.trades = 2000000000;
  run->netstats.winnerbars = -3.9;
  const std::string profit = written(qxProfitRpt, run);
  for (const char* line : {"\nTest  1899/12/30 - 1899/12/30\n",
                           "\n  Total net profit       -1234567890.99         0.50  "
                           "9223372036854775807.00\n",
                           "\n  Avg # bars in winners        -3            0            0\n"}) {
    EXPECT_NE(profit.find(line), std::string::npos) << line << "is not in\n" << profit;
  }
  const std::string codes = written(qxProfitRpt1, run, "|");
  EXPECT_EQ(codes.rfind("NP| -1234567890.99|        0.50| 9223372036854775807.00\n", 0), 0u)
      << codes;
  EXPECT_NE(codes.find("\nNT|    2000000000|           0|           0\n"), std::string::npos);
}

TEST(Reports, AppendReplaceAndPrint) {
  WorkedRun run;
  TemporaryFolder folder;
  const std::string path = folder.file("r.txt");
  using Report = std::function<int32_t(const char*, int32_t)>;
  const Report reports[] = {
      [&](const char* f, int32_t a) { return qxProfitRpt(run, f, a); },
      [&](const char* f, int32_t a) { return qxProfitRpt1(run, f, a, ","); },
      [&](const char* f, int32_t a) { return qxPrintTrades(run, f, a); },
      [&](const char* f, int32_t a) { return qxPrintOrders(run, f, a); },
      [&](const char* f, int32_t a) { return qxTradeRpt1(run, f, a, ",", 1); },
      [&](const char* f, int32_t a) { return qxOpenPosRpt1(run, f, a, ",", 1); },
      [&](const char* f, int32_t a) { return qxOrderRpt1(run, f, a, ",", 1); }};
  for (const Report& report : reports) {
    ASSERT_EQ(report(path.c_str(), 0), QX_SUCCESS);
    const std::string once = qxtest::readFile(path);
    ASSERT_FALSE(once.empty());
    ASSERT_EQ(report(path.c_str(), 1), QX_SUCCESS);
    EXPECT_EQ(qxtest::readFile(path), once + once);
    ASSERT_EQ(report(path.c_str(), 0), QX_SUCCESS);
    EXPECT_EQ(qxtest::readFile(path), once);
    EXPECT_EQ(report(nullptr, 0), QX_ERR_INVALID_PARM);
    testing::internal::CaptureStdout();
    EXPECT_EQ(report("StdOut", 0), QX_SUCCESS);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), once);
  }
  EXPECT_EQ(qxTradeRpt1(run, path.c_str(), 0, nullptr, 1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxOpenPosRpt1(nullptr, path.c_str(), 0, ",", 1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxProfitRpt(nullptr, path.c_str(), 0), QX_ERR_INVALID_PARM);
}

TEST(Reports, DatesFollowTheDefaultOrder) {
  WorkedRun run;
  qxSetDefaultDateFormat(QX_ORDER_DMY);
  const std::string list = written(qxPrintTrades, run), profit = written(qxProfitRpt, run);
  qxSetDefaultDateFormat(QX_ORDER_YMD);
  EXPECT_NE(list.find("\n 08/07/2009 00:00:00    2 S limit"), std::string::npos) << list;
  EXPECT_NE(profit.find("\nTest  06/07/2009 - 17/07/2009\n"), std::string::npos) << profit;
}

}  // namespace
