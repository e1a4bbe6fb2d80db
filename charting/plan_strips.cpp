// Header, footer and the title strips of panes.
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "charting/planner.h"
#include "dates/date_pictures.h"

namespace qx {
namespace {

constexpr int32_t kTextInset = 5;  // of a text from the edge of its strip

// A filled strip with a sunken edge and a text in the middle of its height.
void planStrip(Planner* planner, const qxRect& strip, uint32_t back, const LineFont& font,
               uint32_t colour, const char* text) {
  if (isEmpty(strip)) return;
  addFill(planner->list, strip, solidBrush(back));
  addFrame(planner->list, strip);
  if (font.lineHeight == 0) return;
  const qxRect inside = {strip.left + 1, strip.top + 1, strip.right - 1, strip.bottom - 1};
  const int32_t top = strip.top + (strip.bottom - strip.top - font.lineHeight) / 2;
  addText(planner->list, font.font, colour, {strip.left + kTextInset, top}, TextAlign::kLeft,
          inside, text);
}

// The dates of the first and the last bar in the bar area: days, and times of day when bars are
// shorter than a day.
void formatRange(const Planner& planner, char* text, size_t size) {
  text[0] = '\0';
  if (planner.dated == nullptr) return;
  const IndexRange shown = datedBarsInView(planner);
  if (shown.first > shown.last) return;
  const double* dates = planner.dated->date.data;
  char picture[kDateTextSize];
  const bool intraday = planner.dated->frequency == QX_FREQ_INTRADAY;
  std::snprintf(picture, sizeof picture, "%s%s", datePicture(), intraday ? " hh:nn" : "");
  char from[kDateTextSize], to[kDateTextSize];
  qxFormatDate(dates[shown.first], picture, from);
  qxFormatDate(dates[shown.last], picture, to);
  std::snprintf(text, size, "%s - %s", from, to);
}

// A text field of a record, which a caller may have left without its terminator.
void copyText(const char (&field)[256], char (&text)[257]) {
  std::memcpy(text, field, sizeof field);
  text[sizeof field] = '\0';
}

}  // namespace

void planStrips(Planner* planner) {
  const qxGraph& graph = *planner->graph;
  char header[257];
  copyText(graph.headertext, header);
  planStrip(planner, graph.headerarea, graph.headerback, planner->headerFont, graph.headercolour,
            header);
  char range[2 * kDateTextSize + 4];
  formatRange(*planner, range, sizeof range);
  planStrip(planner, graph.footerarea, graph.footerback, planner->footerFont, graph.footercolour,
            range);
}

void planTitle(Planner* planner, const qxGraphSubwin& pane) {
  if (pane.titleshown == 0) return;
  const qxGraph& graph = *planner->graph;
  qxRect strip = pane.pane;
  strip.bottom = plotOf(graph, pane).top;
  char title[257];
  copyText(pane.title, title);
  planStrip(planner, intersection(strip, pane.pane), graph.headerback, planner->titleFont,
            graph.titlecolour, title);
}

}  // namespace qx
