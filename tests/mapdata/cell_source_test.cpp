#include "mapdata/cell_source.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "support/temporary_folder.h"
#include "text/token_reader.h"

namespace ormel {
namespace {

using testing::TemporaryFolder;
using Numbers = std::vector<double>;

// As many threads as told for as long as it lives.
class Threads {
 public:
  explicit Threads(int count) { setenv("ORMEL_THREADS", std::to_string(count).c_str(), 1); }
  Threads(const Threads&) = delete;
  Threads& operator=(const Threads&) = delete;
  ~Threads() { unsetenv("ORMEL_THREADS"); }
};

// What the cells are by definition.
Numbers InOneGo(const std::string& text, int headerLines) {
  TokenReader reader = TokenReader::Over(text);
  reader.SkipLines(headerLines);
  Numbers numbers(text.size() + 1);
  numbers.resize(reader.ReadNumbers(numbers));
  return numbers;
}

class Cells : public ::testing::Test {
 protected:
  Numbers Read(int headerLines, int threads, std::size_t pieceBytes, std::size_t atOnce) {
    const Threads set(threads);
    Outcome<CellSource> source = CellSource::Open(folder_ / "map.asc", headerLines, pieceBytes);
    Numbers numbers;
    Numbers row(atOnce);
    while (true) {
      const std::size_t count = source.Value().Read(row);
      numbers.insert(numbers.end(), row.begin(), row.begin() + static_cast<std::ptrdiff_t>(count));
      if (count == row.size()) continue;
      EXPECT_EQ(source.Value().Read(row), 0U);
      EXPECT_EQ(source.Value().Percent(), 100);
      return numbers;
    }
  }

  TemporaryFolder folder_;
};

// Lines of cells, odd ones among them, with line ends of all kinds, a double quote now and then.
std::string RandomLines(std::mt19937& random, bool quotes) {
  static const char* const kPieces[] = {" 1",   " 2.5", "-3",    "\t4.125", ",",  " , ", "word 7",
                                        " 1e2", ",,",   " -.5 ", " x,",     "88", " ",   "0 0 0 0"};
  static const char* const kEnds[] = {"\r\n", "\n", "\r", "\r\n\r\n", ",\n", " \r\n"};
  std::string text = "ncols 3\r\nnodata -9\r\n";
  for (int line = 0; line < 60; ++line) {
    const int pieces = static_cast<int>(random() % (line % 20 == 19 ? 200 : 12));
    for (int i = 0; i < pieces; ++i) text += kPieces[random() % std::size(kPieces)];
    if (quotes && random() % 40 == 0) text += random() % 2 == 0 ? " \"a,\n1 2\" " : "\"";
    text += kEnds[random() % std::size(kEnds)];
  }
  if (random() % 2 == 0) text += "5 6";
  return text;
}

TEST_F(Cells, AreTheSameForEveryCutAndNumberOfThreads) {
  std::mt19937 random(7);
  for (int i = 0; i < 120; ++i) {
    const int headerLines = i % 3;
    const std::string text = RandomLines(random, i % 2 == 1);
    folder_.Write("map.asc", text);
    const Numbers expected = InOneGo(text, headerLines);
    for (const int threads : {1, 2, 4}) {
      for (const std::size_t bytes : {16UL, 61UL, 500UL, 100'000UL}) {
        ASSERT_EQ(Read(headerLines, threads, bytes, 1 + random() % 70), expected)
            << i << " " << threads << " " << bytes;
      }
    }
  }
}

// A line beyond the longest text, and a file without a line feed, are no work for several threads.
TEST_F(Cells, OfEndlessLinesAreRead) {
  std::string row;
  for (int i = 0; i < 300'000; ++i) row += " " + std::to_string(i % 1000);
  for (const char* end : {"\r\n", "\r"}) {
    const std::string text = "1 2\r\n" + row + end + row + end + "3 4" + end;
    folder_.Write("map.asc", text);
    EXPECT_EQ(Read(0, 3, 4096, 1000), InOneGo(text, 0));
  }
}

TEST_F(Cells, NameTheFileThatIsMissing) {
  const Outcome<CellSource> missing = CellSource::Open(folder_ / "no.asc", 5);
  EXPECT_EQ(missing.Text(), (folder_ / "no.asc").string() + ": is not there");
}

}  // namespace
}  // namespace ormel
