// What a window tells beside a file that a command would write, before it is pressed.
#pragma once

#include <string>

namespace ormel {

// "new", or why the file cannot be written ("no such folder", "a folder", "not writable"); when it
// is there already, what `whenThere` says of that.
std::string OutputNote(const std::string& path, const std::string& whenThere);

}  // namespace ormel
