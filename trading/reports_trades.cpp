// The trade list for people, and the column reports of trades and of open positions.
#include <algorithm>
#include <cstdio>
#include <iterator>

#include "trading/report_text.h"
#include "trading/simulator.h"

namespace qx {
namespace {

constexpr Column kTradeColumns[] = {
    {"System", -19}, {"Symbol", -8},   {"DateTimeIn", 0}, {"BarNumIn", 4},    {"DirIn", 0},
    {"NameIn", -19}, {"PriceIn", 8},   {"VolumeIn", 8},   {"DateTimeOut", 0}, {"BarNumOut", 4},
    {"DirOut", 0},   {"NameOut", -19}, {"PriceOut", 8},   {"VolumeOut", 8},   {"Profit", 10}};

constexpr Layout kTradeLayout = {
    "System              Symbol   Date       Time     Bar#   Name                  Price   Volume"
    "  Date     Time     Bar#   Name                  Price   Volume  Profit\n"
    "------------------- -------- ---------- -------- ---- - --------------------- ------- -------"
    " -------- -------- ---- - --------------------- ------- ------- -----------\n",
    kTradeColumns, static_cast<int32_t>(std::size(kTradeColumns))};

// As above without the name of the exit.
constexpr Column kOpenColumns[] = {
    {"System", -19}, {"Symbol", -8},  {"DateTimeIn", 0}, {"BarNumIn", 4},    {"DirIn", 0},
    {"NameIn", -19}, {"PriceIn", 8},  {"VolumeIn", 8},   {"DateTimeOut", 0}, {"BarNumOut", 4},
    {"DirOut", 0},   {"PriceOut", 8}, {"VolumeOut", 8},  {"Profit", 10}};

constexpr Layout kOpenLayout = {
    "System              Symbol   Date       Time     Bar#   Name                  Price   Volume"
    "  Date     Time     Bar#   Price   Volume  Profit\n"
    "------------------- -------- ---------- -------- ---- - --------------------- ------- -------"
    " -------- -------- ---- - ------- ------- -----------\n",
    kOpenColumns, static_cast<int32_t>(std::size(kOpenColumns))};

constexpr int32_t kListDecimals = 4;    // prices and profits of the list
constexpr int32_t kColumnDecimals = 3;  // and of the column reports

// The first columns of one side of the list: date and time, bar, direction, name, price, volume.
void printSide(std::FILE* file, const qxPosition& side) {
  std::fprintf(file, " %s %4i %c %-20s %9s %8s", dateTimeText(side.date).text,
               static_cast<int>(side.bar), *directionLetter(side.direction), side.name,
               fixedText(side.price, kListDecimals).text, wholeText(side.volume).text);
}

// The texts of one side in the column reports.
struct SideTexts {
  DateText date;
  NumberText bar, price, volume;
};

SideTexts sideTexts(double date, int32_t bar, double price, int32_t volume) {
  return {dateTimeText(date), wholeText(bar), fixedText(price, kColumnDecimals), wholeText(volume)};
}

}  // namespace
}  // namespace qx

int32_t qxPrintTrades(const qxOrderSystem* system, const char* outfile, int32_t append) {
  if (system == nullptr || outfile == nullptr) return QX_ERR_INVALID_PARM;
  qx::Output output;
  const int32_t status = qx::openOutput(outfile, append, &output);
  if (status != QX_SUCCESS) return status;
  std::FILE* file = output.file;
  std::fprintf(file, " Trade Summary  %s\n\n", system->name);
  std::fputs(" Date     Time     Bar#   Name                     Price   Volume       Profit\n",
             file);
  std::fputs(" -----------------------------------------------------------------------------\n",
             file);
  for (int32_t i = 0; i < system->tradecount; ++i) {
    const qxTrade& trade = system->trades[i];
    const double profit = qx::tradeProfit(*system, trade.entry, trade.exit);
    std::fputc('\n', file);
    qx::printSide(file, trade.entry);
    std::fputc('\n', file);
    qx::printSide(file, trade.exit);
    std::fprintf(file, " %12s\n", qx::fixedText(profit, qx::kListDecimals).text);
  }
  return qx::closeOutput(&output);
}

int32_t qxTradeRpt1(const qxOrderSystem* system, const char* outfile, int32_t append,
                    const char* delimiter, int32_t header) {
  if (system == nullptr || outfile == nullptr || delimiter == nullptr) return QX_ERR_INVALID_PARM;
  qx::ColumnWriter writer;
  const int32_t status =
      qx::openReport(&writer, qx::kTradeLayout, outfile, append, delimiter, header);
  if (status != QX_SUCCESS) return status;
  for (int32_t i = 0; i < system->tradecount; ++i) {
    const qxPosition& entry = system->trades[i].entry;
    const qxPosition& exit = system->trades[i].exit;
    const auto in = qx::sideTexts(entry.date, entry.bar, entry.price, entry.volume);
    const auto out = qx::sideTexts(exit.date, exit.bar, exit.price, exit.volume);
    const auto profit = qx::fixedText(qx::tradeProfit(*system, entry, exit), qx::kColumnDecimals);
    const char* const texts[] = {system->name,
                                 system->bars.symbol,
                                 in.date.text,
                                 in.bar.text,
                                 qx::directionLetter(entry.direction),
                                 entry.name,
                                 in.price.text,
                                 in.volume.text,
                                 out.date.text,
                                 out.bar.text,
                                 qx::directionLetter(exit.direction),
                                 exit.name,
                                 out.price.text,
                                 out.volume.text,
                                 profit.text};
    static_assert(std::size(texts) == std::size(qx::kTradeColumns));
    qx::writeRow(writer, texts);
  }
  return qx::closeOutput(&writer.output);
}

int32_t qxOpenPosRpt1(const qxOrderSystem* system, const char* outfile, int32_t append,
                      const char* delimiter, int32_t header) {
  if (system == nullptr || outfile == nullptr || delimiter == nullptr) return QX_ERR_INVALID_PARM;
  qx::ColumnWriter writer;
  const int32_t status =
      qx::openReport(&writer, qx::kOpenLayout, outfile, append, delimiter, header);
  if (status != QX_SUCCESS) return status;
  const int32_t mark = std::min(system->bar, qx::barCount(*system) - 1);
  const double close = qx::barClose(*system, mark);
  for (int32_t i = 0; i < system->positioncount; ++i) {
    const qxPosition& entry = system->positions[i];
    if (entry.remaining == 0) continue;
    const auto in = qx::sideTexts(entry.date, entry.bar, entry.price, entry.volume);
    const auto out = qx::sideTexts(qx::barDate(*system, mark), mark, close, entry.remaining);
    const auto profit = qx::fixedText(qx::openProfit(*system, entry, close), qx::kColumnDecimals);
    const int32_t opposite = entry.direction == QX_LONG ? QX_SELL : QX_BUY;
    const char* const texts[] = {system->name,
                                 system->bars.symbol,
                                 in.date.text,
                                 in.bar.text,
                                 qx::directionLetter(entry.direction),
                                 entry.name,
                                 in.price.text,
                                 in.volume.text,
                                 out.date.text,
                                 out.bar.text,
                                 qx::directionLetter(opposite),
                                 out.price.text,
                                 out.volume.text,
                                 profit.text};
    static_assert(std::size(texts) == std::size(qx::kOpenColumns));
    qx::writeRow(writer, texts);
  }
  return qx::closeOutput(&writer.output);
}
