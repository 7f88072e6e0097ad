#ifndef ZLIBVIDEO_TOOLS_PICTURES_PNGSERIES_H
#define ZLIBVIDEO_TOOLS_PICTURES_PNGSERIES_H

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "tools/pictures/Picture.h"
#include "tools/pictures/PngBand.h"

namespace zlibvideo {

/// Makes PNG files of pictures that follow one another, with the colours in 8-bit RGB. Rows that
/// stand as they did in the picture before are not compressed again.
///
/// A file is made in three steps: `Begin` takes what is new of a picture, `Work` compresses that,
/// and `Completion` replaces the contents of `png` by the whole file. One thread does the first and
/// the last, each for all pictures in order; any does the second. Each throws `std::bad_alloc`
/// without memory; later pictures cannot be completed then.
class PngSeries {
 public:
  using Completion = std::function<void(std::vector<unsigned char>* png)>;
  using Work = std::function<Completion()>;

  PngSeries() = default;
  PngSeries(const PngSeries&) = delete;
  PngSeries& operator=(const PngSeries&) = delete;

  /// `frame`, not empty, is not needed any more afterwards.
  Work Begin(const FrameView& frame);

 private:
  /// A band that differs from the picture before.
  struct NewBand {
    std::size_t index = 0;
    std::shared_ptr<const PixelRows> rows;
    std::shared_ptr<const PngBand> band;
  };
  struct Change {
    /// Without pixels.
    FrameView size;
    std::size_t bandCount = 0;
    std::vector<NewBand> bands;
  };

  static void Compress(Change* change);
  void Complete(const Change& change, std::vector<unsigned char>* png);

  /// Of the last picture begun.
  FrameView fSize;
  std::vector<std::shared_ptr<const PixelRows>> fRows;
  /// Of the last picture completed.
  std::vector<std::shared_ptr<const PngBand>> fBands;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_PNGSERIES_H
