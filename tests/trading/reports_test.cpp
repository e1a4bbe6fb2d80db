// The reports of the worked run to the letter, and what happens to the files they are written to.
#include <algorithm>
#include <cstdlib>
#include <functional>
#include <sstream>
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

// A text at the right of its column, or at the left where the width is negative.
std::string padded(const std::string& text, int width) {
  const std::string blanks(std::max<size_t>(text.size(), std::abs(width)) - text.size(), ' ');
  return width < 0 ? text + blanks : blanks + text;
}

// Rows of fields that end with ';', in columns with a blank between.
std::string inColumns(const std::string& rows, const std::vector<int>& widths) {
  std::string result, row, field;
  for (std::istringstream lines(rows); std::getline(lines, row);) {
    std::istringstream fields(row);
    for (const int width : widths) {
      std::getline(fields, field, ';');
      result += padded(field, width) + " ";
    }
    result.back() = '\n';
  }
  return result;
}

const std::string kStatistics =
    "  Total net profit            337.00       142.50       194.50\n"
    "  Gross profit                427.00       232.50       194.50\n"
    "  Gross loss                  -90.00       -90.00         0.00\n"
    "  Total # of trades             5            3            2 \n"
    "  Percent Profitable           80           66          100\n"
    "  Number winning trades         4            2            2 \n"
    "  Number losing trades          1            1            0 \n"
    "  Largest winning trade       197.50       197.50        97.50\n"
    "  Largest losing trade        -90.00       -90.00         0.00\n"
    "  Average winning trade       106.75       116.25        97.25\n"
    "  Average losing trade        -90.00       -90.00         0.00\n"
    "  Ratio avg win/avg loss        1.18         1.29         0.00\n"
    "  Avg trade(win & loss)        67.40        47.50        97.25\n"
    "  Max consec. winners           2            1            2 \n"
    "  Max consec. losers            1            1            0 \n"
    "  Avg # bars in winners         2            2            2\n"
    "  Avg # bars in losers          3            3            0\n"
    "  Max intraday drawdown      -400.00      -100.00      -400.00\n"
    "  Profit factor                 2.58         2.58         0.00\n"
    "  Max # contracts held          4            4            3\n"
    "  Account size required       400.00       100.00       400.00\n"
    "  Return on account            84.25%      142.50%       48.62%\n"
    "  PRR                           1.18         0.37        28.48\n"
    "  Open Position P/L          1050.00      1050.00         0.00\n";

TEST(Reports, Profit) {
  EXPECT_EQ(written(qxProfitRpt, WorkedRun()),
            "--------------------------------------------------------------\n"
            "Test  2009/07/06 - 2009/07/17\n"
            "\n"
            "                                 NET         LONG        SHORT\n" +
                kStatistics);
}

// The same numbers behind codes, each after its delimiter.
TEST(Reports, ProfitForPrograms) {
  WorkedRun run;
  const auto expected = [](char delimiter) {
    std::istringstream lines(kStatistics);
    std::string text, line, number;
    for (const char* code :
         {"NP", "GP", "GL", "NT", "PP", "NW", "NL", "LW", "LL", "AW", "AL", "WL",
          "AT", "MW", "ML", "WS", "LS", "MD", "PF", "MC", "AS", "RA", "PR", "OP"}) {
      std::getline(lines, line);
      text += code;
      for (std::istringstream numbers(line.substr(25)); numbers >> number;) {
        text += delimiter + padded(number.substr(0, number.find('%')), 12);
      }
      text += "\n";
    }
    return text;
  };
  EXPECT_EQ(written(qxProfitRpt1, run, ";,"), expected(';'));
  EXPECT_EQ(written(qxProfitRpt1, run, ""), expected('\t'));
  EXPECT_EQ(written(qxProfitRpt1, run, nullptr), expected('\t'));
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

TEST(Reports, TradeList) {
  EXPECT_EQ(written(qxPrintTrades, WorkedRun()),
            " Trade Summary  Test\n"
            "\n"
            " Date     Time     Bar#   Name                     Price   Volume       Profit\n"
            " -----------------------------------------------------------------------------\n"
            "\n"
            " 2009/07/07 00:00:00    1 B L1                     53.2500        2\n"
            " 2009/07/08 00:00:00    2 S limit                  54.0000        1      35.0000\n"
            "\n"
            " 2009/07/07 00:00:00    1 B L1                     53.2500        2\n"
            " 2009/07/09 00:00:00    3 S stop                   51.5000        1     -90.0000\n"
            "\n"
            " 2009/07/10 00:00:00    4 S S1                     51.0000        3\n"
            " 2009/07/10 00:00:00    5 B cover                  49.0000        1      97.5000\n"
            "\n"
            " 2009/07/10 00:00:00    4 S S1                     51.0000        3\n"
            " 2009/07/12 00:00:00    6 B L2                     50.0000        2      97.0000\n"
            "\n"
            " 2009/07/12 00:00:00    6 B L2                     50.0000        4\n"
            " 2009/07/14 00:00:00    8 S take                   54.0000        1     197.5000\n");
}

TEST(Reports, TradeColumns) {
  WorkedRun run;
  const std::string rows =
      "Test;SYM;2009/07/07 00:00:00;1;B;L1;53.250;2;2009/07/08 00:00:00;2;S;limit;54.000;1;35.000\n"
      "Test;SYM;2009/07/07 00:00:00;1;B;L1;53.250;2;2009/07/09 00:00:00;3;S;stop;51.500;1;-90.000\n"
      "Test;SYM;2009/07/10 00:00:00;4;S;S1;51.000;3;2009/07/10 00:00:00;5;B;cover;49.000;1;97.500\n"
      "Test;SYM;2009/07/10 00:00:00;4;S;S1;51.000;3;2009/07/12 00:00:00;6;B;L2;50.000;2;97.000\n"
      "Test;SYM;2009/07/12 00:00:00;6;B;L2;50.000;4;2009/07/14 00:00:00;8;S;take;54.000;1;"
      "197.500\n";
  const std::string columns =
      inColumns(rows, {-19, -8, 0, 4, 0, -19, 8, 8, 0, 4, 0, -19, 8, 8, 10});
  EXPECT_EQ(written(qxTradeRpt1, run, " ", 0), columns);
  EXPECT_EQ(written(qxTradeRpt1, run, " ", 1),
            "System              Symbol   Date       Time     Bar#   Name                  Price   "
            "Volume  Date     Time     Bar#   Name                  Price   Volume  Profit\n"
            "------------------- -------- ---------- -------- ---- - --------------------- ------- "
            "------- -------- -------- ---- - --------------------- ------- ------- -----------\n" +
                columns);
  EXPECT_EQ(written(qxTradeRpt1, run, ";", -1),
            "System;Symbol;DateTimeIn;BarNumIn;DirIn;NameIn;PriceIn;VolumeIn;DateTimeOut;BarNumOut;"
            "DirOut;NameOut;PriceOut;VolumeOut;Profit\n" +
                rows);
}

TEST(Reports, OpenPositionColumns) {
  WorkedRun run;
  const std::string row =
      "Test;SYM;2009/07/12 00:00:00;6;B;L2;50.000;4;2009/07/17 00:00:00;11;S;57.000;3;1050.000\n";
  EXPECT_EQ(written(qxOpenPosRpt1, run, " ", 1),
            "System              Symbol   Date       Time     Bar#   Name                  Price   "
            "Volume  Date     Time     Bar#   Price   Volume  Profit\n"
            "------------------- -------- ---------- -------- ---- - --------------------- ------- "
            "------- -------- -------- ---- - ------- ------- -----------\n" +
                inColumns(row, {-19, -8, 0, 4, 0, -19, 8, 8, 0, 4, 0, 8, 8, 10}));
  EXPECT_EQ(
      written(qxOpenPosRpt1, run, "||", 1),
      "System||Symbol||DateTimeIn||BarNumIn||DirIn||NameIn||PriceIn||VolumeIn||DateTimeOut||"
      "BarNumOut||DirOut||PriceOut||VolumeOut||Profit\n"
      "Test||SYM||2009/07/12 00:00:00||6||B||L2||50.000||4||2009/07/17 00:00:00||11||S||57.000||3||"
      "1050.000\n");
  // A short position is marked by a buy; a system stopped early is marked at its own bar.
  Simulation shorted(qxtest::workedBars());
  shorted.advance(0).sell("S", 2).advance(1);
  EXPECT_EQ(written(qxOpenPosRpt1, shorted, ",", 0),
            "Test,,2009/07/07 00:00:00,1,S,S,51.000,2,2009/07/07 00:00:00,1,B,53.000,2,-4.000\n");
}

TEST(Reports, Orders) {
  WorkedRun run;
  const std::string rows =
      "Test;SYM;2009/07/16 00:00:00;Exit;S;guard;Stop;44.500;9;GTC;L2\n"
      "Test;SYM;2009/07/16 00:00:00;Entry;S;S2;Stop;40.250;5;GTC;\n";
  EXPECT_EQ(written(qxOrderRpt1, run, " ", 1),
            "System              Symbol   Date       Time     Type  D Name                Order  "
            "   Price   Volume For From\n"
            "------------------- -------- ---------- -------- ----- - ------------------- ------ "
            "-------- -------- --- -------------------\n" +
                inColumns(rows, {-19, -8, 0, -5, 0, -19, -6, 8, 8, -3, -19}));
  EXPECT_EQ(written(qxOrderRpt1, run, ";", 1),
            "System;Symbol;DateTime;Type;Dir;Name;Order;Price;Volume;Force;From\n" + rows);
  run.buy("all", 4000000000u).cover("x", "S2", 1, 51, QX_ORDER_LIMIT);
  run->orders[0].ordertype = QX_ORDER_CLOSE;
  EXPECT_EQ(written(qxPrintOrders, run),
            " Order Summary  Test\n"
            "\n"
            " Date       Time     Type  D Name                 Order      Price   Volume For From\n"
            " -------------------------------------------------"
            "-------------------------------------------------\n"
            " 2009/07/16 00:00:00 Exit  S guard                Close    44.5000        9 GTC L2\n"
            " 2009/07/16 00:00:00 Entry S S2                   Stop     40.2500        5 GTC \n"
            " 1899/12/30 00:00:00 Entry B all                  Market    0.0000 4000000000 Bar \n"
            " 1899/12/30 00:00:00 Exit  B x                    Limit    51.0000        1 Bar S2\n");
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
