// Numbers in files that store the lowest byte first.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ormel {

inline void AppendNumber(std::string& bytes, std::uint64_t number, int size) {
  for (int i = 0; i < size; ++i) bytes.push_back(static_cast<char>(number >> (8 * i) & 0xFF));
}

inline std::uint64_t ReadNumber(std::string_view bytes, std::size_t offset, int size) {
  std::uint64_t number = 0;
  for (int i = size - 1; i >= 0; --i) {
    number = number << 8 | static_cast<unsigned char>(bytes[offset + static_cast<std::size_t>(i)]);
  }
  return number;
}

}  // namespace ormel
