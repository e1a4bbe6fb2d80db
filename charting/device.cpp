// Font sizes, and the built-in text metrics for painting without a device.
#include "charting/device.h"

#include <algorithm>
#include <cmath>

#include "core/numeric.h"

namespace qx {
namespace {

constexpr int32_t kUnitsPerEm = 2048;
constexpr int32_t kAscent = 1854;
constexpr int32_t kDescent = 434;
constexpr int32_t kFirstCharacter = 32;

// Advance widths of an Arial-compatible face for the characters 32 to 255 of code page 1252, in
// units of 1/2048 em.
constexpr uint16_t kAdvances[] = {
    569,  569,  727,  1139, 1139, 1821, 1366, 391,  682,  682,  797,  1196, 569,  682,  569,  569,
    1139, 1139, 1139, 1139, 1139, 1139, 1139, 1139, 1139, 1139, 569,  569,  1196, 1196, 1196, 1139,
    2079, 1366, 1366, 1479, 1479, 1366, 1251, 1593, 1479, 569,  1024, 1366, 1139, 1706, 1479, 1593,
    1366, 1593, 1479, 1366, 1251, 1479, 1366, 1933, 1366, 1366, 1251, 569,  569,  569,  961,  1139,
    682,  1139, 1139, 1024, 1139, 1139, 569,  1139, 1139, 455,  455,  1024, 455,  1706, 1139, 1139,
    1139, 1139, 682,  1024, 569,  1139, 1024, 1479, 1024, 1024, 1024, 684,  532,  684,  1196, 748,
    1139, 1139, 455,  1139, 682,  2048, 1139, 1139, 682,  2048, 1366, 682,  2048, 1139, 1251, 1139,
    1139, 455,  455,  682,  682,  717,  1139, 2048, 682,  2048, 1024, 682,  1933, 1139, 1024, 1366,
    569,  682,  1139, 1139, 1139, 1139, 532,  1139, 682,  1509, 758,  1139, 1196, 682,  1509, 1131,
    819,  1124, 682,  682,  682,  1180, 1100, 569,  682,  682,  748,  1139, 1708, 1708, 1708, 1251,
    1366, 1366, 1366, 1366, 1366, 1366, 2048, 1479, 1366, 1366, 1366, 1366, 569,  569,  569,  569,
    1479, 1479, 1593, 1593, 1593, 1593, 1593, 1196, 1593, 1479, 1479, 1479, 1479, 1366, 1366, 1251,
    1139, 1139, 1139, 1139, 1139, 1139, 1821, 1024, 1139, 1139, 1139, 1139, 569,  569,  569,  569,
    1139, 1139, 1139, 1139, 1139, 1139, 1139, 1124, 1251, 1139, 1139, 1139, 1139, 1024, 1139, 1024,
};

int32_t scaled(int64_t units, const Font& font) {
  return saturateToInt32((units * font.height + kUnitsPerEm - 1) / kUnitsPerEm);
}

int32_t builtInWidth(void*, const Font& font, const char* text, int32_t length) {
  int64_t units = 0;
  for (int32_t i = 0; i < length; ++i) {
    const auto character = static_cast<unsigned char>(text[i]);
    // Control characters are painted as blanks.
    units += kAdvances[std::max<int32_t>(character - kFirstCharacter, 0)];
  }
  return scaled(units, font);
}

int32_t builtInLineHeight(void*, const Font& font) {
  return scaled(kAscent, font) + scaled(kDescent, font);
}

}  // namespace

int32_t fontPixels(const Device& device, float points) {
  constexpr double kPointsPerInch = 72.0;
  constexpr double kMostPixels = 4096.0;
  const double pixels = static_cast<double>(points) * device.dotsPerInchY / kPointsPerInch;
  if (!(pixels > 0.0)) return 0;
  return std::max(truncateToInt32(std::min(pixels, kMostPixels) + 0.5), 1);
}

Device builtInDevice() {
  constexpr int32_t kDotsPerInch = 96;
  return {nullptr, builtInWidth, builtInLineHeight, nullptr, kDotsPerInch, kDotsPerInch};
}

int32_t builtInAscent(const Font& font) {
  return scaled(kAscent, font);
}

}  // namespace qx
