// The order list for people, and the column report of the pending orders.
#include <cstdio>
#include <iterator>

#include "trading/report_text.h"

namespace qx {
namespace {

constexpr Column kOrderColumns[] = {{"System", -19}, {"Symbol", -8}, {"DateTime", 0}, {"Type", -5},
                                    {"Dir", 0},      {"Name", -19},  {"Order", -6},   {"Price", 8},
                                    {"Volume", 8},   {"Force", -3},  {"From", -19}};

constexpr Layout kOrderLayout = {
    "System              Symbol   Date       Time     Type  D Name                Order  "
    "   Price   Volume For From\n"
    "------------------- -------- ---------- -------- ----- - ------------------- ------ "
    "-------- -------- --- -------------------\n",
    kOrderColumns, static_cast<int32_t>(std::size(kOrderColumns))};

constexpr int32_t kListDecimals = 4;
constexpr int32_t kColumnDecimals = 3;

}  // namespace
}  // namespace qx

int32_t qxPrintOrders(const qxOrderSystem* system, const char* outfile, int32_t append) {
  if (system == nullptr || outfile == nullptr) return QX_ERR_INVALID_PARM;
  qx::Output output;
  const int32_t status = qx::openOutput(outfile, append, &output);
  if (status != QX_SUCCESS) return status;
  std::FILE* file = output.file;
  std::fprintf(file, " Order Summary  %s\n\n", system->name);
  std::fputs(
      " Date       Time     Type  D Name                 Order      Price   Volume For From\n"
      " -------------------------------------------------"
      "-------------------------------------------------\n",
      file);
  for (int32_t i = 0; i < system->ordercount; ++i) {
    const qxOrder& order = system->orders[i];
    std::fprintf(
        file, " %s %-5s %c %-20s %-6s %9s %8s %-3s %s\n", qx::dateTimeText(order.date).text,
        qx::orderKindText(order.kind), *qx::directionLetter(order.direction), order.name,
        qx::orderTypeText(order.ordertype), qx::fixedText(order.price, qx::kListDecimals).text,
        qx::wholeText(order.volume).text, qx::timeInForceText(order.timeinforce), order.fromname);
  }
  return qx::closeOutput(&output);
}

int32_t qxOrderRpt1(const qxOrderSystem* system, const char* outfile, int32_t append,
                    const char* delimiter, int32_t header) {
  if (system == nullptr || outfile == nullptr || delimiter == nullptr) return QX_ERR_INVALID_PARM;
  qx::ColumnWriter writer;
  const int32_t status =
      qx::openReport(&writer, qx::kOrderLayout, outfile, append, delimiter, header);
  if (status != QX_SUCCESS) return status;
  for (int32_t i = 0; i < system->ordercount; ++i) {
    const qxOrder& order = system->orders[i];
    const auto date = qx::dateTimeText(order.date);
    const auto price = qx::fixedText(order.price, qx::kColumnDecimals);
    const auto volume = qx::wholeText(order.volume);
    const char* const texts[] = {system->name,
                                 system->bars.symbol,
                                 date.text,
                                 qx::orderKindText(order.kind),
                                 qx::directionLetter(order.direction),
                                 order.name,
                                 qx::orderTypeText(order.ordertype),
                                 price.text,
                                 volume.text,
                                 qx::timeInForceText(order.timeinforce),
                                 order.fromname};
    static_assert(std::size(texts) == std::size(qx::kOrderColumns));
    qx::writeRow(writer, texts);
  }
  return qx::closeOutput(&writer.output);
}
