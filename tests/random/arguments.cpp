#include "tests/random/arguments.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <set>

namespace qxrandom {
namespace {

constexpr int32_t kMostBars = 48;

// Values of one series: prices, with runs of equal values and the odd hostile one.
void fillSeries(Random& random, qxArray& array) {
  const bool hostile = onceIn(random, 4);
  double price = 100.0;
  for (int32_t i = 0; i < array.datasize; ++i) {
    if (!onceIn(random, 3)) price += (below(random, 401) - 200) / 64.0;
    array.data[i] = hostile && onceIn(random, 5) ? hostileDouble(random) : price;
  }
  if (onceIn(random, 12)) std::fill_n(array.data, array.datasize, onceIn(random, 2) ? 0.0 : price);
}

void disturbSizes(Random& random, qxArray& array) {
  if (onceIn(random, 8)) array.size = below(random, array.datasize + 1);
  if (onceIn(random, 30)) array.size = hostileInt(random);  // beyond the capacity, too
  if (onceIn(random, 4)) array.firstvalid = hostileInt(random);
}

qxArray allocated(Random& random, int32_t size) {
  qxArray array = {};
  if (qxAllocArray(&array, size) != QX_SUCCESS) return array;
  fillSeries(random, array);
  disturbSizes(random, array);
  return array;
}

qxArray* seriesOf(qxBars& bars, int32_t index) {
  qxArray* const series[] = {&bars.date,  &bars.open,   &bars.high,   &bars.low,
                             &bars.close, &bars.volume, &bars.openint};
  return series[index];
}

// Mostly short, so that windows do not fit; at times longer than every built-in window.
int32_t randomLength(Random& random) {
  return onceIn(random, 8) ? below(random, 260) : below(random, kMostBars);
}

void fillBars(Random& random, qxBars& bars) {
  double date = 36526.0 + below(random, 9000);
  const bool intraday = onceIn(random, 3);
  for (int32_t i = 0; i < bars.datasize; ++i) {
    const double low = 50.0 + below(random, 800) / 16.0;
    const double range = below(random, 40) / 16.0;
    bars.date.data[i] = date;
    bars.low.data[i] = low;
    bars.high.data[i] = low + range;
    bars.open.data[i] = low + range * below(random, 9) / 8.0;
    bars.close.data[i] = low + range * below(random, 9) / 8.0;
    bars.volume.data[i] = below(random, 5000);
    bars.openint.data[i] = below(random, 9000);
    date += intraday ? (1 + below(random, 90)) / 1440.0 : 1 + below(random, 4);
  }
  if (onceIn(random, 4)) {  // hostile values anywhere, dates too
    for (int32_t n = below(random, 6); n > 0 && bars.datasize > 0; --n) {
      seriesOf(bars, below(random, 7))->data[below(random, bars.datasize)] = hostileDouble(random);
    }
  }
}

std::string escaped(const char* text) {
  std::string result = "\"";
  for (const char* c = text; *c != '\0' && result.size() < 400; ++c) {
    char hex[8];
    std::snprintf(hex, sizeof hex, "\\x%02x", static_cast<unsigned int>(*c) & 0xFFu);
    result += *c >= ' ' && *c < 127 && *c != '"' ? std::string(1, *c) : hex;
  }
  return result + "\"";
}

}  // namespace

void openLasting(Lasting& lasting, Random& random) {
  qxAllocBars(&lasting.bars, 1 + randomLength(random));
  fillBars(random, lasting.bars);
  lasting.bars.frequency = below(random, 7);
  for (qxArray& series : lasting.chartSeries) series = allocated(random, 1 + randomLength(random));
  qxOrderSystemInit(&lasting.system, "lasting", &lasting.bars);
  qxGraphInit(&lasting.graph);
  lasting.graph.area = {0, 0, 320, 200};
}

void closeLasting(Lasting& lasting) {
  qxOrderSystemClose(&lasting.system);
  qxGraphFree(&lasting.graph);
  qxFreeBars(&lasting.bars);
  for (qxArray& series : lasting.chartSeries) qxFreeArray(&series);
}

void release(Context& context) {
  std::set<double*> blocks;
  for (qxArray& array : context.arrays) blocks.insert(array.data);
  for (qxBars& bars : context.bars) {
    for (int32_t i = 0; i < 7; ++i) blocks.insert(seriesOf(bars, i)->data);
  }
  for (int32_t i = 0; i < 7; ++i) blocks.erase(seriesOf(context.lasting.bars, i)->data);
  for (double* block : blocks) {
    qxArray owner = {block, 0, 0, 0};
    qxFreeArray(&owner);
  }
  for (qxCandles& candles : context.candles) qxCandleFree(&candles);
}

qxArray* randomArray(Context& context) {
  Random& random = context.random;
  if (onceIn(random, 60)) return nullptr;
  if (!context.arrays.empty() && onceIn(random, 12)) {  // the same record once more
    return &context.arrays[static_cast<size_t>(
        below(random, static_cast<int32_t>(context.arrays.size())))];
  }
  qxArray array = {};
  const int32_t kind = below(random, 16);
  if (kind < 3) {
    // unallocated
  } else if (kind == 3) {
    qxAllocArray(&array, 0);
  } else if (kind == 4 && !context.arrays.empty()) {  // another record over the same block
    array = context.arrays.back();
  } else if (kind == 5 && !context.bars.empty()) {
    array = *seriesOf(context.bars.back(), below(random, 7));
  } else {
    array = allocated(random, randomLength(random));
  }
  context.arrays.push_back(array);
  return &context.arrays.back();
}

qxBars* randomBars(Context& context) {
  Random& random = context.random;
  if (onceIn(random, 60)) return nullptr;
  if (!context.bars.empty() && onceIn(random, 10)) return &context.bars.back();
  qxBars bars = {};
  const int32_t kind = below(random, 12);
  if (kind >= 2) {
    qxAllocBars(&bars, kind == 2 ? 0 : randomLength(random));
    fillBars(random, bars);
    if (onceIn(random, 6)) qxReSizeBars(&bars, below(random, bars.datasize + 1));
    if (onceIn(random, 8)) {  // sizes that do not match
      // The dates tell whether a set is allocated; without them its other blocks would be lost.
      qxArray* series = seriesOf(bars, 1 + below(random, 6));
      if (onceIn(random, 3)) {
        qxFreeArray(series);
      } else {
        series->size = below(random, series->datasize + 1);
      }
    }
    if (onceIn(random, 5)) seriesOf(bars, below(random, 7))->firstvalid = hostileInt(random);
    if (onceIn(random, 30)) bars.barsize = hostileInt(random);
    bars.frequency = onceIn(random, 5) ? hostileInt(random) : below(random, 8);
    std::strcpy(bars.symbol, "SYM");
  }
  context.bars.push_back(bars);
  return &context.bars.back();
}

qxCandles* randomCandles(Context& context) {
  Random& random = context.random;
  if (onceIn(random, 60)) return nullptr;
  qxCandles candles = {};
  if (onceIn(random, 6)) candles.equality = hostileDouble(random);
  if (onceIn(random, 6)) candles.shadowlong = hostileDouble(random);
  if (!context.bars.empty() && !onceIn(random, 5)) {
    // At times classified from another, longer or shorter set than the one in use.
    qxCandleConstruct(onceIn(random, 8) ? &context.lasting.bars : &context.bars.back(), &candles);
  }
  context.candles.push_back(candles);
  return &context.candles.back();
}

const char* randomText(Context& context) {
  static const char* const kFolders[] = {".", "", "folder", ".\\", "./folder", "missing"};
  static const char* const kFiles[] = {"prices.csv", "prices.csv", "PRICES.CSV", "txtinfo.txt",
                                       "F1.DAT",     "f2.dat",     "ABC",        "abc@d",
                                       "XYZ",        "BIG",        "F300.MWD",   "qmaster"};
  static const char* const kTypes[] = {"AIQ", "CSI", "CT", "DJ",  "FS",          "TC",
                                       "TT",  "2",   "7",  "TXT", "txtinfo.txt", ""};
  static const char* const kOutputs[] = {"STDOUT", "stdout", "out.txt", "folder/out.txt"};
  static const char* const kNames[] = {"A", "B", "", "a name that is cut to twenty characters"};
  Random& random = context.random;
  const int32_t made = context.textsMade++;
  if (onceIn(random, 40)) return nullptr;
  if (onceIn(random, 8)) return hostileText(random);
  if (context.texts == Texts::kTyped) {
    context.texts = Texts::kFiles;
    context.textsMade = 0;
    return kTypes[below(random, 12)];
  }
  if (context.texts == Texts::kFiles && made == 0) {
    return onceIn(random, 5) ? kFolders[below(random, 6)] : ".";
  }
  if (context.texts == Texts::kFiles && made == 1) return kFiles[below(random, 12)];
  if (context.texts == Texts::kOutput && made == 0) return kOutputs[below(random, 4)];
  if (context.texts == Texts::kNames) return kNames[below(random, 4)];
  if (onceIn(random, 6)) {  // any characters but those that could lead out of the folder
    std::vector<char> text(static_cast<size_t>(1 + below(random, 40)));
    for (size_t i = 0; i + 1 < text.size(); ++i) {
      const char c = static_cast<char>(1 + below(random, 255));
      text[i] = c == '/' || c == '\\' || c == ':' || c == '.' ? '%' : c;
    }
    context.buffers.push_back(std::move(text));
    return context.buffers.back().data();
  }
  return hostileText(random);
}

qxOrderSystem* randomSystem(Context& context) {
  Random& random = context.random;
  if (onceIn(random, 40)) return nullptr;
  qxOrderSystem& system = context.lasting.system;
  if (onceIn(random, 30)) {
    double* const amounts[] = {&system.tick,     &system.tickvalue, &system.unitcost,
                               &system.sidecost, &system.deduction, &system.margin,
                               &system.avgprice, &system.lastentry};
    *amounts[below(random, 8)] = hostileDouble(random);
    int32_t* const settings[] = {&system.delay,     &system.gapfill,   &system.reverse,
                                 &system.pyramid,   &system.allowlong, &system.allowshort,
                                 &system.marketpos, &system.longvol,   &system.shortvol,
                                 &system.netvol,    &system.counter,   &system.longbars,
                                 &system.shortbars, &system.posbars,   &system.bar};
    *settings[below(random, 15)] = hostileInt(random);
  } else if (onceIn(random, 15)) {
    system.tick = system.tickvalue = 0.01;
    system.margin = 100.0;
    system.delay = 0;
    system.allowlong = system.allowshort = 1;
    system.pyramid = below(random, 3);
    system.bar = std::min(system.bar, below(random, kMostBars));
  }
  return &system;
}

qxGraph* randomGraph(Context& context) {
  Random& random = context.random;
  if (onceIn(random, 40)) return nullptr;
  qxGraph& graph = context.lasting.graph;
  if (onceIn(random, 30)) {
    int32_t* const settings[] = {&graph.barwidth,    &graph.firstshown, &graph.lastshown,
                                 &graph.area.left,   &graph.area.top,   &graph.area.right,
                                 &graph.area.bottom, &graph.axisshown,  &graph.axisshown2,
                                 &graph.hgap,        &graph.vgap,       &graph.ticklength,
                                 &graph.datesshown,  &graph.gridwidth,  &graph.gridstyle,
                                 &graph.headershown, &graph.titleheight};
    *settings[below(random, 17)] = hostileInt(random);
    float* const sizes[] = {&graph.axissize, &graph.titlesize, &graph.headersize,
                            &graph.footersize};
    if (onceIn(random, 3)) {
      const double size = hostileDouble(random);
      *sizes[below(random, 4)] = std::fabs(size) < 1e30 ? static_cast<float>(size) : -1.0f;
    }
  } else if (onceIn(random, 12)) {
    graph.area = {0, 0, 100 + below(random, 400), 100 + below(random, 300)};
    graph.barwidth = 1 + below(random, 12);
    graph.hgap = graph.vgap = 2;
    graph.ticklength = 6;
    graph.titleheight = 0;
    graph.axissize = graph.titlesize = graph.headersize = graph.footersize = 8.0f;
    graph.firstshown = below(random, 5);
    graph.lastshown = below(random, kMostBars);
  }
  return &graph;
}

void* randomBytes(Context& context, int32_t size, bool nullable) {
  if (nullable && onceIn(context.random, 30)) return nullptr;
  context.buffers.emplace_back(static_cast<size_t>(size));
  return context.buffers.back().data();
}

void fill(Context& context, double& cell) {
  cell = hostileDouble(context.random);
}
void fill(Context& context, int32_t& cell) {
  cell = hostileInt(context.random);
}

void fill(Context& context, qxTXTinfo& info) {
  int32_t* const fields[] = {&info.dt, &info.ti,  &info.op, &info.hi,       &info.lo,
                             &info.cl, &info.vol, &info.oi, &info.dtformat, &info.skip};
  for (int32_t* field : fields) {
    *field = onceIn(context.random, 10) ? hostileInt(context.random) : below(context.random, 9);
  }
  const std::string delimiters = hostileText(context.random);
  std::memset(info.delimit, ',', sizeof info.delimit);
  if (onceIn(context.random, 3)) std::memset(info.delimit + 1, 0, sizeof info.delimit - 1);
  if (onceIn(context.random, 3)) {
    delimiters.copy(info.delimit, sizeof info.delimit);
  }
}

void fill(Context& context, qxOptVar& variable) {
  variable.from = hostileDouble(context.random);
  variable.to = hostileDouble(context.random);
  variable.step = hostileDouble(context.random);
  variable.count = hostileInt(context.random);
  variable.value = hostileDouble(context.random);
}

void fill(Context& context, qxOptionLeg& leg) {
  leg.premium = hostileDouble(context.random);
  leg.strike = hostileDouble(context.random);
  leg.type = onceIn(context.random, 5) ? hostileInt(context.random) : 1 + below(context.random, 2);
  leg.expiration = hostileDouble(context.random);
}

// The records below are numbers only: their bytes are filled number by number.
template <typename Record>
static void fillDoubles(Context& context, Record& record) {
  unsigned char bytes[sizeof record];
  for (size_t at = 0; at < sizeof bytes; at += 4) {
    const double number = hostileDouble(context.random);
    std::memcpy(bytes + at, &number, std::min<size_t>(8, sizeof bytes - at));
    if (sizeof bytes - at >= 8 && !onceIn(context.random, 7)) at += 4;
  }
  std::memcpy(&record, bytes, sizeof record);
}

void fill(Context& context, qxOptionStrategy& strategy) {
  fillDoubles(context, strategy);
}
void fill(Context& context, qxTimeValue& value) {
  fillDoubles(context, value);
}
void fill(Context& context, qxBond& bond) {
  fillDoubles(context, bond);
}
void fill(Context& context, qxGraphLine& line) {
  fillDoubles(context, line);
}
void fill(Context& context, qxGraphShape& shape) {
  fillDoubles(context, shape);
}

void fill(Context& context, qxGraphChart& chart) {
  chart = {};
  chart.style = below(context.random, 11);
  chart.scaleflags = below(context.random, 4);
  chart.minmode = below(context.random, 4);
  chart.maxmode = below(context.random, 4);
  chart.minimum = hostileDouble(context.random);
  chart.maximum = hostileDouble(context.random);
  chart.scalechart = hostileInt(context.random);
  chart.penwidth = hostileInt(context.random);
  chart.penstyle = hostileInt(context.random);
  chart.selected = below(context.random, 2);
  chart.bars = context.lasting.bars;
  chart.series = context.lasting.chartSeries[static_cast<size_t>(below(context.random, 3))];
}

void describe(std::string& text, int64_t value) {
  text += std::to_string(value);
}

void describe(std::string& text, double value) {
  char number[40];
  std::snprintf(number, sizeof number, "%.17g", value);
  text += number;
}

void describe(std::string& text, const char* value) {
  text += value == nullptr ? "null" : escaped(value);
}

void describe(std::string& text, const qxArray* value) {
  if (value == nullptr) {
    text += "null";
    return;
  }
  char head[120];
  std::snprintf(head, sizeof head, "series@%p{block %p, size %d of %d, first valid %d",
                static_cast<const void*>(value), static_cast<void*>(value->data), value->size,
                value->datasize, value->firstvalid);
  text += head;
  for (int32_t i = 0; value->data != nullptr && i < std::min(value->size, value->datasize); ++i) {
    text += i == 0 ? ": " : " ";
    describe(text, value->data[i]);
  }
  text += "}";
}

void describe(std::string& text, const qxBars* value) {
  if (value == nullptr) {
    text += "null";
    return;
  }
  text += "bars{" + std::to_string(value->barsize) + " of " + std::to_string(value->datasize);
  qxBars copy = *value;
  for (int32_t i = 0; i < 7; ++i) {
    text += "\n    ";
    describe(text, static_cast<const qxArray*>(seriesOf(copy, i)));
  }
  text += "}";
}

void describe(std::string& text, const void* value) {
  char address[32];
  std::snprintf(address, sizeof address, "%p", value);
  text += value == nullptr ? "null" : address;
}

}  // namespace qxrandom
