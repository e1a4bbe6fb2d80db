// Dates and times given as text.
#include <climits>

#include "fuzz/fuzz_support.h"

using namespace qxfuzz;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input input = {data, size};
  const int16_t order = takeSigned(&input);
  const std::string first = takeLine(&input);
  const std::string second = takeRest(&input);

  for (const std::string& text : {first, second}) {
    int32_t parts[6] = {INT_MIN, INT_MIN, INT_MIN, INT_MIN, INT_MIN, INT_MIN};
    const int32_t valid = qxDateStrToYMD(text.c_str(), order, &parts[0], &parts[1], &parts[2],
                                         &parts[3], &parts[4], &parts[5]);
    require(valid == qxDateStrValidate(text.c_str(), order), "both say whether it is a date");
    const double date = qxDateStrToDate(text.c_str(), order);
    require(valid == 1 || date == 0.0, "a refused text is no date");
    for (const int32_t part : parts) require(part != INT_MIN, "every part is stored");

    const int32_t timed = qxTimeStrToHMS(text.c_str(), &parts[3], &parts[4], &parts[5]);
    const double time = qxTimeStrToTime(text.c_str());
    require(time >= 0.0 && time < 1.0, "a time is a fraction of a day");
    require(timed == 1 || time == 0.0, "a refused text is no time");
    require(qxTimeTxtToJulian(text.c_str()) == time, "both read the same time");
    qxDateTxtToJulian(text.c_str(), order);
    qxDateTxtVal(text.c_str(), order);
    qxFILEtype(text.c_str());
    qxDatePart(text.c_str(), date);
    qxDateDiff(text.c_str(), date, 36164.25);
  }
  qxDateTxtDif(first.c_str(), second.c_str(), order, static_cast<int16_t>(order + 1));
  qxTimeTxtDif(first.c_str(), second.c_str());
  return 0;
}
