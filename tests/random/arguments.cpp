#include "tests/random/arguments.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <set>

namespace qxrandom {
namespace {

constexpr int32_t kMostBars = 48;

// Prices, with runs of equal values and the odd hostile one; sizes that do not fit at times.
void fillSeries(Random& random, qxArray& array) {
  const bool hostile = onceIn(random, 4);
  double price = 100.0;
  for (int32_t i = 0; i < array.datasize; ++i) {
    if (!onceIn(random, 3)) price += (below(random, 401) - 200) / 64.0;
    array.data[i] = hostile && onceIn(random, 5) ? hostileDouble(random) : price;
  }
  if (onceIn(random, 12)) std::fill_n(array.data, array.datasize, onceIn(random, 2) ? 0.0 : price);
  if (onceIn(random, 8)) array.size = below(random, array.datasize + 1);
  if (onceIn(random, 30)) array.size = hostileInt(random);  // beyond the capacity, too
  if (onceIn(random, 4)) array.firstvalid = hostileInt(random);
}

qxArray allocated(Random& random, int32_t size) {
  qxArray array = {};
  if (qxAllocArray(&array, size) == QX_SUCCESS) fillSeries(random, array);
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
  if (!onceIn(random, 4) || bars.datasize == 0) return;
  for (int32_t n = below(random, 6); n > 0; --n) {  // hostile values anywhere, dates too
    seriesOf(bars, below(random, 7))->data[below(random, bars.datasize)] = hostileDouble(random);
  }
}

// Sizes that do not match, first valid indexes anywhere.
void disturbBars(Random& random, qxBars& bars) {
  if (onceIn(random, 6)) qxReSizeBars(&bars, below(random, bars.datasize + 1));
  if (onceIn(random, 6)) {
    // A shorter series, mostly in a block of its own, so that a read beyond it is seen. The dates
    // tell whether a set is allocated; without them its other blocks would be lost.
    const int32_t index = below(random, 7);
    qxArray* series = seriesOf(bars, index);
    const int32_t size = below(random, series->datasize + 1);
    if (onceIn(random, 4)) {
      series->size = size;
    } else {
      qxFreeArray(series);
      if (index == 0 || !onceIn(random, 4)) *series = allocated(random, std::max(1, size));
    }
  }
  if (onceIn(random, 5)) seriesOf(bars, below(random, 7))->firstvalid = hostileInt(random);
  if (onceIn(random, 30)) bars.barsize = hostileInt(random);
  bars.frequency = onceIn(random, 5) ? hostileInt(random) : below(random, 8);
  std::strcpy(bars.symbol, "SYM");
}

// Mostly some bars long, at times unallocated, empty, or over the block of another.
qxArray* randomArray(Context& context) {
  Random& random = context.random;
  if (!context.arrays.empty() && onceIn(random, 12)) {  // the same record once more
    const auto count = static_cast<int32_t>(context.arrays.size());
    return &context.arrays[static_cast<size_t>(below(random, count))];
  }
  qxArray array = {};
  const int32_t kind = below(random, 16);
  if (kind < 3) {
    // unallocated
  } else if (kind == 4 && !context.arrays.empty()) {
    array = context.arrays.back();
  } else if (kind == 5 && !context.bars.empty()) {
    array = *seriesOf(context.bars.back(), below(random, 7));
  } else {
    array = allocated(random, kind == 3 ? 0 : randomLength(random));
  }
  return &context.arrays.emplace_back(array);
}

qxBars* randomBars(Context& context) {
  Random& random = context.random;
  if (!context.bars.empty() && onceIn(random, 10)) return &context.bars.back();
  qxBars bars = {};
  if (!onceIn(random, 6)) {
    qxAllocBars(&bars, onceIn(random, 10) ? 0 : randomLength(random));
    fillBars(random, bars);
    disturbBars(random, bars);
  }
  return &context.bars.emplace_back(bars);
}

qxCandles* randomCandles(Context& context) {
  Random& random = context.random;
  qxCandles candles = {};
  if (onceIn(random, 6)) candles.equality = hostileDouble(random);
  if (onceIn(random, 6)) candles.shadowlong = hostileDouble(random);
  if (!context.bars.empty() && !onceIn(random, 5)) {
    // At times classified from another, longer or shorter set than the one in use.
    qxCandleConstruct(onceIn(random, 8) ? &context.lasting.bars : &context.bars.back(), &candles);
  }
  return &context.candles.emplace_back(candles);
}

// The lasting order system and graph, at times with hostile settings.
qxOrderSystem* randomSystem(Context& context) {
  Random& random = context.random;
  qxOrderSystem& s = context.lasting.system;
  if (onceIn(random, 30)) {
    double* const amounts[] = {&s.tick,      &s.tickvalue, &s.unitcost, &s.sidecost,
                               &s.deduction, &s.margin,    &s.avgprice, &s.lastentry};
    int32_t* const settings[] = {&s.delay,     &s.gapfill,    &s.reverse,   &s.pyramid,
                                 &s.allowlong, &s.allowshort, &s.marketpos, &s.longvol,
                                 &s.shortvol,  &s.netvol,     &s.counter,   &s.longbars,
                                 &s.shortbars, &s.posbars,    &s.bar};
    *amounts[below(random, 8)] = hostileDouble(random);
    *settings[below(random, 15)] = hostileInt(random);
  } else if (onceIn(random, 15)) {
    s.tick = s.tickvalue = 0.01;
    s.margin = 100.0;
    s.delay = 0;
    s.allowlong = s.allowshort = 1;
    s.pyramid = below(random, 3);
    s.bar = std::min(s.bar, below(random, kMostBars));
  }
  return &s;
}

qxGraph* randomGraph(Context& context) {
  Random& random = context.random;
  qxGraph& g = context.lasting.graph;
  if (onceIn(random, 30)) {
    int32_t* const settings[] = {
        &g.barwidth,      &g.firstshown,  &g.lastshown,    &g.area.left,   &g.area.top,
        &g.area.right,    &g.area.bottom, &g.axisshown,    &g.axisshown2,  &g.hgap,
        &g.vgap,          &g.ticklength,  &g.datesshown,   &g.gridwidth,   &g.gridstyle,
        &g.headershown,   &g.titleheight, &g.bararea.left, &g.bararea.top, &g.bararea.right,
        &g.bararea.bottom};
    float* const sizes[] = {&g.axissize, &g.titlesize, &g.headersize, &g.footersize};
    *settings[below(random, static_cast<int32_t>(std::size(settings)))] = hostileInt(random);
    const double size = hostileDouble(random);
    if (onceIn(random, 3)) {
      *sizes[below(random, 4)] = std::fabs(size) < 1e30 ? static_cast<float>(size) : -1.0f;
    }
  } else if (onceIn(random, 12)) {
    g.area = {0, 0, 100 + below(random, 400), 100 + below(random, 300)};
    g.barwidth = 1 + below(random, 12);
    g.hgap = g.vgap = 2;
    g.ticklength = 6;
    g.titleheight = 0;
    g.axissize = g.titlesize = g.headersize = g.footersize = 8.0f;
    g.firstshown = below(random, 5);
    g.lastshown = below(random, kMostBars);
  }
  return &g;
}

qxTXTinfo randomLayout(Random& random) {
  qxTXTinfo info = {};
  for (int32_t* field : {&info.dt, &info.ti, &info.op, &info.hi, &info.lo, &info.cl, &info.vol,
                         &info.oi, &info.dtformat, &info.skip}) {
    *field = onceIn(random, 10) ? hostileInt(random) : below(random, 9);
  }
  std::memset(info.delimit, ',', sizeof info.delimit);
  if (onceIn(random, 3)) std::memset(info.delimit + 1, 0, sizeof info.delimit - 1);
  if (onceIn(random, 3)) std::string(hostileText(random)).copy(info.delimit, sizeof info.delimit);
  return info;
}

// Number by number, mostly eight bytes wide.
void fillNumbers(Random& random, char* bytes, size_t size) {
  for (size_t at = 0; at < size; at += size - at >= 8 && !onceIn(random, 7) ? 8 : 4) {
    const double number = hostileDouble(random);
    std::memcpy(bytes + at, &number, std::min<size_t>(8, size - at));
  }
}

qxGraphChart randomChart(Random& random, const Lasting& lasting) {
  qxGraphChart chart = {};
  fillNumbers(random, reinterpret_cast<char*>(&chart), offsetof(qxGraphChart, series));
  chart.style = below(random, 11);
  for (int32_t* flags : {&chart.scaleflags, &chart.minmode, &chart.maxmode}) {
    *flags = below(random, 4);
  }
  // Shown over and over again, so only what lives as long may be given.
  chart.bars = lasting.bars;
  chart.series = lasting.chartSeries[below(random, 3)];
  return chart;
}

// A record that nothing is known of stays zero.
void* randomRecord(Context& context, const Parameter& parameter) {
  Random& random = context.random;
  const auto size = static_cast<size_t>(parameter.size);
  char* bytes = static_cast<char*>(randomBytes(context, size));
  if (bytes == nullptr) return nullptr;
  const auto store = [bytes](const auto& record) { std::memcpy(bytes, &record, sizeof record); };
  if (parameter.kind == Kind::kIntegerCell) store(hostileInt(random));
  if (parameter.kind == Kind::kRealCell) store(hostileDouble(random));
  if (parameter.kind == Kind::kTextLayout) store(randomLayout(random));
  if (parameter.kind == Kind::kGraphChart) store(randomChart(random, context.lasting));
  if (parameter.kind == Kind::kNumbers) fillNumbers(random, bytes, size);
  if (parameter.kind == Kind::kOptionLeg) {
    store(qxOptionLeg{hostileDouble(random), hostileDouble(random),
                      onceIn(random, 5) ? hostileInt(random) : 1 + below(random, 2),
                      hostileDouble(random)});
  }
  return bytes;
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

std::string describedNumber(double number) {
  char text[40];
  std::snprintf(text, sizeof text, "%.17g", number);
  return text;
}

std::string describedSeries(const qxArray& series) {
  char head[120];
  std::snprintf(head, sizeof head, "series@%p{block %p, size %d of %d, first valid %d:",
                static_cast<const void*>(&series), static_cast<void*>(series.data), series.size,
                series.datasize, series.firstvalid);
  std::string text = head;
  for (int32_t i = 0; series.data != nullptr && i < std::min(series.size, series.datasize); ++i) {
    text += " " + describedNumber(series.data[i]);
  }
  return text + "}";
}

std::string describedBars(qxBars bars) {
  std::string text =
      "bars{" + std::to_string(bars.barsize) + " of " + std::to_string(bars.datasize);
  for (int32_t i = 0; i < 7; ++i) text += "\n    " + describedSeries(*seriesOf(bars, i));
  return text + "}";
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
  if (!onceIn(random, 6)) return hostileText(random);
  // Any characters but those that could lead out of the folder.
  std::vector<char>& text =
      context.buffers.emplace_back(static_cast<size_t>(1 + below(random, 40)));
  for (size_t i = 0; i + 1 < text.size(); ++i) {
    const char c = static_cast<char>(1 + below(random, 255));
    text[i] = c == '/' || c == '\\' || c == ':' || c == '.' ? '%' : c;
  }
  return text.data();
}

void* randomBytes(Context& context, size_t size) {
  if (onceIn(context.random, 30)) return nullptr;
  return context.buffers.emplace_back(size).data();
}

Argument randomArgument(Context& context, const Parameter& parameter) {
  constexpr size_t kLongestText = 4096;
  Random& random = context.random;
  const Kind kind = parameter.kind;
  if (kind <= Kind::kUnsigned) return hostileInt(random);
  if (kind == Kind::kReal) return hostileDouble(random);
  if (kind == Kind::kText && parameter.constant) return randomText(context);
  if (kind == Kind::kText) return randomBytes(context, kLongestText);
  // What may be written is a device context: there is none.
  if (kind == Kind::kBytes) return parameter.constant ? randomBytes(context, 4) : nullptr;
  if (onceIn(random, 50)) return nullptr;
  if (kind == Kind::kSeries) return randomArray(context);
  if (kind == Kind::kBars) return randomBars(context);
  if (kind == Kind::kCandles) return randomCandles(context);
  if (kind == Kind::kOrderSystem) return randomSystem(context);
  if (kind == Kind::kGraph) return randomGraph(context);
  return randomRecord(context, parameter);
}

std::string described(const Argument& argument, const Parameter& parameter) {
  if (const int32_t* integer = std::get_if<int32_t>(&argument)) return std::to_string(*integer);
  if (const double* real = std::get_if<double>(&argument)) return describedNumber(*real);
  const void* const place = std::get<const void*>(argument);
  if (place == nullptr) return "null";
  if (parameter.kind == Kind::kSeries) return describedSeries(*static_cast<const qxArray*>(place));
  if (parameter.kind == Kind::kBars) return describedBars(*static_cast<const qxBars*>(place));
  if (parameter.kind == Kind::kText && parameter.constant) {
    return escaped(static_cast<const char*>(place));
  }
  char text[32];
  std::snprintf(text, sizeof text, "%p", place);
  return text;
}

}  // namespace qxrandom
