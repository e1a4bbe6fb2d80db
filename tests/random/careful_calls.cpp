#include "tests/random/careful_calls.h"

#include <cstdio>
#include <cstring>

#include "tests/random/files.h"

namespace qxrandom {
namespace {

using every_function::functionNamed;

// A series or bar set that no other record shares.
Argument ownArray(Context& context, bool allocated) {
  if (onceIn(context.random, 60)) return nullptr;
  qxArray& array = context.arrays.emplace_back();
  if (allocated) qxAllocArray(&array, below(context.random, 40));
  return &array;
}

Argument ownBars(Context& context, bool allocated) {
  if (onceIn(context.random, 60)) return nullptr;
  qxBars& bars = context.bars.emplace_back();
  if (allocated) qxAllocBars(&bars, below(context.random, 40));
  if (allocated && onceIn(context.random, 8)) qxFreeArray(&bars.close);
  return &bars;
}

// A size that is seldom so large that clearing it takes long.
int32_t randomSize(Random& random) {
  return onceIn(random, 20) ? hostileInt(random) : below(random, 200) - 5;
}

template <Argument (*Own)(Context&, bool), bool Allocated>
void resize(Context& context, Arguments& a) {
  a = {Own(context, Allocated && !onceIn(context.random, 5)), randomSize(context.random)};
}

template <Argument (*Own)(Context&, bool)>
void release(Context& context, Arguments& a) {
  a[0] = Own(context, !onceIn(context.random, 5));
}

void constructCandles(Context& context, Arguments& a) {
  qxCandles& candles = context.candles.emplace_back();
  if (onceIn(context.random, 4)) {
    candles.shadowlong = hostileDouble(context.random);
    candles.shadowshort = hostileDouble(context.random);
    candles.equality = hostileDouble(context.random);
  }
  a[1] = onceIn(context.random, 60) ? nullptr : &candles;
}

// Four bytes, at times the same ones for both.
void convertNumbers(Context& context, Arguments& a) {
  const uint64_t bits = next(context.random);
  if (void* from = address<void>(a[0])) std::memcpy(from, &bits, 4);
  a[1] = onceIn(context.random, 10) ? a[0] : randomBytes(context, 4);
}

void readColumn(Context& context, Arguments& a) {
  static const char* const kFiles[] = {"prices.csv", "prices.csv", "txtinfo.txt", "F2.DOP"};
  disturbFiles(context.random);
  if (!onceIn(context.random, 4)) a[0] = kFiles[below(context.random, 4)];
  a[1] = ownArray(context, false);
  if (!onceIn(context.random, 3)) a[2] = ",= ";
}

// A format of random conversions, or any text.
const char* randomFormat(Context& context) {
  static const char* const kParts[] = {
      "%f",     "%8.3f", "%i",     "%u", "%5d",         "%r",       "%4r ",           "%%",
      "%CYMDi", "%HMi",  "%HMS-i", ";",  "%-+0 #12.5f", "%999999i", "%.99999999999f", "%ymd",
      "%l"};
  if (onceIn(context.random, 3)) return randomText(context);
  std::vector<char>& text = context.buffers.emplace_back();
  for (int32_t n = below(context.random, 12); n > 0; --n) {
    const char* part = kParts[below(context.random, 17)];
    text.insert(text.end(), part, part + std::strlen(part));
  }
  text.push_back('\0');
  return text.data();
}

void printSeries(Context& context, Arguments& a) {
  a[0] = "out.txt";
  a[1] = below(context.random, 2);
  a[4] = onceIn(context.random, 3) ? randomFormat(context) : nullptr;
  a[5] = randomFormat(context);
}

// Outputs that the call always allocates anew.
void convertToColumns(Context& context, Arguments& a) {
  a[1] = ownBars(context, false);
  a[2] = ownArray(context, false);
  if (onceIn(context.random, 2)) a[3] = hostileDouble(context.random) / 64.0;
  if (onceIn(context.random, 2)) a[4] = 1.0 + below(context.random, 3);
}

// The work grows with the passes, unless they come to rest: the very largest number only over a
// period for which they do.
void limitPasses(Context& context, Arguments& a) {
  const bool endless = onceIn(context.random, 8);
  if (endless) a[2] = 4.0;
  a[4] = endless ? INT32_MAX : hostileInt(context.random) % 10000;
}

// A bond whose payments, one power each, run over some thousands of years only seldom.
void limitPayments(Context& context, Arguments& a) {
  Random& random = context.random;
  if (onceIn(random, 2)) a[1] = hostileDouble(random) / 1000.0;
  qxBond* bond = address<qxBond>(a[0]);
  if (bond == nullptr || onceIn(random, 50)) return;
  const double date = 36526.0 + below(random, 9000);
  bond->payments = below(random, 13);
  bond->maturity = date + below(random, 20000) - 100.0;
  a[2] = date;
}

void describeError(Context& context, Arguments& a) {
  if (!onceIn(context.random, 4)) a[0] = -below(context.random, 12);
  a[1] = randomBytes(context, 17);
}

// Without windows the message goes to standard error, which is kept for reports: it is turned aside
// where the C library lets it. With windows a box would wait for an answer.
void showMessage(Context&, const Function& function, const Arguments& a) {
#if defined(__GLIBC__)
  std::FILE* const errors = stderr;
  stderr = stdout;
  function.call(a);
  stderr = errors;
#else
  function.call({a[0], nullptr});
#endif
}

// The result of a date under a picture of the given length: a year of four letters needs 11
// characters, any other token at most two a letter.
char* dateBuffer(Context& context, size_t pictureLength) {
  return static_cast<char*>(randomBytes(context, 3 * pictureLength + 1));
}

size_t lengthOf(const Argument& text) {
  const char* characters = address<char>(text);
  return characters == nullptr ? 0 : std::strlen(characters);
}

void fitDate(Context& context, Arguments& a) {
  a[2] = dateBuffer(context, lengthOf(a[1]));
}

void fitJulianDate(Context& context, Arguments& a) {
  constexpr size_t kLongestPicture = 20;
  a[3] = dateBuffer(context, kLongestPicture + 2 * lengthOf(a[2]));
}

// Optimisation variables with their count, most of them sweeps that make sense.
void countVariables(Context& context, Arguments& a) {
  Random& random = context.random;
  const int32_t count = below(random, 6);
  auto* variables =
      static_cast<qxOptVar*>(randomBytes(context, static_cast<size_t>(count) * sizeof(qxOptVar)));
  a[0] = variables;
  if (variables == nullptr) return;
  for (int32_t i = 0; i < count; ++i) {
    qxOptVar& v = variables[i];
    v = {hostileDouble(random), hostileDouble(random), hostileDouble(random), hostileInt(random),
         hostileDouble(random)};
    if (onceIn(random, 4)) continue;
    v.from = v.value = below(random, 20) / 4.0;
    v.to = v.from + below(random, 40) / 8.0;
    v.step = (below(random, 16) - 2) / 8.0;
  }
  a[1] = onceIn(random, 10) ? -below(random, 3) : count;
}

void fitVariables(Context& context, Arguments& a) {
  countVariables(context, a);
  const int32_t length = qxOptVarStringLen(address<qxOptVar>(a[0]), std::get<int32_t>(a[1]),
                                           address<const char>(a[2]));
  a[3] = randomBytes(context, static_cast<size_t>(length));
}

// The last four arguments of an order: sensible most of the time.
void limitOrder(Context& context, Arguments& a) {
  Random& random = context.random;
  const size_t volume = a.size() - 4;
  if (!onceIn(random, 12)) a[volume] = 1 + below(random, 300);
  if (!onceIn(random, 8)) a[volume + 1] = 50.0 + below(random, 850) / 16.0;
  if (!onceIn(random, 12)) a[volume + 2] = 1 + below(random, 4);
  if (!onceIn(random, 12)) a[volume + 3] = 1 + below(random, 2);
}

void trade(Context& context, qxOrderSystem* system, int32_t bars) {
  static const Call kOrders[] = {
      careful(functionNamed("qxBuyToOpen")), careful(functionNamed("qxSellToOpen")),
      careful(functionNamed("qxSellToClose")), careful(functionNamed("qxBuyToClose"))};
  for (int32_t i = 0; i < bars; ++i) {
    for (int32_t n = below(context.random, 3); n > 0; --n) {
      const Call& order = kOrders[below(context.random, 4)];
      Arguments arguments = randomArguments(context, order);
      arguments[0] = system;
      run(context, order, arguments);
    }
    qxProcessOrders(system);
  }
}

// Over bars of any shape, or anew over the lasting ones.
void chooseSystem(Context& context, Arguments& a) {
  const bool own = onceIn(context.random, 2);
  a[0] = own ? &context.ownSystem : &context.lasting.system;
  if (!own) a[2] = &context.lasting.bars;
}

void useSystem(Context& context, const Function& function, const Arguments& a) {
  auto* system = address<qxOrderSystem>(a[0]);
  qxOrderSystemClose(system);
  function.call(a);
  if (system != &context.ownSystem) return;
  trade(context, system, below(context.random, 60));
  qxProfitRpt(system, "out.txt", 0);
  qxTradeRpt1(system, "out.txt", 0, ",", 1);
  qxOpenPosRpt1(system, "out.txt", 0, "", 1);
  qxCreateTradeGraph(system, &context.arrays.emplace_back());
  qxOrderSystemClose(system);
}

void processOrders(Context& context, const Function& function, const Arguments& a) {
  auto* system = address<qxOrderSystem>(a[0]);
  if (onceIn(context.random, 3)) qxOrderSystemReset(system);
  trade(context, system, below(context.random, 40));
  function.call(a);
}

void initGraph(Context&, const Function& function, const Arguments& a) {
  auto* graph = address<qxGraph>(a[0]);
  qxGraphFree(graph);
  function.call(a);
  if (graph != nullptr) graph->area = {0, 0, 320, 200};
}

// Shown over and over again, so only the series and bars that live as long may be given.
void limitChart(Context& context, Arguments& a) {
  Random& random = context.random;
  if (!onceIn(random, 12)) a[1] = below(random, 6) - 1;
  if (!onceIn(random, 8)) a[2] = below(random, 6) - 1;
  for (const size_t flags : {3u, 4u, 5u}) {
    if (!onceIn(random, 12)) a[flags] = below(random, 4);
  }
  a[9] = onceIn(random, 5) ? nullptr : &context.lasting.chartSeries[below(random, 3)];
  a[10] = onceIn(random, 5) ? nullptr : &context.lasting.bars;
  if (!onceIn(random, 12)) a[11] = below(random, 11);
}

// A copy of a pane of the lasting graph, since functions of a pane believe what it points to.
void copyPane(Context& context, Arguments& a) {
  auto* pane = static_cast<qxGraphSubwin*>(randomBytes(context, sizeof(qxGraphSubwin)));
  if (pane != nullptr) qxGraphGetSubwin(&context.lasting.graph, pane, below(context.random, 6));
  a[0] = pane;
}

void changePane(Context& context, Arguments& a) {
  Random& random = context.random;
  const int32_t index = below(random, 6) - 1;
  qxGraphSubwin pane = {};
  if (qxGraphGetSubwin(&context.lasting.graph, &pane, index) != QX_SUCCESS) a[0] = nullptr;
  for (int32_t* setting :
       {&pane.height, &pane.axischart, &pane.axischart2, &pane.gridstyle, &pane.gridwidth,
        &pane.pane.left, &pane.pane.top, &pane.pane.right, &pane.pane.bottom}) {
    *setting = hostileInt(random);
  }
  pane.titleshown = below(random, 2);
  if (onceIn(random, 4)) std::memset(pane.title, 'W', sizeof pane.title);
  void* const bytes = context.buffers.emplace_back(sizeof pane).data();
  std::memcpy(bytes, &pane, sizeof pane);
  a[1] = bytes;
  a[2] = index;
}

// On Windows the picture would have to be released through its own interface.
void paintPicture(Context&, const Function& function, const Arguments& a) {
#if defined(_WIN32)
  function.call({nullptr});
  (void)a;
#else
  function.call(a);
#endif
}

// What functions need whose names begin so; of several beginnings the longest decides.
struct Care {
  std::vector<std::string> beginnings;
  Texts texts = Texts::kAny;
  decltype(Call::adjust) adjust = nullptr;
  decltype(Call::among) among = nullptr;
};

const std::vector<Care>& allCare() {
  static const std::vector<Care> kCare = {
      {{"qxAllocArray"}, Texts::kAny, resize<ownArray, false>},
      {{"qxReAllocArray"}, Texts::kAny, resize<ownArray, true>},
      {{"qxFreeArray"}, Texts::kAny, release<ownArray>},
      {{"qxAllocBars"}, Texts::kAny, resize<ownBars, false>},
      {{"qxReAllocBars"}, Texts::kAny, resize<ownBars, true>},
      {{"qxFreeBars"}, Texts::kAny, release<ownBars>},
      {{"qxCandleConstruct"}, Texts::kAny, constructCandles},
      {{"qxBars2PNF"}, Texts::kAny, convertToColumns},
      {{"qxErrDesc"}, Texts::kAny, describeError},
      {{"qxErrMessageBox"}, Texts::kAny, nullptr, showMessage},
      {{"qxIEEEtoMS", "qxMStoIEEE"}, Texts::kAny, convertNumbers},
      {{"qxArrayPrintf"}, Texts::kAny, printSeries},
      {{"qxFormatDate"}, Texts::kAny, fitDate},
      {{"qxJulianToDateTxt", "qxJulianToTimeTxt"}, Texts::kAny, fitJulianDate},
      {{"qxT3"}, Texts::kAny, limitPasses},
      {{"qxBondPricing", "qxBondDuration"}, Texts::kAny, limitPayments},
      {{"qxOptVar"}, Texts::kAny, countVariables},
      {{"qxOptVarString"}, Texts::kAny, fitVariables},
      {{"qxOptVarStringLen"}, Texts::kAny, countVariables},
      {{"qxFILE"}, Texts::kTyped},
      {{"qxAIQ", "qxCSI", "qxCT", "qxDJ", "qxFS", "qxTC", "qxTT", "qxTXT", "qxTXTwriteinfo"},
       Texts::kFiles},
      {{"qxFILEprintinfo", "qxTXTwrite", "qxProfitRpt", "qxPrint", "qxTradeRpt", "qxOpenPosRpt",
        "qxOrderRpt", "qxGraphPaintSVG", "qxPNFchart"},
       Texts::kOutput},
      {{"qxTXT2Array"}, Texts::kAny, readColumn},
      {{"qxOrderSystemInit"}, Texts::kNames, chooseSystem, useSystem},
      {{"qxBuyTo", "qxSellTo"}, Texts::kNames, limitOrder},
      {{"qxCancelOrder"}, Texts::kNames},
      {{"qxProcessOrders"}, Texts::kAny, nullptr, processOrders},
      {{"qxGraphInit"}, Texts::kAny, nullptr, initGraph},
      {{"qxGraphChartAdd"}, Texts::kAny, limitChart},
      {{"qxGraphSetSubwin"}, Texts::kAny, changePane},
      {{"qxGraphSubwinGet", "qxGraphSubwinSet"}, Texts::kAny, copyPane},
      {{"qxGraphPaintPicture"}, Texts::kAny, nullptr, paintPicture},
      {{"qxBondDurationPriceChg", "qxCSIndex", "qxGraphSetSubwinMargins"}}};
  return kCare;
}

}  // namespace

Call careful(const Function& function) {
  Call call = {&function, Texts::kAny, nullptr, nullptr};
  size_t longest = 0;
  for (const Care& care : allCare()) {
    for (const std::string& beginning : care.beginnings) {
      if (beginning.size() < longest || !function.name.starts_with(beginning)) continue;
      longest = beginning.size();
      call = {&function, care.texts, care.adjust, care.among};
    }
  }
  return call;
}

Arguments randomArguments(Context& context, const Call& call) {
  context.texts = call.texts;
  context.textsMade = 0;
  if (call.texts == Texts::kFiles || call.texts == Texts::kTyped) disturbFiles(context.random);
  Arguments arguments;
  for (const Parameter& parameter : call.function->parameters) {
    arguments.push_back(randomArgument(context, parameter));
  }
  if (call.adjust != nullptr) call.adjust(context, arguments);
  return arguments;
}

void run(Context& context, const Call& call, const Arguments& arguments) {
  if (call.among != nullptr) {
    call.among(context, *call.function, arguments);
  } else {
    call.function->call(arguments);
  }
}

}  // namespace qxrandom
