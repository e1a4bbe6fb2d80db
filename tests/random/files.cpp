#include "tests/random/files.h"

#include <filesystem>
#include <fstream>
#include <string>

#include "tests/support/computrac_files.h"

namespace qxrandom {
namespace {

struct File {
  const char* name;
  std::string bytes;
};

const std::vector<File>& files() {
  static const std::vector<File> kFiles = {
      {"prices.csv",
       "date,open,high,low,close,volume\n"
       "1999-03-15,10,12,9,11,100\n1999-03-16,11,13,10,12,200\r\n"
       "\n1999-03-17,12,14,11,13,300\n1999-03-18,13,15,12,14,400"},
      {"txtinfo.txt", "delimit = ,\nskip=1\ndt=1\nop=2\nhi=3\nlo=4\ncl=5\nvol=6\ndtformat=YMD\n"},
      {"master", qxtest::master({{1, 7, "Alpha Beta", "ABC", 'D'}, {2, 8, "Gamma", "XYZ", 'I'}})},
      {"xmaster", qxtest::extendedMaster(300, 0xBF)},
      {"F1.DAT", qxtest::dataFile(7, 12, 990104, 13)},
      {"F2.DAT", qxtest::dataFile(8, 40, 990104, 41)},
      {"F300.MWD", qxtest::dataFile(7, 5, 990104, 6)},
      {"F2.DOP",
       "\"DATE\",0\n\"TIME\",1\n\"OPEN\",2\n\"HIGH\",2\n\"LOW\",2\n\"CLOSE\",2\n\"VOL\"\n\"OI\"\n"},
      {"qmaster", std::string("0012SOYBEANS            D           S        S2") +
                      std::string(17, ' ') + std::string(64, ' ')}};
  return kFiles;
}

void writeFile(const File& file, const std::string& bytes) {
  std::ofstream(file.name, std::ios::binary) << bytes;
}

}  // namespace

void writeFiles() {
  std::filesystem::create_directory("folder");
  for (const File& file : files()) writeFile(file, file.bytes);
}

void disturbFiles(Random& random) {
  if (!onceIn(random, 3)) return;
  const File& file = files()[static_cast<size_t>(below(random, 9))];
  std::string bytes = file.bytes;
  if (!onceIn(random, 3)) {
    for (int32_t n = below(random, 5); n > 0; --n) {
      const auto at = static_cast<size_t>(below(random, static_cast<int32_t>(bytes.size())));
      bytes[at] =
          static_cast<char>(onceIn(random, 2) ? next(random) : "\0\xFF,\n09"[below(random, 6)]);
    }
    if (onceIn(random, 4)) bytes.resize(static_cast<size_t>(below(random, 200)) % bytes.size());
  }
  writeFile(file, bytes);
}

}  // namespace qxrandom
