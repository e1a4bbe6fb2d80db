// Bars and series read from delimited text files: one pass counts, a second one reads.
#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "core/bars.h"
#include "core/decimal_text.h"
#include "datafiles/paths.h"
#include "datafiles/range_rule.h"
#include "datafiles/text_lines.h"
#include "dates/date_strings.h"
#include "platform/platform.h"
#include "quorvex.h"

namespace qx {
namespace {

// The roles a field can have: a price series of the bar set, by its place in the record, or a part
// of the date series.
enum Role : unsigned { kDateRole, kOpenRole, kOpenIntRole = 6, kTimeRole = 7 };

// How lines become bars. A field may have several roles, one bit each.
struct LinePlan {
  Delimiters delimiters;
  int32_t order;
  int32_t fieldCount;  // the last field that has a role
  std::array<uint8_t, kMostFields + 1> roles;
};

void giveRole(LinePlan* plan, int32_t field, unsigned role) {
  if (field < 1 || field > kMostFields) return;
  plan->roles[static_cast<size_t>(field)] |= static_cast<uint8_t>(1u << role);
  plan->fieldCount = std::max(plan->fieldCount, field);
}

LinePlan planLines(const qxTXTinfo& info) {
  LinePlan plan = {layoutDelimiters(info), info.dtformat, 0, {}};
  giveRole(&plan, info.dt, kDateRole);
  if (info.ti != info.dt) giveRole(&plan, info.ti, kTimeRole);
  const int32_t prices[] = {info.op, info.hi, info.lo, info.cl, info.vol, info.oi};
  for (unsigned i = 0; i < 6; ++i) giveRole(&plan, prices[i], kOpenRole + i);
  return plan;
}

using Columns = std::array<double*, 7>;  // in record order, the date first

void storeBar(const LinePlan& plan, std::string_view text, const Columns& columns, int64_t i) {
  for (double* column : columns) column[i] = 0.0;
  std::string_view field;
  for (int32_t f = 1; f <= plan.fieldCount && takeField(plan.delimiters, &text, &field); ++f) {
    for (unsigned roles = plan.roles[static_cast<size_t>(f)]; roles != 0; roles &= roles - 1) {
      const auto role = static_cast<unsigned>(std::countr_zero(roles));
      if (role == kDateRole) {
        columns[0][i] += dateFromText(field, plan.order);
      } else if (role == kTimeRole) {
        columns[0][i] += timeFromText(field);
      } else {
        columns[role][i] = decimalFromText(field);
      }
    }
  }
}

// Fills bars 0 to count - 1, the last one first when the file is descending. Returns the number of
// bars filled.
int32_t readBars(LineReader* reader, const LinePlan& plan, qxBars* bars, int32_t count,
                 bool descending) {
  Columns columns;
  const auto series = seriesOf(*bars);
  for (size_t s = 0; s < columns.size(); ++s) columns[s] = series[s]->data;
  int32_t filled = 0;
  Line line;
  while (filled < count && readLine(reader, &line)) {
    const std::string_view text = stripLeadingBlanks(line.text);
    if (text.empty()) continue;
    storeBar(plan, text, columns, descending ? count - 1 - filled : filled);
    ++filled;
  }
  return filled;
}

// The range of a file whose newest line comes first. Kept: a start above 0 names the newest record
// wanted, counted from the file's end. `start` becomes the number of records to pass over at the
// top.
int32_t applyDescendingRange(qxBars* bars, int32_t records, int32_t* start, int32_t* count) {
  if (*start >= records) return QX_ERR_RECORD_NOT_FOUND;
  if (*count < 0) {
    *count = *start < 1 ? records : *start + 1;
    *start = 0;
  }
  const int32_t status = provideBars(bars, count);
  if (status != QX_SUCCESS) return status;
  if (*start < 0) {
    *start = 0;
  } else if (*start > 0) {
    *start = std::max(*start - *count + 1, 0);
  } else {
    *start = std::max(records - *count, 0);
  }
  return QX_SUCCESS;
}

void fillFileInformation(qxBars* bars, const char* folder, const char* file, int32_t records) {
  Path path;
  joinPath(folder, file, path);
  char name[kPathSize];
  shortFileName(path, name, sizeof name);
  const size_t stem = std::strcspn(file, ".");
  bars->reccnt = records;
  copyText(folder, std::strlen(folder), bars->path, sizeof bars->path);
  copyText(name, std::strlen(name), bars->name, sizeof bars->name);
  copyText(file, stem, bars->description, sizeof bars->description);
  copyText(file, stem, bars->symbol, sizeof bars->symbol);
  std::memset(bars->cusip, 0, sizeof bars->cusip);
  bars->begindate = 0.0;
  bars->enddate = 0.0;
  bars->filetype = QX_FILE_TEXT;
  bars->frequency = QX_FREQ_UNKNOWN;
  bars->datatype = QX_DATA_UNKNOWN;
  bars->optiontype = QX_OPTION_NONE;
  bars->deliverydate = 0.0;
  bars->strikeprice = 0.0;
}

int32_t readFile(LineReader* reader, qxBars* bars, const char* folder, const char* file,
                 const qxTXTinfo& info, int32_t start, int32_t count) {
  const LinePlan plan = planLines(info);
  dropLines(reader, info.skip);
  OrderSearch search = {&info, &plan.delimiters, info.skip > 0 ? 1 : 0, false, 0.0, false, false};
  RecordCount found = countRecords(reader, start, &search);
  if (reader->status != QX_SUCCESS) return reader->status;
  if (search.descending) found.startPosition = kNoPosition;

  const int32_t status = search.descending
                             ? applyDescendingRange(bars, found.records, &start, &count)
                             : applyRangeRule(bars, found.records, &start, &count);
  if (status != QX_SUCCESS) return status;
  fillFileInformation(bars, folder, file, found.records);
  if (count == 0) return qxReSizeBars(bars, 0);

  seekRecord(reader, found.startPosition, info.skip, start);
  const int32_t filled = readBars(reader, plan, bars, count, search.descending);
  // Kept: a descending read leaves the size alone, and bars that the file did not reach unread.
  if (!search.descending) qxReSizeBars(bars, filled);
  return reader->status;
}

int32_t readColumn(LineReader* reader, qxArray* array, const Delimiters& delimiters, int32_t skip,
                   int32_t field, int32_t start, int32_t count) {
  dropLines(reader, skip);
  const RecordCount found = countRecords(reader, start, nullptr);
  if (reader->status != QX_SUCCESS) return reader->status;
  if (start >= found.records) return QX_ERR_RECORD_NOT_FOUND;
  if (count < 0) count = start < 1 ? found.records : found.records - start;
  if (array->data == nullptr) {
    const int32_t status = qxAllocArray(array, count);
    if (status != QX_SUCCESS) return status;
  }
  count = std::max(std::min(count, array->datasize), 0);
  if (start < 0) start = std::max(found.records - count, 0);

  seekRecord(reader, found.startPosition, skip, start);
  int32_t stored = 0;
  Line line;
  while (stored < count && readLine(reader, &line)) {
    const std::string_view text = stripLeadingBlanks(line.text);
    if (text.empty()) continue;
    std::string_view value;
    array->data[stored++] =
        findField(delimiters, text, field, &value) ? decimalFromText(value) : 0.0;
  }
  qxReSizeArray(array, stored);
  return reader->status;
}

}  // namespace
}  // namespace qx

int32_t qxTXTread(qxBars* bars, const char* folder, const char* file, const qxTXTinfo* info,
                  int32_t start, int32_t count) {
  if (bars == nullptr || folder == nullptr || file == nullptr || info == nullptr) {
    return QX_ERR_INVALID_PARM;
  }
  qx::LineReader reader;
  const int32_t opened = qx::openDataFile(&reader, folder, file);
  if (opened != QX_SUCCESS) return opened;
  const int32_t status = qx::readFile(&reader, bars, folder, file, *info, start, count);
  qx::closeLines(&reader);
  return status;
}

int32_t qxTXTreadarray(qxArray* array, const char* folder, const char* file, const char* delimiters,
                       int32_t skip, int32_t field, int32_t start, int32_t count) {
  if (array == nullptr || folder == nullptr || file == nullptr || delimiters == nullptr) {
    return QX_ERR_INVALID_PARM;
  }
  if (count == 0) return QX_SUCCESS;
  qx::LineReader reader;
  const int32_t opened = qx::openDataFile(&reader, folder, file);
  if (opened != QX_SUCCESS) return opened;
  const int32_t status =
      qx::readColumn(&reader, array, qx::delimitersFrom(delimiters), skip, field, start, count);
  qx::closeLines(&reader);
  return status;
}
