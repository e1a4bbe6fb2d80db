#include "datafiles/paths.h"

#include <string>

#include "tests/support/test_support.h"

namespace {

std::string join(const std::string& folder, const std::string& file) {
  qx::Path path;
  qx::joinPath(folder.c_str(), file.c_str(), path);
  return path;
}

TEST(Paths, Join) {
  EXPECT_EQ(join("data", "a.txt"), "data\\a.txt");
  EXPECT_EQ(join("data\\", "a.txt"), "data\\a.txt");
  EXPECT_EQ(join("C:", "a.txt"), "C:a.txt");
  EXPECT_EQ(join("", "a.txt"), "a.txt");
  EXPECT_EQ(join(" \t\r\f\n", " a.txt\n"), "a.txt");
  EXPECT_EQ(join(" \n my data \t", " \fa b.txt "), "my data\\a b.txt");
  EXPECT_EQ(join("data", ""), "data\\");
  EXPECT_EQ(join("data", " "), "data\\");
  EXPECT_EQ(join("\vdata\v", "a"), "\vdata\v\\a") << "a vertical tab is no space here";
}

TEST(Paths, AreCutAtTheBuffer) {
  const std::string name(300, 'n');
  EXPECT_EQ(join(std::string(253, 'f'), name), std::string(253, 'f') + "\\n");
  EXPECT_EQ(join(std::string(254, 'f'), name), std::string(254, 'f') + "n");
  EXPECT_EQ(join(std::string(300, 'f'), name), std::string(255, 'f'));
  EXPECT_EQ(join(std::string(250, 'f') + std::string(50, ' '), name),
            std::string(250, 'f') + "\\nnnn");
  EXPECT_EQ(join("d", std::string(252, 'n') + " x"), "d\\" + std::string(252, 'n'));
}

}  // namespace
