#include "mapdata/constraint_mask.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace ormel {
namespace {

using testing::TemporaryFolder;

const std::string kHeader = "ncols 3\r\nnrows 2\r\nx 0\r\ny 0\r\ncell 1\r\n";

// The mask of 3 by 2 cells that `files` make, as text: row after row, or what failed.
std::string MaskOf(const std::vector<std::string>& files) {
  TemporaryFolder folder;
  std::vector<std::string> paths;
  for (std::size_t i = 0; i < files.size(); ++i) {
    const std::string name = "c" + std::to_string(i + 1);
    paths.push_back(folder / name);
    if (files[i] != "missing") folder.Write(name, kHeader + files[i]);
  }
  const Outcome<ConstraintMaskBuild> build = BuildConstraintMask(paths, 3, 2);
  const ConstraintMaskBuild& made = build.Value();
  std::string text;
  for (int row = 1; row <= made.mask.Rows(); ++row) {
    for (const std::uint8_t cell : made.mask.Row(row)) text += static_cast<char>('0' + cell);
    text += row < made.mask.Rows() ? " " : "";
  }
  if (made.failure.empty()) return text;
  EXPECT_EQ(text, "111 111");  // a failed build allows everything
  return made.failure.substr(made.failure.rfind('/') + 1);
}

TEST(ConstraintMask, ReadsRowsByPosition) {
  const std::string full = " 1 0 1\r\n 1 1 1\r\n";
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{}, "111 111"},
      {{" 1 0 1\r\n 0 1 1\r\n"}, "101 011"},
      {{" 1 0 1\n 0 1 1"}, "101 011"},
      {{" 1 1 0\r\n 1 1 1\r\n", " 1 0 1\r\n 0 9 1\r\n"}, "100 011"},
      {{"1 0 1\r\n 1 1 1\r\n"}, "000 111"},  // no leading blank: position 2 is a blank
      {{" 1 2 7\r\n a . -\r\n"}, "111 000"},
      {{" 1 1\r\n 1 1 1\r\n"}, "110 111"},                 // a short row ends early
      {{" 1 1 1\r\n"}, "111 000"},                         // so does a short file
      {{" 1 1 1\r\n 1 1 1\r\n\r\n\r\n \r\n"}, "111 111"},  // empty lines at the end do no harm
      {{" 1 1 1 \r\n 1 1 1 \r\n"}, "111 111"},             // nor does a blank at the end of a row
      {{" 1 1 1\r\n 1 1 1\r\n", " 1 1\r\n 1\r\n"}, "110 100"},  // the last file sets the length
      {{" 1 1\r\n 1\r\n", " 1 1 1\r\n 1 1 1\r\n"}, "110 100"},
      {{" 1 1 1\r\n", " 1 1 1\r\n 1 1 1\r\n"}, "111 000"},  // the first file sets the rows
      {{""}, "000 000"},
      // A failed build names file and row; only the row of the last file decides how far it
      // reaches.
      {{full, "missing"}, "c2: is not there"},
      {{full, " 1 0 1\r\n"}, "c2: row 2 is missing"},
      {{full + " 1 1 1\r\n"}, "c1: row 3 reaches past the map"},
      {{full, " 1 1 1 1\r\n 1 1 1\r\n"}, "c2: row 1 reaches past the map"},
      {{" 1 1 1 1\r\n 1 1 1\r\n", full}, "101 111"},
      {{" 1 -9999 1\r\n"}, "c1: row 1 reaches past the map"}};  // NODATA shifts its row
  for (const auto& [files, mask] : cases) EXPECT_EQ(MaskOf(files), mask);
}

TEST(ConstraintMask, ReadsRowsWiderThanABuffer) {
  TemporaryFolder folder;
  constexpr int kColumns = 200'000;
  std::string row;
  for (int i = 0; i < kColumns; ++i) row += i % 3 == 0 ? " 0" : " 1";
  const std::string path = folder.Write("wide", kHeader + row + "\r\n" + row + "\r\n");
  const Outcome<ConstraintMaskBuild> build = BuildConstraintMask({path}, kColumns, 2);
  ASSERT_TRUE(build.Ok());
  ASSERT_EQ(build.Value().failure, "");
  for (int i = 0; i < kColumns; ++i) ASSERT_EQ(build.Value().mask(i + 1, 2), i % 3 != 0) << i;
}

}  // namespace
}  // namespace ormel
