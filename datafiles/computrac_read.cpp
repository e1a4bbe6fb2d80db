// Bars and single series of CompuTrac data files, and the record of a date.
#include <algorithm>

#include "core/bars.h"
#include "core/binary_numbers.h"
#include "datafiles/computrac.h"
#include "datafiles/date_search.h"
#include "datafiles/paths.h"
#include "datafiles/range_rule.h"
#include "platform/platform.h"

namespace qx {
namespace {

constexpr int64_t kHeaderSize = 4;

// An open data file: a header record, then one record a bar.
struct DataFile {
  std::FILE* file;
  FieldMap map;
  int64_t recordLength;
  int32_t records;  // the header included, as the file says
  // Records are read in blocks; the longest record has 255 fields.
  size_t held;  // bytes in the block
  size_t next;
  unsigned char block[32 * 1024];
};

int32_t barsIn(const DataFile& data) {
  return std::max(data.records - 1, 0);
}

int32_t readHeader(DataFile* data) {
  unsigned char header[kHeaderSize];
  if (std::fread(header, 1, sizeof header, data->file) != sizeof header) return QX_ERR_FILE_READ;
  data->records = signed16(header + 2);
  if (data->records >= 0) return QX_SUCCESS;
  // A count that overflowed its 16 bits. Kept: the position 8 bytes beyond the end is divided.
  int64_t size = 0;
  if (!fileSize(data->file, &size)) return QX_ERR_FILE_SEEK;
  data->records = saturateToInt32((size + 8) / data->recordLength);
  return QX_SUCCESS;
}

int32_t openDataFile(const char* folder, const Instrument& instrument, DataFile* data) {
  data->file = nullptr;
  const int32_t mapped = findFieldMap(folder, instrument, &data->map);
  if (mapped != QX_SUCCESS) return mapped;
  data->recordLength = int64_t{4} * instrument.fieldCount;
  data->held = 0;
  data->next = 0;
  data->file = openInFolder(folder, instrument.fileName);
  if (data->file == nullptr) return QX_ERR_FILE_OPEN;
  const int32_t status = readHeader(data);
  if (status != QX_SUCCESS) {
    std::fclose(data->file);
    data->file = nullptr;
  }
  return status;
}

// Goes to bar `index`, past the header record.
int32_t seekBar(DataFile* data, int64_t index) {
  data->held = 0;
  data->next = 0;
  return seekFile(data->file, (index + 1) * data->recordLength) ? QX_SUCCESS : QX_ERR_FILE_SEEK;
}

// The next record, or null at the end of the file and after an error.
const unsigned char* nextRecord(DataFile* data) {
  const auto length = static_cast<size_t>(data->recordLength);
  if (data->held - data->next < length) {
    const size_t whole = sizeof data->block / length * length;
    data->held = std::fread(data->block, 1, whole, data->file);
    data->next = 0;
    if (data->held < length) return nullptr;
  }
  const unsigned char* record = data->block + data->next;
  data->next += length;
  return record;
}

// A field of a record as the bar's series has it: dates and times as date numbers.
double fieldValue(const DataFile& data, const unsigned char* record, size_t field) {
  const int32_t position = data.map[field];
  if (position == 0) return 0.0;
  const unsigned char* bytes = record + 4 * (position - 1);
  if (field == 0) return qxNumToDate(wholeMbf(bytes));
  if (field == 1) return qxNumToTime(wholeMbf(bytes));
  return mbfSingle(bytes);
}

double dateOf(const DataFile& data, const unsigned char* record) {
  return fieldValue(data, record, 0) + fieldValue(data, record, 1);
}

// Calls store(k, record) for bars `start`, start + 1, ..., `count` at most, as far as the file
// goes. Returns how many; `status` becomes QX_ERR_FILE_READ when reading failed.
template <typename Store>
int32_t readRecords(DataFile* data, int32_t start, int32_t count, int32_t* status, Store store) {
  *status = seekBar(data, start);
  if (*status != QX_SUCCESS) return 0;
  const auto last = static_cast<int32_t>(std::min<int64_t>(count, int64_t{barsIn(*data)} - start));
  int32_t k = 0;
  for (; k < last; ++k) {
    const unsigned char* record = nextRecord(data);
    if (record == nullptr) break;
    store(k, record);
  }
  if (std::ferror(data->file) != 0) *status = QX_ERR_FILE_READ;
  return k;
}

void describeBars(const char* folder, const Instrument& instrument, int32_t count, qxBars* info) {
  *info = {};
  info->reccnt = count;
  copyText(folder, std::strlen(folder), info->path, sizeof info->path);
  copyText(instrument.fileName, std::strlen(instrument.fileName), info->name, sizeof info->name);
  copyText(instrument.name, std::strlen(instrument.name), info->description,
           sizeof info->description);
  copyText(instrument.symbol, std::strlen(instrument.symbol), info->symbol, sizeof info->symbol);
  info->begindate = instrument.beginDate;
  info->enddate = instrument.endDate;
  info->filetype = QX_FILE_COMPUTRAC;
  info->frequency = frequencyOf(instrument.period);
}

int32_t readBars(DataFile* data, qxBars* bars, const qxBars& info, int32_t start, int32_t count) {
  int32_t status = applyRangeRule(bars, barsIn(*data), &start, &count);
  if (status != QX_SUCCESS) return status;
  qxCopyBarInfo(&info, bars);
  if (count == 0) return qxReSizeBars(bars, 0);
  const auto series = seriesOf(*bars);
  const int32_t read =
      readRecords(data, start, count, &status, [&](int32_t k, const unsigned char* record) {
        series[0]->data[k] = dateOf(*data, record);
        for (size_t s = 1; s < series.size(); ++s) {
          series[s]->data[k] = fieldValue(*data, record, s + 1);
        }
      });
  qxReSizeBars(bars, read);
  return status;
}

int32_t readSeries(DataFile* data, qxArray* array, size_t field, int32_t start, int32_t count) {
  const int32_t total = barsIn(*data);
  if (start >= total) return QX_ERR_RECORD_NOT_FOUND;
  if (count < 0) count = start < 1 ? total : total - start;
  if (array->data == nullptr) {
    const int32_t status = qxAllocArray(array, count);
    if (status != QX_SUCCESS) return status;
  }
  count = std::max(std::min(count, array->datasize), 0);
  if (start < 0) start = std::max(total - count, 0);
  int32_t status = QX_SUCCESS;
  const int32_t read =
      readRecords(data, start, count, &status, [&](int32_t k, const unsigned char* record) {
        array->data[k] = fieldValue(*data, record, field);
      });
  qxReSizeArray(array, read);
  return status;
}

int32_t findRecord(DataFile* data, double target, double* foundDate) {
  DateSearch search = {target, 0, 0.0};
  int32_t status = seekBar(data, 0);
  if (status != QX_SUCCESS) return status;
  for (int32_t k = 0; k < barsIn(*data); ++k) {
    const unsigned char* record = nextRecord(data);
    if (record == nullptr) break;
    int32_t found = 0;
    if (endsSearch(&search, dateOf(*data, record), &found, foundDate)) return found;
  }
  return std::ferror(data->file) != 0 ? QX_ERR_FILE_READ : QX_ERR_RECORD_NOT_FOUND;
}

// Finds the instrument and opens its data file.
int32_t openInstrument(const char* folder, const char* file, Instrument* instrument,
                       DataFile* data) {
  const int32_t status = findInstrument(folder, file, instrument);
  return status == QX_SUCCESS ? openDataFile(folder, *instrument, data) : status;
}

}  // namespace
}  // namespace qx

int32_t qxCTfindrec(const char* folder, const char* file, double date, double* founddate) {
  if (folder == nullptr || file == nullptr) return QX_ERR_INVALID_PARM;
  qx::Instrument instrument;
  qx::DataFile data;
  const int32_t status = qx::openInstrument(folder, file, &instrument, &data);
  if (status != QX_SUCCESS) return status;
  double found = 0.0;
  const int32_t record = qx::findRecord(&data, date, &found);
  std::fclose(data.file);
  if (record >= 0 && founddate != nullptr) *founddate = found;
  return record;
}

int32_t qxCTread(qxBars* bars, const char* folder, const char* file, int32_t start, int32_t count) {
  if (bars == nullptr || folder == nullptr || file == nullptr) return QX_ERR_INVALID_PARM;
  qx::Instrument instrument;
  qx::DataFile data;
  const int32_t opened = qx::openInstrument(folder, file, &instrument, &data);
  if (opened != QX_SUCCESS) return opened;
  qxBars info;
  qx::describeBars(folder, instrument, qx::barsIn(data), &info);
  const int32_t status = qx::readBars(&data, bars, info, start, count);
  std::fclose(data.file);
  return status;
}

int32_t qxCTreadarray(qxArray* array, const char* folder, const char* file, int32_t field,
                      int32_t start, int32_t count) {
  if (array == nullptr || folder == nullptr || file == nullptr) return QX_ERR_INVALID_PARM;
  if (field < 1 || field > qx::kBarFields) return QX_ERR_INVALID_PARM;
  if (count == 0) return QX_SUCCESS;
  qx::Instrument instrument;
  qx::DataFile data;
  const int32_t opened = qx::openInstrument(folder, file, &instrument, &data);
  if (opened != QX_SUCCESS) return opened;
  const int32_t status = qx::readSeries(&data, array, static_cast<size_t>(field - 1), start, count);
  std::fclose(data.file);
  return status;
}
