// The search for the record of a date, as every file format does it.
#ifndef QUORVEX_DATAFILES_DATE_SEARCH_H
#define QUORVEX_DATAFILES_DATE_SEARCH_H

#include <cstdint>

namespace qx {

// Walks over the dates of a file in record order.
struct DateSearch {
  double target;
  int32_t record;  // of the next date
  double previous;
};

// Takes the next record's date. True when the search ends: at a record of the target's date, at the
// first later one of an ascending file, at the last later one of a descending file. `found` and
// `foundDate` then hold that record and its date.
inline bool endsSearch(DateSearch* search, double date, int32_t* found, double* foundDate) {
  const double previous = search->record == 0 ? date : search->previous;
  if (date == search->target || (previous < search->target && date > search->target)) {
    *found = search->record;
    *foundDate = date;
    return true;
  }
  if (previous > search->target && date < search->target) {
    *found = search->record - 1;
    *foundDate = previous;
    return true;
  }
  search->previous = date;
  if (search->record < INT32_MAX) ++search->record;
  return false;
}

}  // namespace qx

#endif  // QUORVEX_DATAFILES_DATE_SEARCH_H
