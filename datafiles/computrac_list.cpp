// The listing of a CompuTrac folder.
#include "core/output.h"
#include "datafiles/code_names.h"
#include "datafiles/computrac.h"
#include "datafiles/listing.h"
#include "dates/date_pictures.h"

namespace qx {
namespace {

// A date in the default order; an unknown one is blank.
void dateText(double date, char (&text)[kDateTextSize]) {
  text[0] = '\0';
  if (date != 0.0) qxFormatDate(date, datePicture(), text);
}

void printInstrument(std::FILE* out, const Instrument& instrument) {
  char first[kDateTextSize];
  char last[kDateTextSize];
  dateText(instrument.beginDate, first);
  dateText(instrument.endDate, last);
  printListingRow(out, {instrument.fileName, instrument.symbol, instrument.name,
                        frequencyName(frequencyOf(instrument.period)), first, last});
}

}  // namespace
}  // namespace qx

int32_t qxCTlist(const char* folder, const char* outfile, int32_t append) {
  if (folder == nullptr || outfile == nullptr) return QX_ERR_INVALID_PARM;
  qx::Output output;
  const int32_t opened = qx::openOutput(outfile, append, &output);
  if (opened != QX_SUCCESS) return opened;
  qx::printListingHeader(output.file);
  int32_t status = QX_ERR_FILE_NOT_FOUND;
  for (const bool extended : {false, true}) {
    qx::Directory directory;
    const bool found = qx::openDirectory(&directory, folder, extended);
    qx::Instrument instrument;
    while (found && qx::nextInstrument(&directory, &instrument)) {
      qx::printInstrument(output.file, instrument);
    }
    qx::closeDirectory(&directory);
    const bool told = found || directory.status != QX_SUCCESS;
    if (told && status != QX_ERR_FILE_READ) status = directory.status;
  }
  const int32_t closed = qx::closeOutput(&output);
  return closed == QX_SUCCESS ? status : closed;
}
