// The layout of the records, as this compiler lays them out, against the checked-in list.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "tests/support/test_support.h"

namespace {

struct Field {
  const char* record;
  const char* name;  // empty for the record itself
  size_t offset;
  size_t width;
};

const Field kFields[] = {
#include "tests/abi/record_fields.inc"
};

// A list that callers in other languages build their declarations from: neither side may move.
TEST(Records, HaveTheListedLayout) {
  std::string compiled;
  for (const Field& field : kFields) {
    compiled += field.record;
    if (*field.name != '\0') {
      compiled += std::string(".") + field.name + " " + std::to_string(field.offset);
    }
    compiled += " " + std::to_string(field.width) + "\n";
  }
  EXPECT_EQ(compiled, qxtest::readFile(QX_ABI_DIR "/records.txt"));
}

}  // namespace
