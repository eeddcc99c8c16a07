#include "movies/avi_file.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <optional>

#include "movies/bitmap.h"
#include "movies/little_endian.h"
#include "support/small_disk.h"
#include "support/temporary_folder.h"

namespace ormel {
namespace {

using testing::ReadText;
using testing::SmallDisk;
using testing::TemporaryFolder;

// What a player finds in a movie: it goes through all parts, and checks every size and index on
// the way.
struct ReadMovie {
  std::string handler;
  std::uint64_t rate = 0;
  std::uint64_t length = 0;  // as the stream's header tells
  std::uint64_t total = 0;   // as that of a long movie does
  int parts = 0;
  std::vector<std::string> frames;
  std::vector<std::string> plainIndex;  // the frames that idx1 leads to
  std::vector<std::string> superIndex;  // those that the index of indexes leads to
};

class MovieReader {
 public:
  explicit MovieReader(std::string bytes) : bytes_(std::move(bytes)) {}

  ReadMovie Read() {
    Walk(0, bytes_.size());
    return movie_;
  }

 private:
  std::uint64_t Number(std::size_t at, int size) const { return ReadNumber(bytes_, at, size); }
  std::string Frame(std::size_t at) const { return bytes_.substr(at + 8, Number(at + 4, 4)); }

  void Walk(std::size_t at, std::size_t end) {
    while (at < end) {
      ASSERT_LE(at + 8, end);
      const std::string name = bytes_.substr(at, 4);
      const std::size_t size = Number(at + 4, 4);
      ASSERT_LE(at + 8 + size, end) << name;
      if (name == "RIFF") ++movie_.parts;
      if (name == "LIST" && bytes_.substr(at + 8, 4) == "movi") movi_ = at + 8;
      if (name == "RIFF" || name == "LIST") Walk(at + 12, at + 8 + size);
      Take(name, at, size);
      at += 8 + size + size % 2;
    }
  }

  void Take(const std::string& name, std::size_t at, std::size_t size) {
    if (name == "strh") {
      movie_.handler = bytes_.substr(at + 12, 4);
      movie_.rate = Number(at + 8 + 24, 4);
      movie_.length = Number(at + 8 + 32, 4);
    } else if (name == "dmlh") {
      movie_.total = Number(at + 8, 4);
    } else if (name == "00db" || name == "00dc") {
      movie_.frames.push_back(Frame(at));
    } else if (name == "idx1") {
      for (std::size_t i = at + 8; i < at + 8 + size; i += 16) {
        movie_.plainIndex.push_back(Frame(movi_ + Number(i + 8, 4)));
        EXPECT_EQ(Number(i + 4, 4), 0x10U);
      }
    } else if (name == "indx") {
      for (std::size_t i = 0; i < Number(at + 12, 4); ++i) TakePart(Number(at + 32 + 16 * i, 8));
    }
  }

  void TakePart(std::size_t at) {
    ASSERT_EQ(bytes_.substr(at, 4), "ix00");
    const std::size_t base = Number(at + 20, 8);
    for (std::size_t i = 0; i < Number(at + 12, 4); ++i) {
      const std::size_t entry = at + 32 + 8 * i;
      movie_.superIndex.push_back(bytes_.substr(base + Number(entry, 4), Number(entry + 4, 4)));
    }
  }

  const std::string bytes_;
  ReadMovie movie_;
  std::size_t movi_ = 0;
};

ReadMovie Open(const std::filesystem::path& path) { return MovieReader(ReadText(path)).Read(); }

cDIB Picture(int number) {
  Canvas canvas(6, 4);
  canvas.FillPixels(0, 0, 1 + number % 6, 3, Rgb(number % 256, 20, 200));
  return cDIB::OfCanvas(canvas);
}

MovieFrames Pictures(int count) {
  return {count, [](int index) -> Outcome<cDIB> { return Picture(index); }};
}

class Movies : public ::testing::Test {
 protected:
  Outcome<> Write(MovieJob job) {
    job.path = Path();
    return WriteAviFile(job, progress_);
  }
  std::string Path() const { return (folder_ / "m.avi").string(); }

  // What another program finds; none: it is not on this machine.
  std::optional<std::string> Probed() const {
    const std::string command =
        "ffprobe -v error -count_frames -show_entries "
        "stream=codec_name,width,height,r_frame_rate,nb_read_frames -of csv=p=0 " +
        Path() + " 2>&1";
    if (std::system("command -v ffprobe >/dev/null 2>&1") != 0) return std::nullopt;
    FILE* pipe = popen(command.c_str(), "r");
    std::string text(200, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), pipe));
    pclose(pipe);
    return text;
  }

  TemporaryFolder folder_;
  NoProgress progress_;
};

TEST_F(Movies, HoldTheirFramesInOrder) {
  ASSERT_TRUE(Write({"", Pictures(7), 12}).Ok());
  const ReadMovie movie = Open(Path());
  ASSERT_EQ(movie.frames.size(), 7U);
  for (int i = 0; i < 7; ++i) {
    EXPECT_EQ(movie.frames[static_cast<std::size_t>(i)], Picture(i).Bits());
  }
  EXPECT_EQ(movie.plainIndex, movie.frames);
  EXPECT_EQ(movie.handler, "DIB ");
  EXPECT_EQ(movie.rate, 12U);
  EXPECT_EQ(movie.length, 7U);
  EXPECT_EQ(movie.parts, 1);
  EXPECT_TRUE(movie.superIndex.empty());
  if (const auto probed = Probed()) {
    EXPECT_EQ(*probed, "rawvideo,6,4,12/1,7\n");
  }
}

TEST_F(Movies, RunAtOneToThirtyFramesASecond) {
  for (const auto& [wanted, written] : {std::pair(0, 1U), std::pair(31, 30U)}) {
    ASSERT_TRUE(Write({"", Pictures(1), wanted}).Ok());
    EXPECT_EQ(Open(Path()).rate, written);
  }
}

TEST_F(Movies, GoOnInFurtherPartsWhenTheyAreLong) {
  MovieJob job{"", Pictures(120), 5};
  job.bytesInPart = 6000;
  ASSERT_TRUE(Write(job).Ok());
  const ReadMovie movie = Open(Path());
  EXPECT_GT(movie.parts, 2);
  ASSERT_EQ(movie.frames.size(), 120U);
  EXPECT_EQ(movie.frames.back(), Picture(119).Bits());
  EXPECT_EQ(movie.superIndex, movie.frames);
  EXPECT_EQ(movie.total, 120U);
  EXPECT_EQ(movie.length, 120U);
  const auto first = static_cast<std::ptrdiff_t>(movie.plainIndex.size());
  EXPECT_EQ(movie.plainIndex,
            std::vector<std::string>(movie.frames.begin(), movie.frames.begin() + first));
  if (const auto probed = Probed()) {
    EXPECT_EQ(*probed, "rawvideo,6,4,5/1,120\n");
  }
}

TEST_F(Movies, StoreWhatAnEncoderMakes) {
  MovieJob job{"", Pictures(3), 5};
  job.encoder = [](const cDIB& frame) -> Outcome<std::string> {
    return std::string(static_cast<std::size_t>(frame.Picture().Pixel(0, 0) % 9 + 1), 'x');
  };
  ASSERT_TRUE(Write(job).Ok());
  const ReadMovie movie = Open(Path());
  EXPECT_EQ(movie.handler, "MJPG");
  EXPECT_EQ(movie.frames.size(), 3U);
  EXPECT_EQ(movie.frames, movie.plainIndex);
}

TEST_F(Movies, KeepTheFramesBeforeOneThatIsMissing) {
  for (const int bad : {1, 3}) {
    MovieFrames frames = Pictures(5);
    frames.frame = [bad](int index) -> Outcome<cDIB> {
      if (index < bad) return Picture(index);
      if (bad == 1) return Failure{FailureKind::kNotFound, "gone"};
      return cDIB::OfCanvas(Canvas(9, 9));  // another size
    };
    EXPECT_EQ(Write({"", frames, 5}).Text(), "There was an error writing the file.");
    EXPECT_EQ(Open(Path()).plainIndex.size(), static_cast<std::size_t>(bad));
  }
}

TEST_F(Movies, LeaveAnOldFileWhenThereIsNothingToShow) {
  testing::WriteText(Path(), "old");
  EXPECT_EQ(Write({"", {0, {}}, 5}).Text(), "Could not load first frame!");
  EXPECT_EQ(Write({"", FramesOfFiles({"none.bmp"}), 5}).Text(), "Could not load first frame!");
  class Stop final : public ProgressSink {
    bool Report(double) override { return false; }
  } stop;
  EXPECT_TRUE(WriteAviFile({Path(), Pictures(3), 5}, stop).WasCancelled());
  {
    SmallDisk disk(5000);
    const Outcome<> written = Write({"", Pictures(30), 5});
    EXPECT_EQ(written.Text(), "There was an error writing the file.");
    EXPECT_EQ(written.Why().kind, FailureKind::kDiskFull);
  }
  EXPECT_EQ(ReadText(Path()), "old");
}

// ---- Bitmaps ------------------------------------------------------------------------------------

TEST(Dib, CarriesABitmapFileWithItsColourTable) {
  const TemporaryFolder folder;
  std::string info;
  for (const std::uint64_t field : {40U, 4U, 2U}) AppendNumber(info, field, 4);
  AppendNumber(info, 1, 2);
  AppendNumber(info, 8, 2);
  for (const std::uint64_t field : {0U, 8U, 0U, 0U, 2U, 0U}) AppendNumber(info, field, 4);
  info += std::string("\1\2\3\0\4\5\6\0", 8);  // two colours
  std::string file = "BM";
  AppendNumber(file, 14 + info.size() + 8, 4);
  AppendNumber(file, 0, 4);
  AppendNumber(file, 14 + info.size(), 4);
  file += info + "ABCDEFGH";
  const Outcome<cDIB> dib = cDIB::CreateFromFile(folder.Write("t.bmp", file));
  ASSERT_TRUE(dib.Ok()) << dib.Text();
  EXPECT_EQ(dib.Value().BitmapInfo(), info);
  EXPECT_EQ(dib.Value().Bits(), "ABCDEFGH");
  EXPECT_EQ(dib.Value().BitCount(), 8);
  EXPECT_EQ(dib.Value().ClrUsed(), 2U);
  EXPECT_TRUE(dib.Value().Picture().Empty());
  ASSERT_TRUE(dib.Value().WriteToFile(folder / "copy.bmp").Ok());
  EXPECT_EQ(ReadText(folder / "copy.bmp"), file);
}

TEST(Dib, IsTheBitmapOfACanvas) {
  const TemporaryFolder folder;
  Canvas canvas(3, 2);
  canvas.SetPixel(2, 0, Rgb(1, 2, 3));
  ASSERT_TRUE(WriteBitmap(canvas, folder / "c.bmp").Ok());
  const Outcome<cDIB> dib = cDIB::CreateFromFile(folder / "c.bmp");
  EXPECT_EQ(dib.Value().Picture().Pixel(2, 0), Rgb(1, 2, 3));
  EXPECT_EQ(dib.Value().Picture().Pixel(2, 1), kWhite);
  const std::string packed =
      std::string(dib.Value().BitmapInfo()) + std::string(dib.Value().Bits());
  EXPECT_EQ(cDIB::CreateFromPackedDIBPointer(packed).Value().Bits(), dib.Value().Bits());
  std::string few = packed;
  few[14] = 8;
  for (const std::string& bad : {few, packed.substr(0, 39), packed.substr(0, packed.size() - 1)}) {
    EXPECT_EQ(cDIB::CreateFromPackedDIBPointer(bad).Text(), "Error! DIB was less than 16 colors.");
  }
}

TEST(Dib, SurvivesAnyDamage) {
  const TemporaryFolder folder;
  ASSERT_TRUE(WriteBitmap(Canvas(5, 3), folder / "c.bmp").Ok());
  const std::string whole = ReadText(folder / "c.bmp");
  const std::string refused =
      "File is not a supported bitmap format:\n" + (folder / "d.bmp").string();
  for (std::size_t i = 0; i < whole.size(); ++i) {
    EXPECT_EQ(cDIB::CreateFromFile(folder.Write("d.bmp", whole.substr(0, i))).Text(), refused);
    std::string flipped = whole;
    flipped[i] = static_cast<char>(flipped[i] ^ 0x8F);
    const Outcome<cDIB> dib = cDIB::CreateFromFile(folder.Write("d.bmp", flipped));
    if (dib.Ok()) (void)dib.Value().Picture();
  }
  EXPECT_EQ(cDIB::CreateFromFile(folder / "e.bmp").Text(),
            "File does not exist:\n" + (folder / "e.bmp").string());
}

}  // namespace
}  // namespace ormel
