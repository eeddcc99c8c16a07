// Movies as AVI files (Audio Video Interleave, Microsoft's RIFF form for video): one stream of
// pictures, all of them key frames, uncompressed or each a JPEG picture (Motion JPEG). A movie that
// outgrows a RIFF part goes on in further parts, as the OpenDML AVI extensions (1996) have it; one
// that does not is a plain AVI file, which every player opens.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/outcome.h"
#include "base/progress_sink.h"
#include "movies/dib.h"

namespace ormel {

// The pictures of a movie, one after the other; frames count from 0.
struct MovieFrames {
  int count = 0;
  std::function<Outcome<cDIB>(int index)> frame;
};

// Those of bitmap files, each read when its turn comes.
MovieFrames FramesOfFiles(std::vector<std::string> paths);

// One frame as a JPEG file.
using FrameEncoder = std::function<Outcome<std::string>(const cDIB& frame)>;

struct MovieJob {
  std::string path;
  MovieFrames frames;
  int framesPerSecond = 1;  // taken as 1 to 30
  FrameEncoder encoder{};   // empty: frames are stored uncompressed
  std::uint64_t bytesInPart = 1ULL << 30U;
};

inline constexpr char kFirstFrameFault[] = "Could not load first frame!";
inline constexpr char kWritingFault[] = "There was an error writing the file.";

// Writes the movie. Fails with kFirstFrameFault when there is no first frame, and no file is left
// then; with kWritingFault when a later one cannot be had or has another size: the file then holds
// the frames before it. An old file is replaced only by the finished one, and stays when the disk
// fails or `progress` wants to stop.
[[nodiscard]] Outcome<> WriteAviFile(const MovieJob& job, ProgressSink& progress);

}  // namespace ormel
