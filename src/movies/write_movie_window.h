// What the windows that export movies share: the choice of the file and of the compression, and the
// writing with its messages.
#pragma once

#include <optional>
#include <string>

#include "movies/avi_file.h"
#include "parts/app_context.h"
#include "ui/window.h"

namespace ormel {

// The file that a movie goes to; none: the person gave up.
std::optional<std::string> AskMovieFile(AppContext& app);

// Writes the movie; the window shows how far it is, and messages tell what fails. On a desktop that
// can compress frames a person is asked how: giving up there leaves an empty file, without a
// message. False: the movie is not whole.
bool WriteMovie(ui::Window& window, AppContext& app, const std::string& path,
                const MovieFrames& frames, int framesPerSecond);

}  // namespace ormel
