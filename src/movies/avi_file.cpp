#include "movies/avi_file.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/file_writer.h"
#include "movies/little_endian.h"

namespace ormel {
namespace {

constexpr std::size_t kMostParts = 256;
constexpr std::uint32_t kKeyFrame = 0x10;
constexpr std::uint32_t kHasIndex = 0x10;
constexpr std::uint64_t kMostSide = 32767;  // that a stream's rectangle can tell

// What is told of the stream. All other fields are 0.
struct AviStreamInfo {
  std::string_view type = "vids";
  std::string_view handler;
  std::uint32_t scale = 1;
  std::uint32_t rate = 1;  // frames a second
  std::uint32_t suggestedBufferSize = 0;
  std::uint64_t width = 0;
  std::uint64_t height = 0;
};

void Append4(std::string& bytes, std::uint64_t number) { AppendNumber(bytes, number, 4); }

std::string Chunk(std::string_view name, std::string_view content) {
  std::string bytes(name);
  Append4(bytes, content.size());
  bytes += content;
  if (content.size() % 2 != 0) bytes += '\0';
  return bytes;
}

std::string List(std::string_view name, std::string_view content) {
  return Chunk("LIST", std::string(name) + std::string(content));
}

// Room that is filled in later when it is needed.
std::string Spare(const std::string& chunk) {
  constexpr std::size_t kChunkHead = 8;
  return Chunk("JUNK", std::string(chunk.size() - kChunkHead, '\0'));
}

// The file while it grows.
class AviFile {
 public:
  AviFile(FileWriter& file, const MovieJob& job, const cDIB& first)
      : file_(file), bytesInPart_(job.bytesInPart), isJpeg_(static_cast<bool>(job.encoder)) {
    info_.handler = isJpeg_ ? "MJPG" : "DIB ";
    info_.rate = static_cast<std::uint32_t>(std::clamp(job.framesPerSecond, 1, 30));
    info_.suggestedBufferSize = first.SizeImage();
    info_.width = static_cast<std::uint64_t>(std::abs(std::int64_t{first.Width()}));
    info_.height = static_cast<std::uint64_t>(std::abs(std::int64_t{first.Height()}));
    format_ = std::string(first.BitmapInfo());
    if (isJpeg_) format_.replace(16, 4, "MJPG");
    BeginPart();
  }

  // False: there are more frames than such a file can hold.
  bool Add(std::string_view frame) {
    const std::uint64_t indexes = (part_.size() + 1) * (16 + 8) + 64;
    if (!part_.empty() && position_ - partStart_ + frame.size() + indexes + 16 > bytesInPart_) {
      EndPart(true);
      if (superIndex_.size() == kMostParts) return false;
      BeginPart();
    }
    part_.push_back({position_, static_cast<std::uint32_t>(frame.size())});
    std::string head(FrameName());
    Append4(head, frame.size());
    Write(head);
    Write(frame);
    if (frame.size() % 2 != 0) Write(std::string_view("\0", 1));
    ++frames_;
    largest_ = std::max(largest_, static_cast<std::uint32_t>(frame.size()));
    return true;
  }

  void Finish() {
    EndPart(!superIndex_.empty());
    file_.WriteAt(kHeadersAt, Headers());
  }

 private:
  static constexpr std::uint64_t kHeadersAt = 12;  // behind "RIFF", size, "AVI "

  struct Entry {
    std::uint64_t at;  // of the chunk
    std::uint32_t size;
  };
  struct PartIndex {
    std::uint64_t at;
    std::uint32_t size;
    std::uint32_t frames;
  };

  std::string_view FrameName() const { return isJpeg_ ? "00dc" : "00db"; }

  void Write(std::string_view bytes) {
    file_.Write(bytes);
    position_ += bytes.size();
  }

  void WriteSizeAt(std::uint64_t at) {
    std::string size;
    Append4(size, position_ - at - 4);
    file_.WriteAt(at, size);
  }

  void BeginPart() {
    const bool isFirst = position_ == 0;
    partStart_ = position_;
    part_.clear();
    Write(isFirst ? std::string_view("RIFF\0\0\0\0AVI ", 12)
                  : std::string_view("RIFF\0\0\0\0AVIX", 12));
    if (isFirst) Write(Headers());
    moviAt_ = position_ + 8;
    Write(std::string_view("LIST\0\0\0\0movi", 12));
  }

  // Parts of a longer movie have an index of their own, the first one also that of plain files.
  void EndPart(bool hasMore) {
    if (hasMore) {
      const std::string index = StandardIndex();
      superIndex_.push_back({position_, static_cast<std::uint32_t>(index.size()),
                             static_cast<std::uint32_t>(part_.size())});
      Write(index);
    }
    WriteSizeAt(moviAt_ - 4);
    if (partStart_ == 0) {
      firstPartFrames_ = static_cast<std::uint32_t>(part_.size());
      Write(PlainIndex());
    }
    WriteSizeAt(partStart_ + 4);
  }

  std::string PlainIndex() const {
    std::string entries;
    entries.reserve(part_.size() * 16);
    for (const Entry& entry : part_) {
      entries += FrameName();
      for (const std::uint64_t field :
           {std::uint64_t{kKeyFrame}, entry.at - moviAt_, std::uint64_t{entry.size}}) {
        Append4(entries, field);
      }
    }
    return Chunk("idx1", entries);
  }

  std::string StandardIndex() const {
    std::string content;
    AppendNumber(content, 2, 2);  // 4-byte fields of an entry
    AppendNumber(content, 0, 1);
    AppendNumber(content, 1, 1);  // an index of chunks
    Append4(content, part_.size());
    content += FrameName();
    AppendNumber(content, moviAt_, 8);
    Append4(content, 0);
    for (const Entry& entry : part_) {
      Append4(content, entry.at + 8 - moviAt_);
      Append4(content, entry.size);
    }
    return Chunk("ix00", content);
  }

  std::string SuperIndex() const {
    std::string content;
    AppendNumber(content, 4, 2);
    AppendNumber(content, 0, 2);  // an index of indexes
    Append4(content, superIndex_.size());
    content += FrameName();
    for (int i = 0; i < 3; ++i) Append4(content, 0);
    for (const PartIndex& part : superIndex_) {
      AppendNumber(content, part.at, 8);
      Append4(content, part.size);
      Append4(content, part.frames);
    }
    content.resize(24 + kMostParts * 16, '\0');
    return Chunk("indx", content);
  }

  std::string TotalOfFrames() const {
    constexpr std::size_t kTotalBytes = 248;
    std::string content;
    Append4(content, frames_);
    content.resize(kTotalBytes, '\0');
    return List("odml", Chunk("dmlh", content));
  }

  std::string MainHeader() const {
    std::string content;
    for (const std::uint64_t field :
         {std::uint64_t{1'000'000 / info_.rate},
          std::uint64_t{info_.suggestedBufferSize} * info_.rate, std::uint64_t{0},
          std::uint64_t{kHasIndex}, std::uint64_t{firstPartFrames_}, std::uint64_t{0},
          std::uint64_t{1}, std::uint64_t{std::max(largest_, info_.suggestedBufferSize)},
          info_.width, info_.height}) {
      Append4(content, field);
    }
    content.resize(56, '\0');
    return Chunk("avih", content);
  }

  std::string StreamHeader() const {
    std::string content(info_.type);
    content += info_.handler;
    for (const std::uint64_t field : {0U, 0U, 0U, info_.scale, info_.rate, 0U, frames_,
                                      std::max(largest_, info_.suggestedBufferSize), 0U, 0U}) {
      Append4(content, field);
    }
    AppendNumber(content, 0, 4);  // the corner of the frames
    AppendNumber(content, std::min(info_.width, kMostSide), 2);
    AppendNumber(content, std::min(info_.height, kMostSide), 2);
    return Chunk("strh", content);
  }

  std::string Headers() const {
    const bool isLong = !superIndex_.empty();
    const std::string superIndex = SuperIndex();
    const std::string total = TotalOfFrames();
    const std::string stream =
        StreamHeader() + Chunk("strf", format_) + (isLong ? superIndex : Spare(superIndex));
    return List("hdrl", MainHeader() + List("strl", stream) + (isLong ? total : Spare(total)));
  }

  FileWriter& file_;
  const std::uint64_t bytesInPart_;
  const bool isJpeg_;
  AviStreamInfo info_;
  std::string format_;  // of the frames
  std::uint64_t position_ = 0;
  std::uint64_t partStart_ = 0;
  std::uint64_t moviAt_ = 0;  // the word "movi", from which indexes count
  std::vector<Entry> part_;   // the frames of the part that grows
  std::vector<PartIndex> superIndex_;
  std::uint32_t frames_ = 0;
  std::uint32_t firstPartFrames_ = 0;
  std::uint32_t largest_ = 0;
};

Failure WritingFault(FailureKind kind) { return {kind, kWritingFault}; }

// Adds all frames. False: one could not be had.
Outcome<bool> AddFrames(const MovieJob& job, const cDIB& first, AviFile& movie,
                        ProgressSink& progress) {
  for (int i = 0; i < job.frames.count; ++i) {
    const Outcome<cDIB> loaded = i == 0 ? Outcome<cDIB>(first) : job.frames.frame(i);
    if (loaded.WasCancelled()) return Cancelled{};
    if (!loaded.Ok() || loaded.Value().BitmapInfo() != first.BitmapInfo()) return false;
    if (job.encoder) {
      const Outcome<std::string> encoded = job.encoder(loaded.Value());
      if (!encoded.Ok() || !movie.Add(encoded.Value())) return false;
    } else if (!movie.Add(loaded.Value().Bits())) {
      return false;
    }
    if (!progress.Report(100.0 * (i + 1) / job.frames.count)) return Cancelled{};
  }
  return true;
}

}  // namespace

MovieFrames FramesOfFiles(std::vector<std::string> paths) {
  const int count = static_cast<int>(paths.size());
  return {count, [paths = std::move(paths)](int index) {
            return cDIB::CreateFromFile(paths[static_cast<std::size_t>(index)]);
          }};
}

Outcome<> WriteAviFile(const MovieJob& job, ProgressSink& progress) {
  const Failure noFirst{FailureKind::kDamaged, kFirstFrameFault};
  if (job.frames.count < 1) return noFirst;
  const Outcome<cDIB> first = job.frames.frame(0);
  if (!first.Ok()) return noFirst;
  Outcome<FileWriter> file = FileWriter::Open(job.path);
  if (!file.Ok()) return WritingFault(file.Why().kind);
  AviFile movie(file.Value(), job, first.Value());
  const Outcome<bool> added = AddFrames(job, first.Value(), movie, progress);
  if (!added.Ok()) return added.Stop();
  movie.Finish();
  const Outcome<> written = file.Value().Commit();
  if (!written.Ok()) return WritingFault(written.Why().kind);
  if (!added.Value()) return WritingFault(FailureKind::kDamaged);
  return Done{};
}

}  // namespace ormel
