// The listing that every file format prints of a folder.
#ifndef QUORVEX_DATAFILES_LISTING_H
#define QUORVEX_DATAFILES_LISTING_H

#include <cstdio>

namespace qx {

// One listed file; texts are cut to their columns.
struct ListingRow {
  const char* fileName;     // 12 characters
  const char* symbol;       // 16
  const char* description;  // 48
  const char* frequency;    // 9
  const char* firstDate;    // 10
  const char* lastDate;     // printed as it is
};

void printListingHeader(std::FILE* file);
void printListingRow(std::FILE* file, const ListingRow& row);

}  // namespace qx

#endif  // QUORVEX_DATAFILES_LISTING_H
