#include "movies/write_movie_window.h"

#include "base/file_writer.h"
#include "ui/desktop.h"
#include "ui/run.h"
#include "ui/save_dialog.h"

namespace ormel {
namespace {

// Frames as JPEG pictures of the desktop's own making.
FrameEncoder JpegEncoder(ui::Desktop& desktop) {
  return [&desktop](const cDIB& frame) -> Outcome<std::string> {
    if (auto bytes = desktop.Jpeg(frame.Picture())) return std::move(*bytes);
    return Failure{FailureKind::kRefused, "The frame cannot be compressed."};
  };
}

}  // namespace

std::optional<std::string> AskMovieFile(AppContext& app) {
  const auto choice = ui::AskSaveFile(
      app.desktop,
      {"Select Output AVI File", ".AVI Files|*.avi", "avi", "", "*.avi", ui::FileKind::kOutputs},
      {.text = "Overwrite Existing File?", .title = "Export AVI"});
  if (!choice) return std::nullopt;
  return choice->Path();
}

bool WriteMovie(ui::Window& window, AppContext& app, const std::string& path,
                const MovieFrames& frames, int framesPerSecond) {
  MovieJob job{path, frames, framesPerSecond};
  if (app.desktop.Jpeg(Canvas(1, 1))) {
    const auto chosen = app.desktop.PickEntry("&Compressor:", "Video Compression",
                                              {"Full Frames (Uncompressed)", "Motion JPEG"});
    if (!chosen) {
      (void)WriteFile(path, "");
      return false;
    }
    if (*chosen == 1) job.encoder = JpegEncoder(app.desktop);
  }
  ui::Run run(window);
  return run.Report(WriteAviFile(job, run));
}

}  // namespace ormel
