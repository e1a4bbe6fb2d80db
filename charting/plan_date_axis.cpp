// The date axis: vertical grid lines through the bar area, ticks and labels in the strip below it.
#include <algorithm>

#include "charting/date_marks.h"
#include "charting/graph_state.h"
#include "charting/planner.h"
#include "core/numeric.h"

namespace qx {
namespace {

constexpr int32_t kLabelDistance = 2;  // least pixels from the end of one label to the next
constexpr int32_t kMostTick = 1024;

LabelWidths measureLabels(const Planner& planner) {
  const MonthNames& names = monthNames();
  LabelWidths widths = {};
  for (int32_t month = 0; month < 12; ++month) {
    widths.month =
        std::max(widths.month, textWidth(planner, planner.axisFont, names.full[month]) + 1);
    widths.abbreviation = std::max(
        widths.abbreviation, textWidth(planner, planner.axisFont, names.abbreviated[month]) + 1);
  }
  widths.day = textWidth(planner, planner.axisFont, " 00");
  widths.monthAndDay = widths.abbreviation + widths.day;
  widths.minute = textWidth(planner, planner.axisFont, ":00 ");
  return widths;
}

struct DateWalk {
  const double* dates;
  IndexRange bars;
  int64_t origin;  // x of bar 0
  int32_t barWidth;
};

DateWalk walkDates(const Planner& planner) {
  const qxGraph& graph = *planner.graph;
  DateWalk walk = {};
  walk.dates = planner.dated->date.data;
  walk.barWidth = barWidth(graph);
  const int64_t inset = barInset(graph);
  const int64_t left = graph.bararea.left;
  walk.origin = left + inset - int64_t{graph.firstshown} * walk.barWidth;
  walk.bars = datedBarsInView(planner);
  return walk;
}

int32_t markX(const DateWalk& walk, int64_t bar) {
  return saturateToInt32(walk.origin + bar * walk.barWidth);
}

// Calls `visit` with each bar's index, date and boundary mask.
template <typename Visit>
void forEachBar(const DateWalk& walk, Visit visit) {
  BarDate previous = {};
  for (int64_t bar = walk.bars.first; bar <= walk.bars.last; ++bar) {
    const BarDate date = splitDate(walk.dates[bar]);
    const bool first = bar == walk.bars.first;
    visit(bar, date, first ? kFirstBarMask : boundaryMask(date, previous));
    previous = date;
  }
}

// The boundaries that are labelled in this view: where none of the wanted ones is met, months, or
// years where there is nothing else, since weekly bars that all fall on one weekday begin no week.
uint32_t labelsInView(const DateWalk& walk, uint32_t wanted) {
  bool met = false, months = false;
  forEachBar(walk, [&](int64_t, const BarDate&, uint32_t mask) {
    met |= (mask & wanted) != 0;
    months |= (mask & kNewMonth) != 0;
  });
  if (met) return wanted;
  return months ? kNewMonth : kNewYear;
}

// The row of labels while it is written: the last label and where it ends.
struct LabelRow {
  int32_t x, top;
  int64_t end;
  char text[kDateLabelSize];
};

void addLabel(Planner* planner, const LabelRow& row) {
  const qxGraph& graph = *planner->graph;
  addText(planner->list, planner->axisFont.font, graph.axiscolour, {row.x, row.top},
          TextAlign::kLeft, graph.datearea, row.text);
}

// Clears the last label's place and writes it again, since a new day's separator runs through it.
void restoreLabel(Planner* planner, const LabelRow& row) {
  const qxGraph& graph = *planner->graph;
  const qxRect place = {row.x, row.top, saturateToInt32(row.end),
                        row.top + planner->axisFont.lineHeight};
  addFill(planner->list, intersection(place, graph.datearea), solidBrush(graph.background));
  addLabel(planner, row);
}

}  // namespace

IndexRange datedBarsInView(const Planner& planner) {
  const qxGraph& graph = *planner.graph;
  IndexRange bars = shownRange(graph, planner.datedLength);
  const int64_t columns = int64_t{graph.bararea.right} - graph.bararea.left - barInset(graph) - 1;
  const int64_t lastSlot = columns < 0 ? -1 : columns / barWidth(graph);
  bars.last = std::min(bars.last, graph.firstshown + lastSlot);
  return bars;
}

void planDateAxis(Planner* planner) {
  if (planner->dated == nullptr) return;
  const qxGraph& graph = *planner->graph;
  const qxRect& strip = graph.datearea;
  const qxRect& plot = graph.bararea;
  const Device& device = *planner->device;
  const DateWalk walk = walkDates(*planner);
  const DateMarking marking =
      chooseMarking(pixelsPerMinute(planner->dated->date, planner->datedLength, walk.barWidth),
                    pixelsPerDay(planner->dated->date, planner->datedLength, walk.barWidth),
                    planner->dated->frequency, measureLabels(*planner));
  const uint32_t labels = labelsInView(walk, marking.labels);

  const bool shown = !isEmpty(strip);
  const bool labelled =
      shown && (device.visible == nullptr || device.visible(device.context, strip));
  const Pen axisPen = solidPen(graph.axiscolour);
  const Pen gridPen = {graph.gridstyle, graph.gridwidth, graph.gridcolour};
  const int32_t tick = std::clamp(graph.ticklength, 0, kMostTick);
  LabelRow row = {};
  row.end = INT64_MIN / 2;
  row.top = strip.top + tick;
  if (shown) addLine(planner->list, axisPen, {plot.left, strip.top}, {plot.right - 1, strip.top});
  forEachBar(walk, [&](int64_t bar, const BarDate& date, uint32_t mask) {
    int32_t x = markX(walk, bar);
    const bool first = bar == walk.bars.first;
    if (!first && (mask & marking.grid) != 0 && graph.gridwidth != 0 && !isEmpty(plot)) {
      addLine(planner->list, gridPen, {x, plot.top}, {x, plot.bottom - 1});
    }
    if (shown && tick > 0 && (mask & (marking.grid | labels)) != 0) {
      addLine(planner->list, axisPen, {x, strip.top}, {x, strip.top + tick - 1});
    }
    if (!labelled) return;
    if (marking.level == 1 && (mask & kNewDay) != 0) {
      addLine(planner->list, axisPen, {x, strip.top}, {x, strip.bottom - 1});
      if (x < row.end) restoreLabel(planner, row);
      ++x;
    }
    if ((mask & labels) == 0 || x <= row.end + kLabelDistance) return;
    formatDateLabel(date, mask, marking.level, row.text);
    row.x = x + 1;
    row.end = int64_t{x} + textWidth(*planner, planner->axisFont, row.text);
    addLabel(planner, row);
  });
}

}  // namespace qx
