// Model files are texts of fields: a key ("FAC$") says what follows, and each field runs up to the
// next "#". Nothing in them can be escaped.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace ormel {

// Walks through the fields of a text, which outlives it.
class FieldReader {
 public:
  explicit FieldReader(std::string_view text) : text_(text) {}

  // Moves behind the next `key`. False, without a move, when there is none.
  bool Find(std::string_view key) {
    const std::size_t found = text_.find(key, place_);
    if (found == std::string_view::npos) return false;
    place_ = found + key.size();
    return true;
  }

  // The same when `key` is what comes next.
  bool Take(std::string_view key) {
    if (text_.substr(place_, key.size()) != key) return false;
    place_ += key.size();
    return true;
  }

  // The text up to the next `end`, and moves behind it.
  std::string Field(char end = '#') {
    const std::size_t stop = std::min(text_.find(end, place_), text_.size());
    std::string field(text_.substr(place_, stop - place_));
    place_ = std::min(stop + 1, text_.size());
    return field;
  }

  // The field behind the next `key`; empty when there is none.
  std::string FieldBehind(std::string_view key) { return Find(key) ? Field() : std::string(); }

 private:
  std::string_view text_;
  std::size_t place_ = 0;
};

// Joins fields, and keeps the first that the file cannot hold.
class FieldWriter {
 public:
  // `forbidden` are the characters that no field may have.
  explicit FieldWriter(std::string_view forbidden) : forbidden_(forbidden) {}

  FieldWriter& Key(std::string_view key) {
    text_ += key;
    return *this;
  }
  FieldWriter& Field(const std::string& value, char end = '#') {
    if (bad_.empty() && value.find_first_of(forbidden_) != std::string::npos) bad_ = value;
    text_ += value;
    text_ += end;
    return *this;
  }
  const std::string& Bad() const { return bad_; }
  const std::string& Text() const { return text_; }

 private:
  const std::string_view forbidden_;
  std::string text_;
  std::string bad_;
};

}  // namespace ormel
