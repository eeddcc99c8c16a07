// Times the raster tools as whole processes: `ormel-batch` with the script of a person who does the
// job, in turn with `wc -w`, which does no more than look at every byte of the maps it reads.
//
//   raster_tools [COLUMNS [ROWS]]      2000 x 2000 cells unless told otherwise
//
// Prints the medians of five runs each, their ratios, and the peak memory of ormel-batch.

#include "process_timing.h"

namespace ormel::benchmarks {
namespace {

constexpr int kClasses = 20;
constexpr int kSteps = 24;

struct Job {
  const char* name;
  std::string script;
  std::vector<std::string> inputs;  // what is read
  std::string output;               // what is written; empty: nothing
};

// Whole numbers from 1 to `kClasses`.
void WriteClasses(const fs::path& path, int columns, int rows) {
  std::mt19937 random(1);
  std::uniform_int_distribution<int> classes(1, kClasses);
  std::ofstream file(path, std::ios::binary);
  file << "ncols " << columns << "\r\nnrows " << rows
       << "\r\nxllcorner 0\r\nyllcorner 0\r\ncellsize 30\r\nNODATA_value -9999\r\n";
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) file << ' ' << classes(random);
    file << "\r\n";
  }
}

// A value for each class and, with `steps` above 1, each step.
void WriteTable(const fs::path& path, int steps, bool withHeader) {
  std::ofstream file(path, std::ios::binary);
  if (withHeader) {
    file << "class";
    for (int step = 1; step <= steps; ++step) file << ",s" << step;
    file << "\r\n";
  }
  for (int one = 1; one <= kClasses; ++one) {
    file << one;
    for (int step = 1; step <= steps; ++step) file << "," << (one * 37 + step * 11) % 256;
    file << "\r\n";
  }
}

std::vector<Job> Jobs() {
  const std::string prepare =
      "click frmMain.mDPrep\nset frmDataPrep.Dir out\nclick frmDataPrep.cmdSetasOut\n";
  const std::string algebra =
      "click frmMain.mMapAlgebra\nset frmMapAlgebra.Dir out\nfile a.asc\nclick "
      "frmMapAlgebra.cmdAdd(0)\nfile b.asc\nclick frmMapAlgebra.cmdAdd(1)\n"
      "click frmMapAlgebra.optOP(2)\nclick frmMapAlgebra.cmdProcess\n";
  return {
      {"scale one map",
       prepare + "file a.asc\nclick frmDataPrep.cmdAdd\nclick frmDataPrep.cmdScale\n",
       {"a.asc"},
       "out/a.asc"},
      {"trim two maps",
       prepare + "file a.asc b.asc\nclick frmDataPrep.cmdAdd\nclick frmDataPrep.cmdTrim\n"
                 "click frmTrim.optSmallest\nclick frmTrim.cmdOK\n",
       {"a.asc", "b.asc"},
       "out/a.asc"},
      {"statistics, histogram",
       "click frmMain.mMapStats\nfile a.asc\nclick frmMapStats.cmdAdd\n"
       "select frmMapStats.lstFiles 1\n",
       {"a.asc"},
       ""},
      {"A * B", algebra, {"a.asc", "b.asc"}, "out/a.asc"},
      {"classes to factor",
       "click frmMain.mClass\nset frmClass.txtClassFile classes.asc\nanswer no\n"
       "click frmClass.cmdLoad\nfile classes.csv\nclick frmClass.cmdImport\nfile out/c.asc\n"
       "click frmClass.cmdGen\n",
       {"classes.asc"},
       "out/c.asc"},
      {"table to 24 maps",
       "click frmMain.mGenFCSV\nset frmGenTSMaps.txtFactor classes.asc\n"
       "set frmGenTSMaps.txtCSV steps.csv\nset frmGenTSMaps.Dir out\n"
       "click frmGenTSMaps.ckClassData\n"
       "click frmGenTSMaps.cmdWrite\n",
       {"classes.asc"},
       "out/01.asc"},
  };
}

std::uintmax_t BytesIn(const fs::path& folder) {
  std::uintmax_t bytes = 0;
  for (const fs::directory_entry& file : fs::directory_iterator(folder)) bytes += file.file_size();
  return bytes;
}

void Measure(const Job& job) {
  std::ofstream("job.script") << job.script;
  std::vector<std::string> count{"wc", "-w"};
  count.insert(count.end(), job.inputs.begin(), job.inputs.end());
  std::vector<double> seconds;
  std::vector<double> words;
  long peakKib = 0;
  double megabytes = 0;
  for (int run = 0; run < kRuns; ++run) {
    // A file that replaces another waits for the disk.
    fs::remove_all("out");
    fs::create_directory("out");
    const Timed timed = RunProcess({Batch().string(), "--script", "job.script"});
    if (!job.output.empty() && !fs::exists(job.output)) throw std::runtime_error("no output");
    megabytes = static_cast<double>(BytesIn("out")) / 1e6;
    seconds.push_back(timed.seconds);
    peakKib = std::max(peakKib, timed.peakKib);
    words.push_back(RunProcess(count).seconds);
  }
  std::printf("%-22s %.3f s   %.2f times wc -w (%.3f s)   %.0f MB written   peak %.1f MiB\n",
              job.name, Median(seconds), Median(seconds) / Median(words), Median(words), megabytes,
              static_cast<double>(peakKib) / kKibPerMib);
}

void MeasureAll(int columns, int rows, const fs::path& folder) {
  fs::current_path(folder);
  setenv("ORMEL_HOME", (folder / "home").c_str(), 1);
  WriteMap("a.asc", columns, rows, 1);
  WriteMap("b.asc", columns, rows, 2);
  WriteClasses("classes.asc", columns, rows);
  WriteTable("classes.csv", 1, false);
  WriteTable("steps.csv", kSteps, true);
  std::printf("%d x %d cells, medians of %d runs\n", columns, rows, kRuns);
  for (const Job& job : Jobs()) Measure(job);
}

}  // namespace
}  // namespace ormel::benchmarks

int main(int argc, char** argv) {
  using namespace ormel::benchmarks;
  const int columns = Argument(argc, argv, 1, 2000);
  const int rows = Argument(argc, argv, 2, 2000);
  return InScratchFolder([=](const fs::path& folder) { MeasureAll(columns, rows, folder); });
}
