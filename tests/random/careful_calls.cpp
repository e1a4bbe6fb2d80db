#include "tests/random/careful_calls.h"

#include <cstdio>
#include <cstring>

namespace qxrandom {
namespace {

// A series or bar set that no other record shares.
qxArray* ownArray(Context& context, bool allocated) {
  if (onceIn(context.random, 60)) return nullptr;
  context.arrays.emplace_back();
  qxArray* array = &context.arrays.back();
  if (allocated) qxAllocArray(array, below(context.random, 40));
  return array;
}

qxBars* ownBars(Context& context, bool allocated) {
  if (onceIn(context.random, 60)) return nullptr;
  context.bars.emplace_back();
  qxBars* bars = &context.bars.back();
  if (allocated) qxAllocBars(bars, below(context.random, 40));
  if (allocated && onceIn(context.random, 8)) qxFreeArray(&bars->close);
  return bars;
}

// A size that is seldom so large that clearing it takes long.
int32_t randomSize(Random& random) {
  return onceIn(random, 20) ? hostileInt(random) : below(random, 200) - 5;
}

void makeBoth(Context& context, bool describeOnly, decltype(&qxIEEEtoMS) function) {
  const auto* from = static_cast<const char*>(randomBytes(context, 4));
  char* to = static_cast<char*>(randomBytes(context, 4));
  if (from != nullptr) {
    const uint64_t bits = next(context.random);
    std::memcpy(const_cast<char*>(from), &bits, 4);
  }
  if (onceIn(context.random, 10)) to = const_cast<char*>(from);
  if (describeOnly) {
    describeArgument(context.described, static_cast<const void*>(from));
  } else {
    function(from, to);
  }
}

// The result buffer of a date under a picture of the given length: a year of four letters needs 11
// characters, any other token at most two a letter.
char* dateBuffer(Context& context, size_t pictureLength) {
  return static_cast<char*>(randomBytes(context, static_cast<int32_t>(3 * pictureLength + 1)));
}

size_t lengthOf(const char* text) {
  return text == nullptr ? 0 : std::strlen(text);
}

struct Variables {
  qxOptVar* vars;
  int32_t count;
};

Variables randomVariables(Context& context) {
  Random& random = context.random;
  const int32_t count = below(random, 6);
  auto* vars =
      static_cast<qxOptVar*>(randomBytes(context, count * static_cast<int32_t>(sizeof(qxOptVar))));
  if (vars == nullptr) return {nullptr, hostileInt(random)};
  for (int32_t i = 0; i < count; ++i) {
    qxOptVar variable;
    fill(context, variable);
    if (!onceIn(random, 4)) {  // a sweep that makes sense
      variable.from = below(random, 20) / 4.0;
      variable.to = variable.from + below(random, 40) / 8.0;
      variable.step = (below(random, 16) - 2) / 8.0;
      variable.value = variable.from;
    }
    std::memcpy(&vars[i], &variable, sizeof variable);
  }
  return {vars, onceIn(random, 10) ? -below(random, 3) : count};
}

// One order with sensible codes most of the time.
struct OrderArguments {
  const char *name, *from;
  uint32_t volume;
  double price;
  int32_t type, force;
};

OrderArguments randomOrder(Context& context) {
  Random& random = context.random;
  OrderArguments order;
  context.texts = Texts::kNames;
  order.name = randomText(context);
  order.from = randomText(context);
  order.volume = onceIn(random, 12) ? static_cast<uint32_t>(hostileInt(random))
                                    : static_cast<uint32_t>(1 + below(random, 300));
  order.price = onceIn(random, 8) ? hostileDouble(random) : 50.0 + below(random, 850) / 16.0;
  order.type = onceIn(random, 12) ? hostileInt(random) : 1 + below(random, 4);
  order.force = onceIn(random, 12) ? hostileInt(random) : 1 + below(random, 2);
  return order;
}

void placeOrder(Context& context, qxOrderSystem* system) {
  const OrderArguments o = randomOrder(context);
  switch (below(context.random, 4)) {
    case 0:
      qxBuyToOpen(system, o.name, o.volume, o.price, o.type, o.force);
      break;
    case 1:
      qxSellToOpen(system, o.name, o.volume, o.price, o.type, o.force);
      break;
    case 2:
      qxSellToClose(system, o.name, o.from, o.volume, o.price, o.type, o.force);
      break;
    default:
      qxBuyToClose(system, o.name, o.from, o.volume, o.price, o.type, o.force);
  }
}

void trade(Context& context, qxOrderSystem* system, int32_t bars) {
  for (int32_t i = 0; i < bars; ++i) {
    for (int32_t n = below(context.random, 3); n > 0; --n) placeOrder(context, system);
    qxProcessOrders(system);
  }
}

template <auto Function>
void enter(Context& context, bool describeOnly) {
  const OrderArguments o = randomOrder(context);
  finish<Function>(context, describeOnly, randomSystem(context), o.name, o.volume, o.price, o.type,
                   o.force);
}

template <auto Function>
void leave(Context& context, bool describeOnly) {
  const OrderArguments o = randomOrder(context);
  finish<Function>(context, describeOnly, randomSystem(context), o.name, o.from, o.volume, o.price,
                   o.type, o.force);
}

}  // namespace

void callAllocArray(Context& context, bool describeOnly) {
  qxArray* array = ownArray(context, false);
  finish<qxAllocArray>(context, describeOnly, array, randomSize(context.random));
}

void callReAllocArray(Context& context, bool describeOnly) {
  qxArray* array = ownArray(context, !onceIn(context.random, 5));
  finish<qxReAllocArray>(context, describeOnly, array, randomSize(context.random));
}

void callFreeArray(Context& context, bool describeOnly) {
  finish<qxFreeArray>(context, describeOnly, ownArray(context, !onceIn(context.random, 5)));
}

void callAllocBars(Context& context, bool describeOnly) {
  qxBars* bars = ownBars(context, false);
  finish<qxAllocBars>(context, describeOnly, bars, randomSize(context.random));
}

void callReAllocBars(Context& context, bool describeOnly) {
  qxBars* bars = ownBars(context, !onceIn(context.random, 5));
  finish<qxReAllocBars>(context, describeOnly, bars, randomSize(context.random));
}

void callFreeBars(Context& context, bool describeOnly) {
  finish<qxFreeBars>(context, describeOnly, ownBars(context, !onceIn(context.random, 5)));
}

void callCandleConstruct(Context& context, bool describeOnly) {
  qxBars* bars = randomBars(context);
  context.candles.emplace_back();
  qxCandles* candles = onceIn(context.random, 60) ? nullptr : &context.candles.back();
  if (candles != nullptr && onceIn(context.random, 4)) {
    candles->shadowlong = hostileDouble(context.random);
    candles->shadowshort = hostileDouble(context.random);
    candles->equality = hostileDouble(context.random);
  }
  finish<qxCandleConstruct>(context, describeOnly, bars, candles);
}

void callTXT2Array(Context& context, bool describeOnly) {
  static const char* const kFiles[] = {"prices.csv", "prices.csv", "txtinfo.txt", "F2.DOP"};
  disturbFiles(context.random);
  const char* file =
      onceIn(context.random, 4) ? randomText(context) : kFiles[below(context.random, 4)];
  qxArray* array = ownArray(context, false);
  const char* delimiters = onceIn(context.random, 3) ? randomText(context) : ",= ";
  const int32_t skip = hostileInt(context.random);
  finish<qxTXT2Array>(context, describeOnly, file, array, delimiters, skip,
                      hostileInt(context.random));
}

// A format of random conversions, or any text.
static const char* randomFormat(Context& context) {
  static const char* const kParts[] = {
      "%f",     "%8.3f", "%i",     "%u", "%5d",         "%r",       "%4r ",           "%%",
      "%CYMDi", "%HMi",  "%HMS-i", ";",  "%-+0 #12.5f", "%999999i", "%.99999999999f", "%ymd",
      "%l"};
  if (onceIn(context.random, 3)) return randomText(context);
  std::vector<char> text;
  for (int32_t n = below(context.random, 12); n > 0; --n) {
    const char* part = kParts[below(context.random, 17)];
    text.insert(text.end(), part, part + std::strlen(part));
  }
  text.push_back('\0');
  context.buffers.push_back(std::move(text));
  return context.buffers.back().data();
}

// More series than the longest of the random formats can consume.
void callArrayPrintf(Context& context, bool describeOnly) {
  Random& random = context.random;
  const int32_t append = below(random, 2);
  const int32_t start = hostileInt(random);
  const int32_t end = hostileInt(random);
  const char* header = onceIn(random, 3) ? randomFormat(context) : nullptr;
  const char* format = randomFormat(context);
  qxArray* s[8];
  for (qxArray*& series : s) {
    do series = randomArray(context);
    while (series == nullptr && !onceIn(random, 8));
  }
  finish<qxArrayPrintf>(context, describeOnly, "out.txt", append, start, end, header, format, s[0],
                        s[1], s[2], s[3], s[4], s[5], s[6], s[7], s[0], s[1], s[2], s[3], s[4],
                        s[5], s[6], s[7], s[0], s[1], s[2], s[3], s[4], s[5], s[6], s[7]);
}

// Outputs that the call always allocates anew.
template <auto Function>
static void convertToColumns(Context& context, bool describeOnly) {
  const qxBars* bars = randomBars(context);
  qxBars* columns = ownBars(context, false);
  qxArray* map = ownArray(context, false);
  const double box = hostileDouble(context.random);
  const double reversal = hostileDouble(context.random);
  finish<Function>(context, describeOnly, bars, columns, map,
                   onceIn(context.random, 2) ? box / 64.0 : box,
                   onceIn(context.random, 2) ? reversal : 1.0 + below(context.random, 3),
                   hostileInt(context.random));
}

void callBars2PNF(Context& context, bool describeOnly) {
  convertToColumns<qxBars2PNF>(context, describeOnly);
}

void callBars2PNFhilo(Context& context, bool describeOnly) {
  convertToColumns<qxBars2PNFhilo>(context, describeOnly);
}

// The work grows with the passes, unless they come to rest: the very largest number only over a
// period for which they do.
void callT3(Context& context, bool describeOnly) {
  const qxArray* in = randomArray(context);
  qxArray* out = randomArray(context);
  const double volumeFactor = hostileDouble(context.random);
  const bool endless = onceIn(context.random, 8);
  const int32_t passes = endless ? INT32_MAX : hostileInt(context.random) % 10000;
  finish<qxT3>(context, describeOnly, in, out, endless ? 4.0 : hostileDouble(context.random),
               volumeFactor, passes, hostileInt(context.random));
}

// A bond whose payments, one power each, run over some thousands of years only seldom.
template <auto Function>
static void valueBond(Context& context, bool describeOnly) {
  Random& random = context.random;
  qxBond* bond = Make<qxBond*>::value(context);
  double date = hostileDouble(random);
  if (bond != nullptr && !onceIn(random, 50)) {
    bond->payments = below(random, 13);
    date = 36526.0 + below(random, 9000);
    bond->maturity = date + below(random, 20000) - 100.0;
  }
  const double yield = hostileDouble(random);
  finish<Function>(context, describeOnly, bond, onceIn(random, 2) ? yield : yield / 1000.0, date);
}

void callBondPricing(Context& context, bool describeOnly) {
  valueBond<qxBondPricing>(context, describeOnly);
}

void callBondDuration(Context& context, bool describeOnly) {
  valueBond<qxBondDuration>(context, describeOnly);
}

void callErrDesc(Context& context, bool describeOnly) {
  const int32_t code =
      onceIn(context.random, 4) ? hostileInt(context.random) : -below(context.random, 12);
  finish<qxErrDesc>(context, describeOnly, code, static_cast<char*>(randomBytes(context, 17)));
}

// Where there are no windows the message goes to standard error, which is kept for reports: it is
// turned aside where the C library lets it. With windows a box would wait for an answer.
void callErrMessageBox(Context& context, bool describeOnly) {
  const int32_t code = hostileInt(context.random);
  const char* text = randomText(context);
#if defined(__GLIBC__)
  std::FILE* const errors = stderr;
  if (!describeOnly) stderr = stdout;
  finish<qxErrMessageBox>(context, describeOnly, code, text);
  stderr = errors;
#else
  (void)text;
  finish<qxErrMessageBox>(context, describeOnly, code, static_cast<const char*>(nullptr));
#endif
}

void callIEEEtoMS(Context& context, bool describeOnly) {
  makeBoth(context, describeOnly, qxIEEEtoMS);
}

void callMStoIEEE(Context& context, bool describeOnly) {
  makeBoth(context, describeOnly, qxMStoIEEE);
}

void callFormatDate(Context& context, bool describeOnly) {
  const double date = hostileDouble(context.random);
  const char* picture = randomText(context);
  finish<qxFormatDate>(context, describeOnly, date, picture,
                       dateBuffer(context, lengthOf(picture)));
}

template <auto Function>
static void formatJulian(Context& context, bool describeOnly) {
  constexpr size_t kLongestPicture = 20;
  const double date = hostileDouble(context.random);
  const auto layout = static_cast<int16_t>(hostileInt(context.random));
  const char* separator = randomText(context);
  char* output = dateBuffer(context, kLongestPicture + 2 * lengthOf(separator));
  finish<Function>(context, describeOnly, date, layout, separator, output);
}

void callJulianToDateTxt(Context& context, bool describeOnly) {
  formatJulian<qxJulianToDateTxt>(context, describeOnly);
}

void callJulianToTimeTxt(Context& context, bool describeOnly) {
  formatJulian<qxJulianToTimeTxt>(context, describeOnly);
}

void callOptVarCount(Context& context, bool describeOnly) {
  const Variables v = randomVariables(context);
  finish<qxOptVarCount>(context, describeOnly, v.vars, v.count);
}

void callOptVarValue(Context& context, bool describeOnly) {
  const Variables v = randomVariables(context);
  finish<qxOptVarValue>(context, describeOnly, v.vars, v.count,
                        static_cast<uint32_t>(hostileInt(context.random)));
}

void callOptVarString(Context& context, bool describeOnly) {
  const Variables v = randomVariables(context);
  const char* separator = randomText(context);
  const int32_t length = qxOptVarStringLen(v.vars, v.count, separator);
  char* text = static_cast<char*>(randomBytes(context, length));
  finish<qxOptVarString>(context, describeOnly, v.vars, v.count, separator, text);
}

void callOptVarStringLen(Context& context, bool describeOnly) {
  const Variables v = randomVariables(context);
  finish<qxOptVarStringLen>(context, describeOnly, v.vars, v.count, randomText(context));
}

void callOrderSystemInit(Context& context, bool describeOnly) {
  context.texts = Texts::kNames;
  const char* name = randomText(context);
  if (onceIn(context.random, 2)) {
    // A system over bars of any shape, with trades, reports and markers.
    qxOrderSystem system = {};
    const qxBars* bars = randomBars(context);
    finish<qxOrderSystemInit>(context, describeOnly, &system, name, bars);
    if (describeOnly) return;
    trade(context, &system, below(context.random, 60));
    qxProfitRpt(&system, "out.txt", 0);
    qxTradeRpt1(&system, "out.txt", 0, ",", 1);
    qxOpenPosRpt1(&system, "out.txt", 0, "", 1);
    qxArray markers = {};
    qxCreateTradeGraph(&system, &markers);
    qxFreeArray(&markers);
    qxOrderSystemClose(&system);
  } else {
    if (!describeOnly) qxOrderSystemClose(&context.lasting.system);
    finish<qxOrderSystemInit>(context, describeOnly, &context.lasting.system, name,
                              static_cast<const qxBars*>(&context.lasting.bars));
  }
}

void callBuyToOpen(Context& context, bool describeOnly) {
  enter<qxBuyToOpen>(context, describeOnly);
}

void callSellToOpen(Context& context, bool describeOnly) {
  enter<qxSellToOpen>(context, describeOnly);
}

void callSellToClose(Context& context, bool describeOnly) {
  leave<qxSellToClose>(context, describeOnly);
}

void callBuyToClose(Context& context, bool describeOnly) {
  leave<qxBuyToClose>(context, describeOnly);
}

void callProcessOrders(Context& context, bool describeOnly) {
  qxOrderSystem* system = randomSystem(context);
  if (!describeOnly && onceIn(context.random, 3)) qxOrderSystemReset(system);
  if (!describeOnly) trade(context, system, below(context.random, 40));
  finish<qxProcessOrders>(context, describeOnly, system);
}

void callGraphInit(Context& context, bool describeOnly) {
  qxGraph* graph = randomGraph(context);
  if (!describeOnly) qxGraphFree(graph);
  finish<qxGraphInit>(context, describeOnly, graph);
  if (graph != nullptr && !describeOnly) graph->area = {0, 0, 320, 200};
}

void callGraphChartAdd(Context& context, bool describeOnly) {
  Random& random = context.random;
  qxGraph* graph = randomGraph(context);
  const int32_t subwin = below(random, 6) - 1;
  const int32_t chart = onceIn(random, 8) ? hostileInt(random) : below(random, 6) - 1;
  qxGraphChart c = {};
  fill(context, c);
  // Shown over and over again, so only the series and bars that live as long may be given.
  const qxArray* series =
      onceIn(random, 5) ? nullptr : &context.lasting.chartSeries[below(random, 3)];
  const qxBars* bars = onceIn(random, 5) ? nullptr : &context.lasting.bars;
  finish<qxGraphChartAdd>(
      context, describeOnly, graph, onceIn(random, 12) ? hostileInt(random) : subwin, chart,
      c.scaleflags, c.minmode, c.maxmode, c.minimum, c.maximum, c.scalechart, series, bars, c.style,
      c.colour, c.colour2, c.colour3, c.penwidth, c.penstyle, c.selected);
}

void callGraphSetSubwin(Context& context, bool describeOnly) {
  Random& random = context.random;
  const int32_t index = below(random, 6) - 1;
  qxGraphSubwin pane = {};
  const bool found = qxGraphGetSubwin(&context.lasting.graph, &pane, index) == QX_SUCCESS;
  pane.height = hostileInt(random);
  pane.titleshown = below(random, 2);
  pane.axischart = hostileInt(random);
  pane.axischart2 = hostileInt(random);
  pane.gridstyle = hostileInt(random);
  pane.gridwidth = hostileInt(random);
  if (onceIn(random, 4)) std::memset(pane.title, 'W', sizeof pane.title);
  finish<qxGraphSetSubwin>(context, describeOnly, found ? randomGraph(context) : nullptr,
                           static_cast<const qxGraphSubwin*>(&pane), index);
}

void callGraphPaintPicture(Context& context, bool describeOnly) {
  qxGraph* graph = randomGraph(context);
#if defined(_WIN32)
  graph = nullptr;  // a picture would have to be released through its own interface
#endif
  finish<qxGraphPaintPicture>(context, describeOnly, graph);
}

}  // namespace qxrandom
