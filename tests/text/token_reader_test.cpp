#include "text/token_reader.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <random>
#include <sstream>
#include <vector>

#include "support/temporary_folder.h"
#include "text/numbers.h"

namespace ormel {
namespace {

using testing::TemporaryFolder;

using Texts = std::vector<std::string>;

Texts Tokens(TokenReader reader) {
  Texts tokens;
  for (std::string_view token; reader.Next(token);) tokens.emplace_back(token);
  return tokens;
}

Texts Lines(TokenReader reader) {
  Texts lines;
  for (std::string line; reader.ReadLine(line);) lines.push_back(line);
  return lines;
}

// Bit patterns, so that -0 and 0 differ.
using Numbers = std::vector<std::uint64_t>;

Numbers NumbersByToken(TokenReader reader) {
  Numbers numbers;
  for (std::string_view token; reader.Next(token);) {
    numbers.push_back(std::bit_cast<std::uint64_t>(TextToNumber(token)));
  }
  return numbers;
}

Numbers NumbersAtOnce(TokenReader reader, std::size_t piece) {
  Numbers numbers;
  std::vector<double> cells(piece);
  for (std::size_t count = piece; count == piece;) {
    count = reader.ReadNumbers(cells);
    for (std::size_t i = 0; i < count; ++i) {
      numbers.push_back(std::bit_cast<std::uint64_t>(cells[i]));
    }
  }
  return numbers;
}

TEST(TokenReader, SplitsTextIntoTokensAndLines) {
  const std::pair<const char*, Texts> cases[] = {
      {"", {}},
      {" \r\n\t\n", {}},
      {"ncols         5\r\nnrows 4\n", {"ncols         5", "nrows 4"}},
      {" 1 2.5\t-3\r\n 4", {"1", "2.5", "-3", "4"}},
      {"1\r2\r\r3", {"1", "2", "3"}},
      {"1 , 2,3", {"1", "2", "3"}},
      {"1,2,\r\n", {"1", "2"}},
      {"1,2,  ", {"1", "2"}},
      {"1,,2", {"1", "", "2"}},
      {",1\n,2", {"", "1", "", "2"}},
      {"1 \n , 2", {"1", "", "2"}},
      {"1,\n,", {"1", ""}},
      {"a b \t, c \r\nd", {"a b", "c", "d"}},
      {"1 nodata 3, 4", {"1", "nodata 3", "4"}},
      {"12ab 3", {"12ab", "3"}},
      {"-x y +1 .5", {"-x", "y +1 .5"}},
      {"\"a,b\nc\" behind, 2", {"a,b\nc", "2"}},
      {"\"open, 1", {"open, 1"}},
      {"\"\",\"\"", {"", ""}}};
  for (const auto& [text, tokens] : cases) {
    EXPECT_EQ(Tokens(TokenReader::Over(text)), tokens) << text;
  }
  EXPECT_EQ(Lines(TokenReader::Over("a\r\nb\nc\rd\r\r\n\ne")),
            (Texts{"a", "b", "c", "d", "", "", "e"}));
  EXPECT_EQ(Lines(TokenReader::Over("a\n")), Texts{"a"});
  EXPECT_EQ(Lines(TokenReader::Over("")), Texts{});
}

TEST(TokenReader, TokensAndLinesMayTakeTurns) {
  TokenReader reader = TokenReader::Over("1 2 rest\r\nnext\r\n3,4 5");
  std::string_view token;
  std::string line;
  ASSERT_TRUE(reader.Next(token) && reader.ReadLine(line));
  EXPECT_EQ(line, "2 rest");
  ASSERT_TRUE(reader.Next(token));
  EXPECT_EQ(token, "next");
  double cells[2];
  ASSERT_EQ(reader.ReadNumbers(cells), 2U);
  ASSERT_TRUE(reader.ReadLine(line));
  EXPECT_EQ(line, "5");
}

TEST(TokenReader, TextWithoutAnEndIsCut) {
  const std::string endless(3 * TokenReader::kLongestText, 'x');
  const Texts cut = {endless.substr(0, TokenReader::kLongestText), "5"};
  EXPECT_TRUE(Tokens(TokenReader::Over(endless + "\r\n5")) == cut);
  EXPECT_TRUE(Tokens(TokenReader::Over("\"" + endless + "\"\r\n5")) == cut);
  EXPECT_TRUE(Lines(TokenReader::Over(endless + "\r\n5")) == cut);
}

// Pieces of cells, odd and plain, strung together at random.
std::string RandomCells(std::mt19937& random) {
  static const Texts kPieces = [] {
    std::istringstream text(
        " | "
        "|1|25.5|123.45|-9999|\r\n|\n|,|\t|\r|0|-|.|+|e5|E-3|D+2|abc|\"|12345678|0.125|1234.56789|"
        "-0|1.|.5|  | 7.25| 200.1| 99|1.2.3|\x80|\xFF|0000|99999|, |123456789012345|"
        "0.000000000000001");
    Texts pieces;
    for (std::string piece; std::getline(text, piece, '|');) pieces.push_back(piece);
    return pieces;
  }();
  std::string text;
  for (auto count = random() % 60; count > 0; --count) text += kPieces[random() % kPieces.size()];
  return text;
}

TEST(TokenReader, CellsReadAtOnceEqualCellsReadByToken) {
  std::mt19937 random(1);
  for (int i = 0; i < 60'000; ++i) {
    std::string text = RandomCells(random);
    if (i % 3 == 0 && !text.empty()) text[random() % text.size()] = static_cast<char>(random());
    // Behind the text lie cells enough for it to be read on the fast road to its end.
    text += i % 2 == 0 ? std::string() : "\r\n" + std::string(60, ' ') + "1 2 3";
    ASSERT_EQ(NumbersAtOnce(TokenReader::Over(text), 1 + i % 50),
              NumbersByToken(TokenReader::Over(text)))
        << ::testing::PrintToString(text);
  }
}

// Wherever the buffer ends in the text, everything reads the same.
TEST(TokenReader, TheBufferSizeChangesNothing) {
  TemporaryFolder folder;
  std::mt19937 random(2);
  for (int i = 0; i < 20; ++i) {
    std::string text = "ncols 5\r\n\"quo,\rted\" \t, \r\n";
    while (text.size() < 400) text += RandomCells(random);
    const auto path = folder.Write("cells", text);
    const auto tokens = Tokens(TokenReader::Over(text));
    const auto lines = Lines(TokenReader::Over(text));
    const auto numbers = NumbersByToken(TokenReader::Over(text));
    for (std::size_t bytes = 1; bytes < 220; ++bytes) {
      const auto open = [&] { return std::move(TokenReader::Open(path, bytes).Value()); };
      ASSERT_EQ(Tokens(open()), tokens) << bytes;
      ASSERT_EQ(Lines(open()), lines) << bytes;
      ASSERT_EQ(NumbersAtOnce(open(), 7), numbers) << bytes;
    }
  }
}

TEST(TokenReader, ProgressRunsFromZeroToHundred) {
  TemporaryFolder folder;
  TokenReader reader =
      std::move(TokenReader::Open(folder.Write("cells", "1 2 3 4 5 6 7 8 9 0"), 4).Value());
  double cells[5];
  EXPECT_EQ(reader.Percent(), 0);
  reader.ReadNumbers(cells);
  EXPECT_NEAR(reader.Percent(), 50, 6);
  reader.ReadNumbers(cells);
  EXPECT_EQ(reader.Percent(), 100);
}

TEST(TokenReader, NamesThePathItCannotOpen) {
  TemporaryFolder folder;
  const Outcome<TokenReader> missing = TokenReader::Open(folder / "missing.asc");
  ASSERT_TRUE(missing.Failed());
  EXPECT_EQ(missing.Why().kind, FailureKind::kNotFound);
  EXPECT_NE(missing.Text().find("missing.asc"), std::string::npos);
  EXPECT_EQ(TokenReader::Open(folder.Path()).Why().kind, FailureKind::kDisk);
}

}  // namespace
}  // namespace ormel
