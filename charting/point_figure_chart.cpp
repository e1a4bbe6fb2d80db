// Point-and-figure columns as a text chart.
#include <cinttypes>
#include <cmath>
#include <cstdio>

#include "core/indicator_frame.h"
#include "core/numeric.h"
#include "core/output.h"
#include "platform/platform.h"
#include "quorvex.h"

namespace {

constexpr double kMostLevels = 1e7;  // beyond it a chart is a mistake of the box size

// The levels of the chart and how near a column must come to one.
struct Levels {
  double top;
  double bottom;
  double box;
  double tolerance;
};

Levels findLevels(const qxBars& columns, int32_t count, double box) {
  Levels levels = {0.0, 0.0, box, box / 10.0};
  double high = 0.0;
  double low = 0.0;
  qxArrayStats(&columns.high, nullptr, &high, nullptr, nullptr, 0, count - 1, 0);
  qxArrayStats(&columns.low, &low, nullptr, nullptr, nullptr, 0, count - 1, 0);
  const double reach = high + levels.tolerance;
  levels.top = reach - std::fmod(reach, box);
  levels.bottom = (low - std::fmod(low, box)) - levels.tolerance;
  return levels;
}

// True when there are no more levels than a chart can have and a step of one box changes every
// level between the two ends; the spacing of doubles is widest at one of them.
bool canStep(const Levels& levels) {
  return !((levels.top - levels.bottom) / levels.box > kMostLevels) &&
         levels.top - levels.box != levels.top && levels.bottom - levels.box != levels.bottom;
}

char markAt(const qxBars& columns, int32_t column, double level, double tolerance) {
  const bool covered = level + tolerance >= columns.low.data[column] &&
                       columns.high.data[column] >= level - tolerance;
  if (!covered) return ' ';
  return columns.openint.data[column] > 0.0 ? 'X' : 'O';
}

}  // namespace

int32_t qxPNFchart(const qxBars* columns, double box, const char* fileName, int32_t append) {
  if (columns == nullptr || fileName == nullptr || !(box > 0.0)) return QX_ERR_INVALID_PARM;
  const int32_t count =
      qx::heldLength(columns->barsize, {&columns->high, &columns->low, &columns->openint});
  if (count < 1) return QX_ERR_INVALID_PARM;
  const Levels levels = findLevels(*columns, count, box);
  if (!canStep(levels)) return QX_ERR_INVALID_PARM;

  qx::Output output = {qx::openFile(fileName, append == 0 ? "wt" : "at"), false};
  if (output.file == nullptr) return QX_ERR_FILE_OPEN;
  double level = levels.top;
  while (level >= levels.bottom) {
    std::fprintf(output.file, "\n%5" PRId64 ".%03" PRId32 " ", qx::truncateToInt64(level),
                 qxDecimals(level, 3));
    for (int32_t i = 0; i < count; ++i) {
      std::fputc(markAt(*columns, i, level, levels.tolerance), output.file);
    }
    level -= box;
  }
  return qx::closeOutput(&output);
}
