#include "tools/pictures/Png.h"

#include <png.h>

#include <cstddef>
#include <cstdio>
#include <memory>
#include <new>
#include <utility>

#include "bitstream/FrameHeader.h"
#include "tools/files/ToolError.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

constexpr unsigned char kOpaque = 0xFF;

/// The text of libpng's last error: its error handler leaves by longjmp and cannot return it.
struct PngProblem {
  char text[128] = "";
};

void KeepProblem(png_structp png, png_const_charp text) {
  auto* problem = static_cast<PngProblem*>(png_get_error_ptr(png));
  std::snprintf(problem->text, sizeof(problem->text), "%s", text);
  png_longjmp(png, 1);
}

void IgnoreWarning(png_structp /*png*/, png_const_charp /*text*/) {}

void ReadInput(png_structp png, png_bytep target, png_size_t size) {
  auto* input = static_cast<InputFile*>(png_get_io_ptr(png));
  if (input->Read(target, size) < size) png_error(png, "it ends early");
}

/// Owns libpng's reader.
class PngReader {
 public:
  explicit PngReader(InputFile* input)
      : fPng(png_create_read_struct(PNG_LIBPNG_VER_STRING, &fProblem, KeepProblem, IgnoreWarning)),
        fInfo(fPng == nullptr ? nullptr : png_create_info_struct(fPng)) {
    if (fInfo == nullptr) {
      png_destroy_read_struct(&fPng, nullptr, nullptr);
      throw std::bad_alloc();
    }
    png_set_read_fn(fPng, input, ReadInput);
  }
  ~PngReader() { png_destroy_read_struct(&fPng, &fInfo, nullptr); }
  PngReader(const PngReader&) = delete;
  PngReader& operator=(const PngReader&) = delete;

  const char* Problem() const { return fProblem.text; }
  png_uint_32 Width() const { return png_get_image_width(fPng, fInfo); }
  png_uint_32 Height() const { return png_get_image_height(fPng, fInfo); }

  // libpng may leave the next two functions by longjmp: no object in them may need a destructor.
  [[nodiscard]] bool ReadInfo() {
    if (setjmp(png_jmpbuf(fPng)) != 0) return false;
    png_read_info(fPng, fInfo);
    return true;
  }
  /// Whether pixels can be transparent.
  bool HasOpacity() const {
    return (png_get_color_type(fPng, fInfo) & PNG_COLOR_MASK_ALPHA) != 0 ||
           png_get_valid(fPng, fInfo, PNG_INFO_tRNS) != 0;
  }
  /// Reads the pixels as blue, green, red and, if `HasOpacity()`, opacity, 8 bits each.
  [[nodiscard]] bool ReadRows(png_bytep* rows) {
    if (setjmp(png_jmpbuf(fPng)) != 0) return false;
    png_set_expand(fPng);
    png_set_scale_16(fPng);
    png_set_gray_to_rgb(fPng);
    png_set_bgr(fPng);
    png_read_image(fPng, rows);
    png_read_end(fPng, nullptr);
    return true;
  }

 private:
  PngProblem fProblem;
  png_structp fPng;
  png_infop fInfo;
};

[[noreturn]] void FailRead(const InputFile& input, const std::string& name, const char* problem) {
  input.CheckError();
  throw ToolError(name + ": cannot be read as PNG: " + problem);
}

bool IsOpaque(const FrameView& frame) {
  for (std::size_t i = 0; i < frame.ByteCount(); i += FrameView::kPixelBytes) {
    if (frame.pixels[i + 3] != kOpaque) return false;
  }
  return true;
}

}  // namespace

Picture ReadPng(const std::string& path) {
  InputFile input(path);
  return ReadPng(&input, input.Name());
}

Picture ReadPng(InputFile* input, const std::string& name) {
  PngReader reader(input);
  if (!reader.ReadInfo()) FailRead(*input, name, reader.Problem());
  constexpr png_uint_32 kMaxSize = FrameHeader::kMaxImageSize;
  if (reader.Width() > kMaxSize || reader.Height() > kMaxSize) {
    throw ToolError(name + ": is " + SizeText(reader.Width(), reader.Height()) +
                    " pixels; a stream's pictures have at most " + std::to_string(kMaxSize) +
                    " a side");
  }

  const bool hasOpacity = reader.HasOpacity();
  const std::size_t rowBytes =
      reader.Width() * (hasOpacity ? FrameView::kPixelBytes : Picture::kPixelBytes);
  std::vector<unsigned char> pixels(rowBytes * reader.Height());
  std::vector<png_bytep> rows(reader.Height());
  for (std::size_t row = 0; row < rows.size(); ++row) rows[row] = &pixels[row * rowBytes];
  if (!reader.ReadRows(rows.data())) FailRead(*input, name, reader.Problem());

  const auto width = static_cast<int>(reader.Width());
  const auto height = static_cast<int>(reader.Height());
  if (!hasOpacity) return {width, height, std::move(pixels)};
  const FrameView frame = {pixels.data(), width, height};
  if (!IsOpaque(frame)) {
    throw ToolError(name +
                    ": has transparent pixels, which a stream cannot show; flatten it first");
  }
  Picture picture;
  CopyColours(frame, &picture);
  return picture;
}

std::vector<unsigned char> EncodePng(const Picture& picture) {
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(picture.width);
  image.height = static_cast<png_uint_32>(picture.height);
  image.format = PNG_FORMAT_BGR;
  image.flags = PNG_IMAGE_FLAG_FAST;
  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
  // Without zeros: the system then provides memory for the bytes of the file alone.
  const auto room = std::make_unique_for_overwrite<unsigned char[]>(size);
  if (png_image_write_to_memory(&image, room.get(), &size, 0, picture.pixels.data(), 0, nullptr) ==
      0) {
    throw std::bad_alloc();  // the room suffices for every picture
  }
  return {room.get(), room.get() + size};
}

}  // namespace zlibvideo
