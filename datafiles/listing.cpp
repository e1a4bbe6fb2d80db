#include "datafiles/listing.h"

namespace qx {

void printListingHeader(std::FILE* file) {
  std::fputs(
      "File Name    Symbol           Description                                      "
      "Frequency First Date Last Date \n"
      "------------ ---------------- ------------------------------------------------ "
      "--------- ---------- ----------\n",
      file);
}

void printListingRow(std::FILE* file, const ListingRow& row) {
  std::fprintf(file, "%-12.12s %-16.16s %-48.48s %-9.9s %-10.10s %s\n", row.fileName, row.symbol,
               row.description, row.frequency, row.firstDate, row.lastDate);
}

}  // namespace qx
