// Dates printed under a picture, into a block of exactly the size that the picture asks for.
#include <cctype>
#include <cstring>
#include <vector>

#include "fuzz/fuzz_support.h"

using namespace qxfuzz;

namespace {

// Characters of the picture's token at `at`: a run of one letter, but three or five for a marker of
// morning and afternoon.
size_t tokenLength(const std::string& picture, size_t at) {
  const auto letter = [&](size_t i) {
    return std::tolower(static_cast<unsigned char>(picture[i]));
  };
  size_t length = 1;
  if (letter(at) == 'a') {
    length = picture.compare(at + 1, 1, "/") == 0 ? 3 : 5;
  } else if (std::strchr("dhmnsy", letter(at)) != nullptr) {
    while (at + length < picture.size() && letter(at + length) == letter(at)) ++length;
  }
  return std::min(length, picture.size() - at);
}

// 2 characters for each token, 11 for a year of four letters, 1 for each other one, and the zero.
size_t sizeOf(const std::string& picture) {
  size_t size = 1;
  for (size_t at = 0, length = 0; at < picture.size(); at += length) {
    length = tokenLength(picture, at);
    const int letter = std::tolower(static_cast<unsigned char>(picture[at]));
    const bool token = std::strchr("dhmnsya", letter) != nullptr;
    size += !token ? 1 : letter == 'y' && length == 4 ? 11 : 2;
  }
  return size;
}

// "|" stands for the separator.
constexpr const char* kDates[] = {"YY|MM|DD", "YYYY|MM|DD", "MM|DD|YY", "MM|DD|YYYY",
                                  "DD|MM|YY", "DD|MM|YYYY", "YYMMDD",   "YYYYMMDD",
                                  "MMDDYY",   "MMDDYYYY",   "DDMMYY",   "DDMMYYYY"};
constexpr const char* kTimes[] = {"HH|NN|SS", "HH|NN", "HHNNSS", "HHNN"};

std::string withSeparator(const char* layout, const std::string& separator) {
  std::string picture;
  for (const char* p = layout; *p != '\0'; ++p)
    picture += *p == '|' ? separator : std::string(1, *p);
  return picture;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input input = {data, size};
  double date = 0.0;
  const std::string bytes = takeBytes(&input, sizeof date);
  std::memcpy(&date, bytes.data(), bytes.size());
  const std::string rest = takeRest(&input);
  const std::string text = rest.substr(0, rest.find('\0'));

  std::vector<char> output(sizeOf(text));
  const int32_t length = qxFormatDate(date, text.c_str(), output.data());
  require(static_cast<size_t>(length) == std::strlen(output.data()), "the length is returned");
  for (int16_t layout = 0; layout <= 13; ++layout) {
    const bool isDate = layout >= 1 && layout <= 12;
    const bool isTime = layout >= 1 && layout <= 4;
    output.assign(isDate ? sizeOf(withSeparator(kDates[layout - 1], text)) : 1, '\0');
    output.shrink_to_fit();
    qxJulianToDateTxt(date, layout, text.c_str(), output.data());
    output.assign(isTime ? sizeOf(withSeparator(kTimes[layout - 1], text)) : 1, '\0');
    output.shrink_to_fit();
    qxJulianToTimeTxt(date, layout, text.c_str(), output.data());
  }
  return 0;
}
