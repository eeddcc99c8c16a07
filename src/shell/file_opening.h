// What a text that names a file means, when it comes from the command line, from another start of
// the program or from the receive box.
#pragma once

#include <string>

namespace ormel {

struct FileToOpen {
  std::string path;
  std::string extension;  // behind the last point, as written; empty: there is no point
};

// Cleans the text in three steps. A text that begins with a number other than 0 becomes that
// number: what stands behind it is lost, and so is a file whose relative path begins with a digit.
// A double quote in front is dropped together with the last character. Of a text that still ends in
// a double quote the last two characters stay.
FileToOpen ReadFileText(std::string text);

}  // namespace ormel
