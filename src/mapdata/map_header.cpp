#include "mapdata/map_header.h"

#include <algorithm>
#include <cstdint>
#include <system_error>

#include "text/numbers.h"
#include "text/token_reader.h"

namespace ormel {
namespace {

constexpr int kTokensLookedAt = 100;
constexpr std::int64_t kCellsOnTrust = 100'000'000;

}  // namespace

std::string_view TextBehindLastBlank(std::string_view line) {
  const auto blank = std::find_if(line.rbegin(), line.rend(), IsBlank);
  return line.substr(static_cast<std::size_t>(line.rend() - blank));
}

std::string_view HeaderValue(std::span<const std::string> lines, int line) {
  const auto index = static_cast<std::size_t>(line - 1);
  return index < lines.size() ? TextBehindLastBlank(lines[index]) : std::string_view();
}

int CountHeaderLines(const std::filesystem::path& path) {
  Outcome<TokenReader> reader = TokenReader::Open(path);
  if (!reader.Ok()) return 0;
  std::string_view token;
  int count = 0;
  while (count < kTokensLookedAt && reader.Value().Next(token) && !IsNumeric(token)) ++count;
  return count;
}

Outcome<HeaderTexts> ReadHeaderTexts(const std::filesystem::path& path, int lines) {
  Outcome<TokenReader> reader = TokenReader::Open(path);
  if (!reader.Ok()) return reader.Stop();
  HeaderTexts header;
  header.complete = true;
  std::string text;
  for (int line = 1; line <= lines; ++line) {
    header.complete = reader.Value().ReadLine(text) && header.complete;
    header.values.emplace_back(TextBehindLastBlank(text));
  }
  if (!reader.Value().Error().empty()) {
    return Failure{FailureKind::kDisk, reader.Value().Error()};
  }
  return header;
}

std::string ReadNoDataText(const std::filesystem::path& path) {
  if (CountHeaderLines(path) < kNoDataLine) return {};
  Outcome<HeaderTexts> header = ReadHeaderTexts(path, kNoDataLine);
  return header.Ok() ? header.Value().values.back() : std::string();
}

bool ClaimsTooMuch(const std::filesystem::path& path, int ncols, int nrows) {
  const std::int64_t count = std::int64_t{std::max(ncols, 0)} * std::max(nrows, 0);
  std::error_code error;
  const std::uintmax_t bytes = std::filesystem::file_size(path, error);
  return count > kCellsOnTrust && !error && bytes < static_cast<std::uintmax_t>(count);
}

}  // namespace ormel
