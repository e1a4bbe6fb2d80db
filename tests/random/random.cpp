#include "tests/random/random.h"

#include <cfloat>
#include <cmath>
#include <iterator>
#include <string>
#include <vector>

namespace qxrandom {

uint64_t next(Random& random) {
  uint64_t z = (random.state += 0x9E3779B97F4A7C15u);
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
  return z ^ (z >> 31);
}

int32_t below(Random& random, int32_t bound) {
  return static_cast<int32_t>(next(random) % static_cast<uint64_t>(bound));
}

bool onceIn(Random& random, int32_t times) {
  return below(random, times) == 0;
}

int32_t hostileInt(Random& random) {
  constexpr int32_t kExtremes[] = {INT32_MIN, -INT32_MAX, -86400,     -100,     -2,
                                   -1,        0,          1,          2,        3,
                                   86400,     0x40000000, 0x40000001, 20200229, 19991231,
                                   235959,    0x3FFFFFFF, 0x7FFFFFFE, INT32_MAX};
  const int32_t kind = below(random, 10);
  if (kind == 0) return kExtremes[below(random, static_cast<int32_t>(std::size(kExtremes)))];
  if (kind == 1) return static_cast<int32_t>(next(random));
  if (kind == 2) return below(random, 4000) - 1000;
  return kind == 3 ? -below(random, 5) : below(random, 24);
}

double hostileDouble(Random& random) {
  constexpr double kExtremes[] = {0.0,      -0.0,         INFINITY,     -INFINITY, NAN,    DBL_MAX,
                                  -DBL_MAX, DBL_MIN,      DBL_TRUE_MIN, 1e308,     -1e300, 9.3e18,
                                  -9.3e18,  2147483648.0, -693594.0,    0.1};
  const int32_t kind = below(random, 12);
  if (kind == 0) return kExtremes[below(random, static_cast<int32_t>(std::size(kExtremes)))];
  if (kind == 1) return static_cast<double>(static_cast<int64_t>(next(random)));
  if (kind == 2) return static_cast<double>(next(random)) * 0x1p-64;
  if (kind == 3) return 36526.0 + below(random, 20000) / 7.0;
  if (kind == 4) return -below(random, 1000) / 8.0;
  return kind == 5 ? below(random, 3) : 100.0 + below(random, 4000) / 100.0;
}

const char* hostileText(Random& random) {
  static const std::string kLong(300, 'x'), kLongBlanks(290, ' ');
  static const std::string kLongDigits = std::string(40, '9') + "/" + std::string(40, '1');
  static const std::vector<const char*> kTexts = {
      // Delimiters, parts of dates.
      "", " ", ",", ", ", "\t", ",;|", "0123456789abcdef", "12345678901234567", "A", "d", "S", "D",
      // Dates and times, pictures.
      "1999-03-15", "19990315", "03/15/1999 2:30 PM", "15-Mar-99", "9:30", "093015", "2p",
      "yyyy/mm/dd hh:nn:ss", "mmm d yy AM/PM", "a", "A/", "hH:mM:sS A/P", "MA",
      // Formats.
      "%f %i\n", "%CYMDi %HMSi %8.3f %r\n", "%", "%%", "%n%s%p", "%*d %999999999f", "%hhi%lli%Lf",
      // Patterns.
      "qxCPR", "qxgap", "qxHammer", "QXTWEEZERTOPS", "no such name",
      // Files, folders and their types.
      "master", "F1.DAT", "prices.csv", "txtinfo.txt", ".", "..", "missing", "folder/", "folder\\",
      " folder ", "out.txt", "STDOUT", "stdout ", "CT", "2", "7", "TXT",
      // Numbers, a font, bytes that are no letters, and far too long.
      "99999999999999999999", "-1", "Arial", "\xFF\xFE\x80", "line\nbreak\r\n", "<&\"'>",
      kLong.c_str(), kLongBlanks.c_str(), kLongDigits.c_str()};
  return kTexts[static_cast<size_t>(below(random, static_cast<int32_t>(kTexts.size())))];
}

}  // namespace qxrandom
