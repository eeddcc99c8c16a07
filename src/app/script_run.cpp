#include "app/script_run.h"

#include <fstream>
#include <iostream>

#include "app/program.h"
#include "shell/main_window.h"
#include "ui/headless/headless_desktop.h"
#include "ui/headless/script.h"

namespace ormel {
namespace {

constexpr int kWrongUse = 2;

}  // namespace

int RunScript(const std::string& file, const std::string& opened, ui::Screen* screen) {
  std::ifstream stream;
  if (file != "-") {
    stream.open(file, std::ios::binary);
    if (!stream) {
      std::cerr << file << ": cannot be read\n";
      return kWrongUse;
    }
  }
  ui::HeadlessDesktop desktop(std::cout, screen);
  Program program(desktop);
  ui::ScriptRunner script(desktop, file == "-" ? std::cin : stream, file, std::cout, std::cerr);
  return script.Run([&] {
    if (!opened.empty()) program.Main().OpenFileByExtension(opened);
  });
}

}  // namespace ormel
