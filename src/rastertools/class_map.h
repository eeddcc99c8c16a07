// Makes a map of the classes of another: each class has a value of its own.
#pragma once

#include <string>
#include <vector>

#include "base/outcome.h"
#include "base/progress_sink.h"
#include "rastertools/class_table.h"

namespace ormel {

// More different values are no classes.
inline constexpr int kMostClasses = 32767;

// The different values of a map but NODATA, ascending. Fails when the map cannot be read to its
// last cell and when it has more than kMostClasses.
[[nodiscard]] Outcome<std::vector<double>> FindClasses(const std::string& path,
                                                       ProgressSink& progress);

struct ClassMapJob {
  std::string source;
  std::string target;  // may be the source
  std::vector<ClassRow> table;
  std::string working{};  // the path of the working file; empty: any
};

// Writes the output text of its class for each cell. NODATA, and a cell of a class without an
// output, is written as it is. Fails when source or target cannot be used; the old target stays
// then.
[[nodiscard]] Outcome<> WriteClassMap(const ClassMapJob& job, ProgressSink& progress);

}  // namespace ormel
