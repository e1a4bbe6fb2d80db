// Readers, writers, trading systems, graphs and point-and-figure columns with every allocation
// failing in turn.
#include <functional>

#include "tests/support/computrac_files.h"
#include "tests/support/failing_memory.h"
#include "tests/support/test_support.h"

namespace {

using qxtest::BarSet;
using qxtest::TemporaryFolder;

struct Job {
  const char* name;
  std::function<int32_t()> run;
  std::function<void()> undo;    // releases what a run, complete or not, has left to the caller
  std::function<bool()> intact;  // what must hold after a failure
  int32_t status = QX_ERR_MALLOC;
};

// Runs a job with its first, second, ... allocation failing until none does.
void failEachAllocation(const Job& job) {
  SCOPED_TRACE(job.name);
  const int64_t before = qxtest::liveBlocks();
  ASSERT_GE(job.run(), QX_SUCCESS);
  job.undo();
  ASSERT_EQ(qxtest::liveBlocks(), before);
  for (int64_t n = 1; n < 200; ++n) {
    qxtest::failAllocation(n);
    const int32_t status = job.run();
    const bool all = qxtest::failureIsPending();
    qxtest::failAllocation(0);
    if (all) {
      EXPECT_GT(n, 1) << "nothing is allocated";
      EXPECT_GE(status, QX_SUCCESS);
    } else {
      EXPECT_EQ(status, job.status) << n;
      EXPECT_TRUE(!job.intact || job.intact()) << n;
    }
    job.undo();
    EXPECT_EQ(qxtest::liveBlocks(), before) << n;
    EXPECT_GE(job.run(), QX_SUCCESS) << "after allocation " << n;
    job.undo();
    if (all) return;
  }
  FAIL() << "does not come to an end";
}

TEST(RecordMemory, Readers) {
  TemporaryFolder folder;
  folder.write("prices.csv", "1999-03-15,1,2,3,4,5\n1999-03-16,1,2,3,4,5\n1999-03-17,1,2,3,4,5\n");
  folder.write("txtinfo.txt", "delimit=,\ndt=1\nop=2\nhi=3\nlo=4\ncl=5\nvol=6\ndtformat=YMD\n");
  folder.write("master", qxtest::master({{1, 7, "Name", "ABC", 'D'}}));
  folder.write("F1.DAT", qxtest::dataFile(7, 4, 990104, 5));
  const char* const path = folder.path.c_str();
  const std::string csv = folder.file("prices.csv"), list = folder.file("list.out");
  qxTXTinfo info = {};
  ASSERT_EQ(qxTXTreadinfo(path, "txtinfo.txt", &info), QX_SUCCESS);
  qxBars bars = {};
  qxArray array = {};
  const auto undo = [&] {
    qxFreeBars(&bars);
    qxFreeArray(&array);
  };
  const auto untouched = [&] { return bars.date.data == nullptr && array.data == nullptr; };
  const Job jobs[] = {
      {"qxTXTread", [&] { return qxTXTread(&bars, path, "prices.csv", &info, 0, -1); }, undo,
       untouched},
      {"qxTXTreadarray",
       [&] { return qxTXTreadarray(&array, path, "prices.csv", ",", 0, 5, 0, -1); }, undo,
       untouched},
      {"qxTXT2Array", [&] { return qxTXT2Array(csv.c_str(), &array, ",", 0, 2); }, undo, untouched},
      {"qxCTread", [&] { return qxCTread(&bars, path, "ABC", 0, -1); }, undo, untouched},
      {"qxCTreadarray", [&] { return qxCTreadarray(&array, path, "ABC", 5, 0, -1); }, undo,
       untouched},
      {"qxFILEread", [&] { return qxFILEread("TXT", &bars, path, "prices.csv", 0, -1); }, undo,
       untouched},
  };
  for (const Job& job : jobs) failEachAllocation(job);
}

TEST(RecordMemory, PatternSeries) {
  BarSet bars(qxtest::workedBars());
  qxCandles candles = {};
  ASSERT_EQ(qxCandleConstruct(bars, &candles), QX_SUCCESS);
  qxArray array = {};
  const auto undo = [&] { qxFreeArray(&array); };
  const auto untouched = [&] { return array.data == nullptr; };
  failEachAllocation({"qxFormationFill",
                      [&] { return qxFormationFill(bars, &array, "qxGap", 0, 11); }, undo,
                      untouched});
  failEachAllocation({"qxCandleFill",
                      [&] { return qxCandleFill(bars, &candles, &array, "qxHammer", 0, 11); }, undo,
                      untouched});
  qxCandleFree(&candles);
}

TEST(RecordMemory, ADateUnderALongSeparatorIsEmpty) {
  char text[4000] = "x";
  const std::string separator(500, '-');
  const auto run = [&] { return qxJulianToDateTxt(36234.0, 1, separator.c_str(), text); };
  const int32_t length = run();
  const std::string usual = text;
  EXPECT_GT(length, 1000);
  qxtest::failAllocation(1);
  EXPECT_EQ(run(), 0);
  EXPECT_FALSE(qxtest::failureIsPending());
  EXPECT_STREQ(text, "");
  EXPECT_EQ(run(), length);
  EXPECT_EQ(text, usual);
}

TEST(RecordMemory, PointAndFigure) {
  BarSet bars(qxtest::workedBars());
  qxBars columns = {};
  qxArray map = {};
  const auto undo = [&] {
    qxFreeBars(&columns);
    qxFreeArray(&map);
  };
  const auto untouched = [&] { return columns.date.data == nullptr && map.data == nullptr; };
  failEachAllocation({"qxBars2PNF", [&] { return qxBars2PNF(bars, &columns, &map, 0.5, 1.0, 0); },
                      undo, untouched});
  failEachAllocation({"qxBars2PNFhilo",
                      [&] { return qxBars2PNFhilo(bars, &columns, &map, 0.5, 1.0, 0); }, undo,
                      untouched});
}

// A year of bars that go up and down, with an order a bar: more orders, positions and trades than
// the tables begin with.
struct Year {
  BarSet bars;
  Year() : bars(days()) {}
  static std::vector<qxtest::Bar> days() {
    std::vector<qxtest::Bar> result;
    for (int32_t i = 0; i < 60; ++i) {
      const double price = 50.0 + i % 7;
      result.push_back({40000.0 + i, price, price + 2, price - 2, price + 1, 100, 0});
    }
    return result;
  }
};

TEST(RecordMemory, OrderSystems) {
  Year year;
  qxOrderSystem system = {};
  const auto undo = [&] { qxOrderSystemClose(&system); };
  failEachAllocation({"qxOrderSystemInit",
                      [&] { return qxOrderSystemInit(&system, "s", year.bars); }, undo,
                      [&] { return system.orders == nullptr && system.trades == nullptr; }});
  ASSERT_EQ(qxOrderSystemInit(&system, "s", year.bars), QX_SUCCESS);
  qxArray markers = {};
  failEachAllocation({"qxCreateTradeGraph", [&] { return qxCreateTradeGraph(&system, &markers); },
                      [&] { qxFreeArray(&markers); }, [&] { return markers.data == nullptr; }});
  undo();
}

TEST(RecordMemory, AnOrderThatFindsNoRoomIsNotPlaced) {
  Year year;
  using Place = int32_t (*)(qxOrderSystem*);
  const Place places[] = {
      [](qxOrderSystem* s) { return qxBuyToOpen(s, "n", 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR); },
      [](qxOrderSystem* s) { return qxSellToOpen(s, "n", 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR); },
      [](qxOrderSystem* s) {
        return qxSellToClose(s, "n", "", 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
      },
      [](qxOrderSystem* s) {
        return qxBuyToClose(s, "n", "", 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
      }};
  for (const Place place : places) {
    const int64_t before = qxtest::liveBlocks();
    qxOrderSystem system = {};
    ASSERT_EQ(qxOrderSystemInit(&system, "s", year.bars), QX_SUCCESS);
    int32_t placed = 0, refused = 0;
    for (int32_t i = 0; i < 40; ++i) {
      qxtest::failAllocation(1);
      const int32_t status = place(&system);
      const bool needed = !qxtest::failureIsPending();
      qxtest::failAllocation(0);
      ASSERT_EQ(status, needed ? QX_ERR_MALLOC : QX_SUCCESS);
      refused += needed ? 1 : 0;
      placed += needed ? 0 : 1;
      ASSERT_EQ(system.ordercount, placed);
      if (needed) {
        ASSERT_EQ(place(&system), QX_SUCCESS) << "the next call works";
        ++placed;
      }
    }
    EXPECT_GT(refused, 2);
    qxOrderSystemClose(&system);
    EXPECT_EQ(qxtest::liveBlocks(), before);
  }
}

TEST(RecordMemory, ProcessingGoesOnWithoutMemory) {
  Year year;
  for (int64_t n = 1;; ++n) {
    const int64_t before = qxtest::liveBlocks();
    qxOrderSystem system = {};
    ASSERT_EQ(qxOrderSystemInit(&system, "s", year.bars), QX_SUCCESS);
    system.pyramid = 100;
    bool armed = false;
    for (int32_t bar = 0; bar < 60; ++bar) {
      for (int32_t k = 0; k < 2; ++k) {
        qxBuyToOpen(&system, "in", 3, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
        qxSellToClose(&system, "out", "in", 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
      }
      if (!armed && bar == 1) qxtest::failAllocation(n);
      armed = armed || bar == 1;
      ASSERT_EQ(qxProcessOrders(&system), bar < 60 ? 1 : 0) << "what finds no room is dropped";
      ASSERT_LE(system.positioncount, system.positioncap);
      ASSERT_LE(system.tradecount, system.tradecap);
    }
    const bool all = qxtest::failureIsPending();
    qxtest::failAllocation(0);
    qxOrderSystemClose(&system);
    ASSERT_EQ(qxtest::liveBlocks(), before);
    if (all) {
      EXPECT_GT(n, 3) << "the tables never grew";
      break;
    }
    ASSERT_LT(n, 500);
  }
}

// A graph with a pane, a chart and bars to draw.
struct Painted {
  Year year;
  qxGraph graph = {};
  Painted() {
    qxGraphInit(&graph);
    graph.area = {0, 0, 500, 300};
    chart(0, 0);
  }
  ~Painted() { qxGraphFree(&graph); }
  int32_t chart(int32_t pane, int32_t index) {
    return qxGraphChartAdd(&graph, pane, index, 0, 1, 1, 0, 0, 0, &year.bars->close, year.bars,
                           QX_CHART_CANDLE, 0, 0xFF, 0xFF00, 1, 0, 0);
  }
};

TEST(RecordMemory, Graphs) {
  Painted painted;
  qxGraph fresh = {};
  const auto undo = [&] { qxGraphFree(&fresh); };
  const auto emptyPane = [&] {
    for (int32_t i = 0; i < fresh.subwincount; ++i) {
      const qxGraphSubwin& pane = fresh.subwins[i];
      if (pane.chartcount + pane.linecount + pane.shapecount != 0) return false;
    }
    return true;
  };
  const Job jobs[] = {
      {"qxGraphSubwinAdd", [&] { return qxGraphSubwinAdd(&fresh, 9); }, undo,
       [&] { return fresh.subwincount == 0; }},
      {"qxGraphChartAdd",
       [&] {
         return qxGraphChartAdd(&fresh, -1, -1, 0, 1, 1, 0, 0, 0, &painted.year.bars->close,
                                painted.year.bars, QX_CHART_LINE, 0, 0, 0, 1, 0, 0);
       },
       undo, emptyPane},
      {"qxGraphLineAdd", [&] { return qxGraphLineAdd(&fresh, -1, -1, 0, 1.0, 0, 1, 0, 0); }, undo,
       emptyPane},
      {"qxGraphShapeAdd",
       [&] { return qxGraphShapeAdd(&fresh, -1, -1, 0, 1, 0, 0, 1, 1, 0, 1, 0, 0); }, undo,
       emptyPane},
  };
  for (const Job& job : jobs) failEachAllocation(job);
}

TEST(RecordMemory, PaintingWithoutMemoryWritesNoPicture) {
  Painted painted;
  TemporaryFolder folder;
  const std::string path = folder.file("chart.svg");
  failEachAllocation(
      {"qxGraphPaintSVG", [&] { return qxGraphPaintSVG(&painted.graph, path.c_str()); },
       [&] { std::remove(path.c_str()); }, [&] { return qxtest::readFile(path).empty(); }});
}

}  // namespace
